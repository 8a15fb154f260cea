// SPDX-License-Identifier: MIT
#include "encoding/AsciiMatch.h"
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <span>

// GB2312 and EUC-KR: ASCII, and characters of two bytes, each from A1 to FE, which are the row and
// the column in a plane of 94 times 94. All other bytes, and places of the plane without a
// character, are invalid.

namespace Xml::detail {

namespace {

#include "encoding/tables/EucKr.inc"
#include "encoding/tables/Gb2312.inc"

constexpr unsigned kFirstByte = 0xA1;
constexpr unsigned kRowSize = 94;

// Returns the row or column that a byte stands for; kRowSize or more when it stands for none.
constexpr unsigned IndexOf(unsigned char byte) { return byte - kFirstByte; }

struct Plane {
    std::span<const std::uint16_t, kRowSize * kRowSize> codes;  // 0 where no character is
    std::span<const std::uint16_t> places;                      // in `codes`, sorted by code

    /// Returns the character of two bytes, or 0.
    int CodeOf(unsigned char lead, unsigned char trail) const {
        const unsigned row = IndexOf(lead), column = IndexOf(trail);
        return row < kRowSize && column < kRowSize ? codes[row * kRowSize + column] : 0;
    }

    /// Returns the place of a character, or -1.
    int PlaceOf(int code) const {
        const auto isBefore = [this](std::uint16_t place, int wanted) {
            return codes[place] < wanted;
        };
        const auto found = std::lower_bound(places.begin(), places.end(), code, isBefore);
        return found != places.end() && codes[*found] == code ? *found : -1;
    }
};

constexpr Plane kGb2312Plane{kGb2312Codes, kGb2312Places};
constexpr Plane kEucKrPlane{kEucKrCodes, kEucKrPlaces};

class DoubleByteCharCodec final : public CharCodec {
public:
    constexpr DoubleByteCharCodec(const char* name, const Plane& plane)
        : CharCodec(name, CodecKind::DoubleByte), plane_(plane) {}
    // NOLINTNEXTLINE(modernize-use-equals-default): g++ 12 refuses a constant with a defaulted one
    constexpr ~DoubleByteCharCodec() override {}

    int ClassOfCode(int code) const override {
        if (code >= 1 && code <= 0x7F) return ToInt(ClassOfAscii(static_cast<unsigned>(code)));
        return ClassOfScalarValue(code);
    }

    int ClassAt(const unsigned char* position, const unsigned char* end) const override {
        if (position >= end) return ToInt(CharClass::End);
        if (*position < 0x80) return ToInt(ClassOfAscii(*position));
        if (!IsLead(*position)) return ToInt(CharClass::Invalid);
        if (end - position < 2) return ToInt(CharClass::Partial);
        const int code = plane_.CodeOf(position[0], position[1]);
        return code == 0 ? ToInt(CharClass::Invalid) : ClassOfScalarValue(code);
    }

    // Returns -1 also where no character stands.
    int Decode(const unsigned char* position, const unsigned char* end) const override {
        if (position >= end) return -1;
        if (*position < 0x80) return *position;
        const int code = end - position < 2 ? 0 : plane_.CodeOf(position[0], position[1]);
        return code == 0 ? -1 : code;
    }

    int Encode(int code, unsigned char* destination, unsigned char* destinationEnd) const override {
        if (destination >= destinationEnd) return 0;
        if (code >= 0 && code < 0x80) {
            *destination = static_cast<unsigned char>(code);
            return 1;
        }
        const int place = code < 0 ? -1 : plane_.PlaceOf(code);
        if (place < 0) return -1;
        if (destinationEnd - destination < 2) return 0;
        const auto index = static_cast<unsigned>(place);
        destination[0] = static_cast<unsigned char>(kFirstByte + index / kRowSize);
        destination[1] = static_cast<unsigned char>(kFirstByte + index % kRowSize);
        return 2;
    }

    const unsigned char* Next(const unsigned char* position) const override {
        return position + (IsLead(*position) ? 2 : 1);
    }

    bool IsChar(const unsigned char* position, int code) const override {
        constexpr int kLongestCharacter = 2;
        return Decode(position, position + kLongestCharacter) == code;
    }

    bool MatchAscii(const unsigned char* position, const unsigned char* end, const char* literal,
                    const unsigned char*& matchedEnd) const override {
        return MatchAsciiBytes(position, end, literal, matchedEnd);
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
        return ToUnits(position, end, destination, destinationEnd);
    }

    int ToUcs4(const unsigned char*& position, const unsigned char* end, char32_t*& destination,
               char32_t* destinationEnd) const override {
        return ToUnits(position, end, destination, destinationEnd);
    }

    DecodeEnd DecodeRun(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, unsigned char* destinationEnd) const override {
        while (position < end) {
            if (*position < 0x80) {
                if (destination == destinationEnd) return DecodeEnd::NoRoom;
                CopyAsciiRun(position, end, destination, destinationEnd);
                continue;
            }
            DecodePairs(position, end, destination, destinationEnd);
            if (position == end) break;
            if (*position < 0x80) continue;

            // Few bytes are left, or little room, or no character stands here.
            if (!IsLead(*position)) return DecodeEnd::Invalid;
            if (end - position < 2) return DecodeEnd::SourceUsed;
            const int code = plane_.CodeOf(position[0], position[1]);
            if (code == 0) return DecodeEnd::Invalid;
            if (destinationEnd - destination < utf8::LengthOf(code)) return DecodeEnd::NoRoom;
            destination = utf8::Write(code, destination);
            position += 2;
        }
        return DecodeEnd::SourceUsed;
    }

    int ClassOfScalar(int code) const override { return ClassOfScalarValue(code); }

    // What is not ASCII begins with a lead byte of UTF-8 and takes two bytes.
    std::size_t EncodedLength(const unsigned char* begin, const unsigned char* end) const override {
        const auto isLead = [](unsigned char byte) { return byte >= 0xC0; };
        return utf8::CountCharacters(begin, end).all +
               static_cast<std::size_t>(std::count_if(begin, end, isLead));
    }

private:
    static bool IsLead(unsigned char byte) { return IndexOf(byte) < kRowSize; }

    // All characters are below U+10000, so that each is one unit.
    template <typename Unit>
    int ToUnits(const unsigned char*& position, const unsigned char* end, Unit*& destination,
                Unit* destinationEnd) const {
        const Unit* const start = destination;
        while (position < end && destination < destinationEnd) {
            const int code = Decode(position, end);
            if (code < 0) break;
            *destination++ = static_cast<Unit>(code);
            position = Next(position);
        }
        return static_cast<int>(destination - start);
    }

    // Decodes characters of two bytes, and single ASCII ones between them, up to two ASCII
    // characters in a row, something invalid, or where a few bytes of source or room are left.
    void DecodePairs(const unsigned char*& source, const unsigned char* end, unsigned char*& target,
                     const unsigned char* targetEnd) const {
        // Copies: the bytes written might be those of the arguments, for all the compiler knows.
        const unsigned char* position = source;
        unsigned char* destination = target;
        const std::uint16_t* const codes = plane_.codes.data();
        const auto byte = [](unsigned bits) { return static_cast<unsigned char>(bits); };
        while (end - position >= 3 && targetEnd - destination >= 4) {
            const unsigned row = IndexOf(position[0]), column = IndexOf(position[1]);
            if (row >= kRowSize || column >= kRowSize) break;
            const unsigned code = codes[row * kRowSize + column];
            if (code >= 0x800) {
                destination[0] = byte(0xE0 | code >> 12);
                destination[1] = byte(0x80 | (code >> 6 & 0x3F));
                destination[2] = byte(0x80 | (code & 0x3F));
                destination += 3;
            } else if (code != 0) {
                destination[0] = byte(0xC0 | code >> 6);
                destination[1] = byte(0x80 | (code & 0x3F));
                destination += 2;
            } else {
                break;
            }
            position += 2;
            if (*position < 0x80) *destination++ = *position++;
        }
        source = position;
        target = destination;
    }

    const Plane& plane_;
};

constexpr DoubleByteCharCodec kGb2312Codec("GB2312", kGb2312Plane);
constexpr DoubleByteCharCodec kEucKrCodec("EUC-KR", kEucKrPlane);

}  // namespace

const CharCodec& Gb2312Codec() { return kGb2312Codec; }
const CharCodec& EucKrCodec() { return kEucKrCodec; }

}  // namespace Xml::detail
