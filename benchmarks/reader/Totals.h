// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

/// What one pass over a document adds up. Lengths are in bytes of UTF-8.
///
/// The sums are the proof that all libraries did the same work; Disagreement() compares them. A
/// library that does not deliver something sets its sum to kNotDelivered.
struct Totals {
    static constexpr std::int64_t kNotDelivered = -1;

    std::int64_t elements = 0;
    std::int64_t attributes = 0;  ///< declarations of namespaces included
    std::int64_t textBytes = 0;   ///< character data inside the root element, white space included
    std::int64_t valueBytes = 0;  ///< values of attributes and of declarations of namespaces
    std::int64_t commentBytes = 0;       ///< comments, targets and data of processing instructions
    std::int64_t nameBytes = 0;          ///< qualified names of elements and attributes
    std::int64_t localBytes = 0;         ///< local names of elements and attributes
    std::int64_t prefixBytes = 0;        ///< prefixes of elements and attributes
    std::int64_t elementUriBytes = 0;    ///< namespaces of elements
    std::int64_t attributeUriBytes = 0;  ///< namespaces of attributes other than declarations
    std::int64_t endTagBytes = 0;  ///< never compared: a pull parser has no end of an empty element
};

/// A sum and what to call it.
struct TotalsField {
    const char* name;
    std::int64_t Totals::*sum;
};

inline constexpr TotalsField kComparedFields[] = {
    {"elements", &Totals::elements},
    {"attributes", &Totals::attributes},
    {"bytes of text", &Totals::textBytes},
    {"bytes of attribute values", &Totals::valueBytes},
    {"bytes of comments and instructions", &Totals::commentBytes},
    {"bytes of qualified names", &Totals::nameBytes},
    {"bytes of local names", &Totals::localBytes},
    {"bytes of prefixes", &Totals::prefixBytes},
    {"bytes of element namespaces", &Totals::elementUriBytes},
    {"bytes of attribute namespaces", &Totals::attributeUriBytes},
};

/// Converts a length for adding it to a sum.
constexpr std::int64_t Bytes(std::size_t length) { return static_cast<std::int64_t>(length); }

}  // namespace bench
