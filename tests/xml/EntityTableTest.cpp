// SPDX-License-Identifier: MIT
#include "xml/EntityTable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Xml::detail::EntityKind;
using Xml::detail::EntityRecord;
using Xml::detail::EntityTable;

constexpr EntityKind kKinds[] = {EntityKind::General, EntityKind::Parameter, EntityKind::Notation};

EntityRecord& Declare(EntityTable& table, std::string_view name, std::string_view text) {
    EntityRecord* record = table.Declare(EntityKind::General, name);
    EXPECT_NE(record, nullptr) << name;
    record->text = text;
    return *record;
}

TEST(EntityTable, ANewTableIsEmpty) {
    const EntityTable table;
    for (const EntityKind kind : kKinds)
        EXPECT_EQ(table.Find(kind, "e"), nullptr);
    EXPECT_EQ(table.FindGeneral("e"), nullptr);
}

TEST(EntityTable, ADeclaredRecordIsFound) {
    EntityTable table;
    for (const EntityKind kind : kKinds) {
        EntityRecord* record = table.Declare(kind, "name");
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->name, "name");
        EXPECT_EQ(record->text, "");
        EXPECT_FALSE(record->inUse);
        EXPECT_EQ(table.Find(kind, "name"), record);
        EXPECT_EQ(table.Find(kind, "nam"), nullptr);
        EXPECT_EQ(table.Find(kind, "Name"), nullptr);
        EXPECT_EQ(table.Find(kind, "name2"), nullptr);
    }
    EXPECT_EQ(table.FindGeneral("name"), table.Find(EntityKind::General, "name"));
}

TEST(EntityTable, TheFirstDeclarationOfAKindAndNameCounts) {
    EntityTable table;
    for (const EntityKind kind : kKinds) {
        EntityRecord* first = table.Declare(kind, "e");
        ASSERT_NE(first, nullptr);
        EXPECT_EQ(table.Declare(kind, "e"), nullptr);
        EXPECT_EQ(table.Find(kind, "e"), first);
    }
    EXPECT_NE(table.Find(EntityKind::General, "e"), table.Find(EntityKind::Parameter, "e"));
    EXPECT_NE(table.Find(EntityKind::General, "e"), table.Find(EntityKind::Notation, "e"));
    EXPECT_NE(table.Find(EntityKind::Parameter, "e"), table.Find(EntityKind::Notation, "e"));
}

TEST(EntityTable, NamesMayBeLong) {
    EntityTable table;
    const std::string name(1024, 'n');
    for (const EntityKind kind : kKinds) {
        EntityRecord* record = table.Declare(kind, name);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(table.Find(kind, name), record);
        EXPECT_EQ(table.Find(kind, name.substr(1)), nullptr);
    }
}

TEST(EntityTable, RecordsStayWhereTheyAre) {
    EntityTable table;
    EntityRecord* first = table.Declare(EntityKind::General, "first");
    for (int i = 0; i < 20000; ++i)
        ASSERT_NE(table.Declare(kKinds[i % 3], "e" + std::to_string(i)), nullptr);
    EXPECT_EQ(table.Find(EntityKind::General, "first"), first);
    for (int i = 0; i < 20000; ++i) {
        const std::string name = "e" + std::to_string(i);
        ASSERT_EQ(table.Find(kKinds[i % 3], name)->name, name);
        ASSERT_EQ(table.Find(kKinds[(i + 1) % 3], name), nullptr);
    }
}

TEST(EntityTable, MeasureOfTextsWithoutReferences) {
    const struct {
        const char* text;
        long long cost;
        bool isMarkup;
    } kCases[] = {
        {"", 0, false},
        {"x", 1, false},
        {"\xC3\xA9", 2, false},
        {"a > b \" '", 9, false},
        {"<b/>", 4, true},
        {"x<", 2, true},
        {"&lt;&gt;&amp;&quot;&apos;", 25, false},
        {"&#60;&#x3C;", 11, false},
        {"&undeclared;", 12, false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EntityTable table;
        EntityRecord& record = Declare(table, "e", c.text);
        const EntityRecord& measured = table.Measure(record);
        EXPECT_EQ(&measured, &record);
        EXPECT_EQ(measured.cost, c.cost);
        EXPECT_EQ(measured.nesting, 1);
        EXPECT_EQ(measured.isMarkup, c.isMarkup);
    }
}

TEST(EntityTable, MeasureAddsWhatTheTextRefersTo) {
    EntityTable table;
    Declare(table, "t", "12345");
    Declare(table, "m", "<b/>");
    Declare(table, "g", "");
    Declare(table, "u", "&t;&t;");
    const struct {
        const char* text;
        long long cost;
        int nesting;
        bool isMarkup;
    } kCases[] = {
        {"&t;", 3 + 5, 2, false},        {"&t;-&t;", 7 + 10, 2, false},
        {"&u;", 3 + 6 + 10, 3, false},   {"&t;&u;&t;", 9 + 5 + 16 + 5, 3, false},
        {"&g;&g;", 6, 2, false},         {"&m;", 3 + 4, 2, true},
        {"&u;&m;", 6 + 16 + 4, 3, true}, {"&amp;t;", 7, 1, false},
        {"&#65;&t;", 8 + 5, 2, false},
    };
    int number = 0;
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EntityRecord& record = Declare(table, "e" + std::to_string(number++), c.text);
        for (int i = 0; i < 2; ++i) {  // the second time it is known
            table.Measure(record);
            EXPECT_EQ(record.cost, c.cost);
            EXPECT_EQ(record.nesting, c.nesting);
            EXPECT_EQ(record.isMarkup, c.isMarkup);
        }
    }
}

TEST(EntityTable, MeasureTakesNoNotationOrParameterEntityForAnEntity) {
    EntityTable table;
    table.Declare(EntityKind::Parameter, "p")->text = "<long text/>";
    table.Declare(EntityKind::Notation, "n")->text = "<long text/>";
    EntityRecord& record = Declare(table, "e", "&p;&n;");
    table.Measure(record);
    EXPECT_EQ(record.cost, 6);
    EXPECT_EQ(record.nesting, 1);
    EXPECT_FALSE(record.isMarkup);
}

TEST(EntityTable, MeasureEndsOnCycles) {
    for (int length = 1; length < 20; ++length) {
        EntityTable table;
        for (int i = 0; i < length; ++i) {
            Declare(table, "e" + std::to_string(i), "&e" + std::to_string((i + 1) % length) + ";");
        }
        for (int i = 0; i < length; ++i) {
            EntityRecord& record = *table.FindGeneral("e" + std::to_string(i));
            EXPECT_GE(table.Measure(record).cost, 4);
            EXPECT_LE(record.nesting, length);
            EXPECT_FALSE(record.inUse);
        }
    }
}

TEST(EntityTable, MeasureOfALongChainNeedsNoStack) {
    constexpr int kLength = 1000000;
    EntityTable chain;
    for (int i = 0; i + 1 < kLength; ++i)
        Declare(chain, "e" + std::to_string(i), "&e" + std::to_string(i + 1) + ";");
    Declare(chain, "e" + std::to_string(kLength - 1), "<");
    const EntityRecord& first = chain.Measure(*chain.FindGeneral("e0"));
    EXPECT_EQ(first.nesting, kLength);
    EXPECT_TRUE(first.isMarkup);
}

TEST(EntityTable, CostsThatFitInNoNumberStayGreat) {
    EntityTable table;
    Declare(table, "e0", "x");
    for (int i = 1; i < 200; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        Declare(table, "e" + std::to_string(i), inner + inner + inner + inner);
    }
    long long last = 0;
    for (int i = 0; i < 200; ++i) {
        const EntityRecord& record = table.Measure(*table.FindGeneral("e" + std::to_string(i)));
        EXPECT_GE(record.cost, last) << i;
        last = record.cost;
    }
    EXPECT_GT(last, 1LL << 60);
    EXPECT_EQ(table.FindGeneral("e199")->nesting, 200);
}

// A default value may refer to an entity before all that its text refers to is declared.
TEST(EntityTable, WhatIsDeclaredLaterIsMeasured) {
    EntityTable table;
    EntityRecord& outer = Declare(table, "outer", "&inner;");
    EXPECT_EQ(table.Measure(outer).cost, 7);
    Declare(table, "inner", "&text;&text;");
    EXPECT_EQ(table.Measure(outer).cost, 7 + 12);
    EXPECT_FALSE(table.Measure(outer).isMarkup);
    Declare(table, "text", "<12345678>");
    EXPECT_EQ(table.Measure(outer).cost, 7 + 12 + 20);
    EXPECT_EQ(table.Measure(outer).nesting, 3);
    EXPECT_TRUE(table.Measure(outer).isMarkup);
}

}  // namespace
