// SPDX-License-Identifier: MIT
#pragma once

#include "InputStream.h"
#include "Progress.h"

#include <cstdint>
#include <memory>
#include <utility>

namespace Tool {

/// Counts what is read, for the progress line and for whoever asks.
class MeteredStream final : public InputStream {
public:
    /// \param progress not owned, must live longer; null for none
    MeteredStream(std::unique_ptr<IO::Stream> next, Progress* progress)
        : next_(std::move(next)), progress_(progress) {}

    /// Returns how many bytes have been read.
    std::int64_t Count() const { return count_; }

    int Read(unsigned char* buffer, int offset, int count) override {
        const int read = next_->Read(buffer, offset, count);
        count_ += read;
        if (progress_ != nullptr) progress_->Advance(read);
        return read;
    }

private:
    std::unique_ptr<IO::Stream> next_;
    Progress* progress_;
    std::int64_t count_ = 0;
};

}  // namespace Tool
