// SPDX-License-Identifier: MIT

// What holds for all shorthands, and those of boxes with their borders and backgrounds.

#include "dom/css/computed/ShorthandExpansion.h"
#include "dom/css/computed/ShorthandValues.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using Dom::CSS::detail::ExpandShorthand;
using Dom::CSS::detail::Longhand;
using Dom::CSS::detail::LonghandsOf;
using support::ExpectInvalid;
using support::ExpectValues;
using support::kInvalid;
using support::ValueCase;
using support::ValueOf;
using support::Values;

constexpr const char* kAll[] = {"animation",
                                "background",
                                "border",
                                "border-bottom",
                                "border-color",
                                "border-image",
                                "border-left",
                                "border-radius",
                                "border-right",
                                "border-style",
                                "border-top",
                                "border-width",
                                "column-rule",
                                "columns",
                                "flex",
                                "flex-flow",
                                "font",
                                "gap",
                                "grid-area",
                                "grid-column",
                                "grid-gap",
                                "grid-row",
                                "inset",
                                "list-style",
                                "margin",
                                "outline",
                                "overflow",
                                "overscroll-behavior",
                                "padding",
                                "place-content",
                                "place-items",
                                "place-self",
                                "scroll-margin",
                                "scroll-padding",
                                "text-decoration",
                                "text-emphasis",
                                "transition"};

}  // namespace

TEST(ShorthandExpansion, OtherPropertiesAreNoShorthands) {
    for (const char* const name : {"", "color", "margin-top", "marginx", "Margin", "--margin"}) {
        EXPECT_TRUE(LonghandsOf(name).empty()) << name;
        EXPECT_EQ(Values(name, "inherit"), kInvalid) << name;
    }
}

// CSS Cascading Level 3 section 3.1: a keyword for all properties is for all longhands.
TEST(ShorthandExpansion, KeywordsForAllPropertiesGoToAllLonghands) {
    for (const char* const name : kAll) {
        const auto longhands = LonghandsOf(name);
        ASSERT_GE(longhands.size(), 2U) << name;
        for (const char* const keyword : {"inherit", "initial", "unset", "revert", "INHERIT"}) {
            std::string expected = keyword;
            for (std::size_t i = 1; i < longhands.size(); ++i)
                expected += std::string(" | ") + keyword;
            EXPECT_EQ(Values(name, keyword), expected) << name;
            EXPECT_EQ(Values(name, std::string(keyword) + " " + keyword), kInvalid) << name;
        }
    }
}

TEST(ShorthandExpansion, NothingIsMadeOfWhatCannotBeAValue) {
    for (const char* const name : kAll) {
        for (const char* const value : {"",
                                        " ",
                                        "var(--a)",
                                        "VAR(--a)",
                                        "calc(1px + var(--a))",
                                        "foo(bar)",
                                        ",",
                                        "/",
                                        "!",
                                        "{}",
                                        "(",
                                        ")",
                                        "\"",
                                        "1px 2px 3px 4px 5px 6px 7px 8px 9px",
                                        "inherit none",
                                        "none inherit",
                                        "none,",
                                        ",none",
                                        "1px/",
                                        "/1px",
                                        "#",
                                        "@a",
                                        ";",
                                        "<",
                                        "1qq"}) {
            EXPECT_EQ(Values(name, value), kInvalid) << name << ": " << value;
        }
    }
}

TEST(ShorthandExpansion, ResultsAreAddedBehindWhatIsThere) {
    std::vector<Longhand> result;
    ASSERT_TRUE(ExpandShorthand("gap", "1px 2px", result));
    ASSERT_FALSE(ExpandShorthand("gap", "red", result));
    ASSERT_TRUE(ExpandShorthand("overflow", "auto", result));
    ASSERT_EQ(result.size(), 4U);
    EXPECT_EQ(result[1].name, "column-gap");
    EXPECT_EQ(result[1].value, "2px");
    EXPECT_EQ(result[3].name, "overflow-y");
    EXPECT_EQ(result[3].value, "auto");
}

// CSS 2.1 sections 8.3 and 8.4.
TEST(ShorthandExpansion, FourSides) {
    const std::vector<ValueCase> both = {
        {"1px", "1px | 1px | 1px | 1px"},
        {"1px 2px", "1px | 2px | 1px | 2px"},
        {"1px 2px 3px", "1px | 2px | 3px | 2px"},
        {"1px 2em 3% 0", "1px | 2em | 3% | 0"},
        {" 1PX\t\n\r\f2px ", "1PX | 2px | 1PX | 2px"},
        {"calc(1px + 2%) .5em", "calc(1px + 2%) | .5em | calc(1px + 2%) | .5em"},
        {"+1px 1e2px", "+1px | 1e2px | +1px | 1e2px"},
        {"max( 1px , 2px )0", "max( 1px , 2px ) | 0 | max( 1px , 2px ) | 0"},
    };
    ExpectValues("margin", {{"auto -1px", "auto | -1px | auto | -1px"}});
    ExpectInvalid("padding", {"auto", "-1px", "1px -1%"});
    ExpectValues("inset", {{"auto -1px", "auto | -1px | auto | -1px"}});
    for (const char* const name : {"margin", "padding", "inset"}) {
        ExpectValues(name, both);
        ExpectInvalid(name, {"1", "1px 2", "1px,2px", "1px/2px", "red", "1s", "none", "'1px'",
                             "1px 2px 3px 4px 5px", "url(a)", "#000", "1px !important"});
    }
}

TEST(ShorthandExpansion, PartsOfBordersByKind) {
    ExpectValues("border-width", {{"thin 1px", "thin | 1px | thin | 1px"},
                                  {"MEDIUM", "MEDIUM | MEDIUM | MEDIUM | MEDIUM"}});
    ExpectInvalid("border-width", {"1%", "-1px", "solid", "auto", "2"});
    ExpectValues("border-style", {{"none solid double inset", "none | solid | double | inset"}});
    ExpectInvalid("border-style", {"1px", "auto", "wavy"});
    ExpectValues("border-color", {{"red #abc", "red | #abc | red | #abc"},
                                  {"rgb(1, 2, 3) transparent currentColor",
                                   "rgb(1, 2, 3) | transparent | currentColor | transparent"},
                                  {"#ABCD #abcdef12 ButtonFace hsl(1 2% 3%)",
                                   "#ABCD | #abcdef12 | ButtonFace | hsl(1 2% 3%)"}});
    ExpectInvalid("border-color", {"#ab", "#abcde", "#xyz", "1px", "reddish", "none", "invert"});
}

// CSS Backgrounds Level 3 section 3.4.
TEST(ShorthandExpansion, Borders) {
    for (const char* const name :
         {"border-top", "border-right", "border-bottom", "border-left", "column-rule"}) {
        ExpectValues(name, {{"1px solid blue", "1px | solid | blue"},
                            {"blue 1px solid", "1px | solid | blue"},
                            {"SOLID", "medium | SOLID | currentcolor"},
                            {"none", "medium | none | currentcolor"},
                            {"0", "0 | none | currentcolor"},
                            {"rgba(0,0,0,.5)thin", "thin | none | rgba(0,0,0,.5)"}});
        ExpectInvalid(name, {"1px 2px", "solid dashed", "red blue", "1px solid red x", "auto",
                             "1px, solid", "-1px solid"});
    }
    EXPECT_EQ(Values("border", "1px solid blue"),
              "1px | 1px | 1px | 1px | solid | solid | solid | solid | blue | blue | blue | blue | "
              "none | 100% | 1 | 0 | stretch");
    EXPECT_EQ(Values("border", "none"),
              "medium | medium | medium | medium | none | none | none | none | currentcolor | "
              "currentcolor | currentcolor | currentcolor | none | 100% | 1 | 0 | stretch");
    EXPECT_EQ(LonghandsOf("border")[5], "border-right-style");
    ExpectInvalid("border", {"1px 2px", "solid solid", "1px solid red red"});
    ExpectValues("outline",
                 {{"1px auto red", "1px | auto | red"}, {"none", "medium | none | currentcolor"}});
    ExpectInvalid("outline", {"hidden", "1% solid"});
}

TEST(ShorthandExpansion, BorderRadius) {
    ExpectValues("border-radius", {{"1px", "1px | 1px | 1px | 1px"},
                                   {"1px 2px 3px", "1px | 2px | 3px | 2px"},
                                   {"1px/2px", "1px 2px | 1px 2px | 1px 2px | 1px 2px"},
                                   {"1px 2px / 2px 2px 3% 4%", "1px 2px | 2px | 1px 3% | 2px 4%"}});
    ExpectInvalid("border-radius", {"-1px", "auto", "1px / ", "/ 1px", "1px / 2px / 3px",
                                    "1px 2px 3px 4px 5px", "1px / 1px 2px 3px 4px 5px"});
}

TEST(ShorthandExpansion, BorderImage) {
    ExpectValues("border-image",
                 {{"none", "none | 100% | 1 | 0 | stretch"},
                  {"url(a.png) 30", "url(a.png) | 30 | 1 | 0 | stretch"},
                  {"30 fill url(a) round", "url(a) | 30 fill | 1 | 0 | round"},
                  {"fill 1 2% 3 4/1px auto/2 round space linear-gradient(red, blue)",
                   "linear-gradient(red, blue) | fill 1 2% 3 4 | 1px auto | 2 | round space"},
                  {"30 / / 2px", "none | 30 | 1 | 2px | stretch"}});
    ExpectInvalid("border-image",
                  {"url(a) url(b)", "30 url(a) 30", "fill", "30 /", "30 / /", "1 2 3 4 5",
                   "round 1 space", "30 / 1px / auto", "/ 2px", "fill 1 fill", "-1"});
}

// CSS Backgrounds Level 3 section 2.10. Image, position, size, repetition, attachment, origin, clip
// and colour.
TEST(ShorthandExpansion, BackgroundOfOneLayer) {
    ExpectValues(
        "background",
        {{"red", "none | 0% 0% | auto | repeat | scroll | padding-box | border-box | red"},
         {"none", "none | 0% 0% | auto | repeat | scroll | padding-box | border-box | transparent"},
         {"url(a.png) no-repeat",
          "url(a.png) | 0% 0% | auto | no-repeat | scroll | padding-box | border-box | "
          "transparent"},
         {"no-repeat url( 'a b' )red center/cover fixed",
          "url( 'a b' ) | center | cover | no-repeat | fixed | padding-box | border-box | red"},
         {"left 1px / auto 50% repeat-x local content-box",
          "none | left 1px | auto 50% | repeat-x | local | content-box | content-box | "
          "transparent"},
         {"padding-box space round border-box 0 0",
          "none | 0 0 | auto | space round | scroll | padding-box | border-box | transparent"},
         {"LINEAR-gradient(to right, red 0%, rgba(1,2,3,.5) 100%)",
          "LINEAR-gradient(to right, red 0%, rgba(1,2,3,.5) 100%) | 0% 0% | auto | repeat | scroll "
          "| padding-box | border-box | transparent"}});
    ExpectInvalid("background", {"red blue", "url(a) url(b)", "url(a) none", "no-repeat red repeat",
                                 "repeat-x repeat-y", "repeat repeat-x", "1px red 1px",
                                 "fixed scroll", "border-box padding-box content-box", "/ cover",
                                 "red / cover", "left / -1px", "left / cover auto", "left /",
                                 "left / 1px 2px 3px", "solid", "rgb(1,2,3", "url(a b)", "1s"});
}

TEST(ShorthandExpansion, PositionsOfBackgrounds) {
    for (const char* const position : {"left",
                                       "top",
                                       "center",
                                       "1px",
                                       "5%",
                                       "left top",
                                       "top left",
                                       "center top",
                                       "top center",
                                       "left center",
                                       "center left",
                                       "center center",
                                       "1px 2px",
                                       "left 2px",
                                       "1px top",
                                       "center 1px",
                                       "1px center",
                                       "right 1px bottom 2px",
                                       "bottom 2px right 1px",
                                       "left 1px top",
                                       "left top 1px",
                                       "center bottom 1px",
                                       "bottom 1px center",
                                       "calc(1px + 1%) 0"}) {
        EXPECT_EQ(ValueOf("background-position", "background", position), position);
    }
    ExpectInvalid("background",
                  {"left left", "top bottom", "left right", "top 1px", "1px left", "bottom 50%",
                   "left 1px right", "top 1px bottom 2px", "center 1px top", "1px left top",
                   "left 1px 2px", "left 1px 2px top", "1px 2px 3px", "1px 2px 3px 4px",
                   "left 1px top 2px 3px", "center center center", "left center 1px"});
}

TEST(ShorthandExpansion, BackgroundsOfSeveralLayers) {
    ExpectValues(
        "background",
        {{"url(a,b), none 1px 2px / contain no-repeat, round fixed border-box red",
          "url(a,b), none, none | 0% 0%, 1px 2px, 0% 0% | auto, contain, auto | repeat, no-repeat, "
          "round | scroll, scroll, fixed | padding-box, padding-box, border-box | border-box, "
          "border-box, border-box | red"},
         {"image-set('a' 1x, 'b' 2x),url(b)",
          "image-set('a' 1x, 'b' 2x), url(b) | 0% 0%, 0% 0% | auto, auto | repeat, repeat | "
          "scroll, "
          "scroll | padding-box, padding-box | border-box, border-box | transparent"}});
    ExpectInvalid("background", {"red, url(a)", "red, blue", "url(a),", ",url(a)", "url(a),,red"});
}

// CSS Fonts Level 3 section 3.7. Style, variant, weight, stretch, size, height and family; the
// others are set back.
// CSS 2.1 section 12.5.1. Position, image and type.
// CSS Flexible Box Layout Level 1 section 7.1. Growth, shrinkage and basis.
// Deliberate: CSS Flexible Box Layout says "0".
// CSS Box Alignment Level 3. That of the block axis comes first.
// CSS Grid Layout Level 1 section 8.4.
// CSS Transitions Level 1 section 2.5. Duration, timing function, delay and property.
// CSS Animations Level 1 section 3.10. Duration, timing function, delay, count, direction, fill
// mode, state and name.
TEST(ShorthandExpansion, KeywordsMayHaveEscapesAndAnyCase) {
    ExpectValues("border-top", {{"1p\\78  s\\6flid R\\45 D", "1p\\78  | solid | RED"}});
    ExpectValues("background", {{"u\\72l(a)",
                                 "u\\72l(a) | 0% 0% | auto | repeat | scroll | padding-box | "
                                 "border-box | transparent"}});
    ExpectInvalid("margin", {"\\69nherit 1px", "v\\61r(--a)"});
}

TEST(ShorthandExpansion, CalculationsHaveTheTypeOfTheirUnits) {
    ExpectValues("gap", {{"CALC(1px + 2%) min(1em, 2e3vw)", "CALC(1px + 2%) | min(1em, 2e3vw)"},
                         {"env(a) calc(env(a) + 1px)", "env(a) | calc(env(a) + 1px)"},
                         {"calc(1px*sin(4deg))", "calc(1px*sin(4deg)) | calc(1px*sin(4deg))"}});
    ExpectInvalid("gap", {"calc(1 + 2)", "calc(1s)", "calc(1px + 1s)", "calc(0)", "calc(1xy)"});
    ExpectInvalid("border-width", {"calc(1px + 2%)"});
    ExpectValues("flex", {{"calc(1) calc(2 * 3)", "calc(1) | calc(2 * 3) | 0%"},
                          {"calc(1) calc(2px-a1)", kInvalid},
                          {"calc(1) calc(1px)", "calc(1) | 1 | calc(1px)"}});
}

TEST(ShorthandExpansion, CommentsAreNoPartOfValues) {
    ExpectValues("gap", {{"1px/**/2px", "1px | 2px"}, {"/* a */ 1px", "1px | 1px"}});
}

TEST(ShorthandExpansion, QuotesAndFunctionsKeepTogether) {
    EXPECT_EQ(ValueOf("background-image", "background", "url(\"a) b;c,d\") red"),
              "url(\"a) b;c,d\")");
    EXPECT_EQ(ValueOf("background-image", "background", "url(a\\)b/c,d) red"), "url(a\\)b/c,d)");
    EXPECT_EQ(ValueOf("font-family", "font", "1px 'var(--a), b', c"), "'var(--a), b', c");
    EXPECT_EQ(ValueOf("background-image", "background", "image-set('var(' 1x)"),
              "image-set('var(' 1x)");
    EXPECT_EQ(ValueOf("background-image", "background", "image(myvar(1))"), "image(myvar(1))");
}

TEST(ShorthandExpansion, TakesTimeInProportionToTheValue) {
    std::string layers = "url(a)";
    for (int i = 0; i < 20000; ++i)
        layers += ",url(a) 1px 2px no-repeat";
    std::string brackets = "calc";
    for (int i = 0; i < 100000; ++i)
        brackets += "(";
    const std::string blanks(1000000, ' ');
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_NE(Values("background", layers), kInvalid);
    EXPECT_EQ(Values("margin", brackets), kInvalid);
    brackets += "1px" + std::string(100000, ')');
    EXPECT_EQ(ValueOf("margin-top", "margin", brackets), brackets);
    EXPECT_EQ(Values("gap", "1px" + blanks + "2px"), "1px | 2px");
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}
