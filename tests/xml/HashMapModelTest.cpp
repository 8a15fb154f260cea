// SPDX-License-Identifier: MIT

// Random changes of maps that share their tables, beside a model that does in the plainest way what
// a table is to do: vectors of buckets, the newest entry first. Keys, values, order and the life of
// every value are compared.

#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>

#include "xml/SeededHash.h"
#include "xml/XmlHashTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

// A value that knows how often it was made and ended. Without hooks nothing ends it.
struct Value {
    int number = 0;
    int ended = 0;
};

std::vector<Value*> allValues;  // freed at the end of each run, so that a late use is seen

Value* MakeValue(int number) {
    allValues.push_back(new Value{number, 0});
    return allValues.back();
}

void* CopyValue(XmlHashMap*, void* value) { return MakeValue(static_cast<Value*>(value)->number); }
void EndValue(XmlHashMap*, void* value) { ++static_cast<Value*>(value)->ended; }

unsigned WeakHash(const char* key, unsigned length) {
    return static_cast<unsigned char>(key[length - 1]) % 3u;
}

struct Setting {
    const char* name;
    XmlHashFunction hash;
    bool growAutomatically;
    bool copies;  // an allocator is set
    bool ends;    // a deallocator is set
};

const Setting kSettings[] = {
    {"default hash, no hooks", XmlKeyHashBinary, true, false, false},
    {"default hash, both hooks", XmlKeyHashBinary, true, true, true},
    {"seeded hash, both hooks", Xml::detail::SeededHash, true, true, true},
    {"seeded hash, no growth", Xml::detail::SeededHash, false, true, true},
    {"weak hash, both hooks", WeakHash, true, true, true},
    {"seeded hash, deallocator alone", Xml::detail::SeededHash, true, false, true},
};

class Model {
public:
    Model(unsigned size, const Setting& setting) : buckets_(size), setting_(setting) {}

    void Insert(const std::string& key, int number) {
        if (setting_.growAutomatically && count_ >= 2 * buckets_.size()) Grow();
        Remove(key);
        Bucket& bucket = BucketOf(key);
        bucket.insert(bucket.begin(), {key, number});
        numbers_[key] = number;
        ++count_;
    }
    void Remove(const std::string& key) {
        Bucket& bucket = BucketOf(key);
        const auto found = std::find_if(bucket.begin(), bucket.end(),
                                        [&key](const auto& entry) { return entry.first == key; });
        if (found == bucket.end()) return;
        bucket.erase(found);
        numbers_.erase(key);
        --count_;
    }
    void Clear() {
        for (Bucket& bucket : buckets_) {
            bucket.clear();
        }
        numbers_.clear();
        count_ = 0;
    }
    void Grow() {
        std::vector<Bucket> old(buckets_.size() * 2);
        old.swap(buckets_);
        for (const Bucket& bucket : old) {
            for (const auto& entry : bucket) {
                Bucket& target = BucketOf(entry.first);
                target.insert(target.begin(), entry);
            }
        }
    }

    std::size_t count() const { return count_; }
    std::size_t size() const { return buckets_.size(); }
    const std::unordered_map<std::string, int>& numbers() const { return numbers_; }

    std::vector<std::pair<std::string, int>> Walk() const {
        std::vector<std::pair<std::string, int>> entries;
        for (const Bucket& bucket : buckets_) {
            entries.insert(entries.end(), bucket.begin(), bucket.end());
        }
        return entries;
    }

private:
    using Bucket = std::vector<std::pair<std::string, int>>;

    Bucket& BucketOf(const std::string& key) {
        const unsigned hash = setting_.hash(key.data(), static_cast<unsigned>(key.size()));
        return buckets_[hash & (buckets_.size() - 1)];
    }

    std::vector<Bucket> buckets_;
    Setting setting_;
    std::size_t count_ = 0;
    std::unordered_map<std::string, int> numbers_;  // the same entries, without order
};

struct Pair {
    Xml::HashMap map;
    Model model;
};

class RandomRun {
public:
    RandomRun(const Setting& setting, unsigned seed) : setting_(setting), random_(seed) {
        for (unsigned number = 0; number < 120; ++number) {
            const std::size_t length = number % 10 == 0 ? 200 + number : number % 24;
            keys_.push_back(std::string(length, 'k') + std::to_string(number));
        }
        for (const unsigned size : {1u, 4u, 16u}) {
            Pair pair{Xml::HashMap(size, setting.growAutomatically), Model(size, setting)};
            pair.map.SetKey(setting.hash, XmlKeyCompareBinary);
            pair.map.SetValueAllocator(setting.copies ? CopyValue : nullptr,
                                       setting.ends ? EndValue : nullptr);
            pairs_.push_back(std::move(pair));
        }
    }

    void Steps(int count) {
        for (int step = 0; step < count; ++step) {
            Pair& pair = pairs_[random_() % pairs_.size()];
            Change(pair);
            Compare(pair);
            if (step % 20 == 0) {
                for (const Pair& each : pairs_) {
                    Compare(each);
                }
            }
        }
    }

private:
    void Change(Pair& pair) {
        const std::string& key = keys_[random_() % keys_.size()];
        const auto length = static_cast<unsigned>(key.size());
        const auto kind = random_() % 100;
        if (kind < 55) {
            const int number = nextNumber_++;
            pair.map.Insert(key.data(), length, MakeValue(number));
            pair.model.Insert(key, number);
        } else if (kind < 80) {
            pair.map.Remove(key.data(), length);
            pair.model.Remove(key);
        } else if (kind < 88) {
            Xml::HashItem item = pair.map.FindItem(key.data(), length);
            pair.map.Remove(item);
            pair.model.Remove(key);
        } else if (kind < 96) {
            const Pair& source = pairs_[random_() % pairs_.size()];
            pair.map = source.map;
            if (&pair != &source) pair.model = source.model;
        } else if (kind < 98) {
            if (pair.model.size() < 256) {
                pair.map.GrowTable();
                pair.model.Grow();
            }
        } else if (kind < 99) {
            pair.map.Clear();
            pair.model.Clear();
        } else {
            const Xml::HashMap copy(pair.map);
            pair.map.Insert(key.data(), length, MakeValue(nextNumber_));
            pair.model.Insert(key, nextNumber_++);
        }
    }

    void Compare(const Pair& pair) const {
        ASSERT_EQ(pair.map.GetItemCount(), pair.model.count());
        std::vector<std::pair<std::string, int>> entries;
        Xml::HashIterator iterator;
        for (Xml::HashItem item = iterator.First(pair.map); !item.IsNull();
             item = iterator.Next()) {
            const auto* const value = static_cast<const Value*>(item.GetValue());
            entries.emplace_back(std::string(item.GetKey(), item.GetKeyLength()), value->number);
            // With both hooks a value that can be found has never been ended.
            if (setting_.copies) {
                ASSERT_EQ(value->ended, 0);
            }
        }
        ASSERT_EQ(entries, pair.model.Walk());
        for (const std::string& key : keys_) {
            const auto* const value = static_cast<const Value*>(
                pair.map.Find(key.data(), static_cast<unsigned>(key.size())));
            const auto expected = pair.model.numbers().find(key);
            ASSERT_EQ(value != nullptr, expected != pair.model.numbers().end()) << key;
            if (value != nullptr) {
                ASSERT_EQ(value->number, expected->second) << key;
            }
        }
    }

    const Setting& setting_;
    std::mt19937 random_;
    std::vector<std::string> keys_;
    std::vector<Pair> pairs_;
    int nextNumber_ = 0;
};

TEST(HashMapModel, RandomChangesOfSharedMapsAgreeWithTheModel) {
    for (const Setting& setting : kSettings) {
        for (unsigned seed = 1; seed <= 8; ++seed) {
            SCOPED_TRACE(std::string(setting.name) + ", seed " + std::to_string(seed));
            { RandomRun(setting, seed).Steps(600); }
            ASSERT_FALSE(HasFatalFailure());
            for (const Value* value : allValues) {
                // A value that a hook copied is ended once, the one that it was copied from never.
                EXPECT_LE(value->ended, setting.ends ? 1 : 0);
                if (setting.ends && !setting.copies) {
                    EXPECT_EQ(value->ended, 1) << value->number;
                }
                delete value;
            }
            allValues.clear();
        }
    }
}

TEST(HashMapModel, TheTableIsConsistentAfterEachOfManyChanges) {
    std::mt19937 random(11);
    for (const XmlHashFunction hash : {XmlHashFunction{XmlKeyHashBinary}, WeakHash}) {
        XmlHashMap map;
        ASSERT_TRUE(XmlHashInit(&map, 2, true));
        XmlHashSetKey(&map, hash, XmlKeyCompareBinary);
        for (int step = 0; step < 4000; ++step) {
            const std::string key = std::to_string(random() % 300);
            const auto length = static_cast<unsigned>(key.size());
            if (random() % 3 == 0) {
                XmlHashRemoveKey(&map, key.data(), length);
            } else {
                XmlHashInsert(&map, key.data(), length, &map);
            }
            ASSERT_TRUE(Xml::detail::IsTableConsistent(map));
        }
        XmlHashDeinit(&map);
    }
}

}  // namespace
