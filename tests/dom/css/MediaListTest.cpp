// SPDX-License-Identifier: MIT
#include <espalier/dom/css/MediaList.h>

#include "support/FarIndex.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::StyleSheets::MediaList;

// Returns the names in brackets.
std::string Items(const MediaList& list) {
    std::string items;
    for (std::size_t i = 0; i < list.Length(); ++i)
        items.append("[").append(list.Item(i).str()).append("]");
    return items;
}

}  // namespace

TEST(MediaList, AFreshOneIsEmpty) {
    const MediaList list;
    EXPECT_EQ(list.MediaText(), "");
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.Length(), 0U);
    EXPECT_EQ(list.Item(0), "");
}

TEST(MediaList, TakesAnyTextAsItIs) {
    for (const char* const text : {"screen, print", " , ,", "{}", "all and", ""}) {
        SCOPED_TRACE(text);
        MediaList list("tv");
        list.SetMediaText(text);
        EXPECT_EQ(list.MediaText(), text);
        EXPECT_EQ(MediaList(text).MediaText(), text);
    }
}

TEST(MediaList, NamesStandBetweenCommas) {
    const struct {
        const char* text;
        const char* items;
    } kCases[] = {
        {"screen, print", "[screen][print]"},
        {"screen,print", "[screen][print]"},
        {" screen\t,\n print ", "[screen][print]"},
        {"screen", "[screen]"},
        {"", ""},
        {" , ,", ""},
        {"a,,b", "[a][b]"},
        {"screen and (color), print", "[screen and (color)][print]"},
        {"screen and (a, b), print", "[screen and (a, b)][print]"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Items(MediaList(c.text)), c.items);
    }
}

TEST(MediaList, NamesPastTheLastAreEmpty) {
    const MediaList list("screen, print");
    EXPECT_EQ(list.Length(), 2U);
    EXPECT_EQ(list.Item(1), "print");
    EXPECT_EQ(list.Item(2), "");
    EXPECT_EQ(list.Item(5), "");
    EXPECT_EQ(list.Item(support::kFarIndex), "");
}

TEST(MediaList, ContainsWholeNamesInTheirCase) {
    const MediaList list("screen, print and (color)");
    for (const char* const name : {"screen", "print and (color)"})
        EXPECT_TRUE(list.Contains(name)) << name;
    for (const char* const name : {"scree", "screen,", " screen", "Screen", "print", "tv", ""})
        EXPECT_FALSE(list.Contains(name)) << name;
}

TEST(MediaList, IsEmptyAsksForTheTextNotForNames) {
    EXPECT_TRUE(MediaList("").IsEmpty());
    EXPECT_FALSE(MediaList(" ").IsEmpty());
    EXPECT_FALSE(MediaList(",").IsEmpty());
}

TEST(MediaList, AppendsBehindACommaAndABlank) {
    MediaList list;
    list.AppendMedium("screen");
    EXPECT_EQ(list.MediaText(), "screen");
    list.AppendMedium("print");
    list.AppendMedium("tv");
    EXPECT_EQ(list.MediaText(), "screen, print, tv");
    list.AppendMedium("screen");  // is not looked for
    EXPECT_EQ(list.MediaText(), "screen, print, tv, screen");
    EXPECT_EQ(list.Length(), 4U);
}

TEST(MediaList, AppendsBehindAnyTextThatIsNotEmpty) {
    const struct {
        const char* text;
        const char* expected;
    } kCases[] = {{" ", " , tv"}, {",", ",, tv"}, {"tv", "tv, tv"}, {"a,", "a,, tv"}};
    for (const auto& c : kCases) {
        MediaList list(c.text);
        list.AppendMedium("tv");
        EXPECT_EQ(list.MediaText(), c.expected);
    }
}

TEST(MediaList, AppendsAPartOfItself) {
    MediaList list("screen");
    list.AppendMedium(list.MediaText());
    EXPECT_EQ(list.MediaText(), "screen, screen");
}

TEST(MediaList, DeletesANameAndOneSeparator) {
    const struct {
        const char* text;
        const char* name;
        const char* expected;
    } kCases[] = {
        {"screen, print, tv", "screen", "print, tv"},
        {"screen, print, tv", "print", "screen, tv"},
        {"screen, print, tv", "tv", "screen, print"},
        {"screen", "screen", ""},
        {" screen ", "screen", ""},
        {"a , b", "b", "a"},
        {"a, b ,", "b", "a"},
        {"a,,b", "a", "b"},
        {"a, b, a", "a", "b, a"},  // the first one
        {"print and (a, b), tv", "print and (a, b)", "tv"},
        {"screen, print", "tv", "screen, print"},
        {"screen, print", "Print", "screen, print"},
        {"screen, print", "scre", "screen, print"},
        {"screen, print", "", "screen, print"},
        {"", "tv", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.text) + " without " + c.name);
        MediaList list(c.text);
        list.DeleteMedium(c.name);
        EXPECT_EQ(list.MediaText(), c.expected);
    }
}

TEST(MediaList, DeletesWhatItHandedOut) {
    MediaList list("screen, print");
    list.DeleteMedium(list.MediaText().view().substr(0, 6));
    EXPECT_EQ(list.MediaText(), "print");
}

TEST(MediaList, AnswersToItsName) {
    MediaList list;
    EXPECT_EQ(list.QueryInterface("Dom::StyleSheets::MediaList"), &list);
    EXPECT_EQ(list.QueryInterface("MediaList"), nullptr);
    EXPECT_EQ(list.QueryInterface(""), nullptr);
}
