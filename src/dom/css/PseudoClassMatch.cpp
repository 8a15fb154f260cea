// SPDX-License-Identifier: MIT
#include "dom/css/PseudoClassMatch.h"

#include "dom/NodeAccess.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/NthArgument.h"
#include "dom/css/Relatives.h"
#include "dom/css/SiblingPosition.h"
#include "dom/css/WalkAnswers.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace Dom::CSS::detail {

namespace {

using Dom::detail::NodeAccess;

constexpr std::string_view kXml = "http://www.w3.org/XML/1998/namespace";

constexpr std::array<std::string_view, 3> kLinks = {"a", "area", "link"};
constexpr std::array<std::string_view, 7> kControls = {"button", "fieldset", "input",   "optgroup",
                                                       "option", "select",   "textarea"};

template <std::size_t N>
bool IsOneOf(const std::array<std::string_view, N>& names, const Element& element) {
    return std::find(names.begin(), names.end(), element.LocalNameView()) != names.end();
}

bool IsRoot(const Element& element) {
    const Node* const parent = element.ParentNode();
    return parent != nullptr && parent->NodeType() == Node::DOCUMENT_NODE;
}

// Comments and instructions do not count: Selectors Level 3, section 6.6.5.14.
bool IsEmpty(const Element& element) {
    for (const Node* child = NodeAccess::First(element); child != nullptr;
         child = NodeAccess::Next(*child)) {
        switch (child->NodeType()) {
        case Node::ELEMENT_NODE:
        case Node::ENTITY_REFERENCE_NODE: return false;
        case Node::TEXT_NODE:
        case Node::CDATA_SECTION_NODE:
            if (!child->NodeValue().empty()) return false;
            break;
        default: break;
        }
    }
    return true;
}

// Returns the language that an element declares itself, or null. An empty one says that there is
// none, whatever its ancestors say (XML 1.0 section 2.12).
const astring* DeclaredLanguage(const Element& element) {
    if (element.HasAttributeNS(kXml, "lang")) return &element.GetAttributeNS(kXml, "lang");
    for (const std::string_view name : {"xml:lang", "lang"}) {
        if (element.HasAttribute(name)) return &element.GetAttribute(name);
    }
    return nullptr;
}

// Returns the nearest element that declares a language, this one or above, or null.
const Element* LanguageHolder(const Element& element) {
    constexpr WalkQuestion kQuestion = {kLanguageAsker, 0};
    const Element* holder = &element;
    std::size_t passed = 0;
    for (; holder != nullptr && DeclaredLanguage(*holder) == nullptr; ++passed) {
        if (passed >= kShortWalk) {
            if (const auto known = RememberedAnswer(kQuestion, *holder)) {
                holder = *known;
                break;
            }
        }
        holder = ParentOf(*holder);
    }
    RememberAnswer(kQuestion, element, ParentOf, passed, holder);
    return holder;
}

bool IsInLanguage(const Element& element, std::string_view language) {
    const Element* const holder = LanguageHolder(element);
    if (holder == nullptr) return false;
    const std::string_view own = DeclaredLanguage(*holder)->view();
    return EqualIgnoringCase(own.substr(0, language.size()), language) &&
           (own.size() == language.size() || own[language.size()] == '-');
}

bool IsLink(const Element& element) {
    return IsOneOf(kLinks, element) && element.HasAttribute("href");
}

bool IsChecked(const Element& element) {
    if (element.LocalNameView() == "option") return element.HasAttribute("selected");
    return element.LocalNameView() == "input" && element.HasAttribute("checked");
}

bool IsAt(const SelectorTest& test, const Element& element, Counting counting) {
    return IsNth(PositionAmongSiblings(element, counting), test.step, test.offset);
}

}  // namespace

bool MatchesPseudoClass(const SelectorTest& test, const Element& element) {
    switch (test.pseudo) {
    case PseudoClass::Root: return IsRoot(element);
    case PseudoClass::Empty: return IsEmpty(element);
    case PseudoClass::FirstChild: return IsOutermost(element, Counting::Children);
    case PseudoClass::LastChild: return IsOutermost(element, Counting::ChildrenFromEnd);
    case PseudoClass::OnlyChild:
        return IsOutermost(element, Counting::Children) &&
               IsOutermost(element, Counting::ChildrenFromEnd);
    case PseudoClass::FirstOfType: return PositionAmongSiblings(element, Counting::OfType) == 1;
    case PseudoClass::LastOfType:
        return PositionAmongSiblings(element, Counting::OfTypeFromEnd) == 1;
    case PseudoClass::OnlyOfType:
        return PositionAmongSiblings(element, Counting::OfType) == 1 &&
               PositionAmongSiblings(element, Counting::OfTypeFromEnd) == 1;
    case PseudoClass::NthChild: return IsAt(test, element, Counting::Children);
    case PseudoClass::NthLastChild: return IsAt(test, element, Counting::ChildrenFromEnd);
    case PseudoClass::NthOfType: return IsAt(test, element, Counting::OfType);
    case PseudoClass::NthLastOfType: return IsAt(test, element, Counting::OfTypeFromEnd);
    case PseudoClass::Lang: return IsInLanguage(element, test.value);
    case PseudoClass::Contains: return element.TextContent().find(test.value) != astring::npos;
    case PseudoClass::Link: return IsLink(element);
    case PseudoClass::Checked: return IsChecked(element);
    case PseudoClass::Enabled:
        return IsOneOf(kControls, element) && !element.HasAttribute("disabled");
    case PseudoClass::Disabled:
        return IsOneOf(kControls, element) && element.HasAttribute("disabled");
    default: return false;
    }
}

}  // namespace Dom::CSS::detail
