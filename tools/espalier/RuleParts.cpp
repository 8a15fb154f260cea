// SPDX-License-Identifier: MIT
#include "RuleParts.h"

#include <espalier/dom/css/CSSFontFaceRule.h>
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSSupportsRule.h>

namespace Tool {

namespace {

using Dom::CSS::CSSRule;

std::string Head(const char* name, const astring& condition) {
    std::string head = name;
    if (!condition.empty()) head.append(" ").append(condition.view());
    return head;
}

RuleParts OfGroup(const char* name, const Dom::CSS::CSSGroupingRule& group) {
    return {.head = Head(name, group.ConditionText()), .rules = &group.CssRules()};
}

}  // namespace

RuleParts PartsOf(const CSSRule& rule) {
    switch (rule.Type()) {
    case CSSRule::STYLE_RULE: {
        const auto& style = static_cast<const Dom::CSS::CSSStyleRule&>(rule);
        return {.head = style.SelectorText().str(),
                .style = &style.Style(),
                .isStyleRule = true,
                .specificity = style.Specificity()};
    }
    case CSSRule::MEDIA_RULE:
        return OfGroup("@media", static_cast<const Dom::CSS::CSSMediaRule&>(rule));
    case CSSRule::SUPPORTS_RULE:
        return OfGroup("@supports", static_cast<const Dom::CSS::CSSSupportsRule&>(rule));
    case CSSRule::FONT_FACE_RULE:
        return {.head = "@font-face",
                .style = &static_cast<const Dom::CSS::CSSFontFaceRule&>(rule).Style()};
    case CSSRule::PAGE_RULE: {
        const auto& page = static_cast<const Dom::CSS::CSSPageRule&>(rule);
        return {.head = Head("@page", page.SelectorText()), .style = &page.Style()};
    }
    default: return {.head = rule.CssText().str()};
    }
}

}  // namespace Tool
