// SPDX-License-Identifier: MIT
#include "xml/WriterOutput.h"

#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Stream.h>

#include "encoding/Codecs.h"
#include "encoding/Utf8.h"
#include "xml/XmlCharacters.h"

#include <algorithm>  // std::clamp, std::max, std::min
#include <charconv>
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

bool IsPage(const Encoding& encoding) {
    const CodecKind kind = encoding.Codec().Kind();
    return kind == CodecKind::SingleByte || kind == CodecKind::DoubleByte;
}

bool CanWrite(const CharCodec& codec, int code) {
    unsigned char bytes[kMostBytes];
    return codec.Encode(code, std::begin(bytes), std::end(bytes)) > 0;
}

// "&#x", up to six digits and ";".
struct Reference {
    char text[10] = {'&', '#', 'x'};
    std::size_t length = 3;

    explicit Reference(int code) {
        constexpr int kBase = 16;
        char* const end = std::to_chars(text + length, std::end(text), code, kBase).ptr;
        for (char* digit = text + length; digit != end; ++digit) {
            if (*digit >= 'a') *digit = static_cast<char>(*digit - 'a' + 'A');
        }
        *end = ';';
        length = static_cast<std::size_t>(end + 1 - text);
    }
};

}  // namespace

void WriterOutput::Attach(IO::Stream* stream, const Encoding* encoding) {
    stream_ = stream;
    encoding_ = encoding;
    isUtf8_ = encoding != nullptr && typeid(*encoding) == typeid(UTF8Encoding);
    isPage_ = encoding != nullptr && IsPage(*encoding);
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
    Drain();
    used_ = static_cast<int>(encoding_->GetPreamble(buffer_, kCapacity));
}

// Encodes a slice for which there is room, as long as no byte becomes more than kMostBytes.
void WriterOutput::Encode(std::string_view slice, Unwritable unwritable) {
    if (isUtf8_) {
        Append(slice);
    } else if (isPage_) {
        EncodePage(slice, unwritable);
    } else {
        EncodeWritable(slice);
    }
}

// Encodes a slice for an encoding that does not have all characters. What it would make of the
// others must not be seen. A reference is at most kMostBytes times as long as its character.
void WriterOutput::EncodePage(std::string_view slice, Unwritable unwritable) {
    const CharCodec& page = encoding_->Codec();
    const auto* at = reinterpret_cast<const unsigned char*>(slice.data());
    const unsigned char* const end = at + slice.size();
    const char* writable = slice.data();  // from here on
    while (at != end) {
        const auto* const begin = reinterpret_cast<const char*>(at);
        const bool isAscii = *at < 0x80;
        const int code = isAscii ? -1 : Utf8Codec().Decode(at, end);
        at += std::min<std::ptrdiff_t>(utf8::SequenceLength(*at), end - at);
        const bool isCharacter = code >= 0x80 && IsXmlCharacter(code);
        if (isAscii || (isCharacter && CanWrite(page, code))) continue;

        EncodeWritable({writable, static_cast<std::size_t>(begin - writable)});
        writable = reinterpret_cast<const char*>(at);
        if (unwritable == Unwritable::Reference && isCharacter) {
            const Reference reference(code);
            EncodeWritable({reference.text, reference.length});
        } else {
            EncodeWritable("?");
        }
    }
    EncodeWritable({writable, static_cast<std::size_t>(slice.data() + slice.size() - writable)});
}

void WriterOutput::EncodeWritable(std::string_view slice) {
    // What the capacity counts is the encoding's own affair: bytes, or units of 2 or 4. Some want
    // room for a character more than they write.
    const auto length = static_cast<unsigned>(slice.size());
    const unsigned written =
        encoding_->GetBytes(slice.data(), length, buffer_ + used_, length + kMostBytes);
    used_ += static_cast<int>(written);
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
        Encode(token.substr(0, length));
        token.remove_prefix(length);
        if (!token.empty()) Drain();
    }
}

void WriterOutput::PutSlices(std::string_view text, Unwritable unwritable) {
    while (!text.empty()) {
        if (Room() / 4 < std::min(text.size(), kMostBytes)) Drain();
        const std::size_t length = WholeSlice(text, Room() / 4);
        const bool isLast = length == text.size();
        if (isUtf8_ && used_ == 0 && !isLast) {
            WriteThrough(text.substr(0, length));
        } else {
            Encode(text.substr(0, length), unwritable);
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
