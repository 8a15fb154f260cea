// SPDX-License-Identifier: MIT
#include "LimitedStream.h"

#include <fmt/format.h>

#include <algorithm>

namespace Tool {

LimitedStream::LimitedStream(std::unique_ptr<IO::Stream> next, SizeLimits limits,
                             std::function<std::int64_t()> packedSize)
    : next_(std::move(next)), limits_(limits), packedSize_(std::move(packedSize)) {}

int LimitedStream::Read(unsigned char* buffer, int offset, int count) {
    if (limits_.bytes && count > 0) {
        const std::int64_t left = *limits_.bytes - delivered_;
        if (left == 0) {
            unsigned char further = 0;
            if (next_->Read(&further, 0, 1) < 1) return 0;
            throw LimitReached(fmt::format("More than {} bytes (--max-bytes)", *limits_.bytes));
        }
        count = static_cast<int>(std::min<std::int64_t>(count, left));
    }
    const int read = next_->Read(buffer, offset, count);
    delivered_ += read;
    if (packedSize_ && delivered_ > SizeLimits::kAlwaysAllowed &&
        (delivered_ - 1) / limits_.ratio >= packedSize_()) {
        throw LimitReached(
            fmt::format("More than {} times its compressed size (--max-ratio)", limits_.ratio));
    }
    return read;
}

}  // namespace Tool
