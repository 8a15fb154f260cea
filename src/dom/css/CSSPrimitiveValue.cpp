// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/Counter.h>
#include <espalier/dom/css/RGBColor.h>
#include <espalier/dom/css/Rect.h>

#include "dom/InterfaceName.h"
#include "dom/css/Messages.h"
#include "dom/css/NumberText.h"
#include "dom/css/Primitive.h"
#include "dom/css/TextCursor.h"
#include "dom/css/UnitConversion.h"

#include <optional>
#include <string_view>
#include <utility>

namespace Dom::CSS {

namespace {

using Type = CSSPrimitiveValue::UnitTypes;

// What CssText() puts around each kind.
//
// Deliberate: "red", "ATTR(" and "counter)" do not read back; sheets have always been written so.
constexpr struct {
    const char* prefix;
    const char* suffix;
} kAround[] = {
    {"", ""},           // CSS_UNKNOWN
    {"", ""},           // CSS_NUMBER
    {"", "%"},          // CSS_PERCENTAGE
    {"", "em"},         // CSS_EMS
    {"", "ex"},         // CSS_EXS
    {"", "px"},         // CSS_PX
    {"", "cm"},         // CSS_CM
    {"", "mm"},         // CSS_MM
    {"", "in"},         // CSS_IN
    {"", "pt"},         // CSS_PT
    {"", "pc"},         // CSS_PC
    {"", "deg"},        // CSS_DEG
    {"", "red"},        // CSS_RAD
    {"", "grad"},       // CSS_GRAD
    {"", "ms"},         // CSS_MS
    {"", "s"},          // CSS_S
    {"", "Hz"},         // CSS_HZ
    {"", "kHz"},        // CSS_KHZ
    {"", ""},           // CSS_DIMENSION
    {"\"", "\""},       // CSS_STRING
    {"url(\"", "\")"},  // CSS_URI
    {"", ""},           // CSS_IDENT
    {"ATTR(", ")"},     // CSS_ATTR
    {"counter)", ")"},  // CSS_COUNTER
    {"rect(", ")"},     // CSS_RECT
    {"", ""},           // CSS_RGBCOLOR
};

bool IsNumber(Type type) {
    return type >= CSSPrimitiveValue::CSS_NUMBER && type <= CSSPrimitiveValue::CSS_DIMENSION;
}

bool IsString(Type type) {
    return type >= CSSPrimitiveValue::CSS_STRING && type <= CSSPrimitiveValue::CSS_ATTR;
}

[[noreturn]] void Throw(const char* message) {
    DOMException::ThrowDOMException(DOMException::INVALID_ACCESS_ERR, message);
}

}  // namespace

CSSPrimitiveValue::CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, const astring& text)
    : CSSValue(CSS_PRIMITIVE_VALUE), descriptor_(descriptor) {
    CSSPrimitiveValue::SetCssText(text.c_str());
}

CSSPrimitiveValue::CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, UnitTypes type,
                                     float value)
    : CSSValue(CSS_PRIMITIVE_VALUE), type_(type), float_(value), descriptor_(descriptor) {}

CSSPrimitiveValue::CSSPrimitiveValue(const CSSPrimitiveTypeImpl* descriptor, UnitTypes type,
                                     const astring& value)
    : CSSValue(CSS_PRIMITIVE_VALUE), type_(type), string_(value), descriptor_(descriptor) {}

CSSPrimitiveValue::CSSPrimitiveValue(const detail::Primitive& primitive)
    : CSSValue(CSS_PRIMITIVE_VALUE),
      type_(primitive.type),
      string_(primitive.string),
      float_(primitive.number),
      descriptor_(nullptr) {}

CSSPrimitiveValue::CSSPrimitiveValue(const CSSPrimitiveValue&) = default;
CSSPrimitiveValue& CSSPrimitiveValue::operator=(const CSSPrimitiveValue&) = default;
CSSPrimitiveValue::~CSSPrimitiveValue() = default;

void* CSSPrimitiveValue::QueryInterface(const char* className) {
    if (Dom::detail::IsInterface(className, "Dom::CSS::CSSPrimitiveValue")) return this;
    return CSSValue::QueryInterface(className);
}

astring CSSPrimitiveValue::CssText() const {
    astring text = Prefix(type_);
    if (IsNumber(type_)) {
        detail::AppendNumber(text, float_);
    } else if (type_ == CSS_STRING) {
        for (const char character : string_) {
            if (character == '"') text += '\\';
            text += character;
        }
    } else {
        text += string_;
    }
    text += Suffix(type_);
    return text;
}

void CSSPrimitiveValue::SetCssText(const char* text) {
    detail::TextCursor cursor(text);
    detail::SkipBlanks(cursor);
    astring buffer;
    const detail::Primitive primitive = detail::ReadPrimitive(cursor.at, buffer);
    string_ = primitive.string;
    float_ = primitive.number;
    type_ = primitive.type;
}

CSSPrimitiveValue* CSSPrimitiveValue::Clone() const { return new CSSPrimitiveValue(*this); }

void CSSPrimitiveValue::SetFloatValue(UnitTypes unit, float value) {
    if (!IsNumber(unit)) Throw(detail::Message::kNotAFloatUnit);
    type_ = unit;
    float_ = value;
}

// Deliberate: the unit that is asked for is tested, not the one that the value has; so numbers come
// as they are for units that have no conversion.
float CSSPrimitiveValue::GetFloatValue(UnitTypes unit) const {
    if (!IsNumber(unit)) Throw(detail::Message::kNotAFloat);
    if (unit < CSS_CM) return float_;
    const float factor = detail::ConversionFactor(type_, unit);
    if (factor == 0) Throw(detail::Message::kFloatNotConvertible);
    return float_ * factor;
}

void CSSPrimitiveValue::SetStringValue(UnitTypes unit, const astring& value) {
    if (!IsString(unit)) Throw(detail::Message::kStringNotConvertible);
    string_ = value;
    type_ = unit;
}

const astring& CSSPrimitiveValue::GetStringValue() const {
    if (!IsString(type_)) Throw(detail::Message::kNotAString);
    return string_;
}

Counter CSSPrimitiveValue::GetCounterValue() const {
    if (type_ != CSS_COUNTER) Throw(detail::Message::kNotACounter);
    return {string_, astring(), astring()};
}

Rect CSSPrimitiveValue::GetRectValue() const {
    std::optional<detail::RectSides> sides;
    if (type_ == CSS_RECT) sides = detail::ReadRectSides(string_);
    if (!sides) Throw(detail::Message::kNotARectangle);
    const auto side = [&sides](std::size_t index) {
        return CSSPrimitiveValue(nullptr, astring((*sides)[index]));
    };
    return {side(0), side(1), side(2), side(3)};
}

RGBColor CSSPrimitiveValue::GetRGBColorValue() const {
    std::optional<unsigned> color;
    detail::TextCursor cursor(string_.view());
    if (type_ == CSS_RGBCOLOR) color = detail::ReadColor(cursor);
    if (!color) Throw(detail::Message::kNotAColor);
    const auto part = [&color](unsigned shift) {
        return CSSPrimitiveValue(nullptr, CSS_NUMBER, static_cast<float>(*color >> shift & 0xFF));
    };
    return {part(16), part(8), part(0)};
}

const char* CSSPrimitiveValue::Prefix(UnitTypes type) {
    return type < std::size(kAround) ? kAround[type].prefix : "";
}

const char* CSSPrimitiveValue::Suffix(UnitTypes type) {
    return type < std::size(kAround) ? kAround[type].suffix : "";
}

CSSPrimitiveValue::UnitTypes ParsePrimitive(const astring& text, float& number, astring& string) {
    astring buffer;
    const detail::Primitive primitive = detail::ReadPrimitive(text, buffer);
    const bool isNumber = IsNumber(primitive.type);
    if (isNumber) number = primitive.number;
    if (!isNumber && primitive.type != CSSPrimitiveValue::CSS_UNKNOWN) string = primitive.string;
    return primitive.type;
}

}  // namespace Dom::CSS
