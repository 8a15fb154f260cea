// SPDX-License-Identifier: MIT
#include <espalier/dom/Element.h>
#include <espalier/dom/css/QuerySelector.h>

#include "css/CardPage.h"
#include "css/PageStyling.h"

#include <optional>
#include <stdexcept>

namespace bench {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;

namespace {

// The element behind another one in document order, or null.
Dom::Element* NextElement(const Dom::Node& node) {
    const Dom::Node* at = &node;
    const Dom::Node* next = at->FirstChild();
    for (;;) {
        while (next == nullptr) {
            next = at->NextSibling();
            if (next != nullptr) break;
            at = at->ParentNode();
            if (at == nullptr) return nullptr;
        }
        at = next;
        if (at->NodeType() == Dom::Node::ELEMENT_NODE) {
            return const_cast<Dom::Element*>(static_cast<const Dom::Element*>(at));
        }
        next = at->FirstChild();
    }
}

// The rule that selects kRareClass and nothing else.
CSSStyleRule& RareRule(const Dom::CSS::StyleResolver& resolver) {
    for (const Dom::CSS::CSSStyleSheet* const sheet : resolver.Sheets()) {
        for (CSSRule* const rule : sheet->CssRules()) {
            if (rule->Type() != CSSRule::STYLE_RULE) continue;
            auto& styleRule = static_cast<CSSStyleRule&>(*rule);
            if (styleRule.SelectorText() == std::string(".") + kRareClass) return styleRule;
        }
    }
    throw std::runtime_error(std::string("the sheet has no rule for .") + kRareClass);
}

}  // namespace

void EspalierPage::AddSheet(const std::string& sheet) {
    resolver_.AddSheetsOf(document_,
                          [&sheet](const astring&, const astring&) -> std::optional<astring> {
                              return astring(sheet);
                          });
}

std::size_t EspalierPage::Style() {
    std::size_t count = 0;
    for (Dom::Element* element = NextElement(document_); element != nullptr;
         element = NextElement(*element)) {
        if (!resolver_.StyleOf(*element).Value("color").empty()) ++count;
    }
    return count;
}

std::size_t EspalierPage::CountRare(const char* fontStyle) {
    std::size_t count = 0;
    const std::string selector = std::string(".") + kRareClass;
    for (Dom::Element* const element : Dom::CSS::QuerySelectorAll(document_, selector)) {
        if (resolver_.StyleOf(*element).Value("font-style") == fontStyle) ++count;
    }
    return count;
}

void EspalierPage::ChangeRareRule(const char* fontStyle) {
    CSSStyleRule& rule = RareRule(resolver_);
    rule.Style().SetProperty("font-style", fontStyle, "important");
    resolver_.RuleHasChanged(rule);
}

std::size_t StyleEspalierPage(const std::string& page, const std::string& sheet) {
    EspalierPage made(page);
    made.AddSheet(sheet);
    return made.Style();
}

}  // namespace bench
