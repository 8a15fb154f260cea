// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

/// What one walk through a tree adds up. Lengths are in bytes of UTF-8.
///
/// The sums are the proof that all libraries did the same work; TreeDisagreement() compares them.
struct TreeTotals {
    std::int64_t elements = 0;
    std::int64_t attributes = 0;  ///< declarations of namespaces included
    std::int64_t nameBytes = 0;   ///< qualified names of elements and attributes
    std::int64_t valueBytes = 0;  ///< values of attributes and of declarations of namespaces
    std::int64_t textBytes = 0;   ///< character data, white space and CDATA sections included
    std::int64_t otherBytes = 0;  ///< comments, targets and data of processing instructions

    void AddName(std::size_t length) { nameBytes += static_cast<std::int64_t>(length); }
    void AddValue(std::size_t length) { valueBytes += static_cast<std::int64_t>(length); }
    void AddText(std::size_t length) { textBytes += static_cast<std::int64_t>(length); }
    void AddOther(std::size_t length) { otherBytes += static_cast<std::int64_t>(length); }

    std::int64_t Sum() const {
        return elements + attributes + nameBytes + valueBytes + textBytes + otherBytes;
    }
};

/// A sum, what to call it, and whether a library that drops white space and comments has it, too.
struct TreeTotalsField {
    const char* name;
    std::int64_t TreeTotals::*sum;
    bool isOfReducedTrees;
};

inline constexpr TreeTotalsField kTreeTotalsFields[] = {
    {"elements", &TreeTotals::elements, true},
    {"attributes", &TreeTotals::attributes, true},
    {"bytes of names", &TreeTotals::nameBytes, true},
    {"bytes of attribute values", &TreeTotals::valueBytes, true},
    {"bytes of text", &TreeTotals::textBytes, false},
    {"bytes of comments and instructions", &TreeTotals::otherBytes, false},
};

}  // namespace bench
