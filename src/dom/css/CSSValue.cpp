// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSValue.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

CSSValue::~CSSValue() = default;

void* CSSValue::QueryInterface(const char* className) {
    return Dom::detail::IsInterface(className, "Dom::CSS::CSSValue") ? this : nullptr;
}

void CSSValue::SetCssText(const astring& text) { SetCssText(text.c_str()); }

}  // namespace Dom::CSS
