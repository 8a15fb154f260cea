// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSValue.h>

#include "dom/css/Primitive.h"

#include <string_view>

namespace Dom::CSS::detail {

/// The value "inherit".
class InheritValue : public CSSValue {
public:
    InheritValue() : CSSValue(CSS_INHERIT) {}

    astring CssText() const override { return "inherit"; }
    /// \throws DOMException INVALID_ACCESS_ERR "Setting cssText of inherit value not supported"
    void SetCssText(const char* text) override;
    using CSSValue::SetCssText;
    InheritValue* Clone() const override { return new InheritValue(*this); }
};

/// A number with a unit that has no number of its own, such as "1.5rem". Other than a plain
/// CSSPrimitiveValue it keeps the unit.
class DimensionValue : public CSSPrimitiveValue {
public:
    explicit DimensionValue(const Primitive& dimension)
        : CSSPrimitiveValue(dimension), unit_(dimension.unit) {}

    astring CssText() const override;
    void SetCssText(const char* text) override;
    using CSSPrimitiveValue::SetCssText;
    DimensionValue* Clone() const override { return new DimensionValue(*this); }

private:
    astring unit_;
};

/// A text that the other kinds of values would not keep, such as "calc(1px + 2px)". It stays as it
/// is, less white space around it.
class CustomValue : public CSSValue {
public:
    /// \param text without white space around it
    explicit CustomValue(std::string_view text) : CSSValue(CSS_CUSTOM), text_(text) {}

    astring CssText() const override { return text_; }
    void SetCssText(const char* text) override;
    using CSSValue::SetCssText;
    CustomValue* Clone() const override { return new CustomValue(*this); }

private:
    astring text_;
};

}  // namespace Dom::CSS::detail
