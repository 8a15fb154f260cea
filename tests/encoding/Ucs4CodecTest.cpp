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

class Ucs4Codec : public testing::TestWithParam<CodecCase> {
protected:
    const Xml::detail::CharCodec& codec = GetParam().codec;

    Bytes Units(std::initializer_list<unsigned> units) const {
        Bytes bytes;
        for (const unsigned unit : units)
            AppendUnit(bytes, unit, 4, GetParam().bigEndian);
        return bytes;
    }
    int ClassOf(const Bytes& bytes) const { return codec.ClassAt(bytes.data(), EndOf(bytes)); }
    int Decoded(const Bytes& bytes) const { return codec.Decode(bytes.data(), EndOf(bytes)); }
};

INSTANTIATE_TEST_SUITE_P(
    Codecs, Ucs4Codec, testing::ValuesIn(encoding_test::CodecsOfKind(Xml::detail::CodecKind::Ucs4)),
    encoding_test::CaseName);

// Deliberate: the name of UCS-4 has a digit zero in the place of the letter O.
TEST_P(Ucs4Codec, TheNameHasADigitZero) { EXPECT_STREQ(codec.Name(), "IS0-10646-UCS-4"); }

TEST_P(Ucs4Codec, ClassOfCodeIsThatOfUtf16) {
    for (int code = -1; code <= 0x10FFFF; ++code) {
        ASSERT_EQ(codec.ClassOfCode(code), Xml::detail::Utf16LeCodec().ClassOfCode(code)) << code;
    }
    EXPECT_EQ(codec.ClassOfCode('='), 15);
}

TEST_P(Ucs4Codec, EveryScalarValueIsClassifiedAndDecoded) {
    for (int code = 0; code <= 0x10FFFF; ++code) {
        const Bytes bytes = Units({static_cast<unsigned>(code)});
        int expected = ClassOfScalarValue(code);
        if (code < 0x80) {
            expected = Xml::detail::ToInt(Xml::detail::kAsciiClass[static_cast<std::size_t>(code)]);
        }
        if (IsSurrogate(code)) expected = 1;
        ASSERT_EQ(ClassOf(bytes), expected) << std::hex << code;
        ASSERT_EQ(Decoded(bytes), code) << std::hex << code;
    }
}

TEST_P(Ucs4Codec, ClassAtGivesEndCutAndInvalidCharacters) {
    EXPECT_EQ(ClassOf({}), 0);
    for (std::size_t count = 1; count < 4; ++count) {
        Bytes bytes = Units({'a'});
        bytes.resize(count);
        EXPECT_EQ(ClassOf(bytes), 2) << count;
        EXPECT_EQ(Decoded(bytes), -1) << count;
    }
    for (const unsigned value : {0x110000U, 0x200000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ClassOf(Units({value})), 1) << std::hex << value;
    }
}

TEST_P(Ucs4Codec, DecodeDoesNotCheckTheValue) {
    EXPECT_EQ(Decoded(Units({0xD800})), 0xD800);
    EXPECT_EQ(Decoded(Units({0x110000})), 0x110000);
    EXPECT_EQ(Decoded(Units({0x7FFFFFFF})), 0x7FFFFFFF);
    EXPECT_EQ(Decoded(Units({0xFFFFFFFE})), -2);
    EXPECT_EQ(Decoded({}), -1);
}

TEST_P(Ucs4Codec, EncodeNeedsFourBytes) {
    for (const unsigned code : {0x0U, 0x61U, 0xFFU, 0x20ACU, 0xD800U, 0x1F600U, 0x10FFFFU}) {
        for (int room = 0; room <= 5; ++room) {
            Bytes out(6, 0xAA);
            const int written = codec.Encode(static_cast<int>(code), out.data(), out.data() + room);
            ASSERT_EQ(written, room >= 4 ? 4 : 0);
            Bytes expected = room >= 4 ? Units({code}) : Bytes();
            expected.resize(6, 0xAA);
            ASSERT_EQ(out, expected) << code << ' ' << room;
        }
    }
}

TEST_P(Ucs4Codec, EncodeRefusesWhatIsNoCode) {
    unsigned char out[8];
    for (const int code : {-1, -2147483647, 0x110000, 0x7FFFFFFF}) {
        EXPECT_EQ(codec.Encode(code, out, out + 8), -1) << code;
    }
}

TEST_P(Ucs4Codec, NextTakesFourBytesAndIsCharLooksAtFour) {
    const Bytes bytes = Units({0x1F600, 0xFFFFFFFF});
    EXPECT_EQ(codec.Next(bytes.data()), bytes.data() + 4);
    EXPECT_EQ(codec.Next(bytes.data() + 4), EndOf(bytes));
    EXPECT_TRUE(codec.IsChar(bytes.data(), 0x1F600));
    EXPECT_FALSE(codec.IsChar(bytes.data(), 0xF600));
    EXPECT_TRUE(codec.IsChar(bytes.data() + 4, -1));
}

TEST_P(Ucs4Codec, ConversionsStopWhereTheRoomEnds) {
    const Bytes text = Units({'a', 0xE9, 0x20AC, 0x1F600, 'z'});
    const int kUtf8[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11};
    const int kUtf8Characters[] = {0, 1, 1, 2, 2, 2, 3, 3, 3, 3, 4, 5};
    for (int room = 0; room <= 11; ++room) {
        unsigned char out[12] = {};
        unsigned char* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf8(position, EndOf(text), outEnd, out + room), kUtf8[room]) << room;
        EXPECT_EQ(position, text.data() + 4 * kUtf8Characters[room]);
        EXPECT_EQ(out[kUtf8[room]], 0);
    }
    const int kUtf16[] = {0, 1, 2, 3, 3, 5, 6};
    for (int room = 0; room <= 6; ++room) {
        char16_t out[7] = {};
        char16_t* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), outEnd, out + room), kUtf16[room]) << room;
        EXPECT_EQ(out[kUtf16[room]], 0);
        const std::u16string whole = u"a\u00E9\u20AC\xD83D\xDE00z";
        EXPECT_EQ(std::u16string(out), whole.substr(0, static_cast<std::size_t>(kUtf16[room])));
    }
    for (int room = 0; room <= 5; ++room) {
        char32_t out[6] = {};
        char32_t* outEnd = out;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), outEnd, out + room), room);
        EXPECT_EQ(std::u32string(out),
                  std::u32string(U"a\u00E9\u20AC\U0001F600z", static_cast<std::size_t>(room)));
    }
}

TEST_P(Ucs4Codec, ConversionsStopAtACutOrInvalidCharacter) {
    Bytes cut = Units({'a', 'b'});
    cut.pop_back();
    const struct {
        Bytes text;
        int atStop;  // what ToUtf8() gives there
    } kRows[] = {{cut, 0},
                 {Units({'a', 0xD800, 'x'}), -1},
                 {Units({'a', 0x110000, 'x'}), -1},
                 {Units({'a', 0xFFFFFFFF}), -1}};
    for (const auto& row : kRows) {
        unsigned char utf8[32];
        unsigned char* utf8End = utf8;
        const unsigned char* position = row.text.data();
        EXPECT_EQ(codec.ToUtf8(position, EndOf(row.text), utf8End, utf8 + 32), 1);
        EXPECT_EQ(position, row.text.data() + 4);
        EXPECT_EQ(codec.ToUtf8(position, EndOf(row.text), utf8End, utf8 + 32), row.atStop);
        EXPECT_EQ(position, row.text.data() + 4);

        char16_t units[8];
        char16_t* unitsEnd = units;
        position = row.text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(row.text), unitsEnd, units + 8), 1);
        EXPECT_EQ(position, row.text.data() + 4);

        char32_t wide[8];
        char32_t* wideEnd = wide;
        position = row.text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(row.text), wideEnd, wide + 8), 1);
        EXPECT_EQ(position, row.text.data() + 4);
    }
}

}  // namespace
