// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSSupportsRule.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

CSSSupportsRule::CSSSupportsRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSGroupingRule(SUPPORTS_RULE, origin, sheet, parentRule) {}

CSSSupportsRule::~CSSSupportsRule() = default;

void* CSSSupportsRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSSupportsRule")) return this;
    return CSSGroupingRule::QueryInterface(className);
}

}  // namespace Dom::CSS
