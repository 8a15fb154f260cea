// SPDX-License-Identifier: MIT
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>

#include "encoding/Codecs.h"
#include "encoding/Messages.h"
#include "encoding/Surrogates.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace Xml {

namespace {

const unsigned char* AsBytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// Returns the length of the character at the position by the bit patterns of its bytes alone, or 0
// where no character of up to four bytes stands.
std::ptrdiff_t LengthByPattern(const unsigned char* position, const unsigned char* end) {
    std::ptrdiff_t length = 0;
    if (*position < 0x80) return 1;
    if ((*position & 0xE0) == 0xC0) length = 2;
    if ((*position & 0xF0) == 0xE0) length = 3;
    if ((*position & 0xF8) == 0xF0) length = 4;
    if (end - position < length) return 0;
    const bool whole = std::all_of(position + 1, position + std::max<std::ptrdiff_t>(length, 1),
                                   detail::utf8::IsContinuation);
    return whole ? length : 0;
}

template <typename Unit>
void PutUnit(Unit unit, bool bigEndian, unsigned char* destination) {
    for (std::size_t i = 0; i < sizeof unit; ++i) {
        const std::size_t place = bigEndian ? sizeof unit - 1 - i : i;
        destination[place] = static_cast<unsigned char>(unit >> 8 * i & 0xFF);
    }
}

using ConvertToUtf16 = int (detail::CharCodec::*)(const unsigned char*&, const unsigned char*,
                                                  char16_t*&, char16_t*) const;
using ConvertToUcs4 = int (detail::CharCodec::*)(const unsigned char*&, const unsigned char*,
                                                 char32_t*&, char32_t*) const;

// Writes UTF-8 text as units of two or four bytes, a bufferful at a time, since the destination
// need not be aligned. Returns how many bytes were written.
template <typename Unit, typename Conversion>
unsigned WriteUnits(Conversion convert, const char* text, unsigned length,
                    unsigned char* destination, unsigned capacity, bool bigEndian) {
    Unit units[256];
    const unsigned char* position = AsBytes(text);
    const unsigned char* const end = position + length;
    std::size_t written = 0;
    for (;;) {
        Unit* unitsEnd = units;
        const std::size_t room = std::min(std::size(units), capacity - written);
        (detail::Utf8Codec().*convert)(position, end, unitsEnd, units + room);
        if (unitsEnd == units) break;
        for (const Unit* unit = units; unit != unitsEnd; ++unit, ++written) {
            PutUnit(*unit, bigEndian, destination + sizeof(Unit) * written);
        }
    }
    return static_cast<unsigned>(sizeof(Unit) * written);
}

// Writes a byte-order mark where one is wanted and fits. Returns how many bytes were written.
template <unsigned size>
unsigned PutMark(const unsigned char (&mark)[size], bool wanted, unsigned char* destination,
                 unsigned capacity) {
    if (!wanted || capacity < size) return 0;
    std::memcpy(destination, mark, size);
    return size;
}

const char* Utf16WebName(bool bigEndian) { return bigEndian ? "UTF-16BE" : "UTF-16LE"; }

}  // namespace

UTF8Encoding::UTF8Encoding() : UTF8Encoding(false, false) {}

UTF8Encoding::UTF8Encoding(bool emitByteOrderMark, bool throwOnError)
    : Encoding("UTF8", "UTF-8", false, throwOnError), emitByteOrderMark_(emitByteOrderMark) {}

UTF8Encoding::UTF8Encoding(const UTF8Encoding& other) = default;
UTF8Encoding& UTF8Encoding::operator=(const UTF8Encoding& other) = default;
UTF8Encoding::~UTF8Encoding() = default;

unsigned UTF8Encoding::GetByteCount(const char*, unsigned length) const { return length; }

// Deliberate: the capacity does not limit the copy; a caller makes room for the whole text.
unsigned UTF8Encoding::GetBytes(const char* text, unsigned length, unsigned char* destination,
                                unsigned) const {
    if (length != 0) std::memcpy(destination, text, length);
    return length;
}

unsigned UTF8Encoding::GetCharCount(const unsigned char* bytes, unsigned count) const {
    const unsigned char* position = bytes;
    const unsigned char* const end = bytes + count;
    unsigned characters = 0;
    while (position < end) {
        const std::ptrdiff_t length = LengthByPattern(position, end);
        if (length == 0 && ThrowOnError()) {
            Exception::ThrowException(detail::Message::kInvalidCharacterInSource);
        }
        position += std::max<std::ptrdiff_t>(length, 1);
        ++characters;
    }
    return characters;
}

unsigned UTF8Encoding::GetPreamble(unsigned char* destination, unsigned capacity) const {
    return PutMark({0xEF, 0xBB, 0xBF}, emitByteOrderMark_, destination, capacity);
}

UnicodeEncoding::UnicodeEncoding()
    : Encoding("Unicode", "UTF-16", false, false), bigEndian_(false), emitByteOrderMark_(false) {
    SetCodec(detail::Utf16LeCodec());
}

UnicodeEncoding::UnicodeEncoding(bool bigEndian, bool emitByteOrderMark, bool throwOnError)
    : Encoding("Unicode", Utf16WebName(bigEndian), false, throwOnError),
      bigEndian_(bigEndian),
      emitByteOrderMark_(emitByteOrderMark) {
    SetCodec(bigEndian ? detail::Utf16BeCodec() : detail::Utf16LeCodec());
}

UnicodeEncoding::UnicodeEncoding(const UnicodeEncoding& other) = default;
UnicodeEncoding& UnicodeEncoding::operator=(const UnicodeEncoding& other) = default;
UnicodeEncoding::~UnicodeEncoding() = default;

unsigned UnicodeEncoding::GetByteCount(const char* text, unsigned length) const {
    const unsigned char* position = AsBytes(text);
    const unsigned char* const end = position + length;
    unsigned bytes = 0;
    while (position < end) {
        const int size = detail::utf8::SequenceLength(*position);
        bytes += 2;
        if (end - position < size) break;
        if (size > 3 && detail::utf8::Combine(position, size) >= 0x10000) bytes += 2;
        position += size;
    }
    return bytes;
}

unsigned UnicodeEncoding::GetBytes(const char* text, unsigned length, unsigned char* destination,
                                   unsigned capacity) const {
    const ConvertToUtf16 convert = &detail::CharCodec::ToUtf16;
    return WriteUnits<char16_t>(convert, text, length, destination, capacity, bigEndian_);
}

unsigned UnicodeEncoding::GetCharCount(const unsigned char* bytes, unsigned count) const {
    const unsigned highByte = bigEndian_ ? 0 : 1;
    unsigned characters = 0;
    for (unsigned i = 0; count - i >= 2; ++characters) {
        const bool high = (bytes[i + highByte] & 0xFC) == 0xD8;
        i += high && count - i >= 4 ? 4 : 2;
    }
    return characters;
}

unsigned UnicodeEncoding::GetPreamble(unsigned char* destination, unsigned capacity) const {
    if (bigEndian_) return PutMark({0xFE, 0xFF}, emitByteOrderMark_, destination, capacity);
    return PutMark({0xFF, 0xFE}, emitByteOrderMark_, destination, capacity);
}

// Deliberate: this one converts as UTF-16, little-endian; only the other constructor selects UCS-4.
Ucs4UnicodeEncoding::Ucs4UnicodeEncoding()
    : Encoding("Unicode", "UTF-16", false, false), bigEndian_(false), emitByteOrderMark_(false) {
    SetCodec(detail::Utf16LeCodec());
}

// Deliberate: the web names are those of UTF-16.
Ucs4UnicodeEncoding::Ucs4UnicodeEncoding(bool bigEndian, bool emitByteOrderMark, bool throwOnError)
    : Encoding("Unicode", Utf16WebName(bigEndian), false, throwOnError),
      bigEndian_(bigEndian),
      emitByteOrderMark_(emitByteOrderMark) {
    SetCodec(bigEndian ? detail::Ucs4BeCodec() : detail::Ucs4LeCodec());
}

Ucs4UnicodeEncoding::Ucs4UnicodeEncoding(const Ucs4UnicodeEncoding& other) = default;
Ucs4UnicodeEncoding& Ucs4UnicodeEncoding::operator=(const Ucs4UnicodeEncoding& other) = default;
Ucs4UnicodeEncoding::~Ucs4UnicodeEncoding() = default;

unsigned Ucs4UnicodeEncoding::GetByteCount(const char*, unsigned length) const {
    return 4 * length;
}

unsigned Ucs4UnicodeEncoding::GetBytes(const char* text, unsigned length,
                                       unsigned char* destination, unsigned capacity) const {
    const ConvertToUcs4 convert = &detail::CharCodec::ToUcs4;
    return WriteUnits<char32_t>(convert, text, length, destination, capacity, bigEndian_);
}

unsigned Ucs4UnicodeEncoding::GetCharCount(const unsigned char*, unsigned count) const {
    return count / 4;
}

unsigned Ucs4UnicodeEncoding::GetPreamble(unsigned char* destination, unsigned capacity) const {
    if (bigEndian_) return PutMark({0, 0, 0xFE, 0xFF}, emitByteOrderMark_, destination, capacity);
    return PutMark({0xFF, 0xFE, 0, 0}, emitByteOrderMark_, destination, capacity);
}

}  // namespace Xml
