// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSGroupingRule.h>
#include <espalier/dom/css/MediaList.h>

namespace Dom::CSS {

/// Rules for some media: "@media print { ... }".
class ESPALIER_EXPORT CSSMediaRule : public CSSGroupingRule {
public:
    CSSMediaRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSMediaRule() override;

    void* QueryInterface(const char* className) override;
    const astring& ConditionText() const override { return media_.MediaText(); }

    /// Returns the media, to look at or to change; MatchesMedia() compares them.
    StyleSheets::MediaList& GetMediaList() { return media_; }
    const StyleSheets::MediaList& GetMediaList() const { return media_; }

private:
    const char* Keyword() const override { return "@media"; }
    void SetConditionText(const astring& text) override { media_.SetMediaText(text); }

    StyleSheets::MediaList media_;
};

}  // namespace Dom::CSS
