// SPDX-License-Identifier: MIT
#pragma once

#include <cstring>
#include <string_view>

namespace IO {
class Stream;
}

namespace Xml {

class Encoding;

namespace detail {

/// Encodes what is written into a buffer of 1024 bytes and hands it to a stream.
///
/// The buffer goes to the stream before what is unlikely to fit, by rules of its own for
/// characters, tokens and texts: clients of slow streams rely on the sizes that result. What is
/// longer than the buffer is cut between characters.
class WriterOutput {
public:
    static constexpr int kCapacity = 1024;

    /// Starts over with a stream and an encoding, which are not owned.
    void Attach(IO::Stream* stream, const Encoding* encoding);

    /// Writes one ASCII character.
    void Put(char character) {
        if (used_ + 8 >= kCapacity) Drain();
        if (isUtf8_) {
            buffer_[used_++] = static_cast<unsigned char>(character);
        } else {
            Encode({&character, 1});
        }
    }

    /// Writes a token: markup, a name.
    void PutToken(std::string_view token) {
        if (used_ > 0 && NeedOf(token) >= kCapacity) Drain();
        if (isUtf8_ && token.size() <= Room()) {
            Append(token);
        } else {
            PutLong(token);
        }
    }

    /// Writes a text in slices of at most a quarter of the free space.
    void PutText(std::string_view text) {
        if (isUtf8_ && text.size() <= Room() / 4) {
            Append(text);
        } else {
            PutSlices(text);
        }
    }

    /// Writes a line of at most 79 ASCII characters that stand for bytes.
    void PutBinaryLine(std::string_view line) {
        if (used_ > kCapacity - 152) Drain();
        if (isUtf8_) {
            Append(line);
        } else {
            PutLong(line);
        }
    }

    /// Writes the byte-order mark of the encoding, if it has one.
    void PutPreamble();

    /// Hands the buffer to the stream.
    void Drain();

    /// Tells whether the stream has thrown, so that part of the output is lost.
    bool HasFailed() const { return hasFailed_; }

private:
    std::size_t Room() const { return static_cast<std::size_t>(kCapacity - used_); }
    std::size_t NeedOf(std::string_view token) const {
        return static_cast<std::size_t>(used_) + 2 * token.size();
    }
    void Append(std::string_view bytes) {
        std::memcpy(buffer_ + used_, bytes.data(), bytes.size());
        used_ += static_cast<int>(bytes.size());
    }
    void PutLong(std::string_view token);
    void PutSlices(std::string_view text);
    void Encode(std::string_view slice);
    static std::size_t WholeSlice(std::string_view text, std::size_t most);

    IO::Stream* stream_ = nullptr;
    const Encoding* encoding_ = nullptr;
    bool isUtf8_ = true;  // the text is copied as it is
    bool hasFailed_ = false;
    int used_ = 0;
    unsigned char buffer_[kCapacity];
};

}  // namespace detail
}  // namespace Xml
