// SPDX-License-Identifier: MIT
#include "encoding/AsciiMatch.h"
#include "encoding/AsciiRun.h"
#include "encoding/CharClass.h"
#include "encoding/Codecs.h"
#include "encoding/Utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
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

using PlaneCodes = std::uint16_t[kRowSize * kRowSize];

// The UTF-8 of a character, its first byte in the low bits, and above it how many bytes that are;
// 0 where no character is.
using Sequence = std::uint32_t;
constexpr int kLengthShift = 24;

// The sequences of all pairs of bytes from 80 to FF and, behind them, of ASCII.
constexpr std::size_t kPairs = std::size_t{1} << 14;
constexpr std::size_t kAsciiCodes = 0x80;
using Sequences = std::array<Sequence, kPairs + kAsciiCodes>;

// Returns the index of the two bytes in the low bits of a word.
constexpr std::size_t PairIndex(std::uint64_t word) { return (word >> 1 & 0x3F80) | (word & 0x7F); }

consteval Sequences MakeSequences(const PlaneCodes& codes) {
    Sequences sequences{};
    for (std::uint32_t code = 0; code < kAsciiCodes; ++code)
        sequences[kPairs + code] = 1U << kLengthShift | code;
    for (unsigned row = 0; row < kRowSize; ++row) {
        for (unsigned column = 0; column < kRowSize; ++column) {
            const std::uint32_t code = codes[row * kRowSize + column];
            const std::uint32_t last = 0x80 | (code & 0x3F);
            const std::uint32_t middle = 0x80 | (code >> 6 & 0x3F);
            Sequence& sequence =
                sequences[PairIndex((kFirstByte + row) << 8 | (kFirstByte + column))];
            if (code >= 0x800) {
                sequence = 3U << kLengthShift | last << 16 | middle << 8 | 0xE0 | code >> 12;
            } else if (code != 0) {
                sequence = 2U << kLengthShift | last << 8 | 0xC0 | code >> 6;
            }
        }
    }
    return sequences;
}

constexpr int kSteps = 4;            // characters of a word, at least
constexpr std::ptrdiff_t kWord = 8;  // bytes
constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// Returns a bit for each byte of a word that is not ASCII, in the order of the bytes.
constexpr std::size_t HighMask(std::uint64_t word) {
    return ((word & kHighBits) >> 7) * 0x0102040810204080U >> 56;
}

// Where a character stands in a word whose first byte is its highest, and in Sequences: its bytes
// are brought to the low bits, and what PairIndex() makes of them is masked and added to a base.
struct CharacterStep {
    std::uint16_t mask;
    std::uint16_t base;
    unsigned char shift;
};

// The first four characters of a word.
struct WordSteps {
    std::array<CharacterStep, kSteps> characters{};
    unsigned char used = 0;     // bytes that they take
    unsigned char isWrong = 0;  // the first byte of two is followed by ASCII
};

// For each HighMask().
constexpr auto kWordSteps = [] {
    std::array<WordSteps, 256> table{};
    for (unsigned mask = 0; mask < 256; ++mask) {
        const auto isHigh = [mask](int byte) { return (mask << byte & 0x80) != 0; };
        WordSteps& steps = table[mask];
        for (CharacterStep& step : steps.characters) {
            const bool isPair = isHigh(steps.used);
            const int length = isPair ? 2 : 1;
            if (isPair && !isHigh(steps.used + 1)) steps.isWrong = 1;
            step.mask = isPair ? kPairs - 1 : kAsciiCodes - 1;
            step.base = isPair ? 0 : kPairs;
            steps.used = static_cast<unsigned char>(steps.used + length);
            step.shift = static_cast<unsigned char>(64 - 8 * steps.used);
        }
    }
    return table;
}();

constexpr Sequences kGb2312Sequences = MakeSequences(kGb2312Codes);
constexpr Sequences kEucKrSequences = MakeSequences(kEucKrCodes);

struct Plane {
    const PlaneCodes& codes;                // 0 where no character is
    std::span<const std::uint16_t> places;  // in `codes`, sorted by code
    const Sequences& sequences;

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

constexpr Plane kGb2312Plane{kGb2312Codes, kGb2312Places, kGb2312Sequences};
constexpr Plane kEucKrPlane{kEucKrCodes, kEucKrPlaces, kEucKrSequences};

// How far a decoding has come.
struct Progress {
    const unsigned char* position;
    unsigned char* destination;
};

constexpr std::ptrdiff_t kRoom = 3 * kSteps + 1;  // a byte more than a character is written

std::uint64_t LoadBigEndian(const unsigned char* bytes) {
    return __builtin_bswap64(ascii_run::LoadWord(bytes));
}

// Writes the characters of a word, which takes `used` bytes. Returns false, and does nothing, when
// one of them is none.
bool Write(const Sequence (&sequences)[kSteps], std::ptrdiff_t used, Progress& at) {
    unsigned char* to = at.destination;
    Sequence borrow = 0;  // the highest bit is set by a sequence that is 0
    for (const Sequence sequence : sequences) {
        borrow |= sequence - 1;
        std::memcpy(to, &sequence, sizeof sequence);
        to += sequence >> kLengthShift;
    }
    if (borrow >> 31 != 0) return false;
    at = {at.position + used, to};
    return true;
}

// Decodes a word of four characters of two bytes.
bool DecodePairs(std::uint64_t word, const Sequences& table, Progress& at) {
    const Sequence sequences[kSteps] = {table[PairIndex(word >> 48)], table[PairIndex(word >> 32)],
                                        table[PairIndex(word >> 16)], table[PairIndex(word)]};
    return Write(sequences, kWord, at);
}

// Decodes the first four characters of a word. Where they stand is looked up, for finding one after
// the other takes longer.
bool DecodeMixed(std::uint64_t word, const Sequences& table, Progress& at) {
    const WordSteps& steps = kWordSteps[HighMask(word)];
    Sequence sequences[kSteps];
    for (std::size_t i = 0; i < kSteps; ++i) {
        const CharacterStep& step = steps.characters[i];
        sequences[i] = table[(PairIndex(word >> step.shift) & step.mask) + step.base];
    }
    return steps.isWrong == 0 && Write(sequences, steps.used, at);
}

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
            if constexpr (std::endian::native == std::endian::little) {
                DecodeWords(position, end, destination, destinationEnd);
                if (position == end) break;
                if (*position < 0x80) continue;
            }
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

    // Decodes words that begin where a character does, up to a word of ASCII or something invalid,
    // or while source and room last. There are two ways: for words without ASCII, and for any.
    // Which one a word needs nothing predicts in text with spaces, so there the second is kept for
    // a while.
    void DecodeWords(const unsigned char*& source, const unsigned char* end, unsigned char*& target,
                     const unsigned char* targetEnd) const {
        constexpr int kMixedWords = 4;
        // Copies: the bytes written might be those of the arguments, for all the compiler knows.
        Progress at{source, target};
        const Sequences& table = plane_.sequences;
        int mixedWords = 0;  // still to be taken for such
        while (end - at.position >= kWord && targetEnd - at.destination >= kRoom) {
            const std::uint64_t word = LoadBigEndian(at.position);
            if (mixedWords == 0) {
                if ((word & kHighBits) == kHighBits) {
                    if (!DecodePairs(word, table, at)) break;
                    continue;
                }
                if ((word & kHighBits) == 0) break;
                mixedWords = kMixedWords;
            }
            if (!DecodeMixed(word, table, at)) break;
            --mixedWords;
        }
        source = at.position;
        target = at.destination;
    }

    const Plane& plane_;
};

constexpr DoubleByteCharCodec kGb2312Codec("GB2312", kGb2312Plane);
constexpr DoubleByteCharCodec kEucKrCodec("EUC-KR", kEucKrPlane);

}  // namespace

const CharCodec& Gb2312Codec() { return kGb2312Codec; }
const CharCodec& EucKrCodec() { return kEucKrCodec; }

}  // namespace Xml::detail
