// SPDX-License-Identifier: MIT
#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>

#include "xml/XmlHashTable.h"

#include <new>

namespace Xml {

namespace {

// What std::bad_alloc says differs between standard libraries; this text is interface.
class BadAllocation final : public std::bad_alloc {
public:
    const char* what() const noexcept override { return "bad allocation"; }
};

}  // namespace

HashMap::HashMap(unsigned size, bool autoGrow) {
    if (!XmlHashInit(&map_, size, autoGrow)) throw BadAllocation();
}

HashMap::HashMap(const HashMap& other) { detail::ShareTable(map_, other.map_); }

HashMap& HashMap::operator=(const HashMap& other) {
    if (this == &other || (map_.table != nullptr && map_.table == other.map_.table)) {
        // Both hold the table already; the hooks and the functions may still differ.
        map_ = other.map_;
        return *this;
    }
    XmlHashDeinit(&map_);
    detail::ShareTable(map_, other.map_);
    return *this;
}

HashMap::~HashMap() { XmlHashDeinit(&map_); }

void HashMap::Insert(const void* key, unsigned length, void* value) {
    if (!XmlHashInsert(&map_, key, length, value)) throw BadAllocation();
}

void HashMap::Remove(const void* key, unsigned length) {
    if (!detail::RemoveKey(map_, key, length)) throw BadAllocation();
}

void HashMap::Remove(HashItem& item) {
    if (!detail::RemoveItem(map_, item.item_)) throw BadAllocation();
    item.item_ = nullptr;
}

void HashMap::Clear() {
    if (!detail::ClearTable(map_)) throw BadAllocation();
}

HashItem HashIterator::First(const HashMap& map) {
    return HashItem(XmlHashIteratorFirst(&iterator_, &map.map_));
}

HashItem HashIterator::Next() { return HashItem(XmlHashIteratorNext(&iterator_)); }

}  // namespace Xml
