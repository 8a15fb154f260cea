// SPDX-License-Identifier: MIT
#include "support/PrintAstring.h"
#include "xml/AttributeLists.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Xml::detail::AttributeDeclaration;
using Xml::detail::AttributeList;
using Xml::detail::AttributeLists;
using Xml::detail::AttributeType;

AttributeDeclaration Declaration(const char* name, AttributeType type,
                                 const char* value = nullptr) {
    AttributeDeclaration declaration;
    declaration.name = name;
    declaration.type = type;
    declaration.hasDefault = value != nullptr;
    if (value != nullptr) declaration.value = value;
    return declaration;
}

TEST(AttributeLists, FirstDeclarationCounts) {
    AttributeList list;
    EXPECT_TRUE(list.Declare(Declaration("a", AttributeType::CData, "1")));
    EXPECT_FALSE(list.Declare(Declaration("a", AttributeType::Id, "2")));
    ASSERT_NE(list.Find("a"), nullptr);
    EXPECT_EQ(list.Find("a")->value, "1");
    EXPECT_FALSE(list.HasTypes());
    EXPECT_EQ(list.Defaults().size(), 1U);
    EXPECT_EQ(list.Find("b"), nullptr);
}

TEST(AttributeLists, DefaultsKeepTheirOrder) {
    AttributeList list;
    list.Declare(Declaration("c", AttributeType::CData, "1"));
    list.Declare(Declaration("b", AttributeType::NmToken));
    list.Declare(Declaration("a", AttributeType::CData, ""));
    ASSERT_EQ(list.Defaults().size(), 2U);
    EXPECT_EQ(list.Defaults()[0]->name, "c");
    EXPECT_EQ(list.Defaults()[1]->name, "a");
    EXPECT_TRUE(list.HasTypes());
}

TEST(AttributeLists, OneListForEachElement) {
    AttributeLists lists;
    EXPECT_EQ(lists.Find("a"), nullptr);
    AttributeList& list = lists.ListOf("a");
    for (int i = 0; i < 1000; ++i)
        lists.ListOf("e" + std::to_string(i));
    EXPECT_EQ(&lists.ListOf("a"), &list);
    EXPECT_EQ(lists.Find("a"), &list);
    EXPECT_NE(lists.Find("e999"), nullptr);
    EXPECT_EQ(lists.Find("e1000"), nullptr);
}

TEST(AttributeLists, TrimTokens) {
    const struct {
        const char* value;
        const char* trimmed;
    } kRows[] = {{"", ""},         {" ", ""},       {"   ", ""},          {"a", "a"},
                 {" a", "a"},      {"a ", "a"},     {"  a   b  ", "a b"}, {"a b c", "a b c"},
                 {"a\tb", "a\tb"}, {"\n a", "\n a"}};
    for (const auto& row : kRows) {
        astring value(row.value);
        Xml::detail::TrimTokens(value);
        EXPECT_EQ(value, row.trimmed) << '"' << row.value << '"';
    }
}

}  // namespace
