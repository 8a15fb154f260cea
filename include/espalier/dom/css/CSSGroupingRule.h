// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSRuleList.h>

namespace Dom::CSS {

/// A rule with a condition and other rules in it, which it owns: "@media" or "@supports".
class ESPALIER_EXPORT CSSGroupingRule : public CSSRule {
public:
    ~CSSGroupingRule() override;

    void* QueryInterface(const char* className) override;
    /// Returns the "@" with its name, the condition, " { ", the rules and " }".
    astring CssText() const override;
    /// Replaces the rule by what a text says, which must be a rule of the same kind.
    /// \throws DOMException SYNTAX_ERR "Syntax error in rule"; nothing has changed then
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns the text of the condition, without white space around it.
    virtual const astring& ConditionText() const = 0;

    /// Returns the rules.
    CSSRuleList& CssRules() { return rules_; }
    const CSSRuleList& CssRules() const { return rules_; }

protected:
    CSSGroupingRule(RULE_TYPE type, RULE_ORIGIN origin, CSSStyleSheet* sheet, CSSRule* parentRule);

private:
    friend class detail::RuleMaking;

    virtual const char* Keyword() const = 0;
    virtual void SetConditionText(const astring& text) = 0;

    CSSRuleList rules_;
};

}  // namespace Dom::CSS
