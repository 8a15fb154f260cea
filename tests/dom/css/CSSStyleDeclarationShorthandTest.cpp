// SPDX-License-Identifier: MIT

// Which properties the shorthands stand for. In the expectations those properties stand in
// brackets, as support::Parsed() gives them.

#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/DeclarationText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using support::ExpectParsed;
using support::Parsed;

const char* const kSides[] = {"top", "right", "bottom", "left"};

// A shorthand whose tokens go to the four sides, and what stands around the name of a side.
const struct FourSides {
    const char* name;
    const char* before;
    const char* after;
} kFourSides[] = {
    {"margin", "margin-", ""},
    {"padding", "padding-", ""},
    {"border-width", "border-", "-width"},
    {"border-color", "border-", "-color"},
    {"border-style", "border-", "-style"},
};

// The four properties with these values, in the order of the sides.
std::string Sides(const FourSides& shorthand, const std::vector<std::string>& values,
                  const char* priority = "") {
    std::string text;
    for (std::size_t i = 0; i < 4; ++i) {
        if (i > 0) text += "; ";
        text += std::string("[") + shorthand.before + kSides[i] + shorthand.after + ": " +
                values[i] + priority + "]";
    }
    return text;
}

}  // namespace

TEST(CSSShorthand, OneToFourTokensGoToTheFourSides) {
    const struct {
        const char* value;
        std::vector<std::string> sides;
    } kCases[] = {
        {"1px", {"1px", "1px", "1px", "1px"}},
        {"1px 2px", {"1px", "2px", "1px", "2px"}},
        {"1px 2px 3px", {"1px", "2px", "3px", "2px"}},
        {"1px 2px 3px 4px", {"1px", "2px", "3px", "4px"}},
        {"1px \t\n\r\f2px", {"1px", "2px", "1px", "2px"}},
        {"1px 2px \t\n\r\f", {"1px", "2px", "1px", "2px"}},
        {"auto red", {"auto", "red", "auto", "red"}},  // whatever they are
        {"solid #123 thin", {"solid", "#123", "thin", "#123"}},
        {"a,b c", {"a,b", "c", "a,b", "c"}},
    };
    for (const FourSides& shorthand : kFourSides) {
        for (const auto& c : kCases) {
            const std::string text = std::string(shorthand.name) + ": " + c.value;
            EXPECT_EQ(Parsed(text.c_str()), Sides(shorthand, c.sides)) << text;
        }
    }
}

TEST(CSSShorthand, FurtherTokensOfTheFourSidesAreIgnored) {
    for (const FourSides& shorthand : kFourSides) {
        for (const char* const rest : {" 5px", " 5px 6px", " x y z", " i"}) {
            const std::string text = std::string(shorthand.name) + ": 1px 2px 3px 4px" + rest;
            EXPECT_EQ(Parsed(text.c_str()), Sides(shorthand, {"1px", "2px", "3px", "4px"})) << text;
        }
    }
}

TEST(CSSShorthand, TokensEndAtWhiteSpaceAlsoInQuotesAndParentheses) {
    EXPECT_EQ(Parsed("margin: f(a b) c d"), Sides(kFourSides[0], {"f(a", "b)", "c", "d"}));
    EXPECT_EQ(Parsed("padding: \"a b\" c"), Sides(kFourSides[1], {"\"a", "b\"", "c", "b\""}));
}

TEST(CSSShorthand, ImportanceGoesToEachProperty) {
    for (const FourSides& shorthand : kFourSides)
        EXPECT_EQ(Parsed((std::string(shorthand.name) + ": 1px 2px !important").c_str()),
                  Sides(shorthand, {"1px", "2px", "1px", "2px"}, " !important"));
    EXPECT_EQ(Parsed("border-top: 1px solid red !important"),
              "[border-top-width: 1px !important]; [border-top-style: solid !important]; "
              "[border-top-color: red !important]");
    EXPECT_EQ(Parsed("background: red none !important"),
              "[background-color: red !important]; [background-image: none !important]");
    EXPECT_EQ(Parsed("margin: inherit !important"), "margin: inherit !important");
}

TEST(CSSShorthand, ThoseOfTheSidesAndBordersWantAValue) {
    for (const char* const name :
         {"margin", "padding", "border-width", "border-color", "border-style", "border-top",
          "border-right", "border-bottom", "border-left", "border"}) {
        for (const char* const rest : {":", ": ", ": \t\n;", ": !important", ":;a: b"}) {
            const std::string text = std::string(name) + rest;
            EXPECT_EQ(Parsed(text.c_str()), " | 12 Property value missing") << text;
        }
    }
}

// Nothing is said against it, and there is nothing to set.
TEST(CSSShorthand, ABackgroundWithoutAValueIsNothing) {
    ExpectParsed({{"background:", ""}, {"background: ; a: b", "a: b"}});
}

// Deliberate: a value that begins with "i" is kept whole, whatever the word and what follows.
TEST(CSSShorthand, DeliberateAValueThatBeginsWithILeavesTheShorthand) {
    for (const char* const name :
         {"margin", "padding", "border-width", "border-color", "border-style", "border-top",
          "border-right", "border-bottom", "border-left", "border", "background"}) {
        for (const char* const value :
             {"inherit", "i", "initial", "inset 1px red", "ivory none", "i 1 2 3 4 5 6"}) {
            const std::string text = std::string(name) + ": " + value;
            EXPECT_EQ(Parsed(text.c_str()), text);
        }
    }
}

TEST(CSSShorthand, OnlyASmallIAtTheBeginningLeavesTheShorthand) {
    ExpectParsed({
        {"margin: Inherit",
         "[margin-top: inherit]; [margin-right: inherit]; [margin-bottom: inherit]; "
         "[margin-left: inherit]"},
        {"margin: 1px inherit",
         "[margin-top: 1px]; [margin-right: inherit]; [margin-bottom: 1px]; "
         "[margin-left: inherit]"},
        {"background: INHERIT", "[background-color: inherit]"},
        {"border-top: 1px inset", "[border-top-width: 1px]; [border-top-style: inset]"},
    });
}

TEST(CSSShorthand, NamesAreComparedExactly) {
    ExpectParsed({
        {"MARGIN: 1px 2px", "MARGIN: 1px 2px"},
        {"Border: 1px", "Border: 1px"},
        {"margin-top: 1px 2px", "margin-top: 1px 2px"},
        {"border-top-width: 1px", "border-top-width: 1px"},
        {"borde: 1px", "borde: 1px"},
        {"border-image: 1px", "border-image: 1px"},
        {"background-color: red", "background-color: red"},
        {"font: 12px/1.5 a, b", "font: 12px/1.5 a, b"},
        {"list-style: none", "list-style: none"},
        {"outline: 1px solid red", "outline: 1px solid red"},
    });
}

// --- border-top and its like ---

TEST(CSSShorthand, ASideOfTheBorderTakesWidthStyleAndColourInThisOrder) {
    const struct {
        const char* value;
        const char* expected;  // what is set, as NAME:VALUE
    } kCases[] = {
        {"1px solid red", "width:1px style:solid color:red"},
        {"1px solid #123", "width:1px style:solid color:#123"},
        {"1px solid rgb(1,2,3)", "width:1px style:solid color:rgb(1,2,3)"},
        {"1px solid", "width:1px style:solid"},
        {"1px red", "width:1px color:red"},
        {"solid red", "style:solid color:red"},
        {"1px", "width:1px"},
        {"0", "width:0"},
        {"9", "width:9"},
        {"solid", "style:solid"},
        {"red", "color:red"},
        {"rouge", "color:rouge"},
        {"#x", "color:#x"},
        {"ridge", "style:ridge"},
        {"1px ridge ridge", "width:1px style:ridge color:ridge"},
        {"ridges", "color:ridges"},
        {"1px \t\n\r\f solid\tred", "width:1px style:solid color:red"},
        // What fails all its tests, and what stands in the wrong place, is dropped.
        {"blue", ""},
        {"thin solid red", ""},
        {".5em solid red", ""},
        {"+1px solid red", ""},
        {"-1px", ""},
        {"x", ""},
        {"red solid 1px", "color:red"},
        {"solid 1px red", "style:solid"},
        {"1px 2px solid", "width:1px"},
        {"1px SOLID red", "width:1px"},
        {"1px solids red", "width:1px"},
        {"1px red solid", "width:1px color:red"},
        {"1px solid Red", "width:1px style:solid"},
        // Only three tokens are looked at, and tokens end at blanks.
        {"1px solid blue red", "width:1px style:solid"},
        {"1px solid rgb(1, 2, 3)", "width:1px style:solid color:rgb(1,"},
    };
    for (const char* const side : kSides) {
        for (const auto& c : kCases) {
            const std::string name = std::string("border-") + side;
            SCOPED_TRACE(name + ": " + c.value);
            std::string expected;
            std::string rest = c.expected;
            for (std::size_t end = 0; !rest.empty(); rest.erase(0, end)) {
                end = rest.find(' ') == std::string::npos ? rest.size() : rest.find(' ') + 1;
                const std::string one = rest.substr(0, rest.find(' '));
                const std::size_t colon = one.find(':');
                expected += (expected.empty() ? "[" : "; [") + name + "-" + one.substr(0, colon) +
                            ": " + one.substr(colon + 1) + "]";
            }
            EXPECT_EQ(Parsed((name + ": " + c.value).c_str()), expected);
        }
    }
}

TEST(CSSShorthand, TheStylesOfABorderAreTen) {
    for (const char* const style : {"none", "hidden", "dotted", "dashed", "solid", "double",
                                    "groove", "ridge", "inset", "outset"})
        EXPECT_EQ(Parsed((std::string("border-left: 0 ") + style).c_str()),
                  std::string("[border-left-width: 0]; [border-left-style: ") + style + "]");
    for (const char* const style : {"wavy", "dot-dash", "None", "hidde", "outsets", "auto"})
        EXPECT_EQ(Parsed((std::string("border-left: 0 ") + style).c_str()),
                  "[border-left-width: 0]")
            << style;
}

// Deliberate: of the names of colours only those that begin with "r" are taken.
TEST(CSSShorthand, DeliberateAColourNameOfASideBeginsWithR) {
    for (const char* const color : {"blue", "black", "green", "transparent", "currentColor"})
        EXPECT_EQ(Parsed((std::string("border-top: 1px solid ") + color).c_str()),
                  "[border-top-width: 1px]; [border-top-style: solid]")
            << color;
    EXPECT_EQ(Parsed("border-top: 1px solid royalblue"),
              "[border-top-width: 1px]; [border-top-style: solid]; [border-top-color: royalblue]");
}

// --- border ---

TEST(CSSShorthand, ABorderIsSetOnFourSides) {
    const std::string widths =
        "[border-top-width: 1px]; [border-right-width: 1px]; "
        "[border-bottom-width: 1px]; [border-left-width: 1px]";
    const std::string styles =
        "[border-top-style: solid]; [border-right-style: solid]; "
        "[border-bottom-style: solid]; [border-left-style: solid]";
    const std::string colors =
        "[border-top-color: red]; [border-right-color: red]; "
        "[border-bottom-color: red]; [border-left-color: red]";
    const struct {
        const char* text;
        std::string expected;
    } kCases[] = {
        {"border: 1px solid red", widths + "; " + styles + "; " + colors},
        {"border: 1px solid", widths + "; " + styles},
        {"border: solid red", styles + "; " + colors},
        {"border: 1px red", widths + "; " + colors},
        {"border: 1px", widths},
        {"border: solid", styles},
        {"border: red", colors},
        {"border: solid 1px red", styles},
        {"border: red solid 1px", colors},
        {"border: thin solid red", ""},
        {"border: blue", ""},
        {"border: 1px solid blue red", widths + "; " + styles},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Parsed(c.text), c.expected);
    }
}

// --- background ---

TEST(CSSShorthand, ABackgroundBeginsWithAColourOrAnImage) {
    ExpectParsed({
        {"background: red", "[background-color: red]"},
        {"background: #123", "[background-color: #123]"},
        {"background: url", "[background-color: url]"},
        {"background: u", "[background-color: u]"},
        {"background: nonesuch", "[background-color: nonesuch]"},
        {"background: no-repeat", "[background-color: no-repeat]"},
        {"background: top left", "[background-color: top]"},
        {"background: none", "[background-image: none]"},
        {"background: NoNe", "[background-image: NoNe]"},
        {"background: url(a.png)", "[background-image: url(\"a.png\")]"},
        {"background: URL(a.png)", "[background-image: URL(a.png)]"},
        {"background: uRl(", "[background-image: uRl(]"},
        {"background: red none", "[background-color: red]; [background-image: none]"},
        {"background: red url(a)", "[background-color: red]; [background-image: url(\"a\")]"},
        {"background: red URL(a)", "[background-color: red]; [background-image: URL(a)]"},
        {"background: red u", "[background-color: red]; [background-image: u]"},
        {"background: red Unset", "[background-color: red]; [background-image: Unset]"},
        {"background: red NO", "[background-color: red]; [background-image: NO]"},
    });
}

// What stands in the place of the image is taken for one by its first letter alone.
TEST(CSSShorthand, ABackgroundWithoutAnImageBehindItsColourEndsThere) {
    ExpectParsed({
        {"background: red top left", "[background-color: red]"},
        {"background: red repeat-x", "[background-color: red]"},
        {"background: red fixed url(a)", "[background-color: red]"},
        {"background: red x none", "[background-color: red]"},
        {"background: red no-repeat fixed",
         "[background-color: red]; [background-image: no-repeat]; "
         "[background-attachment: fixed]"},
    });
}

TEST(CSSShorthand, TheRestOfABackgroundIsToldByFirstLetters) {
    ExpectParsed({
        {"background: none no-repeat fixed",
         "[background-image: none]; [background-repeat: no-repeat]; "
         "[background-attachment: fixed]"},
        {"background: none fixed no-repeat",
         "[background-image: none]; [background-attachment: fixed]; "
         "[background-repeat: no-repeat]"},
        {"background: none Repeat Scroll",
         "[background-image: none]; [background-repeat: Repeat]; "
         "[background-attachment: Scroll]"},
        {"background: none N F",
         "[background-image: none]; [background-repeat: N]; [background-attachment: F]"},
        {"background: none s S",
         "[background-image: none]; [background-attachment: s]; [background-attachment: S]"},
        {"background: none repeat-x repeat-y",
         "[background-image: none]; [background-repeat: repeat-x]; "
         "[background-repeat: repeat-y]"},
        {"background: none left scroll",
         "[background-image: none]; [background-attachment: scroll]"},
        {"background: none x y z w", "[background-image: none]"},
        {"background: none -1px scroll",
         "[background-image: none]; [background-attachment: scroll]"},
        {"background: none right top", "[background-image: none]; [background-repeat: right]"},
    });
}

TEST(CSSShorthand, APositionIsTwoTokens) {
    ExpectParsed({
        {"background: none 0 0", "[background-image: none]; [background-position: 0 0]"},
        {"background: none 5px 50%", "[background-image: none]; [background-position: 5px 50%]"},
        {"background: none top left", "[background-image: none]; [background-position: top left]"},
        {"background: none Top left", "[background-image: none]; [background-position: Top left]"},
        {"background: none center bottom",
         "[background-image: none]; [background-position: center bottom]"},
        {"background: none Center x", "[background-image: none]; [background-position: Center x]"},
        {"background: none bottom right",
         "[background-image: none]; [background-position: bottom right]"},
        {"background: none Bottom repeat",
         "[background-image: none]; [background-position: Bottom repeat]"},
        {"background: none 0 \t\n 1px", "[background-image: none]; [background-position: 0 1px]"},
        {"background: none left top repeat",
         "[background-image: none]; [background-position: top repeat]"},
        {"background: none scroll 1px 2px",
         "[background-image: none]; [background-attachment: scroll]; "
         "[background-position: 1px 2px]"},
        {"background: none 0 0 0 0",
         "[background-image: none]; [background-position: 0 0]; [background-position: 0 0]"},
        // One that is the last token is none.
        {"background: none top", "[background-image: none]"},
        {"background: none 0", "[background-image: none]"},
        {"background: none 0 0 0", "[background-image: none]; [background-position: 0 0]"},
    });
}

TEST(CSSShorthand, FurtherTokensOfABackgroundAreIgnored) {
    ExpectParsed({
        {"background: red url(a) top left no-repeat",
         "[background-color: red]; [background-image: url(\"a\")]; "
         "[background-position: top left]; [background-repeat: no-repeat]"},
        {"background: red url(a) top left no-repeat fixed",
         "[background-color: red]; [background-image: url(\"a\")]; "
         "[background-position: top left]; [background-repeat: no-repeat]"},
        // The fifth token is the last one that counts, so it begins no position.
        {"background: red none fixed repeat 0 0",
         "[background-color: red]; [background-image: none]; [background-attachment: fixed]; "
         "[background-repeat: repeat]"},
        {"background: url(a b) repeat",
         "[background-image: url(a]; [background-position: b) repeat]"},
    });
}
