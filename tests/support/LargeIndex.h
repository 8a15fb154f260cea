// SPDX-License-Identifier: MIT
#pragma once

#include <climits>

namespace support {

/// An index that is too large, and that would be 0 in 32 bits where `unsigned long` has more. There
/// are some above it.
inline constexpr unsigned long kPast32Bits = ULONG_MAX > UINT_MAX ? UINT_MAX + 1UL : ULONG_MAX - 5;

}  // namespace support
