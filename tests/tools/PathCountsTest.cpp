// SPDX-License-Identifier: MIT
#include "PathCounts.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>

using Tool::PathCounts;

namespace {

const PathCounts::Entry& At(const PathCounts& counts, int index) {
    return counts.Entries()[static_cast<std::size_t>(index)];
}

// Returns the counts as "name count text(attribute count,..)[children]".
std::string Dump(const PathCounts& counts, const std::vector<int>& indexes) {
    std::string dump;
    for (const int index : indexes) {
        const PathCounts::Entry& entry = At(counts, index);
        if (!dump.empty()) dump += " ";
        dump += std::string(entry.name) + " " + std::to_string(entry.count);
        if (entry.textBytes > 0) dump += " " + std::to_string(entry.textBytes);
        for (const PathCounts::Attribute& attribute : entry.attributes)
            dump += " @" + std::string(attribute.name) + " " + std::to_string(attribute.count);
        if (!entry.children.empty()) dump += "[" + Dump(counts, entry.children) + "]";
    }
    return dump;
}

std::string Dump(const PathCounts& counts) { return Dump(counts, counts.Roots()); }

void Enter(PathCounts& counts, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        counts.EnterElement(name);
}

void Leave(PathCounts& counts, int times) {
    for (int i = 0; i < times; ++i)
        counts.LeaveElement();
}

long TotalCount(const PathCounts& counts) {
    long total = 0;
    for (const PathCounts::Entry& entry : counts.Entries())
        total += entry.count;
    return total;
}

}  // namespace

TEST(PathCounts, ElementsAreCountedByTheirPaths) {
    PathCounts counts;
    Enter(counts, {"a", "b"});
    Leave(counts, 1);
    Enter(counts, {"c", "b"});
    counts.AddText(5);
    Leave(counts, 2);
    Enter(counts, {"b"});
    counts.AddText(3);
    counts.AddText(4);
    Leave(counts, 2);
    EXPECT_EQ(Dump(counts), "a 1[b 2 7 c 1[b 1 5]]");
    for (std::size_t i = 0; i < counts.Entries().size(); ++i)
        EXPECT_LT(counts.Entries()[i].parent, static_cast<int>(i));
}

TEST(PathCounts, EntriesStandInOrderOfTheirFirstAppearance) {
    PathCounts counts;
    Enter(counts, {"r"});
    for (const char* const name : {"z", "a", "m", "a", "z", "m", "b", "z", "z", "a", "m", "b"}) {
        counts.EnterElement(name);
        counts.LeaveElement();
    }
    EXPECT_EQ(Dump(counts), "r 1[z 4 a 3 m 3 b 2]");
}

TEST(PathCounts, AttributesAreCountedByNameInAnyOrder) {
    PathCounts counts;
    const std::vector<std::vector<std::string>> kElements = {
        {"x", "y"}, {"x", "y"}, {"y", "x"}, {"z"}, {}, {"x", "z", "y"}};
    for (const std::vector<std::string>& names : kElements) {
        counts.EnterElement("a");
        for (std::size_t i = 0; i < names.size(); ++i)
            counts.AddAttribute(names[i], i);
        counts.LeaveElement();
    }
    EXPECT_EQ(Dump(counts), "a 6 @x 4 @y 4 @z 2");
}

TEST(PathCounts, SeveralDocumentsAreCountedTogether) {
    PathCounts counts;
    counts.Begin();
    Enter(counts, {"a", "b"});  // and no further: the document has an error
    counts.Begin();
    Enter(counts, {"c", "b"});
    Leave(counts, 2);
    counts.Begin();
    Enter(counts, {"a", "c"});
    Leave(counts, 2);
    EXPECT_EQ(Dump(counts), "a 2[b 1 c 1] c 1[b 1]");
}

TEST(PathCounts, WhatIsTooDeepIsCountedTogether) {
    PathCounts counts;
    for (int i = 0; i < PathCounts::kMostLevels + 10; ++i) {
        counts.EnterElement(i < PathCounts::kMostLevels + 5 ? "a" : "b");
        counts.AddAttribute("x", 0);
        counts.AddText(2);
    }
    Leave(counts, PathCounts::kMostLevels + 10);
    counts.EnterElement("a");
    counts.LeaveElement();
    ASSERT_EQ(counts.Entries().size(), PathCounts::kMostLevels + 1U);
    const PathCounts::Entry& others = counts.Entries().back();
    EXPECT_EQ(others.name, "...");
    EXPECT_EQ(others.level, PathCounts::kMostLevels);
    EXPECT_EQ(others.count, 10);
    EXPECT_EQ(others.textBytes, 20);
    ASSERT_EQ(others.attributes.size(), 1U);
    EXPECT_EQ(others.attributes[0].count, 10);
    EXPECT_EQ(At(counts, 0).count, 2);
}

TEST(PathCounts, PathsBeyondTheLimitAreCountedTogether) {
    PathCounts counts;
    Enter(counts, {"a", "b"});
    const int kElements = static_cast<int>(PathCounts::kMostPaths) + 5000;
    for (int i = 0; i < kElements; ++i) {
        counts.EnterElement("e" + std::to_string(i));
        counts.AddText(1);
        Enter(counts, {"known"});
        Leave(counts, 2);
    }
    EXPECT_EQ(TotalCount(counts), 2 + 2L * kElements);
    // a, b, and as many pairs as there is room for; then "..." once.
    EXPECT_EQ(counts.Entries().size(), PathCounts::kMostPaths + 1);
    const PathCounts::Entry& others = counts.Entries().back();
    EXPECT_EQ(others.name, "...");
    EXPECT_EQ(At(counts, others.parent).name, "b");
    EXPECT_EQ(others.count, 2L * kElements - static_cast<long>(PathCounts::kMostPaths - 2));
    // What has an entry is still counted there.
    const std::string before = std::to_string(At(counts, 2).count);
    counts.EnterElement("e0");
    EXPECT_EQ(At(counts, 2).count, std::stol(before) + 1);
}

TEST(PathCounts, AttributesBeyondTheLimitAreCountedTogether) {
    PathCounts counts;
    counts.EnterElement("a");
    for (std::size_t i = 0; i < PathCounts::kMostAttributes + 100; ++i)
        counts.AddAttribute("x" + std::to_string(i), i);
    const std::vector<PathCounts::Attribute>& attributes = At(counts, 0).attributes;
    ASSERT_EQ(attributes.size(), PathCounts::kMostAttributes + 1);
    EXPECT_EQ(attributes.back().name, "...");
    EXPECT_EQ(attributes.back().count, 100);
    counts.AddAttribute("x7", 0);
    EXPECT_EQ(attributes[7].count, 2);
}
