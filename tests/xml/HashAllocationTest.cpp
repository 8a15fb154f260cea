// SPDX-License-Identifier: MIT

// Every allocation in turn fails: the failure is reported, nothing is lost and nothing leaks.

#include <espalier/io/Exception.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlNsSupport.h>

#include "support/FailingAllocation.h"
#include "xml/XmlHashTable.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

char value[] = "value";
constexpr std::string_view kLongUri = "http://example.org/a/URI/that/is/longer/than/a/short/string";

unsigned LengthOf(const std::string& key) { return static_cast<unsigned>(key.size()); }

// The record of a table and its entries, in the order of a walk.
std::string StateOf(const XmlHashMap& map) {
    return FailingAllocation::Exempt([&map] {
        std::string state = std::to_string(map.size) + "/" + std::to_string(map.count);
        XmlHashIterator iterator;
        for (const XmlHashItem* item = XmlHashIteratorFirst(&iterator, &map); item != nullptr;
             item = XmlHashIteratorNext(&iterator)) {
            state += " " + std::string(item->key, item->keyLength);
        }
        return state;
    });
}

// Keys of all lengths up to those that get memory of their own.
std::vector<std::string> MakeKeys() {
    std::vector<std::string> keys;
    for (unsigned number = 0; number < 200; ++number) {
        keys.push_back(std::string(number % 50 * 7, 'k') + std::to_string(number));
    }
    return keys;
}

TEST(HashAllocation, AFailedInitHoldsNothing) {
    const long failures = FailingAllocation::ForEachFailure([](const FailingAllocation& failure) {
        XmlHashMap map;
        const bool done = XmlHashInit(&map, 64, true);
        EXPECT_EQ(done, !failure.HasFailed());
        EXPECT_EQ(map.table != nullptr, done);
        XmlHashDeinit(&map);
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_GE(failures, 1);
}

TEST(HashAllocation, AFailedCreateGivesNull) {
    const long failures = FailingAllocation::ForEachFailure([](const FailingAllocation& failure) {
        XmlHashMap* const map = XmlHashCreate(64, true);
        EXPECT_EQ(map == nullptr, failure.HasFailed());
        XmlHashDestroy(map);
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_GE(failures, 2);
}

TEST(HashAllocation, AFailedConstructorThrowsBadAlloc) {
    const long failures = FailingAllocation::ForEachFailure([](const FailingAllocation& failure) {
        bool thrown = false;
        try {
            const Xml::HashMap map(64, true);
        } catch (const std::bad_alloc& error) {
            thrown = true;
            EXPECT_STREQ(error.what(), "bad allocation");
        }
        EXPECT_EQ(thrown, failure.HasFailed());
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_GE(failures, 1);
}

TEST(HashAllocation, AFailedInsertionChangesNothing) {
    const std::vector<std::string> keys = MakeKeys();
    unsigned refused = 0;
    const long failures = FailingAllocation::ForEachFailure([&](const FailingAllocation& failure) {
        XmlHashMap map;
        if (XmlHashInit(&map, 4, true)) {
            for (const std::string& key : keys) {
                const std::string before = StateOf(map);
                const long live = failure.LiveCount();
                if (XmlHashInsert(&map, key.data(), LengthOf(key), value)) continue;
                ++refused;
                EXPECT_TRUE(failure.HasFailed());
                EXPECT_EQ(StateOf(map), before);
                EXPECT_EQ(failure.LiveCount(), live);
            }
            EXPECT_TRUE(Xml::detail::IsTableConsistent(map));
            EXPECT_GE(map.count + 1, keys.size());
            for (const std::string& key : keys) {
                if (failure.HasFailed() && map.count < keys.size()) break;
                EXPECT_EQ(XmlHashFind(&map, key.data(), LengthOf(key)), value);
            }
        }
        XmlHashDeinit(&map);
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_GE(failures, 20);
    EXPECT_GE(refused, 10u);
}

TEST(HashAllocation, AFailedInsertionThrowsBadAlloc) {
    const std::string longKey(1000, 'k');  // one that gets memory of its own
    Xml::HashMap map(4, true);
    const FailingAllocation failure(1);
    try {
        map.Insert(longKey.data(), LengthOf(longKey), value);
        ADD_FAILURE() << "nothing is thrown";
    } catch (const std::bad_alloc& error) {
        EXPECT_STREQ(error.what(), "bad allocation");
    }
    EXPECT_EQ(map.GetItemCount(), 0u);
}

TEST(HashAllocation, AKeyThatMemoryCannotHoldIsRefused) {
    // The key is never read: its entry cannot be allocated.
    XmlHashMap map;
    ASSERT_TRUE(XmlHashInit(&map, 4, true));
    {
        const FailingAllocation failure(1);
        EXPECT_FALSE(XmlHashInsert(&map, "", 0xFFFFFFFF, value));
        EXPECT_TRUE(failure.HasFailed());
    }
    EXPECT_EQ(map.count, 0u);
    XmlHashDeinit(&map);
}

TEST(HashAllocation, AFailedChangeOfASharedMapChangesNothing) {
    const std::vector<std::string> keys = MakeKeys();
    const struct {
        const char* name;
        void (*change)(Xml::HashMap& map);
        unsigned left;
    } kCases[] = {
        {"Insert", [](Xml::HashMap& m) { m.Insert("new", value); }, 201},
        {"Remove key", [](Xml::HashMap& m) { m.Remove("kkkkkkk1"); }, 199},
        {"Remove item",
         [](Xml::HashMap& m) {
             Xml::HashItem item = m.FindItem("kkkkkkk1");
             m.Remove(item);
         },
         199},
        {"Clear", [](Xml::HashMap& m) { m.Clear(); }, 0},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        static int liveCopies = 0;
        Xml::HashMap first(4, true);
        first.SetValueAllocator(
            [](XmlHashMap*, void* original) {
                ++liveCopies;
                return original;
            },
            [](XmlHashMap*, void*) { --liveCopies; });
        for (const std::string& key : keys) {
            first.Insert(key.data(), LengthOf(key), value);
        }
        const long failures =
            FailingAllocation::ForEachFailure([&](const FailingAllocation& failure) {
                Xml::HashMap second(first);
                bool thrown = false;
                try {
                    c.change(second);
                } catch (const std::bad_alloc& error) {
                    thrown = true;
                    EXPECT_STREQ(error.what(), "bad allocation");
                }
                EXPECT_EQ(second.GetItemCount(), thrown ? keys.size() : c.left);
                EXPECT_EQ(first.GetItemCount(), keys.size());
                // Where the change failed both still share one table.
                EXPECT_EQ(first.FindItem("0").GetKey() == second.FindItem("0").GetKey(), thrown);
                EXPECT_TRUE(failure.HasFailed() || !thrown);
            });
        EXPECT_GE(failures, 2);
        EXPECT_EQ(liveCopies, 200);
        first.Clear();
        EXPECT_EQ(liveCopies, 0);
    }
}

TEST(HashAllocation, AFailedGrowthLeavesTheBuckets) {
    XmlHashMap map;
    ASSERT_TRUE(XmlHashInit(&map, 4, false));
    XmlHashInsert(&map, "key", 3, value);
    {
        const FailingAllocation failure(1);
        XmlHashGrowTable(&map);
        EXPECT_TRUE(failure.HasFailed());
    }
    EXPECT_EQ(StateOf(map), "4/1 key");
    XmlHashDeinit(&map);
}

// What the prefixes resolve to, and the most recent declaration.
std::string Describe(const sax::XmlNsSupport& context) {
    return FailingAllocation::Exempt([&context] {
        std::string text;
        for (const char* prefix : {"", "xml", "a", "b"}) {
            text += std::string(prefix) + "=" + context.GetURI(prefix).c_str() + ";";
        }
        return text + context.GetLastPrefix().c_str();
    });
}

TEST(HashAllocation, AContextThatCannotBeMadeThrowsOutOfMemory) {
    sax::XmlNsSupport source;
    source.PushContext();
    source.DeclarePrefix("a", kLongUri);
    source.DeclarePrefix("", kLongUri);
    source.GetURI("nothing");  // the shared empty string is made at its first use
    for (const bool copy : {false, true}) {
        const long failures =
            FailingAllocation::ForEachFailure([&](const FailingAllocation& failure) {
                bool thrown = false;
                try {
                    if (copy) {
                        const sax::XmlNsSupport context(source);
                    } else {
                        const sax::XmlNsSupport context;
                    }
                } catch (const Xml::Exception& error) {
                    thrown = true;
                    EXPECT_STREQ(error.What(), "Out of memory");
                    EXPECT_STREQ(error.Argument(), "");
                    EXPECT_EQ(error.LineNumber(), -1);
                    EXPECT_EQ(error.LinePos(), -1);
                }
                EXPECT_EQ(thrown, failure.HasFailed());
                EXPECT_EQ(failure.LiveCount(), 0);
            });
        EXPECT_GE(failures, 5);
    }
}

TEST(HashAllocation, AFailedAssignmentOfAContextChangesNothing) {
    sax::XmlNsSupport source;
    source.DeclarePrefix("a", kLongUri);
    const long failures = FailingAllocation::ForEachFailure([&](const FailingAllocation& failure) {
        sax::XmlNsSupport* const target =
            FailingAllocation::Exempt([] { return new sax::XmlNsSupport; });
        const std::string before = Describe(*target);
        try {
            *target = source;
        } catch (const Xml::Exception&) {
            EXPECT_EQ(Describe(*target), before);
        }
        EXPECT_EQ(Describe(*target) == before, failure.HasFailed());
        delete target;
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_GE(failures, 5);
}

TEST(HashAllocation, AFailedDeclarationGivesNullAndChangesNothing) {
    const std::string longPrefix(40, 'p');
    unsigned refused = 0;
    const long failures = FailingAllocation::ForEachFailure([&](const FailingAllocation& failure) {
        sax::XmlNsSupport* const context =
            FailingAllocation::Exempt([] { return new sax::XmlNsSupport; });
        const std::string atLevel0 = Describe(*context);
        context->PushContext();
        for (const std::string_view prefix : {"a", "b", "", longPrefix.c_str(), "a", ""}) {
            const std::string before = Describe(*context);
            const std::uint64_t generation = context->Generation();
            const bool hadFailed = failure.HasFailed();
            if (context->DeclarePrefix(prefix, kLongUri) != nullptr) continue;
            ++refused;
            EXPECT_FALSE(hadFailed);
            EXPECT_TRUE(failure.HasFailed());
            EXPECT_EQ(Describe(*context), before);
            EXPECT_EQ(context->Generation(), generation);
        }
        context->PopContext();
        EXPECT_EQ(Describe(*context), atLevel0);
        delete context;
        EXPECT_EQ(failure.LiveCount(), 0);
    });
    EXPECT_EQ(refused, failures);
    EXPECT_GE(failures, 10);
}

}  // namespace
