// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSFontFaceRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSFontFaceRule::CSSFontFaceRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(FONT_FACE_RULE, origin, sheet, parentRule), style_(this) {}

CSSFontFaceRule::~CSSFontFaceRule() = default;

void* CSSFontFaceRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSFontFaceRule")) return this;
    return CSSRule::QueryInterface(className);
}

astring CSSFontFaceRule::CssText() const {
    astring text = "@font-face { ";
    return text.append(style_.CssText()).append(" }");
}

void CSSFontFaceRule::SetCssText(const char* text) {
    style_ = detail::MakeRuleLike(text, *this)->style_;
}

}  // namespace Dom::CSS
