// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ReaderSettings;
using Xml::XmlNodeType;

TEST(XmlTextReaderAttribute, IsFoundByIndexByNameAndByNamespace) {
    DocumentReader reader("<a x='1' xmlns:p='urn:p' p:x='2' p:y='3' xmlns='urn:d'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->AttributeCount(), 5);
    EXPECT_TRUE(reader->HasAttributes());

    EXPECT_EQ(reader->GetAttribute(0), "1");
    EXPECT_EQ(reader->GetAttribute(3), "3");
    EXPECT_EQ(reader->GetAttribute(4), "urn:d");
    EXPECT_EQ(reader->GetAttribute("x"), "1");
    EXPECT_EQ(reader->GetAttribute("p:x"), "2");
    EXPECT_EQ(reader->GetAttribute("xmlns:p"), "urn:p");
    EXPECT_EQ(reader->GetAttribute("xmlns"), "urn:d");
    EXPECT_EQ(reader->GetAttribute("x", "urn:p"), "2");
    EXPECT_EQ(reader->GetAttribute("y", "urn:p"), "3");
    EXPECT_EQ(reader->GetAttribute("x", ""), "1");
}

TEST(XmlTextReaderAttribute, IsEmptyWhenThereIsNone) {
    DocumentReader reader("<a x='1' xmlns:p='urn:p' p:y='2'/>");
    reader.ReadNodes(1);
    for (const int index : {-1, 3, 4, 1000, -1000})
        EXPECT_EQ(reader->GetAttribute(index), "");
    for (const char* name : {"", "X", "xx", "y", "p", "p:", "p:x", ":x", "urn:p:y"}) {
        EXPECT_EQ(reader->GetAttribute(name), "") << name;
    }
    EXPECT_EQ(reader->GetAttribute("x", "urn:p"), "");
    EXPECT_EQ(reader->GetAttribute("y", ""), "");
    EXPECT_EQ(reader->GetAttribute("y", "urn"), "");
    EXPECT_EQ(reader->GetAttribute("p:y", "urn:p"), "");
}

TEST(XmlTextReaderAttribute, DeclarationsHaveNoNamespaceToBeFoundBy) {
    DocumentReader reader("<a xmlns:p='urn:p' xmlns='urn:d'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->GetAttribute("p", "http://www.w3.org/2000/xmlns/"), "");
    EXPECT_EQ(reader->GetAttribute("xmlns", "http://www.w3.org/2000/xmlns/"), "");
    EXPECT_EQ(reader->GetAttribute("xmlns", ""), "");
}

TEST(XmlTextReaderAttribute, NothingIsFoundByNamespaceWhenTheyAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader("<a xmlns:p='urn:p' p:x='1' y='2'/>", settings);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->GetAttribute("p:x"), "1");
    EXPECT_EQ(reader->GetAttribute("x", "urn:p"), "");
    EXPECT_EQ(reader->GetAttribute("y", ""), "");
}

TEST(XmlTextReaderAttribute, WalkInBothDirections) {
    DocumentReader reader("<a x='1' y=\"2\" z='3'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->GetCurrentAttributeIndex(), 0);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Attribute);
    EXPECT_EQ(reader->Name(), "x");
    EXPECT_EQ(reader->Value(), "1");
    EXPECT_EQ(reader->QuoteChar(), '\'');
    EXPECT_EQ(reader->Depth(), 2);
    EXPECT_FALSE(reader->IsEmptyElement());
    EXPECT_EQ(reader->AttributeCount(), 3);

    ASSERT_TRUE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "y");
    EXPECT_EQ(reader->QuoteChar(), '"');
    EXPECT_EQ(reader->GetCurrentAttributeIndex(), 1);
    ASSERT_TRUE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->Name(), "z");
    EXPECT_EQ(reader->GetCurrentAttributeIndex(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_EQ(reader->Name(), "z");
    }

    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->Name(), "x");
    ASSERT_TRUE(reader->MoveToElement());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    EXPECT_EQ(reader->Name(), "a");
    EXPECT_EQ(reader->Depth(), 1);
    EXPECT_TRUE(reader->IsEmptyElement());
    EXPECT_FALSE(reader->MoveToElement());
}

// Deliberate: on the element itself MoveToNextAttribute() does not go to the first attribute.
TEST(XmlTextReaderAttribute, MoveToNextAttributeOnTheElementReturnsFalse) {
    DocumentReader reader("<a x='1'/>");
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    ASSERT_TRUE(reader->MoveToElement());
    EXPECT_FALSE(reader->MoveToNextAttribute());
}

TEST(XmlTextReaderAttribute, AnElementWithoutAttributesIsNotLeft) {
    DocumentReader reader("<a/>");
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->HasAttributes());
    EXPECT_FALSE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
}

TEST(XmlTextReaderAttribute, OtherNodesHaveNone) {
    DocumentReader reader("<!--c--><?p?><a x='1'>t<![CDATA[d]]>&e;</a>");
    while (reader->Read()) {
        if (reader->NodeType() == XmlNodeType::Element) continue;
        SCOPED_TRACE(reader->NodeType().ToString());
        EXPECT_EQ(reader->AttributeCount(), 0);
        EXPECT_FALSE(reader->HasAttributes());
        EXPECT_EQ(reader->GetAttribute(0), "");
        EXPECT_FALSE(reader->MoveToFirstAttribute());
        EXPECT_FALSE(reader->MoveToNextAttribute());
        EXPECT_FALSE(reader->MoveToElement());
    }
}

TEST(XmlTextReaderAttribute, ReadFromAnAttributeGoesOnAfterTheElement) {
    DocumentReader reader("<a x='1'><b y='2'/>t</a>");
    for (const char* type : {"Element", "Element", "Text", "EndElement"}) {
        ASSERT_TRUE(reader->Read());
        EXPECT_STREQ(reader->NodeType().ToString(), type);
        reader->MoveToFirstAttribute();
    }
    EXPECT_FALSE(reader->Read());
    EXPECT_TRUE(reader->Eof());
}

TEST(XmlTextReaderAttribute, TheAttributesOfOneElementAreNotThoseOfTheNext) {
    DocumentReader reader("<a x='1' y='2'><b y='3'/><c/><d x='4' z='5'/></a>");
    const struct {
        int count;
        const char* x;
        const char* y;
        const char* z;
    } kExpected[] = {{2, "1", "2", ""}, {1, "", "3", ""}, {0, "", "", ""}, {2, "4", "", "5"}};
    for (const auto& expected : kExpected) {
        reader.ReadNodes(1);
        SCOPED_TRACE(reader->Name());
        EXPECT_EQ(reader->AttributeCount(), expected.count);
        EXPECT_EQ(reader->GetAttribute("x"), expected.x);
        EXPECT_EQ(reader->GetAttribute("y"), expected.y);
        EXPECT_EQ(reader->GetAttribute("z"), expected.z);
        EXPECT_EQ(reader->GetAttribute("x", ""), expected.x);
    }
}

TEST(XmlTextReaderAttribute, AnyNumberIsFound) {
    for (const int count : {1, 2, 8, 15, 16, 17, 18, 31, 32, 33, 100, 1000}) {
        std::string document = "<a";
        for (int i = 0; i < count; ++i) {
            document += " n" + std::to_string(i) + "='v" + std::to_string(i) + "'";
        }
        DocumentReader reader(document + "/>");
        reader.ReadNodes(1);
        ASSERT_EQ(reader->AttributeCount(), count);
        for (int i = 0; i < count; ++i) {
            const std::string value = "v" + std::to_string(i);
            EXPECT_EQ(reader->GetAttribute(i), value);
            EXPECT_EQ(reader->GetAttribute("n" + std::to_string(i)), value);
            EXPECT_EQ(reader->GetAttribute("n" + std::to_string(i), ""), value);
        }
        EXPECT_EQ(reader->GetAttribute("n" + std::to_string(count)), "");
    }
}

// The first attribute that repeats an earlier one is named by its place, among any number.
TEST(XmlTextReaderAttribute, ADuplicateIsFoundAmongAnyNumber) {
    for (const int count : {2, 3, 16, 17, 18, 33, 100, 1000}) {
        for (const int original : {0, (count - 1) / 2, count - 2}) {
            std::string document = "<a\n";
            for (int i = 0; i < count - 1; ++i)
                document += "n" + std::to_string(i) + "=''\n";
            document += "  n" + std::to_string(original) + "=''/>";
            DocumentReader reader(document);
            EXPECT_THROW_TEXT(reader->Read(), "Duplicate attribute", count + 1, 3);
        }
    }
}

TEST(XmlTextReaderAttribute, ADuplicateByNamespaceIsFoundAmongAnyNumber) {
    for (const int count : {2, 3, 16, 17, 18, 33, 100, 1000}) {
        std::string document = "<r xmlns:p='urn' xmlns:q='urn'><a\n";
        for (int i = 0; i < count - 1; ++i)
            document += "p:n" + std::to_string(i) + "=''\n";
        document += "  q:n0=''/></r>";
        DocumentReader reader(document);
        reader.ReadNodes(1);
        EXPECT_THROW_TEXT(reader->Read(), "Duplicate attribute", count + 1, 3);
    }
}

TEST(XmlTextReaderAttribute, NoDuplicateAcrossNamespaces) {
    for (const char* document : {
             "<a x='' p:x=''/>",
             "<a p:x='' q:y=''/>",
             "<a xmlns:p='urn' p:x='' q:x=''/>",
             "<a xmlns:p='urn' x='' p:x=''/>",
             "<a xmlns='urn' xmlns:p='urn' x='' p:x=''/>",
             "<a xmlns='' xmlns:xmlns=''/>",
             "<a x='' X=''/>",
             "<a xmlns:p='urn:1' xmlns:q='urn:2' p:x='' q:x='' x=''/>",
         }) {
        SCOPED_TRACE(document);
        DocumentReader reader(document);
        EXPECT_NO_THROW(reader.ReadAll());
    }
}

TEST(XmlTextReaderAttribute, PrefixesOfOneNamespaceDoNotMatterWhenNamespacesAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader("<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>", settings);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->GetAttribute("p:x"), "1");
    EXPECT_EQ(reader->GetAttribute("q:x"), "2");
}

TEST(XmlTextReaderAttribute, IsFoundByNamespaceInTheSameWayAmongAnyNumber) {
    for (const int count : {0, 14, 15, 16, 17, 18, 100, 1000}) {
        std::string document = "<r xmlns:p='a:b' xmlns:q='a'><a u:x='1' x='3' p:c='4' q:d='5'";
        for (int i = 0; i < count; ++i)
            document += " n" + std::to_string(i) + "=''";
        DocumentReader reader(document + "/></r>");
        reader.ReadNodes(2);
        SCOPED_TRACE(count);
        EXPECT_EQ(reader->GetAttribute("c", "a:b"), "4");
        EXPECT_EQ(reader->GetAttribute("d", "a"), "5");
        // No local name holds a colon.
        EXPECT_EQ(reader->GetAttribute("b:c", "a"), "");
        EXPECT_EQ(reader->GetAttribute("a:b:c", ""), "");
        // Without a namespace there may be several, of which the first counts.
        EXPECT_EQ(reader->GetAttribute("x", ""), "1");
        EXPECT_EQ(reader->GetAttribute("x"), "3");
        EXPECT_EQ(reader->GetAttribute("u:x"), "1");
    }
}

}  // namespace
