// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>

namespace support {

/// Whether VirtualSlot() knows how pointers to members look: as the C++ ABI for Itanium says, with
/// the offset in the table of virtual functions, plus 1, in the first word.
#if defined(__x86_64__)
inline constexpr bool kKnowsVirtualSlots = true;
#else
inline constexpr bool kKnowsVirtualSlots = false;
#endif

/// Returns the number of a virtual function in the table of its class, from 0 on. A destructor has
/// two.
template <typename Function>
std::ptrdiff_t VirtualSlot(Function function) {
    std::ptrdiff_t words[2] = {};
    static_assert(sizeof function == sizeof words);
    std::memcpy(words, &function, sizeof words);
    return (words[0] - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

}  // namespace support
