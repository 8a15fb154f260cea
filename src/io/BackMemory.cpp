// SPDX-License-Identifier: MIT
#include "io/BackMemory.h"

#include <cstdint>
#include <sys/mman.h>

namespace IO::detail {

namespace {

// Advises on the pages of `pageSize` bytes that lie within the memory.
[[maybe_unused]] void Advise(std::uintptr_t address, std::size_t size, std::uintptr_t pageSize,
                             int advice) noexcept {
    const std::uintptr_t begin = (address + pageSize - 1) & ~(pageSize - 1);
    const std::uintptr_t end = (address + size) & ~(pageSize - 1);
    // A system that does not know the advice works without it.
    if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, advice);
}

}  // namespace

void BackMemory([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    Advise(reinterpret_cast<std::uintptr_t>(memory), size, 2 * 1024 * 1024, MADV_HUGEPAGE);
#endif
#ifdef MADV_POPULATE_WRITE
    Advise(reinterpret_cast<std::uintptr_t>(memory), size, 4096, MADV_POPULATE_WRITE);
#endif
}

}  // namespace IO::detail
