// SPDX-License-Identifier: MIT
#include "dom/css/ValueMaking.h"

#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSValueList.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/Primitive.h"
#include "dom/css/SpecialValues.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kInherit = "inherit";

bool IsDimension(const Primitive& primitive) {
    return primitive.type == CSSPrimitiveValue::CSS_DIMENSION;
}

// A number of so many digits is printed with all of them, and without an exponent.
constexpr std::ptrdiff_t kSafeDigits = 6;
constexpr float kLeastSafe = 1e-4F;

bool PrintsNumber(const Primitive& primitive, std::string_view text) {
    if (primitive.type == CSSPrimitiveValue::CSS_RAD) return false;
    const std::string_view digits = text.substr(0, text.size() - primitive.unit.size());
    const float size = std::fabs(primitive.number);
    return std::ranges::count_if(digits, IsDigit) <= kSafeDigits &&
           (size == 0 || size >= kLeastSafe);
}

// Tells whether a value prints what means the same as the text that it was read from.
bool PrintsTheSame(const Primitive& primitive, std::string_view text) {
    constexpr char kEscape = '\\';
    switch (primitive.type) {
    case CSSPrimitiveValue::CSS_STRING:
    case CSSPrimitiveValue::CSS_IDENT: return text.find(kEscape) == std::string_view::npos;
    case CSSPrimitiveValue::CSS_URI:
        return text.find(kEscape) == std::string_view::npos &&
               primitive.string.find('"') == std::string_view::npos;
    case CSSPrimitiveValue::CSS_UNKNOWN:
    case CSSPrimitiveValue::CSS_RECT:
    case CSSPrimitiveValue::CSS_RGBCOLOR: return true;
    case CSSPrimitiveValue::CSS_ATTR:
    case CSSPrimitiveValue::CSS_COUNTER: return false;
    default: return PrintsNumber(primitive, text);
    }
}

bool SaysAll(const Primitive& primitive, std::string_view text, ValueReading reading) {
    return primitive.saysAll &&
           (reading == ValueReading::Literal || PrintsTheSame(primitive, text));
}

using MakePiece = std::unique_ptr<CSSValue> (*)(const Primitive&);

std::unique_ptr<CSSValue> MakePlain(const Primitive& primitive) {
    return std::make_unique<CSSPrimitiveValue>(primitive);
}

std::unique_ptr<CSSValue> MakeWithUnit(const Primitive& primitive) {
    if (IsDimension(primitive)) return std::make_unique<DimensionValue>(primitive);
    return MakePlain(primitive);
}

// Returns whether all of the text is in the values, if they keep their units.
bool AddPiecesMadeBy(MakePiece make, DOMList<CSSValue*>& list, std::string_view text,
                     char separator, ValueReading reading) {
    bool saysAll = true;
    astring buffer;
    ListPieces pieces(text, separator);
    for (std::string_view piece; pieces.Next(piece);) {
        const Primitive primitive = ReadPrimitive(piece, buffer);
        saysAll = saysAll && SaysAll(primitive, piece, reading);
        auto value = make(primitive);
        list.AddItem(value.get());
        static_cast<void>(value.release());  // the list's now
    }
    return saysAll;
}

}  // namespace

void AddPieces(DOMList<CSSValue*>& list, std::string_view text, char separator) {
    AddPiecesMadeBy(MakePlain, list, text, separator, ValueReading::Literal);
}

std::optional<Primitive> ReadWholePrimitive(std::string_view text, astring& buffer,
                                            ValueReading reading) {
    if (text.empty()) return Primitive();
    if (FindSeparator(text) != '\0' || EqualIgnoringCase(text, kInherit)) return {};
    const Primitive primitive = ReadPrimitive(text, buffer);
    if (!SaysAll(primitive, text, reading) || IsDimension(primitive)) return {};
    return primitive;
}

std::unique_ptr<CSSValue> MakeOtherValue(std::string_view text, ValueReading reading) {
    if (EqualIgnoringCase(text, kInherit)) return std::make_unique<InheritValue>();
    astring buffer;
    if (const char separator = FindSeparator(text); separator != '\0') {
        auto list = std::make_unique<CSSValueList>(nullptr, 0, separator);
        if (AddPiecesMadeBy(MakeWithUnit, *list, text, separator, reading)) return list;
    } else if (const Primitive primitive = ReadPrimitive(text, buffer);
               SaysAll(primitive, text, reading) && IsDimension(primitive)) {
        return MakeWithUnit(primitive);
    }
    return std::make_unique<CustomValue>(text);
}

}  // namespace Dom::CSS::detail
