// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSCharsetRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSCharsetRule::CSSCharsetRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(CHARSET_RULE, origin, sheet, parentRule) {}

CSSCharsetRule::~CSSCharsetRule() = default;

void* CSSCharsetRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSCharsetRule")) return this;
    return CSSRule::QueryInterface(className);
}

astring CSSCharsetRule::CssText() const {
    astring text = "@charset \"";
    return text.append(encoding_).append("\";");
}

void CSSCharsetRule::SetCssText(const char* text) {
    encoding_ = detail::MakeRuleLike(text, *this)->encoding_;
}

}  // namespace Dom::CSS
