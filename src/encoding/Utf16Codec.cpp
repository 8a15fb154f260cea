// SPDX-License-Identifier: MIT
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Surrogates.h"
#include "encoding/Utf8.h"

#include <algorithm>

// UTF-16 and UCS-2 in both byte orders. UCS-2 is read as UTF-16, pairs included; only the name is
// its own.

namespace Xml::detail {

namespace {

template <ByteOrder order>
class Utf16CharCodec final : public CharCodec {
public:
    constexpr explicit Utf16CharCodec(const char* name) : CharCodec(name, CodecKind::Utf16) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~Utf16CharCodec() override {}

    // Deliberate: of the surrogates all but the first and the last are told apart from the codes
    // that have no class.
    int ClassOfCode(int code) const override {
        if (code >= 1 && code <= 0x7F) return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
        return ToInt(code >= 0xD801 && code <= 0xDFFE ? CharClass::Partial : CharClass::End);
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        if (end - position < 2) return ToInt(position >= end ? CharClass::End : CharClass::Partial);
        const int unit = UnitAt(position);
        if (unit < 0x80) return ToInt(ClassOfAscii(static_cast<unsigned>(unit)));
        if (!utf8::IsSurrogate(unit)) return ClassOfScalarValue(unit);
        if (end - position < 4) return ToInt(CharClass::Partial);
        if (!IsHighSurrogate(unit) || !IsLowSurrogate(UnitAt(position + 2))) {
            return ToInt(CharClass::Invalid);
        }
        return ToInt(CharClass::Other);
    }

    // Deliberate: a high surrogate before anything but a low one decodes as U+0001, so that a
    // caller that does not ask for the class still meets a character that XML forbids.
    int Decode(const unsigned char* position, const unsigned char* end) const override {
        constexpr int kBrokenPair = 1;
        if (end - position < 2) return -1;
        const int unit = UnitAt(position);
        if (!utf8::IsSurrogate(unit)) return unit;
        if (!IsHighSurrogate(unit) || end - position < 4) return -1;
        const int next = UnitAt(position + 2);
        return IsLowSurrogate(next) ? CombineSurrogates(unit, next) : kBrokenPair;
    }

    // Deliberate: the bytes are in little-endian order for both codecs; whoever wants the other
    // order swaps them.
    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        if (code < 0 || code > utf8::kLastScalar) return -1;
        const int length = code < 0x10000 ? 2 : 4;
        if (destinationEnd - destination < length) return 0;
        if (length == 2) {
            PutLittleEndian(code, destination);
        } else {
            PutLittleEndian(HighSurrogateOf(code), destination);
            PutLittleEndian(LowSurrogateOf(code), destination + 2);
        }
        return length;
    }

    const unsigned char* Next(const unsigned char* position) const override {
        return position + (utf8::IsSurrogate(UnitAt(position)) ? 4 : 2);
    }

    bool IsChar(const unsigned char* position, int code) const override {
        constexpr int kLongestCharacter = 4;
        return Decode(position, position + kLongestCharacter) == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        while (*literal != 0 && end - position >= 2 &&
               UnitAt(position) == static_cast<unsigned char>(*literal)) {
            position += 2;
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
        for (int code = 0; (code = WholeCharacter(position, end)) >= 0;) {
            if (!WriteUtf16(code, destination, destinationEnd)) break;
            position += LengthOf(code);
        }
        return static_cast<int>(destination - start);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        const char32_t* const start = destination;
        for (int code = 0;
             destination < destinationEnd && (code = WholeCharacter(position, end)) >= 0;) {
            *destination++ = static_cast<char32_t>(code);
            position += LengthOf(code);
        }
        return static_cast<int>(destination - start);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        while (end - position >= 2) {
#if defined(__SSE2__)
            NarrowShortBlocks<order>(position, end, destination, destinationEnd);
            if (end - position < 2) break;
#endif
            int code = UnitAt(position);
            if (code < 0x80) {
                if (destination == destinationEnd) return DecodeEnd::NoRoom;
                NarrowRun(position, end, destination, destinationEnd);
                continue;
            }
            if (utf8::IsSurrogate(code)) {
                if (end - position < 4) return DecodeEnd::SourceUsed;
                const int next = UnitAt(position + 2);
                if (!IsHighSurrogate(code) || !IsLowSurrogate(next)) return DecodeEnd::Invalid;
                code = CombineSurrogates(code, next);
            }
            if (destinationEnd - destination < utf8::LengthOf(code)) return DecodeEnd::NoRoom;
            if (code < 0x800) {
                WriteShortRun<2, UnitAt>(position, end, destination, destinationEnd);
                continue;
            }
            destination = utf8::Write(code, destination);
            position += LengthOf(code);
        }
        return DecodeEnd::SourceUsed;
    }

    int ClassOfScalar(int code) const override { return ClassOfScalarValue(code); }

    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        const utf8::CharacterCounts counts = utf8::CountCharacters(begin, end);
        return 2 * (counts.all + counts.aboveFFFF);
    }

private:
    // Where the two bytes of a unit stand in it.
    static constexpr int kHighByte = order == ByteOrder::Big ? 0 : 1;
    static constexpr int kLowByte = order == ByteOrder::Big ? 1 : 0;

    static int UnitAt(const unsigned char* position) {
        return position[kHighByte] << 8 | position[kLowByte];
    }

    // The length in bytes of a whole character.
    static int LengthOf(int code) { return code < 0x10000 ? 2 : 4; }

    // Returns the character at the position, or -1 where no whole and valid one stands.
    static int WholeCharacter(const unsigned char* position, const unsigned char* end) {
        if (end - position < 2) return -1;
        const int unit = UnitAt(position);
        if (!utf8::IsSurrogate(unit)) return unit;
        if (!IsHighSurrogate(unit) || end - position < 4) return -1;
        const int next = UnitAt(position + 2);
        return IsLowSurrogate(next) ? CombineSurrogates(unit, next) : -1;
    }

    static void PutLittleEndian(int unit, unsigned char* destination) {
        destination[0] = static_cast<unsigned char>(unit & 0xFF);
        destination[1] = static_cast<unsigned char>(unit >> 8);
    }

    // Copies ASCII as far as source and room go; both hold at least one character.
    static void NarrowRun(const unsigned char*& position, const unsigned char* end,
                          unsigned char*& destination, const unsigned char* destinationEnd) {
        const std::ptrdiff_t units = (end - position) / 2;
        const auto count = static_cast<std::size_t>(std::min(units, destinationEnd - destination));
        std::size_t done = NarrowAscii<order>(position, destination, count);
        for (; done < count; ++done) {
            const int unit = UnitAt(position + 2 * done);
            if (unit >= 0x80) break;
            destination[done] = static_cast<unsigned char>(unit);
        }
        position += 2 * done;
        destination += done;
    }
};

using BigEndianCodec = Utf16CharCodec<ByteOrder::Big>;
using LittleEndianCodec = Utf16CharCodec<ByteOrder::Little>;

// Deliberate: the name of UCS-2 begins with "IS" and the digit zero; readers report it so.
constexpr const char* kUcs2Name = "IS0-10646-UCS-2";

constexpr BigEndianCodec kUtf16BeCodec("UTF-16BE");
constexpr LittleEndianCodec kUtf16LeCodec("UTF-16LE");
constexpr BigEndianCodec kUcs2BeCodec(kUcs2Name);
constexpr LittleEndianCodec kUcs2LeCodec(kUcs2Name);

}  // namespace

const CharCodec& Utf16BeCodec() { return kUtf16BeCodec; }
const CharCodec& Utf16LeCodec() { return kUtf16LeCodec; }
const CharCodec& Ucs2BeCodec() { return kUcs2BeCodec; }
const CharCodec& Ucs2LeCodec() { return kUcs2LeCodec; }

}  // namespace Xml::detail
