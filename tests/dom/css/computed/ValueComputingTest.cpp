// SPDX-License-Identifier: MIT
#include "dom/css/computed/ValueComputing.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <string_view>

using namespace Dom::CSS::detail;

namespace {

struct Case {
    std::string_view property;
    std::string_view value;
    std::string_view expected;
};

// The parent's font has 20 pixels, the element's 10, that of the root 16.
ComputingContext Context() {
    ComputingContext context;
    context.parentFontSize = 20;
    context.fontSize = 10;
    context.rootFontSize = 16;
    context.viewportWidth = 800;
    context.viewportHeight = 600;
    context.parentWeight = "400";
    context.color = "rgb(1, 2, 3)";
    context.baseAddress = "http://host/css/sheet.css";
    return context;
}

std::string Computed(std::string_view name, std::string_view value,
                     const ComputingContext& context = Context()) {
    const std::optional<PropertyId> id = FindProperty(name);
    if (!id) return "(no property)";
    const PropertyInfo& property = KnownProperties()[*id];
    if (!IsValidValue(property, value)) return "(invalid)";
    return std::string(ComputedValue(property, value, context).view());
}

void ExpectValues(std::span<const Case> cases) {
    for (const Case& test : cases) {
        EXPECT_EQ(Computed(test.property, test.value), test.expected)
            << test.property << ": " << test.value;
    }
}

}  // namespace

// CSS Values Level 3 sections 5.1 and 5.2; CSSOM section 6.7.2 for how numbers are printed.
TEST(ComputedValue, HasLengthsInPixels) {
    constexpr Case kCases[] = {
        {"width", "0", "0px"},
        {"width", "-0", "0px"},
        {"width", "0.0em", "0px"},
        {"width", "12px", "12px"},
        {"width", "12PX", "12px"},
        {"width", "+5px", "5px"},
        {"width", ".5px", "0.5px"},
        {"width", "1e3px", "1000px"},
        {"width", "1e+2px", "100px"},
        {"width", "2em", "20px"},
        {"width", "2rem", "32px"},
        {"width", "2ex", "10px"},
        {"width", "2ch", "10px"},
        {"width", "1in", "96px"},
        {"width", "2.54cm", "96px"},
        {"width", "25.4mm", "96px"},
        {"width", "101.6q", "96px"},
        {"width", "72pt", "96px"},
        {"width", "6pc", "96px"},
        {"width", "10vw", "80px"},
        {"width", "10vh", "60px"},
        {"width", "10dvh", "60px"},
        {"width", "10vmin", "60px"},
        {"width", "10vmax", "80px"},
        {"width", "10%", "10%"},
        {"width", "33.33333333%", "33.3333%"},
        {"width", "1pt", "1.33333px"},
        {"width", "1.68em", "16.8px"},
        {"width", "1234567.8px", "1.23457e+06px"},
        {"width", "1e99px", "3.35544e+07px"},
        {"width", "1e-99px", "0px"},
        {"margin-left", "-1.5em", "-15px"},
        {"margin-left", "auto", "auto"},
        {"margin-left", "AUTO", "auto"},
        {"letter-spacing", ".1em", "1px"},
        {"letter-spacing", "0", "normal"},
        {"letter-spacing", "normal", "normal"},
        {"word-spacing", "normal", "0px"},
        {"word-spacing", "0", "0px"},
        {"tab-size", "4", "4"},
        {"tab-size", "1em", "10px"},
        {"stroke-width", "2", "2px"},
        {"stroke-dasharray", "1 2px,1em", "1px, 2px, 10px"},
        {"flex-basis", "0", "0px"},
        {"vertical-align", "-.125em", "-1.25px"},
    };
    ExpectValues(kCases);
}

// CSS Values Level 3 section 8, Level 4 section 10.
TEST(ComputedValue, HasSumsDone) {
    constexpr Case kCases[] = {
        {"width", "calc(1px + 2em * 2)", "41px"},
        {"width", "calc((1px + 2px)*3/2)", "4.5px"},
        {"width", "calc( ( ( 3px ) ) )", "3px"},
        {"width", "CALC(3PX)", "3px"},
        {"width", "-webkit-calc(1px + 2px)", "3px"},
        {"width", "calc(3px - -2px)", "5px"},
        {"width", "calc(5px + 10%)", "calc(10% + 5px)"},
        {"width", "calc(100% - 20px)", "calc(100% - 20px)"},
        {"width", "calc(10% * 2 + 5px)", "calc(20% + 5px)"},
        {"width", "calc(0% + 5px)", "calc(0% + 5px)"},
        {"width", "calc(10% - 0px)", "10%"},
        {"width", "calc(100% / 3)", "33.3333%"},
        {"width", "calc(-1px)", "0px"},  // what is calculated is moved into the range
        {"padding-top", "calc(5% - 10%)", "0%"},
        {"padding-top", "calc(-10% - 5px)", "calc(-10% - 5px)"},
        {"margin-top", "calc(-1px)", "-1px"},
        {"width", "min(10px, 20px)", "10px"},
        {"width", "max(1px + 2px, 5px)", "5px"},
        {"width", "min(10%, 20%)", "10%"},
        {"width", "clamp(1px, 2em, 15px)", "15px"},
        {"width", "clamp(5px, 2px, 3px)", "5px"},
        {"width", "min(10%, 20px)", "min(10%, 20px)"},
        {"width", "max(1em, 10% + 5px)", "max(10px, 10% + 5px)"},
        {"width", "clamp(1px, 50%, 20px)", "clamp(1px, 50%, 20px)"},
        {"width", "calc(5px + min(10%, 20px))", "calc(5px + min(10%, 20px))"},
        {"width", "calc(2 * min(10%, 20px))", "calc(2 * min(10%, 20px))"},
        {"margin-top", "calc(min(10%, 20px) - max(1%, 2px))",
         "calc(min(10%, 20px) - max(1%, 2px))"},
        {"margin-top", "calc(min(10%, 20px) * 2 + 3px - 4%)",
         "calc(-4% + 3px + (2 * min(10%, 20px)))"},
        {"width", "calc(10px / 0)", "3.35544e+07px"},
        {"width", "calc(0px / 0)", "0px"},
        {"width", "calc(pi * 1px)", "3.14159px"},
        {"font-size", "calc(1rem + 1.5vw)", "28px"},
        {"font-size", "calc(50% + 1em)", "30px"},
        {"opacity", "calc(.5 + .1)", "0.6"},
        {"z-index", "calc(1.5)", "2"},
    };
    ExpectValues(kCases);
}

// CSS Backgrounds Level 4 section 2.3: as wide as whole pixels, but never nothing.
TEST(ComputedValue, HasLinesOfWholePixels) {
    constexpr Case kCases[] = {
        {"border-top-width", "thin", "1px"},   {"border-top-width", "Medium", "3px"},
        {"border-top-width", "thick", "5px"},  {"border-top-width", "0", "0px"},
        {"border-top-width", "0.5px", "1px"},  {"border-top-width", "1.7px", "1px"},
        {"outline-width", "2.9px", "2px"},     {"outline-offset", "-1.7px", "-1px"},
        {"column-rule-width", "1.5px", "1px"},
    };
    ExpectValues(kCases);
}

// CSS Color Level 4 sections 5 to 8 and 15.
TEST(ComputedValue, HasColorsInRgb) {
    constexpr Case kCases[] = {
        {"color", "red", "rgb(255, 0, 0)"},
        {"color", "RebeccaPurple", "rgb(102, 51, 153)"},
        {"color", "transparent", "rgba(0, 0, 0, 0)"},
        {"color", "CurrentColor", "rgb(1, 2, 3)"},
        {"color", "CanvasText", "rgb(0, 0, 0)"},
        {"color", "#f0A", "rgb(255, 0, 170)"},
        {"color", "#0008", "rgba(0, 0, 0, 0.533)"},
        {"color", "#0D6EFD", "rgb(13, 110, 253)"},
        {"color", "#00000080", "rgba(0, 0, 0, 0.5)"},
        {"color", "#01020304", "rgba(1, 2, 3, 0.016)"},
        {"color", "#010203ff", "rgb(1, 2, 3)"},
        {"color", "rgb(1,2,3)", "rgb(1, 2, 3)"},
        {"color", "rgb( 1 , 2 , 3 )", "rgb(1, 2, 3)"},
        {"color", "RGBA(1,2,3,.5)", "rgba(1, 2, 3, 0.5)"},
        {"color", "rgba(1,2,3)", "rgb(1, 2, 3)"},
        {"color", "rgb(300,-1,0)", "rgb(255, 0, 0)"},
        {"color", "rgb(10%,20%,30%)", "rgb(26, 51, 77)"},
        {"color", "rgb(10.5,20.4,30.6)", "rgb(11, 20, 31)"},
        {"color", "rgb(1 2 3 / 50%)", "rgba(1, 2, 3, 0.5)"},
        {"color", "rgb(1 2% 3)", "rgb(1, 5, 3)"},
        {"color", "rgb(none 2 3)", "rgb(0, 2, 3)"},
        {"color", "rgb(calc(1 + 1),2,3)", "rgb(2, 2, 3)"},
        {"color", "rgba(0,0,0,.125)", "rgba(0, 0, 0, 0.125)"},
        {"color", "rgba(0,0,0,.175)", "rgba(0, 0, 0, 0.176)"},
        {"color", "rgba(0,0,0,.075)", "rgba(0, 0, 0, 0.075)"},
        {"color", "rgba(0,0,0,.999)", "rgb(0, 0, 0)"},
        {"color", "rgba(0,0,0,2)", "rgb(0, 0, 0)"},
        {"color", "rgba(0,0,0,-1)", "rgba(0, 0, 0, 0)"},
        {"color", "hsl(120,100%,25%)", "rgb(0, 128, 0)"},
        {"color", "hsl(210, 11%, 15%)", "rgb(34, 38, 42)"},
        {"color", "hsl(210 11 15)", "rgb(34, 38, 42)"},
        {"color", "hsl(-30,50%,50%)", "rgb(191, 64, 128)"},
        {"color", "hsl(720.5,33%,47%)", "rgb(159, 81, 80)"},
        {"color", "hsla(0.5turn,50%,50%,.3)", "rgba(64, 191, 191, 0.3)"},
        {"color", "hsl(200grad 50% 50% / .3)", "rgba(64, 191, 191, 0.3)"},
        {"color", "hsl(120 200% 50%)", "rgb(0, 255, 0)"},
        {"color", "hwb(120 20% 30%)", "rgb(51, 179, 51)"},
        {"color", "hwb(0 80% 80%)", "rgb(128, 128, 128)"},
        {"color", "oklch(0.5 0.2 30)", "oklch(0.5 0.2 30)"},
        {"border-left-color", "currentcolor", "rgb(1, 2, 3)"},
        {"accent-color", "auto", "auto"},
        {"fill", "none", "none"},
        {"fill", "#fff", "rgb(255, 255, 255)"},
        {"fill", "url(#a) red", "url(\"#a\") rgb(255, 0, 0)"},
        {"fill", "url(#a) none", "url(\"#a\") none"},
    };
    ExpectValues(kCases);
}

// CSS Fonts Level 4 chapter 2.
TEST(ComputedValue, HasFonts) {
    constexpr Case kCases[] = {
        {"font-size", "xx-small", "9px"},
        {"font-size", "x-small", "10px"},
        {"font-size", "small", "13px"},
        {"font-size", "medium", "16px"},
        {"font-size", "large", "18px"},
        {"font-size", "x-large", "24px"},
        {"font-size", "xx-large", "32px"},
        {"font-size", "xxx-large", "48px"},
        {"font-size", "larger", "24px"},
        {"font-size", "smaller", "16.6667px"},
        {"font-size", "1.5em", "30px"},  // of the parent
        {"font-size", "50%", "10px"},
        {"font-size", "2rem", "32px"},
        {"font-size", "0", "0px"},
        {"font-weight", "normal", "400"},
        {"font-weight", "BOLD", "700"},
        {"font-weight", "350.5", "350.5"},
        {"font-weight", "calc(100 * 11)", "1000"},
        {"font-stretch", "condensed", "75%"},
        {"font-stretch", "120%", "120%"},
        {"font-style", "oblique", "oblique"},
        {"font-style", "oblique 20grad", "oblique 18deg"},
        {"font-style", "oblique 0deg", "normal"},
        {"line-height", "1.50", "1.5"},
        {"line-height", "150%", "15px"},
        {"line-height", "2em", "20px"},
        {"line-height", "Normal", "normal"},
        {"line-height", "calc(1em + 50%)", "15px"},
        {"font-family", "Arial,  Helvetica Neue ,sans-serif",
         "Arial, \"Helvetica Neue\", sans-serif"},
        {"font-family", "'Open Sans', \"Arial\"", "\"Open Sans\", Arial"},
        {"font-family", "Times  New   Roman, SERIF", "\"Times New Roman\", serif"},
        {"font-family", "\"serif\"", "\"serif\""},
        {"font-family", "'x\"y'", "\"x\\\"y\""},
        {"font-family", "\"5a\"", "\"5a\""},
        {"font-family", "-apple-system, BlinkMacSystemFont", "-apple-system, BlinkMacSystemFont"},
    };
    ExpectValues(kCases);
}

// CSS Fonts Level 4 section 2.2.1.
TEST(ComputedValue, HasWeightsRelativeToTheParent) {
    const struct {
        std::string_view parent;
        std::string_view bolder;
        std::string_view lighter;
    } kCases[] = {
        {"50", "400", "50"},   {"100", "400", "100"}, {"349", "400", "100"}, {"350", "700", "100"},
        {"400", "700", "100"}, {"549", "700", "100"}, {"550", "900", "400"}, {"700", "900", "400"},
        {"750", "900", "700"}, {"899", "900", "700"}, {"900", "900", "700"}, {"950", "950", "700"},
    };
    for (const auto& test : kCases) {
        ComputingContext context = Context();
        context.parentWeight = test.parent;
        EXPECT_EQ(Computed("font-weight", "bolder", context), test.bolder) << test.parent;
        EXPECT_EQ(Computed("font-weight", "lighter", context), test.lighter) << test.parent;
    }
}

TEST(ComputedValue, HasSizesRelativeToTheInitialOne) {
    ComputingContext context = Context();
    context.initialFontSize = 8;
    EXPECT_EQ(Computed("font-size", "medium", context), "8px");
    EXPECT_EQ(Computed("font-size", "x-large", context), "12px");
}

// CSS Values Level 3 section 3.4.
TEST(ComputedValue, HasAbsoluteAddresses) {
    constexpr Case kCases[] = {
        {"background-image", "url(x.png)", "url(\"http://host/css/x.png\")"},
        {"background-image", "URL( '../a.png' )", "url(\"http://host/a.png\")"},
        {"background-image", "url(\"x y.png\")", "url(\"http://host/css/x%20y.png\")"},
        {"background-image", "url(http://other/x)", "url(\"http://other/x\")"},
        {"background-image", "url(#a)", "url(\"#a\")"},
        {"background-image", "url(a.svg#b)", "url(\"http://host/css/a.svg#b\")"},
        {"background-image", "url(data:image/png;base64,AAA=)",
         "url(\"data:image/png;base64,AAA=\")"},
        {"background-image", "url(\"data:image/svg+xml,<a b='c/../d'/>\")",
         "url(\"data:image/svg+xml,<a b='c/../d'/>\")"},
        {"background-image", "url()", "url(\"\")"},
        {"background-image", "url(a), none", "url(\"http://host/css/a\"), none"},
        {"list-style-image", "url(a)", "url(\"http://host/css/a\")"},
        {"cursor", "url(a.cur) 1 2, pointer", "url(\"http://host/css/a.cur\") 1 2, pointer"},
        {"content", "url(a)", "url(\"http://host/css/a\")"},
        {"marker-end", "url(#m)", "url(\"#m\")"},
    };
    ExpectValues(kCases);
}

// CSS Backgrounds Level 3, CSS Images Level 3.
TEST(ComputedValue, HasBackgrounds) {
    constexpr Case kCases[] = {
        {"background-position", "left top", "0% 0%"},
        {"background-position", "top left", "0% 0%"},
        {"background-position", "center", "50% 50%"},
        {"background-position", "top", "50% 0%"},
        {"background-position", "bottom right", "100% 100%"},
        {"background-position", "10px", "10px 50%"},
        {"background-position", "0 0", "0px 0px"},
        {"background-position", "left 30%", "0% 30%"},
        {"background-position", "center left", "0% 50%"},
        {"background-position", "right 10px bottom 20px", "calc(100% - 10px) calc(100% - 20px)"},
        {"background-position", "bottom 20px right 10%", "90% calc(100% - 20px)"},
        {"background-position", "left 10px top 20px", "10px 20px"},
        {"background-position", "right .75rem center", "calc(100% - 12px) 50%"},
        {"background-position", "right 0 bottom 0", "100% 100%"},
        {"background-position", "right calc(10% + 2px) top 0", "calc(90% - 2px) 0px"},
        {"background-position", "right min(10%, 2px) top", "calc(100% - min(10%, 2px)) 0%"},
        {"background-position", "0 0, right", "0px 0px, 100% 50%"},
        {"transform-origin", "left", "0% 50%"},
        {"transform-origin", "top left 5px", "0% 0% 5px"},
        {"background-size", "10px", "10px auto"},
        {"background-size", "auto auto", "auto"},
        {"background-size", "auto 50%", "auto 50%"},
        {"background-size", "1rem 2rem, Contain", "16px 32px, contain"},
        {"background-repeat", "repeat no-repeat", "repeat-x"},
        {"background-repeat", "no-repeat repeat", "repeat-y"},
        {"background-repeat", "no-repeat no-repeat, space round", "no-repeat, space round"},
        {"background-attachment", "FIXED,scroll", "fixed, scroll"},
        {"background-image", "linear-gradient(red, blue)",
         "linear-gradient(rgb(255, 0, 0), rgb(0, 0, 255))"},
        {"background-image", "linear-gradient(180deg,rgba(255,255,255,.15),transparent 1em)",
         "linear-gradient(rgba(255, 255, 255, 0.15), rgba(0, 0, 0, 0) 10px)"},
        {"background-image", "linear-gradient(.125turn, #fff 0, red 50%)",
         "linear-gradient(45deg, rgb(255, 255, 255) 0px, rgb(255, 0, 0) 50%)"},
        {"border-top-left-radius", "50% 50%", "50%"},
        {"border-top-left-radius", "1em 2em", "10px 20px"},
        {"border-spacing", "2px", "2px"},
        {"border-spacing", "1em 2em", "10px 20px"},
        {"box-shadow", "1px 2px", "rgb(1, 2, 3) 1px 2px 0px 0px"},
        {"box-shadow", "inset 0 1px 2px red,0 0 0 .25rem rgba(13,110,253,.25)",
         "rgb(255, 0, 0) 0px 1px 2px 0px inset, rgba(13, 110, 253, 0.25) 0px 0px 0px 4px"},
        {"box-shadow", "red 1px 2px 3px 4px inset", "rgb(255, 0, 0) 1px 2px 3px 4px inset"},
        {"text-shadow", "0 -1px 0 rgba(0,0,0,.2)", "rgba(0, 0, 0, 0.2) 0px -1px 0px"},
    };
    ExpectValues(kCases);
}

TEST(ComputedValue, HasNumbersKeywordsAndTimes) {
    constexpr Case kCases[] = {
        {"opacity", "50%", "0.5"},
        {"opacity", "2", "1"},
        {"opacity", "-1", "0"},
        {"opacity", ".65", "0.65"},
        {"zoom", "150%", "1.5"},
        {"z-index", "+5", "5"},
        {"z-index", "99999999999", "2147483647"},
        {"z-index", "-1", "-1"},
        {"order", "-2", "-2"},
        {"column-count", "3", "3"},
        {"flex-grow", "1.50", "1.5"},
        {"display", "Inline-Block", "inline-block"},
        {"display", "-webkit-flex", "flex"},
        {"display", "bl\\6f ck", "block"},
        {"overflow-x", "overlay", "auto"},
        {"writing-mode", "tb-rl", "vertical-rl"},
        {"text-rendering", "optimizeLegibility", "optimizelegibility"},
        {"text-decoration-line", "overline underline", "underline overline"},
        {"text-decoration-line", "NONE", "none"},
        {"align-items", "first baseline", "baseline"},
        {"justify-content", "Safe CENTER", "safe center"},
        {"transition-duration", "150ms, 1s", "0.15s, 1s"},
        {"transition-delay", "-100ms", "-0.1s"},
        {"counter-increment", "a 2 b", "a 2 b 1"},
        {"counter-reset", "Foo", "Foo 0"},
        {"clip", "rect(0 0 0 0)", "rect(0px, 0px, 0px, 0px)"},
        {"clip", "rect(1px, AUTO, 2em, auto)", "rect(1px, auto, 20px, auto)"},
        {"quotes", "'\"'  'b'", "\"\\\"\" \"b\""},
        {"content", "'x' counter(Item)", "\"x\" counter(Item)"},
        {"content", "open-quote \"\\201C\" / 'x'", "open-quote \"\xE2\x80\x9C\" / \"x\""},
        {"font-variant", "TABULAR-NUMS small-caps", "small-caps tabular-nums"},
        {"filter", "blur(1em)", "blur(10px)"},
        {"filter", "invert(1) grayscale(100%)  brightness(50%)",
         "invert(1) grayscale(1) brightness(0.5)"},
        {"transform", "rotate(.5turn) TRANSLATEx(1em)", "rotate(180deg) translateX(10px)"},
        {"transform", "translate3d(0,-25%,0)", "translate3d(0px, -25%, 0px)"},
        {"clip-path", "polygon(0 0, 1em 50%)", "polygon(0px 0px, 10px 50%)"},
        {"grid-template-columns", "[Red] 1em minmax(0,1fr) repeat(2, auto)",
         "[Red] 10px minmax(0px, 1fr) repeat(2, auto)"},
        {"transition-timing-function", "cubic-bezier(.1,.2,.3,1),EASE-IN",
         "cubic-bezier(0.1, 0.2, 0.3, 1), ease-in"},
        {"list-style-type", "DISC", "disc"},
        {"list-style-type", "Foo", "Foo"},
        {"aspect-ratio", "16/9", "16 / 9"},
        {"aspect-ratio", "1", "1 / 1"},
        {"aspect-ratio", "1 / 2 AUTO", "auto 1 / 2"},
    };
    ExpectValues(kCases);
}

TEST(PixelsOf, ReadsComputedLengths) {
    EXPECT_EQ(PixelsOf("12.5px"), 12.5);
    EXPECT_EQ(PixelsOf("-3px"), -3);
    EXPECT_EQ(PixelsOf("1e+06px"), 1e6);
    for (const std::string_view none : {"", "auto", "12", "12%", "px", "12em", "calc(1% + 2px)"})
        EXPECT_EQ(PixelsOf(none), 0) << none;
}
