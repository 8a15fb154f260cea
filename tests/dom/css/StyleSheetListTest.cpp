// SPDX-License-Identifier: MIT
#include <espalier/dom/css/StyleSheetListImpl.h>

#include "dom/css/CountedSheet.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

using Dom::StyleSheets::StyleSheet;
using Dom::StyleSheets::StyleSheetList;
using Dom::StyleSheets::StyleSheetListImpl;

template <typename List>
constexpr bool kCanBeChanged = requires(List list, StyleSheet* sheet) {
    list.AddItem(sheet);
};

static_assert(!kCanBeChanged<StyleSheetList>);
static_assert(kCanBeChanged<StyleSheetListImpl>);

// Sheets know their lists, so none may leave one without a word.
template <typename List>
constexpr bool kItemsCanBeSwapped = requires(List& list) {
    list.SwapItems(list);
};
template <typename List>
constexpr bool kItemsCanBeSiftedOut = requires(List& list, bool (*predicate)(StyleSheet*)) {
    list.RemoveItemsIf(predicate);
};

static_assert(!kItemsCanBeSwapped<StyleSheetListImpl>);
static_assert(!kItemsCanBeSiftedOut<StyleSheetListImpl>);

}  // namespace

TEST(StyleSheetList, OwnsItsSheets) {
    int count = 0;
    {
        StyleSheetListImpl list;
        list.AddItem(new CountedSheet(count));
        list.AddItem(new CountedSheet(count));
        EXPECT_EQ(list.Length(), 2U);
        EXPECT_EQ(count, 2);
    }
    EXPECT_EQ(count, 0);
}

TEST(StyleSheetList, WhoRemovesASheetOwnsIt) {
    int count = 0;
    StyleSheetListImpl list;
    auto* const first = new CountedSheet(count);
    auto* const second = new CountedSheet(count);
    auto* const third = new CountedSheet(count);
    for (CountedSheet* const sheet : {first, second, third})
        list.AddItem(sheet);
    list.RemoveItem(second);
    list.RemoveItem(second);
    list.RemoveItemAt(2);
    EXPECT_EQ(count, 3);
    ASSERT_EQ(list.Length(), 2U);
    EXPECT_EQ(list.Item(1), third);
    list.RemoveItemAt(1);
    ASSERT_EQ(list.Length(), 1U);
    EXPECT_EQ(list.Item(0), first);
    delete second;
    delete third;
    EXPECT_EQ(count, 1);
}

TEST(StyleSheetList, ASheetThatIsDeletedLeavesIt) {
    int count = 0;
    StyleSheetListImpl list;
    auto* const first = new CountedSheet(count);
    auto* const second = new CountedSheet(count);
    list.AddItem(first);
    list.AddItem(second);
    delete first;
    ASSERT_EQ(list.Length(), 1U);
    EXPECT_EQ(list.Item(0), second);
}

TEST(StyleSheetListHostile, ManySheetsAreDestroyedInLinearTime) {
    constexpr int kMany = 300'000;
    int count = 0;
    {
        StyleSheetListImpl list;
        for (int i = 0; i < kMany; ++i)
            list.AddItem(new CountedSheet(count));
        EXPECT_EQ(count, kMany);
    }
    EXPECT_EQ(count, 0);
}

TEST(StyleSheetList, ASheetMayBeInSeveralLists) {
    int count = 0;
    auto* const sheet = new CountedSheet(count);
    StyleSheetListImpl last;
    {
        StyleSheetListImpl first;
        StyleSheetListImpl second;
        for (StyleSheetListImpl* const list : {&first, &second, &last})
            list->AddItem(sheet);
        second.RemoveItem(sheet);
        EXPECT_EQ(second.Length(), 0U);
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(count, 0);  // the first list has deleted it
    EXPECT_EQ(last.Length(), 0U);
}

TEST(StyleSheetList, ARemovedSheetMayBeAddedAgain) {
    int count = 0;
    {
        StyleSheetListImpl list;
        auto* const sheet = new CountedSheet(count);
        list.AddItem(sheet);
        list.RemoveItemAt(0);
        list.AddItem(sheet);
        EXPECT_EQ(list.Length(), 1U);
    }
    EXPECT_EQ(count, 0);
}

TEST(StyleSheetList, MayHoldNull) {
    StyleSheetListImpl list;
    list.AddItem(nullptr);
    EXPECT_EQ(list.Length(), 1U);
    EXPECT_EQ(list.Item(0), nullptr);
    list.RemoveItemAt(0);
    list.AddItem(nullptr);
    list.RemoveItem(nullptr);
    EXPECT_EQ(list.Length(), 0U);
}

TEST(StyleSheetList, AnswersToTheNamesOfItsClasses) {
    StyleSheetListImpl list;
    StyleSheetList* const base = &list;
    EXPECT_EQ(base->QueryInterface("Dom::StyleSheets::StyleSheetListImpl"), &list);
    EXPECT_EQ(base->QueryInterface("Dom::StyleSheets::StyleSheetList"), base);
    EXPECT_EQ(base->QueryInterface("Dom::DOMList"), nullptr);
    StyleSheetList plain;
    EXPECT_EQ(plain.QueryInterface("Dom::StyleSheets::StyleSheetList"), &plain);
    EXPECT_EQ(plain.QueryInterface("Dom::StyleSheets::StyleSheetListImpl"), nullptr);
}
