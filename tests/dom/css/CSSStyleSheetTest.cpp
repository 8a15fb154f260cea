// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "dom/ExpectDomError.h"
#include "support/FarIndex.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::CSSUnknownRule;
using Dom::StyleSheets::StyleSheet;

constexpr char kNotAPlace[] = "1 Specified index is not a valid insertion point";
constexpr char kNoRule[] =
    "1 Specified index does not correspond to a rule in the style sheet's rule list";

// A sheet of the author, with a rule for each text.
struct Sheet : CSSStyleSheet {
    Sheet() : CSSStyleSheet(CSSRule::Author, nullptr, "", "") {}
    Sheet(std::initializer_list<const char*> rules) : Sheet() {
        for (const char* const rule : rules)
            InsertRule(rule, CssRules().Length());
    }
};

// The texts of the rules with " / " between them.
std::string Texts(const CSSStyleSheet& sheet) {
    std::string texts;
    for (const CSSRule* const rule : sheet.CssRules())
        texts += (texts.empty() ? "" : " / ") + rule->CssText().str();
    return texts;
}

}  // namespace

TEST(CSSStyleSheet, AFreshOneIsAnEnabledSheetWithoutRules) {
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    EXPECT_EQ(sheet.Type(), "text/css");
    EXPECT_FALSE(sheet.Disabled());
    EXPECT_EQ(sheet.CssRules().Length(), 0U);
    EXPECT_EQ(sheet.OwnerNode(), nullptr);
    EXPECT_EQ(sheet.OwnerRule(), nullptr);
    EXPECT_EQ(sheet.ParentStyleSheet(), nullptr);
    EXPECT_TRUE(sheet.GetMediaList().IsEmpty());
    EXPECT_EQ(&sheet.CssRules(), &std::as_const(sheet).CssRules());
}

TEST(CSSStyleSheet, IsMadeOfANodeOrARuleOrAnOrigin) {
    CSSStyleSheet parent(CSSRule::Author, nullptr, "parent.css", "");
    int place = 0;
    auto* const node = reinterpret_cast<Dom::Node*>(&place);  // only the address counts
    CSSUnknownRule rule(&parent, nullptr, CSSRule::Author);

    const CSSStyleSheet ofNode(node, &parent, "a.css", "A");
    EXPECT_EQ(ofNode.OwnerNode(), node);
    EXPECT_EQ(ofNode.OwnerRule(), nullptr);
    EXPECT_EQ(ofNode.Origin(), CSSRule::Author);

    const CSSStyleSheet ofRule(&rule, &parent, "a.css", "A");
    EXPECT_EQ(ofRule.OwnerNode(), nullptr);
    EXPECT_EQ(ofRule.OwnerRule(), &rule);
    EXPECT_EQ(ofRule.Origin(), CSSRule::Author);

    const CSSStyleSheet ofUser(CSSRule::User, &parent, "a.css", "A");
    EXPECT_EQ(ofUser.OwnerNode(), nullptr);
    EXPECT_EQ(ofUser.OwnerRule(), nullptr);
    EXPECT_EQ(ofUser.Origin(), CSSRule::User);
    EXPECT_EQ(CSSStyleSheet(CSSRule::UserAgent, nullptr, "", "").Origin(), CSSRule::UserAgent);

    for (const CSSStyleSheet* const sheet : {&ofNode, &ofRule, &ofUser}) {
        EXPECT_EQ(sheet->Type(), "text/css");
        EXPECT_EQ(sheet->ParentStyleSheet(), &parent);
        EXPECT_EQ(sheet->Href(), "a.css");
        EXPECT_EQ(sheet->Title(), "A");
    }
}

TEST(CSSStyleSheet, InsertsStyleRules) {
    Sheet sheet;
    EXPECT_EQ(sheet.InsertRule("p { color: red }", 0), 0UL);
    ASSERT_EQ(sheet.CssRules().Length(), 1U);
    CSSRule* const rule = sheet.CssRules().Item(0);
    EXPECT_EQ(rule->Type(), CSSRule::STYLE_RULE);
    EXPECT_NE(rule->QueryInterface("Dom::CSS::CSSStyleRule"), nullptr);
    EXPECT_EQ(rule->CssText(), "p { color: red }");
}

TEST(CSSStyleSheet, ATextThatBeginsWithAnAtSignMakesAnUnknownRule) {
    for (const char* const text : {"@media print { }", "@import url(a.css);", "@font-face {", "@",
                                   "@charset \"x\"; p { a: b }"}) {
        Sheet sheet;
        sheet.InsertRule(text, 0);
        ASSERT_EQ(sheet.CssRules().Length(), 1U);
        EXPECT_EQ(sheet.CssRules().Item(0)->Type(), CSSRule::UNKNOWN_RULE);
        EXPECT_NE(sheet.CssRules().Item(0)->QueryInterface("Dom::CSS::CSSUnknownRule"), nullptr);
        EXPECT_EQ(sheet.CssRules().Item(0)->CssText(), text);
    }
    Sheet sheet;
    sheet.InsertRule(" \t\n\r\f@media print { }", 0);
    EXPECT_EQ(sheet.CssRules().Item(0)->Type(), CSSRule::UNKNOWN_RULE);
}

TEST(CSSStyleSheet, InsertsAtEveryIndexUpToTheNumberOfRules) {
    const struct {
        unsigned long index;
        const char* texts;
    } kCases[] = {
        {0, "x {  } / a {  } / b {  } / c {  }"},
        {1, "a {  } / x {  } / b {  } / c {  }"},
        {2, "a {  } / b {  } / x {  } / c {  }"},
        {3, "a {  } / b {  } / c {  } / x {  }"},
    };
    for (const auto& c : kCases) {
        Sheet sheet{"a{}", "b{}", "c{}"};
        EXPECT_EQ(sheet.InsertRule("x{}", c.index), c.index);
        EXPECT_EQ(Texts(sheet), c.texts);
        Sheet other{"a{}", "b{}", "c{}"};
        EXPECT_EQ(other.InsertRule(astring("x{}"), c.index), c.index);
        EXPECT_EQ(Texts(other), c.texts);
    }
}

TEST(CSSStyleSheet, AnIndexBeyondTheNumberOfRulesIsNoPlace) {
    for (const char* const text : {"x{}", "@x", "1", ""}) {  // the index is looked at first
        Sheet empty;
        for (const unsigned long index : {1UL, 2UL, support::kFarIndex, ~0UL}) {
            EXPECT_DOM_ERROR(empty.InsertRule(text, index), kNotAPlace);
            EXPECT_DOM_ERROR(empty.InsertRule(astring(text), index), kNotAPlace);
        }
        EXPECT_EQ(empty.CssRules().Length(), 0U);
        Sheet sheet{"a{}", "b{}"};
        for (const unsigned long index :
             {3UL, 4UL, support::kFarIndex, support::kFarIndex + 1, ~0UL})
            EXPECT_DOM_ERROR(sheet.InsertRule(text, index), kNotAPlace);
        EXPECT_EQ(Texts(sheet), "a {  } / b {  }");
    }
}

TEST(CSSStyleSheet, ARefusedRuleChangesNothing) {
    const struct {
        const char* text;
        const char* error;
    } kCases[] = {
        {"1 { a: b }", "12 Syntax error in selector"},
        {"", "12 Expected style declaration after selector"},
        {"p color: red }", "12 Expected style declaration after selector"},
        {"p { color: red", "12 Syntax error in style block"},
        {"p { a: b; 1 }", "12 Invalid property name"},
        {"p { a: b; c }", "12 Expected ':'"},
        {"p { a: b; c: d ! }", "12 Invalid importance identifier"},
        {"p { a: b; c: d !x y }", "12 Unexpected token after property"},
        {"p { a: b; margin: }", "12 Property value missing"},
    };
    for (const auto& c : kCases) {
        Sheet sheet{"a{}", "b{}"};
        CSSRule* const first = sheet.CssRules().Item(0);
        CSSRule* const second = sheet.CssRules().Item(1);
        for (const unsigned long index : {0UL, 1UL, 2UL})
            EXPECT_DOM_ERROR(sheet.InsertRule(c.text, index), c.error);
        ASSERT_EQ(sheet.CssRules().Length(), 2U);
        EXPECT_EQ(sheet.CssRules().Item(0), first);
        EXPECT_EQ(sheet.CssRules().Item(1), second);
    }
}

TEST(CSSStyleSheet, RulesKnowTheirSheetItsOwnerRuleAndItsOrigin) {
    CSSUnknownRule owner(nullptr, nullptr, CSSRule::User);
    CSSStyleSheet imported(&owner, nullptr, "", "");
    CSSStyleSheet agent(CSSRule::UserAgent, nullptr, "", "");
    for (CSSStyleSheet* const sheet : {&imported, &agent}) {
        sheet->InsertRule("p { a: b }", 0);
        sheet->InsertRule("@media x {}", 0);
        for (const CSSRule* const rule : sheet->CssRules()) {
            EXPECT_EQ(rule->ParentStyleSheet(), sheet);
            EXPECT_EQ(rule->ParentRule(), sheet->OwnerRule());
            EXPECT_EQ(rule->Origin(), sheet->Origin());
        }
    }
    const auto* const rule = static_cast<CSSStyleRule*>(agent.CssRules().Item(1));
    EXPECT_EQ(rule->Style().Properties().Item(0)->Origin(), CSSRule::UserAgent);
    EXPECT_EQ(rule->Style().Properties().Item(0)->Specificity(), 1);
}

TEST(CSSStyleSheet, DeletesRules) {
    const struct {
        unsigned long index;
        const char* texts;
    } kCases[] = {{0, "b {  } / c {  }"}, {1, "a {  } / c {  }"}, {2, "a {  } / b {  }"}};
    for (const auto& c : kCases) {
        Sheet sheet{"a{}", "b{}", "c{}"};
        sheet.DeleteRule(c.index);
        EXPECT_EQ(Texts(sheet), c.texts);
    }
    Sheet sheet{"a{}"};
    sheet.DeleteRule(0);
    EXPECT_EQ(sheet.CssRules().Length(), 0U);
}

// Deliberate: the first index without a rule is let through.
TEST(CSSStyleSheet, DeliberateDeletingBehindTheLastRuleDoesNothing) {
    Sheet sheet{"a{}", "b{}"};
    sheet.DeleteRule(2);
    EXPECT_EQ(Texts(sheet), "a {  } / b {  }");
    Sheet empty;
    empty.DeleteRule(0);
    EXPECT_EQ(empty.CssRules().Length(), 0U);
}

TEST(CSSStyleSheet, DeletingFurtherBehindIsRefused) {
    Sheet sheet{"a{}", "b{}"};
    for (const unsigned long index : {3UL, 4UL, support::kFarIndex, support::kFarIndex + 2, ~0UL})
        EXPECT_DOM_ERROR(sheet.DeleteRule(index), kNoRule);
    EXPECT_EQ(Texts(sheet), "a {  } / b {  }");
    Sheet empty;
    EXPECT_DOM_ERROR(empty.DeleteRule(1), kNoRule);
    EXPECT_DOM_ERROR(empty.DeleteRule(support::kFarIndex), kNoRule);
}

TEST(CSSStyleSheet, TheSeventeenthRuleMakesRoomForThirtyTwo) {
    Sheet sheet;
    for (unsigned i = 0; i < 16; ++i)
        sheet.InsertRule("a{}", i);
    EXPECT_EQ(sheet.CssRules().Capacity(), 16U);
    sheet.InsertRule("b{}", 0);
    EXPECT_EQ(sheet.CssRules().Capacity(), 32U);
    EXPECT_EQ(sheet.CssRules().Item(0)->CssText(), "b {  }");
}

TEST(CSSStyleSheet, IsDeletedThroughTheDestructorOfStyleSheet) {
    struct Flagged final : CSSStyleSheet {
        explicit Flagged(bool& deleted)
            : CSSStyleSheet(CSSRule::Author, nullptr, "", ""), deleted_(deleted) {}
        Flagged(const Flagged&) = delete;
        Flagged& operator=(const Flagged&) = delete;
        ~Flagged() override { deleted_ = true; }
        bool& deleted_;
    };
    bool deleted = false;
    auto made = std::make_unique<Flagged>(deleted);
    made->InsertRule("a { b: c }", 0);
    made->InsertRule("@d", 1);
    std::unique_ptr<StyleSheet> sheet = std::move(made);
    sheet.reset();
    EXPECT_TRUE(deleted);
}

TEST(CSSStyleSheet, AnswersToTheNamesOfItsClasses) {
    Sheet sheet;
    StyleSheet* const base = &sheet;
    EXPECT_EQ(base->QueryInterface("Dom::CSS::CSSStyleSheet"), static_cast<CSSStyleSheet*>(&sheet));
    EXPECT_EQ(base->QueryInterface("Dom::StyleSheets::StyleSheet"), base);
    for (const char* const name : {"", "CSSStyleSheet", "Dom::CSS::StyleSheet", "Dom::CSS::CSSRule",
                                   "Dom::StyleSheets::CSSStyleSheet"})
        EXPECT_EQ(base->QueryInterface(name), nullptr) << name;
}

TEST(CSSStyleSheetHostile, ManyRulesTakeLinearTime) {
    constexpr unsigned kMany = 200'000;
    Sheet sheet;
    for (unsigned i = 0; i < kMany; ++i)
        sheet.InsertRule("p.a > q { color: red; margin: 1px 2px }", i);
    EXPECT_EQ(sheet.CssRules().Length(), kMany);
    for (unsigned i = kMany; i > 0; --i)
        sheet.DeleteRule(i - 1);
    EXPECT_EQ(sheet.CssRules().Length(), 0U);
}

TEST(CSSStyleSheetHostile, LongRulesTakeLinearTime) {
    Sheet sheet;
    const std::string braces(1'000'000, '{');
    const std::string ends(1'000'000, '}');
    EXPECT_EQ(support::DomErrorOf([&] { sheet.InsertRule(("p" + braces + ends).c_str(), 0); }),
              "12 Invalid property name");
    sheet.InsertRule(("p { a: " + braces + " }").c_str(), 0);
    EXPECT_EQ(support::DomErrorOf([&] { sheet.InsertRule(("p {" + ends + " x").c_str(), 0); }),
              "12 Syntax error in style block");
    EXPECT_EQ(sheet.CssRules().Length(), 1U);
}
