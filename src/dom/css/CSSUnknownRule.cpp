// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

CSSUnknownRule::CSSUnknownRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSRule(UNKNOWN_RULE, origin, sheet, parentRule) {}

CSSUnknownRule::~CSSUnknownRule() = default;

void* CSSUnknownRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSUnknownRule")) return this;
    return CSSRule::QueryInterface(className);
}

void CSSUnknownRule::SetCssText(const char* text) { text_ = text; }

}  // namespace Dom::CSS
