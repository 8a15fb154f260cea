// SPDX-License-Identifier: MIT
// What Dom::CSS::ParsePrimitive() takes a text for.
#include <espalier/dom/css/CSSPrimitiveValue.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Type = CSSPrimitiveValue::UnitTypes;

struct TextCase {
    const char* text;
    Type type;
    const char* string;
};

struct NumberCase {
    const char* text;
    Type type;
    float number;
};

template <std::size_t kCount>
void ExpectTexts(const TextCase (&cases)[kCount]) {
    for (const TextCase& c : cases) {
        SCOPED_TRACE(c.text);
        float number = -77;
        astring string;
        EXPECT_EQ(Dom::CSS::ParsePrimitive(c.text, number, string), c.type);
        EXPECT_EQ(string, c.string);
        EXPECT_EQ(number, -77.0F) << "it is no number";
    }
}

template <std::size_t kCount>
void ExpectNumbers(const NumberCase (&cases)[kCount]) {
    for (const NumberCase& c : cases) {
        SCOPED_TRACE(c.text);
        float number = -77;
        astring string = "before";
        EXPECT_EQ(Dom::CSS::ParsePrimitive(c.text, number, string), c.type);
        EXPECT_FLOAT_EQ(number, c.number);
        EXPECT_EQ(string, "before") << "it is no string";
    }
}

template <std::size_t kCount>
void ExpectUnknown(const char* const (&texts)[kCount]) {
    for (const char* const text : texts) {
        SCOPED_TRACE(text);
        float number = 0;
        astring string;
        EXPECT_EQ(Dom::CSS::ParsePrimitive(text, number, string), CSSPrimitiveValue::CSS_UNKNOWN);
    }
}

}  // namespace

TEST(ParsePrimitive, AnEmptyTextIsUnknown) {
    const char* const kUnknown[] = {""};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, NumbersMayHaveASignAndAFraction) {
    const NumberCase kCases[] = {
        {"0", CSSPrimitiveValue::CSS_NUMBER, 0},
        {"1", CSSPrimitiveValue::CSS_NUMBER, 1},
        {"9", CSSPrimitiveValue::CSS_NUMBER, 9},
        {"12", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"007", CSSPrimitiveValue::CSS_NUMBER, 7},
        {"1.5", CSSPrimitiveValue::CSS_NUMBER, 1.5F},
        {"0.25", CSSPrimitiveValue::CSS_NUMBER, 0.25F},
        {"10.0625", CSSPrimitiveValue::CSS_NUMBER, 10.0625F},
        {"+3", CSSPrimitiveValue::CSS_NUMBER, 3},
        {"-3", CSSPrimitiveValue::CSS_NUMBER, -3},
        {"-0.5", CSSPrimitiveValue::CSS_NUMBER, -0.5F},
        {"123456789", CSSPrimitiveValue::CSS_NUMBER, 123456789.0F},
        {"0.0001", CSSPrimitiveValue::CSS_NUMBER, 0.0001F},
    };
    ExpectNumbers(kCases);
}

TEST(ParsePrimitive, NumbersEndBeforeThese) {
    const NumberCase kCases[] = {
        {"12 ", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12\t", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12\n", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12\r", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12\f", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12,3", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12)", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12;x", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12}", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12 px", CSSPrimitiveValue::CSS_NUMBER, 12},
        {"12px,3", CSSPrimitiveValue::CSS_PX, 12},
        {"12px;x", CSSPrimitiveValue::CSS_PX, 12},
        {"12px)", CSSPrimitiveValue::CSS_PX, 12},
        {"12px}", CSSPrimitiveValue::CSS_PX, 12},
        {"12px x", CSSPrimitiveValue::CSS_PX, 12},
        {"12%\n", CSSPrimitiveValue::CSS_PERCENTAGE, 12},
        {"12\v", CSSPrimitiveValue::CSS_DIMENSION, 12},
    };
    ExpectNumbers(kCases);
}

TEST(ParsePrimitive, NumbersHaveAUnit) {
    const NumberCase kCases[] = {
        {"1.5%", CSSPrimitiveValue::CSS_PERCENTAGE, 1.5F},
        {"1.5em", CSSPrimitiveValue::CSS_EMS, 1.5F},
        {"1.5ex", CSSPrimitiveValue::CSS_EXS, 1.5F},
        {"1.5px", CSSPrimitiveValue::CSS_PX, 1.5F},
        {"1.5cm", CSSPrimitiveValue::CSS_CM, 1.5F},
        {"1.5mm", CSSPrimitiveValue::CSS_MM, 1.5F},
        {"1.5in", CSSPrimitiveValue::CSS_IN, 1.5F},
        {"1.5pt", CSSPrimitiveValue::CSS_PT, 1.5F},
        {"1.5pc", CSSPrimitiveValue::CSS_PC, 1.5F},
        {"1.5deg", CSSPrimitiveValue::CSS_DEG, 1.5F},
        {"1.5rad", CSSPrimitiveValue::CSS_RAD, 1.5F},
        {"1.5grad", CSSPrimitiveValue::CSS_GRAD, 1.5F},
        {"1.5ms", CSSPrimitiveValue::CSS_MS, 1.5F},
        {"1.5s", CSSPrimitiveValue::CSS_S, 1.5F},
        {"1.5Hz", CSSPrimitiveValue::CSS_HZ, 1.5F},
        {"1.5kHz", CSSPrimitiveValue::CSS_KHZ, 1.5F},
        {"-12px", CSSPrimitiveValue::CSS_PX, -12},
        {"+12px", CSSPrimitiveValue::CSS_PX, 12},
    };
    ExpectNumbers(kCases);
}

TEST(ParsePrimitive, OtherUnitsAreADimension) {
    for (const char* const unit :
         {"PX", "Px",  "EM",     "hz",  "HZ",  "khz", "KHz",      "e",    "e3", "exx",   "m",
          "p",  "pxx", "px/1.5", "rem", "vh",  "fr",  "dpi",      "turn", "d",  "grads", "k",
          "/2", ".5",  ".",      "%%",  "px%", "-1",  "\xC3\xA9", "(x",   "{",  "'",     "!"}) {
        const std::string text = std::string("12") + (unit[0] == '.' ? ".25" : "") + unit;
        SCOPED_TRACE(text);
        float number = 0;
        astring string = "before";
        EXPECT_EQ(Dom::CSS::ParsePrimitive(text, number, string), CSSPrimitiveValue::CSS_DIMENSION);
        EXPECT_FLOAT_EQ(number, unit[0] == '.' ? 12.25F : 12.0F);
        EXPECT_EQ(string, "before");
    }
}

TEST(ParsePrimitive, ANumberEndsWithADigit) {
    const char* const kUnknown[] = {"5.",  "5.px", "5. ", "+",        "-",
                                    "- 1", "+px",  "-x",  "-moz-box", "--a"};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, StringsStandInQuotes) {
    const TextCase kCases[] = {
        {"'a b'", CSSPrimitiveValue::CSS_STRING, "a b"},
        {"\"a b\"", CSSPrimitiveValue::CSS_STRING, "a b"},
        {"''", CSSPrimitiveValue::CSS_STRING, ""},
        {"'a' b", CSSPrimitiveValue::CSS_STRING, "a"},
        {"'a\\'\\42'", CSSPrimitiveValue::CSS_STRING, "a'B"},
    };
    ExpectTexts(kCases);
    const char* const kUnknown[] = {"'", "\"", "'a", "\"a'"};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, ColoursAreKeptAsTheyStand) {
    const TextCase kCases[] = {
        {"#abc", CSSPrimitiveValue::CSS_RGBCOLOR, "#abc"},
        {"#AABBCC", CSSPrimitiveValue::CSS_RGBCOLOR, "#AABBCC"},
        {"#12345678", CSSPrimitiveValue::CSS_RGBCOLOR, "#123456"},
        {"rgb(1,2,3)", CSSPrimitiveValue::CSS_RGBCOLOR, "rgb(1,2,3)"},
        {"rgb( 1, 2, 3 )", CSSPrimitiveValue::CSS_RGBCOLOR, "rgb( 1, 2, 3 )"},
    };
    ExpectTexts(kCases);
    const char* const kUnknown[] = {"#", "#ffff", "#ggg", "rgb(256,0,0)", "rgb(1%,2%,3%)", "rgb("};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, FunctionsHaveTheirArgument) {
    const TextCase kCases[] = {
        {"attr(title)", CSSPrimitiveValue::CSS_ATTR, "title"},
        {"attr( title )", CSSPrimitiveValue::CSS_ATTR, "title"},
        {"counter(x)", CSSPrimitiveValue::CSS_COUNTER, "x"},
        {"counter( x )", CSSPrimitiveValue::CSS_COUNTER, "x"},
        {"url(a.png)", CSSPrimitiveValue::CSS_URI, "a.png"},
        {"url( 'a b' )", CSSPrimitiveValue::CSS_URI, "a b"},
    };
    ExpectTexts(kCases);
    const char* const kUnknown[] = {"attr()",        "attr(9)", "attr(a b)", "counter()",
                                    "counter(x, y)", "url(",    "url(a b)",  "url('a)"};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, ARectangleHasFourSides) {
    const TextCase kCases[] = {
        {"rect(1px,2px,3px,4px)", CSSPrimitiveValue::CSS_RECT, "1px,2px,3px,4px"},
        {"rect( 1px, 2em, 3cm, 4pt )", CSSPrimitiveValue::CSS_RECT, "1px, 2em, 3cm, 4pt"},
        {"rect(1px 2px 3px 4px)", CSSPrimitiveValue::CSS_RECT, "1px 2px 3px 4px"},
        {"rect(auto, auto, auto, auto)", CSSPrimitiveValue::CSS_RECT, "auto, auto, auto, auto"},
        {"rect(-1px, auto 2px,3px)", CSSPrimitiveValue::CSS_RECT, "-1px, auto 2px,3px"},
    };
    ExpectTexts(kCases);
    const char* const kUnknown[] = {"rect()",
                                    "rect(1px)",
                                    "rect(1px,2px,3px)",
                                    "rect(1px,2px,3px,4px,5px)",
                                    "rect(1px,2px,3px,4px",
                                    "rect(a,b,c,d)",
                                    "rect(1px,2px,3px,4deg)",
                                    "rect(1px;2px;3px;4px)",
                                    "rect(1px,2px,3px,'4px')"};
    ExpectUnknown(kUnknown);
}

TEST(ParsePrimitive, WordsAreIdentifiers) {
    const TextCase kCases[] = {
        {"x", CSSPrimitiveValue::CSS_IDENT, "x"},
        {"bold", CSSPrimitiveValue::CSS_IDENT, "bold"},
        {"bold ", CSSPrimitiveValue::CSS_IDENT, "bold"},
        {"bold \t\r\n\f", CSSPrimitiveValue::CSS_IDENT, "bold"},
        {"_x", CSSPrimitiveValue::CSS_IDENT, "_x"},
        {"no-repeat", CSSPrimitiveValue::CSS_IDENT, "no-repeat"},
        {"inherit", CSSPrimitiveValue::CSS_IDENT, "inherit"},
        {"red", CSSPrimitiveValue::CSS_IDENT, "red"},
        {"auto", CSSPrimitiveValue::CSS_IDENT, "auto"},
        {"center", CSSPrimitiveValue::CSS_IDENT, "center"},
        {"underline", CSSPrimitiveValue::CSS_IDENT, "underline"},
        {"attr", CSSPrimitiveValue::CSS_IDENT, "attr"},
        {"rgb", CSSPrimitiveValue::CSS_IDENT, "rgb"},
        {"\xC3\xA9", CSSPrimitiveValue::CSS_IDENT, "\xC3\xA9"},
        {"\\41 b", CSSPrimitiveValue::CSS_IDENT, "Ab"},
    };
    ExpectTexts(kCases);
}

TEST(ParsePrimitive, WhatIsNothingElseIsAString) {
    const TextCase kCases[] = {
        {"bold x", CSSPrimitiveValue::CSS_STRING, "bold x"},
        {" bold", CSSPrimitiveValue::CSS_STRING, " bold"},
        {" ", CSSPrimitiveValue::CSS_STRING, " "},
        {"translate(1px)", CSSPrimitiveValue::CSS_STRING, "translate(1px)"},
        {"*", CSSPrimitiveValue::CSS_STRING, "*"},
        {"!x", CSSPrimitiveValue::CSS_STRING, "!x"},
        {"(x)", CSSPrimitiveValue::CSS_STRING, "(x)"},
        {"x,y", CSSPrimitiveValue::CSS_STRING, "x,y"},
        {"RGB(1,2,3)", CSSPrimitiveValue::CSS_STRING, "RGB(1,2,3)"},
        {"URL(a)", CSSPrimitiveValue::CSS_STRING, "URL(a)"},
        {"ATTR(a)", CSSPrimitiveValue::CSS_STRING, "ATTR(a)"},
    };
    ExpectTexts(kCases);
}

TEST(ParsePrimitive, DeliberateALengthWithoutADigitInFrontIsAString) {
    const TextCase kCases[] = {
        {".5em", CSSPrimitiveValue::CSS_STRING, ".5em"},
        {".5", CSSPrimitiveValue::CSS_STRING, ".5"},
    };
    ExpectTexts(kCases);
}

TEST(ParsePrimitive, DeliberateOtherFunctionsWithTheseLettersLoseTheirArguments) {
    const TextCase kCases[] = {
        {"rgba(1,2,3,.5)", CSSPrimitiveValue::CSS_IDENT, "rgba"},
        {"calc(1px + 2px)", CSSPrimitiveValue::CSS_IDENT, "calc"},
        {"counters(x, '.')", CSSPrimitiveValue::CSS_IDENT, "counters"},
        {"attribute(x)", CSSPrimitiveValue::CSS_IDENT, "attribute"},
        {"rotate(1deg)", CSSPrimitiveValue::CSS_IDENT, "rotate"},
        {"uri(a)", CSSPrimitiveValue::CSS_IDENT, "uri"},
        {"url (a)", CSSPrimitiveValue::CSS_IDENT, "url"},
        {"a b", CSSPrimitiveValue::CSS_IDENT, "a"},
        {"arial, helvetica", CSSPrimitiveValue::CSS_IDENT, "arial"},
    };
    ExpectTexts(kCases);
}

TEST(ParsePrimitive, TheTextMayBeTheResult) {
    const std::string word(100, 'x');
    float number = 0;
    astring text = "url(  " + word + "  )";
    EXPECT_EQ(Dom::CSS::ParsePrimitive(text, number, text), CSSPrimitiveValue::CSS_URI);
    EXPECT_EQ(text, word);
}

TEST(ParsePrimitive, MuchTextTakesLinearTime) {
    const std::string much(1U << 20, 'x');
    const struct {
        std::string text;
        Type type;
    } kCases[] = {
        {much, CSSPrimitiveValue::CSS_IDENT},
        {much + "!", CSSPrimitiveValue::CSS_STRING},
        {"'" + much + "'", CSSPrimitiveValue::CSS_STRING},
        {"'" + much, CSSPrimitiveValue::CSS_UNKNOWN},
        {"url(" + much + ")", CSSPrimitiveValue::CSS_URI},
        {"url(" + much, CSSPrimitiveValue::CSS_UNKNOWN},
        {"12" + much, CSSPrimitiveValue::CSS_DIMENSION},
        {std::string(1U << 20, '1'), CSSPrimitiveValue::CSS_NUMBER},
        {"rect(" + much, CSSPrimitiveValue::CSS_UNKNOWN},
        {"attr(" + much + ")", CSSPrimitiveValue::CSS_ATTR},
        {"#" + std::string(1U << 20, 'a'), CSSPrimitiveValue::CSS_RGBCOLOR},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text.substr(0, 9));
        float number = 0;
        astring string;
        EXPECT_EQ(Dom::CSS::ParsePrimitive(c.text, number, string), c.type);
    }
}
