// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/StyledPage.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::DeclaredValue;
using Dom::CSS::StyleExplanation;
using Kind = Dom::CSS::StyleExplanation::Kind;
using support::StyledPage;

constexpr char kPage[] = "<html><body><div><p id='p' class='c'><i>y</i></p></div></body></html>";

// One line for each declaration: where it is and what it says.
std::string Told(const StyleExplanation& explanation) {
    std::string text;
    for (const DeclaredValue& each : explanation.declarations) {
        if (each.source == DeclaredValue::Source::StyleAttribute) text += "attribute";
        if (each.source == DeclaredValue::Source::OverrideStyle) text += "override";
        if (each.source == DeclaredValue::Source::Rule) {
            text += each.rule->SelectorText().str() + " " + std::to_string(each.specificity);
            if (each.origin == CSSRule::User) text += " user";
            if (each.origin == CSSRule::UserAgent) text += " agent";
            text += " " + std::to_string(each.place.line) + ":" + std::to_string(each.place.column);
            EXPECT_EQ(each.sheet, each.rule->ParentStyleSheet());
        } else {
            EXPECT_EQ(each.rule, nullptr);
            EXPECT_EQ(each.sheet, nullptr);
        }
        text += " " + each.property.str() + ": " + each.value.str();
        text += each.important ? " !important; " : "; ";
    }
    return text;
}

}  // namespace

TEST(StyleExplanationTest, WhatWinsComesFirstAndThenWhatLost) {
    StyledPage page(kPage,
                    "p { color: red }\n.c { margin: 0; color: blue }\n"
                    "#p { color: middle; color: lime }");
    page.AddSheet("* { color: gray !important }\n", CSSRule::User);
    page.AddSheet("p { color: black }", CSSRule::UserAgent);
    page.Element("p").SetAttribute("style", "color: olive");
    const StyleExplanation why = page.Explain("p", "color");
    EXPECT_EQ(why.kind, Kind::Declared);
    EXPECT_EQ(why.value, "rgb(128, 128, 128)");
    EXPECT_EQ(why.element, &page.Element("p"));
    EXPECT_EQ(Told(why),
              "* 0 user 1:5 color: gray !important; attribute color: olive; "
              "#p 1000000 3:21 color: lime; .c 1000 2:17 color: blue; p 1 1:5 color: red; "
              "p 1 agent 1:5 color: black; ");
}

TEST(StyleExplanationTest, InheritedValuesAreExplainedWhereTheyAreDeclared) {
    StyledPage page(kPage, "body { color: red }\ndiv { color: inherit }\np { float: inherit }");
    const StyleExplanation why = page.Explain("i", "color");
    EXPECT_EQ(why.kind, Kind::Inherited);
    EXPECT_EQ(why.element, &page.Element("body"));
    EXPECT_EQ(why.value, "rgb(255, 0, 0)");
    EXPECT_EQ(Told(why), "body 1 1:8 color: red; ");
    const StyleExplanation initial = page.Explain("p", "float");
    EXPECT_EQ(initial.kind, Kind::Initial);
    EXPECT_EQ(initial.element, nullptr);
    EXPECT_EQ(initial.value, "none");
    EXPECT_EQ(Told(initial), "p 1 3:5 float: inherit; ");
}

TEST(StyleExplanationTest, NothingIsDeclared) {
    StyledPage page(kPage);
    const StyleExplanation why = page.Explain("i", "COLOR");
    EXPECT_EQ(why.kind, Kind::Initial);
    EXPECT_EQ(why.value, "rgb(0, 0, 0)");
    EXPECT_TRUE(why.declarations.empty());
    EXPECT_EQ(page.Explain("i", "no-such").value, "");
    EXPECT_EQ(page.Explain("i", "color", "no-such").kind, Kind::Initial);
}

TEST(StyleExplanationTest, VariablesAndShorthands) {
    StyledPage page(kPage,
                    "html { --w: 3px; --bad: red }\n"
                    "p { border: var(--w) solid }\n"
                    "#p { border-top-width: var(--bad); --w: 4px }\n"
                    "i { margin: 1px 2px }");
    const StyleExplanation width = page.Explain("p", "border-left-width");
    EXPECT_EQ(width.value, "4px");
    EXPECT_EQ(Told(width), "p 1 2:5 border: var(--w) solid; ");
    const StyleExplanation unset = page.Explain("p", "border-top-width");
    EXPECT_EQ(unset.kind, Kind::Initial) << "what does not fit is unset, and wins all the same";
    EXPECT_EQ(Told(unset),
              "#p 1000000 3:6 border-top-width: var(--bad); "
              "p 1 2:5 border: var(--w) solid; ");
    EXPECT_EQ(Told(page.Explain("i", "margin-left")), "i 1 4:5 margin-left: 2px; ");
    const StyleExplanation custom = page.Explain("i", "--w");
    EXPECT_EQ(custom.kind, Kind::Inherited);
    EXPECT_EQ(custom.value, "4px");
    EXPECT_EQ(Told(custom), "#p 1000000 3:36 --w: 4px; ");
}

TEST(StyleExplanationTest, PartsInheritFromTheirElement) {
    StyledPage page(kPage, "p { color: red } p::before { float: left } p::after { color: blue }");
    const StyleExplanation color = page.Explain("p", "color", "before");
    EXPECT_EQ(color.kind, Kind::Inherited);
    EXPECT_EQ(color.element, &page.Element("p"));
    EXPECT_EQ(Told(color), "p 1 1:5 color: red; ");
    EXPECT_EQ(page.Explain("p", "float", "::before").kind, Kind::Declared);
    EXPECT_EQ(page.Explain("p", "color", "after").kind, Kind::Declared);
}

TEST(StyleExplanationTest, OverrideStylesWinOverAttributes) {
    Dom::HTMLDocument page;
    page.LoadXml("<p xmlns='http://www.w3.org/1999/xhtml' style='color: red'/>");
    Dom::Element& element = *page.DocumentElement();
    Dom::CSS::StyleResolver resolver;
    EXPECT_EQ(resolver.StyleOf(element).Value("color"), "rgb(255, 0, 0)");
    page.GetOverrideStyle(&element)->SetProperty("color", "blue", "");
    page.GetOverrideStyle(&element, "before")->SetProperty("color", "lime", "");
    resolver.OverridesHaveChanged();
    const StyleExplanation why = resolver.Explain(element, "color");
    EXPECT_EQ(why.value, "rgb(0, 0, 255)");
    EXPECT_EQ(Told(why), "override color: blue; attribute color: red; ");
    EXPECT_EQ(resolver.StyleOf(element, "before").Value("color"), "rgb(0, 255, 0)");
    EXPECT_EQ(resolver.StyleOf(element, "::before").Value("color"), "rgb(0, 255, 0)");
    page.GetOverrideStyle(&element, "::after")->SetProperty("color", "lime", "");
    EXPECT_EQ(resolver.StyleOf(element, "after").Value("color"), "rgb(0, 255, 0)");
    page.GetOverrideStyle(&element)->SetProperty("color", "gray", "");
    resolver.OverridesHaveChanged();
    EXPECT_EQ(resolver.StyleOf(element).Value("color"), "rgb(128, 128, 128)");
}

TEST(StyleExplanationTest, EachElementHasTheSpecificityOfTheSelectorThatSelectsIt) {
    StyledPage page("<r><p/><p id='x'/></r>", "p, #x { color: red }");
    EXPECT_EQ(Told(page.Explain("p", "color")), "p, #x 1 1:9 color: red; ");
    EXPECT_EQ(Told(page.Explain("#x", "color")), "p, #x 1000000 1:9 color: red; ");
}

TEST(StyleExplanationTest, AttributesAndOverrideStylesWithOneTextAreToldApart) {
    Dom::HTMLDocument page;
    page.LoadXml("<p xmlns='http://www.w3.org/1999/xhtml'><i style='color: red'/><b/></p>");
    Dom::Element& bold = *Dom::CSS::QuerySelector(page, "b");
    page.GetOverrideStyle(&bold)->SetProperty("color", "red", "");
    Dom::CSS::StyleResolver resolver;
    EXPECT_EQ(Told(resolver.Explain(*Dom::CSS::QuerySelector(page, "i"), "color")),
              "attribute color: red; ");
    EXPECT_EQ(Told(resolver.Explain(bold, "color")), "override color: red; ");
}
