// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/MediaList.h>

namespace Dom::CSS {

/// A reference to another style sheet: "@import url(a.css) print;". Nothing is fetched.
class ESPALIER_EXPORT CSSImportRule : public CSSRule {
public:
    CSSImportRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSImportRule() override;

    void* QueryInterface(const char* className) override;
    /// Returns the rule with its address in quotes.
    astring CssText() const override;
    /// Replaces the rule by what a text says, which must be an "@import".
    /// \throws DOMException SYNTAX_ERR "Syntax error in rule"; nothing has changed then
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns the address as it stands in the rule, without quotes and escapes.
    const astring& Href() const { return href_; }
    /// Returns the media that the sheet is for; none when it is for all.
    StyleSheets::MediaList& GetMediaList() { return media_; }
    const StyleSheets::MediaList& GetMediaList() const { return media_; }

private:
    friend class detail::RuleMaking;

    astring href_;
    StyleSheets::MediaList media_;
};

}  // namespace Dom::CSS
