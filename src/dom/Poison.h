// SPDX-License-Identifier: MIT
#pragma once

// Tells AddressSanitizer which memory of a pool is in use, so that it finds uses of the rest.

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#    define ESPALIER_POISON 1
#elif defined(__has_feature)
#    if __has_feature(address_sanitizer)
#        define ESPALIER_POISON 1
#    endif
#endif

#ifdef ESPALIER_POISON
#    include <sanitizer/asan_interface.h>
#endif

namespace Dom::detail {

/// Makes every use of the memory an error, where a sanitizer looks on.
inline void Poison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) {
#ifdef ESPALIER_POISON
    __asan_poison_memory_region(memory, size);
#endif
}

/// Allows uses of the memory again.
inline void Unpoison([[maybe_unused]] const void* memory, [[maybe_unused]] std::size_t size) {
#ifdef ESPALIER_POISON
    __asan_unpoison_memory_region(memory, size);
#endif
}

}  // namespace Dom::detail
