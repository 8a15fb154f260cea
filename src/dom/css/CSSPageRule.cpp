// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSPageRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSPageRule::CSSPageRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(PAGE_RULE, origin, sheet, parentRule), style_(this) {}

CSSPageRule::~CSSPageRule() = default;

void* CSSPageRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSPageRule")) return this;
    return CSSRule::QueryInterface(className);
}

astring CSSPageRule::CssText() const {
    astring text = "@page ";
    if (!selectorText_.empty()) text.append(selectorText_).append(" ");
    return text.append("{ ").append(style_.CssText()).append(" }");
}

void CSSPageRule::SetCssText(const char* text) {
    const auto made = detail::MakeRuleLike(text, *this);
    style_ = made->style_;
    selectorText_ = made->selectorText_;
}

}  // namespace Dom::CSS
