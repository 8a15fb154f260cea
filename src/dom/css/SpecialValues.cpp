// SPDX-License-Identifier: MIT
#include "dom/css/SpecialValues.h"

#include <espalier/dom/DOMException.h>

#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"

#include <utility>

namespace Dom::CSS::detail {

void InheritValue::SetCssText(const char* /*text*/) {
    DOMException::ThrowDOMException(DOMException::INVALID_ACCESS_ERR, Message::kInherit);
}

astring DimensionValue::CssText() const {
    astring text = CSSPrimitiveValue::CssText();
    if (PrimitiveType() == CSS_DIMENSION) text.append(unit_);
    return text;
}

void DimensionValue::SetCssText(const char* text) {
    astring buffer;
    astring unit(ReadPrimitive(Trimmed(text), buffer).unit);
    CSSPrimitiveValue::SetCssText(text);
    unit_ = std::move(unit);
}

void CustomValue::SetCssText(const char* text) { text_ = Trimmed(text); }

}  // namespace Dom::CSS::detail
