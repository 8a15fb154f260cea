// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <algorithm>

namespace support {

/// Gives what another stream holds in reads of at most `most` bytes, as a pipe or a socket may.
class TrickleStream : public IO::Stream {
public:
    /// `inner` is not owned.
    TrickleStream(IO::Stream& inner, int most) : inner_(inner), most_(most) {}

    bool CanRead() const override { return inner_.CanRead(); }
    bool CanSeek() const override { return inner_.CanSeek(); }
    bool CanWrite() const override { return inner_.CanWrite(); }
    long Length() const override { return inner_.Length(); }
    long Position() const override { return inner_.Position(); }
    void Close() override { inner_.Close(); }
    void Flush() override { inner_.Flush(); }
    int Read(unsigned char* buffer, int offset, int count) override {
        return inner_.Read(buffer, offset, std::min(count, most_));
    }
    long Seek(long offset, IO::SeekOrigin origin) override { return inner_.Seek(offset, origin); }
    void SetLength(long length) override { inner_.SetLength(length); }
    void Write(const unsigned char* buffer, int offset, int count) override {
        inner_.Write(buffer, offset, count);
    }

private:
    IO::Stream& inner_;
    int most_;  // bytes that one Read() gives at most
};

}  // namespace support
