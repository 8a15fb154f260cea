// SPDX-License-Identifier: MIT
#include "encoding/CodecCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

// The operations of the Windows pages, one by one. What the bytes are is held against iconv in
// CodePageTableTest.cpp.

using encoding_test::AppendSingleByteText;
using encoding_test::Bytes;
using encoding_test::EndOf;
using encoding_test::PageCase;
using encoding_test::WindowsPages;
using Xml::detail::CharCodec;
using Xml::detail::Windows1250Codec;
using Xml::detail::Windows1251Codec;
using Xml::detail::Windows1252Codec;
using Xml::detail::Windows1254Codec;
using Xml::detail::Windows1257Codec;

namespace {

Bytes AllBytes() {
    Bytes bytes(256);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
    return bytes;
}

int CodeOf(const CharCodec& codec, int byte) {
    const auto one = static_cast<unsigned char>(byte);
    return codec.Decode(&one, &one + 1);
}

int ClassOf(const CharCodec& codec, int byte) {
    const auto one = static_cast<unsigned char>(byte);
    return codec.ClassAt(&one, &one + 1);
}

TEST(WindowsCodec, HasItsName) {
    EXPECT_STREQ(Windows1250Codec().Name(), "Windows-1250");
    EXPECT_STREQ(Windows1251Codec().Name(), "Windows-1251");
    EXPECT_STREQ(Windows1252Codec().Name(), "Windows-1252");
    EXPECT_STREQ(Windows1254Codec().Name(), "Windows-1254");
    EXPECT_STREQ(Windows1257Codec().Name(), "Windows-1257");
}

TEST(WindowsCodec, SomeBytesOfEachPage) {
    const struct {
        const CharCodec& codec;
        int byte;
        int code;
        int charClass;
    } kRows[] = {
        {Windows1250Codec(), 0x8A, 0x160, 3},    // S with caron
        {Windows1250Codec(), 0x80, 0x20AC, 33},  // euro sign
        {Windows1250Codec(), 0x81, 0x81, 33},    // undefined
        {Windows1251Codec(), 0xC0, 0x410, 3},    // Cyrillic A
        {Windows1251Codec(), 0xFF, 0x44F, 3},    // Cyrillic ya
        {Windows1251Codec(), 0xB9, 0x2116, 33},  // numero sign
        {Windows1251Codec(), 0x98, 0x98, 33},    // undefined
        {Windows1252Codec(), 0x80, 0x20AC, 33},
        {Windows1252Codec(), 0xE9, 0xE9, 3},     // e with acute
        {Windows1252Codec(), 0xD7, 0xD7, 33},    // multiplication sign
        {Windows1252Codec(), 0xF7, 0xF7, 33},    // division sign
        {Windows1252Codec(), 0xA0, 0xA0, 33},    // no-break space
        {Windows1252Codec(), 0x83, 0x192, 3},    // f with hook
        {Windows1252Codec(), 0x99, 0x2122, 33},  // trade mark sign
        {Windows1252Codec(), 0x81, 0x81, 33},
        {Windows1254Codec(), 0xDD, 0x130, 3},  // I with dot
        {Windows1254Codec(), 0xFD, 0x131, 3},  // dotless i
        {Windows1254Codec(), 0x8E, 0x8E, 33},
        {Windows1257Codec(), 0xCC, 0x122, 3},  // G with cedilla
        {Windows1257Codec(), 0xA1, 0xA1, 33},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.codec.Name()) + " " + std::to_string(row.byte));
        EXPECT_EQ(CodeOf(row.codec, row.byte), row.code);
        EXPECT_EQ(ClassOf(row.codec, row.byte), row.charClass);
    }
}

TEST(WindowsCodec, AsciiIsItself) {
    for (const PageCase& page : WindowsPages()) {
        for (int byte = 0; byte < 0x80; ++byte) {
            const auto one = static_cast<unsigned char>(byte);
            const int asciiClass = Xml::detail::Utf8Codec().ClassAt(&one, &one + 1);
            EXPECT_EQ(CodeOf(page.codec, byte), byte);
            EXPECT_EQ(ClassOf(page.codec, byte), asciiClass);
            if (byte != 0) {
                EXPECT_EQ(page.codec.ClassOfCode(byte), asciiClass);
            }
        }
    }
}

TEST(WindowsCodec, OtherCodesThanAsciiHaveTheClassesOfAppendixB) {
    const struct {
        int code;
        int charClass;
    } kRows[] = {{0x410, 32},  {0xE9, 32}, {0x300, 31}, {0x660, 4}, {0x20AC, 33},
                 {0x4E00, 33}, {0x80, 33}, {0, 33},     {-1, 33},   {0x10FFFF, 33}};
    for (const PageCase& page : WindowsPages()) {
        for (const auto& row : kRows)
            EXPECT_EQ(page.codec.ClassOfCode(row.code), row.charClass) << row.code;
    }
}

TEST(WindowsCodec, TheEndHasClassAndCodeZero) {
    const unsigned char byte = 'a';
    for (const PageCase& page : WindowsPages()) {
        EXPECT_EQ(page.codec.ClassAt(&byte, &byte), 0);
        EXPECT_EQ(page.codec.Decode(&byte, &byte), 0);
    }
}

TEST(WindowsCodec, NextIsTheNextByte) {
    const Bytes bytes = AllBytes();
    for (const PageCase& page : WindowsPages()) {
        for (const unsigned char& byte : bytes)
            EXPECT_EQ(page.codec.Next(&byte), &byte + 1);
    }
}

TEST(WindowsCodec, IsCharComparesWithTheCharacterOfTheByte) {
    const Bytes bytes = AllBytes();
    for (const PageCase& page : WindowsPages()) {
        for (const unsigned char& byte : bytes) {
            const int code = CodeOf(page.codec, byte);
            for (const int other : {-1, -0x80, 0, 0x41, 0x80, 0xE9, 0x20AC, code + 0x10000}) {
                if (other != code) {
                    EXPECT_FALSE(page.codec.IsChar(&byte, other));
                }
            }
            EXPECT_TRUE(page.codec.IsChar(&byte, code));
        }
    }
}

TEST(WindowsCodec, EncodeNeedsOneByteOfRoom) {
    for (const PageCase& page : WindowsPages()) {
        unsigned char out[2] = {0xAA, 0xAA};
        for (const int code : {-1, 0, 0x61, 0xA0, 0x20AC}) {
            EXPECT_EQ(page.codec.Encode(code, out, out), 0) << code;
        }
        EXPECT_EQ(page.codec.Encode('a', out, out + 1), 1);
        EXPECT_EQ(out[0], 'a');
        EXPECT_EQ(page.codec.Encode(-1, out, out + 1), -1);
        EXPECT_EQ(out[1], 0xAA);
    }
    unsigned char out = 0;
    EXPECT_EQ(Windows1252Codec().Encode(0xE9, &out, &out + 1), 1);
    EXPECT_EQ(out, 0xE9);
    EXPECT_EQ(Windows1252Codec().Encode(0x410, &out, &out + 1), -1);
    EXPECT_EQ(Windows1251Codec().Encode(0x410, &out, &out + 1), 1);
    EXPECT_EQ(out, 0xC0);
}

// Deliberate: what the page has above 2123 is not written.
TEST(WindowsCodec, EncodeRefusesCodesAbove2123) {
    for (const PageCase& page : WindowsPages()) {
        SCOPED_TRACE(page.iconvName);
        int refused = 0;
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            const int code = CodeOf(page.codec, byte);
            unsigned char out = 0;
            const bool isWritten = code <= 2123;
            EXPECT_EQ(page.codec.Encode(code, &out, &out + 1), isWritten ? 1 : -1);
            EXPECT_EQ(out, isWritten ? byte : 0);
            refused += !isWritten;
        }
        EXPECT_GE(refused, 17);
    }
    unsigned char out = 0;
    EXPECT_EQ(Windows1252Codec().Encode(0x20AC, &out, &out + 1), -1);
    EXPECT_EQ(Windows1252Codec().Encode(0x2122, &out, &out + 1), -1);
}

// Deliberate: two bytes of text for every byte above ASCII, whatever it stands for.
TEST(WindowsCodec, ToUtf8SpillsHighBitsIntoTheLeadByte) {
    const struct {
        const CharCodec& codec;
        unsigned char byte;
        unsigned char text[2];
    } kRows[] = {
        {Windows1252Codec(), 0x80, {0xC2, 0xAC}},  // U+20AC
        {Windows1252Codec(), 0x96, {0xC0, 0x93}},  // U+2013
        {Windows1252Codec(), 0x99, {0xC4, 0xA2}},  // U+2122
        {Windows1252Codec(), 0xE9, {0xC3, 0xA9}},
        {Windows1252Codec(), 0x81, {0xC2, 0x81}},
        {Windows1251Codec(), 0xC0, {0xD0, 0x90}},
        {Windows1251Codec(), 0xB9, {0xC4, 0x96}},  // U+2116
        {Windows1254Codec(), 0xDD, {0xC4, 0xB0}},
    };
    for (const auto& row : kRows) {
        Bytes out(3, 0xAA);
        const unsigned char* position = &row.byte;
        unsigned char* destination = out.data();
        EXPECT_EQ(row.codec.ToUtf8(position, &row.byte + 1, destination, out.data() + 2), 2);
        EXPECT_EQ(position, &row.byte + 1);
        EXPECT_EQ(destination, out.data() + 2);
        EXPECT_EQ(out, (Bytes{row.text[0], row.text[1], 0xAA})) << int{row.byte};
    }
}

TEST(WindowsCodec, ToUtf8StopsWhereACharacterDoesNotFit) {
    const Bytes bytes = AllBytes();
    for (const PageCase& page : WindowsPages()) {
        Bytes expected;
        for (const unsigned char byte : bytes)
            AppendSingleByteText(expected, CodeOf(page.codec, byte));
        ASSERT_EQ(expected.size(), 128u + 2 * 128);
        for (std::size_t room = 0; room <= expected.size(); ++room) {
            Bytes out(expected.size() + 1, 0xAA);
            const unsigned char* position = bytes.data();
            unsigned char* destination = out.data();
            const int written =
                page.codec.ToUtf8(position, EndOf(bytes), destination, out.data() + room);
            const std::size_t whole = room <= 128 ? room : 128 + (room - 128) / 2 * 2;
            ASSERT_EQ(static_cast<std::size_t>(written), whole) << room;
            ASSERT_EQ(destination, out.data() + whole);
            ASSERT_EQ(static_cast<std::size_t>(position - bytes.data()),
                      whole <= 128 ? whole : 128 + (whole - 128) / 2);
            ASSERT_TRUE(std::equal(out.begin(), out.begin() + written, expected.begin()));
            ASSERT_EQ(out[room], 0xAA);
        }
    }
}

// Deliberate: other characters than ASCII are stored where the next unit goes.
TEST(WindowsCodec, ToUtf16AdvancesOnlyForAscii) {
    const Bytes bytes = {'a', 0x80, 0xE9, 'b', 0x99};
    char16_t units[4] = {1, 1, 1, 1};
    char16_t* destination = units;
    const unsigned char* position = bytes.data();
    EXPECT_EQ(Windows1252Codec().ToUtf16(position, EndOf(bytes), destination, units + 3), 2);
    EXPECT_EQ(position, EndOf(bytes));
    EXPECT_EQ(destination, units + 2);
    EXPECT_EQ(units[0], u'a');
    EXPECT_EQ(units[1], u'b');
    EXPECT_EQ(units[2], 0x2122);
    EXPECT_EQ(units[3], 1);
}

TEST(WindowsCodec, ToUtf16StoresNothingWithoutRoom) {
    const Bytes bytes = {'a', 0x80, 'b'};
    for (std::size_t room = 0; room <= 1; ++room) {
        std::vector<char16_t> units(2, 1);
        char16_t* destination = units.data();
        const unsigned char* position = bytes.data();
        EXPECT_EQ(
            Windows1252Codec().ToUtf16(position, EndOf(bytes), destination, units.data() + room),
            static_cast<int>(room));
        EXPECT_EQ(position, bytes.data() + room);
        EXPECT_EQ(units[room], 1);
    }
}

TEST(WindowsCodec, ToUcs4WritesOneUnitAByte) {
    const Bytes bytes = AllBytes();
    for (const PageCase& page : WindowsPages()) {
        for (const int room : {0, 1, 200, 256, 300}) {
            std::vector<char32_t> units(301, 0xAAAA);
            char32_t* destination = units.data();
            const unsigned char* position = bytes.data();
            const int expected = std::min(room, 256);
            EXPECT_EQ(page.codec.ToUcs4(position, EndOf(bytes), destination, units.data() + room),
                      expected);
            EXPECT_EQ(position, bytes.data() + expected);
            EXPECT_EQ(destination, units.data() + expected);
            for (int byte = 0; byte < expected; ++byte) {
                ASSERT_EQ(units[static_cast<std::size_t>(byte)],
                          static_cast<char32_t>(CodeOf(page.codec, byte)));
            }
            EXPECT_EQ(units[static_cast<std::size_t>(expected)], 0xAAAAU);
        }
    }
}

// The class of a character of text is that of its byte. Only the trade mark sign of 1257 looks like
// a letter of that page.
TEST(WindowsCodec, ClassOfScalarIsThatOfTheByteThatBecameTheText) {
    for (const PageCase& page : WindowsPages()) {
        SCOPED_TRACE(page.iconvName);
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            Bytes text;
            AppendSingleByteText(text, CodeOf(page.codec, byte));
            const int code = text[0] % 0x20 * 64 + text[1] % 64;
            const bool looksLikeALetter = &page.codec == &Windows1257Codec() && byte == 0x99;
            EXPECT_EQ(page.codec.ClassOfScalar(code),
                      looksLikeALetter ? 3 : ClassOf(page.codec, byte))
                << byte;
        }
        // Characters that the page does not have come from references.
        EXPECT_EQ(page.codec.ClassOfScalar(0x3042), 32);
        EXPECT_EQ(page.codec.ClassOfScalar(0x20AC), 33);
        EXPECT_EQ(page.codec.ClassOfScalar(0x300), 31);
        EXPECT_EQ(page.codec.ClassOfScalar(-1), 33);
    }
}

}  // namespace
