// SPDX-License-Identifier: MIT

// Properties by name and by index, how they are set and removed, and copies of declarations.

#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/css/DeclarationText.h"
#include "support/FarIndex.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

using Dom::CSS::CSSPropertyImpl;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSUnknownRule;
using Dom::CSS::CSSValue;
using support::Declared;
using support::PropertiesOf;

}  // namespace

TEST(CSSStyleDeclaration, AFreshOneIsEmpty) {
    CSSStyleDeclaration declaration(nullptr);
    EXPECT_EQ(declaration.Length(), 0U);
    EXPECT_EQ(declaration.CssText(), "");
    EXPECT_EQ(declaration.Item(0), "");
    EXPECT_EQ(declaration.ParentRule(), nullptr);
    EXPECT_EQ(declaration.GetPropertyValue(""), "");
}

TEST(CSSStyleDeclaration, ItsTextIsThePropertiesWithSemicolonsBetween) {
    EXPECT_EQ(Declared("color:red").CssText(), "color: red");
    EXPECT_EQ(Declared("color:red;width:1px!important;a:b;").CssText(),
              "color: red; width: 1px !important; a: b");
    EXPECT_EQ(Declared("margin:1px;a:").CssText(),
              "margin-top: 1px; margin-right: 1px; margin-bottom: 1px; margin-left: 1px; a: ");
}

TEST(CSSStyleDeclaration, ItemsAreNames) {
    const Declared declaration("b: 1; a: 2; b: 3; padding: 0");
    EXPECT_EQ(declaration.Length(), 7U);
    const char* const names[] = {
        "b", "a", "b", "padding-top", "padding-right", "padding-bottom", "padding-left", "", ""};
    for (unsigned long i = 0; i < std::size(names); ++i)
        EXPECT_EQ(declaration.Item(i), names[i]) << i;
    EXPECT_EQ(declaration.Item(support::kFarIndex), "");
    EXPECT_EQ(declaration.Item(~0UL), "");
}

TEST(CSSStyleDeclaration, TheFirstPropertyOfANameAnswers) {
    Declared declaration("a: 1 !important; b: 2; a: 3; B: 4");
    EXPECT_EQ(declaration.GetPropertyValue("a"), "1");
    EXPECT_EQ(declaration.GetPropertyPriority("a"), "important");
    EXPECT_EQ(declaration.GetPropertyCSSValue("a"),
              declaration.Properties().Item(0)->GetCSSValue());
    EXPECT_EQ(declaration.GetPropertyValue("b"), "2");
    EXPECT_EQ(declaration.GetPropertyPriority("b"), "");
    EXPECT_EQ(declaration.GetPropertyValue("B"), "4");
    EXPECT_EQ(declaration.GetPropertyValue(astring("b")), "2");
}

TEST(CSSStyleDeclaration, WithoutTheNameThereIsNothing) {
    Declared declaration("ab: 1; margin: 2px");
    for (const char* const name : {"a", "abc", "AB", "", " ab", "margin"}) {
        EXPECT_EQ(declaration.GetPropertyValue(name), "") << name;
        EXPECT_EQ(declaration.GetPropertyCSSValue(name), nullptr) << name;
        EXPECT_EQ(declaration.GetPropertyPriority(name), "") << name;
        EXPECT_EQ(declaration.RemoveProperty(name), "") << name;
    }
    EXPECT_EQ(declaration.Length(), 5U);
}

TEST(CSSStyleDeclaration, AValueThatIsChangedIsThatOfTheProperty) {
    Declared declaration("a: 1px; b: 2px");
    declaration.GetPropertyCSSValue("a")->SetCssText("red");
    EXPECT_EQ(declaration.CssText(), "a: red; b: 2px");
}

TEST(CSSStyleDeclaration, RemovingTakesTheFirstAndReturnsItsValue) {
    Declared declaration("a: 1 2; b: 2 !important; a: 3");
    EXPECT_EQ(declaration.RemoveProperty("a"), "1 2");
    EXPECT_EQ(declaration.CssText(), "b: 2 !important; a: 3");
    EXPECT_EQ(declaration.RemoveProperty("b"), "2");
    EXPECT_EQ(declaration.RemoveProperty("a"), "3");
    EXPECT_EQ(declaration.RemoveProperty("a"), "");
    EXPECT_EQ(declaration.Length(), 0U);
}

TEST(CSSStyleDeclaration, SettingAddsAtTheEnd) {
    const struct {
        const char* before;
        const char* name;
        const char* value;
        const char* priority;
        const char* after;
    } kCases[] = {
        {"", "a", "1", "", "a: 1"},
        {"b: 2", "a", "1", "important", "b: 2; a: 1 !important"},
        {"a: 0; b: 2", "a", "1", "", "b: 2; a: 1"},
        {"a: 0 !important; b: 2", "a", "1", "", "b: 2; a: 1"},
        {"a: 0; b: 2; a: 3", "a", "1", "", "b: 2; a: 3; a: 1"},  // only the first one goes
        {"A: 0", "a", "1", "IMPORTANT", "A: 0; a: 1 !important"},
        {"", "a", "1", "urgent", "a: 1"},
        {"", "a", "1", " important", "a: 1"},
        {"", "a", "1", "importants", "a: 1"},
        {"a: 0", "a", "", "", "a: "},
        {"a: 0", "a", "b, c", "", "a: b,c"},
        {"a: 0", "a", "b;c", "", "a: b;c"},  // all of it is the value
        {"a: 0", "a", "b !important", "", "a: b !important"},
        {"a: 0", "a", "inherit", "", "a: inherit"},
        {"a: 0", "padding", "1px 2px", "important",
         "a: 0; [padding-top: 1px !important]; [padding-right: 2px !important]; "
         "[padding-bottom: 1px !important]; [padding-left: 2px !important]"},
        {"a: 0", "background", "red", "", "a: 0; [background-color: red]"},
        {"a: 0", "border", "blue", "", "a: 0"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.before) + " / " + c.name + ": " + c.value);
        Declared declaration(c.before);
        declaration.SetProperty(c.name, c.value, c.priority);
        EXPECT_EQ(PropertiesOf(declaration), c.after);
    }
}

// Deliberate: only a property with the name of the shorthand itself is taken out, so that what the
// shorthand made before stays in front, and answers.
TEST(CSSStyleDeclaration, DeliberateSettingAShorthandAgainLeavesTheOldProperties) {
    Declared declaration("margin: 1px");
    declaration.SetProperty("margin", "2px", "");
    EXPECT_EQ(declaration.Length(), 8U);
    EXPECT_EQ(declaration.GetPropertyValue("margin-top"), "1px");
    declaration.SetProperty("margin", "3px", "");
    EXPECT_EQ(declaration.Length(), 12U);
    declaration.SetProperty("margin", "inherit", "");
    EXPECT_EQ(declaration.Length(), 13U);
    declaration.SetProperty("margin", "inherit", "");
    EXPECT_EQ(declaration.Length(), 13U);
    EXPECT_EQ(declaration.GetPropertyValue("margin"), "inherit");
}

TEST(CSSStyleDeclaration, AShorthandWithoutAValueIsRefusedBehindTheRemoval) {
    Declared declaration("margin: inherit; a: b");
    for (const char* const value : {"", " "}) {
        EXPECT_DOM_ERROR(declaration.SetProperty("margin", value, ""), "12 Property value missing");
        EXPECT_EQ(declaration.CssText(), "a: b");
    }
}

TEST(CSSStyleDeclaration, NamesAndValuesMayBePartsOfTheDeclaration) {
    Declared declaration("abcdefghijklmnopqrstuvwxyz: abcdefghijklmnopqrstuvw; b: 2");
    const astring& name = declaration.Properties().Item(0)->Name();
    declaration.SetProperty(name, name, name);
    EXPECT_EQ(declaration.CssText(),
              "b: 2; abcdefghijklmnopqrstuvwxyz: abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(declaration.RemoveProperty(declaration.Properties().Item(1)->Name()),
              "abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(declaration.CssText(), "b: 2");
}

// --- what properties carry ---

TEST(CSSStyleDeclaration, PropertiesOfNoRuleComeFromTheAuthorWithoutSpecificity) {
    Declared declaration("a: 1; margin: 0");
    declaration.SetProperty("b", "2", "");
    ASSERT_EQ(declaration.Length(), 6U);
    for (const CSSPropertyImpl* property : declaration.Properties()) {
        EXPECT_EQ(property->Origin(), CSSRule::Author);
        EXPECT_EQ(property->Specificity(), 0);
    }
}

TEST(CSSStyleDeclaration, PropertiesCarryOriginAndSpecificityOfTheirRule) {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::User);
    rule.SetCssText("#a p, p { a: 1; margin: 0 }");
    rule.Style().SetProperty("b", "2", "");
    ASSERT_EQ(rule.Style().Length(), 6U);
    for (const CSSPropertyImpl* property : rule.Style().Properties()) {
        EXPECT_EQ(property->Origin(), CSSRule::User);
        EXPECT_EQ(property->Specificity(), 1'000'002);
    }
    rule.SetCssText(".b { a: 1 }");
    EXPECT_EQ(rule.Style().Properties().Item(0)->Specificity(), 1000);
}

TEST(CSSStyleDeclaration, PropertiesOfARuleWithoutSelectorsCarryItsOrigin) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::UserAgent);
    const Declared declaration("a: 1", &rule);
    EXPECT_EQ(declaration.ParentRule(), &rule);
    EXPECT_EQ(declaration.Properties().Item(0)->Origin(), CSSRule::UserAgent);
    EXPECT_EQ(declaration.Properties().Item(0)->Specificity(), 0);
}

TEST(CSSStyleDeclaration, ItsParentCanBeSetByThoseThatDerive) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::User);
    Declared declaration("a: 1");
    declaration.SetParent(&rule);
    EXPECT_EQ(declaration.ParentRule(), &rule);
    declaration.SetCssText("a: 1");
    EXPECT_EQ(declaration.Properties().Item(0)->Origin(), CSSRule::User);
}

// --- copies ---

TEST(CSSStyleDeclaration, ACopyHasPropertiesAndValuesOfItsOwn) {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::User);
    rule.SetCssText("p { a: 1 !important; margin: 2px; b: c d; e: inherit; f: calc(1px) }");
    CSSStyleDeclaration copy(rule.Style());
    EXPECT_EQ(PropertiesOf(copy), PropertiesOf(rule.Style()));
    EXPECT_EQ(copy.ParentRule(), &rule);
    ASSERT_EQ(copy.Length(), rule.Style().Length());
    for (unsigned i = 0; i < copy.Length(); ++i) {
        const CSSPropertyImpl* const property = copy.Properties().Item(i);
        EXPECT_NE(property->GetCSSValue(), rule.Style().Properties().Item(i)->GetCSSValue());
        EXPECT_EQ(property->Origin(), CSSRule::User);
        EXPECT_EQ(property->Specificity(), 1);
    }
    copy.GetPropertyCSSValue("a")->SetCssText("9");
    EXPECT_EQ(rule.Style().GetPropertyValue("a"), "1");
    copy.SetCssText("");
    EXPECT_EQ(rule.Style().Length(), 8U);
}

TEST(CSSStyleDeclaration, AssigningReplacesThePropertiesAndLeavesTheParent) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::User);
    Declared target("a: 1; b: 2", &rule);
    {
        const Declared source("c: 3; padding: 0 !important");
        target = source;
        EXPECT_EQ(PropertiesOf(target), PropertiesOf(source));
        EXPECT_NE(target.GetPropertyCSSValue("c"), source.GetPropertyCSSValue("c"));
        EXPECT_EQ(source.ParentRule(), nullptr);
    }
    EXPECT_EQ(target.ParentRule(), &rule);
    EXPECT_EQ(target.GetPropertyValue("c"), "3");
}

TEST(CSSStyleDeclaration, MayBeAssignedToItself) {
    Declared declaration("a: 1; margin: 0 !important");
    const std::string before = PropertiesOf(declaration);
    const CSSStyleDeclaration& same = declaration;
    declaration.CSSStyleDeclaration::operator=(same);
    EXPECT_EQ(PropertiesOf(declaration), before);
}

TEST(CSSStyleDeclaration, AnswersToItsName) {
    CSSStyleDeclaration declaration(nullptr);
    EXPECT_EQ(declaration.QueryInterface("Dom::CSS::CSSStyleDeclaration"), &declaration);
    for (const char* const name : {"", "CSSStyleDeclaration", "Dom::CSS::CSSRule",
                                   "Dom::CSS::CSSStyleDeclarations", "Dom::DOMList"})
        EXPECT_EQ(declaration.QueryInterface(name), nullptr) << name;
}
