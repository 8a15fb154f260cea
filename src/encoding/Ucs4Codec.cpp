// SPDX-License-Identifier: MIT
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Surrogates.h"
#include "encoding/Utf8.h"

// UCS-4, which is UTF-32, in both byte orders.

namespace Xml::detail {

namespace {

template <ByteOrder order>
class Ucs4CharCodec final : public CharCodec {
public:
    constexpr explicit Ucs4CharCodec(const char* name) : CharCodec(name, CodecKind::Ucs4) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~Ucs4CharCodec() override {}

    // Deliberate: as in UTF-16, though here no code is a part of another.
    int ClassOfCode(int code) const override {
        if (code >= 1 && code <= 0x7F) return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
        return ToInt(code >= 0xD801 && code <= 0xDFFE ? CharClass::Partial : CharClass::End);
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        if (end - position < kUnit) {
            return ToInt(position >= end ? CharClass::End : CharClass::Partial);
        }
        const int code = UnitAt(position);
        if (!utf8::IsScalar(code)) return ToInt(CharClass::Invalid);
        if (code < 0x80) return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
        return ClassOfScalarValue(code);
    }

    // The value is not checked, so one above 7FFFFFFF comes out negative.
    int Decode(const unsigned char* position, const unsigned char* end) const override {
        return end - position < kUnit ? -1 : UnitAt(position);
    }

    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        if (code < 0 || code > utf8::kLastScalar) return -1;
        if (destinationEnd - destination < kUnit) return 0;
        for (int i = 0; i < kUnit; ++i) {
            destination[kByteAt[i]] = static_cast<unsigned char>(code >> 8 * i & 0xFF);
        }
        return kUnit;
    }

    const unsigned char* Next(const unsigned char* position) const override {
        return position + kUnit;
    }

    bool IsChar(const unsigned char* position, int code) const override {
        return Decode(position, position + kUnit) == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        while (*literal != 0 && end - position >= kUnit &&
               UnitAt(position) == static_cast<unsigned char>(*literal)) {
            position += kUnit;
            ++literal;
        }
        matchedEnd = position;
        return *literal == 0;
    }

    int ToUtf8(const unsigned char*& position, const unsigned char* end,
               unsigned char*& destination, unsigned char* destinationEnd) const override {
        const unsigned char* const start = destination;
        const DecodeEnd ended = DecodeRun(position, end, destination, destinationEnd);
        if (ended == DecodeEnd::Invalid && destination == start) return -1;
        return static_cast<int>(destination - start);
    }

    int ToUtf16(const unsigned char*& position, const unsigned char* end, char16_t*& destination,
                char16_t* destinationEnd) const override {
        const char16_t* const start = destination;
        for (; end - position >= kUnit; position += kUnit) {
            const int code = UnitAt(position);
            if (!utf8::IsScalar(code) || !WriteUtf16(code, destination, destinationEnd)) break;
        }
        return static_cast<int>(destination - start);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        const char32_t* const start = destination;
        for (; end - position >= kUnit && destination < destinationEnd; position += kUnit) {
            const int code = UnitAt(position);
            if (!utf8::IsScalar(code)) break;
            *destination++ = static_cast<char32_t>(code);
        }
        return static_cast<int>(destination - start);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        for (; end - position >= kUnit; position += kUnit) {
            const int code = UnitAt(position);
            if (!utf8::IsScalar(code)) return DecodeEnd::Invalid;
            if (destinationEnd - destination < utf8::LengthOf(code)) return DecodeEnd::NoRoom;
            destination = utf8::Write(code, destination);
        }
        return DecodeEnd::SourceUsed;
    }

    int ClassOfScalar(int code) const override { return ClassOfScalarValue(code); }

    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        return kUnit * utf8::CountCharacters(begin, end).all;
    }

private:
    static constexpr int kUnit = 4;

    // Where the bytes of a unit stand in it, the least significant first.
    static constexpr int kByteAt[kUnit] = {
        order == ByteOrder::Big ? 3 : 0, order == ByteOrder::Big ? 2 : 1,
        order == ByteOrder::Big ? 1 : 2, order == ByteOrder::Big ? 0 : 3};

    static int UnitAt(const unsigned char* position) {
        unsigned value = 0;
        for (int i = kUnit - 1; i >= 0; --i)
            value = value << 8 | position[kByteAt[i]];
        return static_cast<int>(value);
    }
};

// Deliberate: the name of UCS-4 begins with "IS" and the digit zero; readers report it so.
constexpr const char* kUcs4Name = "IS0-10646-UCS-4";

constexpr Ucs4CharCodec<ByteOrder::Big> kUcs4BeCodec(kUcs4Name);
constexpr Ucs4CharCodec<ByteOrder::Little> kUcs4LeCodec(kUcs4Name);

}  // namespace

const CharCodec& Ucs4BeCodec() { return kUcs4BeCodec; }
const CharCodec& Ucs4LeCodec() { return kUcs4LeCodec; }

}  // namespace Xml::detail
