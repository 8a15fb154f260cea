// SPDX-License-Identifier: MIT
#include "encoding/CharClass.h"
#include "encoding/CodecCases.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using encoding_test::AppendUnit;
using encoding_test::Bytes;
using encoding_test::CodecCase;
using encoding_test::EndOf;
using encoding_test::IsSurrogate;
using Xml::detail::ClassOfScalarValue;

namespace {

class Utf16Codec : public testing::TestWithParam<CodecCase> {
protected:
    const Xml::detail::CharCodec& codec = GetParam().codec;

    Bytes Units(std::initializer_list<unsigned> units) const {
        Bytes bytes;
        for (const unsigned unit : units)
            AppendUnit(bytes, unit, 2, GetParam().bigEndian);
        return bytes;
    }
    // The first `count` bytes of some units.
    Bytes Cut(std::initializer_list<unsigned> units, std::size_t count) const {
        Bytes bytes = Units(units);
        bytes.resize(count);
        return bytes;
    }
    int ClassOf(const Bytes& bytes) const { return codec.ClassAt(bytes.data(), EndOf(bytes)); }
    int Decoded(const Bytes& bytes) const { return codec.Decode(bytes.data(), EndOf(bytes)); }
};

INSTANTIATE_TEST_SUITE_P(
    Codecs, Utf16Codec,
    testing::ValuesIn(encoding_test::CodecsOfKind(Xml::detail::CodecKind::Utf16)),
    encoding_test::CaseName);

TEST(Utf16Codecs, HaveTheirNames) {
    EXPECT_STREQ(Xml::detail::Utf16BeCodec().Name(), "UTF-16BE");
    EXPECT_STREQ(Xml::detail::Utf16LeCodec().Name(), "UTF-16LE");
}

// Deliberate: the name of UCS-2 has a digit zero in the place of the letter O.
TEST(Utf16Codecs, TheNameOfUcs2HasADigitZero) {
    EXPECT_STREQ(Xml::detail::Ucs2BeCodec().Name(), "IS0-10646-UCS-2");
    EXPECT_STREQ(Xml::detail::Ucs2LeCodec().Name(), "IS0-10646-UCS-2");
}

TEST_P(Utf16Codec, ClassOfCodeTellsAsciiAndSurrogates) {
    for (int code = 1; code < 128; ++code) {
        EXPECT_EQ(codec.ClassOfCode(code),
                  Xml::detail::ToInt(Xml::detail::kAsciiClass[static_cast<std::size_t>(code)]));
    }
    const struct {
        int code, charClass;
    } kRows[] = {{-1, 0},     {0, 0},      {128, 0},    {0x4E00, 0}, {0xD7FF, 0}, {0xD800, 0},
                 {0xD801, 2}, {0xDBFF, 2}, {0xDC00, 2}, {0xDFFE, 2}, {0xDFFF, 0}, {0xE000, 0}};
    for (const auto& row : kRows) {
        EXPECT_EQ(codec.ClassOfCode(row.code), row.charClass) << std::hex << row.code;
    }
}

TEST_P(Utf16Codec, EveryUnitIsClassifiedAndDecoded) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        if (IsSurrogate(unit)) continue;
        const Bytes bytes = Units({static_cast<unsigned>(unit)});
        const int expected =
            unit < 0x80
                ? Xml::detail::ToInt(Xml::detail::kAsciiClass[static_cast<std::size_t>(unit)])
                : ClassOfScalarValue(unit);
        ASSERT_EQ(ClassOf(bytes), expected) << std::hex << unit;
        ASSERT_EQ(Decoded(bytes), unit) << std::hex << unit;
    }
}

TEST_P(Utf16Codec, ClassAtJudgesPairs) {
    const struct {
        Bytes bytes;
        int charClass;
    } kRows[] = {
        {{}, 0},
        {Cut({'a'}, 1), 2},
        {Cut({0xD83D}, 1), 2},
        {Cut({0xD83D}, 2), 2},
        {Cut({0xD83D, 0xDE00}, 3), 2},
        {Cut({0xDE00}, 2), 2},  // a lone low surrogate, but cut
        {Cut({0xDE00, 'a'}, 3), 2},
        {Units({0xDE00, 'a'}), 1},
        {Units({0xDC00, 0xD800}), 1},
        {Units({0xDFFF, 0xDFFF}), 1},
        {Units({0xD83D, 'a'}), 1},
        {Units({0xD83D, 0xD83D}), 1},
        {Units({0xD83D, 0xE000}), 1},
        {Units({0xD800, 0xDBFF}), 1},
        {Units({0xD800, 0xDC00}), 33},
        {Units({0xDBFF, 0xDFFF}), 33},
        {Units({0xD83D, 0xDE00}), 33},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(ClassOf(row.bytes), row.charClass) << testing::PrintToString(row.bytes);
    }
}

TEST_P(Utf16Codec, DecodeCombinesPairs) {
    const struct {
        Bytes bytes;
        int code;
    } kRows[] = {
        {{}, -1},
        {Cut({'a'}, 1), -1},
        {Units({0xD83D}), -1},
        {Cut({0xD83D, 0xDE00}, 3), -1},
        {Units({0xDC00, 0xDC00}), -1},
        {Units({0xDFFF, 'a'}), -1},
        {Units({0xD83D, 0xDE00}), 0x1F600},
        {Units({0xD800, 0xDC00}), 0x10000},
        {Units({0xDBFF, 0xDFFF}), 0x10FFFF},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(Decoded(row.bytes), row.code) << testing::PrintToString(row.bytes);
    }
}

// Deliberate: a broken pair is the control character U+0001 to a caller that only decodes.
TEST_P(Utf16Codec, ABrokenPairDecodesAsAnInvalidCharacter) {
    EXPECT_EQ(Decoded(Units({0xD83D, 'a'})), 1);
    EXPECT_EQ(Decoded(Units({0xD800, 0xDBFF})), 1);
    EXPECT_EQ(Decoded(Units({0xDBFF, 0xE000})), 1);
}

// Deliberate: Encode() writes little-endian bytes whatever the order of the codec is.
TEST_P(Utf16Codec, EncodeWritesLittleEndianBytes) {
    const struct {
        int code;
        Bytes bytes;
    } kRows[] = {{0, {0, 0}},
                 {'a', {'a', 0}},
                 {0x20AC, {0xAC, 0x20}},
                 {0xFFFF, {0xFF, 0xFF}},
                 {0x10000, {0x00, 0xD8, 0x00, 0xDC}},
                 {0x1F600, {0x3D, 0xD8, 0x00, 0xDE}},
                 {0x10FFFF, {0xFF, 0xDB, 0xFF, 0xDF}}};
    for (const auto& row : kRows) {
        for (std::size_t room = 0; room <= 5; ++room) {
            Bytes out(6, 0xAA);
            const int written = codec.Encode(row.code, out.data(), out.data() + room);
            const bool fits = room >= row.bytes.size();
            ASSERT_EQ(written, fits ? static_cast<int>(row.bytes.size()) : 0) << row.code;
            Bytes expected = fits ? row.bytes : Bytes();
            expected.resize(6, 0xAA);
            EXPECT_EQ(out, expected) << row.code << " room " << room;
        }
    }
}

TEST_P(Utf16Codec, EncodeRefusesWhatIsNoCode) {
    unsigned char out[8];
    for (const int code : {-1, -1000, 0x110000, 0x7FFFFFFF}) {
        EXPECT_EQ(codec.Encode(code, out, out + 8), -1) << code;
    }
}

TEST_P(Utf16Codec, NextTakesFourBytesAtASurrogate) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const Bytes bytes = Units({unit, 0});
        ASSERT_EQ(codec.Next(bytes.data()) - bytes.data(),
                  IsSurrogate(static_cast<int>(unit)) ? 4 : 2);
    }
}

TEST_P(Utf16Codec, IsCharDecodesUpToFourBytes) {
    EXPECT_TRUE(codec.IsChar(Units({'a', 0}).data(), 'a'));
    EXPECT_FALSE(codec.IsChar(Units({'a', 0}).data(), 'b'));
    EXPECT_TRUE(codec.IsChar(Units({0xD83D, 0xDE00}).data(), 0x1F600));
    EXPECT_TRUE(codec.IsChar(Units({0xD83D, 'a'}).data(), 1));
    EXPECT_TRUE(codec.IsChar(Units({0xDE00, 'a'}).data(), -1));
}

// Runs ToUtf16() and ToUcs4() over units of which all but the last `left` are whole characters.
TEST_P(Utf16Codec, ConversionsStopAtAnIncompletePair) {
    const Bytes kTails[] = {Cut({'b'}, 1), Units({0xD83D}), Cut({0xD83D, 0xDE00}, 3)};
    for (const Bytes& tail : kTails) {
        Bytes text = Units({'a', 0x20AC, 0xD83D, 0xDE00});
        const std::size_t whole = text.size();
        text.insert(text.end(), tail.begin(), tail.end());

        unsigned char utf8[32];
        unsigned char* utf8End = utf8;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), utf8End, utf8 + 32), 8);
        EXPECT_EQ(position, text.data() + whole);
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), utf8End, utf8 + 32), 0);
        EXPECT_EQ(Bytes(utf8, utf8End), (Bytes{'a', 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80}));

        char16_t units[8];
        char16_t* unitsEnd = units;
        position = text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), unitsEnd, units + 8), 4);
        EXPECT_EQ(position, text.data() + whole);
        EXPECT_EQ(std::u16string(units, unitsEnd), u"a\u20AC\xD83D\xDE00");

        char32_t wide[8];
        char32_t* wideEnd = wide;
        position = text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), wideEnd, wide + 8), 3);
        EXPECT_EQ(position, text.data() + whole);
        EXPECT_EQ(std::u32string(wide, wideEnd), U"a\u20AC\U0001F600");
    }
}

TEST_P(Utf16Codec, ConversionsStopAtAnInvalidPair) {
    const Bytes kTails[] = {Units({0xDE00, 'x'}), Units({0xD83D, 'x'}), Units({0xD83D, 0xD83D})};
    for (const Bytes& tail : kTails) {
        Bytes text = Units({'a'});
        text.insert(text.end(), tail.begin(), tail.end());
        unsigned char utf8[32];
        unsigned char* utf8End = utf8;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), utf8End, utf8 + 32), 1);
        EXPECT_EQ(position, text.data() + 2);
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), utf8End, utf8 + 32), -1);
        EXPECT_EQ(position, text.data() + 2);
        EXPECT_EQ(utf8End, utf8 + 1);

        char16_t units[8];
        char16_t* unitsEnd = units;
        position = text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), unitsEnd, units + 8), 1);
        EXPECT_EQ(position, text.data() + 2);

        char32_t wide[8];
        char32_t* wideEnd = wide;
        position = text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), wideEnd, wide + 8), 1);
        EXPECT_EQ(position, text.data() + 2);
    }
}

TEST_P(Utf16Codec, ConversionsStopWhereTheRoomEnds) {
    const Bytes text = Units({'a', 0xE9, 0x20AC, 0xD83D, 0xDE00, 'z'});
    const int kUtf8[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11};
    for (int room = 0; room <= 11; ++room) {
        unsigned char out[12] = {};
        unsigned char* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), outEnd, out + room), kUtf8[room]) << room;
        EXPECT_EQ(outEnd, out + kUtf8[room]);
    }
    const int kUtf16[] = {0, 1, 2, 3, 3, 5, 6};
    for (int room = 0; room <= 6; ++room) {
        char16_t out[7] = {};
        char16_t* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), outEnd, out + room), kUtf16[room]) << room;
        EXPECT_EQ(position, text.data() + 2 * kUtf16[room]);
        EXPECT_EQ(out[kUtf16[room]], 0);
    }
    for (int room = 0; room <= 5; ++room) {
        char32_t out[6] = {};
        char32_t* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), outEnd, out + room), room);
        EXPECT_EQ(out[room], 0U);
    }
}

}  // namespace
