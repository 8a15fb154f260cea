// SPDX-License-Identifier: MIT
#pragma once

#include "xml/EscapeScan.h"

#include <cstring>
#include <string_view>

namespace IO {
class Stream;
}

namespace Xml {

class Encoding;

namespace detail {

/// A token of at most seven ASCII characters, made to be copied at once.
struct ShortToken {
    char text[7] = {};
    unsigned char length = 0;

    constexpr ShortToken() = default;
    template <std::size_t kSize>
    constexpr ShortToken(const char (&token)[kSize]) : length(kSize - 1) {
        static_assert(kSize - 1 <= sizeof text);
        for (std::size_t i = 0; i < kSize - 1; ++i)
            text[i] = token[i];
    }

    std::string_view View() const { return {text, length}; }
};

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
            EncodeWritable({&character, 1});
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

    /// Writes a token like the function above.
    void PutShort(const ShortToken& token) {
        if (!isUtf8_ || used_ + 2 * token.length >= kCapacity) {
            PutToken(token.View());
            return;
        }
        std::memcpy(buffer_ + used_, &token, sizeof token);  // the rest is overwritten later
        used_ += token.length;
    }

    /// What becomes of a character that the encoding cannot write.
    enum class Missing : unsigned char { BecomesReference, BecomesQuestionMark };

    /// Writes character data, or a part of a value, in slices of at most a quarter of the free
    /// space. A character that the encoding cannot write becomes a reference.
    void PutData(std::string_view text) { PutText(text, Missing::BecomesReference); }

    /// Writes what may hold no references in the same way. A character that the encoding cannot
    /// write becomes "?", in all other functions too.
    void PutText(std::string_view text, Missing missing = Missing::BecomesQuestionMark) {
        if (isUtf8_ && text.size() <= Room() / 4) {
            Append(text);
        } else {
            PutSlices(text, missing);
        }
    }

    /// \name The usual in one step
    /// These write what the operations above would, as long as all of it fits and needs no flush.
    /// \return whether it was written; if not, nothing was
    /// @{

    /// Writes a text in which nothing has to be escaped or refused, behind the ">" of a start tag
    /// if `closesTag`.
    bool PutPlainText(std::string_view text, bool closesTag, bool breaksArePlain) {
        unsigned char* to = RoomFor(4 * text.size());
        if (to == nullptr) return false;
        if (closesTag) *to++ = '>';
        if (!CopyPlain(to, text, breaksArePlain)) return false;
        Commit(to + text.size());
        return true;
    }

    /// Writes an attribute, whose value is as above.
    bool PutPlainAttribute(std::string_view name, char quote, std::string_view value,
                           bool breaksArePlain) {
        unsigned char* to = RoomFor(2 * name.size() + 4 * value.size());
        if (to == nullptr) return false;
        *to++ = ' ';
        to = Copy(to, name);
        *to++ = '=';
        *to++ = static_cast<unsigned char>(quote);
        if (!CopyPlain(to, value, breaksArePlain)) return false;
        to += value.size();
        *to++ = static_cast<unsigned char>(quote);
        Commit(to);
        return true;
    }

    /// Writes "<" and a name.
    bool PutStartTag(std::string_view name) {
        unsigned char* to = RoomFor(2 * name.size());
        if (to == nullptr) return false;
        *to++ = '<';
        Commit(Copy(to, name));
        return true;
    }

    /// Writes an end tag.
    bool PutEndTag(std::string_view name) {
        unsigned char* to = RoomFor(2 * name.size());
        if (to == nullptr) return false;
        *to++ = '<';
        *to++ = '/';
        to = Copy(to, name);
        *to++ = '>';
        Commit(to);
        return true;
    }
    /// @}

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

    /// Says that part of the output is lost.
    void GiveUp() { hasFailed_ = true; }

    /// Tells whether the stream or the encoding has thrown, so that part of the output is lost.
    bool HasFailed() const { return hasFailed_; }

private:
    std::size_t Room() const { return static_cast<std::size_t>(kCapacity - used_); }
    std::size_t NeedOf(std::string_view token) const {
        return static_cast<std::size_t>(used_) + 2 * token.size();
    }
    void Append(std::string_view bytes) { Commit(Copy(buffer_ + used_, bytes)); }

    // Returns where to write when pieces that need so many bytes by the rules for flushing, and a
    // few characters around them, make no flush; otherwise null.
    unsigned char* RoomFor(std::size_t need) {
        constexpr std::size_t kAround = 16;
        const bool fits = isUtf8_ && need + kAround < Room();
        return fits ? buffer_ + used_ : nullptr;
    }
    void Commit(const unsigned char* end) { used_ = static_cast<int>(end - buffer_); }

    static unsigned char* Copy(unsigned char* to, std::string_view bytes) {
        const std::size_t size = bytes.size();
        if (size > 16 || size < 4) {
            if (size < 4) {  // nothing, perhaps at no address
                for (const char c : bytes)
                    *to++ = static_cast<unsigned char>(c);
                return to;
            }
            std::memcpy(to, bytes.data(), size);
        } else if (size >= 8) {
            CopyBothEnds<8>(to, bytes);
        } else {
            CopyBothEnds<4>(to, bytes);
        }
        return to + size;
    }
    template <std::size_t kSize>
    static void CopyBothEnds(unsigned char* to, std::string_view bytes) {
        std::memcpy(to, bytes.data(), kSize);
        std::memcpy(to + bytes.size() - kSize, bytes.data() + bytes.size() - kSize, kSize);
    }
    void PutLong(std::string_view token);
    void PutSlices(std::string_view text, Missing missing);
    void WriteThrough(std::string_view bytes);
    void Encode(std::string_view slice, Missing missing);
    void EncodeWritable(std::string_view text);
    void EncodeForeign(std::string_view text);
    std::size_t GetBytes(std::string_view text);
    void EncodeReference(int code);
    std::size_t WritableLength(std::string_view text) const;
    bool CanWrite(int code) const;
    static int CharacterAt(const char* at, const char* end);
    static std::size_t WholeSlice(std::string_view text, std::size_t most);

    IO::Stream* stream_ = nullptr;
    const Encoding* encoding_ = nullptr;
    bool isUtf8_ = true;            // the text is copied as it is
    bool isForeign_ = false;        // an encoding of the caller's: none of ours has this codec
    std::size_t bytesPerByte_ = 1;  // that the encoding makes of a byte of UTF-8, at most
    bool hasFailed_ = false;
    int used_ = 0;
    unsigned char buffer_[kCapacity + kCopySlack];
};

}  // namespace detail
}  // namespace Xml
