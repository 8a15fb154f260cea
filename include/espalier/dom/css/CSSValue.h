// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

namespace Dom::CSS {

/// The value of a CSS property.
class ESPALIER_EXPORT CSSValue {
public:
    /// The kinds of values, as numbered by DOM Level 2 Style.
    enum UnitTypes : unsigned short {
        CSS_INHERIT = 0,          ///< the value of the parent
        CSS_PRIMITIVE_VALUE = 1,  ///< a CSSPrimitiveValue
        CSS_VALUE_LIST = 2,       ///< a CSSValueList
        CSS_CUSTOM = 3            ///< a text, kept as it is
    };

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `className`, for example "Dom::CSS::CSSValue", or null when
    /// it is none. The pointer is that of the subobject of the class.
    virtual void* QueryInterface(const char* className);

    virtual ~CSSValue();

    /// Returns the value as CSS text.
    virtual astring CssText() const = 0;
    /// Replaces the value by what a text says.
    /// \param text ends with a NUL
    virtual void SetCssText(const char* text) = 0;
    virtual void SetCssText(const astring& text);
    /// Returns a copy of its own, which belongs to the caller.
    virtual CSSValue* Clone() const = 0;

    /// Returns the kind.
    UnitTypes CssValueType() const { return cssValueType_; }

protected:
    explicit CSSValue(UnitTypes type) : cssValueType_(type) {}
    CSSValue(const CSSValue&) = default;
    CSSValue& operator=(const CSSValue&) = default;

private:
    UnitTypes cssValueType_;
};

}  // namespace Dom::CSS
