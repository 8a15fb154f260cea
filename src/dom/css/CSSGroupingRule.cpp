// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSGroupingRule.h>

#include "dom/InterfaceName.h"
#include "dom/css/RuleMaking.h"

namespace Dom::CSS {

CSSGroupingRule::CSSGroupingRule(RULE_TYPE type, RULE_ORIGIN origin, CSSStyleSheet* sheet,
                                 CSSRule* parentRule)
    : CSSRule(type, origin, sheet, parentRule) {}

CSSGroupingRule::~CSSGroupingRule() = default;

void* CSSGroupingRule::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSGroupingRule")) return this;
    return CSSRule::QueryInterface(className);
}

// The texts of rules within rules are made from the inside out, each once for each rule around it;
// there are few of these.
astring CSSGroupingRule::CssText() const {
    astring text = Keyword();
    if (!ConditionText().empty()) text.append(" ").append(ConditionText());
    text.append(" {");
    for (const CSSRule* const rule : rules_)
        text.append(" ").append(rule->CssText());
    text.append(" }");
    return text;
}

void CSSGroupingRule::SetCssText(const char* text) {
    const auto made = detail::MakeRuleLike(text, *this);
    SetConditionText(made->ConditionText());
    rules_.DOMList<CSSRule*>::SwapItems(made->rules_);  // moved below
    for (CSSRule* const rule : rules_)
        detail::RuleMaking::Move(*rule, ParentStyleSheet(), this);
}

}  // namespace Dom::CSS
