// SPDX-License-Identifier: MIT
#include "dom/css/ValueMaking.h"

#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSValueList.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/ListPieces.h"
#include "dom/css/Primitive.h"
#include "dom/css/SpecialValues.h"

namespace Dom::CSS::detail {

bool AddPieces(DOMList<CSSValue*>& list, std::string_view text, char separator) {
    bool saysAll = true;
    astring buffer;
    ListPieces pieces(text, separator);
    for (std::string_view piece; pieces.Next(piece);) {
        const Primitive primitive = ReadPrimitive(piece, buffer);
        saysAll = saysAll && primitive.saysAll;
        auto value = std::make_unique<CSSPrimitiveValue>(primitive);
        list.AddItem(value.get());
        static_cast<void>(value.release());  // the list's now
    }
    return saysAll;
}

std::shared_ptr<CSSValue> MakeValue(std::string_view text) {
    if (EqualIgnoringCase(text, "inherit")) return std::make_shared<InheritValue>();
    if (text.empty()) return std::make_shared<CSSPrimitiveValue>(Primitive());

    if (const char separator = FindSeparator(text); separator != '\0') {
        auto list = std::make_shared<CSSValueList>(nullptr, 0, separator);
        if (AddPieces(*list, text, separator)) return list;
    } else {
        astring buffer;
        const Primitive primitive = ReadPrimitive(text, buffer);
        if (primitive.saysAll) return std::make_shared<CSSPrimitiveValue>(primitive);
    }
    return std::make_shared<CustomValue>(text);
}

}  // namespace Dom::CSS::detail
