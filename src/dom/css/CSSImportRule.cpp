// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSImportRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/QuotedText.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSImportRule::CSSImportRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(IMPORT_RULE, origin, sheet, parentRule) {}

CSSImportRule::~CSSImportRule() = default;

void* CSSImportRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSImportRule")) return this;
    return CSSRule::QueryInterface(className);
}

astring CSSImportRule::CssText() const {
    astring text = "@import ";
    text.append(detail::Quoted(href_));
    if (!media_.IsEmpty()) text.append(" ").append(media_.MediaText());
    return text.append(";");
}

void CSSImportRule::SetCssText(const char* text) {
    const auto made = detail::MakeRuleLike(text, *this);
    detail::RuleMaking::SetImport(*this, made->href_, made->media_.MediaText());
}

}  // namespace Dom::CSS
