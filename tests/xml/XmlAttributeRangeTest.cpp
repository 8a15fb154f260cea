// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlAttributeRange.h>
#include <espalier/xml/XmlAttributeRef.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EveryNode.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using support::DocumentReader;
using support::NodeAndPlace;
using support::ReaderSettings;
using Xml::XmlAttributeRange;
using Xml::XmlAttributeRef;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

static_assert(std::input_iterator<XmlAttributeRange::Iterator>);
static_assert(std::sentinel_for<XmlAttributeRange::Iterator, XmlAttributeRange::Iterator>);
static_assert(std::is_copy_constructible_v<XmlAttributeRef>);
static_assert(std::is_copy_assignable_v<XmlAttributeRef>);

std::string Describe(const XmlAttributeRef& attribute) {
    return std::to_string(attribute.Index()) + " " + attribute.Name().str() + " (" +
           attribute.Prefix().str() + "|" + attribute.LocalName().str() + "|" +
           attribute.NamespaceURI().str() + ") " + attribute.Value().str();
}

std::vector<std::string> Describe(const XmlAttributeRange& attributes) {
    std::vector<std::string> all;
    for (const XmlAttributeRef attribute : attributes)
        all.push_back(Describe(attribute));
    return all;
}

constexpr char kDocument[] =
    "<a x='1' xmlns:p='urn:p' p:x=\"2\" xmlns='urn:d' q:y='' xml:lang='en'>t</a>";

const std::vector<std::string>& Expected() {
    static const std::vector<std::string> all = {
        "0 x (|x|) 1",         "1 xmlns:p (xmlns|p|) urn:p",
        "2 p:x (p|x|urn:p) 2", "3 xmlns (|xmlns|) urn:d",
        "4 q:y (q|y|) ",       "5 xml:lang (xml|lang|http://www.w3.org/XML/1998/namespace) en",
    };
    return all;
}

TEST(XmlAttributeRange, VisitsTheAttributesInDocumentOrder) {
    DocumentReader reader(kDocument);
    reader.ReadNodes(1);
    const XmlAttributeRange attributes = reader->Attributes();
    EXPECT_EQ(attributes.size(), 6);
    EXPECT_FALSE(attributes.empty());
    EXPECT_EQ(Describe(attributes), Expected());
    EXPECT_EQ(Describe(attributes), Expected());
}

TEST(XmlAttributeRange, DoesNotMoveTheReader) {
    DocumentReader reader(kDocument);
    reader.ReadNodes(1);
    for (int i = -1; i < 6; ++i) {
        if (i >= 0) reader->MoveToAttribute(i);
        const std::string before = NodeAndPlace(*reader);
        const int index = reader->GetCurrentAttributeIndex();
        EXPECT_EQ(Describe(reader->Attributes()), Expected());
        EXPECT_EQ(NodeAndPlace(*reader), before);
        EXPECT_EQ(reader->GetCurrentAttributeIndex(), index);
    }
    EXPECT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
}

TEST(XmlAttributeRange, ToldApartByNameAndIndexWhenNamespacesAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader(kDocument, settings);
    reader.ReadNodes(1);
    const std::vector<std::string> expected = {
        "0 x (|x|) 1",     "1 xmlns:p (|xmlns:p|) urn:p",
        "2 p:x (|p:x|) 2", "3 xmlns (|xmlns|) urn:d",
        "4 q:y (|q:y|) ",  "5 xml:lang (|xml:lang|) en",
    };
    EXPECT_EQ(Describe(reader->Attributes()), expected);
}

TEST(XmlAttributeRange, TellsWhatTheMovesTell) {
    for (const auto entities :
         {Xml::XmlEntityHandling::ExpandNothing, Xml::XmlEntityHandling::ExpandCharEntities,
          Xml::XmlEntityHandling::ExpandEntities}) {
        for (const bool normalization : {false, true}) {
            ReaderSettings settings;
            settings.entities = entities;
            settings.normalization = normalization;
            DocumentReader reader(
                "<!DOCTYPE a [<!ENTITY e 'E'>]><a x='1&e;&#9;&lt;' p:y='\r\n2\t' xmlns:p='u'"
                " z='\n'/>",
                settings);
            reader.ReadNodes(2);
            std::vector<std::string> moved;
            for (bool more = reader->MoveToFirstAttribute(); more;
                 more = reader->MoveToNextAttribute()) {
                moved.push_back(std::to_string(reader->GetCurrentAttributeIndex()) + " " +
                                reader->Name().str() + " (" + reader->Prefix().str() + "|" +
                                reader->LocalName().str() + "|" + reader->NamespaceURI().str() +
                                ") " + reader->Value().str());
            }
            ASSERT_EQ(moved.size(), 4U);
            EXPECT_EQ(Describe(reader->Attributes()), moved);

            // And the same when nobody has asked for the values before.
            DocumentReader fresh(
                "<!DOCTYPE a [<!ENTITY e 'E'>]><a x='1&e;&#9;&lt;' p:y='\r\n2\t' xmlns:p='u'"
                " z='\n'/>",
                settings);
            fresh.ReadNodes(2);
            EXPECT_EQ(Describe(fresh->Attributes()), moved);
        }
    }
}

TEST(XmlAttributeRange, HasAsManyAsTheNode) {
    DocumentReader reader(support::kEveryNode);
    EXPECT_TRUE(reader->Attributes().empty());
    while (support::ReadResolving(*reader)) {
        SCOPED_TRACE(NodeAndPlace(*reader));
        const XmlAttributeRange attributes = reader->Attributes();
        EXPECT_EQ(attributes.size(), reader->AttributeCount());
        EXPECT_EQ(attributes.empty(), !reader->HasAttributes());
        EXPECT_EQ(std::distance(attributes.begin(), attributes.end()), attributes.size());
        for (const XmlAttributeRef attribute : attributes) {
            EXPECT_EQ(attribute.Value(), reader->GetAttribute(attribute.Index()));
            EXPECT_EQ(attribute.Value(), reader->GetAttribute(attribute.Name().view()));
        }
    }
    EXPECT_TRUE(reader->Attributes().empty());
    reader->Close();
    EXPECT_TRUE(reader->Attributes().empty());
}

TEST(XmlAttributeRange, ShowsPseudoAttributes) {
    DocumentReader reader(support::kEveryNode);
    reader.ReadNodes(1);
    EXPECT_EQ(
        Describe(reader->Attributes()),
        (std::vector<std::string>{"0 version (|version|) 1.0", "1 encoding (|encoding|) UTF-8"}));
    reader.ReadNodes(2);
    ASSERT_EQ(reader->NodeType(), XmlNodeType::DocumentType);
    EXPECT_EQ(
        Describe(reader->Attributes()),
        (std::vector<std::string>{"0 PUBLIC (|PUBLIC|) -//E//D", "1 SYSTEM (|SYSTEM|) e.dtd"}));
}

TEST(XmlAttributeRange, WorksWithAlgorithms) {
    DocumentReader reader(kDocument);
    reader.ReadNodes(1);
    const XmlAttributeRange attributes = reader->Attributes();
    const auto found =
        std::find_if(attributes.begin(), attributes.end(),
                     [](const XmlAttributeRef& attribute) { return attribute.Name() == "p:x"; });
    ASSERT_FALSE(found == attributes.end());
    EXPECT_EQ((*found).Value(), "2");
    EXPECT_EQ((*found).Index(), 2);
    reader->MoveToAttribute((*found).Index());
    EXPECT_EQ(reader->Value(), "2");
    EXPECT_EQ(std::count_if(attributes.begin(), attributes.end(),
                            [](const XmlAttributeRef& a) { return a.Prefix().empty(); }),
              2);
}

TEST(XmlAttributeRange, StepsInBothForms) {
    DocumentReader reader("<a x='1' y='2'/>");
    reader.ReadNodes(1);
    XmlAttributeRange::Iterator at = reader->Attributes().begin();
    const XmlAttributeRange::Iterator end = reader->Attributes().end();
    EXPECT_FALSE(at == end);
    EXPECT_EQ((*at++).Name(), "x");
    EXPECT_EQ((*at).Name(), "y");
    EXPECT_TRUE(++at == end);
    EXPECT_FALSE(at != end);
}

TEST(XmlAttributeRange, AReferenceStaysGoodWhileTheReaderMovesAmongTheAttributes) {
    DocumentReader reader(kDocument);
    reader.ReadNodes(1);
    const std::vector<XmlAttributeRef> kept(reader->Attributes().begin(),
                                            reader->Attributes().end());
    ASSERT_EQ(kept.size(), 6U);
    ASSERT_TRUE(reader->MoveToAttribute("p:x"));
    ASSERT_TRUE(reader->MoveToElement());
    for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_EQ(Describe(kept[i]), Expected()[i]);
}

TEST(XmlAttributeRange, OfOneElementAfterTheOther) {
    DocumentReader reader("<a x='1' y='2'><b/><c z='3'/></a>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Attributes().size(), 2);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Attributes().size(), 0);
    EXPECT_TRUE(reader->Attributes().begin() == reader->Attributes().end());
    reader.ReadNodes(1);
    EXPECT_EQ(Describe(reader->Attributes()), std::vector<std::string>{"0 z (|z|) 3"});
    reader.ReadNodes(1);
    EXPECT_TRUE(reader->Attributes().empty());
}

}  // namespace
