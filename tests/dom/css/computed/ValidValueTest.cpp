// SPDX-License-Identifier: MIT
#include "dom/css/RepeatedText.h"
#include "dom/css/computed/ValueComputing.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace Dom::CSS::detail;

namespace {

bool IsValid(std::string_view name, std::string_view value) {
    const std::optional<PropertyId> id = FindProperty(name);
    EXPECT_TRUE(id) << name;
    return id && IsValidValue(KnownProperties()[*id], value);
}

}  // namespace

// CSS 2.1 section 4.2: "user agents must ignore a declaration with an illegal value".
TEST(IsValidValue, RefusesWhatThePropertyCannotHave) {
    const struct {
        const char* property;
        std::string_view value;
        const char* reason;
    } kCases[] = {
        {"width", "", "nothing"},
        {"width", "10", "no unit"},
        {"width", "5.px", "no digit behind the point"},
        {"width", "1foo", "no such unit"},
        {"width", "1 px", "two values"},
        {"width", "--1px", "two signs"},
        {"width", "-1px", "negative"},
        {"width", "none", "no keyword of it"},
        {"width", "-moz-fit-content", "another browser's"},
        {"width", "red", "a colour"},
        {"width", "1s", "a time"},
        {"width", "inf", "no number"},
        {"width", "nan", "no number"},
        {"width", "pi", "a constant outside of calc()"},
        {"max-width", "auto", "no keyword of it"},
        {"padding-top", "auto", "no keyword of it"},
        {"padding-top", "-1%", "negative"},
        {"padding-top", "3px 4px", "two values"},
        {"border-top-width", "10%", "a percentage"},
        {"border-top-width", "-1px", "negative"},
        {"border-top-left-radius", "1px 2px 3px", "three values"},
        {"border-spacing", "1%", "a percentage"},
        {"quotes", "'a'", "half a pair"},
        {"quotes", "'a' b", "no string"},
        {"display", "block\\9", "a character more"},
        {"width", "calc()", "nothing"},
        {"width", "calc(1px", "no end"},
        {"width", "calc(1px+2px)", "no blanks around the sign"},
        {"width", "calc(3px -2px)", "no blank behind the sign"},
        {"width", "calc(1px + )", "no second operand"},
        {"width", "calc(1 + 2px)", "a number and a length"},
        {"width", "calc(10)", "a number"},
        {"width", "calc(0)", "a number"},
        {"width", "calc(10px * 2px)", "an area"},
        {"width", "calc(10px / 2px)", "no length"},
        {"width", "calc(1px * 1s)", "no length"},
        {"width", "min()", "nothing"},
        {"width", "max(1px 2px)", "no comma"},
        {"width", "clamp(1px, 2px)", "two values"},
        {"width", "foo(1px)", "no such function"},
        {"width", "(1px)", "parentheses alone"},
        {"color", "#12", "two digits"},
        {"color", "#12345", "five digits"},
        {"color", "#ggg", "no digits"},
        {"color", "123456", "no \"#\""},
        {"color", "red blue", "two colours"},
        {"color", "none", "no colour"},
        {"color", "rgb (1,2,3)", "a blank in front of the parenthesis"},
        {"color", "rgb(1,2)", "two channels"},
        {"color", "rgb(1,2,3,4,5)", "five channels"},
        {"color", "rgb(1 2 3 4)", "no \"/\""},
        {"color", "rgb(1 2 3 / )", "nothing behind the \"/\""},
        {"color", "rgb(1 2, 3)", "commas here and there"},
        {"color", "rgb(1,,3)", "no channel"},
        {"color", "rgb(1,2%,3)", "numbers and percentages"},
        {"color", "rgb(1,2,3,none)", "\"none\" with commas"},
        {"color", "rgb(1px,2,3)", "a length"},
        {"color", "hsl(0,0,0)", "no percentages"},
        {"color", "hwb(0,1%,2%)", "commas"},
        {"font-size", "12", "no unit"},
        {"font-size", "-1px", "negative"},
        {"font-weight", "0", "below 1"},
        {"font-weight", "1001", "above 1000"},
        {"font-weight", "boldest", "no keyword of it"},
        {"font-family", "a,", "no second name"},
        {"font-family", "1a", "no identifier"},
        {"font-family", "a \"b\"", "a name of both kinds"},
        {"font-family", "inherit, a", "a keyword for all properties"},
        {"font-style", "oblique 100deg", "above 90 degrees"},
        {"line-height", "-1", "negative"},
        {"display", "-ms-flexbox", "another browser's"},
        {"display", "run-in", "no browser has it"},
        {"position", "center", "no keyword of it"},
        {"text-align", "-moz-center", "another browser's"},
        {"outline-style", "hidden", "lines around have no such style"},
        {"z-index", "1.5", "no integer"},
        {"z-index", "1.0", "not written as an integer"},
        {"order", "1e1", "not written as an integer"},
        {"column-count", "0", "below 1"},
        {"orphans", "0", "below 1"},
        {"flex-grow", "-1", "negative"},
        {"flex-grow", "1px", "a length"},
        {"opacity", "1px", "a length"},
        {"transition-duration", "0", "no unit"},
        {"transition-duration", "-1s", "negative"},
        {"transition-duration", "1s,", "no second time"},
        {"background-position", "left left", "one axis twice"},
        {"background-position", "10px left", "the vertical part is \"left\""},
        {"background-position", "top 10px", "the horizontal part is \"top\""},
        {"background-position", "1px 2px 3px", "lengths without sides"},
        {"background-position", "center 1px top 2px", "a distance from the middle"},
        {"background-position", "left 1px top 2px 3px", "five parts"},
        {"background-size", "-1px", "negative"},
        {"background-size", "cover 10px", "a keyword for both"},
        {"background-repeat", "repeat-x repeat", "a keyword for both axes"},
        {"background-image", "red", "no image"},
        {"background-image", "foo(red)", "no such image"},
        {"background-image", "-moz-linear-gradient(top, red, blue)", "another browser's"},
        {"background-image", "url(a", "no end"},
        {"list-style-image", "url(a), none", "two images"},
        {"box-shadow", "1px", "one length"},
        {"box-shadow", "1px 2px -3px", "the blur is negative"},
        {"box-shadow", "1px red 2px", "the lengths are apart"},
        {"box-shadow", "1px 2px red blue", "two colours"},
        {"box-shadow", "none, 1px 2px", "\"none\" among shadows"},
        {"text-shadow", "1px 2px 3px 4px", "four lengths"},
        {"text-shadow", "inset 1px 2px", "shadows of text are outside"},
        {"text-decoration-line", "underline underline", "twice"},
        {"text-decoration-line", "none underline", "\"none\" and something"},
        {"aspect-ratio", "1 / 2 / 3", "three numbers"},
        {"aspect-ratio", "auto1", "no blank"},
        {"aspect-ratio", "-1", "negative"},
        {"align-items", "foo", "no keyword of it"},
        {"align-items", "safe", "no position behind it"},
        {"align-items", "center safe", "in the wrong order"},
        {"align-items", "safe baseline", "no position"},
        {"align-items", "last center", "not the baseline"},
        {"align-content", "left", "no keyword of it"},
        {"content", "x", "no string"},
        {"content", "1px", "no string"},
        {"font-variant", "foo", "no keyword of it"},
        {"cursor", "hand", "no keyword of it"},
        {"cursor", "url(a)", "no keyword at last"},
        {"cursor", "url(a) 1, auto", "half a point"},
        {"cursor", "auto, auto", "two keywords"},
        {"clip", "rect(1px)", "one side"},
        {"filter", "alpha(opacity=50)", "no value has \"=\""},
        {"filter", "progid:DXImageTransform.Microsoft.gradient(enabled = false)",
         "no value has \":\""},
        {"stroke-dasharray", "1 -2", "negative"},
        {"counter-reset", "1", "no name"},
        {"counter-reset", "a 1.5", "no integer"},
    };
    for (const auto& test : kCases) {
        EXPECT_FALSE(IsValid(test.property, test.value))
            << test.property << ": " << test.value << ": " << test.reason;
    }
}

TEST(IsValidValue, TakesAnythingWhereItDoesNotLook) {
    for (const std::string_view value : {"x", "1 2 3", "a(b", "\"", ")", "50%"})
        EXPECT_TRUE(IsValid("will-change", value)) << value;
}

TEST(IsValidValue, TakesSumsUpToADepthOf32) {
    constexpr int kMost = 32;
    const auto nested = [](int depth) {
        return "calc" + Repeated("(", depth) + "1px" + Repeated(")", depth);
    };
    EXPECT_TRUE(IsValid("width", nested(kMost)));
    EXPECT_FALSE(IsValid("width", nested(kMost + 1)));
    EXPECT_TRUE(IsValid("width", Repeated("min(1px,", kMost) + "1px" + Repeated(")", kMost)));
    EXPECT_FALSE(
        IsValid("width", Repeated("min(1px,", kMost + 1) + "1px" + Repeated(")", kMost + 1)));
}

TEST(IsValidValueHostile, NeedsTimeInProportionToTheText) {
    constexpr int kCount = 20'000;
    EXPECT_TRUE(IsValid("width", "calc(1px" + Repeated(" + 1px", kCount) + ")"));
    EXPECT_FALSE(IsValid("width", Repeated("calc(", kCount)));
    EXPECT_FALSE(IsValid("width", Repeated("(", kCount)));
    EXPECT_FALSE(IsValid("width", Repeated("-", kCount)));
    EXPECT_FALSE(IsValid("width", Repeated("1", kCount)));
    EXPECT_FALSE(IsValid("color", "rgb(" + Repeated("1 ", kCount) + ")"));
    EXPECT_FALSE(IsValid("color", Repeated("rgb(", kCount)));
    EXPECT_TRUE(IsValid("filter", Repeated("a(", kCount) + Repeated(")", kCount)));
    EXPECT_FALSE(IsValid("filter", Repeated("url(", kCount)));
    EXPECT_FALSE(IsValid("filter", Repeated("calc(", kCount)));
    EXPECT_FALSE(IsValid("filter", Repeated("'", kCount + 1)));
    EXPECT_TRUE(IsValid("font-family", Repeated("a, ", kCount) + "b"));
    EXPECT_TRUE(IsValid("font-family", Repeated("a ", kCount) + "b"));
    EXPECT_TRUE(IsValid("background-position", Repeated("1px 2px, ", kCount) + "left"));
    EXPECT_TRUE(IsValid("box-shadow", Repeated("1px 2px red, ", kCount) + "1px 2px"));
    EXPECT_FALSE(IsValid("text-decoration-line", Repeated("underline ", kCount)));
    EXPECT_TRUE(
        IsValid("background-image", Repeated("linear-gradient(red, blue), ", kCount) + "none"));
    EXPECT_FALSE(IsValid("clip", "rect(" + Repeated("1px, ", kCount) + ")"));
    EXPECT_TRUE(
        IsValid("width", "calc(min(1%, 1px)" + Repeated(" + min(1%, 1px)", kCount / 10) + ")"));
}
