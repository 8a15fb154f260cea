// SPDX-License-Identifier: MIT
#pragma once

#include <zlib.h>

#include <cstddef>
#include <limits>
#include <new>

namespace IO::detail {

inline voidpf AllocateForZlib(voidpf, uInt items, uInt size) {
    static_assert(std::numeric_limits<std::size_t>::digits >=
                  2 * std::numeric_limits<uInt>::digits);
    return ::operator new (std::size_t{items} * size, std::nothrow);
}

inline void FreeForZlib(voidpf, voidpf block) { ::operator delete(block); }

/// Lets zlib take its memory where the rest of the library does.
inline void UseOperatorNew(z_stream& stream) {
    stream.zalloc = AllocateForZlib;
    stream.zfree = FreeForZlib;
}

}  // namespace IO::detail
