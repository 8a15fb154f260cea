// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>
#include <espalier/io/Exception.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The public classes of the Windows pages, GB2312 and EUC-KR.

namespace {

using Bytes = std::vector<unsigned char>;

struct Row {
    Xml::Encoding* (*shared)();
    const char* encodingName;
    const char* webName;
    bool isSingleByte;
    const char* text;  // UTF-8
    Bytes bytes;
};

const std::vector<Row>& Rows() {
    using Xml::Encoding;
    static const std::vector<Row> kRows = {
        {Encoding::Windows_1250, "Windows-1250", "windows-1250", true, "a\xC5\xA1", {'a', 0x9A}},
        {Encoding::Windows_1251, "Windows-1251", "windows-1251", true, "a\xD0\x90", {'a', 0xC0}},
        {Encoding::Windows_1252, "Windows-1252", "windows-1252", true, "a\xC3\xA9", {'a', 0xE9}},
        {Encoding::Windows_1254, "Windows-1254", "windows-1254", true, "a\xC4\xB0", {'a', 0xDD}},
        {Encoding::Windows_1257, "Windows-1257", "windows-1257", true, "a\xC4\x85", {'a', 0xE0}},
        {Encoding::GB2312, "GB2312", "gb2312", false, "a\xE4\xB8\xAD", {'a', 0xD6, 0xD0}},
        {Encoding::EUC_KR, "EUC-KR", "EUC-KR", false, "a\xEA\xB0\x80", {'a', 0xB0, 0xA1}},
    };
    return kRows;
}

unsigned Length(std::string_view text) { return static_cast<unsigned>(text.size()); }

const unsigned char* AsBytes(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

TEST(CodePageEncoding, HasItsNames) {
    for (const Row& row : Rows()) {
        const Xml::Encoding& encoding = *row.shared();
        EXPECT_EQ(&encoding, row.shared());
        EXPECT_EQ(encoding.EncodingName(), row.encodingName);
        EXPECT_EQ(encoding.WebName(), row.webName);
        EXPECT_EQ(encoding.IsSingleByte(), row.isSingleByte);
        unsigned char mark[4] = {};
        EXPECT_EQ(encoding.GetPreamble(mark, 4), 0u);
    }
}

TEST(CodePageEncoding, WritesItsText) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.webName);
        const Xml::Encoding& encoding = *row.shared();
        Bytes out(8, 0xAA);
        // Where all characters can be written, characters of one byte and bytes are as many.
        EXPECT_EQ(encoding.GetBytes(row.text, out.data(), 8), row.bytes.size());
        EXPECT_TRUE(std::equal(row.bytes.begin(), row.bytes.end(), out.begin()));
        EXPECT_EQ(out[row.bytes.size()], 0xAA);
        EXPECT_EQ(encoding.GetByteCount(row.text), row.bytes.size());
        EXPECT_EQ(encoding.GetCharCount(row.bytes.data(), static_cast<unsigned>(row.bytes.size())),
                  2u);
    }
}

TEST(CodePageEncoding, ConvertsBothWays) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.webName);
        unsigned char out[16] = {};
        unsigned consumed = 0;
        const std::string_view text = row.text;
        unsigned written = Xml::Encoding::Convert(Xml::Encoding::UTF8(), row.shared(),
                                                  AsBytes(text), Length(text), out, 16, consumed);
        EXPECT_EQ(Bytes(out, out + written), row.bytes);
        EXPECT_EQ(consumed, text.size());
        written =
            Xml::Encoding::Convert(row.shared(), Xml::Encoding::UTF8(), row.bytes.data(),
                                   static_cast<unsigned>(row.bytes.size()), out, 16, consumed);
        EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(out), written), text);
        EXPECT_EQ(consumed, row.bytes.size());
    }
}

TEST(CodePageEncoding, ConvertWritesAQuestionMarkForWhatThePageLacks) {
    for (const Row& row : Rows()) {
        unsigned char out[4] = {};
        unsigned consumed = 0;
        const std::string_view text = "\xF0\x9F\x98\x80x";
        EXPECT_EQ(Xml::Encoding::Convert(Xml::Encoding::UTF8(), row.shared(), AsBytes(text),
                                         Length(text), out, 4, consumed),
                  2u);
        EXPECT_EQ(out[0], '?');
        EXPECT_EQ(out[1], 'x');
    }
}

TEST(CodePageEncoding, CopiesKeepNamesAndCharacters) {
    const auto expectWrites = [](const auto& original, const char* webName,
                                 unsigned char expected) {
        const auto encoding(original);
        unsigned char out[4] = {};
        encoding.GetBytes("\xC2\xB7", out, 4);
        EXPECT_EQ(encoding.WebName(), webName);
        EXPECT_EQ(out[0], expected);
    };
    Xml::Windows1250Encoding central(false);
    Xml::Windows1251Encoding cyrillic(false);
    Xml::Windows1252Encoding western(false);
    Xml::Windows1254Encoding turkish(false);
    Xml::Windows1257Encoding baltic(false);
    Xml::Gb2312Encoding chinese(false);
    Xml::EucKrEncoding korean(false);
    expectWrites(central, "windows-1250", 0xB7);
    expectWrites(cyrillic, "windows-1251", 0xB7);
    expectWrites(western, "windows-1252", 0xB7);
    expectWrites(turkish, "windows-1254", 0xB7);
    expectWrites(baltic, "windows-1257", 0xB7);
    expectWrites(chinese, "gb2312", 0xA1);
    expectWrites(korean, "EUC-KR", 0xA1);

    Xml::Windows1251Encoding otherCyrillic(true);
    otherCyrillic = cyrillic;
    expectWrites(otherCyrillic, "windows-1251", 0xB7);
    Xml::Gb2312Encoding otherChinese(true);
    otherChinese = chinese;
    expectWrites(otherChinese, "gb2312", 0xA1);
    Xml::EucKrEncoding otherKorean(true);
    otherKorean = korean;
    expectWrites(otherKorean, "EUC-KR", 0xA1);
}

// Deliberate: a character that the page cannot write moves the output back by one.
TEST(CodePageEncoding, GetBytesOfAWindowsPageKeepsThePositionRules) {
    const struct {
        const char* text;
        unsigned capacity;
        Bytes expected;  // from an output of 0xAA
        unsigned characters;
    } kRows[] = {
        {"ab", 4, {'a', 'b', 0xAA, 0xAA}, 2},
        {"ab\xE2\x82\xAC"
         "c",
         4,
         {'a', 'c', 0xAA, 0xAA},
         4},  // the euro sign
        {"\xE2\x82\xAC"
         "abc",
         4,
         {'b', 'c', 0xAA, 0xAA},
         4},  // "a" comes to stand before
        {"abc", 2, {'a', 'b', 0xAA, 0xAA}, 3},
        {"ab\xD0\x90\xD0\x90\xD0\x90"
         "cd",
         4,
         {'d', 'b', 0xAA, 0xAA},
         7},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.text);
        Bytes out(4, 0xAA);
        EXPECT_EQ(Xml::Encoding::Windows_1252()->GetBytes(row.text, out.data(), row.capacity),
                  row.characters);
        EXPECT_EQ(out, row.expected);
        EXPECT_EQ(Xml::Encoding::Windows_1252()->GetByteCount(row.text), row.characters);
    }
}

TEST(CodePageEncoding, GetBytesOfTwoByteEncodingsWritesAQuestionMarkForWhatIsMissing) {
    // 'a', an emoji, e with acute, the middle dot, and a byte that is no UTF-8.
    const std::string text = "a\xF0\x9F\x98\x80\xC3\xA9\xC2\xB7\xFF";
    for (const Xml::Encoding* encoding : {Xml::Encoding::GB2312(), Xml::Encoding::EUC_KR()}) {
        const bool isChinese = encoding == Xml::Encoding::GB2312();  // which has e with acute
        const Bytes expected = isChinese ? Bytes{'a', '?', 0xA8, 0xA6, 0xA1, 0xA4, '?'}
                                         : Bytes{'a', '?', '?', 0xA1, 0xA4, '?'};
        EXPECT_EQ(encoding->GetByteCount(text.data(), Length(text)), expected.size());
        for (std::size_t room = 0; room <= expected.size(); ++room) {
            Bytes out(room + 1, 0xAA);
            const unsigned written = encoding->GetBytes(text.data(), Length(text), out.data(),
                                                        static_cast<unsigned>(room));
            // A character is not written in halves.
            EXPECT_GE(written + 1, room);
            EXPECT_TRUE(std::equal(out.begin(), out.begin() + written, expected.begin()));
            EXPECT_EQ(out[written], 0xAA);
        }
    }
}

TEST(CodePageEncoding, GetCharCountCountsPairsAndBadBytes) {
    const struct {
        Bytes bytes;
        unsigned characters;
        bool isValid;
    } kRows[] = {
        {{}, 0, true},
        {{'a', 'b'}, 2, true},
        {{0xB0, 0xA1, 'a', 0xB0, 0xA1}, 3, true},
        {{0xB0}, 1, false},
        {{0xB0, 'a'}, 2, false},
        {{0x80, 0xB0, 0xA1}, 2, false},
        {{0xFF, 0xFF}, 2, false},
        {{0xFE, 0xA1}, 2, false},
    };
    const Xml::Gb2312Encoding chinese(false), strictChinese(true);
    const Xml::EucKrEncoding korean(false), strictKorean(true);
    const std::pair<const Xml::Encoding*, const Xml::Encoding*> kEncodings[] = {
        {&chinese, &strictChinese}, {&korean, &strictKorean}};
    for (const auto& [lenient, strict] : kEncodings) {
        for (const auto& row : kRows) {
            SCOPED_TRACE(testing::PrintToString(row.bytes));
            const auto count = static_cast<unsigned>(row.bytes.size());
            EXPECT_EQ(lenient->GetCharCount(row.bytes.data(), count), row.characters);
            if (row.isValid) {
                EXPECT_EQ(strict->GetCharCount(row.bytes.data(), count), row.characters);
                continue;
            }
            try {
                strict->GetCharCount(row.bytes.data(), count);
                ADD_FAILURE() << "nothing is thrown";
            } catch (const Xml::Exception& error) {
                EXPECT_STREQ(error.What(), "Invalid argument: Invalid character in source string");
                EXPECT_EQ(error.LineNumber(), -1);
                EXPECT_EQ(error.LinePos(), -1);
            }
        }
    }
}

// A character that the end of the source cuts waits for its second byte.
TEST(CodePageEncoding, ConvertLeavesACutCharacter) {
    const unsigned char bytes[] = {'a', 0xB0, 0xA1, 0xB0};
    for (Xml::Encoding* from : {Xml::Encoding::GB2312(), Xml::Encoding::EUC_KR()}) {
        unsigned char out[16] = {};
        unsigned consumed = 0;
        EXPECT_EQ(Xml::Encoding::Convert(from, Xml::Encoding::UTF8(), bytes, 4, out, 16, consumed),
                  4u);
        EXPECT_EQ(consumed, 3u);
        EXPECT_EQ(Xml::Encoding::ConvertChar(from, Xml::Encoding::UTF8(), bytes + 3, 1, out, 16,
                                             consumed),
                  0u);
        EXPECT_EQ(consumed, 0u);
    }
}

}  // namespace
