// SPDX-License-Identifier: MIT
#pragma once

#include <limits>

namespace support {

/// An index whose lower 32 bits are 0; where numbers have no more bits, the one in the middle.
inline constexpr unsigned long kFarIndex =
    1UL << (std::numeric_limits<unsigned long>::digits > 32 ? 32 : 31);

}  // namespace support
