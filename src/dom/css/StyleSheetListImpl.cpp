// SPDX-License-Identifier: MIT
#include <espalier/dom/css/StyleSheetListImpl.h>

#include "dom/InterfaceName.h"

#include <algorithm>
#include <cassert>
#include <vector>

namespace Dom::StyleSheets {

StyleSheetListImpl::StyleSheetListImpl() = default;

// The sheets go while the list can still be told of it. Each leaves it first, so that it need not
// be looked for.
StyleSheetListImpl::~StyleSheetListImpl() {
    while (Length() > 0) {
        StyleSheet* const last = Item(Length() - 1);
        RemoveItemAt(Length() - 1);
        delete last;
    }
}

void* StyleSheetListImpl::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::StyleSheets::StyleSheetListImpl")) return this;
    return StyleSheetList::QueryInterface(name);
}

void StyleSheetListImpl::AddItem(StyleSheet* sheet) {
    assert(sheet == nullptr || std::ranges::find(sheet->lists_, this) == sheet->lists_.end());
    if (sheet != nullptr) sheet->lists_.push_back(this);
    try {
        StyleSheetList::AddItem(sheet);
    } catch (...) {
        if (sheet != nullptr) sheet->lists_.pop_back();
        throw;
    }
}

void StyleSheetListImpl::RemoveItem(StyleSheet* sheet) {
    if (sheet != nullptr) std::erase(sheet->lists_, this);
    StyleSheetList::RemoveItem(sheet);
}

void StyleSheetListImpl::RemoveItemAt(unsigned long index) {
    StyleSheet* const sheet = Item(index);
    if (sheet != nullptr) std::erase(sheet->lists_, this);
    StyleSheetList::RemoveItemAt(index);
}

}  // namespace Dom::StyleSheets
