// SPDX-License-Identifier: MIT
#include "io/LargePages.h"

#include <sys/mman.h>

#include <cstdint>

namespace IO::detail {

void PreferLargePages(void* memory, std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t kLargePage = 2 * 1024 * 1024;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = (address + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t end = (address + size) & ~(kLargePage - 1);
    // What comes of it is a matter of speed only.
    if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    static_cast<void>(memory);
    static_cast<void>(size);
#endif
}

}  // namespace IO::detail
