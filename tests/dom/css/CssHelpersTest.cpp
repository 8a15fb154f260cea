// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>

namespace {

// What a function that moves the place accepts: what it appends, and what is left.
struct Accepted {
    const char* text;
    const char* result;
    const char* rest;
};

using Reader = bool (*)(const char*& text, astring& result);
using Function = bool (*)(const char* text, astring& result);

template <std::size_t kCount>
void ExpectAccepted(Reader read, const Accepted (&cases)[kCount]) {
    for (const Accepted& c : cases) {
        SCOPED_TRACE(c.text);
        const char* rest = c.text;
        astring result = "before ";
        EXPECT_TRUE(read(rest, result));
        EXPECT_EQ(result, "before " + std::string(c.result)) << "results are appended";
        EXPECT_STREQ(rest, c.rest);
    }
}

template <std::size_t kCount>
void ExpectRefused(Reader read, const char* const (&texts)[kCount]) {
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        const char* rest = text;
        astring result = "before";
        EXPECT_FALSE(read(rest, result));
        EXPECT_EQ(result, "before");
        EXPECT_EQ(rest, text);
    }
}

struct AcceptedFunction {
    const char* text;
    const char* result;
};

template <std::size_t kCount>
void ExpectAccepted(Function read, const AcceptedFunction (&cases)[kCount]) {
    for (const AcceptedFunction& c : cases) {
        SCOPED_TRACE(c.text);
        astring result = "before ";
        EXPECT_TRUE(read(c.text, result));
        EXPECT_EQ(result, "before " + std::string(c.result)) << "results are appended";
    }
}

template <std::size_t kCount>
void ExpectRefused(Function read, const char* const (&texts)[kCount]) {
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        astring result = "before";
        EXPECT_FALSE(read(text, result));
        EXPECT_EQ(result, "before");
    }
}

}  // namespace

TEST(CssHelpers, WhitespaceIsARunOfFiveCharacters) {
    const char* const kCases[][2] = {{" x", "x"},  {"\tx", "x"}, {"\nx", "x"},
                                     {"\rx", "x"}, {"\fx", "x"}, {" \t\n\r\f ", ""}};
    for (const auto& c : kCases) {
        const char* rest = c[0];
        EXPECT_TRUE(CssHelpers::ParseWhitespace(rest));
        EXPECT_STREQ(rest, c[1]);
    }
    for (const char* const text : {"", "x", "\vx", "\xA0", "\xC2\xA0", "\bx"}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        EXPECT_FALSE(CssHelpers::ParseWhitespace(rest));
        EXPECT_EQ(rest, text);
    }
}

TEST(CssHelpers, ACommaMayHaveWhitespaceAround) {
    const char* const kCases[][2] = {{",x", "x"}, {", x", "x"},  {" ,x", "x"},   {" \t,\n x", "x"},
                                     {",", ""},   {",,x", ",x"}, {" , ,x", ",x"}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c[0]);
        const char* rest = c[0];
        EXPECT_TRUE(CssHelpers::ParseCommaWhitespace(rest));
        EXPECT_STREQ(rest, c[1]);
    }
    for (const char* const text : {"", " ", "x", " x,", ";"}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        EXPECT_FALSE(CssHelpers::ParseCommaWhitespace(rest));
        EXPECT_EQ(rest, text);
    }
}

TEST(CssHelpers, HexadecimalDigitsHaveAValue) {
    constexpr std::string_view kLower = "0123456789abcdef";
    constexpr std::string_view kUpper = "0123456789ABCDEF";
    for (int byte = 0; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const char digit = static_cast<char>(byte);
        std::size_t expected = kLower.find(digit);
        if (expected == std::string_view::npos) expected = kUpper.find(digit);
        EXPECT_EQ(CssHelpers::ConvertHexDigit(digit),
                  expected == std::string_view::npos ? -1 : static_cast<int>(expected));
    }
}

TEST(CssHelpers, HexadecimalNumbersHaveUpToEightDigits) {
    const struct {
        const char* text;
        int value;
        const char* rest;
    } kCases[] = {
        {"0", 0, ""},
        {"f", 15, ""},
        {"Fg", 15, "g"},
        {"1a2B", 0x1A2B, ""},
        {"0010 ", 16, " "},
        {"abcdefgh", 0xABCDEF, "gh"},
        {"7fffffff", std::numeric_limits<int>::max(), ""},
        {"123456789", 0x12345678, "9"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const char* rest = c.text;
        int value = -7;
        EXPECT_TRUE(CssHelpers::ParseHexValue(rest, value));
        EXPECT_EQ(value, c.value);
        EXPECT_STREQ(rest, c.rest);
    }
    for (const char* const text : {"", "g", " 1", "#1", "-1", "\xC3\xA9"}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        int value = -7;
        EXPECT_FALSE(CssHelpers::ParseHexValue(rest, value));
        EXPECT_EQ(value, -7);
        EXPECT_EQ(rest, text);
    }
}

TEST(CssHelpers, IntegersHaveThirtyTwoBits) {
    const struct {
        const char* text;
        long value;
        const char* rest;
    } kCases[] = {
        {"0", 0, ""},
        {"12px", 12, "px"},
        {"+5,", 5, ","},
        {"-7", -7, ""},
        {"007", 7, ""},
        {"1.5", 1, ".5"},
        {"-0", 0, ""},
        {"12 3", 12, " 3"},
        {"2147483647", 2147483647L, ""},
        {"-2147483648", -2147483647L - 1, ""},
        {"00000000000000000000042", 42, ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const char* rest = c.text;
        long value = -99;
        EXPECT_TRUE(CssHelpers::ParseInteger(rest, value));
        EXPECT_EQ(value, c.value);
        EXPECT_STREQ(rest, c.rest);
    }
    for (const char* const text : {"", "+", "-", "- 1", "x", " 1", "+-1", ".5", "2147483648",
                                   "-2147483649", "99999999999999999999999999999999"}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        long value = -99;
        EXPECT_FALSE(CssHelpers::ParseInteger(rest, value));
        EXPECT_EQ(value, -99);
        EXPECT_EQ(rest, text);
    }
}

TEST(CssHelpers, EscapesAreCharacters) {
    const Accepted kCases[] = {
        {"\\41", "A", ""},
        {"\\41 b", "A", "b"},
        {"\\41  b", "A", " b"},
        {"\\41\tb", "A", "b"},
        {"\\41\nb", "A", "b"},
        {"\\41\fb", "A", "b"},
        {"\\41\r\nb", "A", "b"},
        {"\\0000411", "A", "1"},
        {"\\000041 1", "A", "1"},
        {"\\41g", "A", "g"},
        {"\\e9", "\xC3\xA9", ""},
        {"\\E9", "\xC3\xA9", ""},
        {"\\20ac", "\xE2\x82\xAC", ""},
        {"\\1F600", "\xF0\x9F\x98\x80", ""},
        {"\\10FFFF", "\xF4\x8F\xBF\xBF", ""},
        {"\\0", "\xEF\xBF\xBD", ""},
        {"\\000000", "\xEF\xBF\xBD", ""},
        {"\\D800", "\xEF\xBF\xBD", ""},
        {"\\dfff", "\xEF\xBF\xBD", ""},
        {"\\D7FF", "\xED\x9F\xBF", ""},
        {"\\E000", "\xEE\x80\x80", ""},
        {"\\110000", "\xEF\xBF\xBD", ""},
        {"\\ffffff", "\xEF\xBF\xBD", ""},
        {"\\g", "g", ""},
        {"\\gh", "g", "h"},
        {"\\\"", "\"", ""},
        {"\\\\", "\\", ""},
        {"\\{", "{", ""},
        {"\\ x", " ", "x"},
        {"\\\xC3\xA9x", "\xC3\xA9", "x"},
    };
    ExpectAccepted(CssHelpers::ParseEscape, kCases);
    const char* const kRefused[] = {"", "a", "\\", "\\\n", "\\\r", "\\\f", " \\41", "/41"};
    ExpectRefused(CssHelpers::ParseEscape, kRefused);
}

TEST(CssHelpers, IdentifiersBeginWithALetter) {
    const Accepted kCases[] = {
        {"abc", "abc", ""},
        {"Z", "Z", ""},
        {"_a", "_a", ""},
        {"-a", "-a", ""},
        {"-_a", "-_a", ""},
        {"-moz-x", "-moz-x", ""},
        {"a-b_c9", "a-b_c9", ""},
        {"a-", "a-", ""},
        {"a b", "a", " b"},
        {"a(b)", "a", "(b)"},
        {"a:b", "a", ":b"},
        {"a.b", "a", ".b"},
        {"\xC3\xA9t\xC3\xA9", "\xC3\xA9t\xC3\xA9", ""},
        {"\xFF", "\xFF", ""},
        {"\x80x", "\x80x", ""},
        {"\\41 b", "Ab", ""},
        {"a\\-b", "a-b", ""},
        {"a\\", "a", "\\"},
        {"-\\31 x", "-1x", ""},
        {"\\31 x", "1x", ""},
        {"\\{x", "{x", ""},
    };
    ExpectAccepted(CssHelpers::ParseIdent, kCases);
    const char* const kRefused[] = {"",   "9a", "-9", "-",  "--a",  "- a",  " a",
                                    "+a", ".a", "'a", "@a", "\\\n", "\x7F", "(a"};
    ExpectRefused(CssHelpers::ParseIdent, kRefused);
}

TEST(CssHelpers, NamesBeginWithAnyOfTheirCharacters) {
    const Accepted kCases[] = {
        {"abc", "abc", ""},   {"9a", "9a", ""},   {"-9", "-9", ""},
        {"--a", "--a", ""},   {"-", "-", ""},     {"_", "_", ""},
        {"1.5", "1", ".5"},   {"a b", "a", " b"}, {"\xC3\xA9", "\xC3\xA9", ""},
        {"\\41 9", "A9", ""},
    };
    ExpectAccepted(CssHelpers::ParseName, kCases);
    const char* const kRefused[] = {"", " a", ".a", "(a", "'a", "#a", "\\\n", "\x7F"};
    ExpectRefused(CssHelpers::ParseName, kRefused);
}

TEST(CssHelpers, StringsStandInQuotes) {
    const Accepted kCases[] = {
        {"'a'", "a", ""},
        {"\"a\"", "a", ""},
        {"''", "", ""},
        {"'a' b", "a", " b"},
        {"\"a'b\"", "a'b", ""},
        {"'a\"b'", "a\"b", ""},
        {"'a\\'b'", "a'b", ""},
        {"'\\41 x'", "Ax", ""},
        {"'a\\\\'", "a\\", ""},
        {"'a;b}/*c*/'", "a;b}/*c*/", ""},
        {"'\xE2\x82\xAC'", "\xE2\x82\xAC", ""},
        {"'a''b'", "a", "'b'"},
    };
    ExpectAccepted(CssHelpers::ParseString, kCases);
    const char* const kRefused[] = {"", "a", "'", "'a", "\"a'", "'a\"", "'a\\'", "'a\\", " 'a'"};
    ExpectRefused(CssHelpers::ParseString, kRefused);
}

TEST(CssHelpers, AddressesHaveQuotesOrNone) {
    const AcceptedFunction kCases[] = {
        {"url(a.png)", "a.png"},
        {"url( \t\na.png \r\f)", "a.png"},
        {"url('a b')", "a b"},
        {"url( \"a)\" )", "a)"},
        {"url('a\\'b')", "a'b"},
        {"url(a)b", "a"},
        {"url(http://x/?a=b&c#d%20!$*+,;~)", "http://x/?a=b&c#d%20!$*+,;~"},
        {"url(a\\)b)", "a)b"},
        {"url(a\\41 b)", "aAb"},
        {"url(\xC3\xA9\xFF)", "\xC3\xA9\xFF"},
        {"url(data:image/png;base64,AA==)", "data:image/png;base64,AA=="},
    };
    ExpectAccepted(CssHelpers::ParseUrl, kCases);
    const char* const kRefused[] = {"",         "url",      "url(",       "url(a",   "url (a)",
                                    " url(a)",  "url(a b)", "url('a' b)", "url('a)", "url('a'",
                                    "url(a'b)", "url(a(b)", "uri(a)",     "src(a)",  "url(a\\"};
    ExpectRefused(CssHelpers::ParseUrl, kRefused);
}

TEST(CssHelpers, AddressesWithoutQuotesHaveTheseCharacters) {
    for (int byte = 1; byte < 256; ++byte) {
        const char character = static_cast<char>(byte);
        if (character == '\\' || character == ')') continue;
        SCOPED_TRACE(byte);
        const std::string address = std::string("x") + character + "y";
        astring result;
        const bool allowed = (byte >= '*' && byte != 127) ||
                             std::string_view("!#$%&").find(character) != std::string_view::npos;
        EXPECT_EQ(CssHelpers::ParseUrl(("url(" + address + ")").c_str(), result), allowed);
        EXPECT_EQ(result, allowed ? address : "");
    }
}

TEST(CssHelpers, ColoursKeepTheirText) {
    const AcceptedFunction kCases[] = {
        {"#abc", "#abc"},
        {"#ABCdef", "#ABCdef"},
        {"#012345", "#012345"},
        {"#abc def", "#abc"},
        {"#abcg", "#abc"},
        {"#abcdefg", "#abcdef"},
        {"#1234567", "#123456"},
        {"#12345678", "#123456"},
        {"rgb(1,2,3)", "rgb(1,2,3)"},
        {"rgb(1, 2, 3)", "rgb(1, 2, 3)"},
        {"rgb( 1,\t2,\n3 )", "rgb( 1,\t2,\n3 )"},
        {"rgb(0,0,0)", "rgb(0,0,0)"},
        {"rgb(255,255,255)", "rgb(255,255,255)"},
        {"rgb(1,2,3) x", "rgb(1,2,3)"},
    };
    ExpectAccepted(static_cast<Function>(CssHelpers::ParseRgbColor), kCases);
}

TEST(CssHelpers, ColoursAreNumbers) {
    const struct {
        const char* text;
        unsigned color;
    } kCases[] = {
        {"#FFF", 0xFFFFFF},
        {"#ABC", 0xAABBCC},
        {"#abc", 0xAABBCC},
        {"#000", 0x000000},
        {"#012345", 0x012345},
        {"#FEDCBA", 0xFEDCBA},
        {"#12345678", 0x123456},
        {"rgb(1,2,3)", 0x010203},
        {"rgb( 255, 0, 128 )", 0xFF0080},
        {"rgb(0,0,0)", 0x000000},
        {"rgb(255,255,255)", 0xFFFFFF},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        unsigned color = 7;
        EXPECT_TRUE(CssHelpers::ParseRgbColor(c.text, color));
        EXPECT_EQ(color, c.color);
    }
}

TEST(CssHelpers, WhatIsNoColourIsRefusedInBothForms) {
    const char* const kRefused[] = {
        "",
        "#",
        "#a",
        "#ab",
        "#abcd",
        "#ffff",
        "#abcde",
        "#ggg",
        "#abg",
        "abc",
        "red",
        " #abc",
        "# abc",
        "rgb(256,0,0)",
        "rgb(0,256,0)",
        "rgb(0,0,256)",
        "rgb(-1,0,0)",
        "rgb(1%,2%,3%)",
        "rgb(1,2)",
        "rgb(1,2,3,4)",
        "rgb(1 2 3)",
        "rgb(1,2,3",
        "rgb (1,2,3)",
        "rgb(1.5,2,3)",
        "rgba(1,2,3,4)",
        "rgb()",
        "rgb(,,)",
        "rgb(a,b,c)",
        "rgb(4294967296,0,0)",
        "rgb(1,,3)",
    };
    ExpectRefused(static_cast<Function>(CssHelpers::ParseRgbColor), kRefused);
    for (const char* const text : kRefused) {
        SCOPED_TRACE(text);
        unsigned color = 7;
        EXPECT_FALSE(CssHelpers::ParseRgbColor(text, color));
        EXPECT_EQ(color, 7U);
    }
}

TEST(CssHelpers, AttributesAndCountersHaveAnIdentifier) {
    const AcceptedFunction kAttributes[] = {
        {"attr(title)", "title"}, {"attr( \ta\n)", "a"}, {"attr(-a)", "-a"},
        {"attr(\\41)", "A"},      {"attr(a)b", "a"},
    };
    ExpectAccepted(CssHelpers::ParseAttr, kAttributes);
    const char* const kNoAttributes[] = {
        "",          "attr",    "attr(",    "attr()",    "attr( )",  "attr(a",    "attr(a b)",
        "attr(a,b)", "attr(9)", "attr (a)", "attr('a')", " attr(a)", "counter(a)"};
    ExpectRefused(CssHelpers::ParseAttr, kNoAttributes);

    const AcceptedFunction kCounters[] = {
        {"counter(x)", "x"}, {"counter( x )", "x"}, {"counter(-x)", "-x"}, {"counter(x)y", "x"}};
    ExpectAccepted(CssHelpers::ParseCounter, kCounters);
    const char* const kNoCounters[] = {"",          "counter",      "counter(",   "counter()",
                                       "counter(x", "counter(x y)", "counter(9)", "counter (x)",
                                       "attr(x)",   "counters(x)"};
    ExpectRefused(CssHelpers::ParseCounter, kNoCounters);
}

TEST(CssHelpers, DeliberateACounterHasNoSecondArgument) {
    const char* const kRefused[] = {"counter(x, decimal)", "counter(x,decimal)", "counter(x ,y)",
                                    "counter(x,)"};
    ExpectRefused(CssHelpers::ParseCounter, kRefused);
}

TEST(CssHelpers, AMediumEndsBehindItsLastCharacter) {
    const struct {
        const char* text;
        const char* medium;
        const char* rest;
    } kCases[] = {
        {"screen", "screen", ""},
        {"screen, print", "screen", ", print"},
        {" \t\n\r\fscreen \t,print", "screen", " \t,print"},
        {",, ,tv", "tv", ""},
        {"screen and (color), tv", "screen and (color)", ", tv"},
        {"a (b, (c, d), e) f, g", "a (b, (c, d), e) f", ", g"},
        {"a), b", "a)", ", b"},
        {"(a, b", "(a, b", ""},
        {"\xC3\xA9, b", "\xC3\xA9", ", b"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const char* rest = c.text;
        astring medium = "before";
        ASSERT_TRUE(CssHelpers::ParseMedium(rest, medium));
        EXPECT_EQ(medium, c.medium);
        EXPECT_STREQ(rest, c.rest);
    }
}

TEST(CssHelpers, WithoutAMediumNothingChanges) {
    for (const char* const text : {"", " ", ",", " , \t, "}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        astring medium = "before";
        EXPECT_FALSE(CssHelpers::ParseMedium(rest, medium));
        EXPECT_EQ(medium, "before");
        EXPECT_EQ(rest, text);
    }
}
