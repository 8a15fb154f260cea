// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMStringList.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

namespace {

using Dom::DOMStringList;

TEST(DOMStringList, AFreshOneIsEmpty) {
    const DOMStringList list;
    EXPECT_EQ(list.Length(), 0u);
    EXPECT_EQ(list.Item(0), "");
    EXPECT_FALSE(list.Contains(""));
    EXPECT_EQ(list.begin(), list.end());
}

TEST(DOMStringList, GivesItsStringsByIndex) {
    const DOMStringList list({astring("b"), astring(""), astring("a")});
    EXPECT_EQ(list.Length(), 3u);
    EXPECT_EQ(list.Item(0), "b");
    EXPECT_EQ(list.Item(1), "");
    EXPECT_EQ(list.Item(2), "a");
}

TEST(DOMStringList, PastItsEndIsAnEmptyString) {
    const DOMStringList list({astring("b")});
    EXPECT_EQ(list.Item(1), "");
    EXPECT_EQ(list.Item(std::numeric_limits<std::size_t>::max()), "");
    if constexpr (sizeof(std::size_t) > 4) {
        EXPECT_EQ(list.Item(std::size_t{1} << 32), "");
    }
}

TEST(DOMStringList, ContainsExactlyItsStrings) {
    const DOMStringList list({astring("one"), astring("two"), astring("", 0)});
    EXPECT_TRUE(list.Contains("one"));
    EXPECT_TRUE(list.Contains("two"));
    EXPECT_TRUE(list.Contains(""));
    for (const std::string_view other : {"on", "ones", "One", "one two", " one"}) {
        SCOPED_TRACE(other);
        EXPECT_FALSE(list.Contains(other));
    }
    EXPECT_FALSE(list.Contains(std::string_view("one\0", 4)));
}

TEST(DOMStringList, CopiesShareNothing) {
    DOMStringList original({astring("one"), astring("two")});
    const DOMStringList copy(original);
    DOMStringList assigned;
    assigned = original;
    original = DOMStringList({astring("three")});
    for (const DOMStringList* list : {&copy, static_cast<const DOMStringList*>(&assigned)}) {
        EXPECT_EQ(list->Length(), 2u);
        EXPECT_TRUE(list->Contains("two"));
        EXPECT_FALSE(list->Contains("three"));
    }
    EXPECT_EQ(original.Length(), 1u);
}

TEST(DOMStringList, ALoopVisitsItsStrings) {
    const DOMStringList list({astring("b"), astring("a")});
    std::vector<astring> visited;
    for (const astring& one : list)
        visited.push_back(one);
    EXPECT_EQ(visited, (std::vector<astring>{astring("b"), astring("a")}));
}

}  // namespace
