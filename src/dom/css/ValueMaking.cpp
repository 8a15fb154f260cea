// SPDX-License-Identifier: MIT
#include "dom/css/ValueMaking.h"

#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSValueList.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/ListPieces.h"
#include "dom/css/Primitive.h"
#include "dom/css/SpecialValues.h"

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kInherit = "inherit";

bool IsDimension(const Primitive& primitive) {
    return primitive.type == CSSPrimitiveValue::CSS_DIMENSION;
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
                     char separator) {
    bool saysAll = true;
    astring buffer;
    ListPieces pieces(text, separator);
    for (std::string_view piece; pieces.Next(piece);) {
        const Primitive primitive = ReadPrimitive(piece, buffer);
        saysAll = saysAll && primitive.saysAll;
        auto value = make(primitive);
        list.AddItem(value.get());
        static_cast<void>(value.release());  // the list's now
    }
    return saysAll;
}

}  // namespace

void AddPieces(DOMList<CSSValue*>& list, std::string_view text, char separator) {
    AddPiecesMadeBy(MakePlain, list, text, separator);
}

std::optional<Primitive> ReadWholePrimitive(std::string_view text, astring& buffer) {
    if (text.empty()) return Primitive();
    if (FindSeparator(text) != '\0' || EqualIgnoringCase(text, kInherit)) return {};
    const Primitive primitive = ReadPrimitive(text, buffer);
    if (!primitive.saysAll || IsDimension(primitive)) return {};
    return primitive;
}

std::unique_ptr<CSSValue> MakeOtherValue(std::string_view text) {
    if (EqualIgnoringCase(text, kInherit)) return std::make_unique<InheritValue>();
    astring buffer;
    if (const char separator = FindSeparator(text); separator != '\0') {
        auto list = std::make_unique<CSSValueList>(nullptr, 0, separator);
        if (AddPiecesMadeBy(MakeWithUnit, *list, text, separator)) return list;
    } else if (const Primitive primitive = ReadPrimitive(text, buffer);
               primitive.saysAll && IsDimension(primitive)) {
        return MakeWithUnit(primitive);
    }
    return std::make_unique<CustomValue>(text);
}

}  // namespace Dom::CSS::detail
