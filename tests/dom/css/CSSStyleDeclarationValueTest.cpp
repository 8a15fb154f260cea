// SPDX-License-Identifier: MIT

// Which class of value a property gets from its text, and that no text is lost.

#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/css/DeclarationText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

namespace {

using Dom::CSS::CSSStyleDeclaration;

struct Case {
    const char* value;
    const char* kind;
    const char* text;
};

template <std::size_t Count>
void ExpectValues(const Case (&cases)[Count]) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.value);
        CSSStyleDeclaration declaration(nullptr);
        declaration.SetCssText((std::string("p: ") + c.value).c_str());
        ASSERT_EQ(declaration.Length(), 1U);
        EXPECT_EQ(support::KindOf(declaration.GetPropertyCSSValue("p")), c.kind);
        EXPECT_EQ(declaration.GetPropertyValue("p"), c.text);
    }
}

}  // namespace

TEST(CSSStyleDeclarationValue, InheritAloneIsTheInheritValue) {
    ExpectValues({
        {"inherit", "inherit", "inherit"},
        {"INHERIT", "inherit", "inherit"},
        {"Inherit \t", "inherit", "inherit"},
        {"inherits", "primitive 21", "inherits"},
        {"inherit inherit", "list ' ' 2", "inherit inherit"},
        {"\"inherit\"", "primitive 19", "\"inherit\""},
    });
}

TEST(CSSStyleDeclarationValue, OneValueIsAPrimitiveOne) {
    ExpectValues({
        {"", "primitive 0", ""},
        {" \t\n", "primitive 0", ""},
        {"0", "primitive 1", "0"},
        {"1.50", "primitive 1", "1.5"},
        {"-3", "primitive 1", "-3"},
        {"50%", "primitive 2", "50%"},
        {"2em", "primitive 3", "2em"},
        {"2ex", "primitive 4", "2ex"},
        {"12px", "primitive 5", "12px"},
        {"1cm", "primitive 6", "1cm"},
        {"1mm", "primitive 7", "1mm"},
        {"1in", "primitive 8", "1in"},
        {"10pt", "primitive 9", "10pt"},
        {"1pc", "primitive 10", "1pc"},
        {"90deg", "primitive 11", "90deg"},
        {"1grad", "primitive 13", "1grad"},
        {"5ms", "primitive 14", "5ms"},
        {"5s", "primitive 15", "5s"},
        {"5Hz", "primitive 16", "5Hz"},
        {"5kHz", "primitive 17", "5kHz"},
        {"\"a b, c\"", "primitive 19", "\"a b, c\""},
        {"'a'", "primitive 19", "\"a\""},
        {"url(a.png)", "primitive 20", "url(\"a.png\")"},
        {"url( 'a, b' )", "primitive 20", "url(\"a, b\")"},
        {"red", "primitive 21", "red"},
        {"auto", "primitive 21", "auto"},
        {"rect(1px, 2px, 3px, auto)", "primitive 24", "rect(1px, 2px, 3px, auto)"},
        {"#123", "primitive 25", "#123"},
        {"#12aBcF", "primitive 25", "#12aBcF"},
        {"rgb(1, 2, 3)", "primitive 25", "rgb(1, 2, 3)"},
    });
}

// Deliberate: these print in another way than they are written.
TEST(CSSStyleDeclarationValue, DeliberateSomePrimitiveValuesDoNotReadBack) {
    ExpectValues({
        {"2rad", "primitive 12", "2red"},
        {"attr(title)", "primitive 22", "ATTR(title)"},
        {"counter(x)", "primitive 23", "counter)x)"},
    });
}

TEST(CSSStyleDeclarationValue, CommasOrBlanksMakeAList) {
    ExpectValues({
        {"a b", "list ' ' 2", "a b"},
        {"a \t\n b", "list ' ' 2", "a b"},
        {"a, b", "list ',' 2", "a,b"},
        {"a,b,c", "list ',' 3", "a,b,c"},
        {"a , b", "list ',' 2", "a,b"},
        {"1px 2em red", "list ' ' 3", "1px 2em red"},
        {"\"a, b\" c", "list ' ' 2", "\"a, b\" c"},
        {"url(a) url(b)", "list ' ' 2", "url(\"a\") url(\"b\")"},
        {"rgb(1, 2, 3), red", "list ',' 2", "rgb(1, 2, 3),red"},
        {"#123 #456789", "list ' ' 2", "#123 #456789"},
        {"90deg, 2rad", "list ',' 2", "90deg,2red"},
    });
}

TEST(CSSStyleDeclarationValue, WhatAPrimitiveValueWouldLoseIsKeptAsText) {
    ExpectValues({
        {"rgba(1, 2, 3, .5)", "custom", "rgba(1, 2, 3, .5)"},
        {"calc(1px + 2px)", "custom", "calc(1px + 2px)"},
        {"translate(1px)", "custom", "translate(1px)"},
        {"12px/1.5 Arial, sans-serif", "custom", "12px/1.5 Arial, sans-serif"},
        {"12px/1.5", "custom", "12px/1.5"},
        {".5em", "custom", ".5em"},
        {"#12345678", "custom", "#12345678"},
        {"#12", "custom", "#12"},
        {"#1234", "custom", "#1234"},
        {"rgb(256, 0, 0)", "custom", "rgb(256, 0, 0)"},
        {"rgb(1%, 2%, 3%)", "custom", "rgb(1%, 2%, 3%)"},
        {"url(a", "custom", "url(a"},
        {"\"a", "custom", "\"a"},
        {"counter(x, decimal)", "custom", "counter(x, decimal)"},
        {"attr()", "custom", "attr()"},
        {"5.", "custom", "5."},
        {"+", "custom", "+"},
        {"linear-gradient(red, blue)", "custom", "linear-gradient(red, blue)"},
        {"a .5em", "custom", "a .5em"},
        {"1px, calc(1px)", "custom", "1px, calc(1px)"},
        {"a  rgba(1,2,3,.5)", "custom", "a  rgba(1,2,3,.5)"},
        {" rgba(0,0,0,0) \t", "custom", "rgba(0,0,0,0)"},
        {"{b}", "custom", "{b}"},
    });
}

// A vendor's word is an identifier all the same.
TEST(CSSStyleDeclarationValue, WordsThatBeginWithAHyphenKeepTheirText) {
    for (const char* const word : {"-webkit-box", "-moz-none"}) {
        CSSStyleDeclaration declaration(nullptr);
        declaration.SetCssText((std::string("p: ") + word).c_str());
        EXPECT_EQ(declaration.GetPropertyValue("p"), word);
    }
}

// Deliberate: a dimension prints its number alone. What is no unit at all keeps its text, see
// above.
TEST(CSSStyleDeclarationValue, ADimensionKeepsItsUnit) {
    ExpectValues({
        {"2rem", "primitive 18", "2rem"},
        {"10vw", "primitive 18", "10vw"},
        {"1.5PX", "primitive 18", "1.5PX"},
        {"1px 2rem", "list ' ' 2", "1px 2rem"},
    });
}

TEST(CSSStyleDeclarationValue, TheValuesOfShorthandsAreChosenInTheSameWay) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("margin: 1px auto calc(1px) .5em; background: none 0 0");
    const struct {
        const char* name;
        const char* kind;
    } kCases[] = {
        {"margin-top", "primitive 5"},        {"margin-right", "primitive 21"},
        {"margin-bottom", "custom"},          {"margin-left", "custom"},
        {"background-image", "primitive 21"}, {"background-position", "list ' ' 2"},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(support::KindOf(declaration.GetPropertyCSSValue(c.name)), c.kind) << c.name;
}

TEST(CSSStyleDeclarationValue, EachPropertyOfAShorthandHasAValueOfItsOwn) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("margin: 1px");
    declaration.GetPropertyCSSValue("margin-top")->SetCssText("2px");
    EXPECT_EQ(support::PropertiesOf(declaration),
              "[margin-top: 2px]; [margin-right: 1px]; [margin-bottom: 1px]; [margin-left: 1px]");
}

TEST(CSSStyleDeclarationValue, ATextKeptAsItIsAnswersAsAValueAndIsCloned) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("p: calc(1px + 2px)");
    Dom::CSS::CSSValue* const value = declaration.GetPropertyCSSValue("p");
    EXPECT_EQ(value->QueryInterface("Dom::CSS::CSSValue"), value);
    EXPECT_EQ(value->QueryInterface("Dom::CSS::CSSPrimitiveValue"), nullptr);
    const std::unique_ptr<Dom::CSS::CSSValue> clone(value->Clone());
    EXPECT_NE(clone.get(), value);
    EXPECT_EQ(clone->CssText(), "calc(1px + 2px)");
    EXPECT_EQ(clone->CssValueType(), Dom::CSS::CSSValue::CSS_CUSTOM);
}

TEST(CSSStyleDeclarationHostile, LongListsTakeLinearTime) {
    std::string value = "p: a";
    for (int i = 0; i < 500'000; ++i)
        value += ", b";
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText(value.c_str());
    EXPECT_EQ(support::KindOf(declaration.GetPropertyCSSValue("p")), "list ',' 500001");
    declaration.SetCssText(("p: " + std::string(1'000'000, '(')).c_str());
    EXPECT_EQ(declaration.GetPropertyValue("p").size(), 1'000'000U);
    declaration.SetCssText(("p: a" + std::string(1'000'000, ',')).c_str());
    EXPECT_EQ(declaration.Length(), 1U);
}
