// SPDX-License-Identifier: MIT
#pragma once

#include "xml/SeededHash.h"

#include <cstddef>
#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Dom::CSS::detail {

/// Finds the first of several names that are equal, while names go and others come at the end.
///
/// Each name has a place, counted from 0 on, which it keeps; those that go leave theirs empty. A
/// few names are compared one by one. Of more there is a hash table, which leads to the first place
/// of a name; equal names are linked in the order of their places.
class NameIndex {
public:
    static constexpr unsigned kNone = static_cast<unsigned>(-1);

    /// \param memory for the places and the table; outlives the index
    explicit NameIndex(std::pmr::memory_resource* memory) : entries_(memory), chains_(memory) {}

    /// Adds a name at the end; it outlives the index.
    void Add(std::string_view name);
    /// Takes out the name at a place, which is the first place of the name.
    void RemoveFirst(unsigned place);
    /// Returns the first place of a name, or kNone.
    unsigned Find(std::string_view name) const;
    /// Tells whether the name at a place is still there.
    bool IsThere(unsigned place) const { return entries_[place].isThere; }

private:
    struct Entry {
        std::string_view name;
        unsigned next = kNone;  // the next place of the name; only while there is a table
        bool isThere = true;
    };
    struct Chain {
        unsigned first;  // kNone when all are gone
        unsigned last;
    };
    struct Hash {
        std::size_t operator()(std::string_view name) const {
            return Xml::detail::SeededHash(name.data(), static_cast<unsigned>(name.size()));
        }
    };

    // A table costs more than it saves below this.
    static constexpr std::size_t kMostWithoutTable = 16;

    void Link(unsigned place);

    std::pmr::vector<Entry> entries_;
    std::pmr::unordered_map<std::string_view, Chain, Hash> chains_;
};

}  // namespace Dom::CSS::detail
