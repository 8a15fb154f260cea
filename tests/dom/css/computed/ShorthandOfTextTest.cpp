// SPDX-License-Identifier: MIT

// The shorthands of text, layouts and changes.

#include "dom/css/computed/ShorthandValues.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using support::ExpectInvalid;
using support::ExpectValues;
using support::ValueCase;
using support::Values;

}  // namespace

TEST(ShorthandOfText, Fonts) {
    const std::string back = " | none | auto | normal";
    const std::vector<ValueCase> cases = {
        {"12px serif", "normal | normal | normal | normal | 12px | normal | serif"},
        {"italic small-caps bold condensed 1em/1.5 a, 'b c' , d e",
         "italic | small-caps | bold | condensed | 1em | 1.5 | a, 'b c', d e"},
        {"normal 100 Medium / normal Arial",
         "normal | normal | 100 | normal | Medium | normal | Arial"},
        {"normal normal normal normal 50%/2px x",
         "normal | normal | normal | normal | 50% | 2px | x"},
        {"oblique 10deg bolder smaller \"A\"",
         "oblique 10deg | normal | bolder | normal | smaller | normal | \"A\""},
        {"700 0 x", "normal | normal | 700 | normal | 0 | normal | x"},
        {"12px/120% 'a'", "normal | normal | normal | normal | 12px | 120% | 'a'"},
        {"calc(1px + 1em) a-b _c \\31 x",
         "normal | normal | normal | normal | calc(1px + 1em) | normal | a-b _c \\31 x"},
    };
    for (const ValueCase& c : cases)
        EXPECT_EQ(Values("font", c.value), c.expected + back) << c.value;
    ExpectInvalid("font", {"12px",
                           "serif",
                           "serif 12px",
                           "bold serif",
                           "12px/ serif",
                           "12px/-1 serif",
                           "-1px serif",
                           "12 serif",
                           "12px 'a' b",
                           "12px a 'b'",
                           "12px a,",
                           "12px ,a",
                           "12px a,,b",
                           "12px a/b",
                           "bold bold 12px a",
                           "bold 100 12px a",
                           "italic oblique 12px a",
                           "normal normal normal normal normal 12px a",
                           "italic small-caps bold condensed normal 12px a",
                           "12px 1a",
                           "1001 12px a",
                           "12px a(b)",
                           "12px inherit",
                           "12px a, initial",
                           "12px a inherit",
                           "small-caps small-caps 1px a",
                           "caption 12px a",
                           "12px/1/2 a"});
}

TEST(ShorthandOfText, FontsOfTheSystemAreInitial) {
    const std::string initial = Values("font", "initial");
    for (const char* const name :
         {"caption", "icon", "menu", "message-box", "small-caption", "STATUS-BAR"}) {
        EXPECT_EQ(Values("font", name),
                  "normal | normal | normal | normal | medium | normal | "
                  "serif | none | auto | normal");
    }
    EXPECT_EQ(initial.substr(0, 17), "initial | initial");
}

TEST(ShorthandOfText, ListStyles) {
    ExpectValues("list-style", {{"square", "outside | none | square"},
                                {"inside", "inside | none | disc"},
                                {"none", "outside | none | none"},
                                {"none none inside", "inside | none | none"},
                                {"url(a) none", "outside | url(a) | none"},
                                {"none upper-roman", "outside | none | upper-roman"},
                                {"url(a) circle inside", "inside | url(a) | circle"},
                                {"'- '", "outside | none | '- '"},
                                {"symbols('*' '+')", "outside | none | symbols('*' '+')"}});
    ExpectInvalid("list-style", {"none none none", "url(a) circle none", "square circle",
                                 "inside outside", "url(a) url(b)", "none none square", "1px"});
}

TEST(ShorthandOfText, LinesOnText) {
    ExpectValues("text-decoration",
                 {{"none", "none | solid | currentcolor | auto"},
                  {"underline", "underline | solid | currentcolor | auto"},
                  {"red wavy overline underline 2px", "overline underline | wavy | red | 2px"},
                  {"line-through from-font", "line-through | solid | currentcolor | from-font"},
                  {"blue", "none | solid | blue | auto"}});
    ExpectInvalid("text-decoration",
                  {"underline underline", "none underline", "underline none",
                   "underline red overline", "solid wavy", "red blue", "1px 2px", "none none",
                   "groove", "underline overline line-through blink underline"});
    ExpectValues("text-emphasis", {{"none", "none | currentcolor"},
                                   {"open dot red", "open dot | red"},
                                   {"red sesame filled", "sesame filled | red"},
                                   {"'x'", "'x' | currentcolor"}});
    ExpectInvalid("text-emphasis", {"open filled", "dot circle", "none dot", "open red dot",
                                    "'x' dot", "red blue", "1px"});
}

TEST(ShorthandOfText, FlexibleBoxes) {
    ExpectValues("flex", {{"none", "0 | 0 | auto"},
                          {"auto", "1 | 1 | auto"},
                          {"10em", "1 | 1 | 10em"},
                          {"2 3", "2 | 3 | 0%"},
                          {"2 30px", "2 | 1 | 30px"},
                          {"30px 2 3", "2 | 3 | 30px"},
                          {"1 1 0", "1 | 1 | 0"},
                          {"1 0 auto", "1 | 0 | auto"},
                          {"0 content", "0 | 1 | content"},
                          {".5 CALC(1px + 2%)", ".5 | 1 | CALC(1px + 2%)"}});
    ExpectInvalid("flex", {"-1", "1 -1", "1 2 3", "none none", "1 none", "1 auto 2", "auto auto",
                           "1px 2px", "1 1 -1px", "1 1 1 auto", "red", "1px 1 1px"});
    ExpectValues("flex-flow", {{"wrap", "row | wrap"},
                               {"column", "column | nowrap"},
                               {"wrap-reverse row-reverse", "row-reverse | wrap-reverse"}});
    ExpectInvalid("flex-flow", {"row column", "wrap nowrap", "none", "row wrap row"});
}

TEST(ShorthandOfText, DeliberateTheBasisThatIsLeftOutIsInPercent) {
    EXPECT_EQ(Values("flex", "1"), "1 | 1 | 0%");
    EXPECT_EQ(Values("flex", "0"), "0 | 1 | 0%");
}

TEST(ShorthandOfText, PairsOfValues) {
    ExpectValues("overflow", {{"hidden", "hidden | hidden"}, {"Auto clip", "Auto | clip"}});
    ExpectInvalid("overflow", {"none", "auto auto auto", "1px", "auto, auto"});
    ExpectValues("gap", {{"1px", "1px | 1px"}, {"normal 2%", "normal | 2%"}});
    ExpectInvalid("gap", {"auto", "-1px", "1px 2px 3px", "1px / 2px"});
    ExpectValues("grid-gap", {{"1px 0", "1px | 0"}});
    ExpectValues("overscroll-behavior", {{"none", "none | none"}, {"auto none", "auto | none"}});
}

TEST(ShorthandOfText, Columns) {
    ExpectValues("columns", {{"12em", "12em | auto"},
                             {"2", "auto | 2"},
                             {"auto", "auto | auto"},
                             {"auto auto", "auto | auto"},
                             {"auto 12em", "12em | auto"},
                             {"2 auto", "auto | 2"},
                             {"2 12em", "12em | 2"},
                             {"0 3", "0 | 3"}});
    ExpectInvalid("columns",
                  {"2 3", "1em 2em", "auto auto auto", "-1", "1.5", "50%", "auto 2 1em"});
}

TEST(ShorthandOfText, Places) {
    ExpectValues("place-content", {{"center", "center | center"},
                                   {"start space-between", "start | space-between"},
                                   {"safe end unsafe left", "safe end | unsafe left"},
                                   {"baseline", "baseline | start"},
                                   {"last baseline right", "last baseline | right"},
                                   {"stretch", "stretch | stretch"}});
    ExpectInvalid("place-content", {"left", "auto", "safe", "safe stretch", "first", "end end end",
                                    "center baseline", "first center", "center, center"});
    ExpectValues("place-items", {{"center legacy", "center | legacy"},
                                 {"first baseline", "first baseline | first baseline"}});
    ExpectInvalid("place-items", {"auto", "legacy", "center auto"});
    ExpectValues("place-self", {{"auto", "auto | auto"}, {"self-end left", "self-end | left"}});
    ExpectInvalid("place-self", {"legacy", "left center", "space-between"});
}

TEST(ShorthandOfText, LinesOfGrids) {
    ExpectValues("grid-row", {{"1", "1 | auto"},
                              {"a", "a | a"},
                              {"1 / 3", "1 | 3"},
                              {"span 2/-1", "span 2 | -1"},
                              {"a 2 / span b", "a 2 | span b"},
                              {"auto", "auto | auto"}});
    ExpectInvalid("grid-row", {"0", "1 2", "a b", "span", "span 0", "span -1", "1 span a", "1 /",
                               "1 / 2 / 3", "auto 1", "1.5", "1px", "span span 1"});
    ExpectValues("grid-column", {{"1 span / a", "1 span | a"}});
    ExpectValues("grid-area", {{"a", "a | a | a | a"},
                               {"a / b", "a | b | a | b"},
                               {"1", "1 | auto | auto | auto"},
                               {"1 / a / 2", "1 | a | 2 | a"},
                               {"1 / 2 / 3 / 4", "1 | 2 | 3 | 4"}});
    ExpectInvalid("grid-area", {"1 / 2 / 3 / 4 / 5", "a b"});
}

TEST(ShorthandOfText, Transitions) {
    ExpectValues("transition",
                 {{"none", "0s | ease | 0s | none"},
                  {"all 1s", "1s | ease | 0s | all"},
                  {"1s -2ms", "1s | ease | -2ms | all"},
                  {"color .3s ease-in-out 1s, margin-top cubic-bezier(0, 1, 0, 1) 2s",
                   ".3s, 2s | ease-in-out, cubic-bezier(0, 1, 0, 1) | 1s, 0s | color, margin-top"},
                  {"linear", "0s | linear | 0s | all"},
                  {"ease ease", "0s | ease | 0s | ease"},
                  {"--x 1s", "1s | ease | 0s | --x"}});
    ExpectInvalid("transition", {"-1s", "-1s 2s", "1s 2s 3s", "a b", "none, all", "all 1s, none",
                                 "1s,", "0", "1px", "a 1s, inherit", "'a' 1s", "none none"});
}

TEST(ShorthandOfText, Animations) {
    ExpectValues("animation",
                 {{"none", "0s | ease | 0s | 1 | normal | none | running | none"},
                  {"spin 2s linear infinite",
                   "2s | linear | 0s | infinite | normal | none | running | spin"},
                  {"3 paused both alternate 'a' 1s steps(2, end) -1s",
                   "1s | steps(2, end) | -1s | 3 | alternate | both | paused | 'a'"},
                  {"a 1s, b 2s forwards",
                   "1s, 2s | ease, ease | 0s, 0s | 1, 1 | normal, normal | none, forwards | "
                   "running, running "
                   "| a, b"},
                  {"paused paused", "0s | ease | 0s | 1 | normal | none | paused | paused"}});
    ExpectInvalid("animation", {"a b", "-1s a", "1s 2s 3s", "a -1", "a,", "1px", "1 2 a"});
}
