// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/xml/HashItem.h>
#include <espalier/xml/XmlHash.h>

#include <cstring>

namespace Xml {

/// A chained hash table keyed by byte strings, with untyped pointers as values.
///
/// A key is a pointer and a length in bytes; the overloads for strings take the length without the
/// terminating NUL. A length of 0 means that the pointer's value is the key, so an empty string
/// passed as a string is keyed by its address: never pass text that may be empty.
///
/// Copying is cheap: both maps share one table with its entries until either of them is changed,
/// which first gives the changed map a table of its own. Values are then copied by the value
/// allocator, or as pointers when there is none. A table that owns its values and may be copied
/// and then changed needs both hooks.
///
/// \code
///     Xml::HashMap map(64, true);
///     map.Insert("width", &width);
///     void* found = map.Find("width");  // &width, or null when absent
/// \endcode
///
/// \note One thread at a time may use a map; different maps may be used from different threads at
/// once, also maps that were copied from each other.
class ESPALIER_EXPORT HashMap {
public:
    /// Makes an empty map; the parameters are those of XmlHashInit().
    /// \throws std::bad_alloc when the buckets cannot be allocated
    HashMap(unsigned size, bool autoGrow);

    HashMap(const HashMap& other);
    HashMap& operator=(const HashMap& other);

    /// Removes every entry, as XmlHashDeinit() does.
    ~HashMap();

    /// \name Store a value
    /// An entry that has the key already is replaced: the new value goes through the allocator
    /// before the old one goes through the deallocator.
    /// \throws std::bad_alloc, with nothing changed, when an entry cannot be allocated
    /// @{
    void Insert(const void* key, unsigned length, void* value);
    void Insert(const char* key, void* value) { Insert(key, LengthOf(key), value); }
    /// @}

    /// \name Find a value
    /// The result is null when the key is absent.
    /// @{
    void* Find(const void* key, unsigned length) const { return XmlHashFind(&map_, key, length); }
    void* Find(const char* key) const { return Find(key, LengthOf(key)); }
    /// @}

    /// \name Find an entry
    /// The result is a null item when the key is absent.
    /// @{
    HashItem FindItem(const void* key, unsigned length) {
        return HashItem(XmlHashFindItem(&map_, key, length));
    }
    HashItem FindItem(const char* key) { return FindItem(key, LengthOf(key)); }
    /// @}

    /// \name Remove an entry, if it is there
    /// An item whose entry was removed becomes null.
    /// \throws std::bad_alloc, with nothing changed, when the map shares its table and there is no
    ///     memory for one of its own
    /// @{
    void Remove(const void* key, unsigned length);
    void Remove(const char* key) { Remove(key, LengthOf(key)); }
    void Remove(HashItem& item);
    /// @}

    /// Removes every entry; the number of buckets stays.
    /// \throws std::bad_alloc as Remove() does
    void Clear();

    /// Doubles the buckets, as XmlHashGrowTable() does.
    void GrowTable() { XmlHashGrowTable(&map_); }

    /// Returns the number of entries.
    unsigned GetItemCount() const { return map_.count; }

    /// Replaces the hash and the compare function.
    /// \pre the map is empty
    void SetKey(XmlHashFunction hash, XmlCompareFunction compare) {
        XmlHashSetKey(&map_, hash, compare);
    }

    /// Sets the value hooks; null takes a hook away.
    void SetValueAllocator(XmlHashValueAllocator allocator, XmlHashValueDeallocator deallocator) {
        XmlHashSetValueAllocator(&map_, allocator, deallocator);
    }

private:
    friend class HashIterator;

    static unsigned LengthOf(const char* key) { return static_cast<unsigned>(std::strlen(key)); }

    XmlHashMap map_;
};

}  // namespace Xml
