// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace IO::detail {

/// The part of a caller's buffer that a Read() or Write() works on; `count` is 0 when there is
/// none.
struct ByteRange {
    int offset;
    int count;
};

/// Folds a negative offset into the count: (-3, 10) becomes (0, 7). A count below 1 becomes 0.
constexpr ByteRange FoldOffset(int offset, int count) {
    if (offset < 0) {
        const std::int64_t folded = std::int64_t{count} + offset;
        return {0, folded < 1 ? 0 : static_cast<int>(folded)};
    }
    return {offset, count < 1 ? 0 : count};
}

}  // namespace IO::detail
