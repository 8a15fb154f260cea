// SPDX-License-Identifier: MIT
#pragma once

#include <zlib.h>

#include <cstddef>
#include <new>

namespace IO::detail {

inline voidpf AllocateForZlib(voidpf, uInt items, uInt size) {
    std::size_t bytes = 0;  // may have no more bits than either factor
    if (__builtin_mul_overflow(items, size, &bytes)) return nullptr;
    return ::operator new(bytes, std::nothrow);
}

inline void FreeForZlib(voidpf, voidpf block) { ::operator delete(block); }

/// Lets zlib take its memory where the rest of the library does.
inline void UseOperatorNew(z_stream& stream) {
    stream.zalloc = AllocateForZlib;
    stream.zfree = FreeForZlib;
}

}  // namespace IO::detail
