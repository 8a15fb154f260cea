// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSValue.h>
#include <espalier/dom/css/Forward.h>

namespace Dom::CSS {

/// One value: a number with a unit, a string, an address, an identifier, a colour or the like.
class ESPALIER_EXPORT CSSPrimitiveValue : public CSSValue {
public:
    /// The kinds and units, as numbered by DOM Level 2 Style.
    enum UnitTypes : unsigned short {
        CSS_UNKNOWN = 0,     ///< not recognised
        CSS_NUMBER = 1,      ///< 1.5
        CSS_PERCENTAGE = 2,  ///< 1.5%
        CSS_EMS = 3,         ///< 1.5em
        CSS_EXS = 4,         ///< 1.5ex
        CSS_PX = 5,          ///< 1.5px
        CSS_CM = 6,          ///< 1.5cm
        CSS_MM = 7,          ///< 1.5mm
        CSS_IN = 8,          ///< 1.5in
        CSS_PT = 9,          ///< 1.5pt
        CSS_PC = 10,         ///< 1.5pc
        CSS_DEG = 11,        ///< 1.5deg
        CSS_RAD = 12,        ///< 1.5rad
        CSS_GRAD = 13,       ///< 1.5grad
        CSS_MS = 14,         ///< 1.5ms
        CSS_S = 15,          ///< 1.5s
        CSS_HZ = 16,         ///< 1.5Hz
        CSS_KHZ = 17,        ///< 1.5kHz
        CSS_DIMENSION = 18,  ///< a number with another unit
        CSS_STRING = 19,     ///< a string
        CSS_URI = 20,        ///< url(...)
        CSS_IDENT = 21,      ///< an identifier
        CSS_ATTR = 22,       ///< attr(...)
        CSS_COUNTER = 23,    ///< counter(...)
        CSS_RECT = 24,       ///< rect(...)
        CSS_RGBCOLOR = 25    ///< \#rrggbb or rgb(...)
    };

    /// Reads the value from a text, as SetCssText().
    /// \param descriptor kept for the caller, whose it stays; may be null
    CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, const astring& text);
    /// Makes a number.
    CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, UnitTypes type, float value);
    /// Makes a string, address, identifier or the like.
    CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, UnitTypes type, const astring& value);
    /// Makes what a text was found to say; for the library itself.
    explicit CSSPrimitiveValue(const detail::Primitive& primitive);
    CSSPrimitiveValue(const CSSPrimitiveValue&);
    CSSPrimitiveValue& operator=(const CSSPrimitiveValue&);
    ~CSSPrimitiveValue() override;

    void* QueryInterface(const char* className) override;
    astring CssText() const override;
    /// Reads the value from a text; never throws for what it is: the kind is CSS_UNKNOWN or
    /// CSS_STRING when nothing else fits.
    void SetCssText(const char* text) override;
    using CSSValue::SetCssText;
    CSSPrimitiveValue* Clone() const override;

    /// Returns the kind.
    UnitTypes PrimitiveType() const { return type_; }
    /// Returns what the caller gave to the constructor.
    const CSSPrimitiveTypeImpl* Descriptor() const { return descriptor_; }

    /// Makes the value a number.
    /// \throws DOMException INVALID_ACCESS_ERR "Unit type is not a float unit", when `unit` is not
    ///     from CSS_NUMBER to CSS_DIMENSION
    void SetFloatValue(UnitTypes unit, float value);
    /// Returns the number in a unit. For units before CSS_CM that is the number as it is, whatever
    /// the kind of the value.
    /// \throws DOMException INVALID_ACCESS_ERR "Primitive value is not a float value", when `unit`
    ///     is not from CSS_NUMBER to CSS_DIMENSION; "The float value can't be converted into the
    ///     specified unit"
    float GetFloatValue(UnitTypes unit) const;
    /// Makes the value a string, address, identifier or attr().
    /// \throws DOMException INVALID_ACCESS_ERR "The string value can't be converted into the
    ///     specified unit", for other kinds
    void SetStringValue(UnitTypes unit, const astring& value);
    /// Returns the string, without quotes, of a string, address, identifier or attr().
    /// \throws DOMException INVALID_ACCESS_ERR "Primitive value is not a string value"
    const astring& GetStringValue() const;

    /// \name Parts of values
    /// By value. They throw DOMException INVALID_ACCESS_ERR when the value is of another kind.
    /// @{
    /// \throws DOMException "Primitive value is not a counter value"
    Counter GetCounterValue() const;
    /// \throws DOMException "Primitive value is not a rectangle value"
    Rect GetRectValue() const;
    /// \throws DOMException "Primitive value is not a color value"
    RGBColor GetRGBColorValue() const;
    /// @}

    /// \name What CssText() puts around a kind
    /// As it has always been: radians are written as "red", attr() as "ATTR()" and counter() as
    /// "counter))", none of which reads back.
    /// @{
    static const char* Prefix(UnitTypes type);
    static const char* Suffix(UnitTypes type);
    const char* Prefix() const { return Prefix(type_); }
    const char* Suffix() const { return Suffix(type_); }
    /// @}

private:
    UnitTypes type_ = CSS_UNKNOWN;
    astring string_;
    float float_ = 0;
    const CSSPrimitiveTypeImpl* descriptor_;
};

/// Tells what kind of value a text is, and what it holds.
///
/// \param number set when it is a number
/// \param string set when it is anything else
/// \return the kind; CSS_UNKNOWN when it is no value
ESPALIER_EXPORT CSSPrimitiveValue::UnitTypes ParsePrimitive(const astring& text, float& number,
                                                            astring& string);

}  // namespace Dom::CSS
