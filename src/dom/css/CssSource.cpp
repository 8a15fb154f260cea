// SPDX-License-Identifier: MIT
#include "dom/css/CssSource.h"

#include <espalier/dom/css/CssReader.h>

#include "dom/css/AsciiCase.h"
#include "encoding/CharCodec.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <new>

namespace Dom::CSS::detail {

namespace {

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

// What a bad sequence of UTF-8 announces may be text: only its first byte is taken.
const unsigned char* BehindBad(const Xml::detail::CharCodec& codec, const unsigned char* position,
                               const unsigned char* end) {
    if (codec.Kind() == Xml::detail::CodecKind::Utf8) return position + 1;
    return std::min(codec.Next(position), end);
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
        failed_ = true;
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
    std::replace(begin, output, static_cast<unsigned char>('\0'), static_cast<unsigned char>('?'));
    text.resize(length + static_cast<std::size_t>(output - begin));
    if (IsUtf8(CssReader::s_Encoding) || output == begin) return output != begin;

    std::array<unsigned char, kMostBytes * kLongestCharacter> recoded;
    const unsigned count = Xml::Encoding::Convert(
        Xml::Encoding::UTF8(), CssReader::s_Encoding, begin, static_cast<unsigned>(output - begin),
        recoded.data(), static_cast<unsigned>(recoded.size()));
    text.resize(length);
    text.append(reinterpret_cast<const char*>(recoded.data()), count);
    return true;
}

// Bytes that are no character become "?", and so does the begin of one at the end of the stream.
void CssSource::DecodeUntilFull(unsigned char*& output, unsigned char* outputEnd) {
    const Xml::detail::CharCodec& codec = encoding_->Codec();
    const unsigned char* position = bytes_.get() + position_;
    const unsigned char* const end = bytes_.get() + end_;
    while (position < end) {
        const Xml::detail::DecodeEnd decoded = codec.DecodeRun(position, end, output, outputEnd);
        if (decoded == Xml::detail::DecodeEnd::NoRoom || position >= end) break;
        if (decoded == Xml::detail::DecodeEnd::SourceUsed && !endOfStream_) break;
        if (output == outputEnd) break;
        *output++ = '?';
        position =
            decoded == Xml::detail::DecodeEnd::SourceUsed ? end : BehindBad(codec, position, end);
    }
    position_ = static_cast<int>(position - bytes_.get());
}

}  // namespace Dom::CSS::detail
