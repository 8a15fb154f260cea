// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlHash.h>

#include "xml/XmlHashTable.h"

#include <bit>
#include <cassert>
#include <limits>
#include <new>

namespace detail = Xml::detail;

namespace {

constexpr unsigned kLargestInitialSize = 0x10000;
constexpr unsigned kLargestSizeToGrow = 0x20000;  // so the largest table has twice as many buckets

// Expanded in both functions that find: an exported function could be replaced from outside, so
// that a call to it is never expanded.
inline XmlHashItem* FindItem(const XmlHashMap& map, const void* key, unsigned length) {
    if (map.table == nullptr) return nullptr;
    const detail::HashKey wanted(key, length);
    const detail::HashStorage& storage = *detail::StorageOf(map);
    if (!detail::IndexServes(map, storage)) {
        const std::uint32_t hash = detail::HashOf(map, wanted.bytes(), wanted.length());
        return *detail::FindLink(map, detail::BucketOf(map, hash), hash, wanted);
    }
    const bool isSeeded = map.hash == detail::SeededHash || map.hash == XmlKeyHashBinary;
    const std::uint32_t hash = isSeeded ? detail::SeededHash(wanted.bytes(), wanted.length())
                                        : map.hash(wanted.bytes(), wanted.length());
    return storage.index.Find(hash, wanted.bytes(), wanted.length())->item;
}

}  // namespace

extern "C" {

unsigned XmlKeyHashBinary(const char* key, unsigned length) noexcept {
    std::uint32_t hash = 0;
    for (const char* const end = key + length; key != end; ++key) {
        // Deliberate: bytes are signed, so those above 0x7F add negative amounts.
        hash += static_cast<std::uint32_t>(static_cast<signed char>(*key));
        hash *= 1025;
        hash ^= hash >> 6;
    }
    hash *= 9;
    hash ^= hash >> 11;
    hash *= 32769;
    return hash;
}

char XmlKeyCompareBinary(const char* key1, const char* key2, unsigned length1,
                         unsigned length2) noexcept {
    if (length1 != length2) return 0;
    return detail::EqualBytes(key1, key2, length1) ? 1 : 0;
}

bool XmlHashInit(XmlHashMap* map, unsigned size, bool growAutomatically) noexcept {
    map->size = size == 0 ? 1 : std::bit_floor(size);
    // Deliberate: larger requests get half of the largest array that could be asked for, not that
    // array.
    if (map->size > kLargestInitialSize) map->size = kLargestInitialSize;
    map->hash = XmlKeyHashBinary;
    map->compare = XmlKeyCompareBinary;
    map->allocate = nullptr;
    map->deallocate = nullptr;
    map->growAutomatically = growAutomatically;
    detail::CreateTable(*map);
    return map->table != nullptr;
}

XmlHashMap* XmlHashCreate(unsigned size, bool growAutomatically) noexcept {
    XmlHashMap* const map = new (std::nothrow) XmlHashMap;
    if (map == nullptr || XmlHashInit(map, size, growAutomatically)) return map;
    delete map;
    return nullptr;
}

void XmlHashSetKey(XmlHashMap* map, XmlHashFunction hash, XmlCompareFunction compare) noexcept {
    assert(map->count == 0);
    map->hash = hash;
    map->compare = compare;
}

void XmlHashSetValueAllocator(XmlHashMap* map, XmlHashValueAllocator allocator,
                              XmlHashValueDeallocator deallocator) noexcept {
    map->allocate = allocator;
    map->deallocate = deallocator;
}

void XmlHashGrowTable(XmlHashMap* map) noexcept {
    if (map->table == nullptr || map->size > kLargestSizeToGrow) return;
    if (detail::MakeTableUnique(*map)) detail::DoubleBuckets(*map);
}

bool XmlHashInsert(XmlHashMap* map, const void* key, unsigned length, void* value) noexcept {
    if (map->table == nullptr || map->count == std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    if (!detail::MakeTableUnique(*map)) return false;
    const detail::HashKey wanted(key, length);
    // The entry comes before the growth, so that a failure leaves even the buckets as they were.
    XmlHashItem* const item =
        detail::AllocateItem(*detail::StorageOf(*map), wanted.bytes(), wanted.length());
    if (item == nullptr) return false;
    if (map->growAutomatically && map->count / 2 >= map->size) XmlHashGrowTable(map);
    item->hash = detail::HashOf(*map, wanted.bytes(), wanted.length());
    item->value = map->allocate == nullptr ? value : map->allocate(map, value);
    detail::LinkItem(*map, item, wanted);
    return true;
}

XmlHashItem* XmlHashFindItem(const XmlHashMap* map, const void* key, unsigned length) noexcept {
    return FindItem(*map, key, length);
}

void* XmlHashFind(const XmlHashMap* map, const void* key, unsigned length) noexcept {
    const XmlHashItem* const item = FindItem(*map, key, length);
    return item == nullptr ? nullptr : item->value;
}

void XmlHashRemoveKey(XmlHashMap* map, const void* key, unsigned length) noexcept {
    detail::RemoveKey(*map, key, length);
}

void XmlHashRemoveItem(XmlHashMap* map, XmlHashItem* item) noexcept {
    detail::RemoveItem(*map, item);
}

void XmlHashClear(XmlHashMap* map) noexcept { detail::ClearTable(*map); }

XmlHashItem* XmlHashIteratorFirst(XmlHashIterator* iterator, const XmlHashMap* map) noexcept {
    iterator->map = map;
    iterator->item = nullptr;
    if (map->table == nullptr || map->count == 0) return nullptr;
    for (std::uint32_t bucket = 0; bucket < map->size && iterator->item == nullptr; ++bucket) {
        iterator->item = map->table[bucket];
    }
    return iterator->item;
}

XmlHashItem* XmlHashIteratorNext(XmlHashIterator* iterator) noexcept {
    const XmlHashItem* const current = iterator->item;
    if (current == nullptr) return nullptr;
    iterator->item = current->next;
    const XmlHashMap& map = *iterator->map;
    for (std::uint32_t bucket = (current->hash & (map.size - 1)) + 1;
         iterator->item == nullptr && bucket < map.size; ++bucket) {
        iterator->item = map.table[bucket];
    }
    return iterator->item;
}

void XmlHashDeinit(XmlHashMap* map) noexcept {
    if (map->table != nullptr) detail::ReleaseTable(*map);
}

void XmlHashDestroy(XmlHashMap* map) noexcept {
    if (map == nullptr) return;
    XmlHashDeinit(map);
    delete map;
}

}  // extern "C"
