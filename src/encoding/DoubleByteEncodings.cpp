// SPDX-License-Identifier: MIT
#include <espalier/encoding/DoubleByteEncodings.h>
#include <espalier/io/Exception.h>

#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Messages.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <cstddef>

namespace Xml {

namespace {

// Calls `take` with the bytes of each character of a UTF-8 text and their number, until it returns
// false.
template <typename Take>
void ForEachCharacter(const detail::CharCodec& codec, const char* text, unsigned length,
                      Take take) {
    const detail::CharCodec& utf8 = detail::Utf8Codec();
    const auto* position = reinterpret_cast<const unsigned char*>(text);
    const unsigned char* const end = position + length;
    while (position < end) {
        unsigned char bytes[2] = {'?', 0};
        const int encoded =
            codec.Encode(utf8.Decode(position, end), std::begin(bytes), std::end(bytes));
        if (!take(bytes, static_cast<std::size_t>(std::max(encoded, 1)))) return;
        position +=
            std::min<std::ptrdiff_t>(detail::utf8::SequenceLength(*position), end - position);
    }
}

unsigned CountBytes(const detail::CharCodec& codec, const char* text, unsigned length) {
    std::size_t total = 0;
    ForEachCharacter(codec, text, length, [&total](const unsigned char*, std::size_t size) {
        total += size;
        return true;
    });
    return static_cast<unsigned>(total);
}

unsigned WriteBytes(const detail::CharCodec& codec, const char* text, unsigned length,
                    unsigned char* destination, unsigned capacity) {
    std::size_t written = 0;
    ForEachCharacter(codec, text, length, [&](const unsigned char* bytes, std::size_t size) {
        if (capacity - written < size) return false;
        std::copy_n(bytes, size, destination + written);
        written += size;
        return true;
    });
    return static_cast<unsigned>(written);
}

unsigned CountCharacters(const detail::CharCodec& codec, const unsigned char* bytes, unsigned count,
                         bool throwOnError) {
    const unsigned char* position = bytes;
    const unsigned char* const end = bytes + count;
    unsigned characters = 0;
    for (; position < end; ++characters) {
        const bool isCharacter = codec.Decode(position, end) >= 0;
        if (!isCharacter && throwOnError) {
            Exception::ThrowException(detail::Message::kInvalidCharacterInSource);
        }
        position = isCharacter ? codec.Next(position) : position + 1;
    }
    return characters;
}

}  // namespace

Gb2312Encoding::Gb2312Encoding(bool throwOnError)
    : Encoding("GB2312", "gb2312", false, throwOnError) {
    SetCodec(detail::Gb2312Codec());
}

Gb2312Encoding::Gb2312Encoding(const Gb2312Encoding& other) = default;
Gb2312Encoding& Gb2312Encoding::operator=(const Gb2312Encoding& other) = default;
Gb2312Encoding::~Gb2312Encoding() = default;

unsigned Gb2312Encoding::GetByteCount(const char* text, unsigned length) const {
    return CountBytes(Codec(), text, length);
}

unsigned Gb2312Encoding::GetBytes(const char* text, unsigned length, unsigned char* destination,
                                  unsigned capacity) const {
    return WriteBytes(Codec(), text, length, destination, capacity);
}

unsigned Gb2312Encoding::GetCharCount(const unsigned char* bytes, unsigned count) const {
    return CountCharacters(Codec(), bytes, count, ThrowOnError());
}

EucKrEncoding::EucKrEncoding(bool throwOnError)
    : Encoding("EUC-KR", "EUC-KR", false, throwOnError) {
    SetCodec(detail::EucKrCodec());
}

EucKrEncoding::EucKrEncoding(const EucKrEncoding& other) = default;
EucKrEncoding& EucKrEncoding::operator=(const EucKrEncoding& other) = default;
EucKrEncoding::~EucKrEncoding() = default;

unsigned EucKrEncoding::GetByteCount(const char* text, unsigned length) const {
    return CountBytes(Codec(), text, length);
}

unsigned EucKrEncoding::GetBytes(const char* text, unsigned length, unsigned char* destination,
                                 unsigned capacity) const {
    return WriteBytes(Codec(), text, length, destination, capacity);
}

unsigned EucKrEncoding::GetCharCount(const unsigned char* bytes, unsigned count) const {
    return CountCharacters(Codec(), bytes, count, ThrowOnError());
}

}  // namespace Xml
