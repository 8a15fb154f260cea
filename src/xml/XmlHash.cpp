// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlHash.h>

#include "xml/XmlHashTable.h"

#include <atomic>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

// The bucket array is preceded in its block by a header that no user sees:
//
//     block -> | TableHeader | head 0 | head 1 | ... | head size-1 |
//                             ^ XmlHashMap::table
//
// The header counts the records that share the table; copies of a record share until one of them
// is changed. Each change begins with MakeUnique().

namespace {

constexpr unsigned kLargestInitialSize = 0x10000;
constexpr unsigned kLargestSizeToGrow = 0x20000;  // so the largest table has twice as many buckets

struct TableHeader {
    std::atomic<unsigned> holders{1};  // records whose table pointer leads here
};

constexpr std::size_t kHeaderSize =
    sizeof(TableHeader) < sizeof(void*) ? sizeof(void*) : sizeof(TableHeader);

TableHeader* HeaderOf(XmlHashItem** table) {
    return reinterpret_cast<TableHeader*>(reinterpret_cast<char*>(table) - kHeaderSize);
}

// Returns an empty bucket array, or null.
XmlHashItem** AllocateTable(std::size_t size) {
    const std::size_t arraySize = size * sizeof(XmlHashItem*);
    char* const block = static_cast<char*>(::operator new(kHeaderSize + arraySize, std::nothrow));
    if (block == nullptr) return nullptr;
    new (block) TableHeader;
    std::memset(block + kHeaderSize, 0, arraySize);
    return reinterpret_cast<XmlHashItem**>(block + kHeaderSize);
}

void FreeTable(XmlHashItem** table) {
    TableHeader* const header = HeaderOf(table);
    header->~TableHeader();
    ::operator delete(header);
}

bool IsShared(const XmlHashMap& map) {
    return HeaderOf(map.table)->holders.load(std::memory_order_acquire) > 1;
}

// A key as the table sees it: the bytes of a length-0 key are those of the pointer.
class Key {
public:
    Key(const void* key, unsigned length) : pointer_(key), length_(length) {
        if (length == 0) length_ = sizeof pointer_;
        isPointer_ = length == 0;
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;

    const char* bytes() const {
        return isPointer_ ? reinterpret_cast<const char*>(&pointer_)
                          : static_cast<const char*>(pointer_);
    }
    unsigned length() const { return length_; }

private:
    const void* pointer_;
    unsigned length_;
    bool isPointer_;
};

// Returns an entry with room for the key, or null.
XmlHashItem* AllocateItem(std::uint32_t keyLength) {
    constexpr std::size_t kSlack = 3;  // after the key, whatever its length
    const std::size_t size = offsetof(XmlHashItem, key) + std::size_t{keyLength} + kSlack;
    return static_cast<XmlHashItem*>(::operator new(size, std::nothrow));
}

void FreeItem(XmlHashItem* item) { ::operator delete(item); }

// Ends an entry that is in no bucket any more.
void DisposeItem(XmlHashMap& map, XmlHashItem* item) {
    --map.count;
    if (map.deallocate != nullptr) map.deallocate(&map, item->value);
    FreeItem(item);
}

XmlHashItem** BucketOf(const XmlHashMap& map, std::uint32_t hash) {
    return &map.table[hash & (map.size - 1)];
}

bool Matches(const XmlHashMap& map, const XmlHashItem& item, std::uint32_t hash, const Key& key) {
    return item.hash == hash &&
           map.compare(item.key, key.bytes(), item.keyLength, key.length()) != 0;
}

// Returns the link that leads to the first entry with the key from `link` on; it holds null when
// there is none.
XmlHashItem** FindLink(const XmlHashMap& map, XmlHashItem** link, std::uint32_t hash,
                       const Key& key) {
    while (*link != nullptr && !Matches(map, **link, hash, key)) {
        link = &(*link)->next;
    }
    return link;
}

void RemoveAt(XmlHashMap& map, XmlHashItem** link) {
    XmlHashItem* const item = *link;
    *link = item->next;
    DisposeItem(map, item);
}

void DisposeAll(XmlHashMap& map) {
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        while (map.table[bucket] != nullptr) {
            RemoveAt(map, &map.table[bucket]);
        }
    }
}

void FreeItems(const XmlHashMap& map) {
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        for (XmlHashItem* item = map.table[bucket]; item != nullptr;) {
            XmlHashItem* const next = item->next;
            FreeItem(item);
            item = next;
        }
    }
}

// Lets go of the table; the last holder ends it.
void ReleaseTable(XmlHashMap& map) {
    if (HeaderOf(map.table)->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        DisposeAll(map);
        FreeTable(map.table);
    }
    map.table = nullptr;
    map.count = 0;
}

// Fills `copy`, whose table is empty, with the entries of `map` in the same order; the values are
// not copied yet. Returns false when there is no memory.
bool CopyItems(const XmlHashMap& map, XmlHashMap& copy) {
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        XmlHashItem** link = &copy.table[bucket];
        for (const XmlHashItem* item = map.table[bucket]; item != nullptr; item = item->next) {
            XmlHashItem* const twin = AllocateItem(item->keyLength);
            *link = twin;
            if (twin == nullptr) return false;
            twin->hash = item->hash;
            twin->value = item->value;
            twin->next = nullptr;
            twin->keyLength = item->keyLength;
            std::memcpy(twin->key, item->key, item->keyLength);
            link = &twin->next;
        }
    }
    return true;
}

void CopyValues(XmlHashMap& map) {
    if (map.allocate == nullptr) return;
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        for (XmlHashItem* item = map.table[bucket]; item != nullptr; item = item->next) {
            item->value = map.allocate(&map, item->value);
        }
    }
}

// Gives the map a table that no other record shares. Returns false, with nothing changed, when
// there is no memory.
bool MakeUnique(XmlHashMap& map) {
    if (!IsShared(map)) return true;
    XmlHashMap copy = map;
    copy.table = AllocateTable(map.size);
    if (copy.table == nullptr) return false;
    if (!CopyItems(map, copy)) {
        FreeItems(copy);
        FreeTable(copy.table);
        return false;
    }
    XmlHashItem** const shared = map.table;
    const std::uint32_t count = map.count;
    map.table = copy.table;
    CopyValues(map);
    copy.table = shared;
    copy.count = count;
    ReleaseTable(copy);
    return true;
}

}  // namespace

namespace Xml::detail {

void ShareHashTable(XmlHashMap& target, const XmlHashMap& source) noexcept {
    target = source;
    if (source.table != nullptr) {
        HeaderOf(source.table)->holders.fetch_add(1, std::memory_order_relaxed);
    }
}

bool HashRemoveKey(XmlHashMap& map, const void* key, unsigned length) noexcept {
    if (map.table == nullptr) return true;
    const Key wanted(key, length);
    const std::uint32_t hash = map.hash(wanted.bytes(), wanted.length());
    XmlHashItem** link = FindLink(map, BucketOf(map, hash), hash, wanted);
    if (*link == nullptr) return true;
    if (IsShared(map)) {
        if (!MakeUnique(map)) return false;
        link = FindLink(map, BucketOf(map, hash), hash, wanted);
    }
    RemoveAt(map, link);
    return true;
}

bool HashRemoveItem(XmlHashMap& map, XmlHashItem* item) noexcept {
    if (map.table == nullptr || item == nullptr) return true;
    const std::uint32_t hash = item->hash;
    std::size_t place = 0;
    XmlHashItem** link = BucketOf(map, hash);
    for (; *link != item; link = &(*link)->next, ++place) {
        if (*link == nullptr) return true;
    }
    if (IsShared(map)) {
        if (!MakeUnique(map)) return false;
        link =
            BucketOf(map, hash);  // the copy of the entry has its place in the copy of the bucket
        for (; place > 0; --place) {
            link = &(*link)->next;
        }
    }
    RemoveAt(map, link);
    return true;
}

bool HashClear(XmlHashMap& map) noexcept {
    if (map.table == nullptr || map.count == 0) return true;
    if (!IsShared(map)) {
        DisposeAll(map);
        return true;
    }
    XmlHashItem** const empty = AllocateTable(map.size);
    if (empty == nullptr) return false;
    ReleaseTable(map);
    map.table = empty;
    return true;
}

}  // namespace Xml::detail

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
    return length1 == 0 || std::memcmp(key1, key2, length1) == 0;
}

bool XmlHashInit(XmlHashMap* map, unsigned size, bool growAutomatically) noexcept {
    map->size = size == 0 ? 1 : std::bit_floor(size);
    // Deliberate: larger requests get half of the largest array that could be asked for, not that
    // array.
    if (map->size > kLargestInitialSize) map->size = kLargestInitialSize;
    map->count = 0;
    map->hash = XmlKeyHashBinary;
    map->compare = XmlKeyCompareBinary;
    map->allocate = nullptr;
    map->deallocate = nullptr;
    map->growAutomatically = growAutomatically;
    map->table = AllocateTable(map->size);
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
    if (!MakeUnique(*map)) return;
    XmlHashItem** const table = AllocateTable(std::size_t{map->size} * 2);
    if (table == nullptr) return;

    const std::uint32_t mask = map->size * 2 - 1;
    for (std::uint32_t bucket = 0; bucket < map->size; ++bucket) {
        for (XmlHashItem* item = map->table[bucket]; item != nullptr;) {
            XmlHashItem* const next = item->next;
            item->next = table[item->hash & mask];
            table[item->hash & mask] = item;
            item = next;
        }
    }
    FreeTable(map->table);
    map->table = table;
    map->size *= 2;
}

bool XmlHashInsert(XmlHashMap* map, const void* key, unsigned length, void* value) noexcept {
    if (map->table == nullptr || map->count == std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    if (!MakeUnique(*map)) return false;
    const Key wanted(key, length);
    // The entry comes before the growth, so that a failure leaves even the buckets as they were.
    XmlHashItem* const item = AllocateItem(wanted.length());
    if (item == nullptr) return false;
    if (map->growAutomatically && map->count / 2 >= map->size) XmlHashGrowTable(map);

    item->hash = map->hash(wanted.bytes(), wanted.length());
    item->keyLength = wanted.length();
    std::memcpy(item->key, wanted.bytes(), wanted.length());
    item->value = map->allocate == nullptr ? value : map->allocate(map, value);
    ++map->count;

    XmlHashItem** const bucket = BucketOf(*map, item->hash);
    item->next = *bucket;
    *bucket = item;
    XmlHashItem** const older = FindLink(*map, &item->next, item->hash, wanted);
    if (*older != nullptr) RemoveAt(*map, older);
    return true;
}

XmlHashItem* XmlHashFindItem(const XmlHashMap* map, const void* key, unsigned length) noexcept {
    if (map->table == nullptr) return nullptr;
    const Key wanted(key, length);
    const std::uint32_t hash = map->hash(wanted.bytes(), wanted.length());
    return *FindLink(*map, BucketOf(*map, hash), hash, wanted);
}

void* XmlHashFind(const XmlHashMap* map, const void* key, unsigned length) noexcept {
    const XmlHashItem* const item = XmlHashFindItem(map, key, length);
    return item == nullptr ? nullptr : item->value;
}

void XmlHashRemoveKey(XmlHashMap* map, const void* key, unsigned length) noexcept {
    Xml::detail::HashRemoveKey(*map, key, length);
}

void XmlHashRemoveItem(XmlHashMap* map, XmlHashItem* item) noexcept {
    Xml::detail::HashRemoveItem(*map, item);
}

void XmlHashClear(XmlHashMap* map) noexcept { Xml::detail::HashClear(*map); }

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
    if (map->table != nullptr) ReleaseTable(*map);
}

void XmlHashDestroy(XmlHashMap* map) noexcept {
    if (map == nullptr) return;
    XmlHashDeinit(map);
    delete map;
}

}  // extern "C"
