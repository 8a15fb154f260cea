// SPDX-License-Identifier: MIT
#include <espalier/dom/css/DocumentStyle.h>

#include "dom/InterfaceName.h"

namespace Dom::StyleSheets {

DocumentStyle::DocumentStyle() = default;
DocumentStyle::~DocumentStyle() = default;

void* DocumentStyle::QueryInterface(const char* name) {
    const bool isThis = detail::IsInterface(name, "DocumentStyle") ||
                        detail::IsInterface(name, "Dom::StyleSheets::DocumentStyle");
    return isThis ? this : nullptr;
}

}  // namespace Dom::StyleSheets
