// SPDX-License-Identifier: MIT
#include <espalier/encoding/CodePageEncodings.h>

#include "encoding/Codecs.h"
#include "encoding/Utf8.h"

#include <cstdint>

namespace Xml {

SingleByteEncoding::SingleByteEncoding(const astring& encodingName, const astring& webName,
                                       bool throwOnError)
    : Encoding(encodingName, webName, true, throwOnError) {
    SetCodec(detail::Latin1Codec());
}

SingleByteEncoding::SingleByteEncoding(const SingleByteEncoding& other) = default;
SingleByteEncoding& SingleByteEncoding::operator=(const SingleByteEncoding& other) = default;
SingleByteEncoding::~SingleByteEncoding() = default;

unsigned SingleByteEncoding::GetByteCount(const char* text, unsigned length) const {
    return UTF8()->GetCharCount(reinterpret_cast<const unsigned char*>(text), length);
}

// Deliberate: a character that cannot be written moves the output back, and the result counts
// characters, not bytes. The output position is a number, since it may come to stand outside of the
// destination, where nothing is stored. Without room the rule is to store '?' where the next byte
// would go; that place is never inside the destination, so nothing is left to do.
unsigned SingleByteEncoding::GetCharCount(const unsigned char*, unsigned count) const {
    return count;
}

unsigned SingleByteEncoding::GetBytes(const char* text, unsigned length, unsigned char* destination,
                                      unsigned capacity) const {
    const detail::CharCodec& utf8 = detail::Utf8Codec();
    const auto* position = reinterpret_cast<const unsigned char*>(text);
    const unsigned char* const end = position + length;
    std::int64_t output = 0;
    unsigned characters = 0;
    for (; position < end; ++characters) {
        const int code = utf8.Decode(position, end);
        const int size = detail::utf8::SequenceLength(*position);
        position = end - position < size ? end : position + size;
        if (output >= capacity) continue;
        unsigned char byte = 0;
        const int written = Codec().Encode(code, &byte, &byte + 1);
        if (written > 0 && output >= 0) destination[output] = byte;
        output += written;
    }
    return characters;
}

ASCIIEncoding::ASCIIEncoding(bool throwOnError)
    : SingleByteEncoding("ASCII", "US-ASCII", throwOnError) {
    SetCodec(detail::AsciiCodec());
}

ASCIIEncoding::ASCIIEncoding(const ASCIIEncoding& other) = default;
ASCIIEncoding& ASCIIEncoding::operator=(const ASCIIEncoding& other) = default;
ASCIIEncoding::~ASCIIEncoding() = default;

Latin1Encoding::Latin1Encoding(bool throwOnError)
    : SingleByteEncoding("Latin1", "iso-8859-1", throwOnError) {
    SetCodec(detail::Latin1Codec());
}

Latin1Encoding::Latin1Encoding(const Latin1Encoding& other) = default;
Latin1Encoding& Latin1Encoding::operator=(const Latin1Encoding& other) = default;
Latin1Encoding::~Latin1Encoding() = default;

Windows1250Encoding::Windows1250Encoding(bool throwOnError)
    : SingleByteEncoding("Windows-1250", "windows-1250", throwOnError) {
    SetCodec(detail::Windows1250Codec());
}

Windows1250Encoding::Windows1250Encoding(const Windows1250Encoding& other) = default;
Windows1250Encoding& Windows1250Encoding::operator=(const Windows1250Encoding& other) = default;
Windows1250Encoding::~Windows1250Encoding() = default;

Windows1251Encoding::Windows1251Encoding(bool throwOnError)
    : SingleByteEncoding("Windows-1251", "windows-1251", throwOnError) {
    SetCodec(detail::Windows1251Codec());
}

Windows1251Encoding::Windows1251Encoding(const Windows1251Encoding& other) = default;
Windows1251Encoding& Windows1251Encoding::operator=(const Windows1251Encoding& other) = default;
Windows1251Encoding::~Windows1251Encoding() = default;

Windows1252Encoding::Windows1252Encoding(bool throwOnError)
    : SingleByteEncoding("Windows-1252", "windows-1252", throwOnError) {
    SetCodec(detail::Windows1252Codec());
}

Windows1252Encoding::Windows1252Encoding(const Windows1252Encoding& other) = default;
Windows1252Encoding& Windows1252Encoding::operator=(const Windows1252Encoding& other) = default;
Windows1252Encoding::~Windows1252Encoding() = default;

Windows1254Encoding::Windows1254Encoding(bool throwOnError)
    : SingleByteEncoding("Windows-1254", "windows-1254", throwOnError) {
    SetCodec(detail::Windows1254Codec());
}

Windows1254Encoding::Windows1254Encoding(const Windows1254Encoding& other) = default;
Windows1254Encoding& Windows1254Encoding::operator=(const Windows1254Encoding& other) = default;
Windows1254Encoding::~Windows1254Encoding() = default;

Windows1257Encoding::Windows1257Encoding(bool throwOnError)
    : SingleByteEncoding("Windows-1257", "windows-1257", throwOnError) {
    SetCodec(detail::Windows1257Codec());
}

Windows1257Encoding::Windows1257Encoding(const Windows1257Encoding& other) = default;
Windows1257Encoding& Windows1257Encoding::operator=(const Windows1257Encoding& other) = default;
Windows1257Encoding::~Windows1257Encoding() = default;

}  // namespace Xml
