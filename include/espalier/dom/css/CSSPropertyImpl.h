// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSValue.h>
#include <espalier/dom/css/Forward.h>

#include <memory>
#include <string_view>

namespace Dom::CSS {

/// One property of a declaration: its name, its value and how much it weighs.
///
/// A copy shares the value with what it was made from: a change in one shows in the other.
class ESPALIER_EXPORT CSSPropertyImpl {
public:
    /// \param value not null; belongs to the property from then on, also when this throws
    CSSPropertyImpl(const astring& name, CSSValue* value, bool important,
                    CSSRule::RULE_ORIGIN origin, int specificity, bool shorthand);
    CSSPropertyImpl(const CSSPropertyImpl&);
    CSSPropertyImpl& operator=(const CSSPropertyImpl&);
    virtual ~CSSPropertyImpl();

    /// Returns the name, as written.
    const astring& Name() const { return name_; }
    /// Returns the text of the value.
    astring Value() const { return value_->CssText(); }
    /// Has the value read another text.
    /// \throws DOMException INVALID_ACCESS_ERR "Setting cssText of inherit value not supported"
    void SetValue(const astring& text) { value_->SetCssText(text); }
    /// Returns the value itself, which stays the property's.
    CSSValue* GetCSSValue() const { return value_.get(); }

    /// Tells whether the property was declared "!important".
    bool Important() const { return important_; }
    /// Tells whether the property was made from a shorthand, such as "margin".
    bool Shorthand() const { return shorthand_; }
    /// Returns the specificity of the selector of the rule that the property came with.
    int Specificity() const { return specificity_; }
    /// Returns where the rule came from that the property came with.
    CSSRule::RULE_ORIGIN Origin() const { return origin_; }
    /// Returns "important" or the empty string.
    astring Priority() const;
    /// Makes the property important when `priority` is "important", in any case; else not.
    void SetPriority(std::string_view priority);
    /// Returns "name: value" or "name: value !important".
    astring CssText() const;

private:
    friend class detail::CompactProperty;

    CSSPropertyImpl(astring&& name, std::shared_ptr<CSSValue>&& value, bool important,
                    CSSRule::RULE_ORIGIN origin, int specificity, bool shorthand);

    astring name_;
    std::shared_ptr<CSSValue> value_;
    bool important_;
    CSSRule::RULE_ORIGIN origin_;
    int specificity_;
    bool shorthand_;
};

}  // namespace Dom::CSS
