// SPDX-License-Identifier: MIT
//
// Characters and line ends by XML 1.0 [2] and section 2.11, wherever they may stand.
#include "support/EscapedText.h"
#include "support/StandardReading.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::Forms;
using support::ReadByStandard;
using support::RefusedDocument;
using support::StandardReading;

constexpr int kAny = RefusedDocument::kAny;

std::string Utf8Of(char32_t code) {
    std::string text;
    support::AppendUtf8(text, code);
    return text;
}

// [2] Char ::= #x9 | #xA | #xD | [#x20-#xD7FF] | [#xE000-#xFFFD] | [#x10000-#x10FFFF]
bool IsCharacter(char32_t code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

// Around the ends of the ranges, and some that other rules treat in their own ways.
constexpr char32_t kEdges[] = {
    0x1,    0x8,    0x9,     0xA,     0xB,     0xC,     0xD,      0xE,      0x1F,
    0x20,   0x7E,   0x7F,    0x80,    0x84,    0x85,    0x86,     0x9F,     0xA0,
    0xFF,   0x2028, 0xD7FF,  0xE000,  0xFDD0,  0xFDEF,  0xFEFF,   0xFFFC,   0xFFFD,
    0xFFFE, 0xFFFF, 0x10000, 0x1FFFE, 0x1FFFF, 0xFFFFF, 0x10FFFD, 0x10FFFE, 0x10FFFF};

TEST(StandardModeCharacters, AreThoseOfTheRanges) {
    const struct {
        const char* begin;
        const char* end;
    } kPlaces[] = {{"<a>", "</a>"},
                   {"<a>x ", " y</a>"},
                   {"<a x='", "'/>"},
                   {"<a x=\"y", "z\"/>"},
                   {"<!--", "--><a/>"},
                   {"<a><!-- ", " --></a>"},
                   {"<?p ", "?><a/>"},
                   {"<a><?p x", "x?></a>"},
                   {"<a><![CDATA[", "]]></a>"},
                   {"<a><![CDATA[ ", " ]]></a>"}};
    for (const auto& place : kPlaces) {
        for (const char32_t code : kEdges) {
            const std::string document = place.begin + Utf8Of(code) + place.end;
            SCOPED_TRACE(support::Escape(document));
            const StandardReading reading = support::ReadInForms(document);
            EXPECT_EQ(reading.message.empty(), IsCharacter(code)) << reading.message;
            if (IsCharacter(code)) continue;
            EXPECT_EQ(reading.message, "Invalid character");
            EXPECT_EQ(reading.line, 1);
            EXPECT_EQ(reading.column, static_cast<int>(std::string(place.begin).size()) + 1);
        }
    }
}

// [66], WFC: Legal Character
TEST(StandardModeCharacters, AreReferredToOnlyWhenTheyAreCharacters) {
    char32_t codes[] = {0x0, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000};
    for (const char* const format : {"<a>&#%u;</a>", "<a x='&#%u;'/>", "<a>&#x%X;</a>"}) {
        const auto judge = [format](char32_t code) {
            char document[64];
            const auto number = static_cast<unsigned>(code);
            // NOLINTNEXTLINE(clang-diagnostic-format-nonliteral): one of three literals
            std::snprintf(document, sizeof document, format, number);
            SCOPED_TRACE(document);
            const StandardReading reading = ReadByStandard(document);
            EXPECT_EQ(reading.message.empty(), IsCharacter(code)) << reading.message;
        };
        for (const char32_t code : kEdges)
            judge(code);
        for (const char32_t code : codes)
            judge(code);
    }
}

TEST(StandardModeCharacters, OfUtf8AreWellFormed) {
    ExpectRefused(
        {
            {"<a>\x80</a>", 1, 4, "a continuation byte alone"},
            {"<a>\xC3</a>", 1, 4, "a lead byte alone"},
            {"<a>\xC0\x80</a>", 1, 4, "an overlong NUL"},
            {"<a>\xC1\xA1</a>", 1, 4, "two bytes that one can say"},
            {"<a>\xE0\x9F\xBF</a>", 1, 4, "three bytes that two can say"},
            {"<a>\xF0\x8F\xBF\xBF</a>", 1, 4, "four bytes that three can say"},
            {"<a>\xED\xA0\x80</a>", 1, 4, "a surrogate"},
            {"<a>\xED\xBF\xBF</a>", 1, 4, "the last surrogate"},
            {"<a>\xF4\x90\x80\x80</a>", 1, 4, "above the last character"},
            {"<a>\xF8\x88\x80\x80\x80</a>", 1, 4, "five bytes"},
            {"<a>\xFF</a>", 1, 4, "the byte FF"},
            {"<a x='\xE2\x82'/>", 1, kAny, "cut in a value"},
            {"<!-- \xE2\x82 --><a/>", 1, kAny, "cut in a comment"},
            {"<a/>\xC3", 1, kAny, "cut by the end of the input"},
            {"<a/>\xF9\n", 1, kAny, "a lead byte that the end of the input cuts"},
            {"<a/>\xF0\x9F\x98", 1, kAny, "cut behind its third byte"},
            {"<a>\xEF\xBF\xBE</a>", 1, 4, "U+FFFE"},
            {"<a>\xEF\xBF\xBF</a>", 1, 4, "U+FFFF"},
        },
        {}, Forms::OnlyUtf8);
}

TEST(StandardModeCharacters, OfUtf16ArePairsWhereTheyAreSurrogates) {
    using std::string_literals::operator""s;
    const std::string kRefused[] = {
        "\xFF\xFE<\0a\0>\0\0\xD8<\0/\0a\0>\0"s,        // the first half alone
        "\xFF\xFE<\0a\0>\0\0\xDC<\0/\0a\0>\0"s,        // the second half alone
        "\xFF\xFE<\0a\0>\0\0\xD8x\0<\0/\0a\0>\0"s,     // the first half before a letter
        "\xFF\xFE<\0a\0>\0\0\xD8\0\xD8<\0/\0a\0>\0"s,  // the first half twice
        "\xFF\xFE<\0a\0>\0\xFE\xFF<\0/\0a\0>\0"s,      // U+FFFE
        "\xFF\xFE<\0a\0>\0\xFF\xFF<\0/\0a\0>\0"s,      // U+FFFF
        "\xFF\xFE<\0a\0/\0>\0x"s,                      // half a unit at the end
    };
    for (const std::string& document : kRefused) {
        SCOPED_TRACE(support::Escape(document));
        const StandardReading whole = ReadByStandard(document);
        EXPECT_NE(whole.message, "") << whole.nodes;
        const StandardReading parts = ReadByStandard(document, {}, 1);
        EXPECT_EQ(parts.message, whole.message);
        EXPECT_EQ(parts.column, whole.column);
    }
    const StandardReading good = ReadByStandard("\xFF\xFE<\0a\0>\0\0\xD8\0\xDC<\0/\0a\0>\0"s);
    EXPECT_EQ(good.nodes + good.message, "<a>\\u{10000}</a>");
}

// 2.11: CR LF, and CR alone, are one LF before anything is made of them.
TEST(StandardModeLineEnds, AreLineFeeds) {
    ExpectAccepted({
        {"<a>\r\n</a>", "<a>\\n</a>"},
        {"<a>\r</a>", "<a>\\n</a>"},
        {"<a>\n\r</a>", "<a>\\n\\n</a>"},
        {"<a>\r\r\n\n\r</a>", "<a>\\n\\n\\n\\n</a>"},
        {"<a>x\r\ny\rz</a>", "<a>x\\ny\\nz</a>"},
        {"<a>x\r]]\r\n</a>", "<a>x\\n]]\\n</a>"},
        {"<a><![CDATA[x\r\ny\r]]></a>", "<a>x\\ny\\n</a>"},
        {"<a><!--x\r\ny\r--></a>", "<a><!--x\\ny\\n--></a>"},
        {"<!--\r--><a/>", "<!--\\n--><a/>"},
        {"<a><?p x\r\ny\r?></a>", "<a><?p x\\ny\\n?></a>"},
        {"<?p\r\nx?><a/>", "<?p x?><a/>"},
        {"<a x='1\r\n2\r3\n4\t5'/>", "<a x=\"1 2 3 4 5\"/>"},
        {"<a\rx='1'\r\ny='2'\r/>", "<a x=\"1\" y=\"2\"/>"},
        {"\r\n<a/>\r", "<a/>"},
        {"<a>\r<b/>\r\n</a\r>\r\n", "<a>\\n<b/>\\n</a>"},
    });
}

TEST(StandardModeLineEnds, ByReferenceStayWhatTheyAre) {
    ExpectAccepted({
        {"<a>&#13;</a>", "<a>\\r</a>"},
        {"<a>&#13;&#10;</a>", "<a>\\r\\n</a>"},
        {"<a>&#xD;\n</a>", "<a>\\r\\n</a>"},
        {"<a>\r&#10;</a>", "<a>\\n\\n</a>"},
        {"<a>&#13;\r\n</a>", "<a>\\r\\n</a>"},
        {"<a x='&#13;'/>", "<a x=\"\\r\"/>"},
        {"<a x='&#13;&#10;&#9;&#32;'/>", "<a x=\"\\r\\n\\t \"/>"},
        {"<a x='\r&#10;\n'/>", "<a x=\" \\n \"/>"},
    });
}

TEST(StandardModeLineEnds, InTextsOfEntitiesAreLineFeeds) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY e 'x\r\ny\rz'>]><a>&e;</a>", "<a>x\\ny\\nz</a>"},
        {"<!DOCTYPE a [<!ENTITY e 'x\r\ny\rz'>]><a x='&e;'/>", "<a x=\"x y z\"/>"},
        {"<!DOCTYPE a [<!ENTITY e '<b>\r\n</b>\r'>]><a>&e;</a>", "<a><b>\\n</b>\\n</a>"},
        {"<!DOCTYPE a [<!ENTITY e '&#13;\r\n'>]><a>&e;</a>", "<a>\\r\\n</a>"},
        {"<!DOCTYPE a [<!ENTITY e '&#13;&#10;'>]><a>&e;</a>", "<a>\\r\\n</a>"},
        {"<!DOCTYPE a [<!ENTITY e '<b>&#13;</b>'>]><a>&e;</a>", "<a><b>\\r</b></a>"},
        {"<!DOCTYPE a [<!ENTITY e '&#38;#13;'>]><a x='&e;'>&e;</a>", "<a x=\"\\r\">\\r</a>"},
        {"<!DOCTYPE a\r\n[\r<!ENTITY\re\r'x'>\r]\r><a>&e;</a>", "<a>x</a>"},
    });
}

TEST(StandardModeLineEnds, AreCountedOnce) {
    ExpectRefused({
        {"<a>\r\n\x01</a>", 2, 1, "behind both"},
        {"<a>\r\x01</a>", 2, 1, "behind a carriage return"},
        {"<a>\n\r\x01</a>", 3, 1, "behind two line ends"},
        {"<a>\r\r\n\nxy\x01</a>", 4, 3, "behind three"},
        {"<a\r\nx=''\r\ry='\x01'/>", 4, 4, "in a tag"},
        {"<a x='\r\n\x01'/>", 2, 1, "in a value"},
        {"<!--\r\n\r--><a>\x01</a>", 3, 7, "behind a comment"},
        {"<?p \r\n\r?><a>\x01</a>", 3, 6, "behind an instruction"},
    });
}

// However it is written, the settings for line ends do not matter.
TEST(StandardModeLineEnds, AreNormalizedAtEveryPlaceOfTheWindow) {
    for (int length = 1015; length < 1035; ++length) {
        const std::string filler(static_cast<std::size_t>(length), 'x');
        const std::string document = "<a>" + filler + "\r\n\r" + filler + "</a>";
        const StandardReading reading = support::ReadInForms(document);
        EXPECT_EQ(reading.nodes, "<a>" + filler + "\\n\\n" + filler + "</a>") << length;
    }
}

}  // namespace
