// SPDX-License-Identifier: MIT

// How a style rule reads its text, and what a refused text leaves. What its selectors match is
// tested in MatchesSelectorTest.cpp.

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "dom/css/DeclarationText.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;
using support::PropertiesOf;

// A style rule with a text.
class Ruled : public CSSStyleRule {
public:
    explicit Ruled(const char* text) : CSSStyleRule(nullptr, nullptr, Author) {
        CSSStyleRule::SetCssText(text);
    }
};

}  // namespace

TEST(CSSStyleRule, AFreshOneHasNoSelector) {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    EXPECT_EQ(rule.Type(), CSSRule::STYLE_RULE);
    EXPECT_EQ(rule.SelectorText(), "");
    EXPECT_EQ(rule.Specificity(), -1);
    EXPECT_EQ(rule.CssText(), " {  }");
    EXPECT_EQ(rule.Style().Length(), 0U);
    EXPECT_EQ(rule.Style().ParentRule(), &rule);
}

TEST(CSSStyleRule, KeepsWhatItIsMadeWith) {
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    CSSStyleRule parent(nullptr, nullptr, CSSRule::Author);
    for (const CSSRule::RULE_ORIGIN origin : {CSSRule::Author, CSSRule::User, CSSRule::UserAgent}) {
        const CSSStyleRule rule(&sheet, &parent, origin);
        EXPECT_EQ(rule.ParentStyleSheet(), &sheet);
        EXPECT_EQ(rule.ParentRule(), &parent);
        EXPECT_EQ(rule.Origin(), origin);
    }
    EXPECT_EQ(parent.ParentStyleSheet(), nullptr);
    EXPECT_EQ(parent.ParentRule(), nullptr);
}

TEST(CSSStyleRule, TheVirtualFunctionsOfRulesHaveTheirPlaces) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&CSSRule::QueryInterface), 0);  // 1 and 2: the destructor
    EXPECT_EQ(VirtualSlot(&CSSRule::CssText), 3);
    EXPECT_EQ(VirtualSlot(static_cast<void (CSSRule::*)(const char*)>(&CSSRule::SetCssText)), 4);
    EXPECT_EQ(VirtualSlot(static_cast<void (CSSRule::*)(const astring&)>(&CSSRule::SetCssText)), 5);
}

TEST(CSSStyleRule, TheKindsOfRulesAreNumberedAsInTheStandard) {
    EXPECT_EQ(CSSRule::UNKNOWN_RULE, 0);
    EXPECT_EQ(CSSRule::STYLE_RULE, 1);
    EXPECT_EQ(CSSRule::CHARSET_RULE, 2);
    EXPECT_EQ(CSSRule::IMPORT_RULE, 3);
    EXPECT_EQ(CSSRule::MEDIA_RULE, 4);
    EXPECT_EQ(CSSRule::FONT_FACE_RULE, 5);
    EXPECT_EQ(CSSRule::PAGE_RULE, 6);
    EXPECT_EQ(CSSRule::Author, 0);
    EXPECT_EQ(CSSRule::User, 1);
    EXPECT_EQ(CSSRule::UserAgent, 2);
}

TEST(CSSStyleRule, ReadsSelectorsAndADeclaration) {
    const struct {
        const char* text;
        const char* selector;
        int specificity;
        const char* cssText;
    } kCases[] = {
        {"p { color: red }", "p", 1, "p { color: red }"},
        {"p{color:red}", "p", 1, "p { color: red }"},
        {"p{}", "p", 1, "p {  }"},
        {" \t\n\r\fp\t{color:red;a:b !important} \t\n\r\f", "p", 1,
         "p { color: red; a: b !important }"},
        {"h1,\n  h2 { a: b }", "h1,\n  h2", 2, "h1,\n  h2 { a: b }"},
        {"h1  >  p.x:hover{a:b}", "h1  >  p.x:hover", 2002, "h1  >  p.x:hover { a: b }"},
        {"#a { margin: 0 }", "#a", 1'000'000,
         "#a { margin-top: 0; margin-right: 0; margin-bottom: 0; margin-left: 0 }"},
        // Braces in strings belong to the selector.
        {"p[title=\"{\"] { a: b }", "p[title=\"{\"]", 1001, "p[title=\"{\"] { a: b }"},
        {"p[title='a}{'] { a: b }", "p[title='a}{']", 1001, "p[title='a}{'] { a: b }"},
        {"p:contains(\"{\") { a: b }", "p:contains(\"{\")", 1001, "p:contains(\"{\") { a: b }"},
        // So do those in parentheses, which only a parenthesis ends.
        {"p:x(]{) { a: b }", "p:x(]{)", 1, "p:x(]{) { a: b }"},
        {"p:x([{) { a: b }", "p:x([{)", 1, "p:x([{) { a: b }"},
        // The last brace ends the declaration, whatever stands before it.
        {"p { a: b } q { c: d }", "p", 1, "p { a: b } q { c: d }"},
        {"p { a: {b} }", "p", 1, "p { a: {b} }"},
        {"p { a: b }}", "p", 1, "p { a: b } }"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
        rule.SetCssText(c.text);
        EXPECT_EQ(rule.SelectorText(), c.selector);
        EXPECT_EQ(rule.Specificity(), c.specificity);
        EXPECT_EQ(rule.CssText(), c.cssText);
    }
}

TEST(CSSStyleRule, RefusesWhatIsNoRule) {
    static constexpr char kSelector[] = "12 Syntax error in selector";
    static constexpr char kDeclaration[] = "12 Expected style declaration after selector";
    static constexpr char kBlock[] = "12 Syntax error in style block";
    const struct {
        const char* text;
        const char* error;
    } kCases[] = {
        {"1 { a: b }", kSelector},
        {"::before { a: b }", kSelector},
        {"p ~ q { a: b }", kSelector},
        {"a|b { a: b }", kSelector},
        {"[a] { a: b }", kSelector},
        {"#a[b] { a: b }", kSelector},
        {"p[a~=b] { a: b }", kSelector},
        {"p, 5 { a: b }", kSelector},
        {"p. { a: b }", kSelector},
        {"p/* c */ { a: b }", kSelector},
        {"\"p\" { a: b }", kSelector},
        {"1 { a: b", kSelector},  // before the block is looked at
        {"", kDeclaration},
        {" \n", kDeclaration},
        {"p", kDeclaration},
        {" p, q ", kDeclaration},
        {"p color: red }", kDeclaration},
        {"p { color: red", kBlock},
        {"p {", kBlock},
        {"p { } x", kBlock},
        {"p { color: red };", kBlock},
        {"p { 1 ", kBlock},  // before the declaration is read
        {"p { color red }", "12 Expected ':'"},
        {"p { 1: b }", "12 Invalid property name"},
        {"p { ; }", "12 Invalid property name"},
        {"p { a: b ! }", "12 Invalid importance identifier"},
        {"p { a: b !x y }", "12 Unexpected token after property"},
        {"p { margin: }", "12 Property value missing"},
    };
    for (const auto& c : kCases) {
        CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
        EXPECT_EQ(support::DomErrorOf([&] { rule.SetCssText(c.text); }), c.error) << c.text;
        EXPECT_EQ(rule.SelectorText(), "") << c.text;
    }
}

// Whether they lack the end of a bracket or a declaration is a matter of opinion.
TEST(CSSStyleRule, RefusesBracketsWithoutAnEnd) {
    for (const char* const text : {"p[a { a: b }", "p[a=\"{ a: b }", "p:not( { a: b }", "1", "}"}) {
        Ruled rule("q { c: d }");
        const std::string error =
            support::DomErrorOf([&] { rule.CSSRule::SetCssText(astring(text)); });
        EXPECT_TRUE(error == "12 Syntax error in selector" ||
                    error == "12 Expected style declaration after selector")
            << text << ": " << error;
        EXPECT_EQ(rule.CssText(), "q { c: d }") << text;
    }
}

TEST(CSSStyleRule, ARefusedSelectorOrBlockChangesNothing) {
    for (const char* const text : {"1 { c: d }", "", "p", "p { c: d", "p { c: d } x"}) {
        Ruled rule("#a { a: b }");
        EXPECT_NE(support::DomErrorOf([&] { rule.CSSRule::SetCssText(astring(text)); }), "");
        EXPECT_EQ(rule.CssText(), "#a { a: b }") << text;
        EXPECT_EQ(rule.Specificity(), 1'000'000) << text;
    }
}

// The specificity goes first, so that the properties carry it, and the selector comes last.
TEST(CSSStyleRule, ARefusedDeclarationLeavesItsPropertiesUpToTheFault) {
    Ruled rule("#a { a: b; c: d }");
    EXPECT_DOM_ERROR(rule.CSSRule::SetCssText(astring(".x { e: f; 1 }")),
                     "12 Invalid property name");
    EXPECT_EQ(rule.SelectorText(), "#a");
    EXPECT_EQ(PropertiesOf(rule.Style()), "e: f");
    EXPECT_EQ(rule.Style().Properties().Item(0)->Specificity(), 1000);
}

TEST(CSSStyleRule, ARefusedDeclarationLeavesTheSpecificityOfItsSelectors) {
    Ruled rule("#a { a: b }");
    EXPECT_DOM_ERROR(rule.CSSRule::SetCssText(astring(".x { e: f; 1 }")),
                     "12 Invalid property name");
    EXPECT_EQ(rule.Specificity(), 1000);
}

TEST(CSSStyleRule, AnotherTextReplacesAll) {
    Ruled rule("#a { a: b }");
    CSSRule& base = rule;
    base.SetCssText("p { c: d }");
    EXPECT_EQ(base.CssText(), "p { c: d }");
    EXPECT_EQ(rule.Specificity(), 1);
    base.SetCssText(astring("q { e: f }"));
    EXPECT_EQ(base.CssText(), "q { e: f }");
    base.SetCssText(base.CssText());
    EXPECT_EQ(base.CssText(), "q { e: f }");
    base.SetCssText("q {}");
    EXPECT_EQ(base.CssText(), "q {  }");
}

TEST(CSSStyleRule, SelectorsAreSetAlone) {
    Ruled rule("p { a: b }");
    rule.SetSelectorText(" \t#a ,\n b \t\n");
    EXPECT_EQ(rule.SelectorText(), "#a ,\n b");
    EXPECT_EQ(rule.Specificity(), 1'000'001);
    EXPECT_EQ(rule.CssText(), "#a ,\n b { a: b }");
    EXPECT_EQ(rule.Style().Properties().Item(0)->Specificity(), 1);  // of when it was read
    rule.SetSelectorText(rule.SelectorText());
    EXPECT_EQ(rule.SelectorText(), "#a ,\n b");
    for (const char* const text : {"1", "::before", "a ~ b", "[a]", "a,  #", ":not("}) {
        EXPECT_DOM_ERROR(rule.SetSelectorText(text), "12 Syntax error in selector");
        EXPECT_EQ(rule.SelectorText(), "#a ,\n b");
        EXPECT_EQ(rule.Specificity(), 1'000'001);
    }
}

TEST(CSSStyleRule, ItsStyleCanBeChanged) {
    Ruled rule("p { a: b }");
    rule.Style().SetProperty("c", "d", "important");
    EXPECT_EQ(rule.CssText(), "p { a: b; c: d !important }");
    rule.Style().SetCssText("e: f");
    EXPECT_EQ(rule.CssText(), "p { e: f }");
    EXPECT_EQ(rule.SelectorText(), "p");
}

TEST(CSSStyleRule, AnswersToTheNamesOfItsClasses) {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    CSSRule* const base = &rule;
    EXPECT_EQ(base->QueryInterface("Dom::CSS::CSSStyleRule"), &rule);
    EXPECT_EQ(base->QueryInterface("Dom::CSS::CSSRule"), base);
    for (const char* const name :
         {"", "CSSStyleRule", "Dom::CSS::CSSUnknownRule", "Dom::CSS::CSSStyleSheet"})
        EXPECT_EQ(base->QueryInterface(name), nullptr) << name;
}
