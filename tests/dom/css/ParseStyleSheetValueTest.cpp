// SPDX-License-Identifier: MIT

// Values of sheets that ParseStyleSheet() reads say what the text says, and shorthands are taken
// apart as the modules of CSS have it.

#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/SheetStory.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSValue;
using Dom::CSS::ParseStyleSheet;

// Returns the declarations of a rule, those of shorthands in brackets. They are made when they are
// asked for, but for a rule in which there is a comment.
std::string Declared(const std::string& text) {
    std::string both[2];
    for (const bool atOnce : {false, true}) {
        const auto sheet = ParseStyleSheet("a{" + text + (atOnce ? ";/**/}" : "}"));
        const auto& rule = static_cast<const CSSStyleRule&>(*sheet->CssRules().Item(0));
        for (const Dom::CSS::CSSPropertyImpl* const property : rule.Style().Properties()) {
            std::string& all = both[atOnce ? 1 : 0];
            if (!all.empty()) all += "; ";
            const std::string one = property->CssText().str();
            all += property->Shorthand() ? "[" + one + "]" : one;
        }
    }
    EXPECT_EQ(both[0], both[1]) << text;
    return both[0];
}

CSSValue::UnitTypes KindOf(const std::string& value) {
    const auto sheet = ParseStyleSheet("a{b:" + value + "}");
    const auto& rule = static_cast<const CSSStyleRule&>(*sheet->CssRules().Item(0));
    return rule.Style().GetPropertyCSSValue("b")->CssValueType();
}

}  // namespace

TEST(ParseStyleSheetValue, PrintsWhatMeansTheSame) {
    const struct {
        const char* value;
        const char* printed;
    } kCases[] = {
        {"1px", "1px"},
        {"2rad", "2rad"},
        {"1em 2rad", "1em 2rad"},
        {"counter(x)", "counter(x)"},
        {"counter(x) '. '", "counter(x) '. '"},
        {"counter(x, decimal)", "counter(x, decimal)"},
        {"attr(x)", "attr(x)"},
        {"attr(x), 'a'", "attr(x), 'a'"},
        {"'a'", "\"a\""},
        {"'a\"b'", "\"a\\\"b\""},
        {"'\\201C' '\\201D'", "'\\201C' '\\201D'"},
        {"'a\\a b'", "'a\\a b'"},
        {"a\\:b", "a\\:b"},
        {"\\31 a", "\\31 a"},
        {"red\\9", "red\\9"},
        {"url(a)", "url(\"a\")"},
        {"url(a\\)b)", "url(a\\)b)"},
        {"url('a\"b')", "url('a\"b')"},
        {"#fff", "#fff"},
        {"RED", "RED"},
        {"0.5", "0.5"},
        {".5em", ".5em"},
        {"+1.50px", "1.5px"},
        {"33.3333%", "33.3333%"},
        {"33.33333333%", "33.33333333%"},
        {"0.00001px", "0.00001px"},
        {"2147483647", "2147483647"},
        {"999999", "999999"},
        {"1000000", "1000000"},
        {"1.5rem", "1.5rem"},
        {"1.23456789rem", "1.23456789rem"},
        {"1e3px", "1e3px"},
        {"a, b c", "a, b c"},
        {"1px/2px", "1px/2px"},
        {"calc(1px + 2px)", "calc(1px + 2px)"},
        {"rect(1px, 2px, 3px, 4px)", "rect(1px, 2px, 3px, 4px)"},
        {"inherit", "inherit"},
        {"red\\ ", "red\\ "},
        {"red\\\\ ", "red\\\\"},
        {"';' '!' \"}\"", "\";\" \"!\" \"}\""},
        {"'x\\;d:e'", "'x\\;d:e'"},
        {"\"x\\;d:e\"", "\"x\\;d:e\""},
        {"'x\\!important'", "'x\\!important'"},
        {"url(x\\;d:e)", "url(x\\;d:e)"},
        {"url(x\\!important)", "url(x\\!important)"},
        {"url('x\\;d:e')", "url('x\\;d:e')"},
        {"f(x\\;d:e)", "f(x\\;d:e)"},
        {"x\\;d\\:e", "x\\;d\\:e"},
        {"url(data:a/b\\;base64,AA==) c", "url(data:a/b\\;base64,AA==) c"},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Declared(std::string("b:") + c.value), std::string("b: ") + c.printed);
}

// Values that can be asked for what they are stay so.
TEST(ParseStyleSheetValue, KeepsTextsOnlyOfWhatWouldPrintOtherwise) {
    for (const char* const value : {"1px", "'a'", "url(a)", "red", "#fff", "rgb(1,2,3)", "1.5rem"})
        EXPECT_EQ(KindOf(value), CSSValue::CSS_PRIMITIVE_VALUE) << value;
    for (const char* const value : {"1px 2px", "a, 'b'", "1px 2rem"})
        EXPECT_EQ(KindOf(value), CSSValue::CSS_VALUE_LIST) << value;
    for (const char* const value :
         {"2rad", "'\\a'", "counter(x)", "a\\62 c", "0.1234567", "1 2rad"})
        EXPECT_EQ(KindOf(value), CSSValue::CSS_CUSTOM) << value;
    EXPECT_EQ(KindOf("INHERIT"), CSSValue::CSS_INHERIT);
}

TEST(ParseStyleSheetValue, ShorthandsGiveAllTheirProperties) {
    EXPECT_EQ(Declared("border-top: 1px solid blue"),
              "[border-top-width: 1px]; [border-top-style: solid]; [border-top-color: blue]");
    EXPECT_EQ(Declared("border-left: solid !important"),
              "[border-left-width: medium !important]; [border-left-style: solid !important]; "
              "[border-left-color: currentcolor !important]");
    EXPECT_EQ(Declared("MARGIN: 1px 2px"),
              "[margin-top: 1px]; [margin-right: 2px]; [margin-bottom: 1px]; [margin-left: 2px]");
    EXPECT_EQ(Declared("border-color: rgb(1, 2, 3)red"),
              "[border-top-color: rgb(1, 2, 3)]; [border-right-color: red]; "
              "[border-bottom-color: rgb(1, 2, 3)]; [border-left-color: red]");
    EXPECT_EQ(Declared("border-style: inset"),
              "[border-top-style: inset]; [border-right-style: inset]; "
              "[border-bottom-style: inset]; [border-left-style: inset]");
    EXPECT_EQ(Declared("padding: inherit"),
              "[padding-top: inherit]; [padding-right: inherit]; [padding-bottom: inherit]; "
              "[padding-left: inherit]");
    EXPECT_EQ(Declared("background: url('a b') no-repeat"),
              "[background-image: url(\"a b\")]; [background-position: 0% 0%]; "
              "[background-size: auto]; [background-repeat: no-repeat]; "
              "[background-attachment: scroll]; [background-origin: padding-box]; "
              "[background-clip: border-box]; [background-color: transparent]");
    EXPECT_EQ(Declared("border: 0").substr(0, 70),
              "[border-top-width: 0]; [border-right-width: 0]; [border-bottom-width: ");
}

TEST(ParseStyleSheetValue, ShorthandsThatCannotBeTakenApartStayAsWritten) {
    for (const char* const text :
         {"margin: var(--a) 1px", "border: 1px solid var(--b)", "background: red blue",
          "padding: -1px", "margin: a b c d e", "Border: x", "background: red,blue"}) {
        EXPECT_EQ(Declared(text), text);
    }
}

TEST(ParseStyleSheetValue, OtherShorthandsStayOneProperty) {
    for (const char* const text : {"font: 12px a", "list-style: none", "flex: 1", "outline: 0",
                                   "border-radius: 1px", "text-decoration: none"}) {
        EXPECT_EQ(Declared(text), text);
    }
}

// Deliberate: SetCssText() and SetProperty() read as they always have.
TEST(ParseStyleSheetValue, DeliberateWhatIsSetLaterIsReadAsEver) {
    const auto sheet = ParseStyleSheet("a { border: 1px solid blue }");
    auto& style = static_cast<CSSStyleRule&>(*sheet->CssRules().Item(0)).Style();
    EXPECT_EQ(style.GetPropertyValue("border-top-color"), "blue");
    style.SetProperty("transform", "2rad", "");
    EXPECT_EQ(style.GetPropertyValue("transform"), "2red");
    style.SetCssText("border: 1px solid blue");
    EXPECT_EQ(style.GetPropertyValue("border-top-color"), "");
    sheet->InsertRule("b { border: 1px solid blue }", 0);
    const auto& inserted = static_cast<CSSStyleRule&>(*sheet->CssRules().Item(0));
    EXPECT_EQ(inserted.Style().GetPropertyValue("border-top-color"), "");
}

// PlaceOf() reads the text again, and finds the same properties.
TEST(ParseStyleSheetValue, PropertiesOfShorthandsKnowTheirPlace) {
    const auto sheet = ParseStyleSheet("a {\n  border: 0;\n  margin: 0 }");
    const auto& style = static_cast<CSSStyleRule&>(*sheet->CssRules().Item(0)).Style();
    EXPECT_EQ(PlaceOf(style, 11), (Dom::CSS::SourcePlace{2, 3}));
    EXPECT_EQ(PlaceOf(style, style.Length() - 1), (Dom::CSS::SourcePlace{3, 3}));
}
