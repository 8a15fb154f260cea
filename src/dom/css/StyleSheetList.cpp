// SPDX-License-Identifier: MIT
#include <espalier/dom/css/StyleSheetList.h>

#include "dom/InterfaceName.h"

namespace Dom::StyleSheets {

StyleSheetList::StyleSheetList() = default;
StyleSheetList::~StyleSheetList() = default;

void* StyleSheetList::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::StyleSheets::StyleSheetList") ? this : nullptr;
}

}  // namespace Dom::StyleSheets
