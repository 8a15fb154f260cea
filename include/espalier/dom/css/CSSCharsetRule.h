// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>

namespace Dom::CSS {

/// The name of its encoding that a style sheet begins with, behind "@charset".
class ESPALIER_EXPORT CSSCharsetRule : public CSSRule {
public:
    CSSCharsetRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSCharsetRule() override;

    void* QueryInterface(const char* className) override;
    astring CssText() const override;
    /// Replaces the rule by what a text says, which must be an "@charset".
    /// \throws DOMException SYNTAX_ERR "Syntax error in rule"; nothing has changed then
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns the name of the encoding, as written.
    const astring& Encoding() const { return encoding_; }

private:
    friend class detail::RuleMaking;

    astring encoding_;
};

}  // namespace Dom::CSS
