// SPDX-License-Identifier: MIT
#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

char* Value(const char* name) { return const_cast<char*>(name); }

std::string TextOf(const void* value) {
    return value == nullptr ? "null" : static_cast<const char*>(value);
}

std::string KeyOf(const Xml::HashItem& item) { return {item.GetKey(), item.GetKeyLength()}; }

unsigned HashByFirstByte(const char* key, unsigned) { return static_cast<unsigned char>(*key); }

// Values with hooks: how many copies of each text live.
std::map<std::string, int> liveCopies;

void* CopyText(XmlHashMap*, void* value) {
    ++liveCopies[static_cast<const char*>(value)];
    return new std::string(static_cast<const char*>(value));
}

void FreeText(XmlHashMap*, void* value) {
    const std::unique_ptr<std::string> text(static_cast<std::string*>(value));
    --liveCopies[*text];
}

// Values without an allocator: how often each one was freed.
std::map<std::string, int> freed;

void CountFree(XmlHashMap*, void* value) { ++freed[static_cast<const char*>(value)]; }

TEST(HashMap, HoldsOneRecordAndNothingElse) {
    EXPECT_EQ(sizeof(Xml::HashMap), sizeof(XmlHashMap));
    EXPECT_EQ(sizeof(Xml::HashItem), sizeof(XmlHashItem*));
    EXPECT_EQ(sizeof(Xml::HashIterator), 2 * sizeof(void*));
}

TEST(HashMap, StringAndByteOverloadsMeanTheSameKey) {
    Xml::HashMap map(8, true);
    map.Insert("width", Value("w"));
    map.Insert("height and more", 6, Value("h"));
    EXPECT_EQ(map.GetItemCount(), 2u);
    EXPECT_EQ(TextOf(map.Find("width and more", 5)), "w");
    EXPECT_EQ(TextOf(map.Find("height")), "h");
    EXPECT_EQ(map.Find("depth"), nullptr);
    EXPECT_EQ(KeyOf(map.FindItem("height")), "height");
    EXPECT_EQ(KeyOf(map.FindItem("width!", 5)), "width");
    EXPECT_TRUE(map.FindItem("depth").IsNull());
    map.Remove("width and more", 5);
    map.Remove("height");
    map.Remove("height");
    EXPECT_EQ(map.GetItemCount(), 0u);
}

TEST(HashMap, ClearAndGrowTableKeepTheirPromises) {
    Xml::HashMap map(1, false);
    map.SetKey(HashByFirstByte, XmlKeyCompareBinary);
    map.Insert("a", Value("1"));
    map.Insert("b", Value("2"));
    Xml::HashItem item = map.FindItem("b");
    item.Next();
    EXPECT_EQ(KeyOf(item), "a");  // one bucket
    map.GrowTable();
    item = map.FindItem("b");
    item.Next();
    EXPECT_TRUE(item.IsNull());  // two
    map.Clear();
    EXPECT_EQ(map.GetItemCount(), 0u);
    map.Clear();
    EXPECT_EQ(map.GetItemCount(), 0u);
}

TEST(HashMap, AnEmptyStringIsKeyedByItsAddress) {
    Xml::HashMap map(8, true);
    const char first[] = "";
    const char second[] = "";
    map.Insert(first, Value("1"));
    EXPECT_EQ(TextOf(map.Find(first)), "1");
    EXPECT_EQ(map.Find(second), nullptr);
    EXPECT_EQ(map.FindItem(first).GetKeyLength(), sizeof(void*));
}

TEST(HashMap, HooksOwnCopiesOfTheValues) {
    liveCopies.clear();
    {
        Xml::HashMap map(8, true);
        map.SetValueAllocator(CopyText, FreeText);
        map.Insert("key", Value("first"));
        EXPECT_EQ(*static_cast<std::string*>(map.Find("key")), "first");
        map.Insert("key", Value("second"));
        EXPECT_EQ(liveCopies["first"], 0);
        EXPECT_EQ(liveCopies["second"], 1);
    }
    EXPECT_EQ(liveCopies["second"], 0);
}

TEST(HashItem, ANullItemAnswersNothing) {
    Xml::HashItem item;
    EXPECT_TRUE(item.IsNull());
    EXPECT_EQ(item.GetHashKey(), 0u);
    EXPECT_EQ(item.GetKey(), nullptr);
    EXPECT_EQ(item.GetKeyLength(), 0u);
    EXPECT_EQ(item.GetValue(), nullptr);
    EXPECT_EQ(item.SetValue(&item), nullptr);
    item.Next();
    EXPECT_TRUE(item.IsNull());
    Xml::HashMap map(8, true);
    map.Remove(item);
    EXPECT_TRUE(Xml::HashItem(nullptr).IsNull());
}

TEST(HashItem, ShowsItsEntry) {
    Xml::HashMap map(8, true);
    map.Insert("a", Value("value"));
    Xml::HashItem item = map.FindItem("a");
    ASSERT_FALSE(item.IsNull());
    EXPECT_EQ(item.GetHashKey(), 0xCA2E9442u);
    EXPECT_EQ(KeyOf(item), "a");
    EXPECT_EQ(TextOf(item.GetValue()), "value");
    Xml::HashItem copy;
    copy = item;
    EXPECT_EQ(copy.GetKey(), item.GetKey());
}

TEST(HashItem, SetValueCallsNoHook) {
    liveCopies.clear();
    Xml::HashMap map(8, true);
    map.SetValueAllocator(CopyText, FreeText);
    map.Insert("key", Value("text"));
    auto* const mine = new std::string("mine");
    Xml::HashItem item = map.FindItem("key");
    const std::unique_ptr<std::string> old(static_cast<std::string*>(item.SetValue(mine)));
    EXPECT_EQ(*old, "text");
    EXPECT_EQ(map.Find("key"), mine);
    EXPECT_EQ(liveCopies["text"], 1);
    EXPECT_EQ(liveCopies["mine"], 0);
}

TEST(HashItem, NextStopsAtTheEndOfTheBucketAndTheIteratorGoesOn) {
    Xml::HashMap map(4, false);
    map.SetKey(HashByFirstByte, XmlKeyCompareBinary);
    for (const char* key : {"a", "e", "b", "c"}) {  // buckets 1, 1, 2, 3
        map.Insert(key, Value(key));
    }
    Xml::HashIterator iterator;
    EXPECT_TRUE(iterator.CurrentItem().IsNull());
    EXPECT_TRUE(iterator.Next().IsNull());

    Xml::HashItem item = iterator.First(map);
    EXPECT_EQ(KeyOf(item), "e");
    item.Next();
    EXPECT_EQ(KeyOf(item), "a");
    item.Next();
    EXPECT_TRUE(item.IsNull());

    EXPECT_EQ(KeyOf(iterator.CurrentItem()), "e");
    EXPECT_EQ(KeyOf(iterator.Next()), "a");
    EXPECT_EQ(KeyOf(iterator.Next()), "b");
    Xml::HashIterator copy(iterator);
    EXPECT_EQ(KeyOf(iterator.Next()), "c");
    EXPECT_TRUE(iterator.Next().IsNull());
    EXPECT_TRUE(iterator.CurrentItem().IsNull());
    EXPECT_EQ(KeyOf(copy.CurrentItem()), "b");
    EXPECT_EQ(KeyOf(copy.Next()), "c");
}

TEST(HashIterator, OfAnEmptyMapHasNoItem) {
    Xml::HashMap map(4, false);
    Xml::HashIterator iterator;
    EXPECT_TRUE(iterator.First(map).IsNull());
    EXPECT_TRUE(iterator.CurrentItem().IsNull());
}

TEST(HashMap, RemovingAnItemMakesItNull) {
    Xml::HashMap map(8, true);
    map.Insert("key", Value("value"));
    Xml::HashItem item = map.FindItem("key");
    map.Remove(item);
    EXPECT_TRUE(item.IsNull());
    EXPECT_EQ(map.GetItemCount(), 0u);
}

TEST(HashMap, CopiesShareTheirEntries) {
    Xml::HashMap first(8, true);
    first.Insert("key", Value("value"));
    Xml::HashMap second(first);
    Xml::HashMap third(1, false);
    third.Insert("old", Value("gone"));
    third = first;
    EXPECT_EQ(second.FindItem("key").GetKey(), first.FindItem("key").GetKey());
    EXPECT_EQ(third.FindItem("key").GetKey(), first.FindItem("key").GetKey());
    EXPECT_EQ(third.Find("old"), nullptr);
    EXPECT_EQ(third.GetItemCount(), 1u);
    first.FindItem("key").SetValue(Value("seen by all"));
    EXPECT_EQ(TextOf(third.Find("key")), "seen by all");
}

TEST(HashMap, ACopyThatChangesGetsATableOfItsOwn) {
    const struct {
        const char* name;
        void (*change)(Xml::HashMap& map);
        const char* left;  // the keys of the changed map
    } kCases[] = {
        {"Insert", [](Xml::HashMap& m) { m.Insert("d", Value("4")); }, "abcd"},
        {"replace", [](Xml::HashMap& m) { m.Insert("a", Value("5")); }, "abc"},
        {"Remove key", [](Xml::HashMap& m) { m.Remove("b"); }, "ac"},
        {"Remove item",
         [](Xml::HashMap& m) {
             Xml::HashItem item = m.FindItem("c");
             m.Remove(item);
         },
         "ab"},
        {"Clear", [](Xml::HashMap& m) { m.Clear(); }, ""},
        {"GrowTable", [](Xml::HashMap& m) { m.GrowTable(); }, "abc"},
    };
    for (const auto& c : kCases) {
        for (const bool changeTheCopy : {false, true}) {
            SCOPED_TRACE(c.name);
            liveCopies.clear();
            {
                Xml::HashMap original(1, true);
                original.SetKey(HashByFirstByte, XmlKeyCompareBinary);
                original.SetValueAllocator(CopyText, FreeText);
                for (const char* key : {"a", "b", "c"}) {
                    original.Insert(key, Value("value"));
                }
                Xml::HashMap copy(original);
                Xml::HashMap& changed = changeTheCopy ? copy : original;
                Xml::HashMap& untouched = changeTheCopy ? original : copy;
                const char* const entry = untouched.FindItem("a").GetKey();
                // The hooks take texts and give strings, so the change must not copy a copy.
                changed.SetValueAllocator(
                    [](XmlHashMap* map, void* value) -> void* {
                        const auto* text = static_cast<const char*>(value);
                        const bool isLiteral =
                            std::string_view("45").find(*text) != std::string::npos;
                        return isLiteral
                                   ? CopyText(map, value)
                                   : CopyText(map,
                                              Value(static_cast<std::string*>(value)->c_str()));
                    },
                    FreeText);
                c.change(changed);
                EXPECT_EQ(untouched.GetItemCount(), 3u);
                EXPECT_EQ(untouched.FindItem("a").GetKey(), entry);
                EXPECT_EQ(*static_cast<std::string*>(untouched.Find("a")), "value");
                std::string left;
                for (const char* key : {"a", "b", "c", "d"}) {
                    if (changed.Find(key) == nullptr) continue;
                    left += key;
                    EXPECT_NE(changed.FindItem(key).GetKey(), untouched.FindItem(key).GetKey());
                }
                EXPECT_EQ(left, c.left);
                EXPECT_EQ(changed.GetItemCount(), left.size());
            }
            for (const auto& [text, live] : liveCopies) {
                EXPECT_EQ(live, 0) << text;
            }
        }
    }
}

TEST(HashMap, AChangeThatDoesNothingLeavesTheTableShared) {
    Xml::HashMap first(8, true);
    first.Insert("key", Value("value"));
    Xml::HashMap second(first);
    second.Remove("other");
    Xml::HashItem none;
    second.Remove(none);
    EXPECT_EQ(first.FindItem("key").GetKey(), second.FindItem("key").GetKey());
}

TEST(HashMap, ACopyKeepsTheOrderOfTheEntries) {
    Xml::HashMap first(2, true);
    for (int number = 0; number < 100; ++number) {
        first.Insert(std::to_string(number).c_str(), Value("value"));
    }
    const auto walk = [](const Xml::HashMap& map) {
        std::string keys;
        Xml::HashIterator iterator;
        for (Xml::HashItem item = iterator.First(map); !item.IsNull(); item = iterator.Next()) {
            keys += KeyOf(item) + " ";
        }
        return keys;
    };
    const std::string order = walk(first);
    Xml::HashMap second(first);
    second.Insert("more", Value("value"));
    second.Remove("more");
    EXPECT_EQ(walk(second), order);
    EXPECT_EQ(walk(first), order);
}

TEST(HashMap, SelfAssignmentChangesNothing) {
    liveCopies.clear();
    Xml::HashMap map(8, true);
    map.SetValueAllocator(CopyText, FreeText);
    map.Insert("key", Value("value"));
    Xml::HashMap& alias = map;
    map = alias;
    EXPECT_EQ(*static_cast<std::string*>(map.Find("key")), "value");
    Xml::HashMap copy(map);
    copy = map;  // both share the table already
    map = copy;
    EXPECT_EQ(*static_cast<std::string*>(copy.Find("key")), "value");
    EXPECT_EQ(liveCopies["value"], 1);
}

TEST(HashMap, AssignmentEndsTheOldTable) {
    liveCopies.clear();
    Xml::HashMap first(8, true);
    Xml::HashMap second(8, true);
    first.SetValueAllocator(CopyText, FreeText);
    first.Insert("key", Value("old"));
    first = second;
    EXPECT_EQ(liveCopies["old"], 0);
    EXPECT_EQ(first.GetItemCount(), 0u);
}

TEST(HashMap, SharedValuesAreFreedOnceByTheLastHolder) {
    freed.clear();
    {
        auto first = std::make_unique<Xml::HashMap>(8, true);
        first->SetValueAllocator(nullptr, CountFree);
        first->Insert("key", Value("value"));
        const Xml::HashMap second(*first);
        first.reset();
        EXPECT_EQ(freed["value"], 0);
        EXPECT_EQ(TextOf(second.Find("key")), "value");
    }
    EXPECT_EQ(freed["value"], 1);
}

TEST(HashMap, ValuesThatCannotBeCopiedStayWithTheOtherMap) {
    freed.clear();
    {
        Xml::HashMap first(8, true);
        first.SetValueAllocator(nullptr, CountFree);
        first.Insert("a", Value("1"));
        first.Insert("b", Value("2"));
        Xml::HashMap second(first);
        second.Insert("c", Value("3"));
        second.Remove("a");
        EXPECT_EQ(freed["1"], 0);
        second.Remove("c");
        EXPECT_EQ(freed["3"], 1);
        second.Insert("d", Value("4"));
        Xml::HashMap third(second);
        third.Insert("e", Value("5"));
    }
    const std::map<std::string, int> each = {{"1", 1}, {"2", 1}, {"3", 1}, {"4", 1}, {"5", 1}};
    EXPECT_EQ(freed, each);
}

}  // namespace
