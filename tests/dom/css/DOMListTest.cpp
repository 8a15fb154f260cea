// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMList.h>

#include "support/FarIndex.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Writes its letter down when it is deleted.
class Letter {
public:
    Letter(char letter, std::string& deleted) : letter_(letter), deleted_(deleted) {}
    Letter(const Letter&) = delete;
    Letter& operator=(const Letter&) = delete;
    virtual ~Letter() { deleted_ += letter_; }

    char Get() const { return letter_; }

private:
    char letter_;
    std::string& deleted_;
};

using List = Dom::DOMList<Letter*>;

// Adds the letters a, b and c.
void Fill(List& list, std::string& deleted) {
    for (const char letter : {'a', 'b', 'c'})
        list.AddItem(new Letter(letter, deleted));
}

std::string Text(const List& list) {
    std::string text;
    for (const Letter* const letter : list)
        text += letter->Get();
    return text;
}

}  // namespace

TEST(DOMList, AnEmptyOneHasNoItems) {
    const List list;
    EXPECT_EQ(list.Length(), 0U);
    EXPECT_EQ(list.Capacity(), 0U);
    EXPECT_EQ(list.Item(0), nullptr);
    EXPECT_EQ(list.begin(), list.end());
}

TEST(DOMList, ItemsBeyondTheCountAreNull) {
    std::string deleted;
    List list;
    auto* const a = new Letter('a', deleted);
    list.AddItem(a);
    EXPECT_EQ(list.Item(0), a);
    EXPECT_EQ(list.Item(1), nullptr);
    EXPECT_EQ(list.Item(~0UL), nullptr);
}

TEST(DOMList, IndexesAreNotCutToThirtyTwoBits) {
    std::string deleted;
    List list;
    auto* const a = new Letter('a', deleted);
    list.AddItem(a);
    EXPECT_EQ(list.Item(support::kFarIndex), nullptr);
    list.RemoveItemAt(support::kFarIndex);
    EXPECT_EQ(Text(list), "a");
    list.AddItemAt(support::kFarIndex, new Letter('b', deleted));
    EXPECT_EQ(Text(list), "ab");
}

TEST(DOMList, AddsBeforeAnItemOrAtTheEnd) {
    const struct {
        unsigned long index;
        const char* expected;
    } kCases[] = {{0, "xabc"}, {1, "axbc"}, {2, "abxc"}, {3, "abcx"}, {4, "abcx"}, {99, "abcx"}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.index);
        std::string deleted;
        List list;
        Fill(list, deleted);
        list.AddItemAt(c.index, new Letter('x', deleted));
        EXPECT_EQ(Text(list), c.expected);
        EXPECT_EQ(list.Length(), 4U);
        EXPECT_EQ(deleted, "");
    }
}

TEST(DOMList, RemovingAnIndexDeletesNothing) {
    const struct {
        unsigned long index;
        const char* expected;
    } kCases[] = {{0, "bc"}, {1, "ac"}, {2, "ab"}, {3, "abc"}, {99, "abc"}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.index);
        std::string deleted;
        List list;
        Fill(list, deleted);
        Letter* const removed = list.Item(c.index);
        list.RemoveItemAt(c.index);
        EXPECT_EQ(Text(list), c.expected);
        EXPECT_EQ(deleted, "");
        delete removed;
    }
}

TEST(DOMList, RemovingAPointerTakesTheFirstEqualOne) {
    std::string deleted;
    List list;
    auto* const a = new Letter('a', deleted);
    Letter other('o', deleted);
    list.AddItem(nullptr);
    list.AddItem(a);
    list.AddItem(nullptr);
    list.RemoveItem(&other);
    EXPECT_EQ(list.Length(), 3U);
    list.RemoveItem(nullptr);
    ASSERT_EQ(list.Length(), 2U);
    EXPECT_EQ(list.Item(0), a);
    EXPECT_EQ(list.Item(1), nullptr);
    list.RemoveItem(a);
    EXPECT_EQ(list.Length(), 1U);
    EXPECT_EQ(deleted, "");
    delete a;
}

TEST(DOMList, AFunctionTellsWhatToRemove) {
    const struct {
        const char* remove;
        const char* expected;
    } kCases[] = {{"", "abc"}, {"a", "bc"}, {"b", "ac"}, {"c", "ab"},
                  {"ac", "b"}, {"ab", "c"}, {"abc", ""}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.remove);
        std::string deleted;
        std::string asked;
        std::vector<Letter*> removed;
        List list;
        Fill(list, deleted);
        list.RemoveItemsIf([&](Letter* letter) {
            asked += letter->Get();
            const bool isToGo = std::string(c.remove).find(letter->Get()) != std::string::npos;
            if (isToGo) removed.push_back(letter);
            return isToGo;
        });
        EXPECT_EQ(asked, "abc");
        EXPECT_EQ(Text(list), c.expected);
        EXPECT_EQ(deleted, "");
        EXPECT_EQ(list.Capacity(), 16U);
        for (const Letter* const letter : removed)
            delete letter;
    }
}

TEST(DOMList, TwoListsExchangeTheirItems) {
    std::string deleted;
    List first;
    Fill(first, deleted);
    List second;
    first.SwapItems(second);
    EXPECT_EQ(Text(first), "");
    EXPECT_EQ(Text(second), "abc");
    EXPECT_EQ(first.Capacity(), 0U);
    EXPECT_EQ(second.Capacity(), 16U);
    first.AddItem(new Letter('d', deleted));
    first.SwapItems(second);
    EXPECT_EQ(Text(first), "abc");
    EXPECT_EQ(Text(second), "d");
    first.SwapItems(first);
    EXPECT_EQ(Text(first), "abc");
    EXPECT_EQ(deleted, "");
}

TEST(DOMList, ClearingDeletesAllItems) {
    std::string deleted;
    List list;
    for (const char letter : {'a', 'b'})
        list.AddItem(new Letter(letter, deleted));
    list.AddItem(nullptr);
    list.Clear();
    EXPECT_EQ(list.Length(), 0U);
    EXPECT_EQ(deleted.size(), 2U);
    EXPECT_NE(deleted.find('a'), std::string::npos);
    list.AddItem(new Letter('c', deleted));
    EXPECT_EQ(Text(list), "c");
}

TEST(DOMList, DestroyingDeletesWhatIsInItStill) {
    std::string deleted;
    Letter* kept = nullptr;
    {
        List list;
        Fill(list, deleted);
        kept = list.Item(1);
        list.RemoveItem(kept);
    }
    EXPECT_EQ(deleted.find('b'), std::string::npos);
    EXPECT_EQ(deleted.size(), 2U);
    delete kept;
}

TEST(DOMList, DeletesThroughTheVirtualDestructor) {
    class Derived final : public Letter {
    public:
        explicit Derived(std::string& deleted) : Letter('d', deleted), log_(deleted) {}
        ~Derived() override { log_ += 'D'; }

    private:
        std::string& log_;
    };
    std::string deleted;
    List().AddItem(new Derived(deleted));
    EXPECT_EQ(deleted, "Dd");
}

TEST(DOMList, GrowsBySixteen) {
    std::string deleted;
    List list;
    for (unsigned count = 1; count <= 100; ++count) {
        list.AddItem(new Letter('a', deleted));
        EXPECT_EQ(list.Length(), count);
        EXPECT_EQ(list.Capacity(), (count + 15) / 16 * 16);
    }
    list.Clear();
    EXPECT_EQ(list.Capacity(), 112U);
}

TEST(DOMList, TheSeventeenthItemKeepsTheOthers) {
    std::string deleted;
    std::vector<Letter*> letters;
    List list;
    for (int i = 0; i < 17; ++i) {
        letters.push_back(new Letter(static_cast<char>('a' + i), deleted));
        list.AddItemAt(0, letters.back());
    }
    EXPECT_EQ(Text(list), "qponmlkjihgfedcba");
    EXPECT_EQ(list.Capacity(), 32U);
}

// With a block of memory for each sixteen items this takes minutes.
TEST(DOMListHostile, AMillionItemsTakeLinearTime) {
    constexpr unsigned kMany = 1'000'000;
    List list;
    for (unsigned i = 0; i < kMany; ++i)
        list.AddItem(nullptr);
    EXPECT_EQ(list.Length(), kMany);
    EXPECT_EQ(list.Capacity(), kMany);
}
