// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssNodeType.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

namespace {

using Dom::CSS::CssNodeType;

const struct {
    CssNodeType::NODE_TYPE value;
    int number;
    const char* name;
} kTypes[] = {
    {CssNodeType::Node, 0, "Node"},         {CssNodeType::Rule, 1, "Rule"},
    {CssNodeType::Selector, 2, "Selector"}, {CssNodeType::StartDecl, 3, "StartDecl"},
    {CssNodeType::EndDecl, 4, "EndDecl"},   {CssNodeType::Comment, 5, "Comment"},
    {CssNodeType::Property, 6, "Property"}, {CssNodeType::Whitespace, 7, "Whitespace"},
};

TEST(CssNodeType, HasNumbersAndNames) {
    int number = 0;
    for (const auto& type : kTypes) {
        SCOPED_TRACE(type.name);
        EXPECT_EQ(type.number, number++);
        EXPECT_EQ(static_cast<int>(type.value), type.number);
        EXPECT_EQ(CssNodeType(type.value).ToString(), type.name);
    }
    EXPECT_EQ(number, 8);
}

TEST(CssNodeType, OtherNumbersAreQuestionMarks) {
    for (const int number : {-1, 8, 9, 99, 1 << 30}) {
        SCOPED_TRACE(number);
        const auto value = static_cast<CssNodeType::NODE_TYPE>(number);
        EXPECT_EQ(CssNodeType(value).ToString(), "???");
    }
}

TEST(CssNodeType, BeginsAsZero) {
    const CssNodeType type;
    EXPECT_EQ(static_cast<CssNodeType::NODE_TYPE>(type), CssNodeType::Node);
    EXPECT_EQ(type.ToString(), "Node");
}

TEST(CssNodeType, IsAssignedFromItsNumbersAndFromAnother) {
    CssNodeType type;
    type = CssNodeType::Comment;
    EXPECT_EQ(type.ToString(), "Comment");
    CssNodeType other;
    other = type;
    EXPECT_EQ(other.ToString(), "Comment");
    const CssNodeType copy(other);
    EXPECT_EQ(copy.ToString(), "Comment");
}

TEST(CssNodeType, IsComparedToItsNumbersAndToAnother) {
    const CssNodeType comment(CssNodeType::Comment);
    const CssNodeType property(CssNodeType::Property);
    EXPECT_TRUE(comment == CssNodeType::Comment);
    EXPECT_TRUE(CssNodeType::Comment == comment);
    EXPECT_FALSE(comment == CssNodeType::Property);
    EXPECT_TRUE(comment != CssNodeType::Property);
    EXPECT_TRUE(comment == CssNodeType(comment));
    EXPECT_FALSE(comment == property);
    EXPECT_TRUE(comment != property);
}

TEST(CssNodeType, StandsForItsNumberInASwitch) {
    switch (const CssNodeType type(CssNodeType::EndDecl); type) {
    case CssNodeType::EndDecl: break;
    default: FAIL();
    }
    constexpr CssNodeType::NODE_TYPE kValue = CssNodeType(CssNodeType::Selector);
    static_assert(kValue == CssNodeType::Selector);
}

}  // namespace
