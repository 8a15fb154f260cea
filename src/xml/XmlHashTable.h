// SPDX-License-Identifier: MIT
#pragma once

// What stands behind the table pointer of an XmlHashMap:
//
//     block -> | storage | head 0 | head 1 | ... | head size-1 |
//                        ^ XmlHashMap::table
//
// The storage holds what no user sees: the memory of the entries, the index, and the number of
// records that share the table. Copies of a record share it until one of them is changed; each
// change begins with MakeTableUnique().

#include <espalier/xml/XmlHash.h>

#include "xml/HashArena.h"
#include "xml/HashIndex.h"
#include "xml/SeededHash.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Xml::detail {

struct HashStorage {
    std::atomic<unsigned> holders{1};  // records whose table pointer leads here
    XmlHashFunction hash = nullptr;    // made the hashes of all entries; null when several did
    HashIndex index;                   // of all entries when it exists
    HashArena arena;                   // the memory of the entries
};

/// A key as the table sees it: that of length 0 is made of the bytes of the pointer.
class HashKey {
public:
    HashKey(const void* key, unsigned length)
        : pointer_(key),
          bytes_(length == 0 ? reinterpret_cast<const char*>(&pointer_)
                             : static_cast<const char*>(key)),
          length_(length == 0 ? static_cast<unsigned>(sizeof pointer_) : length) {}
    HashKey(const HashKey&) = delete;
    HashKey& operator=(const HashKey&) = delete;

    const char* bytes() const { return bytes_; }
    unsigned length() const { return length_; }

private:
    const void* pointer_;
    const char* bytes_;
    unsigned length_;
};

inline HashStorage*& StorageOf(const XmlHashMap& map) {
    return reinterpret_cast<HashStorage**>(map.table)[-1];
}

inline bool IsTableShared(const XmlHashMap& map) {
    return StorageOf(map)->holders.load(std::memory_order_acquire) > 1;
}

inline XmlHashItem** BucketOf(const XmlHashMap& map, std::uint32_t hash) {
    return &map.table[hash & (map.size - 1)];
}

inline unsigned HashOf(const XmlHashMap& map, const char* key, unsigned length) {
    // A direct call can be expanded in place.
    return map.hash == SeededHash ? SeededHash(key, length) : map.hash(key, length);
}

/// Tells whether the index, which knows only plain bytes, answers for this record's functions.
inline bool IndexServes(const XmlHashMap& map, const HashStorage& storage) {
    return storage.index.Exists() && map.hash == storage.hash && map.compare == XmlKeyCompareBinary;
}

/// Returns the hash under which the index keeps a key. It need not be that of the table: the
/// default hash is slow on long keys and collides at will.
inline std::uint32_t IndexHashOf(const HashStorage& storage, const char* key, unsigned length,
                                 std::uint32_t hash) {
    return storage.hash == XmlKeyHashBinary ? SeededHash(key, length) : hash;
}

/// Returns the link that leads to the first entry with the key, from `link` on; it holds null when
/// there is none.
inline XmlHashItem** FindLink(const XmlHashMap& map, XmlHashItem** link, std::uint32_t hash,
                              const HashKey& key) {
    for (; *link != nullptr; link = &(*link)->next) {
        const XmlHashItem& item = **link;
        if (item.hash == hash &&
            map.compare(item.key, key.bytes(), item.keyLength, key.length()) != 0) {
            break;
        }
    }
    return link;
}

/// Makes the buckets and the storage of an empty table; `map.table` is null when there is no
/// memory.
void CreateTable(XmlHashMap& map) noexcept;

/// Makes `target`, which holds no table, a second holder of the table of `source`.
void ShareTable(XmlHashMap& target, const XmlHashMap& source) noexcept;

/// Lets go of the table, which the last holder ends with all entries.
void ReleaseTable(XmlHashMap& map) noexcept;

/// Gives the record a table that no other one shares; false, with nothing changed, when there is no
/// memory.
bool MakeTableUnique(XmlHashMap& map) noexcept;

/// Returns an entry with the key but without hash and value, or null.
XmlHashItem* AllocateItem(HashStorage& storage, const char* key, std::uint32_t keyLength) noexcept;

/// Enters a new entry, whose hash is set, in its bucket and in the index, and removes the older one
/// with the key.
void LinkItem(XmlHashMap& map, XmlHashItem* item, const HashKey& key) noexcept;

/// Doubles the buckets of a table that is not shared; nothing happens when there is no memory.
void DoubleBuckets(XmlHashMap& map) noexcept;

/// \name Change a table
/// These are the plain functions of the same names, which hide one case.
/// \return false, with nothing changed, when the table is shared and there is no memory for a copy
/// @{
bool RemoveKey(XmlHashMap& map, const void* key, unsigned length) noexcept;
bool RemoveItem(XmlHashMap& map, XmlHashItem* item) noexcept;
bool ClearTable(XmlHashMap& map) noexcept;
/// @}

/// Tells whether the count, the buckets and the index agree; for tests and assertions.
bool IsTableConsistent(const XmlHashMap& map) noexcept;

}  // namespace Xml::detail
