// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlNodeType.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Xml::XmlNodeType;

const struct {
    int number;
    XmlNodeType::XML_NODE_TYPE value;
    const char* name;
} kValues[] = {
    {0, XmlNodeType::None, "None"},
    {1, XmlNodeType::Element, "Element"},
    {2, XmlNodeType::Attribute, "Attribute"},
    {3, XmlNodeType::Text, "Text"},
    {4, XmlNodeType::CDATA, "CDATA"},
    {5, XmlNodeType::EntityReference, "EntityReference"},
    {6, XmlNodeType::Entity, "Entity"},
    {7, XmlNodeType::ProcessingInstruction, "ProcessingInstruction"},
    {8, XmlNodeType::Comment, "Comment"},
    {9, XmlNodeType::Document, "Document"},
    {10, XmlNodeType::DocumentType, "DocumentType"},
    {11, XmlNodeType::DocumentFragment, "DocumentFragment"},
    {12, XmlNodeType::Notation, "Notation"},
    {13, XmlNodeType::XmlDeclaration, "XmlDeclaration"},
    {14, XmlNodeType::EndElement, "EndElement"},
    {15, XmlNodeType::EndEntity, "EndEntity"},
    {16, XmlNodeType::SignificantWhitespace, "SignificantWhitespace"},
    {17, XmlNodeType::Whitespace, "Whitespace"},
};

TEST(XmlNodeType, NumbersAndNames) {
    for (const auto& v : kValues) {
        SCOPED_TRACE(v.name);
        EXPECT_EQ(static_cast<int>(v.value), v.number);
        EXPECT_STREQ(XmlNodeType(v.value).ToString(), v.name);
    }
}

TEST(XmlNodeType, AnyOtherNumberHasNoName) {
    for (const int number : {18, 19, 31}) {
        EXPECT_STREQ(XmlNodeType(static_cast<XmlNodeType::XML_NODE_TYPE>(number)).ToString(), "?");
    }
}

TEST(XmlNodeType, HoldsNoneByDefault) { EXPECT_EQ(XmlNodeType(), XmlNodeType::None); }

TEST(XmlNodeType, AssignsFromTheClassAndFromTheEnumeration) {
    XmlNodeType type;
    type = XmlNodeType::Text;
    EXPECT_EQ(type, XmlNodeType::Text);
    const XmlNodeType other(XmlNodeType::Comment);
    type = other;
    EXPECT_EQ(type, other);
}

// The comparisons and conversions hold at compile time and are not ambiguous in any order.
static_assert(XmlNodeType(XmlNodeType::Text) == XmlNodeType(XmlNodeType::Text));
static_assert(XmlNodeType(XmlNodeType::Text) == XmlNodeType::Text);
static_assert(XmlNodeType::Text == XmlNodeType(XmlNodeType::Text));
static_assert(XmlNodeType(XmlNodeType::Text) != XmlNodeType(XmlNodeType::CDATA));
static_assert(XmlNodeType(XmlNodeType::Text) != XmlNodeType::CDATA);
static_assert(XmlNodeType::CDATA != XmlNodeType(XmlNodeType::Text));
static_assert(std::is_convertible_v<XmlNodeType, XmlNodeType::XML_NODE_TYPE>);
static_assert(std::is_convertible_v<XmlNodeType::XML_NODE_TYPE, XmlNodeType>);

TEST(XmlNodeType, ServesInASwitch) {
    const XmlNodeType type(XmlNodeType::EndElement);
    switch (type) {
    case XmlNodeType::EndElement: SUCCEED(); break;
    default: FAIL();
    }
}

}  // namespace
