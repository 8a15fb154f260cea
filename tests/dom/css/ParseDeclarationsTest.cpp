// SPDX-License-Identifier: MIT

// What stands in an attribute "style", read with the error recovery of CSS Syntax Level 3.

#include <espalier/dom/css/ParseDeclarations.h>

#include "dom/css/SheetStory.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::DroppedText;
using Dom::CSS::ParseDeclarations;
using support::DropsOf;

// Names are printed without the escapes that they need.
bool HasEscapedName(const Dom::CSS::CSSStyleDeclaration& style) {
    return std::ranges::any_of(style.Properties(), [](const auto* property) {
        return property->Name().view().find_first_of(" !\"'(){}[],;:/\\#@.\n") !=
               std::string_view::npos;
    });
}

}  // namespace

TEST(ParseDeclarations, ReadsDeclarations) {
    const struct {
        std::string_view text;
        const char* expected;
        const char* drops = "";
    } kCases[] = {
        {"", ""},
        {" \n;; ;", ""},
        {"color:red", "color: red"},
        {" color : red ; width: 1px;", "color: red; width: 1px"},
        {"a: b !important; c: d", "a: b !important; c: d"},
        {"a: ';}'; b: c", "a: \";}\"; b: c"},
        {"a: url(data:x;y); b: c", "a: url(\"data:x;y\"); b: c"},
        {"/* a: b */ c: /* ; */ d", "c: d"},
        {"--a: {b: c}; d: e", "--a: {b: c}; d: e"},
        {"gap: 1px", "gap: 1px"},
        {"padding: 1px 2px",
         "padding-top: 1px; padding-right: 2px; padding-bottom: 1px; padding-left: 2px"},
        {"color red; a: b", "a: b", "1:1 Expected ':'"},
        {"a: b;\n  1c: d;\n e: f; g", "a: b; e: f", "2:3 Invalid property name, 3:8 Expected ':'"},
        {"a: b !ie; c: d", "c: d", "1:1 Invalid importance identifier"},
        {"a:; b: c", "b: c", "1:1 Property value missing"},
        {"{a: b} c: d; e: f", "e: f", "1:1 Invalid property name"},
        {"@a {b: c} d: e", "d: e", "1:1 Rule in a style block"},
        {"@a; d: e", "d: e", "1:1 Rule in a style block"},
        // Nothing has opened a block, so nothing closes one.
        {"a: b } ; c: d", "c: d", "1:1 Invalid property value"},
        {"} a: b; c: d", "c: d", "1:1 Invalid property name"},
        {"a: b; @c } d; e: f", "a: b; e: f", "1:7 Rule in a style block"},
        {"a: (b", "a: (b)"},
        {"a: 'b", "a: \"b\""},
        // CSS Syntax Level 3 sections 4.3.5 and 4.3.7.
        {"a: 'b\\", "a: \"b\""},
        {"a: b\\", "a: b\\\xEF\xBF\xBD"},
        {"a: f(b\\", "a: f(b\\\xEF\xBF\xBD)"},
        {"a: b\\ !important; c: d", "a: b\\  !important; c: d"},
        {"<!-- a: b; c: d", "c: d", "1:1 Invalid property name"},
        {std::string_view("a: b\0c", 6),
         "a: b\xEF\xBF\xBD"
         "c"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::PrintToString(c.text));
        std::vector<DroppedText> dropped;
        EXPECT_EQ(ParseDeclarations(c.text, &dropped)->CssText(), c.expected);
        EXPECT_EQ(DropsOf(dropped), c.drops);
        EXPECT_EQ(ParseDeclarations(c.text)->CssText(), c.expected);
    }
}

TEST(ParseDeclarations, BelongsToNoRule) {
    const auto style = ParseDeclarations("margin: 1px; color: red !important");
    EXPECT_EQ(style->ParentRule(), nullptr);
    ASSERT_EQ(style->Length(), 5U);
    EXPECT_TRUE(style->Properties().Item(0)->Shorthand());
    const Dom::CSS::CSSPropertyImpl& color = *style->Properties().Item(4);
    EXPECT_FALSE(color.Shorthand());
    EXPECT_TRUE(color.Important());
    EXPECT_EQ(color.Origin(), CSSRule::Author);
    EXPECT_EQ(color.Specificity(), 0);
}

TEST(ParseDeclarations, WhatIsSetLaterIsReadAsEver) {
    const auto style = ParseDeclarations("margin: 1px");
    style->SetCssText("border: 1px solid blue");
    EXPECT_EQ(style->GetPropertyValue("border-top-color"), "");
    EXPECT_EQ(style->GetPropertyValue("border-top-width"), "1px");
}

// Values mean what was read, so what is printed is read as the same again.
TEST(ParseDeclarations, WhatIsPrintedIsReadAsTheSame) {
    constexpr const char* kPieces[] = {
        "a",     "b-c",      "--x",      "margin", "border", "background", ":",     ": ",
        ";",     "; ",       " ",        "\n",     "1px",    "0 2em",      "red",   "inset",
        "'x'",   "\"y'z\"",  "url(a b)", "url(a)", "!",      "!important", "\\41 ", "\xC3\xA9",
        "(",     ")",        "}",        "{",      "[",      "]",          "/**/",  "/*",
        "1.50",  ".5em",     "1e3",      "2rad",   "/",      ",",          "solid", "counter(x)",
        "attr(", "var(--x)", "#abc",     "'\\'",   "\\",     "rect(",      "@x",    "'"};
    unsigned state = 7;
    const auto next = [&state] {
        state = state * 1664525U + 1013904223U;
        return state >> 16;
    };
    int declarations = 0;
    for (int i = 0; i < 100'000; ++i) {
        std::string text = i % 2 == 0 ? "a:" : i % 3 == 0 ? "margin:" : "background:";
        for (unsigned count = next() % 10; count > 0; --count)
            text += kPieces[next() % std::size(kPieces)];
        const auto style = ParseDeclarations(text);
        if (HasEscapedName(*style)) continue;
        const std::string printed = style->CssText().str();
        const auto again = ParseDeclarations(printed);
        ASSERT_EQ(again->CssText(), printed) << testing::PrintToString(text);
        ASSERT_EQ(again->Length(), style->Length()) << testing::PrintToString(text);
        declarations += static_cast<int>(style->Length());
    }
    EXPECT_GT(declarations, 50'000);
}

TEST(ParseDeclarations, TakesTimeInProportionToTheText) {
    std::string bad;
    for (int i = 0; i < 50'000; ++i)
        bad += "a b; c: d;\n";
    const auto begin = std::chrono::steady_clock::now();
    std::vector<DroppedText> dropped;
    EXPECT_EQ(ParseDeclarations(bad, &dropped)->Length(), 50'000U);
    EXPECT_EQ(dropped.size(), 50'000U);
    EXPECT_EQ(dropped.back().place.line, 50'000);
    EXPECT_EQ(ParseDeclarations("a: " + std::string(500'000, '('))->Length(), 1U);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}
