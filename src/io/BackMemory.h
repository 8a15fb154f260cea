// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace IO::detail {

/// Gets the system to back memory that is about to be filled at once; otherwise the first touch of
/// each page would interrupt the work. Only worth its call for many pages, and a matter of speed
/// alone.
void BackMemory(void* memory, std::size_t size) noexcept;

}  // namespace IO::detail
