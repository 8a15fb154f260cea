// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

namespace Dom::CSS {

/// What pages look like: "@page :first { margin: 1in }".
class ESPALIER_EXPORT CSSPageRule : public CSSRule {
public:
    CSSPageRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSPageRule() override;

    void* QueryInterface(const char* className) override;
    astring CssText() const override;
    /// Replaces the rule by what a text says, which must be a "@page".
    /// \throws DOMException SYNTAX_ERR "Syntax error in rule"; nothing has changed then
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns which pages are meant, such as ":first"; empty for all.
    const astring& SelectorText() const { return selectorText_; }
    /// Returns the declaration, to look at or to change.
    CSSStyleDeclaration& Style() { return style_; }
    const CSSStyleDeclaration& Style() const { return style_; }

private:
    friend class detail::RuleMaking;

    astring selectorText_;
    CSSStyleDeclaration style_;
};

}  // namespace Dom::CSS
