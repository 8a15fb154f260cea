// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace bench {

/// Returns how many blocks the program has asked the heap for so far: every malloc, calloc,
/// realloc, aligned allocation and operator new, of the libraries too. Only in programs that link
/// AllocationCounter.cpp, which takes the place of the C library's functions.
std::uint64_t AllocationCount();

}  // namespace bench
