// SPDX-License-Identifier: MIT
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/StyleSheet.h>

#include "dom/InterfaceName.h"

namespace Dom::StyleSheets {

LinkStyle::LinkStyle(StyleSheet* sheet) { SetSheet(sheet); }

LinkStyle::~LinkStyle() { SetSheet(nullptr); }

void* LinkStyle::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::StyleSheets::LinkStyle") ? this : nullptr;
}

void LinkStyle::SetSheet(StyleSheet* sheet) {
    if (sheet_ != nullptr) sheet_->keeper_ = nullptr;
    sheet_ = sheet;
    if (sheet == nullptr) return;
    if (sheet->keeper_ != nullptr) sheet->keeper_->sheet_ = nullptr;
    sheet->keeper_ = this;
}

}  // namespace Dom::StyleSheets
