// SPDX-License-Identifier: MIT
#include <espalier/dom/css/ElementCSSInlineStyle.h>

#include "dom/InterfaceName.h"

namespace Dom::CSS {

ElementCSSInlineStyle::ElementCSSInlineStyle() : style_(nullptr) {}

ElementCSSInlineStyle::~ElementCSSInlineStyle() = default;

void* ElementCSSInlineStyle::QueryInterface(const char* className) {
    return Dom::detail::IsInterface(className, "Dom::CSS::ElementCSSInlineStyle") ? this : nullptr;
}

void ElementCSSInlineStyle::UpdateStyle() {}

}  // namespace Dom::CSS
