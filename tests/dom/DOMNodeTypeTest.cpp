// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMNodeType.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Dom::DOMNodeType;
using Xml::XmlNodeType;

const struct {
    DOMNodeType::DOM_NODE_TYPE value;
    int number;
    const char* name;
} kTypes[] = {
    {DOMNodeType::UNDEFINED_NODE, 0, "UNDEFINED_NODE"},
    {DOMNodeType::ELEMENT_NODE, 1, "ELEMENT_NODE"},
    {DOMNodeType::ATTRIBUTE_NODE, 2, "ATTRIBUTE_NODE"},
    {DOMNodeType::TEXT_NODE, 3, "TEXT_NODE"},
    {DOMNodeType::CDATA_SECTION_NODE, 4, "CDATA_SECTION_NODE"},
    {DOMNodeType::ENTITY_REFERENCE_NODE, 5, "ENTITY_REFERENCE_NODE"},
    {DOMNodeType::ENTITY_NODE, 6, "ENTITY_NODE"},
    {DOMNodeType::PROCESSING_INSTRUCTION_NODE, 7, "PROCESSING_INSTRUCTION_NODE"},
    {DOMNodeType::COMMENT_NODE, 8, "COMMENT_NODE"},
    {DOMNodeType::DOCUMENT_NODE, 9, "DOCUMENT_NODE"},
    {DOMNodeType::DOCUMENT_TYPE_NODE, 10, "DOCUMENT_TYPE_NODE"},
    {DOMNodeType::DOCUMENT_FRAGMENT_NODE, 11, "DOCUMENT_FRAGMENT_NODE"},
    {DOMNodeType::NOTATION_NODE, 12, "NOTATION_NODE"},
    {DOMNodeType::XML_DECLARATION_NODE, 13, "XML_DECLARATION_NODE"},
};

TEST(DOMNodeType, HasTheNumbersAndNamesOfTheStandardAndOneMore) {
    int number = 0;
    for (const auto& type : kTypes) {
        SCOPED_TRACE(type.name);
        EXPECT_EQ(type.number, number++);
        EXPECT_EQ(static_cast<int>(type.value), type.number);
        EXPECT_STREQ(DOMNodeType(type.value).ToString(), type.name);
    }
    EXPECT_EQ(number, 14);
}

TEST(DOMNodeType, OtherNumbersAreAQuestionMark) {
    for (const int number : {-1, 14, 15, 17, 99, 1 << 30}) {
        SCOPED_TRACE(number);
        const auto value = static_cast<DOMNodeType::DOM_NODE_TYPE>(number);
        EXPECT_STREQ(DOMNodeType(value).ToString(), "?");
    }
}

TEST(DOMNodeType, TakesTheNumberOfAReadersTypeBelow14) {
    for (int number = 0; number < 14; ++number) {
        SCOPED_TRACE(number);
        const XmlNodeType source(static_cast<XmlNodeType::XML_NODE_TYPE>(number));
        const DOMNodeType made(source);
        EXPECT_EQ(static_cast<int>(static_cast<DOMNodeType::DOM_NODE_TYPE>(made)), number);
        DOMNodeType assigned(DOMNodeType::COMMENT_NODE);
        assigned = source;
        EXPECT_EQ(assigned, made);
    }
}

TEST(DOMNodeType, IsUndefinedForAReadersTypeFrom14On) {
    for (const auto value :
         {XmlNodeType::EndElement, XmlNodeType::EndEntity, XmlNodeType::SignificantWhitespace,
          XmlNodeType::Whitespace, static_cast<XmlNodeType::XML_NODE_TYPE>(18)}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(DOMNodeType(XmlNodeType(value)), DOMNodeType::UNDEFINED_NODE);
        DOMNodeType assigned(DOMNodeType::COMMENT_NODE);
        assigned = XmlNodeType(value);
        EXPECT_EQ(assigned, DOMNodeType::UNDEFINED_NODE);
    }
}

TEST(DOMNodeType, HoldsOneIntegerAndStartsUndefined) {
    EXPECT_EQ(sizeof(DOMNodeType), sizeof(int));
    EXPECT_EQ(DOMNodeType(), DOMNodeType::UNDEFINED_NODE);
    EXPECT_TRUE(std::is_copy_constructible_v<DOMNodeType>);
    EXPECT_TRUE(std::is_copy_assignable_v<DOMNodeType>);
}

TEST(DOMNodeType, ComparesWithItsLikeAndWithItsEnumeration) {
    const DOMNodeType text(DOMNodeType::TEXT_NODE);
    const DOMNodeType copy = text;
    EXPECT_TRUE(text == copy);
    EXPECT_TRUE(text == DOMNodeType::TEXT_NODE);
    EXPECT_TRUE(DOMNodeType::TEXT_NODE == text);
    EXPECT_FALSE(text == DOMNodeType::COMMENT_NODE);
    EXPECT_TRUE(text != DOMNodeType::COMMENT_NODE);
    EXPECT_TRUE(text != DOMNodeType());
}

}  // namespace
