// SPDX-License-Identifier: MIT

// What is left out of a damaged style sheet, and what stays: CSS Syntax Level 3.

#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/SheetStory.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace {

using Dom::CSS::DroppedText;
using Dom::CSS::ParseStyleSheet;
using support::ExpectSheets;

}  // namespace

TEST(ParseStyleSheet, ReadsRules) {
    ExpectSheets({
        {"", ""},
        {" \n\t", ""},
        {"a{}", "a {  }"},
        {"a { color: red }", "a { color: red }"},
        {"a{b:c}d{e:f}", "a { b: c } | d { e: f }"},
        {"a , b > c { d : e ; f:g; }", "a , b > c { d: e; f: g }"},
        {"a { b: 1px  2px }", "a { b: 1px 2px }"},
        {"a { margin: 1px 2px }",
         "a { margin-top: 1px; margin-right: 2px; margin-bottom: 1px; margin-left: 2px }"},
        {"a { b: c !important; d: e ! IMPORTANT }", "a { b: c !important; d: e !important }"},
        {"a { b: c; b: d }", "a { b: c; b: d }"},
        {"a:hover::before, a ~ b, [c], d[e^='f'] { g: h }",
         "a:hover::before, a ~ b, [c], d[e^='f'] { g: h }"},
        {"a{b:c}\n\n", "a { b: c }"},
    });
}

TEST(ParseStyleSheet, PassesOverComments) {
    ExpectSheets({
        {"/**/", ""},
        {"/* a{} */ b{}", "b {  }"},
        {"a/**/{b:c}", "a { b: c }"},
        {"a /*{*/ b{c:d}", "a   b { c: d }"},
        {"a{/* x */b/**/:/**/c/**/;/**/d:e/**/}", "a { b: c; d: e }"},
        {"a{b:c/*;}*/d}", "a { b: c d }"},
        {"a{b:c/**/!/**/important/**/}", "a { b: c !important }"},
        {"a{b:'/*'; c: url(/*x) ; d: \"*/\"}", "a { b: \"/*\"; c: url(\"/*x\"); d: \"*/\" }"},
        {"a{b:c}/* no end", "a { b: c }"},
        {"a{b:c/* no end", "a { b: c }"},
        {"a{b:/**/}", "a {  }", "1:3 Property value missing"},
        // Two names next to each other are no name.
        {"a/**/b{c:d} .a/**/.b{c:d}", "a b { c: d } | .a .b { c: d }"},
    });
}

TEST(ParseStyleSheet, LeavesOutBadDeclarationsOnly) {
    ExpectSheets({
        {"a{color red;b:c}", "a { b: c }", "1:3 Expected ':'"},
        {"a{;;b:c;;d:e;}", "a { b: c; d: e }"},
        {"a{1b:c;d:e}", "a { d: e }", "1:3 Invalid property name"},
        {"a{:c;d:e}", "a { d: e }", "1:3 Invalid property name"},
        {"a{b:;c:d}", "a { c: d }", "1:3 Property value missing"},
        {"a{b: ;c:d}", "a { c: d }", "1:3 Property value missing"},
        {"a{b}", "a {  }", "1:3 Expected ':'"},
        {"a{b;c:d}", "a { c: d }", "1:3 Expected ':'"},
        {"a{b:c !ie;d:e}", "a { d: e }", "1:3 Invalid importance identifier"},
        {"a{b:c !;d:e}", "a { d: e }", "1:3 Invalid importance identifier"},
        {"a{b:c !important d;e:f}", "a { e: f }", "1:3 Invalid importance identifier"},
        {"a{b:!c !important;e:f}", "a { e: f }", "1:3 Invalid property value"},
        {"a{b:!important;c:d}", "a { c: d }", "1:3 Property value missing"},
        {"a{b:c);d:e}", "a { d: e }", "1:3 Invalid property value"},
        {"a{b:c];d:e}", "a { d: e }", "1:3 Invalid property value"},
        {"a{b:(;c:d);e:f}", "a { b: (;c:d); e: f }"},
        {"a{b:{c:d};e:f}", "a { e: f }", "1:3 Invalid property value"},
        {"a{b:'x\n;c:d}", "a { c: d }", "1:3 Invalid property value"},
        {"a{b:url(x y);c:d}", "a { c: d }", "1:3 Invalid property value"},
        {"a{b:url(x'y);c:d}", "a { c: d }", "1:3 Invalid property value"},
        {"a{b:url(x(y);c:d}", "a { c: d }", "1:3 Invalid property value"},
        {"a{@b c;d:e}", "a { d: e }", "1:3 Rule in a style block"},
        {"a{@b{c:d}e:f}", "a { e: f }", "1:3 Rule in a style block"},
        {"a{b:c;&:hover{d:e}f:g;h:i}", "a { b: c; h: i }", "1:7 Invalid property name"},
        {"a{\n b:c;\n  d e;\n\tf g\n}", "a { b: c }", "3:3 Expected ':', 4:2 Expected ':'"},
        {"\xC3\xA4{\xC3\xB6:\xC3\xBC;\xC3\x9F}", "\xC3\xA4 { \xC3\xB6: \xC3\xBC }",
         "1:7 Expected ':'"},
    });
}

TEST(ParseStyleSheet, KeepsNamesOfVendorsAndCustomProperties) {
    ExpectSheets({
        {"a{-moz-b:c;-webkit-d:e}", "a { -moz-b: c; -webkit-d: e }"},
        {"a{--b:c;d:e}", "a { --b: c; d: e }"},
        {"a{--b:;--c: ;d:e}", "a { --b: ; --c: ; d: e }"},
        {"a{--b:{c:d;e};f:g}", "a { --b: {c:d;e}; f: g }"},
        {"a{--B: [ ; ] !important}", "a { --B: [ ; ] !important }"},
        {"a{--:b}", "a { --: b }"},
        {"a{_b:c}", "a { _b: c }"},
        {"a{b\\:c:d}", "a { b:c: d }"},
        {"a{color:red\\9 }", "a { color: red\\9 }"},
        {"a{filter:alpha(opacity=50)}", "a { filter: alpha(opacity=50) }"},
    });
}

// Deliberate: "*zoom" is no property of CSS.
TEST(ParseStyleSheet, DeliberateAStarMayStandBeforeAName) {
    ExpectSheets({
        {"a{*zoom:1;b:c}", "a { *zoom: 1; b: c }"},
        {"a{* zoom:1;b:c}", "a { b: c }", "1:3 Invalid property name"},
        {"a{**zoom:1;b:c}", "a { b: c }", "1:3 Invalid property name"},
        {"a{$zoom:1;b:c}", "a { b: c }", "1:3 Invalid property name"},
    });
}

// Values with escapes stay as they are written; other strings are printed in double quotes.
TEST(ParseStyleSheet, WhatEndsDeclarationsDoesNotInStringsAndBrackets) {
    ExpectSheets({
        {"a{b:';}';c:d}", "a { b: \";}\"; c: d }"},
        {"a{b:\"!\";c:d}", "a { b: \"!\"; c: d }"},
        {"a{b:'\\';';c:d}", "a { b: '\\';'; c: d }"},
        {"a{b:'x\\\ny';c:d}", "a { b: 'x\\\ny'; c: d }"},
        {"a{b:url(data:image/png;base64,AA==);c:d}",
         "a { b: url(\"data:image/png;base64,AA==\"); c: d }"},
        {"a{b:URL( x;y );c:d}", "a { b: URL( x;y ); c: d }"},
        {"a{b:u\\72l(x;y{);c:d}", "a { b: u\\72l(x;y{); c: d }"},
        {"a{b:url('x;y');c:d}", "a { b: url(\"x;y\"); c: d }"},
        {"a{b:url(x\\);y);c:d}", "a { b: url(x\\);y); c: d }"},
        {"a{b:curl(x y);c:d}", "a { b: curl(x y); c: d }"},
        {"a{b:'\\66\nx;';c:d}", "a { b: '\\66\nx;'; c: d }"},
        {"a{b:url(\\66 x);c:d}", "a { b: url(\\66 x); c: d }"},
        {"a{b:f(g[h;i]);c:d}", "a { b: f(g[h;i]); c: d }"},
        {"a{b:c\\;d:e}", "a { b: c\\;d:e }"},
        {"a{b:c\\!d}", "a { b: c\\!d }"},
        {"a{b:\\;;c:d}", "a { b: \\;; c: d }"},
        {"a[b='{;}']{c:d}", "a[b='{;}'] { c: d }"},
    });
}

TEST(ParseStyleSheet, LeavesOutBadRulesOnly) {
    ExpectSheets({
        {"{b:c}d{e:f}", "d { e: f }", "1:1 Syntax error in selector"},
        {"a b >{c:d}d{e:f}", "d { e: f }", "1:6 Syntax error in selector"},
        {"a,{c:d}d{e:f}", "d { e: f }", "1:3 Syntax error in selector"},
        {"a;b{c:d}e{f:g}", "e { f: g }", "1:2 Syntax error in selector"},
        {"a{b:c}}d{e:f}g{h:i}", "a { b: c } | g { h: i }", "1:7 Syntax error in selector"},
        {"1{b:c}d{e:f}", "d { e: f }", "1:1 Syntax error in selector"},
        {"a{b:c}\n d &{e:f}", "a { b: c }", "2:4 Syntax error in selector"},
        {"a{b:c}d", "a { b: c }", "1:7 Expected a block"},
        {"a{b:c}d;", "a { b: c }", "1:7 Expected a block"},
        {"@{b:c}d{e:f}", "d { e: f }", "1:1 Syntax error in selector"},
        {"a({b:c}d{e:f}", "", "1:1 Expected a block"},
        {"a){b:c}d{e:f}", "d { e: f }", "1:2 Syntax error in selector"},
        {"&{x:{y;}z}d{e:f}", "d { e: f }", "1:1 Syntax error in selector"},
        {"--a{b:c}", "", "1:1 Syntax error in selector"},
    });
}

TEST(ParseStyleSheet, MarksOfHtmlCommentsCountForNothingAtTheTop) {
    ExpectSheets({
        {"<!-- a{b:c} -->", "a { b: c }"},
        {"<!--a{b:c}--> <!-- -->d{e:f}", "a { b: c } | d { e: f }"},
        {"@media a{<!-- b{c:d}e{f:g}}", "@media a { e { f: g } }", "1:10 Syntax error in selector"},
        {"a{<!-- b:c;d:e}", "a { d: e }", "1:3 Invalid property name"},
    });
}

TEST(ParseStyleSheet, TheEndClosesEverything) {
    ExpectSheets({
        {"a{b:c", "a { b: c }"},
        {"a{b:c;", "a { b: c }"},
        {"a{", "a {  }"},
        {"a{b", "a {  }", "1:3 Expected ':'"},
        {"a{b:", "a {  }", "1:3 Property value missing"},
        {"a{b:'c", "a { b: \"c\" }"},
        {"a{b:url(c", "a { b: url(\"c\") }"},
        {"a{b:url( 'c", "a { b: url(\"c\") }"},
        {"a{b:f([c", "a { b: f([c]) }"},
        {"a{b:c;--d:{e", "a { b: c; --d: {e} }"},
        {"a{b:\\", "a { b: \\\xEF\xBF\xBD }"},
        {"@media a{b{c:d", "@media a { b { c: d } }"},
        {"@media a{b{c:d}", "@media a { b { c: d } }"},
        {"@import 'a", "@import \"a\";"},
        {"@import url(a", "@import \"a\";"},
        {"@a b", "@a b"},
        {"@a{b", "@a{b"},
    });
}

TEST(ParseStyleSheet, NulIsAReplacementCharacter) {
    ExpectSheets({
        {{"a{b:c\0d}", 8},
         "a { b: c\xEF\xBF\xBD"
         "d }"},
        {{"a\0{b:c}", 7}, "a\xEF\xBF\xBD { b: c }"},
        {{"\0", 1}, "", "1:1 Expected a block"},
    });
}

TEST(ParseStyleSheet, EveryTextBreakIsSpace) {
    ExpectSheets({
        {"a\r\nb\f{c\r:\r\nd\f}", "a\r\nb { c: d }"},
        {"a{b:c}\r\n\re f{g}\f{h}", "a { b: c } | e f {  }",
         "3:5 Expected ':', 4:1 Syntax error in selector"},
    });
}

TEST(ParseStyleSheet, TellsWhatIsLeftOut) {
    std::vector<DroppedText> dropped;
    ParseStyleSheet("a { b c ; d:e } 1 { f:g }" + ("h " + std::string(100, 'i') + "&{}"),
                    {.dropped = &dropped});
    ASSERT_EQ(dropped.size(), 3U);
    EXPECT_EQ(dropped[0].kind, DroppedText::Kind::Declaration);
    EXPECT_EQ(dropped[0].text, "b c");
    EXPECT_EQ(dropped[1].kind, DroppedText::Kind::Rule);
    EXPECT_EQ(dropped[1].text, "1 { f:g }");
    EXPECT_EQ(dropped[2].text, "h " + std::string(78, 'i'));
}

TEST(ParseStyleSheet, SpecificityIsAsRulesCountIt) {
    const struct {
        const char* selectors;
        int specificity;
    } kCases[] = {
        {"a", 1},
        {"a, b", 2},
        {"#a .b c", 1001001},
        {"a:hover", 1001},
        {"a::before", 1},
        {"a ~ b", 2},
        {"[a]", 1000},
        {"#a[b][c~=d]", 1002000},
        {"*", 0},
        {"*|a", 1},
        {"a:is(b, #c)", 1},
        {"a:focus-visible", 1},
        {"a:not(.b)", 1001},
        {"::-moz-x", 0},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.selectors);
        const auto sheet = ParseStyleSheet(std::string(c.selectors) + "{b:c}");
        ASSERT_EQ(sheet->CssRules().Length(), 1U);
        const auto& rule = static_cast<const Dom::CSS::CSSStyleRule&>(*sheet->CssRules().Item(0));
        EXPECT_EQ(rule.Specificity(), c.specificity);
        EXPECT_EQ(rule.SelectorText(), c.selectors);
    }
}

TEST(ParseStyleSheet, ManyBracketsTakeLinearTimeAndNoStack) {
    const auto begin = std::chrono::steady_clock::now();
    for (const char* const piece :
         {"(", "[", "{", "a{b:(", "@media a{", "@a{", "a{b:url(", "'", "/*", "\\", "a{b:\\61", ")",
          "}", "a:not(", "a[b=", "<!--", "!", "@"}) {
        std::string text;
        while (text.size() < 1'000'000)
            text += piece;
        const auto sheet = ParseStyleSheet(text);
        EXPECT_LE(sheet->CssRules().Length(), text.size() / 2);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST(ParseStyleSheet, EveryTruncationIsASheet) {
    const std::string text =
        "@charset \"UTF-8\";@import url(a.css) print;<!-- @media screen and (min-width: 1px) { a, "
        "b > "
        "c:not(.d)::after { e: f('g;', [h]) !important; --i: { j }; k\\:l: url( m ) } } @font-face "
        "{ n: "
        "\"o\\\"p\" } @page :first { margin: 1px } @q r { s { t } } u[v~=\"w\"] { *x: y /* z */ }";
    std::size_t rules = 0;
    for (std::size_t length = 0; length <= text.size(); ++length)
        rules = std::max<std::size_t>(rules,
                                      ParseStyleSheet(text.substr(0, length))->CssRules().Length());
    EXPECT_EQ(rules, 7U);
}
