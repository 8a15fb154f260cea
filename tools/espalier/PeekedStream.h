// SPDX-License-Identifier: MIT
#pragma once

#include "InputStream.h"

#include <cstddef>
#include <memory>
#include <string>

namespace Tool {

/// A stream that can be looked into before it is read.
class PeekedStream final : public InputStream {
public:
    explicit PeekedStream(std::unique_ptr<IO::Stream> next) : next_(std::move(next)) {}

    /// Looks at one piece more, up to `most` bytes in all. An error below is not thrown: it comes
    /// again when the stream is read up to there.
    /// \return whether there was more
    bool PeekMore(std::size_t most);

    /// Returns what has been looked at and not been read; it may be changed.
    std::string& Peeked() { return peeked_; }

    int Read(unsigned char* buffer, int offset, int count) override;

private:
    std::unique_ptr<IO::Stream> next_;
    std::string peeked_;
};

}  // namespace Tool
