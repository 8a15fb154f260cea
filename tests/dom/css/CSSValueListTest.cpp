// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSValueList.h>

#include "dom/css/CountedValue.h"
#include "support/FarIndex.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Dom::CSS::CSSValue;
using Dom::CSS::CSSValueList;

// Lets tests split at the separator that the list has.
class SplittingList final : public CSSValueList {
public:
    explicit SplittingList(char separator) : CSSValueList("", separator) {}
    using CSSValueList::SetValueList;
};

// Returns the texts of the items, each in brackets.
std::string ItemsOf(const CSSValueList& list) {
    std::string items;
    for (const CSSValue* const item : list)
        items += "[" + item->CssText().str() + "]";
    return items;
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

struct SplitCase {
    const char* text;
    char separator;
    const char* items;
};

template <std::size_t kCount>
void ExpectSplit(const SplitCase (&cases)[kCount]) {
    for (const SplitCase& c : cases) {
        SCOPED_TRACE(c.text);
        const CSSValueList made(c.text, '/');
        EXPECT_EQ(made.Separator(), c.separator);
        EXPECT_EQ(ItemsOf(made), c.items);
        CSSValueList set("x, y z", '/');
        ASSERT_EQ(set.Separator(), ',');
        set.SetCssText(c.text);
        EXPECT_EQ(set.Separator(), c.separator == '/' ? ',' : c.separator);
        EXPECT_EQ(ItemsOf(set), c.items);
    }
}

}  // namespace

TEST(CSSValueList, IsSplitAtItsFirstSeparator) {
    const SplitCase kCases[] = {
        {"1 2 3", ' ', "[1][2][3]"},
        {"1,2,3", ',', "[1][2][3]"},
        {"1, 2 ,3 , 4", ',', "[1][2][3][4]"},
        {"1 , 2", ',', "[1][2]"},
        {"1 \t\n, 2", ',', "[1][2]"},
        {"1   2", ' ', "[1][2]"},
        {"1\t2", ' ', "[1][2]"},
        {" 1 2 ", ' ', "[1][2]"},
        {"  1,2  ", ',', "[1][2]"},
        {"bold 12px 'a b' #abc url(c)", ' ', "[bold][12px][\"a b\"][#abc][url(\"c\")]"},
        {"'Times New Roman', serif", ',', "[\"Times New Roman\"][serif]"},
        {"12px/1.5 x", ' ', "[12][x]"},
    };
    ExpectSplit(kCases);
}

TEST(CSSValueList, QuotesAndParenthesesAreNotSplit) {
    const SplitCase kCases[] = {
        {"'a, b' c", ' ', "[\"a, b\"][c]"},
        {"\"a, b\",c", ',', "[\"a, b\"][c]"},
        {"'a\\', b' c", ' ', "[\"a', b\"][c]"},
        {"'a\"b' 'c\"d'", ' ', "[\"a\\\"b\"][\"c\\\"d\"]"},
        {"rgb(1, 2, 3) x", ' ', "[rgb(1, 2, 3)][x]"},
        {"rgb(1,2,3),x", ',', "[rgb(1,2,3)][x]"},
        {"x rgb(1, 2, 3) y", ' ', "[x][rgb(1, 2, 3)][y]"},
        {"f(g(1 2), 3) x", ' ', "[\"f(g(1 2), 3)\"][x]"},
        {"f(')' , 1) x", ' ', "[\"f(')' , 1)\"][x]"},
        {"f( 1 , 2 )", '/', "[\"f( 1 , 2 )\"]"},
        {"'a b'", '/', "[\"a b\"]"},
    };
    ExpectSplit(kCases);
}

TEST(CSSValueList, ASeparatorStaysWhereTheTextHasNone) {
    const SplitCase kCases[] = {
        {"", '/', ""},       {" ", '/', ""},          {"x", '/', "[x]"},
        {" x ", '/', "[x]"}, {"12px", '/', "[12px]"},
    };
    ExpectSplit(kCases);
}

TEST(CSSValueList, AnEmptyPieceIsAnUnknownValue) {
    const CSSValueList list("1,,2", ' ');
    ASSERT_EQ(ItemsOf(list), "[1][][2]");
    EXPECT_EQ(list.CssText(), "1,,2");
    const auto* const empty = dynamic_cast<const CSSPrimitiveValue*>(list.Item(1));
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(empty->PrimitiveType(), CSSPrimitiveValue::CSS_UNKNOWN);
    EXPECT_EQ(ItemsOf(CSSValueList("1, ,,2", ' ')), "[1][][][2]");
}

TEST(CSSValueList, DeliberateTheFirstSeparatorHoldsForAll) {
    // One separator is all that a list has, so the others become parts of the pieces.
    const SplitCase kCases[] = {
        {"x y, z", ' ', "[x][\"y,\"][z]"},
        {"x, y z", ',', "[x][\"y z\"]"},
        {"1px solid, 2px", ' ', "[1px][\"solid,\"][2px]"},
    };
    ExpectSplit(kCases);
}

TEST(CSSValueList, IsSplitAtItsOwnSeparatorWhenToldSo) {
    const struct {
        char separator;
        const char* text;
        const char* items;
    } kCases[] = {
        {',', "x y,z", "[\"x y\"][z]"},
        {',', "x y", "[\"x y\"]"},
        {',', " x , z ", "[x][z]"},
        {',', "'x,y',z", "[\"x,y\"][z]"},
        {',', "rgb(1,2,3),z", "[rgb(1,2,3)][z]"},
        {' ', "x,y z", "[\"x,y\"][z]"},
        {' ', "x", "[x]"},
        {' ', "", ""},
        {'/', "x / y z", "[x][\"y z\"]"},
        {';', "x;y;1", "[x][y][1]"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.separator << " in " << c.text);
        SplittingList list(c.separator);
        list.SetValueList(c.text, 1);
        EXPECT_EQ(ItemsOf(list), c.items);
        EXPECT_EQ(list.Separator(), c.separator);
    }
    SplittingList list(',');
    list.SetValueList("1 2", 0);
    EXPECT_EQ(list.Separator(), ' ');
    EXPECT_EQ(ItemsOf(list), "[1][2]");
}

TEST(CSSValueList, TheTextHasTheSeparatorAlone) {
    EXPECT_EQ(CSSValueList("1, 2,  3", ' ').CssText(), "1,2,3");
    EXPECT_EQ(CSSValueList("1  2\t3", ',').CssText(), "1 2 3");
    EXPECT_EQ(CSSValueList("1", ',').CssText(), "1");
    EXPECT_EQ(CSSValueList("", ',').CssText(), "");
}

TEST(CSSValueList, IsAListOfValues) {
    const CSSValueList list("1 2", ',');
    EXPECT_EQ(list.CssValueType(), CSSValue::CSS_VALUE_LIST);
    EXPECT_EQ(list.Length(), 2U);
    EXPECT_EQ(list.Item(1)->CssValueType(), CSSValue::CSS_PRIMITIVE_VALUE);
    EXPECT_EQ(list.Item(2), nullptr);
    EXPECT_EQ(list.Item(support::kFarIndex), nullptr);
    EXPECT_EQ(static_cast<const CSSPrimitiveValue*>(list.Item(0))->Descriptor(), nullptr);
}

TEST(CSSValueList, GrowsBySixteenItems) {
    const struct {
        std::size_t items;
        unsigned capacity;
    } kCases[] = {{1, 16}, {16, 16}, {17, 32}, {32, 32}, {33, 48}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.items);
        const CSSValueList list(Repeated("x ", c.items), ',');
        EXPECT_EQ(list.Length(), c.items);
        EXPECT_EQ(list.Capacity(), c.capacity);
    }
}

TEST(CSSValueList, TakesOverValuesThatItIsMadeOf) {
    int count = 0;
    {
        CSSValue* const values[] = {new CountedValue("a", count), new CountedValue("b", count)};
        const CSSValueList list(values, 2, '/');
        EXPECT_EQ(list.CssText(), "a/b");
        EXPECT_EQ(list.Item(0), values[0]);
        EXPECT_EQ(count, 2);
    }
    EXPECT_EQ(count, 0);
    const CSSValueList none(nullptr, 0, ',');
    EXPECT_EQ(none.Length(), 0U);
    EXPECT_EQ(none.Separator(), ',');
}

TEST(CSSValueList, TakesOverWhatIsAddedAndHandsOutWhatIsRemoved) {
    int count = 0;
    CountedValue other("o", count);
    std::unique_ptr<CountedValue> removed;
    {
        CSSValueList list("1 2", ',');
        list.AddItem(new CountedValue("a", count));
        removed = std::make_unique<CountedValue>("b", count);
        list.AddItem(removed.get());
        EXPECT_EQ(list.CssText(), "1 2 a b");
        list.RemoveItem(&other);
        EXPECT_EQ(list.Length(), 4U) << "it is not here";
        list.RemoveItem(removed.get());
        EXPECT_EQ(list.CssText(), "1 2 a");
        list.RemoveItem(removed.get());
        EXPECT_EQ(list.Length(), 3U);
        EXPECT_EQ(count, 3) << "nothing was deleted";
    }
    EXPECT_EQ(count, 2) << "the removed one and the other";
}

TEST(CSSValueList, ATextDeletesWhatWasThere) {
    int count = 0;
    CSSValueList list("", ',');
    list.AddItem(new CountedValue("a", count));
    list.AddItem(new CountedValue("b", count));
    list.SetCssText("1 2 3");
    EXPECT_EQ(count, 0);
    EXPECT_EQ(list.CssText(), "1 2 3");
    list.SetCssText(astring("4,5"));
    EXPECT_EQ(list.CssText(), "4,5");
    list.SetCssText("");
    EXPECT_EQ(list.Length(), 0U);
    EXPECT_EQ(list.Separator(), ',');
}

TEST(CSSValueList, CopiesHaveItemsOfTheirOwn) {
    int count = 0;
    auto source = std::make_unique<CSSValueList>("", '/');
    source->AddItem(new CountedValue("a", count));
    source->AddItem(new CountedValue("b", count));
    const CSSValueList copy(*source);
    const std::unique_ptr<CSSValueList> clone(source->Clone());
    CSSValueList assigned("1 2 3", ',');
    assigned.AddItem(new CountedValue("old", count));
    EXPECT_EQ(count, 7);
    assigned = *source;
    EXPECT_EQ(count, 8) << "the old one is deleted";
    source->Item(0)->SetCssText("changed");
    for (const CSSValueList* const list :
         std::initializer_list<const CSSValueList*>{&copy, clone.get(), &assigned}) {
        EXPECT_EQ(list->CssText(), "a/b");
        EXPECT_EQ(list->Separator(), '/');
        EXPECT_EQ(list->CssValueType(), CSSValue::CSS_VALUE_LIST);
        EXPECT_NE(list->Item(0), source->Item(0));
    }
    EXPECT_EQ(source->CssText(), "changed/b");
    source.reset();
    EXPECT_EQ(count, 6);
    EXPECT_EQ(copy.CssText(), "a/b");
    EXPECT_EQ(assigned.CssText(), "a/b");
}

TEST(CSSValueList, AssignedToItselfItStays) {
    int count = 0;
    CSSValueList list("", '/');
    list.AddItem(new CountedValue("a", count));
    list.AddItem(new CountedValue("b", count));
    const CSSValueList& self = list;
    list = self;
    EXPECT_EQ(list.CssText(), "a/b");
    EXPECT_EQ(count, 2);
}

TEST(CSSValueList, ListsOfListsAreCopiedAndPrinted) {
    CSSValueList outer("", ',');
    outer.AddItem(new CSSValueList("1 2", ','));
    outer.AddItem(new CSSValueList("3 4", ','));
    const CSSValueList copy(outer);
    outer.Item(0)->SetCssText("5");
    EXPECT_EQ(outer.CssText(), "5,3 4");
    EXPECT_EQ(copy.CssText(), "1 2,3 4");
}

TEST(CSSValueList, DeepListsAreDeletedWithoutRecursion) {
    int count = 0;
    auto outer = std::make_unique<CSSValueList>("", ',');
    outer->AddItem(new CountedValue("a", count));
    for (int i = 0; i < 300000; ++i) {
        auto next = std::make_unique<CSSValueList>("", ',');
        next->AddItem(outer.release());
        outer = std::move(next);
    }
    EXPECT_EQ(count, 1);
    outer.reset();
    EXPECT_EQ(count, 0);
}

TEST(CSSValueList, DeepListsAreReplacedWithoutRecursion) {
    auto inner = std::make_unique<CSSValueList>("", ',');
    for (int i = 0; i < 300000; ++i) {
        auto next = std::make_unique<CSSValueList>("", ',');
        next->AddItem(inner.release());
        inner = std::move(next);
    }
    CSSValueList list("", ',');
    list.AddItem(inner.release());
    list.SetCssText("1,2");
    EXPECT_EQ(list.CssText(), "1,2");
}

TEST(CSSValueList, MuchTextTakesLinearTime) {
    constexpr std::size_t kCount = 200000;
    EXPECT_EQ(CSSValueList(Repeated("1,", kCount) + "1", ' ').Length(), kCount + 1);
    EXPECT_EQ(CSSValueList(Repeated("1 ", kCount) + "1", ' ').Length(), kCount + 1);
    EXPECT_EQ(CSSValueList("1" + Repeated(",", kCount) + "1", ' ').Length(), kCount + 1);
    EXPECT_EQ(CSSValueList("1" + Repeated(" ", kCount) + "1", ' ').Length(), 2U);
    EXPECT_EQ(CSSValueList(Repeated("f(", kCount), ' ').Length(), 1U);
    EXPECT_EQ(CSSValueList(Repeated("f(", kCount) + Repeated(")", kCount) + " x", ',').Length(),
              2U);
    EXPECT_EQ(CSSValueList(Repeated("''", kCount) + " x", ',').Length(), 2U);
}

TEST(CSSValueList, WhatIsNotClosedGoesToTheEnd) {
    for (const char* const text : {"'a b, c", "f(a b, c", "f('a) b", "f(a))'b c", "'a\\"}) {
        SCOPED_TRACE(text);
        const CSSValueList list(text, ',');
        EXPECT_EQ(list.Length(), 1U);
    }
}

TEST(CSSValueList, AnswersItsInterfaces) {
    CSSValueList list("1 2", ',');
    CSSValue& base = list;
    EXPECT_EQ(base.QueryInterface("Dom::CSS::CSSValueList"), static_cast<void*>(&list));
    EXPECT_EQ(list.QueryInterface("Dom::CSS::CSSValue"), static_cast<void*>(&base));
    for (const char* const name : {"", "Dom::CSS::CSSPrimitiveValue", "CSSValueList",
                                   "Dom::CSS::CSSValueLists", "Dom::DOMList"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(list.QueryInterface(name), nullptr);
    }
}
