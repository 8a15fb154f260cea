// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>

#include "encoding/Thrown.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
using encoding_test::Thrown;
using Xml::Encoding;

// Message, empty argument, no place.
constexpr char kThrown[] = "Invalid argument: Invalid character in source string () -1:-1";

unsigned Size(const Bytes& bytes) { return static_cast<unsigned>(bytes.size()); }

// The source and the destination are blocks of their own, so that the sanitizer sees a byte read or
// written too many.
Bytes Convert(Encoding* from, Encoding* to, const Bytes& source, unsigned room) {
    const Bytes input(source);
    Bytes output(room);
    output.resize(Encoding::Convert(from, to, input.data(), Size(input), output.data(), room));
    return output;
}

struct Converted {
    Bytes bytes;
    unsigned consumed;

    bool operator==(const Converted&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Converted& result) {
    return out << testing::PrintToString(result.bytes) << " from " << result.consumed;
}

using Operation = unsigned (*)(Encoding*, Encoding*, const unsigned char*, unsigned, unsigned char*,
                               unsigned, unsigned&);

Converted Run(Operation operation, Encoding* from, Encoding* to, const Bytes& source,
              unsigned room) {
    const Bytes input(source);
    Converted result{Bytes(room), 999};
    result.bytes.resize(
        operation(from, to, input.data(), Size(input), result.bytes.data(), room, result.consumed));
    return result;
}

Converted ConvertCounting(Encoding* from, Encoding* to, const Bytes& source, unsigned room) {
    return Run(&Encoding::Convert, from, to, source, room);
}

Converted ConvertChar(Encoding* from, Encoding* to, const Bytes& source, unsigned room) {
    return Run(&Encoding::ConvertChar, from, to, source, room);
}

Encoding* Utf8() { return Encoding::UTF8(); }
Encoding* Utf16() { return Encoding::Unicode(); }
Encoding* Utf16Be() { return Encoding::BigEndianUnicode(); }
Encoding* Latin1() { return Encoding::Latin1(); }

Encoding* Ucs4Be() {
    static Xml::Ucs4UnicodeEncoding encoding(true, false, false);
    return &encoding;
}

TEST(Convert, GoesBetweenAllEncodings) {
    const Bytes kUtf8{'a', 0xC3, 0xA9};
    const Bytes kUtf16Le{'a', 0, 0xE9, 0};
    const Bytes kUtf16Be{0, 'a', 0, 0xE9};
    const Bytes kUcs4Be{0, 0, 0, 'a', 0, 0, 0, 0xE9};
    const Bytes kLatin1{'a', 0xE9};
    const struct {
        Encoding* from;
        Bytes source;
    } kSources[] = {{Utf8(), kUtf8},     {Utf16(), kUtf16Le}, {Utf16Be(), kUtf16Be},
                    {Ucs4Be(), kUcs4Be}, {Latin1(), kLatin1}, {Encoding::ASCII(), kLatin1}};
    for (const auto& row : kSources) {
        SCOPED_TRACE(row.from->WebName());
        const unsigned all = Size(row.source);
        EXPECT_EQ(Convert(row.from, Utf8(), row.source, 16), kUtf8);
        EXPECT_EQ(Convert(row.from, Utf16(), row.source, 16), kUtf16Le);
        EXPECT_EQ(Convert(row.from, Ucs4Be(), row.source, 16), kUcs4Be);
        EXPECT_EQ(Convert(row.from, Latin1(), row.source, 16), kLatin1);
        EXPECT_EQ(ConvertCounting(row.from, Utf8(), row.source, 16), (Converted{kUtf8, all}));
        EXPECT_EQ(ConvertCounting(row.from, Utf16(), row.source, 16), (Converted{kUtf16Le, all}));
        EXPECT_EQ(ConvertCounting(row.from, Latin1(), row.source, 16), (Converted{kLatin1, all}));
    }
}

// Deliberate: what is converted to UTF-16 comes out little-endian.
TEST(Convert, WritesUtf16InLittleEndianOrder) {
    EXPECT_EQ(Convert(Utf8(), Utf16Be(), {'a', 0xF0, 0x9F, 0x98, 0x80}, 16),
              (Bytes{'a', 0, 0x3D, 0xD8, 0x00, 0xDE}));
}

// Deliberate: made without arguments, UCS-4 converts as UTF-16.
TEST(Convert, TakesTheDefaultUcs4EncodingForUtf16) {
    Xml::Ucs4UnicodeEncoding standard;
    EXPECT_EQ(Convert(Utf8(), &standard, {'a'}, 16), (Bytes{'a', 0}));
    EXPECT_EQ(Convert(&standard, Utf8(), {'a', 0}, 16), Bytes{'a'});
}

TEST(Convert, ReplacesWhatCannotBeWrittenByAQuestionMark) {
    EXPECT_EQ(Convert(Utf8(), Latin1(), {'a', 0xE2, 0x82, 0xAC, 'z'}, 16), (Bytes{'a', '?', 'z'}));
    EXPECT_EQ(ConvertCounting(Utf8(), Latin1(), {'a', 0xE2, 0x82, 0xAC, 'z'}, 16),
              (Converted{{'a', '?', 'z'}, 5}));
}

// Deliberate: UTF-8 does not write the last plane.
TEST(Convert, ReplacesTheLastPlaneInUtf8) {
    const Bytes kLast{0xFF, 0xDB, 0xFF, 0xDF};  // U+10FFFF
    EXPECT_EQ(Convert(Utf16(), Utf8(), kLast, 16), Bytes{'?'});
    EXPECT_EQ(Convert(Utf8(), Utf8(), {0xF4, 0x8F, 0xBF, 0xBF}, 16), Bytes{'?'});
    EXPECT_EQ(Convert(Utf16(), Ucs4Be(), kLast, 16), (Bytes{0x00, 0x10, 0xFF, 0xFF}));
}

// Deliberate: UTF-8 wants a spare byte, so without one a question mark is written.
TEST(Convert, WritesAQuestionMarkWhereUtf8LacksTheSpareByte) {
    const Bytes kEuro{0xAC, 0x20};
    EXPECT_EQ(Convert(Utf16(), Utf8(), kEuro, 4), (Bytes{0xE2, 0x82, 0xAC}));
    for (const unsigned room : {1U, 2U, 3U}) {
        EXPECT_EQ(Convert(Utf16(), Utf8(), kEuro, room), Bytes{'?'}) << room;
    }
    EXPECT_EQ(Convert(Utf16(), Utf8(), kEuro, 0), Bytes());
    EXPECT_EQ(ConvertCounting(Utf16(), Utf8(), kEuro, 0), (Converted{{}, 0}));
}

TEST(Convert, StopsWhereTheRoomEnds) {
    for (unsigned room = 0; room <= 8; ++room) {
        const unsigned whole = room / 2 * 2;
        const Bytes expected = Bytes{'a', 0, 'b', 0, 'c', 0};
        const Bytes out = Convert(Utf8(), Utf16(), {'a', 'b', 'c'}, room);
        EXPECT_EQ(out.size(), std::min(whole, 6U)) << room;
        EXPECT_TRUE(std::equal(out.begin(), out.end(), expected.begin()));
        EXPECT_EQ(ConvertCounting(Utf8(), Utf16(), {'a', 'b', 'c'}, room),
                  (Converted{out, std::min(whole, 6U) / 2}));
    }
    EXPECT_EQ(ConvertCounting(Utf8(), Latin1(), {'a', 'b', 'c'}, 2), (Converted{{'a', 'b'}, 2}));
    // No room for the replacement, either.
    EXPECT_EQ(ConvertCounting(Utf8(), Latin1(), {'a', 0xE2, 0x82, 0xAC}, 1), (Converted{{'a'}, 1}));
}

TEST(Convert, EndsAtANulOnTheWayToUtf8) {
    EXPECT_EQ(Convert(Latin1(), Utf8(), {'a', 0, 'b'}, 16), Bytes{'a'});
    EXPECT_EQ(ConvertCounting(Latin1(), Utf8(), {'a', 0, 'b'}, 16), (Converted{{'a'}, 1}));
    EXPECT_EQ(Convert(Latin1(), Utf16(), {'a', 0}, 16), (Bytes{'a', 0, 0, 0}));
}

TEST(Convert, OfNothingIsNothing) {
    EXPECT_EQ(Convert(Utf8(), Utf16(), {}, 16), Bytes());
    EXPECT_EQ(ConvertCounting(Utf8(), Utf16(), {}, 16), (Converted{{}, 0}));
    EXPECT_EQ(ConvertChar(Utf8(), Utf16(), {}, 16), (Converted{{}, 0}));
}

TEST(Convert, BadBytesEndAConversionToUtf8AndBecomeQuestionMarksElsewhere) {
    EXPECT_EQ(Convert(Utf8(), Utf8(), {'a', 0x80, 'z'}, 16), Bytes{'a'});
    EXPECT_EQ(Convert(Utf8(), Latin1(), {'a', 0x80, 'z'}, 16), (Bytes{'a', '?', 'z'}));
    EXPECT_EQ(Convert(Utf8(), Utf16(), {'a', 0xFF, 'z'}, 16), (Bytes{'a', 0, '?', 0, 'z', 0}));
    EXPECT_EQ(Convert(Utf8(), Ucs4Be(), {0xFF}, 16), (Bytes{0, 0, 0, '?'}));
    // A lone low surrogate takes the unit after it along.
    EXPECT_EQ(Convert(Utf16(), Latin1(), {0x00, 0xDC, 'x', 0, 'y', 0}, 16), (Bytes{'?', 'y'}));
    // A cut character is the last.
    EXPECT_EQ(Convert(Utf8(), Latin1(), {'a', 0xE2, 0x82}, 16), (Bytes{'a', '?'}));
    EXPECT_EQ(Convert(Utf16(), Latin1(), {'a', 0, 'b'}, 16), (Bytes{'a', '?'}));
    EXPECT_EQ(Convert(Utf16(), Latin1(), {'a', 0, 0x3D, 0xD8, 0x00}, 16), (Bytes{'a', '?'}));
    EXPECT_EQ(Convert(Ucs4Be(), Latin1(), {0, 0, 0, 'a', 0, 0, 0}, 16), (Bytes{'a', '?'}));
    EXPECT_EQ(Convert(Ucs4Be(), Latin1(), {0xFF, 0xFF, 0xFF, 0xFF}, 16), Bytes{'?'});
}

TEST(Convert, ThrowsAtBadBytesWhenTheSourceEncodingDoes) {
    Xml::UTF8Encoding utf8(false, true);
    Xml::UnicodeEncoding utf16(false, false, true);
    Xml::UTF8Encoding strict(false, true);
    EXPECT_EQ(Thrown([&] { Convert(&utf8, Latin1(), {'a', 0x80}, 16); }), kThrown);
    EXPECT_EQ(Thrown([&] { Convert(&utf8, Latin1(), {'a', 0xC3}, 16); }), kThrown);
    EXPECT_EQ(Thrown([&] { Convert(&utf16, Latin1(), {0x00, 0xDC, 'a', 0}, 16); }), kThrown);
    EXPECT_EQ(Convert(&utf8, Latin1(), {'a', 0xC3, 0xA9}, 16), (Bytes{'a', 0xE9}));
    // What cannot be written is no error, and the setting of the target does not matter.
    EXPECT_EQ(Convert(&utf8, Latin1(), {0xE2, 0x82, 0xAC}, 16), Bytes{'?'});
    EXPECT_EQ(Convert(Utf16(), &strict, {0x00, 0xDC, 'a', 0}, 16), Bytes());
}

TEST(Convert, CountingNeverThrows) {
    Xml::UTF8Encoding utf8(false, true);
    EXPECT_EQ(ConvertCounting(&utf8, Latin1(), {'a', 0x80, 'z'}, 16),
              (Converted{{'a', '?', 'z'}, 3}));
    EXPECT_EQ(ConvertCounting(&utf8, &utf8, {'a', 0x80, 'z'}, 16), (Converted{{'a', '?', 'z'}, 3}));
    EXPECT_EQ(ConvertCounting(Ucs4Be(), Utf8(), {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 'z'}, 16),
              (Converted{{'?', 'z'}, 8}));
    EXPECT_EQ(ConvertCounting(Utf16(), Utf8(), {0x00, 0xDC, 'x', 0, 'z', 0}, 16),
              (Converted{{'?', 'z'}, 6}));
}

TEST(Convert, CountingLeavesACutCharacterWhenFewerThanFiveBytesComeBeforeIt) {
    for (unsigned before = 0; before <= 8; ++before) {
        Bytes source(before, 'a');
        source.insert(source.end(), {0xE2, 0x82});
        const bool left = before < 5;
        Bytes expected(before, 'a');
        if (!left) expected.push_back('?');
        EXPECT_EQ(ConvertCounting(Utf8(), Latin1(), source, 16),
                  (Converted{expected, left ? before : before + 2}))
            << before;
    }
    EXPECT_EQ(ConvertCounting(Utf16(), Latin1(), {'a', 0, 'b'}, 16), (Converted{{'a'}, 2}));
    EXPECT_EQ(ConvertCounting(Utf16(), Latin1(), {'a', 0, 'b', 0, 'c', 0, 'd'}, 16),
              (Converted{{'a', 'b', 'c', '?'}, 7}));
    EXPECT_EQ(ConvertCounting(Ucs4Be(), Latin1(), {0, 0, 0, 'a', 0}, 16), (Converted{{'a'}, 4}));
}

TEST(ConvertChar, ConvertsOneCharacter) {
    const struct {
        Encoding* from;
        Encoding* to;
        Bytes source;
        Converted result;
    } kRows[] = {
        {Utf8(), Utf16(), {'a', 'b'}, {{'a', 0}, 1}},
        {Utf8(), Utf16(), {0xF0, 0x9F, 0x98, 0x80, 'b'}, {{0x3D, 0xD8, 0x00, 0xDE}, 4}},
        {Utf16(), Utf8(), {0x3D, 0xD8, 0x00, 0xDE, 'b', 0}, {{0xF0, 0x9F, 0x98, 0x80}, 4}},
        {Utf16Be(), Latin1(), {0, 0xE9}, {{0xE9}, 2}},
        {Ucs4Be(), Utf8(), {0, 0, 0x20, 0xAC}, {{0xE2, 0x82, 0xAC}, 4}},
        {Latin1(), Utf8(), {0xE9, 'x'}, {{0xC3, 0xA9}, 1}},
        {Utf8(), Latin1(), {0xE2, 0x82, 0xAC, 'x'}, {{'?'}, 3}},  // cannot be written
        {Utf8(), Latin1(), {0x80, 'x'}, {{'?'}, 1}},              // no character
        {Utf8(), Utf8(), {0xFF, 'x'}, {{'?'}, 1}},
        {Utf16(), Latin1(), {0x00, 0xDC, 'x', 0}, {{'?'}, 4}},
        {Utf8(), Utf16(), {0xE2, 0x82}, {{}, 0}},  // cut short
        {Utf16(), Utf8(), {'a'}, {{}, 0}},
        {Utf16(), Utf8(), {0x3D, 0xD8, 0x00}, {{}, 0}},
        {Ucs4Be(), Utf8(), {0, 0, 0}, {{}, 0}},
        {Latin1(), Utf8(), {0, 'x'}, {{}, 1}},  // UTF-8 does not write U+0000
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.source));
        EXPECT_EQ(ConvertChar(row.from, row.to, row.source, 16), row.result);
    }
}

TEST(ConvertChar, NeverThrows) {
    Xml::UTF8Encoding strict(false, true);
    EXPECT_EQ(ConvertChar(&strict, Latin1(), {0x80}, 16), (Converted{{'?'}, 1}));
}

TEST(ConvertChar, ReportsTheLengthOfACharacterForWhichThereIsNoRoom) {
    EXPECT_EQ(ConvertChar(Utf8(), Utf16(), {0xC3, 0xA9}, 1), (Converted{{}, 2}));
    EXPECT_EQ(ConvertChar(Utf8(), Latin1(), {'a'}, 0), (Converted{{}, 1}));
}

}  // namespace
