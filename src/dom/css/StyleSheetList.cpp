// SPDX-License-Identifier: MIT
#include <espalier/dom/css/StyleSheetList.h>

#include <string_view>

namespace Dom::StyleSheets {

StyleSheetList::StyleSheetList() = default;
StyleSheetList::~StyleSheetList() = default;

void* StyleSheetList::QueryInterface(const char* name) {
    return std::string_view(name) == "Dom::StyleSheets::StyleSheetList" ? this : nullptr;
}

}  // namespace Dom::StyleSheets
