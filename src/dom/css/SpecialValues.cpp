// SPDX-License-Identifier: MIT
#include "dom/css/SpecialValues.h"

#include <espalier/dom/DOMException.h>

#include "dom/css/CssCharacters.h"
#include "dom/css/Messages.h"

namespace Dom::CSS::detail {

void InheritValue::SetCssText(const char* /*text*/) {
    DOMException::ThrowDOMException(DOMException::INVALID_ACCESS_ERR, Message::kInherit);
}

void CustomValue::SetCssText(const char* text) { text_ = Trimmed(text); }

}  // namespace Dom::CSS::detail
