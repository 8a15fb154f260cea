// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSRuleList.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "support/FarIndex.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSRuleList;
using Dom::CSS::CSSStyleSheet;

// Rules know their sheet, so none may leave it without a word.
template <typename List>
constexpr bool kItemsCanBeSwapped = requires(List& list) {
    list.SwapItems(list);
};
template <typename List>
constexpr bool kItemsCanBeSiftedOut = requires(List& list, bool (*predicate)(CSSRule*)) {
    list.RemoveItemsIf(predicate);
};

static_assert(!kItemsCanBeSwapped<CSSRuleList>);
static_assert(!kItemsCanBeSiftedOut<CSSRuleList>);

// A rule that counts itself while it lives.
class CountedRule final : public CSSRule {
public:
    explicit CountedRule(int& count, CSSStyleSheet* sheet = nullptr)
        : CSSRule(UNKNOWN_RULE, Author, sheet, nullptr), count_(count) {
        ++count_;
    }
    ~CountedRule() override { --count_; }

    astring CssText() const override { return ""; }
    void SetCssText(const char*) override {}
    using CSSRule::SetCssText;

private:
    int& count_;
};

}  // namespace

TEST(CSSRuleList, AFreshOneIsEmpty) {
    const CSSRuleList list;
    EXPECT_EQ(list.Length(), 0U);
    EXPECT_EQ(list.Item(0), nullptr);
}

TEST(CSSRuleList, LetsNullItemsOut) {
    CSSRuleList list;
    list.AddItem(nullptr);
    list.AddItem(nullptr);
    list.RemoveItemAt(1);
    EXPECT_EQ(list.Length(), 1U);
    list.RemoveItem(nullptr);
    EXPECT_EQ(list.Length(), 0U);
    list.RemoveItem(nullptr);
    EXPECT_EQ(list.Length(), 0U);
}

TEST(CSSRuleList, OwnsItsRules) {
    int count = 0;
    {
        CSSRuleList list;
        for (int i = 0; i < 20; ++i)
            list.AddItem(new CountedRule(count));
        EXPECT_EQ(count, 20);
        EXPECT_EQ(list.Length(), 20U);
        EXPECT_EQ(list.Capacity(), 32U);
    }
    EXPECT_EQ(count, 0);
}

TEST(CSSRuleList, ARemovedRuleBelongsToTheCallerAndToNoSheet) {
    int count = 0;
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    CSSRuleList& list = sheet.CssRules();
    auto* const first = new CountedRule(count, &sheet);
    auto* const second = new CountedRule(count, &sheet);
    auto* const third = new CountedRule(count, &sheet);
    for (CSSRule* const rule : {first, second, third})
        list.AddItem(rule);
    const std::unique_ptr<CSSRule> removedSecond(second);
    list.RemoveItem(second);
    EXPECT_EQ(second->ParentStyleSheet(), nullptr);
    EXPECT_EQ(first->ParentStyleSheet(), &sheet);
    ASSERT_EQ(list.Length(), 2U);
    EXPECT_EQ(list.Item(0), first);
    EXPECT_EQ(list.Item(1), third);
    const std::unique_ptr<CSSRule> removedFirst(first);
    list.RemoveItemAt(0);
    EXPECT_EQ(first->ParentStyleSheet(), nullptr);
    EXPECT_EQ(third->ParentStyleSheet(), &sheet);
    ASSERT_EQ(list.Length(), 1U);
    EXPECT_EQ(list.Item(0), third);
    EXPECT_EQ(count, 3);
}

TEST(CSSRuleList, ARuleThatARemovalDoesNotFindStaysWhatItIs) {
    int count = 0;
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    CSSStyleSheet otherSheet(CSSRule::Author, nullptr, "", "");
    sheet.CssRules().AddItem(new CountedRule(count, &sheet));
    CountedRule other(count, &otherSheet);
    sheet.CssRules().RemoveItem(&other);
    sheet.CssRules().RemoveItem(nullptr);
    for (const unsigned long index : {1UL, 2UL, support::kFarIndex, ~0UL})
        sheet.CssRules().RemoveItemAt(index);
    EXPECT_EQ(other.ParentStyleSheet(), &otherSheet);
    EXPECT_EQ(sheet.CssRules().Length(), 1U);
    EXPECT_EQ(sheet.CssRules().Item(0)->ParentStyleSheet(), &sheet);
}

TEST(CSSRuleList, ARemovedRuleOutlivesItsSheet) {
    int count = 0;
    std::unique_ptr<CSSRule> rule;
    {
        CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
        sheet.InsertRule("p { a: b }", 0);
        rule.reset(sheet.CssRules().Item(0));
        sheet.CssRules().RemoveItemAt(0);
        sheet.CssRules().AddItem(new CountedRule(count, &sheet));
    }
    EXPECT_EQ(count, 0);
    EXPECT_EQ(rule->ParentStyleSheet(), nullptr);
    EXPECT_EQ(rule->CssText(), "p { a: b }");
    rule->SetCssText("q { c: d }");
    EXPECT_EQ(rule->CssText(), "q { c: d }");
}

TEST(CSSRuleList, AnswersToItsName) {
    CSSRuleList list;
    EXPECT_EQ(list.QueryInterface("Dom::CSS::CSSRuleList"), &list);
    for (const char* const name : {"", "CSSRuleList", "Dom::CSS::CSSRule", "Dom::DOMList"})
        EXPECT_EQ(list.QueryInterface(name), nullptr) << name;
}
