// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSRule.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

CSSRule::~CSSRule() = default;

void* CSSRule::QueryInterface(const char* className) {
    return Dom::detail::IsInterface(className, "Dom::CSS::CSSRule") ? this : nullptr;
}

void CSSRule::SetCssText(const astring& text) { SetCssText(text.c_str()); }

}  // namespace Dom::CSS
