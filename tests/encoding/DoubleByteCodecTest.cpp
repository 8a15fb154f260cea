// SPDX-License-Identifier: MIT
#include "encoding/CodecCases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// The operations of GB2312 and EUC-KR, one by one. What the pairs are is held against iconv in
// CodePageTableTest.cpp.

using encoding_test::Bytes;
using encoding_test::DoubleBytePages;
using encoding_test::EndOf;
using encoding_test::PageCase;
using Xml::detail::CharCodec;
using Xml::detail::DecodeEnd;
using Xml::detail::EucKrCodec;
using Xml::detail::Gb2312Codec;

namespace {

TEST(DoubleByteCodec, HasItsName) {
    EXPECT_STREQ(Gb2312Codec().Name(), "GB2312");
    EXPECT_STREQ(EucKrCodec().Name(), "EUC-KR");
}

TEST(DoubleByteCodec, SomeCharactersOfEach) {
    const struct {
        const CharCodec& codec;
        Bytes bytes;
        int code;
        int charClass;
        const char* utf8;
    } kRows[] = {
        {Gb2312Codec(), {0xD6, 0xD0}, 0x4E2D, 33, "\xE4\xB8\xAD"},  // an ideograph
        {Gb2312Codec(), {0xA1, 0xA4}, 0xB7, 33, "\xC2\xB7"},        // middle dot
        {Gb2312Codec(), {0xA1, 0xAA}, 0x2014, 33, "\xE2\x80\x94"},  // em dash
        {Gb2312Codec(), {0xA6, 0xC1}, 0x3B1, 32, "\xCE\xB1"},       // alpha
        {Gb2312Codec(), {0xA7, 0xA1}, 0x410, 32, "\xD0\x90"},       // Cyrillic A
        {Gb2312Codec(), {0xA4, 0xA2}, 0x3042, 32, "\xE3\x81\x82"},  // hiragana A
        {Gb2312Codec(), {0xF7, 0xFE}, 0x9F44, 33, "\xE9\xBD\x84"},  // the last
        {EucKrCodec(), {0xB0, 0xA1}, 0xAC00, 32, "\xEA\xB0\x80"},   // the first syllable
        {EucKrCodec(), {0xA4, 0xD4}, 0x3164, 33, "\xE3\x85\xA4"},   // filler
        {EucKrCodec(), {0xA2, 0xE6}, 0x20AC, 33, "\xE2\x82\xAC"},   // euro sign
        {EucKrCodec(), {0xA1, 0xA4}, 0xB7, 33, "\xC2\xB7"},
        {EucKrCodec(), {0xFD, 0xFE}, 0x8A70, 33, "\xE8\xA9\xB0"},  // the last
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(std::string(row.codec.Name()) + " " + row.utf8);
        const unsigned char* position = row.bytes.data();
        EXPECT_EQ(row.codec.Decode(position, EndOf(row.bytes)), row.code);
        EXPECT_EQ(row.codec.ClassAt(position, EndOf(row.bytes)), row.charClass);
        EXPECT_EQ(row.codec.ClassOfScalar(row.code), row.charClass);
        EXPECT_EQ(row.codec.ClassOfCode(row.code), row.charClass);
        EXPECT_EQ(row.codec.Next(position), position + 2);
        EXPECT_TRUE(row.codec.IsChar(position, row.code));
        EXPECT_FALSE(row.codec.IsChar(position, row.code + 1));
        std::string text(4, '\0');
        auto* destination = reinterpret_cast<unsigned char*>(text.data());
        const int length =
            row.codec.ToUtf8(position, EndOf(row.bytes), destination, destination + 4);
        EXPECT_EQ(text.substr(0, static_cast<std::size_t>(std::max(length, 0))), row.utf8);
        EXPECT_EQ(position, EndOf(row.bytes));
        unsigned char out[3] = {0xAA, 0xAA, 0xAA};
        EXPECT_EQ(row.codec.Encode(row.code, out, out + 2), 2);
        EXPECT_EQ((Bytes{out[0], out[1]}), row.bytes);
        EXPECT_EQ(out[2], 0xAA);
    }
}

TEST(DoubleByteCodec, AsciiIsItself) {
    for (const PageCase& page : DoubleBytePages()) {
        for (int byte = 0; byte < 0x80; ++byte) {
            const auto one = static_cast<unsigned char>(byte);
            const int asciiClass = Xml::detail::Utf8Codec().ClassAt(&one, &one + 1);
            EXPECT_EQ(page.codec.Decode(&one, &one + 1), byte);
            EXPECT_EQ(page.codec.ClassAt(&one, &one + 1), asciiClass);
            EXPECT_EQ(page.codec.Next(&one), &one + 1);
            unsigned char out = 0xAA;
            EXPECT_EQ(page.codec.Encode(byte, &out, &out + 1), 1);
            EXPECT_EQ(out, byte);
            if (byte != 0) {
                EXPECT_EQ(page.codec.ClassOfCode(byte), asciiClass);
            }
        }
    }
}

// Every lead with every trail: the class tells what they are, and all operations agree with it.
TEST(DoubleByteCodec, EveryPairIsACharacterOrInvalid) {
    for (const PageCase& page : DoubleBytePages()) {
        int characters = 0;
        for (int lead = 0x80; lead <= 0xFF; ++lead) {
            for (int trail = 0; trail <= 0xFF; ++trail) {
                const Bytes bytes = {static_cast<unsigned char>(lead),
                                     static_cast<unsigned char>(trail)};
                const bool isLead = lead >= 0xA1 && lead <= 0xFE;
                const bool isTrail = trail >= 0xA1 && trail <= 0xFE;
                const int code = page.codec.Decode(bytes.data(), EndOf(bytes));
                const int charClass = page.codec.ClassAt(bytes.data(), EndOf(bytes));
                EXPECT_EQ(page.codec.Next(bytes.data()), bytes.data() + (isLead ? 2 : 1));
                EXPECT_TRUE((isLead && isTrail) || code == -1) << lead << ' ' << trail;
                EXPECT_EQ(charClass == 1, code == -1) << lead << ' ' << trail;

                Bytes out(4, 0xAA);
                const unsigned char* position = bytes.data();
                unsigned char* destination = out.data();
                const int length =
                    page.codec.ToUtf8(position, EndOf(bytes), destination, out.data() + 3);
                EXPECT_EQ(length < 0, code == -1) << lead << ' ' << trail;
                EXPECT_EQ(position, code == -1 ? bytes.data() : EndOf(bytes));
                characters += code >= 0;
            }
        }
        EXPECT_EQ(characters, &page.codec == &Gb2312Codec() ? 7445 : 8226);
    }
}

TEST(DoubleByteCodec, ALeadAtTheEndIsCut) {
    for (const PageCase& page : DoubleBytePages()) {
        for (int lead = 0x80; lead <= 0xFF; ++lead) {
            const auto byte = static_cast<unsigned char>(lead);
            const bool isLead = lead >= 0xA1 && lead <= 0xFE;
            EXPECT_EQ(page.codec.ClassAt(&byte, &byte + 1), isLead ? 2 : 1) << lead;
            EXPECT_EQ(page.codec.Decode(&byte, &byte + 1), -1);
            unsigned char out = 0xAA;
            const unsigned char* position = &byte;
            unsigned char* destination = &out;
            EXPECT_EQ(page.codec.ToUtf8(position, &byte + 1, destination, &out + 1),
                      isLead ? 0 : -1);
            EXPECT_EQ(page.codec.DecodeRun(position, &byte + 1, destination, &out + 1),
                      isLead ? DecodeEnd::SourceUsed : DecodeEnd::Invalid);
            EXPECT_EQ(position, &byte);
            EXPECT_EQ(out, 0xAA);
        }
    }
}

TEST(DoubleByteCodec, TheEndHasClassZero) {
    const unsigned char byte = 0xB0;
    for (const PageCase& page : DoubleBytePages()) {
        EXPECT_EQ(page.codec.ClassAt(&byte, &byte), 0);
        EXPECT_EQ(page.codec.Decode(&byte, &byte), -1);
    }
}

TEST(DoubleByteCodec, EncodeNeedsRoomForTheWholeCharacter) {
    for (const PageCase& page : DoubleBytePages()) {
        unsigned char out[2] = {0xAA, 0xAA};
        EXPECT_EQ(page.codec.Encode('a', out, out), 0);
        EXPECT_EQ(page.codec.Encode(0x3042, out, out), 0);
        EXPECT_EQ(page.codec.Encode(0x3042, out, out + 1), 0);
        for (const int code : {-1, 0x80, 0xFF, 0xFFFF, 0x10000, 0x10FFFF})
            EXPECT_EQ(page.codec.Encode(code, out, out + 2), -1) << code;
        EXPECT_EQ(out[0], 0xAA);
        EXPECT_EQ(out[1], 0xAA);
    }
}

template <typename Unit, typename Conversion>
void ExpectUnits(const CharCodec& codec, Conversion conversion) {
    const Bytes bytes = {'a', 0xA4, 0xA2, 'b', 0xA1, 0xA4, 0xB0};  // the last is cut
    const Unit kExpected[] = {'a', static_cast<Unit>(codec.Decode(&bytes[1], EndOf(bytes))), 'b',
                              0xB7};
    const std::ptrdiff_t kUsed[] = {0, 1, 3, 4, 6, 6};
    for (std::size_t room = 0; room <= 5; ++room) {
        std::vector<Unit> units(6, 1);
        Unit* destination = units.data();
        const unsigned char* position = bytes.data();
        const std::size_t count = std::min<std::size_t>(room, 4);
        EXPECT_EQ((codec.*conversion)(position, EndOf(bytes), destination, units.data() + room),
                  static_cast<int>(count));
        EXPECT_EQ(position - bytes.data(), kUsed[room]);
        EXPECT_EQ(destination, units.data() + count);
        EXPECT_TRUE(std::equal(units.data(), destination, kExpected));
        EXPECT_EQ(units[count], Unit{1});
    }
}

TEST(DoubleByteCodec, WideConversionsWriteOneUnitACharacter) {
    for (const PageCase& page : DoubleBytePages()) {
        ExpectUnits<char16_t>(page.codec, &CharCodec::ToUtf16);
        ExpectUnits<char32_t>(page.codec, &CharCodec::ToUcs4);
    }
}

}  // namespace
