// SPDX-License-Identifier: MIT
//
// Properties are made when they are first asked for; nobody can tell.
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>

namespace {

using Dom::DOMException;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;

std::string MessageOf(CSSStyleDeclaration& declaration, const std::string& text) {
    try {
        declaration.SetCssText(text.c_str());
    } catch (const DOMException& exception) {
        return exception.what();
    }
    return {};
}

// Adds a property that is refused, so that those before it are made at once.
std::string WithAFault(const std::string& text) {
    const std::size_t last = text.find_last_not_of(" \t\n\r\f");
    const bool needsSeparator = last != std::string::npos && text[last] != ';';
    return text + (needsSeparator ? ";margin:" : "margin:");
}

TEST(WaitingProperties, AreThoseThatAreMadeAtOnce) {
    constexpr const char* kPieces[] = {
        "a",        "b-c", "-x",         "margin",       "border", ":",        ": ", ";",
        "; ",       " ",   "\n",         "1px",          "0 2em",  "red",      "i",  "'x'",
        "url(a b)", "!",   "!important", "! Important ", "\\41 ",  "\xC3\xA9", "(",  "}"};
    unsigned state = 1;
    const auto next = [&state] {
        state = state * 1664525U + 1013904223U;
        return state >> 16;
    };
    int accepted = 0;
    for (int i = 0; i < 50'000; ++i) {
        std::string text;
        for (unsigned count = next() % 12; count > 0; --count)
            text += kPieces[next() % std::size(kPieces)];
        SCOPED_TRACE(testing::PrintToString(text));
        CSSStyleDeclaration waiting(nullptr);
        if (!MessageOf(waiting, text).empty()) continue;
        CSSStyleDeclaration atOnce(nullptr);
        ASSERT_NE(MessageOf(atOnce, WithAFault(text)).find("Property value missing"),
                  std::string::npos);
        ASSERT_EQ(waiting.Length(), atOnce.Length());
        ASSERT_EQ(waiting.CssText(), atOnce.CssText());
        ++accepted;
    }
    EXPECT_GT(accepted, 1000);
}

TEST(WaitingProperties, HaveTheWeightThatTheRuleHadWhenTheyWereSet) {
    CSSStyleSheet sheet(CSSRule::User, nullptr, "", "");
    sheet.InsertRule("p.k { a: b }", 0);
    auto& rule = static_cast<CSSStyleRule&>(*sheet.CssRules().Item(0));
    rule.SetSelectorText("#i");
    EXPECT_EQ(rule.Specificity(), 1'000'000);
    EXPECT_EQ(rule.Style().Properties().Item(0)->Specificity(), 1001);
    EXPECT_EQ(rule.Style().Properties().Item(0)->Origin(), CSSRule::User);
}

TEST(WaitingProperties, AreReplacedChangedAndCopied) {
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    const auto insert = [&sheet](const char* text) -> CSSStyleDeclaration& {
        sheet.InsertRule(text, 0);
        return static_cast<CSSStyleRule&>(*sheet.CssRules().Item(0)).Style();
    };
    CSSStyleDeclaration& set = insert("p { a: b }");
    set.SetCssText("c: d");
    EXPECT_EQ(set.CssText(), "c: d");
    set.SetCssText("");
    EXPECT_EQ(set.Length(), 0U);
    CSSStyleDeclaration& added = insert("p { a: b }");
    added.SetProperty("c", "d", "");
    EXPECT_EQ(added.CssText(), "a: b; c: d");
    CSSStyleDeclaration& removed = insert("p { a: b; c: d }");
    EXPECT_EQ(removed.RemoveProperty("a"), "b");
    EXPECT_EQ(removed.CssText(), "c: d");
    CSSStyleDeclaration& cascaded = insert("p { a: b; c: d }");
    cascaded.Cascade(insert("q { a: x }"), CSSRule::Author, 0);
    EXPECT_EQ(cascaded.CssText(), "c: d; a: x");
    const CSSStyleDeclaration copy(insert("p { a: b }"));
    EXPECT_EQ(copy.CssText(), "a: b");
    CSSStyleDeclaration& assigned = insert("p { a: b }");
    assigned = insert("p { c: d }");
    EXPECT_EQ(assigned.CssText(), "c: d");
    CSSStyleDeclaration& refused = insert("p { a: b }");
    EXPECT_NE(MessageOf(refused, "c: d; e"), "");
    EXPECT_EQ(refused.CssText(), "c: d") << "what stands before the fault stays";
}

class alignas(64) AlignedRule : public CSSStyleRule {
public:
    AlignedRule() : CSSStyleRule(nullptr, nullptr, CSSRule::Author) {}
};

TEST(WaitingProperties, AreTheSameWithRulesOfAnyOrigin) {
    const auto expectStyle = [](CSSStyleRule& rule) {
        rule.SetCssText("p-that-has-a-name-of-some-length { a: b }");
        EXPECT_EQ(rule.Style().CssText(), "a: b");
        rule.SetCssText("q { c: d }");
    };
    CSSStyleRule onTheStack(nullptr, nullptr, CSSRule::Author);
    expectStyle(onTheStack);
    expectStyle(*std::make_unique<CSSStyleRule>(nullptr, nullptr, CSSRule::Author));
    const std::unique_ptr<CSSStyleRule> aligned = std::make_unique<AlignedRule>();
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(aligned.get()) % alignof(AlignedRule), 0U);
    expectStyle(*aligned);
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    sheet.InsertRule("selectors-that-a-string-does-not-keep-inside { e: f }", 0);
    const std::unique_ptr<CSSRule> removed(sheet.CssRules().Item(0));
    sheet.CssRules().RemoveItemAt(0);
    expectStyle(static_cast<CSSStyleRule&>(*removed));
}

}  // namespace
