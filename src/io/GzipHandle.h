// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/CompressionMode.h>
#include <espalier/io/Forward.h>

#include <memory>

namespace IO::detail {

/// The compressing or decompressing side of a GZipStream: one of GzipReader and GzipWriter.
///
/// Positions are those of the uncompressed data. What the target throws passes through.
class GzipHandle {
public:
    static constexpr long kFailed = -1;

    GzipHandle() = default;
    GzipHandle(const GzipHandle&) = delete;
    GzipHandle& operator=(const GzipHandle&) = delete;
    virtual ~GzipHandle() = default;

    virtual long Position() const = 0;

    /// Moves the position to `position` and returns it, or kFailed where it cannot be reached.
    virtual long SeekTo(long position) = 0;

    /// Decompresses up to `count` bytes, at least 1. Fewer are the end, or an error.
    virtual int Read(unsigned char* buffer, int count) = 0;

    /// Returns what is wrong, in zlib's words, after Read() gave fewer bytes than asked; null at
    /// the end of the data.
    virtual const char* Error() const = 0;

    /// Compresses `count` bytes, at least 1; false when they could not all be taken.
    virtual bool Write(const unsigned char* buffer, int count) = 0;

    /// Hands on to the target what was written so far; false when that failed.
    virtual bool Flush() = 0;

    /// Ends the compressed data, unless a write has failed. Only destruction may follow.
    virtual void Finish() = 0;
};

/// Makes the handle for a mode; null when there is none, or no memory for it.
std::unique_ptr<GzipHandle> OpenGzip(Stream& target, CompressionMode mode);

}  // namespace IO::detail
