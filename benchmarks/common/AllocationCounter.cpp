// SPDX-License-Identifier: MIT
// Functions of a program hide those of the C library, for the shared libraries as well, and
// operator new comes down to malloc or aligned_alloc. Each one counts and passes the call on.
#include "common/AllocationCounter.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <errno.h>

// The GNU C library's own names for what is hidden here.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

std::atomic<std::uint64_t> allocationCount = 0;

void Count() { allocationCount.fetch_add(1, std::memory_order_relaxed); }

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    Count();
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    Count();
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) noexcept {
    Count();
    return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    Count();
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    Count();
    *block = __libc_memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

}  // extern "C"

namespace bench {

std::uint64_t AllocationCount() { return allocationCount.load(std::memory_order_relaxed); }

}  // namespace bench
