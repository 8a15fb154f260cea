// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>

#include "InputStream.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Tool {

/// Thrown when a document is larger than it may be.
class LimitReached : public Xml::Exception {
public:
    explicit LimitReached(const std::string& message) : Exception(message.c_str()) {}
};

/// How large a document may be.
struct SizeLimits {
    /// What may come out of any compressed data, whatever their size.
    static constexpr std::int64_t kAlwaysAllowed = 8 << 20;

    std::optional<std::int64_t> bytes;  ///< no more than so many
    std::int64_t ratio = 200;           ///< no more than so many times the compressed size
};

/// Stops the reading of a document that is larger than it may be. It counts what comes; what
/// archives say of themselves does not matter.
class LimitedStream final : public InputStream {
public:
    /// \param packedSize returns the size of the compressed data that have been read; null when
    ///        the data are not compressed
    LimitedStream(std::unique_ptr<IO::Stream> next, SizeLimits limits,
                  std::function<std::int64_t()> packedSize);

    /// \throws LimitReached when there is a byte more than is allowed
    int Read(unsigned char* buffer, int offset, int count) override;

private:
    std::unique_ptr<IO::Stream> next_;
    SizeLimits limits_;
    std::function<std::int64_t()> packedSize_;
    std::int64_t delivered_ = 0;
};

}  // namespace Tool
