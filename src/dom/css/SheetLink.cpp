// SPDX-License-Identifier: MIT
#include "dom/css/SheetLink.h"

#include "dom/NodeAccess.h"
#include "dom/PseudoAttributes.h"
#include "dom/StyleTarget.h"
#include "dom/XhtmlNames.h"
#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/SheetMaking.h"

#include <algorithm>
#include <cstddef>

namespace Dom::CSS::detail {

using Dom::detail::NodeAccess;
using Dom::detail::XhtmlAttribute;

namespace {

constexpr std::string_view kSvgUri = "http://www.w3.org/2000/svg";

// Tells whether a media type (RFC 2045 section 5.1) is that of the sheets, or none.
bool IsSheetType(std::string_view type) {
    type = Trimmed(type.substr(0, type.find(';')));
    return type.empty() || EqualIgnoringCase(type, kSheetType);
}

std::optional<SheetLink> TextLinkOf(Element& element) {
    if (!IsSheetType(XhtmlAttribute(element, "type"))) return std::nullopt;
    if (Dom::detail::SaysDisabled(XhtmlAttribute(element, "disabled"))) return std::nullopt;
    return SheetLink{.owner = &element,
                     .title = XhtmlAttribute(element, "title"),
                     .media = XhtmlAttribute(element, "media"),
                     .isText = true};
}

}  // namespace

bool HasWord(std::string_view text, std::string_view word) {
    while (!text.empty()) {
        const std::size_t length = std::min(text.find_first_of(kSpace), text.size());
        if (EqualIgnoringCase(text.substr(0, length), word)) return true;
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return false;
}

astring TextIn(const Element& element) {
    astring text;
    const Node* node = NodeAccess::First(element);
    while (node != nullptr) {
        const bool isReference = node->NodeType() == Node::ENTITY_REFERENCE_NODE;
        if (node->NodeType() == Node::TEXT_NODE || node->NodeType() == Node::CDATA_SECTION_NODE) {
            text += node->NodeValue();
        }
        node = isReference ? NodeAccess::NextBelow(element, *node)
                           : NodeAccess::NextBehind(element, *node);
    }
    return text;
}

// StyleProcessingInstruction spells "alternate" in another way; both count.
std::optional<SheetLink> LinkOf(ProcessingInstruction& instruction) {
    if (instruction.Target() != Dom::detail::kStyleTarget) return std::nullopt;
    SheetLink link{.owner = &instruction};
    astring type;
    bool isAlternate = false;
    Dom::detail::PseudoAttributes attributes(instruction.Data());
    while (attributes.Next()) {
        const std::string_view name = attributes.Name();
        const astring& value = attributes.Value();
        if (name == "href") link.href = Trimmed(value);
        if (name == "title") link.title = value;
        if (name == "media") link.media = value;
        if (name == "charset") link.charset = value;
        if (name == "type") type = value;
        if (name != "alternate" && name != "altenate") continue;
        isAlternate = isAlternate || EqualIgnoringCase(value, "yes");
    }
    if (isAlternate || !IsSheetType(type)) return std::nullopt;
    return link;
}

std::optional<SheetLink> LinkOf(Element& element, std::string_view xhtml) {
    if (IsNamed(element, xhtml, "style") || IsNamed(element, kSvgUri, "style")) {
        return TextLinkOf(element);
    }
    if (!IsNamed(element, xhtml, "link")) return std::nullopt;
    const astring& rel = XhtmlAttribute(element, "rel");
    if (!HasWord(rel, "stylesheet") || HasWord(rel, "alternate")) return std::nullopt;
    if (!IsSheetType(XhtmlAttribute(element, "type"))) return std::nullopt;
    if (Dom::detail::HasAttributeOfOwn(element, "disabled") || element.HasAttribute("disabled")) {
        return std::nullopt;
    }
    return SheetLink{.owner = &element,
                     .href = astring(Trimmed(XhtmlAttribute(element, "href"))),
                     .title = XhtmlAttribute(element, "title"),
                     .media = XhtmlAttribute(element, "media"),
                     .charset = XhtmlAttribute(element, "charset")};
}

}  // namespace Dom::CSS::detail
