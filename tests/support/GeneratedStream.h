// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace support {

/// A stream of texts that are made when they are read, so that documents of any size take no room.
///
/// \code
///     GeneratedStream stream;
///     stream.Add("<a>").Add("text ", 1000000).Add("</a>");
/// \endcode
class GeneratedStream : public IO::Stream {
public:
    using Generator = std::function<std::string(long)>;

    /// Adds a text, `count` times.
    GeneratedStream& Add(std::string text, long count = 1) {
        return Add([kept = std::move(text)](long) { return kept; }, count);
    }

    /// Adds what `generator` returns for 0 to `count` - 1.
    GeneratedStream& Add(Generator generator, long count) {
        parts_.push_back({std::move(generator), count});
        return *this;
    }

    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override {
        if (taken_ == current_.size() && !Advance()) return 0;
        const std::size_t length =
            std::min(current_.size() - taken_, static_cast<std::size_t>(count));
        std::memcpy(buffer + offset, current_.data() + taken_, length);
        taken_ += length;
        return static_cast<int>(length);
    }

private:
    struct Part {
        Generator generator;
        long count;
    };

    // Collects texts worth a few requests; returns false at the end.
    bool Advance() {
        current_.clear();
        taken_ = 0;
        while (current_.size() < 4096 && part_ < parts_.size()) {
            if (index_ == parts_[part_].count) {
                ++part_;
                index_ = 0;
                continue;
            }
            current_ += parts_[part_].generator(index_++);
        }
        return !current_.empty();
    }

    std::vector<Part> parts_;
    std::size_t part_ = 0;  // the part that comes next
    long index_ = 0;        // how many texts of it were given
    std::string current_;   // made, and given up to taken_
    std::size_t taken_ = 0;
};

}  // namespace support
