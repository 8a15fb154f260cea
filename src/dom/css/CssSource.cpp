// SPDX-License-Identifier: MIT
#include "dom/css/CssSource.h"

#include <espalier/dom/css/CssReader.h>

#include "dom/css/AsciiCase.h"
#include "encoding/CharCodec.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <exception>
#include <new>

namespace Dom::CSS::detail {

namespace {

using Xml::detail::CodecKind;
using Xml::detail::DecodeEnd;

struct EncodingName {
    std::string_view name;
    Xml::Encoding* (*encoding)();
};

// "ASCII" is ISO-8859-1 here, and "UTF-16BE" needs a mark to be big-endian. Deliberate: style
// sheets that say so have always been read like that.
constexpr std::array<EncodingName, 10> kEncodings = {{
    {"", Xml::Encoding::ASCII},
    {"ISO-8859-1", Xml::Encoding::Latin1},
    {"ASCII", Xml::Encoding::Latin1},
    {"LATIN1", Xml::Encoding::Latin1},
    {"LATIN-1", Xml::Encoding::Latin1},
    {"ISO-10646", Xml::Encoding::Unicode},
    {"UNICODE", Xml::Encoding::Unicode},
    {"UTF-16", Xml::Encoding::Unicode},
    {"UTF-16BE", Xml::Encoding::Unicode},
    {"UTF-16LE", Xml::Encoding::Unicode},
}};

// The text is UTF-8 unless an application has changed s_Encoding.
bool IsUtf8(const Xml::Encoding* encoding) {
    return encoding == nullptr || encoding == Xml::Encoding::UTF8();
}

// Both functions convert what there is room for, and return whether nothing but the begin of a
// character is left then.

// Of a sequence that is no character only the first byte is taken: the rest of what it announces
// may be text.
bool DecodeUtf8(Xml::Encoding& encoding, const unsigned char*& position, const unsigned char* end,
                unsigned char*& output, unsigned char* outputEnd) {
    while (true) {
        const DecodeEnd decoded = encoding.Codec().DecodeRun(position, end, output, outputEnd);
        if (decoded == DecodeEnd::SourceUsed) return position < end && output < outputEnd;
        if (decoded == DecodeEnd::NoRoom || output == outputEnd) return false;
        *output++ = '?';
        ++position;
    }
}

bool DecodeOther(Xml::Encoding& encoding, const unsigned char*& position, const unsigned char* end,
                 unsigned char*& output, unsigned char* outputEnd) {
    constexpr std::ptrdiff_t kMostRoom = 8;  // that a character takes
    while (position < end && outputEnd - output >= kMostRoom) {
        unsigned consumed = 0;
        const unsigned written = Xml::Encoding::ConvertChar(
            &encoding, Xml::Encoding::UTF8(), position, static_cast<unsigned>(end - position),
            output, static_cast<unsigned>(outputEnd - output), consumed);
        if (consumed == 0) return true;
        if (written == 0) *output = '?';  // U+0000
        output += std::max(written, 1U);
        position += std::min<std::ptrdiff_t>(consumed, end - position);
    }
    return false;
}

}  // namespace

CssSource::CssSource(IO::Stream* stream)
    : stream_(stream), bytes_(std::make_unique<unsigned char[]>(kCapacity)) {
    end_ = std::max(0, ReadStream(0));
}

Xml::Encoding* CssSource::EncodingByName(std::string_view name) {
    const auto* const found = std::find_if(
        kEncodings.begin(), kEncodings.end(),
        [name](const EncodingName& entry) { return EqualIgnoringCase(entry.name, name); });
    if (found == kEncodings.end()) return Xml::Encoding::UTF8();
    Xml::Encoding* const encoding = found->encoding();
    if (encoding != Xml::Encoding::Unicode() || end_ <= 2) return encoding;
    const bool isLittle = bytes_[0] == 0xFF && bytes_[1] == 0xFE;
    const bool isBig = bytes_[0] == 0xFE && bytes_[1] == 0xFF;
    if (isLittle || isBig) position_ = 2;
    return isBig ? Xml::Encoding::BigEndianUnicode() : encoding;
}

// A stream that throws has nothing more to give.
int CssSource::ReadStream(int offset) {
    if (stream_ == nullptr) return 0;
    const int room = kCapacity - offset;
    try {
        return std::min(stream_->Read(bytes_.get(), offset, room), room);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& exception) {
        failed_ = endOfStream_ = true;
        error_ = exception.what();
        return 0;
    }
}

// What is left of the bytes, the begin of a character at most, goes to the front.
bool CssSource::Refill() {
    if (endOfStream_) return false;
    const int left = end_ - position_;
    std::memmove(bytes_.get(), bytes_.get() + position_, static_cast<std::size_t>(left));
    position_ = 0;
    end_ = left;
    const int count = ReadStream(left);
    if (count <= 0) {
        endOfStream_ = true;
        return false;
    }
    end_ += count;
    return true;
}

bool CssSource::AppendPiece(astring& text) {
    while (true) {
        if (position_ < end_ && Decode(text)) return true;
        if (!Refill() && position_ >= end_) return false;
    }
}

void CssSource::Close() {
    endOfStream_ = true;
    position_ = end_ = 0;
    bytes_.reset();
}

// Returns whether there was more than the begin of a character.
bool CssSource::Decode(astring& text) {
    const std::size_t length = text.length();
    text.resize(length + kMostBytes);
    auto* const begin = reinterpret_cast<unsigned char*>(text.begin()) + length;
    unsigned char* output = begin;
    DecodeUntilFull(output, begin + kMostBytes);
    if (std::memchr(begin, '\0', static_cast<std::size_t>(output - begin)) != nullptr) {
        std::replace(begin, output, static_cast<unsigned char>(0), static_cast<unsigned char>('?'));
    }
    text.resize(length + static_cast<std::size_t>(output - begin));
    if (IsUtf8(CssReader::s_Encoding) || output == begin) return output != begin;

    std::array<unsigned char, std::size_t{kMostBytes} * kLongestCharacter> recoded;
    const unsigned count = Xml::Encoding::Convert(
        Xml::Encoding::UTF8(), CssReader::s_Encoding, begin, static_cast<unsigned>(output - begin),
        recoded.data(), static_cast<unsigned>(recoded.size()));
    text.resize(length);
    text.append(reinterpret_cast<const char*>(recoded.data()), count);
    return true;
}

// Bytes that are no character become "?", and so does the begin of one at the end of the stream.
void CssSource::DecodeUntilFull(unsigned char*& output, unsigned char* outputEnd) {
    const unsigned char* position = bytes_.get() + position_;
    const unsigned char* const end = bytes_.get() + end_;
    const auto decode = encoding_->Codec().Kind() == CodecKind::Utf8 ? DecodeUtf8 : DecodeOther;
    while (decode(*encoding_, position, end, output, outputEnd) && endOfStream_) {
        position = end;  // only the begin of a character is left
        *output++ = '?';
    }
    position_ = static_cast<int>(position - bytes_.get());
}

}  // namespace Dom::CSS::detail
