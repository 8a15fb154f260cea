// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/SeekOrigin.h>

#include <algorithm>
#include <limits>

namespace IO::detail {

/// Returns a + b, or the end of the range of `long` that the sum would pass.
constexpr long SaturatingAdd(long a, long b) {
    long sum = 0;
    if (!__builtin_add_overflow(a, b, &sum)) return sum;
    return b < 0 ? std::numeric_limits<long>::min() : std::numeric_limits<long>::max();
}

/// Returns where a stream in memory comes to stand: never before its start or past its length.
/// An origin with no name leaves the position where it is.
constexpr long SeekTarget(long offset, SeekOrigin origin, long position, long length) {
    long target = position;
    switch (origin) {
    case SeekOrigin::Begin: target = offset; break;
    case SeekOrigin::Current: target = SaturatingAdd(position, offset); break;
    case SeekOrigin::End: target = SaturatingAdd(length, offset); break;
    }
    return std::clamp(target, 0L, length);
}

}  // namespace IO::detail
