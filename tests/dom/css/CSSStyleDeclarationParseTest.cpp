// SPDX-License-Identifier: MIT

// How a declaration reads texts: names, where values end, importance, and what is left after a
// fault. Expectations are written as support::Parsed() gives them.

#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/DeclarationText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>

namespace {

using Dom::CSS::CSSStyleDeclaration;
using support::ExpectParsed;
using support::Parsed;
using support::PropertiesOf;

}  // namespace

TEST(CSSStyleDeclarationParse, WithoutPropertiesThereIsNothing) {
    ExpectParsed({{"", ""}, {" ", ""}, {" \t\n\r\f", ""}});
}

TEST(CSSStyleDeclarationParse, PropertiesAreReadInTheirOrder) {
    ExpectParsed({
        {"color: red", "color: red"},
        {"color:red", "color: red"},
        {"color: red;", "color: red"},
        {"color: red ; ", "color: red"},
        {"color:red;width:1px", "color: red; width: 1px"},
        {"width: 1px; color: red;", "width: 1px; color: red"},
        {" \t\n\r\fcolor \t\n\r\f: \t\n\r\fred \t\n\r\f; \t\n\r\fwidth:1px",
         "color: red; width: 1px"},
        {"color: red; color: blue", "color: red; color: blue"},  // both are kept
    });
}

TEST(CSSStyleDeclarationParse, NamesAreIdentifiersAsTheyAreWritten) {
    ExpectParsed({
        {"COLOR: red", "COLOR: red"},
        {"unknown: red", "unknown: red"},
        {"-moz-box: red", "-moz-box: red"},
        {"_zoom: 1", "_zoom: 1"},
        {"a1-b_2: red", "a1-b_2: red"},
        {"\xC3\xA9t\xC3\xA9: red", "\xC3\xA9t\xC3\xA9: red"},
        {"c\\6f lor: red", "color: red"},
    });
}

TEST(CSSStyleDeclarationParse, WhatIsNoIdentifierIsNoName) {
    for (const char* const text : {"1a: b", ":", ": red", ";", "#a: b", "*zoom: 1", "--x: 1",
                                   "-: b", "-1: b", "{", "}", "/* c */ a: b", "\"a\": b", "!", "."})
        EXPECT_EQ(Parsed(text), " | 12 Invalid property name") << text;
}

TEST(CSSStyleDeclarationParse, AColonFollowsAName) {
    for (const char* const text : {"color red", "color", "color ", "color;", "color=red",
                                   "a /* c */: b", "color !important", "color: b; color"}) {
        const std::string error = Parsed(text);
        EXPECT_TRUE(error.ends_with(" | 12 Expected ':'")) << text << ": " << error;
    }
}

TEST(CSSStyleDeclarationParse, AValueMayBeEmpty) {
    ExpectParsed({
        {"color:", "color: "},
        {"color: \t", "color: "},
        {"color:;width:1px", "color: ; width: 1px"},
        {"color:!important", "color:  !important"},
    });
}

TEST(CSSStyleDeclarationParse, AValueIsAllUpToItsEnd) {
    ExpectParsed({
        {"color: red x", "color: red x"},
        {"content: 'a b', c", "content: \"a b\",c"},
        {"a: b: c", "a: b: c"},
        {"a: b } q { c", "a: b } q { c"},
        {"a: b /* c */", "a: b /* c */"},
        {"a: b\nc: d", "a: b\nc: d"},
    });
}

// Deliberate: neither quotes nor parentheses hide a ";" or a "!".
TEST(CSSStyleDeclarationParse, DeliberateAValueEndsInsideOfQuotesAndParentheses) {
    ExpectParsed({
        {"content: \"a;b\"", "content: \"a | 12 Expected ':'"},
        {"content: 'a;b: c'", "content: 'a; b: c'"},
        {"content: \"a!important\"",
         "content: \"a !important | 12 Unexpected token after property"},
        {"content: \"a!\"", " | 12 Invalid importance identifier"},
        {"src: url(a;b)", "src: url(a | 12 Expected ':'"},
        {"src: url(a;b:c)", "src: url(a; b: c)"},
        {"src: url(a!b)", "src: url(a | 12 Unexpected token after property"},
    });
}

TEST(CSSStyleDeclarationParse, ImportantIsWrittenBehindTheValue) {
    ExpectParsed({
        {"a: b!important", "a: b !important"},
        {"a: b !important", "a: b !important"},
        {"a: b ! \t\n\r\fimportant \t\n\r\f; c: d", "a: b !important; c: d"},
        {"a: b !important;", "a: b !important"},
        {"a: b !IMPORTANT; c: d !ImPortAnt", "a: b !important; c: d !important"},
        {"a: b c, d !important", "a: b c, d !important"},
        {"a: b !imp\\6frtant", "a: b !important"},
    });
}

TEST(CSSStyleDeclarationParse, AnotherImportanceIsReadAndMeansNothing) {
    ExpectParsed({
        {"a: b !urgent", "a: b"},
        {"a: b !importan; c: d", "a: b; c: d"},
        {"a: b !important-1; c: d !ie", "a: b; c: d"},
    });
}

TEST(CSSStyleDeclarationParse, AnImportanceIsAnIdentifier) {
    for (const char* const text :
         {"color: red !", "color: red ! ", "color: red !;", "a: b ! ;", "a: b !1",
          "a: b !!important", "a: b !\"important\"", "margin: !1", "margin: 1px !"})
        EXPECT_EQ(Parsed(text), " | 12 Invalid importance identifier") << text;
}

TEST(CSSStyleDeclarationParse, ASemicolonOrTheEndFollowsAnImportance) {
    ExpectParsed({
        {"a: b !important x", "a: b !important | 12 Unexpected token after property"},
        {"a: b !important !important", "a: b !important | 12 Unexpected token after property"},
        {"a: b !x }", "a: b | 12 Unexpected token after property"},
        {"a: b !important, c: d", "a: b !important | 12 Unexpected token after property"},
        {"margin: 0 !x y",
         "[margin-top: 0]; [margin-right: 0]; [margin-bottom: 0]; [margin-left: 0]"
         " | 12 Unexpected token after property"},
    });
}

TEST(CSSStyleDeclarationParse, PropertiesBeforeAFaultStay) {
    ExpectParsed({
        {"color: red; ;", "color: red | 12 Invalid property name"},
        {"color: red;;", "color: red | 12 Invalid property name"},
        {"color: red;; width: 1px", "color: red | 12 Invalid property name"},
        {"color: red; width 1px; a: b", "color: red | 12 Expected ':'"},
        {"color: red; a: b !; c: d", "color: red | 12 Invalid importance identifier"},
        {"color: red; a: b !x y; c: d", "color: red; a: b | 12 Unexpected token after property"},
        {"color: red; margin: ; c: d", "color: red | 12 Property value missing"},
        {"margin: i; margin: !important", "margin: i | 12 Property value missing"},
    });
}

TEST(CSSStyleDeclarationParse, ATextReplacesAllPropertiesAlsoWhenItIsRefused) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("a: b; c: d");
    declaration.SetCssText("e: f");
    EXPECT_EQ(PropertiesOf(declaration), "e: f");
    EXPECT_DOM_ERROR(declaration.SetCssText("g: h; 1"), "12 Invalid property name");
    EXPECT_EQ(PropertiesOf(declaration), "g: h");
    EXPECT_DOM_ERROR(declaration.SetCssText("1"), "12 Invalid property name");
    EXPECT_EQ(PropertiesOf(declaration), "");
    declaration.SetCssText("a: b");
    declaration.SetCssText("");
    EXPECT_EQ(declaration.Length(), 0U);
}

TEST(CSSStyleDeclarationParse, TakesBothKindsOfStrings) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText(astring("margin: 1px; color: red"));
    EXPECT_EQ(declaration.Length(), 5U);
    EXPECT_DOM_ERROR(declaration.SetCssText(astring("color red")), "12 Expected ':'");
    EXPECT_EQ(declaration.Length(), 0U);
}

TEST(CSSStyleDeclarationParse, ReadsItsOwnText) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("color: red; font: 12px/1.5 a, b !important");
    declaration.SetCssText(declaration.CssText());
    EXPECT_EQ(PropertiesOf(declaration), "color: red; font: 12px/1.5 a, b !important");
}

// Every prefix of a declaration gives what was complete, and one of the messages or none.
TEST(CSSStyleDeclarationParse, EveryTruncationKeepsWhatWasComplete) {
    const std::string text = "a: b !important; margin: 1px 2px; c: 'd' !x; e: f";
    const std::string messages[] = {"", "12 Invalid property name", "12 Expected ':'",
                                    "12 Invalid importance identifier",
                                    "12 Property value missing"};
    for (std::size_t length = 0; length <= text.size(); ++length) {
        SCOPED_TRACE(text.substr(0, length));
        CSSStyleDeclaration declaration(nullptr);
        const std::string error =
            support::DomErrorOf([&] { declaration.SetCssText(text.substr(0, length).c_str()); });
        EXPECT_NE(std::find(std::begin(messages), std::end(messages), error), std::end(messages))
            << error;
        if (length >= text.find(';')) {
            EXPECT_EQ(declaration.GetPropertyPriority("a"), "important");
        }
        if (length >= text.find("; c:")) {
            EXPECT_EQ(declaration.GetPropertyValue("margin-left"), "2px");
        }
    }
}

TEST(CSSStyleDeclarationHostile, LongTextsTakeLinearTime) {
    constexpr int kMany = 200'000;
    std::string text;
    for (int i = 0; i < kMany; ++i)
        text += "p" + std::to_string(i) + ": 1px;";
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText(text.c_str());
    EXPECT_EQ(declaration.Length(), static_cast<unsigned>(kMany));
    const std::string tokens(2'000'000, ' ');
    declaration.SetCssText(("margin: 1px" + tokens + "2px" + tokens + "; a: b").c_str());
    EXPECT_EQ(PropertiesOf(declaration),
              "[margin-top: 1px]; [margin-right: 2px]; [margin-bottom: 1px]; [margin-left: 2px]; "
              "a: b");
    declaration.SetCssText(("a: " + std::string(5'000'000, 'b')).c_str());
    EXPECT_EQ(declaration.GetPropertyValue("a").size(), 5'000'000U);
}
