// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

namespace Dom::CSS {

/// A font that a style sheet brings along: "@font-face { font-family: a; src: url(a.woff) }".
class ESPALIER_EXPORT CSSFontFaceRule : public CSSRule {
public:
    CSSFontFaceRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSFontFaceRule() override;

    void* QueryInterface(const char* className) override;
    astring CssText() const override;
    /// Replaces the rule by what a text says, which must be a "@font-face".
    /// \throws DOMException SYNTAX_ERR "Syntax error in rule"; nothing has changed then
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns the declaration, to look at or to change.
    CSSStyleDeclaration& Style() { return style_; }
    const CSSStyleDeclaration& Style() const { return style_; }

private:
    CSSStyleDeclaration style_;
};

}  // namespace Dom::CSS
