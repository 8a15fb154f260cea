// SPDX-License-Identifier: MIT
//
// Takes arbitrary texts, each ended by a NUL, as selectors, and compares them with the elements of
// a small document. A rule that takes one has its specificity, and what an index finds is what the
// rules say one by one. A Selector says the same as a rule with its text, and :not() the contrary.

#include <espalier/css.h>
#include <espalier/dom.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::Element;
using Dom::CSS::CSS_SPECIFICITY;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::MatchedRule;
using Dom::CSS::RuleIndex;
using Dom::CSS::Selector;
using fuzz::Require;
using Rules = std::vector<std::unique_ptr<CSSStyleRule>>;
using Elements = std::vector<const Element*>;

constexpr std::size_t kMostRules = 24;
constexpr const char* kParts[] = {"", "before", "::first-line", "selection", "unknown"};
constexpr char kDocument[] =
    "<html xml:lang='en-GB' xmlns='urn:h'><head><title>t</title><link href='x'/></head>"
    "<body id='top' class='a b'><!-- c --><h1 class='a'>one</h1><p/><p class='b a-b' lang='de'>two"
    "<em title='x-y z'>three</em> <em>four</em></p><?pi?><s:p xmlns:s='urn:s' s:t='u'/>"
    "<ul><li id='l1'/><li class='odd'><a href='h'>a</a><a/></li><li/><li class='odd'> </li></ul>"
    "<form><input checked='' type='text'/><input disabled='1'/><option selected='s'/></form>"
    "<div><div><div id='deep'><p>five</p><b/><p/></div></div></div></body></html>";

// The elements of a document that is loaded once.
const Elements& AllElements() {
    static Dom::Document document;
    static const Elements elements = [] {
        document.LoadXml(kDocument);
        Elements found = {document.DocumentElement()};
        for (std::size_t i = 0; i < found.size(); ++i) {
            for (const Dom::Node& child : found[i]->Children()) {
                if (child.NodeType() != Dom::DOMNodeType::ELEMENT_NODE) continue;
                found.push_back(static_cast<const Element*>(&child));
            }
        }
        return found;
    }();
    return elements;
}

bool Matches(const CSSStyleRule& rule, const Element& element, const char* part) {
    return rule.MatchesSelector(const_cast<Element*>(&element), part);
}

std::optional<Selector> MakeSelector(const std::string& text) {
    try {
        return std::optional<Selector>(std::in_place, text);
    } catch (const Dom::DOMException&) {
        return {};
    }
}

// Returns a rule with the selectors, or null when they are refused.
std::unique_ptr<CSSStyleRule> MakeRule(const std::string& text) {
    auto rule = std::make_unique<CSSStyleRule>(nullptr, nullptr, Dom::CSS::CSSRule::Author);
    const int specificity = CSS_SPECIFICITY(text.c_str());
    try {
        rule->SetSelectorText(text.c_str());
    } catch (const Dom::DOMException&) {
        Require(specificity < 0 && rule->Specificity() == -1 && rule->SelectorText().empty());
        return nullptr;
    }
    Require(specificity >= 0 && rule->Specificity() == specificity);
    // A backslash at the end has lost the blank that it stood before.
    if (!rule->SelectorText().view().ends_with('\\')) {
        Require(CSS_SPECIFICITY(rule->SelectorText().c_str()) == specificity);
    }
    return rule;
}

void CheckSelector(const std::string& text, const CSSStyleRule* rule) {
    const std::optional<Selector> selector = MakeSelector(text);
    if (!selector) return;
    Require(selector->Text() == text);
    const bool isWhole = rule != nullptr && rule->SelectorText().length() == text.size();
    const std::optional<Selector> contrary = MakeSelector(":not(" + text + ")");
    for (const Element* const element : AllElements()) {
        for (const char* const part : kParts) {
            if (isWhole)
                Require(Matches(*rule, *element, part) == selector->Matches(*element, part));
        }
        if (contrary) Require(contrary->Matches(*element) != selector->Matches(*element));
    }
}

void CheckIndex(const Rules& rules) {
    RuleIndex index;
    for (const auto& rule : rules)
        index.Add(*rule);
    std::vector<MatchedRule> found;
    for (const Element* const element : AllElements()) {
        for (const char* const part : kParts) {
            index.Match(*element, part, found);
            auto next = found.begin();
            for (const auto& rule : rules) {
                if (!Matches(*rule, *element, part)) continue;
                Require(next != found.end() && next->rule == rule.get() && next->specificity >= 0);
                ++next;
            }
            Require(next == found.end());
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    Rules rules;
    while (!input.IsAtEnd() && rules.size() < kMostRules) {
        const std::string text = input.Text();
        std::unique_ptr<CSSStyleRule> rule = MakeRule(text);
        CheckSelector(text, rule.get());
        if (rule == nullptr) continue;
        rule->MatchesSelector("p", "l1", "a b");
        rules.push_back(std::move(rule));
    }
    CheckIndex(rules);
    return 0;
}
