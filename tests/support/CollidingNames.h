// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace support {

/// A hash function for which names can be made that all have the same hash.
enum class WeakHash {
    ByteSum,   ///< the sum of the bytes
    Fnv1a,     ///< FNV-1a of 32 bits
    Standard,  ///< std::hash of GCC's library on 64-bit machines, a MurmurHash2 with a known seed
    Map        ///< XmlKeyHashBinary(), the default of Xml::HashMap
};

/// Returns so many different names (of ASCII letters, digits, ".", "-" and "_") of the same length
/// and the same hash.
std::vector<std::string> CollidingNames(WeakHash hash, std::size_t count);

}  // namespace support
