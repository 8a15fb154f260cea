// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSGroupingRule.h>

namespace Dom::CSS {

/// Rules for programs that know something: "@supports (display: grid) { ... }". The condition is
/// kept; a RuleIndex that is asked for a medium looks at it.
class ESPALIER_EXPORT CSSSupportsRule : public CSSGroupingRule {
public:
    CSSSupportsRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSSupportsRule() override;

    void* QueryInterface(const char* className) override;
    const astring& ConditionText() const override { return condition_; }

private:
    const char* Keyword() const override { return "@supports"; }
    void SetConditionText(const astring& text) override { condition_ = text; }

    astring condition_;
};

}  // namespace Dom::CSS
