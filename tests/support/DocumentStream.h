// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/MemoryStream.h>
#include <espalier/io/Stream.h>

#include "support/TrickleStream.h"

#include <optional>
#include <string_view>

namespace support {

/// A stream over bytes that outlive it, which gives at most so many of them at a time.
class DocumentStream {
public:
    /// \param bytesPerRead 0 for as many as are asked for
    explicit DocumentStream(std::string_view bytes, int bytesPerRead = 0)
        : memory_(reinterpret_cast<const unsigned char*>(bytes.data()),
                  static_cast<long>(bytes.size())) {
        if (bytesPerRead > 0) trickle_.emplace(memory_, bytesPerRead);
    }
    DocumentStream(const DocumentStream&) = delete;
    DocumentStream& operator=(const DocumentStream&) = delete;

    /// Returns the stream, which belongs to this object.
    IO::Stream* get() { return trickle_ ? static_cast<IO::Stream*>(&*trickle_) : &memory_; }

private:
    IO::MemoryStream memory_;
    std::optional<TrickleStream> trickle_;
};

}  // namespace support
