// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "support/FileTest.h"

#include <string>
#include <string_view>

namespace support {

/// A stream that gives what it holds, but cannot seek, and has no position to tell.
class UnseekableStream : public IO::Stream {
public:
    /// `inner` is not owned.
    explicit UnseekableStream(IO::Stream& inner) : inner_(inner) {}

    bool CanRead() const override { return inner_.CanRead(); }
    bool CanWrite() const override { return inner_.CanWrite(); }
    void Close() override { inner_.Close(); }
    int Read(unsigned char* buffer, int offset, int count) override {
        return inner_.Read(buffer, offset, count);
    }
    void Write(const unsigned char* buffer, int offset, int count) override {
        inner_.Write(buffer, offset, count);
    }

private:
    IO::Stream& inner_;
};

/// Returns a stream that reads `bytes`, which must outlive it.
inline IO::MemoryStream StreamOver(std::string_view bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<long>(bytes.size())};
}

/// What reading a stream to its end came to.
struct ReadOutcome {
    std::string content;
    std::string error;  ///< the message; empty when the end was reached

    bool operator==(const ReadOutcome&) const = default;
};

/// Reads until the end or an Xml::Exception, `piece` bytes at a time, and keeps what came before
/// the exception: Position() tells how much of it stands in the buffer. Also stops at negative
/// results, with their number as the error.
inline ReadOutcome ReadToOutcome(IO::Stream& stream, int piece) {
    ReadOutcome outcome;
    std::string buffer(static_cast<std::size_t>(piece), '\0');
    for (;;) {
        const long before = stream.Position();
        int count = 0;
        try {
            count = stream.Read(reinterpret_cast<unsigned char*>(buffer.data()), 0, piece);
        } catch (const Xml::Exception& error) {
            outcome.error = error.What();
            count = static_cast<int>(stream.Position() - before);
        }
        if (count < 0) {
            outcome.error = std::to_string(count);
            return outcome;
        }
        outcome.content.append(buffer, 0, static_cast<std::size_t>(count));
        if (count == 0 || !outcome.error.empty()) return outcome;
    }
}

/// Decompresses `data` from memory, `piece` bytes at a time.
inline ReadOutcome Decompress(std::string_view data, int piece = 1000) {
    IO::MemoryStream source = StreamOver(data);
    IO::GZipStream stream(&source, IO::CompressionMode::Decompress);
    return ReadToOutcome(stream, piece);
}

}  // namespace support
