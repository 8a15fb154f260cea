// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSMediaRule.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

CSSMediaRule::CSSMediaRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin)
    : CSSGroupingRule(MEDIA_RULE, origin, sheet, parentRule) {}

CSSMediaRule::~CSSMediaRule() = default;

void* CSSMediaRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSMediaRule")) return this;
    return CSSGroupingRule::QueryInterface(className);
}

}  // namespace Dom::CSS
