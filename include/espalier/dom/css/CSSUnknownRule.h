// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>

namespace Dom::CSS {

/// A rule that begins with "@", kept as it is.
class ESPALIER_EXPORT CSSUnknownRule : public CSSRule {
public:
    CSSUnknownRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSUnknownRule() override;

    void* QueryInterface(const char* className) override;
    /// Returns the text as it was set.
    astring CssText() const override { return text_; }
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

private:
    astring text_;
};

}  // namespace Dom::CSS
