// SPDX-License-Identifier: MIT
#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/DoubleByteEncodings.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>

#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Messages.h"

namespace Xml {

namespace {

// Writes a character, or a question mark where the encoding has no such character.
// Returns how many bytes were written; below 1 when nothing was.
int EncodeOrReplace(const detail::CharCodec& to, int code, unsigned char* destination,
                    unsigned char* destinationEnd) {
    const int written = to.Encode(code, destination, destinationEnd);
    return written < 0 ? to.Encode('?', destination, destinationEnd) : written;
}

bool IsCutShort(const detail::CharCodec& from, const unsigned char* position,
                const unsigned char* end) {
    return from.ClassAt(position, end) == detail::ToInt(detail::CharClass::Partial);
}

// Returns the position after a character that Decode() gave as `code`, at most `end`.
const unsigned char* Advance(const detail::CharCodec& from, int code, const unsigned char* position,
                             const unsigned char* end) {
    return code < 0 && IsCutShort(from, position, end) ? end : from.Next(position);
}

}  // namespace

Encoding::Encoding(const astring& encodingName, const astring& webName, bool isSingleByte,
                   bool throwOnError)
    : codec_(&detail::Utf8Codec()),
      encodingName_(encodingName),
      webName_(webName),
      isSingleByte_(isSingleByte),
      throwOnError_(throwOnError) {}

Encoding::Encoding(const Encoding& other) = default;
Encoding& Encoding::operator=(const Encoding& other) = default;
Encoding::~Encoding() = default;

unsigned Encoding::GetPreamble(unsigned char*, unsigned) const { return 0; }

unsigned Encoding::GetByteCount(const astring& text) const {
    return GetByteCount(text.c_str(), static_cast<unsigned>(text.length()));
}

unsigned Encoding::GetBytes(const astring& text, unsigned char* destination,
                            unsigned capacity) const {
    return GetBytes(text.c_str(), static_cast<unsigned>(text.length()), destination, capacity);
}

Encoding* Encoding::UTF8() {
    static UTF8Encoding instance(true, false);
    return &instance;
}

Encoding* Encoding::Unicode() {
    static UnicodeEncoding instance(false, true, false);
    return &instance;
}

Encoding* Encoding::NativeWide() {
    static UnicodeEncoding instance(false, true, false);
    return &instance;
}

Encoding* Encoding::BigEndianUnicode() {
    static UnicodeEncoding instance(true, true, false);
    return &instance;
}

Encoding* Encoding::ASCII() {
    static ASCIIEncoding instance(false);
    return &instance;
}

Encoding* Encoding::Latin1() {
    static Latin1Encoding instance(false);
    return &instance;
}

Encoding* Encoding::GB2312() {
    static Gb2312Encoding instance(false);
    return &instance;
}

Encoding* Encoding::EUC_KR() {
    static EucKrEncoding instance(false);
    return &instance;
}

Encoding* Encoding::Windows_1250() {
    static Windows1250Encoding instance(false);
    return &instance;
}

Encoding* Encoding::Windows_1251() {
    static Windows1251Encoding instance(false);
    return &instance;
}

Encoding* Encoding::Windows_1252() {
    static Windows1252Encoding instance(false);
    return &instance;
}

Encoding* Encoding::Windows_1254() {
    static Windows1254Encoding instance(false);
    return &instance;
}

Encoding* Encoding::Windows_1257() {
    static Windows1257Encoding instance(false);
    return &instance;
}

unsigned Encoding::Convert(Encoding* from, Encoding* to, const unsigned char* source,
                           unsigned sourceLength, unsigned char* destination,
                           unsigned destinationLength) {
    const unsigned char* position = source;
    const unsigned char* const end = source + sourceLength;
    unsigned char* output = destination;
    while (position < end) {
        const int code = from->codec_->Decode(position, end);
        if (code < 0 && from->ThrowOnError()) {
            Exception::ThrowException(detail::Message::kInvalidCharacterInSource);
        }
        const int written =
            EncodeOrReplace(*to->codec_, code, output, destination + destinationLength);
        if (written < 1) break;
        position = Advance(*from->codec_, code, position, end);
        output += written;
    }
    return static_cast<unsigned>(output - destination);
}

unsigned Encoding::Convert(Encoding* from, Encoding* to, const unsigned char* source,
                           unsigned sourceLength, unsigned char* destination,
                           unsigned destinationLength, unsigned& consumed) {
    // A cut character this near to the start is worth a second call with more bytes.
    constexpr int kRetryBytes = 5;
    const unsigned char* position = source;
    const unsigned char* const end = source + sourceLength;
    unsigned char* output = destination;
    while (position < end) {
        const int code = from->codec_->Decode(position, end);
        if (code < 0 && position - source < kRetryBytes &&
            IsCutShort(*from->codec_, position, end)) {
            break;
        }
        const int written = EncodeOrReplace(*to->codec_, code < 0 ? '?' : code, output,
                                            destination + destinationLength);
        if (written < 1) break;
        position = Advance(*from->codec_, code, position, end);
        output += written;
    }
    consumed = static_cast<unsigned>(position - source);
    return static_cast<unsigned>(output - destination);
}

unsigned Encoding::ConvertChar(Encoding* from, Encoding* to, const unsigned char* source,
                               unsigned sourceLength, unsigned char* destination,
                               unsigned destinationLength, unsigned& consumed) {
    const unsigned char* const end = source + sourceLength;
    consumed = 0;
    if (source == end) return 0;
    const int code = from->codec_->Decode(source, end);
    if (code < 0 && IsCutShort(*from->codec_, source, end)) return 0;
    const int written = EncodeOrReplace(*to->codec_, code < 0 ? '?' : code, destination,
                                        destination + destinationLength);
    consumed = static_cast<unsigned>(from->codec_->Next(source) - source);
    return written < 1 ? 0 : static_cast<unsigned>(written);
}

}  // namespace Xml
