// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlHash.h>

#include "xml/SeededHash.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Xml::detail {

/// Returns 0 when the `Count` words of 8 bytes at `a` and at `b` are equal.
template <int Count>
std::uint64_t Difference(const char* a, const char* b) {
    std::uint64_t difference = 0;
    for (int at = 0; at < Count * 8; at += 8) {
        difference |= LoadWord<std::uint64_t>(a + at) ^ LoadWord<std::uint64_t>(b + at);
    }
    return difference;
}

/// Tells whether `length` bytes are equal. Most keys are short and most that are compared are
/// equal, so this is inline and without branches inside a range of lengths: the first and the last
/// words are compared, which overlap where they must.
inline bool EqualBytes(const char* a, const char* b, std::size_t length) {
    const char* const endA = a + length;
    const char* const endB = b + length;
    if (length > 64) return std::memcmp(a, b, length) == 0;
    if (length > 32) return (Difference<4>(a, b) | Difference<4>(endA - 32, endB - 32)) == 0;
    if (length > 16) return (Difference<2>(a, b) | Difference<2>(endA - 16, endB - 16)) == 0;
    if (length >= 8) return (Difference<1>(a, b) | Difference<1>(endA - 8, endB - 8)) == 0;
    if (length >= 4) {
        return LoadWord<std::uint32_t>(a) == LoadWord<std::uint32_t>(b) &&
               LoadWord<std::uint32_t>(endA - 4) == LoadWord<std::uint32_t>(endB - 4);
    }
    return length == 0 ||
           (*a == *b && a[length / 2] == b[length / 2] && *(endA - 1) == *(endB - 1));
}

/// Tells whether two texts are equal, most of which are short.
inline bool AreEqual(std::string_view a, std::string_view b) {
    return a.size() == b.size() && EqualBytes(a.data(), b.data(), a.size());
}

/// A second way to the entries of a large table, beside its chains: an array of (hash, entry) with
/// linear probing, never more than three quarters full.
///
/// A look-up in a chain touches each entry on the way, and each one costs a wait for memory when
/// the table is larger than the caches. Here the hashes stand side by side, and only the entry that
/// is wanted is touched.
class HashIndex {
public:
    struct Slot {
        XmlHashItem* item;   // null when the slot is free; not owned
        std::uint32_t hash;  // of the key; not always the one in the entry
    };

    HashIndex() = default;
    HashIndex(const HashIndex&) = delete;
    HashIndex& operator=(const HashIndex&) = delete;
    ~HashIndex() { Drop(); }

    bool Exists() const { return slots_ != nullptr; }

    /// Makes an empty index with room for twice `count` entries; false when there is no memory.
    bool Create(std::size_t count) noexcept;

    /// Gives up the index and its memory.
    void Drop() noexcept;

    /// Takes all entries out; the memory stays when it is little.
    void Clear() noexcept;

    /// Returns the slot of a key, or the free one where it would go.
    Slot* Find(std::uint32_t hash, const char* key, std::uint32_t length) const {
        std::size_t place = PlaceOf(hash);
        for (; slots_[place].item != nullptr; place = (place + 1) & mask_) {
            if (slots_[place].hash != hash) continue;
            const XmlHashItem& item = *slots_[place].item;
            if (item.keyLength == length && EqualBytes(item.key, key, length)) break;
        }
        return &slots_[place];
    }

    /// Enters an entry that is not there yet. When there is no memory the index is given up.
    void Insert(std::uint32_t hash, XmlHashItem* item) noexcept;

    /// Enters an entry at a free slot that Find() returned.
    void InsertAt(Slot* slot, std::uint32_t hash, XmlHashItem* item) noexcept;

    /// Takes an entry out. `hash` is the one that it was entered with.
    void Remove(std::uint32_t hash, const XmlHashItem* item) noexcept;

    /// Returns the slot of this very entry, or null.
    const Slot* FindItem(std::uint32_t hash, const XmlHashItem* item) const noexcept;

    std::size_t count() const { return count_; }

private:
    std::size_t PlaceOf(std::uint32_t hash) const {
        // Spreads hashes that differ in few bits; the upper bits of the product are the good ones.
        constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
        return (hash * kGoldenRatio) >> shift_;
    }
    std::size_t FirstFreeFrom(std::size_t place) const noexcept;
    bool Allocate(unsigned bits) noexcept;
    void Grow() noexcept;

    Slot* slots_ = nullptr;  // owned
    std::size_t mask_ = 0;   // number of slots, a power of two, less 1
    unsigned shift_ = 64;    // turns a product into a place
    std::size_t count_ = 0;  // entries in the index
};

}  // namespace Xml::detail
