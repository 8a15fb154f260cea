// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/MemoryStream.h>
#include <espalier/io/Stream.h>

#include "support/TrickleStream.h"

#include <memory>
#include <string_view>

namespace support {

/// A stream over bytes that outlive it, which gives at most so many of them at a time.
class DocumentStream {
public:
    /// \param bytesPerRead 0 for as many as are asked for
    explicit DocumentStream(std::string_view bytes, int bytesPerRead = 0)
        : memory_(reinterpret_cast<const unsigned char*>(bytes.data()),
                  static_cast<long>(bytes.size())) {
        if (bytesPerRead > 0) trickle_ = std::make_unique<TrickleStream>(&memory_, bytesPerRead);
    }

    /// Returns the stream, which belongs to this object.
    IO::Stream* get() { return trickle_ ? static_cast<IO::Stream*>(trickle_.get()) : &memory_; }

private:
    IO::MemoryStream memory_;
    std::unique_ptr<TrickleStream> trickle_;
};

}  // namespace support
