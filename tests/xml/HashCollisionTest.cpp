// SPDX-License-Identifier: MIT

// Keys that all have the same default hash: what a hostile document can hold.

#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>

#include "xml/SeededHash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

constexpr unsigned kKeys = 200000;

// The state of the default hash after one more byte.
std::uint32_t Step(std::uint32_t state, char byte) {
    state += static_cast<std::uint32_t>(static_cast<signed char>(byte));
    state *= 1025;
    return state ^ (state >> 6);
}

// Two different words of letters that lead from `state` to the same state, which is returned.
std::uint32_t FindPair(std::uint32_t state, std::pair<std::string, std::string>& pair) {
    std::unordered_map<std::uint32_t, std::string> seen;
    for (std::uint32_t number = 0;; ++number) {
        std::string word;
        std::uint32_t after = state;
        for (std::uint32_t rest = number, place = 0; place < 5; ++place, rest /= 26) {
            word += static_cast<char>('a' + rest % 26);
            after = Step(after, word.back());
        }
        const auto [other, isNew] = seen.emplace(after, word);
        if (!isNew) {
            pair = {other->second, word};
            return after;
        }
    }
}

// Each of 18 places takes one of two words, and the choice never changes the hash.
std::vector<std::string> MakeCollidingKeys() {
    constexpr unsigned kPlaces = 18;
    std::vector<std::pair<std::string, std::string>> pairs(kPlaces);
    std::uint32_t state = 0;
    for (auto& pair : pairs) {
        state = FindPair(state, pair);
    }
    std::vector<std::string> keys(kKeys);
    for (unsigned number = 0; number < kKeys; ++number) {
        for (unsigned place = 0; place < kPlaces; ++place) {
            keys[number] += (number >> place & 1) == 0 ? pairs[place].first : pairs[place].second;
        }
    }
    return keys;
}

const std::vector<std::string>& CollidingKeys() {
    static const std::vector<std::string> keys = MakeCollidingKeys();
    return keys;
}

unsigned LengthOf(const std::string& key) { return static_cast<unsigned>(key.size()); }

void Fill(Xml::HashMap& map) {
    for (const std::string& key : CollidingKeys()) {
        map.Insert(key.data(), LengthOf(key), const_cast<std::string*>(&key));
    }
}

unsigned CountFound(const Xml::HashMap& map) {
    unsigned found = 0;
    for (const std::string& key : CollidingKeys()) {
        found += map.Find(key.data(), LengthOf(key)) == &key;
    }
    return found;
}

unsigned LongestChain(const Xml::HashMap& map) {
    unsigned longest = 0;
    Xml::HashIterator iterator;
    unsigned length = 0;
    for (Xml::HashItem item = iterator.First(map); !item.IsNull(); item = iterator.Next()) {
        ++length;
        item.Next();
        if (!item.IsNull()) continue;
        longest = std::max(longest, length);
        length = 0;
    }
    return longest;
}

TEST(HashCollision, TheKeysDoCollide) {
    const std::string& first = CollidingKeys().front();
    for (const std::string& key : CollidingKeys()) {
        ASSERT_EQ(XmlKeyHashBinary(key.data(), LengthOf(key)),
                  XmlKeyHashBinary(first.data(), LengthOf(first)));
    }
}

TEST(HashCollision, TheSeededHashSpreadsThem) {
    Xml::HashMap map(32, true);
    map.SetKey(Xml::detail::SeededHash, XmlKeyCompareBinary);
    Fill(map);
    EXPECT_EQ(map.GetItemCount(), kKeys);
    EXPECT_EQ(CountFound(map), kKeys);
    EXPECT_LT(LongestChain(map), 20u);  // two entries a bucket on average
    for (const std::string& key : CollidingKeys()) {
        map.Remove(key.data(), LengthOf(key));
    }
    EXPECT_EQ(map.GetItemCount(), 0u);
}

TEST(HashCollision, TheDefaultHashPutsThemInOneBucketButTheIndexFindsThem) {
    Xml::HashMap map(32, true);
    Fill(map);
    EXPECT_EQ(map.GetItemCount(), kKeys);
    EXPECT_EQ(LongestChain(map), kKeys);
    EXPECT_EQ(CountFound(map), kKeys);
}

}  // namespace
