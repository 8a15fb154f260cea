// SPDX-License-Identifier: MIT
#include <espalier/dom/css/DocumentStyle.h>

#include <string_view>

namespace Dom::StyleSheets {

DocumentStyle::DocumentStyle() = default;
DocumentStyle::~DocumentStyle() = default;

void* DocumentStyle::QueryInterface(const char* name) {
    const std::string_view wanted = name;
    const bool isThis = wanted == "DocumentStyle" || wanted == "Dom::StyleSheets::DocumentStyle";
    return isThis ? this : nullptr;
}

}  // namespace Dom::StyleSheets
