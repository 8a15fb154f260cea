// SPDX-License-Identifier: MIT
#include "encoding/AsciiMatch.h"
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Latin1Blocks.h"
#include "encoding/Utf8.h"

// ISO-8859-1, and ASCII, which is read and written the same way: a document that calls itself ASCII
// and holds other bytes is taken for ISO-8859-1.

namespace Xml::detail {

namespace {

class Latin1CharCodec final : public CharCodec {
public:
    constexpr explicit Latin1CharCodec(const char* name) : CharCodec(name, CodecKind::SingleByte) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~Latin1CharCodec() override {}

    int ClassOfCode(int code) const override {
        if (code < 1 || code > kLastCode) return ToInt(CharClass::End);
        return ToInt(kLatin1Class[static_cast<unsigned>(code)]);
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        return ToInt(position >= end ? CharClass::End : kLatin1Class[*position]);
    }

    int Decode(const unsigned char* position, const unsigned char* end) const override {
        return position >= end ? 0 : *position;
    }

    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        if (destination >= destinationEnd) return 0;
        if (code < 0 || code > kLastCode) return -1;
        *destination = static_cast<unsigned char>(code);
        return 1;
    }

    const unsigned char* Next(const unsigned char* position) const override { return position + 1; }

    bool IsChar(const unsigned char* position, int code) const override {
        return *position == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        return MatchAsciiBytes(position, end, literal, matchedEnd);
    }

    int ToUtf8(const unsigned char*& position, const unsigned char* end,
               unsigned char*& destination, unsigned char* destinationEnd) const override {
        const unsigned char* const start = destination;
        DecodeRun(position, end, destination, destinationEnd);
        return static_cast<int>(destination - start);
    }

    int ToUtf16(const unsigned char*& position, const unsigned char* end, char16_t*& destination,
                char16_t* destinationEnd) const override {
        const char16_t* const start = destination;
        while (position < end && destination < destinationEnd)
            *destination++ = *position++;
        return static_cast<int>(destination - start);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        const char32_t* const start = destination;
        while (position < end && destination < destinationEnd)
            *destination++ = *position++;
        return static_cast<int>(destination - start);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        WidenLatin1(position, end, destination, destinationEnd);
        while (position < end) {
            if (*position < 0x80) {
                if (destination == destinationEnd) return DecodeEnd::NoRoom;
                CopyAsciiRun(position, end, destination, destinationEnd);
            } else {
                if (destinationEnd - destination < 2) return DecodeEnd::NoRoom;
                WriteShortRun<1, ByteAt>(position, end, destination, destinationEnd);
            }
        }
        return DecodeEnd::SourceUsed;
    }

    int ClassOfScalar(int code) const override {
        if (code >= 0 && code <= kLastCode) return ToInt(kLatin1Class[static_cast<unsigned>(code)]);
        return ClassOfScalarValue(code);
    }

    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        return utf8::CountCharacters(begin, end).all;
    }

private:
    static constexpr int kLastCode = 0xFF;

    static int ByteAt(const unsigned char* position) { return *position; }
};

constexpr Latin1CharCodec kAsciiCodec("ASCII");
constexpr Latin1CharCodec kLatin1Codec("ISO-8859-1");

}  // namespace

const CharCodec& AsciiCodec() { return kAsciiCodec; }
const CharCodec& Latin1Codec() { return kLatin1Codec; }

}  // namespace Xml::detail
