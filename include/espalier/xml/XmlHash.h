// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A chained hash table keyed by byte strings, as plain functions that any language can call.
///
/// Every operation takes a key as a pointer and a length in bytes. A length of 0 means that the
/// pointer's value is the key: its `sizeof(void*)` bytes are hashed, compared and stored, and the
/// memory it points to is never read.
///
/// Values are untyped pointers. Without value hooks the table stores and forgets them; with a pair
/// of hooks it owns copies of its values. Hooks and key functions must not throw, and hooks must
/// not use the table that calls them.
///
/// Failure is reported by false or null, never by an exception. A record whose table is null (after
/// XmlHashDeinit()) may be asked everything: it is empty, and an insertion returns false.
///
/// \code
///     XmlHashMap map;
///     if (!XmlHashInit(&map, 64, true)) return false;
///     XmlHashInsert(&map, "width", 5, value);
///     void* found = XmlHashFind(&map, "width", 5);
///     XmlHashDeinit(&map);
/// \endcode
///
/// \note One thread at a time may use a table; different tables may be used from different threads
/// at once, also tables that Xml::HashMap copied from each other.

#include <espalier/base/Export.h>

#include <cstdint>

extern "C" {

struct XmlHashMap;

/// Returns the hash of a key of `length` bytes, `length` being at least 1.
typedef unsigned (*XmlHashFunction)(const char* key, unsigned length);

/// Tells whether two keys are equal: non-zero when they are. The table passes the stored key first.
typedef char (*XmlCompareFunction)(const char* key1, const char* key2, unsigned length1,
                                   unsigned length2);

/// Returns what the table stores for `value`, usually a copy. A null result is stored as it is.
typedef void* (*XmlHashValueAllocator)(XmlHashMap* map, void* value);

/// Ends the life of a stored value.
typedef void (*XmlHashValueDeallocator)(XmlHashMap* map, void* value);

/// One entry of a table: a single block with the key inline.
struct XmlHashItem {
    std::uint32_t hash;       ///< the full hash of the key
    void* value;              ///< the value, as the value allocator returned it when there is one
    XmlHashItem* next;        ///< the next older entry of the bucket, or null
    std::uint32_t keyLength;  ///< length of the key in bytes
    char key[1];              ///< the first of `keyLength` key bytes; no terminator follows them
};

/// A table. XmlHashInit() or XmlHashCreate() fills it in; read the fields, do not change them.
struct XmlHashMap {
    XmlHashItem** table;                 ///< the bucket heads, or null after XmlHashDeinit()
    std::uint32_t size;                  ///< number of buckets, a power of two
    std::uint32_t count;                 ///< number of entries
    XmlHashFunction hash;                ///< XmlKeyHashBinary() unless changed
    XmlCompareFunction compare;          ///< XmlKeyCompareBinary() unless changed
    XmlHashValueAllocator allocate;      ///< called for each value that comes in, or null
    XmlHashValueDeallocator deallocate;  ///< called for each value that leaves, or null
    bool growAutomatically;              ///< whether insertion doubles the table when it is full
};

/// A walk over the entries of a table.
struct XmlHashIterator {
    XmlHashItem* item;      ///< the current entry, or null
    const XmlHashMap* map;  ///< the table that is walked; not owned
};

/// Returns the default hash of a key: unseeded, the same in every process.
///
/// An empty key hashes to 0. Whoever chooses the keys can make them collide; for keys from a
/// hostile source set a seeded function with XmlHashSetKey().
ESPALIER_EXPORT unsigned XmlKeyHashBinary(const char* key, unsigned length) noexcept;

/// Returns non-zero when the lengths and the bytes of two keys are equal.
ESPALIER_EXPORT char XmlKeyCompareBinary(const char* key1, const char* key2, unsigned length1,
                                         unsigned length2) noexcept;

/// Makes `map` an empty table with the default functions and no value hooks.
///
/// \param map a record of the caller, whose content does not matter
/// \param size how many buckets are wanted: the largest power of two not above it is taken, 1 for
///     0, and 65536 for 131072 and more
/// \param growAutomatically whether an insertion doubles the buckets when there are twice as many
///     entries
/// \return false when the buckets cannot be allocated
ESPALIER_EXPORT bool XmlHashInit(XmlHashMap* map, unsigned size, bool growAutomatically) noexcept;

/// Allocates a record and initialises it as XmlHashInit() does.
/// \return the record, to be freed by XmlHashDestroy(), or null when there is no memory
ESPALIER_EXPORT XmlHashMap* XmlHashCreate(unsigned size, bool growAutomatically) noexcept;

/// Replaces the hash and the compare function.
/// \pre the table is empty: entries keep the hash that they were stored with
ESPALIER_EXPORT void XmlHashSetKey(XmlHashMap* map, XmlHashFunction hash,
                                   XmlCompareFunction compare) noexcept;

/// Sets the value hooks; null takes a hook away.
ESPALIER_EXPORT void XmlHashSetValueAllocator(XmlHashMap* map, XmlHashValueAllocator allocator,
                                              XmlHashValueDeallocator deallocator) noexcept;

/// Doubles the buckets. Nothing happens at 262144 buckets or when there is no memory.
ESPALIER_EXPORT void XmlHashGrowTable(XmlHashMap* map) noexcept;

/// Stores a value under a key; an entry that has the key already is removed afterwards.
///
/// The new value goes through the allocator before the old one goes through the deallocator. So
/// with a deallocator and no allocator, storing a value again under its own key frees it while it
/// is stored.
/// \return false, with nothing changed, when an entry cannot be allocated
ESPALIER_EXPORT bool XmlHashInsert(XmlHashMap* map, const void* key, unsigned length,
                                   void* value) noexcept;

/// Returns the value stored under a key, or null.
ESPALIER_EXPORT void* XmlHashFind(const XmlHashMap* map, const void* key, unsigned length) noexcept;

/// Returns the entry with a key, or null; valid until it is removed or the table is destroyed.
ESPALIER_EXPORT XmlHashItem* XmlHashFindItem(const XmlHashMap* map, const void* key,
                                             unsigned length) noexcept;

/// Removes the entry with a key, if there is one.
ESPALIER_EXPORT void XmlHashRemoveKey(XmlHashMap* map, const void* key, unsigned length) noexcept;

/// Removes this very entry, if it is in the table.
/// \pre `item` is null or an entry that still exists
ESPALIER_EXPORT void XmlHashRemoveItem(XmlHashMap* map, XmlHashItem* item) noexcept;

/// Removes every entry; the number of buckets stays.
ESPALIER_EXPORT void XmlHashClear(XmlHashMap* map) noexcept;

/// Starts a walk: by bucket number, and within a bucket the newest entry first.
///
/// The table must not change during the walk.
/// \return the first entry, or null when there is none
ESPALIER_EXPORT XmlHashItem* XmlHashIteratorFirst(XmlHashIterator* iterator,
                                                  const XmlHashMap* map) noexcept;

/// Goes on to the next entry.
/// \return the entry, or null at the end
ESPALIER_EXPORT XmlHashItem* XmlHashIteratorNext(XmlHashIterator* iterator) noexcept;

/// Removes every entry and frees the buckets; the record itself stays the caller's.
ESPALIER_EXPORT void XmlHashDeinit(XmlHashMap* map) noexcept;

/// Ends a table made by XmlHashCreate() and frees its record; null is allowed.
ESPALIER_EXPORT void XmlHashDestroy(XmlHashMap* map) noexcept;

}  // extern "C"
