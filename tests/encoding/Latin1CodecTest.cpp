// SPDX-License-Identifier: MIT
#include "encoding/CharClass.h"
#include "encoding/CodecCases.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

using encoding_test::AppendUtf8;
using encoding_test::Bytes;
using encoding_test::CodecCase;
using encoding_test::EndOf;

namespace {

class Latin1Codec : public testing::TestWithParam<CodecCase> {
protected:
    const Xml::detail::CharCodec& codec = GetParam().codec;
};

INSTANTIATE_TEST_SUITE_P(
    Codecs, Latin1Codec,
    testing::ValuesIn(encoding_test::CodecsOfKind(Xml::detail::CodecKind::SingleByte)),
    encoding_test::CaseName);

Bytes AllBytes() {
    Bytes bytes(256);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
    return bytes;
}

TEST(Latin1Codecs, HaveTheirNames) {
    EXPECT_STREQ(Xml::detail::AsciiCodec().Name(), "ASCII");
    EXPECT_STREQ(Xml::detail::Latin1Codec().Name(), "ISO-8859-1");
}

TEST_P(Latin1Codec, EveryByteIsACharacter) {
    const Bytes bytes = AllBytes();
    for (int value = 0; value <= 0xFF; ++value) {
        SCOPED_TRACE(value);
        const unsigned char* position = bytes.data() + value;
        const int charClass =
            Xml::detail::ToInt(Xml::detail::kLatin1Class[static_cast<std::size_t>(value)]);
        EXPECT_EQ(codec.ClassAt(position, EndOf(bytes)), charClass);
        EXPECT_EQ(codec.ClassOfCode(value), value == 0 ? 0 : charClass);
        EXPECT_EQ(codec.ClassOfScalar(value), charClass);
        EXPECT_EQ(codec.Decode(position, EndOf(bytes)), value);
        EXPECT_EQ(codec.Next(position), position + 1);
        EXPECT_TRUE(codec.IsChar(position, value));
        EXPECT_FALSE(codec.IsChar(position, value + 0x100));
        EXPECT_FALSE(codec.IsChar(position, value - 0x100));
    }
}

TEST_P(Latin1Codec, TheEndHasClassAndCodeZero) {
    const unsigned char byte = 'a';
    EXPECT_EQ(codec.ClassAt(&byte, &byte), 0);
    EXPECT_EQ(codec.Decode(&byte, &byte), 0);
}

TEST_P(Latin1Codec, ClassOfCodeIsZeroOutsideOfOneTo255) {
    for (const int code : {-1, 0, 256, 0x20AC, 0x10FFFF})
        EXPECT_EQ(codec.ClassOfCode(code), 0);
    EXPECT_EQ(codec.ClassOfCode(0xAA), 32);
    EXPECT_EQ(codec.ClassOfCode(0xB7), 31);
    EXPECT_EQ(codec.ClassOfCode(0xE9), 33);
}

TEST_P(Latin1Codec, EncodeNeedsOneByteOfRoom) {
    for (int code = -2; code <= 0x200; ++code) {
        unsigned char out[2] = {0xAA, 0xAA};
        EXPECT_EQ(codec.Encode(code, out, out), 0) << code;
        EXPECT_EQ(out[0], 0xAA);
        const bool fits = code >= 0 && code <= 0xFF;
        EXPECT_EQ(codec.Encode(code, out, out + 1), fits ? 1 : -1) << code;
        EXPECT_EQ(out[0], fits ? code : 0xAA);
        EXPECT_EQ(out[1], 0xAA);
    }
}

TEST_P(Latin1Codec, ToUtf8WritesOneOrTwoBytes) {
    const Bytes bytes = AllBytes();
    Bytes expected;
    for (int value = 0; value <= 0xFF; ++value)
        AppendUtf8(expected, value);
    for (std::size_t room = 0; room <= expected.size(); ++room) {
        Bytes out(expected.size() + 1, 0xAA);
        const unsigned char* position = bytes.data();
        unsigned char* destination = out.data();
        const int written = codec.ToUtf8(position, EndOf(bytes), destination, out.data() + room);
        // The first 128 bytes are themselves; the others take two bytes each.
        const std::size_t whole = room <= 128 ? room : 128 + (room - 128) / 2 * 2;
        ASSERT_EQ(static_cast<std::size_t>(written), whole) << room;
        ASSERT_EQ(destination, out.data() + whole);
        ASSERT_EQ(static_cast<std::size_t>(position - bytes.data()),
                  whole <= 128 ? whole : 128 + (whole - 128) / 2);
        ASSERT_TRUE(std::equal(out.begin(), out.begin() + written, expected.begin()));
        ASSERT_EQ(out[whole], 0xAA);
    }
}

TEST_P(Latin1Codec, WideConversionsWriteOneUnitAByte) {
    const Bytes bytes = AllBytes();
    for (const int room : {0, 1, 100, 255, 256, 300}) {
        const int expected = std::min(room, 256);
        std::vector<char16_t> units(301, 0xAAAA);
        char16_t* unitsEnd = units.data();
        const unsigned char* position = bytes.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(bytes), unitsEnd, units.data() + room), expected);
        EXPECT_EQ(position, bytes.data() + expected);
        EXPECT_TRUE(std::equal(units.data(), unitsEnd, bytes.begin()));
        EXPECT_EQ(*unitsEnd, 0xAAAA);

        std::vector<char32_t> wide(301, 0xAAAA);
        char32_t* wideEnd = wide.data();
        position = bytes.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(bytes), wideEnd, wide.data() + room), expected);
        EXPECT_EQ(position, bytes.data() + expected);
        EXPECT_TRUE(std::equal(wide.data(), wideEnd, bytes.begin()));
        EXPECT_EQ(*wideEnd, 0xAAAAU);
    }
}

}  // namespace
