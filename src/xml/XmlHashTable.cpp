// SPDX-License-Identifier: MIT
#include "xml/XmlHashTable.h"

#include <cassert>
#include <new>

namespace Xml::detail {
namespace {

// Below this many entries the chains alone are as fast, and small tables stay small.
constexpr std::uint32_t kIndexFrom = 24;

// In Debug, tables of up to this size are checked after each change.
constexpr std::uint32_t kAlwaysChecked = 40;

constexpr std::size_t ItemSize(std::uint32_t keyLength) {
    constexpr std::size_t kSlack = 3;  // after the key, whatever its length
    return offsetof(XmlHashItem, key) + keyLength + kSlack;
}

// The first slack byte tells whether the value belongs to another table; see CopyValues().
char& BorrowedFlag(XmlHashItem& item) { return *(item.key + item.keyLength); }

// Returns cleared buckets that lead to the storage, or null.
XmlHashItem** AllocateBuckets(std::size_t size, HashStorage* storage) {
    void* const block = ::operator new((size + 1) * sizeof(XmlHashItem*), std::nothrow);
    if (block == nullptr) return nullptr;
    *static_cast<HashStorage**>(block) = storage;
    XmlHashItem** const table = static_cast<XmlHashItem**>(block) + 1;
    std::memset(table, 0, size * sizeof(XmlHashItem*));
    return table;
}

void FreeBuckets(XmlHashItem** table) { ::operator delete(table - 1); }

std::uint32_t IndexHashOf(const HashStorage& storage, const XmlHashItem& item) {
    return IndexHashOf(storage, item.key, item.keyLength, item.hash);
}

template <typename Visitor>
void VisitItems(const XmlHashMap& map, Visitor visit) {
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        for (XmlHashItem* item = map.table[bucket]; item != nullptr;) {
            XmlHashItem* const next = item->next;  // the visitor may end the entry
            visit(*item);
            item = next;
        }
    }
}

// Ends an entry that nothing leads to any more.
void DisposeItem(XmlHashMap& map, HashStorage& storage, XmlHashItem* item) {
    --map.count;
    if (map.deallocate != nullptr && BorrowedFlag(*item) == 0) map.deallocate(&map, item->value);
    storage.arena.Free(item, ItemSize(item->keyLength));
}

// Removes the entry that `link` leads to.
void RemoveAt(XmlHashMap& map, XmlHashItem** link) {
    HashStorage& storage = *StorageOf(map);
    XmlHashItem* const item = *link;
    *link = item->next;
    if (IndexServes(map, storage)) {
        storage.index.Remove(IndexHashOf(storage, *item), item);
    } else {
        storage.index.Drop();
    }
    DisposeItem(map, storage, item);
}

// Ends all entries and leaves the links as they are.
void DisposeAll(XmlHashMap& map, HashStorage& storage) {
    if (map.deallocate == nullptr && storage.arena.HasOnlySmallBlocks()) {
        map.count = 0;
    } else {
        VisitItems(map, [&](XmlHashItem& item) { DisposeItem(map, storage, &item); });
    }
}

// Fills `copy`, whose table is empty, with the entries of `map` in the same order; the values are
// not copied yet. Returns false when there is no memory.
bool CopyItems(const XmlHashMap& map, XmlHashMap& copy) {
    HashStorage& storage = *StorageOf(copy);
    storage.hash = StorageOf(map)->hash;
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        XmlHashItem** link = &copy.table[bucket];
        for (XmlHashItem* item = map.table[bucket]; item != nullptr; item = item->next) {
            XmlHashItem* const twin = AllocateItem(storage, item->key, item->keyLength);
            if (twin == nullptr) return false;
            twin->hash = item->hash;
            twin->value = item->value;
            twin->next = nullptr;
            BorrowedFlag(*twin) = BorrowedFlag(*item);
            *link = twin;
            link = &twin->next;
            ++copy.count;
        }
    }
    return true;
}

// Makes the values of copied entries the table's own. Where they cannot be copied they stay with
// the other table, and this one must not end them too.
void CopyValues(XmlHashMap& map) {
    VisitItems(map, [&map](XmlHashItem& item) {
        if (map.allocate != nullptr) {
            item.value = map.allocate(&map, item.value);
            BorrowedFlag(item) = 0;
        } else {
            BorrowedFlag(item) = 1;
        }
    });
}

// Makes the index of a table that has become large enough for one.
void CreateIndex(const XmlHashMap& map, HashStorage& storage) {
    if (map.compare != XmlKeyCompareBinary || storage.hash == nullptr) return;
    if (!storage.index.Create(map.count)) return;
    VisitItems(map, [&storage](XmlHashItem& item) {
        storage.index.Insert(IndexHashOf(storage, item), &item);
    });
}

void CheckSmallTable([[maybe_unused]] const XmlHashMap& map) {
    assert(map.count > kAlwaysChecked || IsTableConsistent(map));
}

}  // namespace

void CreateTable(XmlHashMap& map) noexcept {
    map.count = 0;
    map.table = nullptr;
    HashStorage* const storage = new (std::nothrow) HashStorage;
    if (storage == nullptr) return;
    map.table = AllocateBuckets(map.size, storage);
    if (map.table == nullptr) delete storage;
}

void ShareTable(XmlHashMap& target, const XmlHashMap& source) noexcept {
    target = source;
    if (source.table != nullptr) {
        StorageOf(source)->holders.fetch_add(1, std::memory_order_relaxed);
    }
}

void ReleaseTable(XmlHashMap& map) noexcept {
    HashStorage* const storage = StorageOf(map);
    if (storage->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        DisposeAll(map, *storage);
        FreeBuckets(map.table);
        delete storage;
    }
    map.table = nullptr;
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): it does not follow the atomic count
    map.count = 0;
}

bool MakeTableUnique(XmlHashMap& map) noexcept {
    if (!IsTableShared(map)) return true;
    XmlHashMap copy = map;
    CreateTable(copy);
    if (copy.table == nullptr) return false;
    if (!CopyItems(map, copy)) {
        copy.deallocate = nullptr;  // the values are still those of `map`
        ReleaseTable(copy);
        return false;
    }
    XmlHashMap shared = map;
    map = copy;
    CopyValues(map);
    ReleaseTable(shared);
    CheckSmallTable(map);
    return true;
}

XmlHashItem* AllocateItem(HashStorage& storage, const char* key, std::uint32_t keyLength) noexcept {
    void* const block = storage.arena.Allocate(ItemSize(keyLength));
    if (block == nullptr) return nullptr;
    XmlHashItem* const item = static_cast<XmlHashItem*>(block);
    item->keyLength = keyLength;
    std::memcpy(item->key, key, keyLength);
    BorrowedFlag(*item) = 0;
    return item;
}

void LinkItem(XmlHashMap& map, XmlHashItem* item, const HashKey& key) noexcept {
    HashStorage& storage = *StorageOf(map);
    if (map.count == 0) storage.hash = map.hash;
    if (map.hash != storage.hash) storage.hash = nullptr;
    if (map.count >= kIndexFrom && !storage.index.Exists()) CreateIndex(map, storage);

    ++map.count;
    XmlHashItem** const bucket = BucketOf(map, item->hash);
    item->next = *bucket;
    *bucket = item;
    XmlHashItem** older = &item->next;
    if (IndexServes(map, storage)) {
        const std::uint32_t indexHash = IndexHashOf(storage, *item);
        HashIndex::Slot* const slot = storage.index.Find(indexHash, item->key, item->keyLength);
        if (slot->item == nullptr) {
            storage.index.InsertAt(slot, indexHash, item);
            CheckSmallTable(map);
            return;
        }
        while (*older != slot->item) {
            assert(*older != nullptr);  // what is in the index is in its bucket
            older = &(*older)->next;
        }
        XmlHashItem* const replaced = slot->item;
        slot->item = item;
        *older = replaced->next;
        DisposeItem(map, storage, replaced);
    } else {
        storage.index.Drop();
        older = FindLink(map, older, item->hash, key);
        if (*older != nullptr) RemoveAt(map, older);
    }
    CheckSmallTable(map);
}

void DoubleBuckets(XmlHashMap& map) noexcept {
    XmlHashItem** const table = AllocateBuckets(std::size_t{map.size} * 2, StorageOf(map));
    if (table == nullptr) return;
    const std::uint32_t mask = map.size * 2 - 1;
    VisitItems(map, [table, mask](XmlHashItem& item) {
        item.next = table[item.hash & mask];
        table[item.hash & mask] = &item;
    });
    FreeBuckets(map.table);
    map.table = table;
    map.size *= 2;
    CheckSmallTable(map);
}

bool RemoveKey(XmlHashMap& map, const void* key, unsigned length) noexcept {
    return RemoveItem(map, XmlHashFindItem(&map, key, length));
}

bool RemoveItem(XmlHashMap& map, XmlHashItem* item) noexcept {
    if (map.table == nullptr || item == nullptr) return true;
    const std::uint32_t hash = item->hash;
    std::size_t place = 0;
    XmlHashItem** link = BucketOf(map, hash);
    for (; *link != item; link = &(*link)->next, ++place) {
        if (*link == nullptr) return true;
    }
    if (IsTableShared(map)) {
        if (!MakeTableUnique(map)) return false;
        link = BucketOf(map, hash);  // the copy of the entry has its place in the copied bucket
        for (; place > 0; --place) {
            link = &(*link)->next;
        }
    }
    RemoveAt(map, link);
    CheckSmallTable(map);
    return true;
}

bool ClearTable(XmlHashMap& map) noexcept {
    if (map.table == nullptr || map.count == 0) return true;
    if (IsTableShared(map)) {
        XmlHashMap empty = map;
        CreateTable(empty);
        if (empty.table == nullptr) return false;
        ReleaseTable(map);
        map = empty;
        return true;
    }
    HashStorage& storage = *StorageOf(map);
    DisposeAll(map, storage);
    storage.arena.Reset();
    storage.index.Clear();
    std::memset(map.table, 0, map.size * sizeof(XmlHashItem*));
    CheckSmallTable(map);
    return true;
}

bool IsTableConsistent(const XmlHashMap& map) noexcept {
    if (map.table == nullptr) return map.count == 0;
    const HashStorage& storage = *StorageOf(map);
    std::size_t count = 0;
    bool consistent = true;
    for (std::uint32_t bucket = 0; bucket < map.size; ++bucket) {
        for (const XmlHashItem* item = map.table[bucket]; item != nullptr; item = item->next) {
            ++count;
            consistent = consistent && (item->hash & (map.size - 1)) == bucket;
            if (storage.index.Exists() && storage.hash != nullptr) {
                consistent = consistent &&
                             storage.index.FindItem(IndexHashOf(storage, *item), item) != nullptr;
            }
        }
    }
    return consistent && count == map.count &&
           (!storage.index.Exists() || storage.index.count() == count);
}

}  // namespace Xml::detail
