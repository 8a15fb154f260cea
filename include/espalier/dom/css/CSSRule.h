// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/SourcePlace.h>

namespace Dom::CSS {

/// A rule of a style sheet.
class ESPALIER_EXPORT CSSRule {
public:
    /// The kinds of rules, as numbered by DOM Level 2 Style. All but the first two are made by
    /// ParseStyleSheet() alone.
    enum RULE_TYPE : unsigned short {
        UNKNOWN_RULE = 0,    ///< a rule that begins with "@"
        STYLE_RULE = 1,      ///< a selector and a declaration
        CHARSET_RULE = 2,    ///< "@charset" at the begin of a sheet
        IMPORT_RULE = 3,     ///< "@import"
        MEDIA_RULE = 4,      ///< "@media" with the rules in it
        FONT_FACE_RULE = 5,  ///< "@font-face"
        PAGE_RULE = 6,       ///< "@page"
        SUPPORTS_RULE = 12   ///< "@supports" with the rules in it; numbered by CSSOM
    };

    /// Where rules come from. Among important declarations the greater number wins, among others
    /// the smaller one.
    enum RULE_ORIGIN : unsigned short {
        Author = 0,    ///< the document
        User = 1,      ///< who reads it
        UserAgent = 2  ///< the program that shows it
    };

    CSSRule(const CSSRule&) = delete;
    CSSRule& operator=(const CSSRule&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `className`, for example "Dom::CSS::CSSRule", or null when
    /// it is none. The pointer is that of the subobject of the class.
    virtual void* QueryInterface(const char* className);

    virtual ~CSSRule();

    /// Returns the rule as CSS text.
    virtual astring CssText() const = 0;
    /// Replaces the rule by what a text says.
    /// \param text ends with a NUL
    virtual void SetCssText(const char* text) = 0;
    virtual void SetCssText(const astring& text);

    /// Returns the kind.
    RULE_TYPE Type() const { return type_; }
    /// Returns where the rule comes from.
    RULE_ORIGIN Origin() const { return origin_; }
    /// Returns the sheet that the rule is in, or null.
    CSSStyleSheet* ParentStyleSheet() const { return parentStyleSheet_; }
    /// Returns the rule that this one is in, or null.
    CSSRule* ParentRule() const { return parentRule_; }
    /// Returns where the rule begins in the text that ParseStyleSheet() has read; no place for
    /// other rules.
    SourcePlace Place() const { return place_; }

protected:
    CSSRule(RULE_TYPE type, RULE_ORIGIN origin, CSSStyleSheet* sheet, CSSRule* parentRule)
        : type_(type), origin_(origin), parentStyleSheet_(sheet), parentRule_(parentRule) {}

private:
    friend class CSSRuleList;
    friend class detail::RuleMaking;

    RULE_TYPE type_;
    RULE_ORIGIN origin_;
    CSSStyleSheet* parentStyleSheet_;
    CSSRule* parentRule_;
    SourcePlace place_;
    const char* source_ = nullptr;  // the rule in the text that the sheet keeps, or null
};

}  // namespace Dom::CSS
