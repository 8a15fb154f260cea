// SPDX-License-Identifier: MIT
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/StyleSheet.h>
#include <espalier/dom/css/StyleSheetListImpl.h>

#include "dom/InterfaceName.h"

namespace Dom::StyleSheets {

StyleSheet::StyleSheet(std::string_view type, Node* ownerNode, StyleSheet* parentStyleSheet,
                       std::string_view href, std::string_view title)
    : type_(type),
      ownerNode_(ownerNode),
      parentStyleSheet_(parentStyleSheet),
      href_(href),
      title_(title) {}

StyleSheet::~StyleSheet() {
    if (keeper_ != nullptr) keeper_->sheet_ = nullptr;
    while (!lists_.empty())
        lists_.back()->RemoveItem(this);
}

void* StyleSheet::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::StyleSheets::StyleSheet") ? this : nullptr;
}

}  // namespace Dom::StyleSheets
