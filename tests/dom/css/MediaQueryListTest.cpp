// SPDX-License-Identifier: MIT

// Media Queries Level 3: what is true for which medium, and what is "not all".

#include <espalier/dom/css/MediaQueryList.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Dom::CSS::MatchesMedia;
using Dom::CSS::MediaContext;
using Dom::CSS::MediaQueryList;

struct Case {
    const char* query;
    bool matches;
};

template <std::size_t Count>
void Expect(const MediaContext& context, const Case (&cases)[Count]) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.query);
        const MediaQueryList queries(c.query);
        EXPECT_EQ(queries.Matches(context), c.matches);
        EXPECT_FALSE(queries.IsNotUnderstood(0));
        EXPECT_EQ(MatchesMedia(c.query, context), c.matches);
        EXPECT_EQ(MatchesMedia(Dom::StyleSheets::MediaList(c.query), context), c.matches);
    }
}

MediaContext Window(double width, double height) {
    MediaContext context;
    context.width = width;
    context.height = height;
    return context;
}

}  // namespace

TEST(MediaQueryList, Types) {
    Expect({}, {{"all", true},
                {"screen", true},
                {"SCREEN", true},
                {" screen\t", true},
                {"print", false},
                {"unknown", false},
                {"only screen", true},
                {"Only print", false},
                {"not screen", false},
                {"NOT print", true},
                {"not all", false},
                {"not unknown", true},
                {"/* a */ only /* b */ screen", true},
                {"scr\\65 en", true}});
    MediaContext paper;
    paper.type = "Print";
    Expect(paper, {{"print", true}, {"screen", false}, {"all", true}});
}

TEST(MediaQueryList, AnEmptyListIsAll) {
    for (const char* const text : {"", " ", "\n/**/"}) {
        const MediaQueryList queries(text);
        EXPECT_TRUE(queries.Matches({})) << text;
        EXPECT_EQ(queries.Length(), 0U);
        EXPECT_FALSE(queries.IsNotUnderstood(0));
    }
}

TEST(MediaQueryList, OneOfAListIsEnough) {
    Expect({}, {{"print, screen", true},
                {"screen,print", true},
                {"print , speech", false},
                {"print, (color)", true},
                {"not screen, not print", true}});
}

TEST(MediaQueryList, AllConditionsMustHold) {
    Expect({}, {{"screen and (color)", true},
                {"screen and (color) and (min-width:1px)", true},
                {"screen and (color) and (max-width:1px)", false},
                {"print and (color)", false},
                {"(color) and (width)", true},
                {"(color)and (width)", true},
                {"( COLOR )AND\n( Width )", true},
                {"not screen and (color)", false},
                {"not screen and (monochrome)", true},
                {"not print and (color)", true},
                {"only screen and (color)", true}});
}

TEST(MediaQueryList, Lengths) {
    Expect(Window(960, 480), {{"(width:960px)", true},
                              {"(width:959px)", false},
                              {"(min-width:960px)", true},
                              {"(min-width:961px)", false},
                              {"(max-width:960px)", true},
                              {"(max-width:959.98px)", false},
                              {"(max-width:+960.02px)", true},
                              {"(width:10in)", true},
                              {"(width:720pt)", true},
                              {"(width:60pc)", true},
                              {"(min-width:25.39cm)", true},
                              {"(min-width:25.41cm)", false},
                              {"(min-width:253.9mm)", true},
                              {"(max-width:1017q)", true},
                              {"(width:60em)", true},
                              {"(width:60REM)", true},
                              {"(width:120ex)", true},
                              {"(min-width:.5px)", true},
                              {"(min-width:0)", true},
                              {"(width:0)", false},
                              {"(height:480px)", true},
                              {"(min-height:481px)", false},
                              {"(max-height:480px)", true},
                              {"(device-width:960px)", true},
                              {"(min-device-width:961px)", false},
                              {"(max-device-height:480px)", true},
                              {"(width)", true},
                              {"(device-height)", true}});
    MediaContext window = Window(0, 100);
    window.deviceWidth = 800;
    window.deviceHeight = 600;
    window.fontSize = 20;
    Expect(window, {{"(width)", false},
                    {"(width:0)", true},
                    {"(device-width:800px)", true},
                    {"(device-height:600px)", true},
                    {"(height:5em)", true},
                    {"(device-width:40em)", true}});
}

TEST(MediaQueryList, OrientationAndRatios) {
    Expect(Window(1280, 720), {{"(orientation:landscape)", true},
                               {"(orientation:Portrait)", false},
                               {"(orientation)", true},
                               {"(aspect-ratio:16/9)", true},
                               {"(aspect-ratio:32 / 18)", true},
                               {"(aspect-ratio:1280/720)", true},
                               {"(aspect-ratio:16/10)", false},
                               {"(min-aspect-ratio:16/9)", true},
                               {"(min-aspect-ratio:17/9)", false},
                               {"(max-aspect-ratio:16/9)", true},
                               {"(max-aspect-ratio:15/9)", false},
                               {"(device-aspect-ratio:16/9)", true},
                               {"(aspect-ratio)", true}});
    Expect(Window(500, 500),
           {{"(orientation:portrait)", true}, {"(orientation:landscape)", false}});
    MediaContext window = Window(500, 500);
    window.deviceWidth = 640;
    Expect(window, {{"(device-aspect-ratio:640/500)", true}, {"(aspect-ratio:1/1)", true}});
}

TEST(MediaQueryList, ColorsAndDots) {
    Expect({}, {{"(color)", true},
                {"(color:8)", true},
                {"(min-color:8)", true},
                {"(min-color:9)", false},
                {"(max-color:8)", true},
                {"(min-color:0)", true},
                {"(color-index)", false},
                {"(color-index:0)", true},
                {"(monochrome)", false},
                {"(monochrome:0)", true},
                {"(grid)", false},
                {"(grid:0)", true},
                {"(grid:1)", false},
                {"(scan)", false},
                {"(scan:progressive)", false},
                {"(resolution)", true},
                {"(resolution:1dppx)", true},
                {"(resolution:1x)", true},
                {"(resolution:96dpi)", true},
                {"(min-resolution:97dpi)", false},
                {"(max-resolution:96.5dpi)", true},
                {"(min-resolution:37dpcm)", true},
                {"(min-resolution:38dpcm)", false}});
    MediaContext other;
    other.color = 0;
    other.colorIndex = 256;
    other.monochrome = 2;
    other.grid = true;
    other.scan = MediaContext::Scan::Interlace;
    other.resolution = 2;
    Expect(other, {{"(color)", false},
                   {"(min-color:1)", false},
                   {"(color-index)", true},
                   {"(min-color-index:256)", true},
                   {"(max-color-index:255)", false},
                   {"(monochrome)", true},
                   {"(min-monochrome:2)", true},
                   {"(grid)", true},
                   {"(grid:1)", true},
                   {"(scan)", true},
                   {"(scan:interlace)", true},
                   {"(scan:progressive)", false},
                   {"(min-resolution:192dpi)", true},
                   {"(min-resolution:1.5dppx)", true}});
}

// Section 3.1. None of them is turned round by "not".
TEST(MediaQueryList, WhatIsMalformedIsNotAll) {
    for (const char* const query : {"not",
                                    "only",
                                    "and",
                                    "or",
                                    "and screen",
                                    "not not screen",
                                    "not only screen",
                                    "only not screen",
                                    "screen print",
                                    "screen and",
                                    "screen and print",
                                    "screen and(color)",
                                    "screenand (color)",
                                    "screen (color)",
                                    "(color) screen",
                                    "(color) (width)",
                                    "(color) or (width)",
                                    "not (color)",
                                    "screen and (color",
                                    "(color",
                                    "color)",
                                    "()",
                                    "( )",
                                    "(unknown)",
                                    "(unknown:1)",
                                    "(prefers-reduced-motion:reduce)",
                                    "(min-color)",
                                    "(max-width)",
                                    "(color:)",
                                    "(color:red)",
                                    "(color:-1)",
                                    "(color:1.5)",
                                    "(color:1px)",
                                    "(width:1)",
                                    "(width:-1px)",
                                    "(width:px)",
                                    "(width:1furlong)",
                                    "(width:1px 2px)",
                                    "(width:1%)",
                                    "(width>=1px)",
                                    "(100px<width)",
                                    "(min-orientation:portrait)",
                                    "(orientation:tall)",
                                    "(aspect-ratio:1)",
                                    "(aspect-ratio:16:9)",
                                    "(aspect-ratio:0/1)",
                                    "(aspect-ratio:1/0)",
                                    "(aspect-ratio:1.5/1)",
                                    "(aspect-ratio:-1/1)",
                                    "(resolution:1)",
                                    "(resolution:1px)",
                                    "(resolution:-1dpi)",
                                    "(grid:2)",
                                    "(grid:-1)",
                                    "(min-grid:1)",
                                    "(scan:fast)",
                                    "(max-scan:interlace)",
                                    "(min-min-width:1px)",
                                    "screen;",
                                    "screen {",
                                    "\"screen\"",
                                    "#screen",
                                    "@screen",
                                    "screen and (width:1px)) and (color)",
                                    "(color:1,2)",
                                    "[color]",
                                    "screen, ",
                                    "screen and ((color))"}) {
        SCOPED_TRACE(query);
        const MediaQueryList queries(query);
        EXPECT_TRUE(queries.IsNotUnderstood(queries.Length() - 1));
        const std::string negated = "not " + std::string(query);
        if (queries.Length() == 1) {
            EXPECT_FALSE(queries.Matches({}));
            if (std::string_view(query).starts_with("screen")) {
                EXPECT_FALSE(MatchesMedia(negated, {}));
            }
        }
    }
}

TEST(MediaQueryList, OthersOfTheListStillCount) {
    const MediaQueryList queries("(nonsense), screen, (a,b), \"x,y\", print");
    EXPECT_EQ(queries.Length(), 5U);
    EXPECT_TRUE(queries.Matches({}));
    for (std::size_t i = 0; i < 7; ++i)
        EXPECT_EQ(queries.IsNotUnderstood(i), i == 0 || i == 2 || i == 3) << i;
    EXPECT_FALSE(MatchesMedia("(nonsense), print", {}));
    EXPECT_FALSE(MatchesMedia(std::string_view("screen\0", 7), {}));
}

TEST(MediaQueryList, KeepsItsTextAndMoves) {
    MediaQueryList first(" print , screen");
    EXPECT_EQ(first.Text(), " print , screen");
    MediaQueryList second(std::move(first));
    EXPECT_TRUE(second.Matches({}));
    MediaQueryList third("print");
    EXPECT_FALSE(third.Matches({}));
    third = std::move(second);
    EXPECT_TRUE(third.Matches({}));
    EXPECT_EQ(third.Length(), 2U);
}
