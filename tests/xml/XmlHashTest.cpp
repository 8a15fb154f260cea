// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlHash.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace std::string_view_literals;

unsigned LengthOf(std::string_view key) { return static_cast<unsigned>(key.size()); }

// The hooks write what they are called with here.
std::vector<std::string> calls;

const char* NameOf(const void* value) {
    return value == nullptr ? "null" : static_cast<const char*>(value);
}

char* Value(const char* name) { return const_cast<char*>(name); }

void* RecordAllocate(XmlHashMap* map, void* value) {
    calls.push_back(std::string("allocate ") + NameOf(value) + " at " + std::to_string(map->count));
    return value;
}

void RecordDeallocate(XmlHashMap* map, void* value) {
    calls.push_back(std::string("free ") + NameOf(value) + " at " + std::to_string(map->count));
}

// Puts keys in buckets by their first byte alone.
unsigned HashByFirstByte(const char* key, unsigned) { return static_cast<unsigned char>(*key); }

char CompareWithoutCase(const char* key1, const char* key2, unsigned length1, unsigned length2) {
    return std::equal(key1, key1 + length1, key2, key2 + length2, [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    });
}

// A table that ends itself.
class Table {
public:
    explicit Table(unsigned size, bool growAutomatically = false) {
        EXPECT_TRUE(XmlHashInit(&map_, size, growAutomatically));
        calls.clear();
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
    ~Table() { XmlHashDeinit(&map_); }

    operator XmlHashMap*() { return &map_; }
    XmlHashMap* operator->() { return &map_; }

    bool Insert(std::string_view key, const char* value) {
        return XmlHashInsert(&map_, key.data(), LengthOf(key), Value(value));
    }
    const void* Find(std::string_view key) const {
        return XmlHashFind(&map_, key.data(), LengthOf(key));
    }
    XmlHashItem* Item(std::string_view key) const {
        return XmlHashFindItem(&map_, key.data(), LengthOf(key));
    }
    void Remove(std::string_view key) { XmlHashRemoveKey(&map_, key.data(), LengthOf(key)); }

    // The keys in the order of a walk, with a space between them.
    std::string Walk() const {
        std::string keys;
        XmlHashIterator iterator;
        for (const XmlHashItem* item = XmlHashIteratorFirst(&iterator, &map_); item != nullptr;
             item = XmlHashIteratorNext(&iterator)) {
            if (!keys.empty()) keys += ' ';
            keys.append(item->key, item->keyLength);
        }
        return keys;
    }

private:
    XmlHashMap map_;
};

TEST(XmlHash, DefaultHashOfKnownKeys) {
    // Deliberate: bytes from 0x80 on add negative amounts.
    const struct {
        std::string_view key;
        unsigned hash;
    } kCases[] = {
        {"", 0},
        {"a", 0xCA2E9442},
        {"\xFF", 0xAE65A494},
        {"\x80", 0xC31D4E27},
        {"\0"sv, 0x00000000},
        {"width", 0x96BEECA0},
        {"http://www.w3.org/2000/xmlns/", 0x9AFDA668},
        {"\xC3\xA9t\xC3\xA9", 0x7FCB4B35},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(XmlKeyHashBinary(c.key.data(), LengthOf(c.key)), c.hash);
    }
}

TEST(XmlHash, CompareSeesADifferenceAtEveryPlace) {
    for (unsigned length = 0; length <= 100; ++length) {
        const std::string key(length, 'k');
        const std::string same = key;
        EXPECT_NE(XmlKeyCompareBinary(key.data(), same.data(), length, length), 0);
        EXPECT_EQ(XmlKeyCompareBinary(key.data(), same.data(), length, length + 1), 0);
        for (unsigned place = 0; place < length; ++place) {
            std::string other = key;
            other[place] = '\xEB';
            EXPECT_EQ(XmlKeyCompareBinary(key.data(), other.data(), length, length), 0)
                << place << " of " << length;
        }
    }
}

TEST(XmlHash, InitTakesTheLargestPowerOfTwoNotAboveTheRequest) {
    const struct {
        unsigned requested;
        unsigned size;
    } kCases[] = {
        {0, 1},      {1, 1},       {2, 2},         {3, 2},         {4, 4},
        {1000, 512}, {1024, 1024}, {65535, 32768}, {65536, 65536}, {131071, 65536},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.requested);
        Table table(c.requested);
        EXPECT_EQ(table->size, c.size);
        EXPECT_EQ(table->count, 0u);
    }
}

TEST(XmlHash, DeliberateRequestsFrom131072OnGet65536) {
    for (const unsigned requested : {131072u, 131073u, 262144u, 0x80000000u, 0xFFFFFFFFu}) {
        Table table(requested);
        EXPECT_EQ(table->size, 65536u) << requested;
    }
}

TEST(XmlHash, InitFillsTheRecord) {
    Table table(8, true);
    EXPECT_NE(table->table, nullptr);
    for (unsigned bucket = 0; bucket < 8; ++bucket) {
        EXPECT_EQ(table->table[bucket], nullptr);
    }
    EXPECT_EQ(table->hash, &XmlKeyHashBinary);
    EXPECT_EQ(table->compare, &XmlKeyCompareBinary);
    EXPECT_EQ(table->allocate, nullptr);
    EXPECT_EQ(table->deallocate, nullptr);
    EXPECT_TRUE(table->growAutomatically);
    EXPECT_FALSE(Table(8)->growAutomatically);
}

TEST(XmlHash, FindsWhatWasInserted) {
    // The lengths cross all block sizes of the table's memory.
    std::vector<std::string> keys;
    for (std::size_t length = 1; length <= 600; ++length) {
        keys.push_back(std::string(length - 1, 'x') + "e");
    }
    for (const bool growAutomatically : {false, true}) {
        Table table(16, growAutomatically);
        for (const std::string& key : keys) {
            ASSERT_TRUE(table.Insert(key, key.c_str()));
        }
        EXPECT_EQ(table->count, keys.size());
        for (const std::string& key : keys) {
            ASSERT_EQ(table.Find(key), key.c_str());
            EXPECT_EQ(table.Find(key + "x"), nullptr);
            const XmlHashItem* const item = table.Item(key);
            EXPECT_EQ(std::string_view(item->key, item->keyLength), key);
            EXPECT_EQ(item->hash, XmlKeyHashBinary(key.data(), LengthOf(key)));
        }
    }
}

TEST(XmlHash, KeysMayHoldNuls) {
    Table table(4);
    table.Insert("a\0b"sv, "first");
    table.Insert("a\0c"sv, "second");
    table.Insert("a"sv, "third");
    EXPECT_STREQ(NameOf(table.Find("a\0b"sv)), "first");
    EXPECT_STREQ(NameOf(table.Find("a\0c"sv)), "second");
    EXPECT_STREQ(NameOf(table.Find("a"sv)), "third");
}

TEST(XmlHash, TheNewestValueOfAKeyWins) {
    Table table(4);
    XmlHashSetValueAllocator(table, nullptr, RecordDeallocate);
    table.Insert("key", "first");
    table.Insert("key", "second");
    EXPECT_EQ(table->count, 1u);
    EXPECT_STREQ(NameOf(table.Find("key")), "second");
    EXPECT_EQ(calls, std::vector<std::string>{"free first at 1"});
}

TEST(XmlHash, ReplacingAllocatesBeforeItFrees) {
    Table table(4);
    XmlHashSetValueAllocator(table, RecordAllocate, RecordDeallocate);
    table.Insert("key", "first");
    table.Insert("key", "second");
    EXPECT_EQ(calls, (std::vector<std::string>{"allocate first at 0", "allocate second at 1",
                                               "free first at 1"}));
}

TEST(XmlHash, ANullFromTheAllocatorIsStored) {
    Table table(4);
    XmlHashSetValueAllocator(
        table, [](XmlHashMap*, void*) -> void* { return nullptr; }, RecordDeallocate);
    EXPECT_TRUE(table.Insert("key", "value"));
    EXPECT_EQ(table.Find("key"), nullptr);
    ASSERT_NE(table.Item("key"), nullptr);
    EXPECT_EQ(table->count, 1u);
    table.Remove("key");
    EXPECT_EQ(calls, std::vector<std::string>{"free null at 0"});
}

TEST(XmlHash, EveryRemovalCountsDownAndFrees) {
    const struct {
        const char* name;
        void (*remove)(Table& table);
        std::vector<std::string> calls;
        std::string left;
    } kCases[] = {
        {"by key", [](Table& t) { t.Remove("b"); }, {"free B at 2"}, "a c"},
        {"by entry", [](Table& t) { XmlHashRemoveItem(t, t.Item("c")); }, {"free C at 2"}, "a b"},
        {"of nothing by key", [](Table& t) { t.Remove("d"); }, {}, "a b c"},
        {"of nothing by entry", [](Table& t) { XmlHashRemoveItem(t, nullptr); }, {}, "a b c"},
        {"all",
         [](Table& t) { XmlHashClear(t); },
         {"free A at 2", "free B at 1", "free C at 0"},
         ""},
        {"the end",
         [](Table& t) { XmlHashDeinit(t); },
         {"free A at 2", "free B at 1", "free C at 0"},
         ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        Table table(256);
        XmlHashSetKey(table, HashByFirstByte, XmlKeyCompareBinary);
        XmlHashSetValueAllocator(table, nullptr, RecordDeallocate);
        table.Insert("a", "A");
        table.Insert("b", "B");
        table.Insert("c", "C");
        c.remove(table);
        EXPECT_EQ(calls, c.calls);
        EXPECT_EQ(table.Walk(), c.left);
        EXPECT_EQ(table->count, 3 - c.calls.size());
    }
}

TEST(XmlHash, AnEntryOfAnotherTableIsNotRemoved) {
    Table table(4);
    Table other(4);
    table.Insert("key", "value");
    other.Insert("key", "value");
    XmlHashRemoveItem(table, other.Item("key"));
    EXPECT_EQ(table->count, 1u);
    EXPECT_EQ(other->count, 1u);
}

TEST(XmlHash, ClearKeepsTheBuckets) {
    Table table(4, true);
    XmlHashClear(table);
    EXPECT_EQ(table->size, 4u);
    for (const char letter : std::string_view("abcdefghijklmnopqrstuvwxyz")) {
        table.Insert(std::string_view(&letter, 1), "value");
    }
    const unsigned size = table->size;
    EXPECT_GT(size, 4u);
    XmlHashClear(table);
    EXPECT_EQ(table->count, 0u);
    EXPECT_EQ(table->size, size);
    EXPECT_EQ(table.Find("a"), nullptr);
    EXPECT_TRUE(table.Insert("a", "again"));
    EXPECT_STREQ(NameOf(table.Find("a")), "again");
}

TEST(XmlHash, The33rdInsertionDoubles16Buckets) {
    Table table(16, true);
    for (unsigned number = 1; number <= 40; ++number) {
        table.Insert(std::to_string(number), "value");
        EXPECT_EQ(table->size, number < 33 ? 16u : 32u) << number;
    }
}

TEST(XmlHash, WithoutTheFlagTheBucketsStay) {
    Table table(2);
    for (unsigned number = 1; number <= 1000; ++number) {
        table.Insert(std::to_string(number), "value");
    }
    EXPECT_EQ(table->size, 2u);
    EXPECT_EQ(table->count, 1000u);
    EXPECT_NE(table.Find("1"), nullptr);
}

TEST(XmlHash, TheLargestTableHas262144Buckets) {
    Table table(65536);
    table.Insert("key", "value");
    for (const unsigned size : {131072u, 262144u, 262144u}) {
        XmlHashGrowTable(table);
        EXPECT_EQ(table->size, size);
    }
    EXPECT_STREQ(NameOf(table.Find("key")), "value");
}

TEST(XmlHash, AWalkGoesByBucketsAndNewestFirst) {
    Table table(4);
    XmlHashSetKey(table, HashByFirstByte, XmlKeyCompareBinary);
    EXPECT_EQ(table.Walk(), "");
    // The lower two bits of the first byte: a 1, b 2, c 3, d 0, e 1.
    for (const char* key : {"c1", "a1", "d1", "e1", "a2", "c2"}) {
        table.Insert(key, key);
    }
    EXPECT_EQ(table.Walk(), "d1 a2 e1 a1 c2 c1");
    table.Insert("a1", "again");  // an entry that replaces another is a new one
    EXPECT_EQ(table.Walk(), "d1 a1 a2 e1 c2 c1");
}

TEST(XmlHash, GrowthReversesTheEntriesOfABucket) {
    Table table(4);
    XmlHashSetKey(table, HashByFirstByte, XmlKeyCompareBinary);
    for (const char* key : {"a1", "e1", "a2", "e2", "i1"}) {  // lower three bits: a 1, e 5, i 1
        table.Insert(key, key);
    }
    EXPECT_EQ(table.Walk(), "i1 e2 a2 e1 a1");
    XmlHashGrowTable(table);
    EXPECT_EQ(table.Walk(), "a1 a2 i1 e1 e2");
}

TEST(XmlHash, AKeyOfLengthZeroIsThePointer) {
    Table table(4);
    char first[] = "same";
    char second[] = "same";
    EXPECT_TRUE(XmlHashInsert(table, first, 0, Value("first")));
    EXPECT_TRUE(XmlHashInsert(table, second, 0, Value("second")));
    EXPECT_EQ(table->count, 2u);
    first[0] = 'g';
    EXPECT_STREQ(NameOf(XmlHashFind(table, first, 0)), "first");
    EXPECT_STREQ(NameOf(XmlHashFind(table, second, 0)), "second");

    const XmlHashItem* const item = XmlHashFindItem(table, first, 0);
    EXPECT_EQ(item->keyLength, sizeof(void*));
    const void* const pointer = first;
    EXPECT_EQ(std::string_view(item->key, sizeof pointer),
              std::string_view(reinterpret_cast<const char*>(&pointer), sizeof pointer));
    EXPECT_EQ(item->hash,
              XmlKeyHashBinary(reinterpret_cast<const char*>(&pointer), sizeof pointer));

    XmlHashRemoveKey(table, first, 0);
    EXPECT_EQ(XmlHashFind(table, first, 0), nullptr);
    EXPECT_EQ(table->count, 1u);
}

TEST(XmlHash, AllBytesOfAPointerCount) {
    Table table(4);
    char byte = 0;
    // Differs in the upper half alone; it is nothing to read from.
    constexpr int kHalf = std::numeric_limits<std::uintptr_t>::digits / 2;
    const char* const far = reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(&byte) ^
                                                          std::uintptr_t{1} << kHalf);
    XmlHashInsert(table, &byte, 0, Value("near"));
    EXPECT_EQ(XmlHashFind(table, far, 0), nullptr);
    XmlHashInsert(table, nullptr, 0, Value("null"));
    EXPECT_STREQ(NameOf(XmlHashFind(table, nullptr, 0)), "null");
}

TEST(XmlHash, CustomFunctionsAreUsed) {
    Table table(4, true);
    XmlHashSetKey(
        table,
        [](const char* key, unsigned) -> unsigned {
            return static_cast<unsigned>(std::tolower(static_cast<unsigned char>(*key)));
        },
        CompareWithoutCase);
    for (int number = 0; number < 100; ++number) {
        table.Insert("Key" + std::to_string(number), "old");
        table.Insert("KEY" + std::to_string(number), "new");
    }
    EXPECT_EQ(table->count, 100u);
    EXPECT_STREQ(NameOf(table.Find("kEy77")), "new");
    table.Remove("keY77");
    EXPECT_EQ(table.Find("KEY77"), nullptr);
}

TEST(XmlHash, TheCompareFunctionGetsTheStoredKeyFirst) {
    static std::string seen;
    Table table(1);
    XmlHashSetKey(
        table, [](const char*, unsigned) { return 7u; },
        [](const char* key1, const char* key2, unsigned length1, unsigned length2) -> char {
            seen = std::string(key1, length1) + "/" + std::string(key2, length2);
            return 0;
        });
    table.Insert("stored", "value");
    EXPECT_EQ(table.Find("key"), nullptr);
    EXPECT_EQ(seen, "stored/key");
}

TEST(XmlHash, EntriesWithAnotherHashAreNotCompared) {
    Table table(1);
    XmlHashSetKey(table, HashByFirstByte,
                  [](const char*, const char*, unsigned, unsigned) -> char { return 1; });
    table.Insert("ab", "value");
    EXPECT_STREQ(NameOf(table.Find("ax")), "value");  // the compare function says so
    EXPECT_EQ(table.Find("b"), nullptr);
}

TEST(XmlHash, AFullCountRefusesAnInsertion) {
    Table table(1);
    table.Insert("key", "value");
    table->count = std::numeric_limits<std::uint32_t>::max();
    EXPECT_FALSE(table.Insert("other", "value"));
    EXPECT_EQ(table->count, std::numeric_limits<std::uint32_t>::max());
    table->count = 1;
    EXPECT_EQ(table.Walk(), "key");
}

TEST(XmlHash, AnEndedTableIsEmptyAndTakesNothing) {
    Table table(4, true);
    table.Insert("key", "value");
    for (int times = 0; times < 2; ++times) {
        XmlHashDeinit(table);
        EXPECT_EQ(table->table, nullptr);
        EXPECT_EQ(table->count, 0u);
    }
    EXPECT_EQ(table.Find("key"), nullptr);
    EXPECT_EQ(table.Item("key"), nullptr);
    EXPECT_EQ(table.Walk(), "");
    EXPECT_FALSE(table.Insert("key", "value"));
    table.Remove("key");
    XmlHashClear(table);
    XmlHashGrowTable(table);
    EXPECT_EQ(table->table, nullptr);
}

TEST(XmlHash, CreateAndDestroyAreAPair) {
    XmlHashMap* const map = XmlHashCreate(100, true);
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(map->size, 64u);
    EXPECT_TRUE(XmlHashInsert(map, "key", 3, Value("value")));
    EXPECT_STREQ(NameOf(XmlHashFind(map, "key", 3)), "value");
    XmlHashDestroy(map);
    XmlHashDestroy(nullptr);
}

TEST(XmlHash, NextAfterTheEndStaysAtTheEnd) {
    Table table(4);
    table.Insert("key", "value");
    XmlHashIterator iterator;
    EXPECT_NE(XmlHashIteratorFirst(&iterator, table), nullptr);
    EXPECT_EQ(XmlHashIteratorNext(&iterator), nullptr);
    EXPECT_EQ(XmlHashIteratorNext(&iterator), nullptr);
}

TEST(XmlHash, FreedEntriesAreUsedAgain) {
    Table table(4, true);
    for (int round = 0; round < 1000; ++round) {
        for (std::size_t length = 1; length < 300; length += 37) {
            const std::string key(length, static_cast<char>('a' + round % 26));
            table.Insert(key, "value");
            if (round % 3 != 0) table.Remove(key);
        }
        if (round % 100 == 99) XmlHashClear(table);
    }
    EXPECT_EQ(table->count, 0u);
}

}  // namespace
