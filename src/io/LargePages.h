// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace IO::detail {

/// Asks the system to back memory that has not been touched yet with large pages, where it has
/// them. Nothing happens to less than a few megabytes.
void PreferLargePages(void* memory, std::size_t size) noexcept;

}  // namespace IO::detail
