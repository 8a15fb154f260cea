// SPDX-License-Identifier: MIT
#include "xml/WriterOutput.h"

#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Stream.h>

#include "encoding/CharCodec.h"
#include "encoding/Utf8.h"
#include "xml/XmlCharacters.h"

#include <algorithm>  // std::clamp, std::max, std::min
#include <typeinfo>
#include <utility>  // std::exchange

namespace Xml::detail {

namespace {

// The most bytes that any encoding makes of a byte of UTF-8, and that a character has there.
constexpr std::size_t kMostBytes = 4;

// An ASCII character is one byte of UTF-8 and takes a unit; others take more bytes for their units.
std::size_t BytesPerByte(const Encoding& encoding) {
    return std::clamp<std::size_t>(encoding.GetByteCount("A", 1), 1, kMostBytes);
}

// The length of the character that a byte leads.
std::size_t LengthOf(char lead) {
    return static_cast<std::size_t>(utf8::SequenceLength(static_cast<unsigned char>(lead)));
}

// Returns the length of about the first half of a text, or of its only character.
std::size_t HalfOf(std::string_view text) {
    std::size_t length = text.size() / 2;
    while (length > 0 && utf8::IsContinuation(static_cast<unsigned char>(text[length])))
        --length;
    return length > 0 ? length : LengthOf(text[0]);
}

}  // namespace

void WriterOutput::Attach(IO::Stream* stream, const Encoding* encoding) {
    stream_ = stream;
    encoding_ = encoding;
    isUtf8_ = typeid(*encoding) == typeid(UTF8Encoding);
    isForeign_ = !isUtf8_ && encoding->Codec().Kind() == CodecKind::Utf8;
    bytesPerByte_ = isUtf8_ ? 1 : BytesPerByte(*encoding);
    used_ = 0;
    hasFailed_ = false;
}

void WriterOutput::Drain() {
    const int count = std::exchange(used_, 0);
    if (count > 0) {
        WriteThrough({reinterpret_cast<const char*>(buffer_), static_cast<std::size_t>(count)});
    }
}

void WriterOutput::PutPreamble() {
    if (used_ + 8 >= kCapacity) Drain();
    used_ +=
        static_cast<int>(encoding_->GetPreamble(buffer_ + used_, static_cast<unsigned>(Room())));
}

// Encodes a slice for which there is room, as long as no byte becomes more than kMostBytes. What
// cannot be written becomes a reference, or "?".
void WriterOutput::Encode(std::string_view slice, Missing missing) {
    if (isUtf8_) {
        Append(slice);
        return;
    }
    for (;;) {
        const std::size_t length = WritableLength(slice);
        EncodeWritable(slice.substr(0, length));
        slice.remove_prefix(length);
        if (slice.empty()) return;
        const int code = CharacterAt(slice.data(), slice.data() + slice.size());
        if (code < 0) {
            EncodeWritable("?");
            slice.remove_prefix(1);
            continue;
        }
        if (missing == Missing::BecomesReference && IsXmlCharacter(code)) {
            EncodeReference(code);
        } else {
            EncodeWritable("?");
        }
        slice.remove_prefix(LengthOf(slice[0]));
    }
}

void WriterOutput::EncodeWritable(std::string_view text) {
    if (isForeign_) {
        EncodeForeign(text);
    } else {
        used_ += static_cast<int>(GetBytes(text));
    }
}

// What the capacity counts is the encoding's own affair: bytes, or units of 2 or 4, of which there
// is more room than they can take.
std::size_t WriterOutput::GetBytes(std::string_view text) {
    hasFailed_ = true;  // unless the encoding returns
    const unsigned written = encoding_->GetBytes(text.data(), static_cast<unsigned>(text.size()),
                                                 buffer_ + used_, static_cast<unsigned>(Room()));
    hasFailed_ = false;
    return written;
}

// Only an encoding of the caller's knows how much it makes of a text. When that does not fit, or
// less comes out than it said, the text goes in halves, so that nothing is lost for want of room.
// A character of which nothing comes out is one that the encoding cannot write.
void WriterOutput::EncodeForeign(std::string_view text) {
    if (text.empty()) return;
    hasFailed_ = true;  // unless the encoding returns
    const std::size_t need =
        encoding_->GetByteCount(text.data(), static_cast<unsigned>(text.size()));
    hasFailed_ = false;
    if (need > Room()) Drain();
    const std::size_t half = HalfOf(text);
    const bool isOne = half == text.size();
    if (need <= Room() || isOne) {
        const std::size_t written = std::min(GetBytes(text), Room());
        if (written >= need || (isOne && (written > 0 || text == "?"))) {
            used_ += static_cast<int>(written);
            return;
        }
    }
    EncodeForeign(isOne ? "?" : text.substr(0, half));
    EncodeForeign(text.substr(half));
}

// "&#x7FF;" takes 3.5 bytes for each of the character, and those with more bytes take less.
void WriterOutput::EncodeReference(int code) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    char reference[] = "&#x10FFFF;";
    char* at = reference + sizeof reference - 2;  // the ";"
    for (int rest = code; rest != 0; rest >>= 4)
        *--at = kDigits[rest & 0xF];
    EncodeWritable("&#x");
    EncodeWritable(at);
}

// Returns how many bytes at the start of a text are characters that the encoding can write.
std::size_t WriterOutput::WritableLength(std::string_view text) const {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte < 0x80) {
            ++at;
            continue;
        }
        const int code = CharacterAt(at, end);
        if (code < 0 || !CanWrite(code)) break;
        at += LengthOf(*at);
    }
    return static_cast<std::size_t>(at - text.data());
}

// Returns the character above ASCII that a text begins with, or -1.
int WriterOutput::CharacterAt(const char* at, const char* end) {
    const auto* const position = reinterpret_cast<const unsigned char*>(at);
    const auto* const behind = reinterpret_cast<const unsigned char*>(end);
    if (utf8::Check(position, behind) != utf8::Sequence::Valid) return -1;
    return utf8::Combine(position, utf8::SequenceLength(*position));
}

bool WriterOutput::CanWrite(int code) const {
    const CharCodec& codec = encoding_->Codec();
    if (codec.Kind() != CodecKind::SingleByte && codec.Kind() != CodecKind::DoubleByte) return true;
    unsigned char bytes[kMostBytes];
    return codec.Encode(code, bytes, bytes + kMostBytes) > 0;
}

// Returns how many bytes, at most `most`, are whole characters; at least one byte.
std::size_t WriterOutput::WholeSlice(std::string_view text, std::size_t most) {
    if (text.size() <= most) return text.size();
    for (std::size_t length = most; length > 0 && most - length < 4; --length) {
        if (!utf8::IsContinuation(static_cast<unsigned char>(text[length]))) return length;
    }
    return std::max<std::size_t>(most, 1);  // these bytes are no characters
}

// Writes a token that does not fit, or for which that is not known.
void WriterOutput::PutLong(std::string_view token) {
    while (!token.empty()) {
        if (Room() / bytesPerByte_ < std::min(token.size(), kMostBytes)) Drain();
        const std::size_t length = WholeSlice(token, Room() / bytesPerByte_);
        Encode(token.substr(0, length), Missing::BecomesQuestionMark);
        token.remove_prefix(length);
        if (!token.empty()) Drain();
    }
}

void WriterOutput::PutSlices(std::string_view text, Missing missing) {
    while (!text.empty()) {
        if (Room() / 4 < std::min(text.size(), kMostBytes)) Drain();
        const std::size_t length = WholeSlice(text, Room() / 4);
        const bool isLast = length == text.size();
        if (isUtf8_ && used_ == 0 && !isLast) {
            WriteThrough(text.substr(0, length));
        } else {
            Encode(text.substr(0, length), missing);
            if (!isLast) Drain();
        }
        text.remove_prefix(length);
    }
}

// Hands bytes to the stream that would go through the empty buffer.
void WriterOutput::WriteThrough(std::string_view bytes) {
    hasFailed_ = true;  // unless the stream returns
    stream_->Write(reinterpret_cast<const unsigned char*>(bytes.data()), 0,
                   static_cast<int>(bytes.size()));
    hasFailed_ = false;
}

}  // namespace Xml::detail
