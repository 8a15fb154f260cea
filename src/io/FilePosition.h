// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>  // off_t

namespace IO::detail {

/// `long` has fewer bits than the positions of files, as on 32-bit systems.
constexpr bool kLongIsShort = sizeof(long) < sizeof(off_t);

/// Returns a position or length of a file; -1 where there is none, or `long` cannot hold it.
constexpr long LongOrNone(off_t position) {
    long result = 0;
    return __builtin_add_overflow(position, 0, &result) ? -1 : result;
}

}  // namespace IO::detail
