// SPDX-License-Identifier: MIT
#include "dom/css/StyledPage.h"

#include <gtest/gtest.h>

#include <string>

// What of a sheet counts: by "@supports", "@namespace" and whether selectors are right.

namespace {

using support::StyledPage;

struct Case {
    const char* name;
    const char* text;
    bool counts;
};

std::string NameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

const Case kConditions[] = {
    {"Known", "(float: left)", true},
    {"UnknownValue", "(float: middle)", false},
    {"UnknownProperty", "(no-such: left)", false},
    {"Shorthand", "(margin: 1px 2px)", true},
    {"ShorthandThatIsNone", "(margin: red)", false},
    {"Custom", "(--a: b)", true},
    {"Variable", "(color: var(--a))", true},
    {"Important", "(float: left !important)", true},
    {"TwoDeclarations", "(float: left; nonsense)", false},
    {"Not", "not (no-such: left)", true},
    {"NotKnown", "not (float: left)", false},
    {"And", "(float: left) and (color: red)", true},
    {"AndNot", "(float: left) and (no: red)", false},
    {"Or", "(no: left) or (color: red)", true},
    {"OrNone", "(no: left) or (no: red)", false},
    {"Three", "(float: left) and (color: red) and (clear: both)", true},
    {"Mixed", "(float: left) and (color: red) or (clear: both)", false},
    {"MixedInParentheses", "((float: left) and (no: red)) or (clear: both)", true},
    {"NotInParentheses", "(not (no: left)) and (color: red)", true},
    {"NotWithoutThem", "not (no: left) and (color: red)", false},
    {"NoSpaceBehindNot", "not(no: left)", true},
    {"AnyCase", "NOT (NO: left)", true},
    {"Selector", "selector(a > b)", true},
    {"SelectorThatIsNone", "selector(a >> b)", false},
    {"Function", "font-tech(color-COLRv1)", false},
    {"NotFunction", "not font-tech(color-COLRv1)", true},
    {"Unclosed", "(float: left", false},
    {"Empty", "()", false},
    {"Bare", "float: left", false},
};

class SupportsTest : public testing::TestWithParam<Case> {};

constexpr char kNames[] = "@namespace n 'urn:n'; @namespace url(urn:d); ";

const Case kSelectors[] = {
    {"Plain", "#p", true},
    {"AGroup", "#q, #p", true},
    {"AGroupWithAnUnknownClass", "p:no-such, #p", false},
    {"AGroupWithAnUnknownPart", "p::no-such, #p", false},
    {"AGroupWithAnUnknownPrefix", "x|p, #p", false},
    {"AGroupWithABadArgument", "p:nth-child(2 n), #p", false},
    {"AGroupWithAClassOfLevel4", "p:focus-visible, #p", true},
    {"AGroupWithAFunctionOfLevel4", "p:is(a, b), #p", true},
    {"AGroupWithAPartOfAVendor", "p::-webkit-scrollbar, #p", true},
    {"AGroupWithAPartOfLevel4", "p::marker, #p", true},
    {"ClassesOfLevel4SelectNothing", "p:focus-visible", false},
};

class ValidSelectorTest : public testing::TestWithParam<Case> {};

const Case kNamespaces[] = {{"Prefix", "n|e", true},
                            {"OtherPrefix", "m|e", false},
                            {"Any", "*|e", true},
                            {"None", "|e", false},
                            {"WithoutPrefix", "e", false},
                            {"OfTheDefault", "d", true},
                            {"Attribute", "n|e[n|a]", true},
                            {"AttributeWithoutPrefix", "n|e[a]", false},
                            {"AnyAttribute", "n|e[*|a]", true}};

class SheetNamespaceTest : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(SupportsTest, Condition) {
    const std::string text = GetParam().text;
    StyledPage page("<p/>", "@supports " + text + " { p { float: left } }");
    EXPECT_EQ(page.Value("p", "float"), GetParam().counts ? "left" : "none");
}

INSTANTIATE_TEST_SUITE_P(Style, SupportsTest, testing::ValuesIn(kConditions), NameOf);

TEST(SupportsTest, ManyParenthesesDoNotHold) {
    const auto value = [](int depth) {
        const auto count = static_cast<std::size_t>(depth);
        const std::string text = std::string(count, '(') + "float: left" + std::string(count, ')');
        StyledPage page("<p/>", "@supports " + text + " { p { float: left } }");
        return page.Value("p", "float");
    };
    EXPECT_EQ(value(32), "left");
    EXPECT_EQ(value(34), "none");
    EXPECT_EQ(value(100'000), "none");
}

TEST(SupportsTest, RulesInEachOther) {
    StyledPage page("<p/>",
                    "@media screen { @supports (float: left) { @media all { p { float: "
                    "left } } } } @supports (no: left) { @media all { p { float: right } "
                    "} }");
    EXPECT_EQ(page.Value("p", "float"), "left");
}

TEST_P(ValidSelectorTest, OneThatIsWrongMakesAllWrong) {
    StyledPage page("<r><p id='p'/></r>", std::string(GetParam().text) + " { float: left }");
    EXPECT_EQ(page.Value("#p", "float"), GetParam().counts ? "left" : "none");
}

INSTANTIATE_TEST_SUITE_P(Style, ValidSelectorTest, testing::ValuesIn(kSelectors), NameOf);

TEST_P(SheetNamespaceTest, Prefix) {
    StyledPage page(
        "<r><e xmlns='urn:n' xmlns:n='urn:n' id='x' n:a='1'/><d xmlns='urn:d' id='y'/></r>",
        kNames + std::string(GetParam().text) + " { float: left }");
    const std::string id = std::string(GetParam().text) == "d" ? "#y" : "#x";
    EXPECT_EQ(page.Value(id, "float"), GetParam().counts ? "left" : "none");
}

INSTANTIATE_TEST_SUITE_P(Style, SheetNamespaceTest, testing::ValuesIn(kNamespaces), NameOf);

TEST(SheetNamespaceTest, WhereTheyStand) {
    const struct {
        const char* sheet;
        bool counts;
    } cases[] = {
        {"@charset 'x'; @import 'a.css'; @namespace n 'urn:n'; n|e { float: left }", true},
        {"@layer a; @namespace n 'urn:n'; n|e { float: left }", true},
        {"p { } @namespace n 'urn:n'; n|e { float: left }", false},
        {"@media all { } @namespace n 'urn:n'; n|e { float: left }", false},
        {"@namespace n 'urn:m'; @namespace n 'urn:n'; n|e { float: left }", true},
        {"@NAMESPACE n URL( 'urn:n' ) ; n|e { float: left }", true},
        {"@namespace n urn; n|e { float: left }", false},
        {"@namespace n 'urn:n' x; n|e { float: left }", false},
        {"@namespace n 'urn:n'; @media all { n|e { float: left } }", true},
    };
    for (const auto& c : cases) {
        StyledPage page("<r><e xmlns='urn:n' id='x'/></r>", c.sheet);
        EXPECT_EQ(page.Value("#x", "float"), c.counts ? "left" : "none") << c.sheet;
    }
}

TEST(StyleAttributeTest, WhichElementsHaveOne) {
    const struct {
        const char* xml;
        bool counts;
    } cases[] = {
        {"<e xmlns='http://www.w3.org/1999/xhtml' id='x' style='float: left'/>", true},
        {"<e xmlns='http://www.w3.org/2000/svg' id='x' style='float: left'/>", true},
        {"<e xmlns='http://www.w3.org/1998/Math/MathML' id='x' style='float: left'/>", true},
        {"<html><e id='x' style='float: left'/></html>", true},
        {"<r><e id='x' style='float: left'/></r>", false},
        {"<e xmlns='urn:n' id='x' style='float: left'/>", false},
    };
    for (const auto& c : cases) {
        StyledPage page(c.xml);
        EXPECT_EQ(page.Value("#x", "float"), c.counts ? "left" : "none") << c.xml;
    }
}

TEST(StyleAttributeTest, DamagedOnesKeepWhatIsRight) {
    StyledPage page(
        "<html><p style='float: left; colour; clear: nonsense; color: gr\\65 en; {'/>"
        "</html>");
    EXPECT_EQ(page.Value("p", "float"), "left");
    EXPECT_EQ(page.Value("p", "clear"), "none");
    EXPECT_EQ(page.Value("p", "color"), "rgb(0, 128, 0)");
}

TEST(StyleOfItemsTest, WhatIsInAFlexContainerIsABlock) {
    for (const char* const display : {"flex", "inline-flex", "grid", "inline-grid"}) {
        StyledPage page("<r><a><b><i/></b></a><q><b/></q></r>",
                        "a { display: " + std::string(display) + " }");
        EXPECT_EQ(page.Value("a > b", "display"), "block") << display;
        EXPECT_EQ(page.Value("i", "display"), "inline") << display;
        EXPECT_EQ(page.Value("q > b", "display"), "inline") << display;
    }
}
