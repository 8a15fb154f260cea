// SPDX-License-Identifier: MIT
#include "io/BackMemory.h"

#include <cstdint>
#if __has_include(<sys/mman.h>)
#    include <sys/mman.h>
#endif

namespace IO::detail {

// Large pages (MADV_HUGEPAGE) would save more at times, and cost several times what they save where
// the system has to make them from small ones first: measured on virtual machines that hand freed
// memory back.
void BackMemory([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
    constexpr std::uintptr_t kPage = 4096;
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t begin = (address + kPage - 1) & ~(kPage - 1);
    const std::uintptr_t end = (address + size) & ~(kPage - 1);
    // A system that does not know the advice works without it.
    if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
#endif
}

}  // namespace IO::detail
