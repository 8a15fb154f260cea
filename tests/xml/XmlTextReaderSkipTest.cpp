// SPDX-License-Identifier: MIT
//
// Skipping elements.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EveryNode.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using support::NodeAndPlace;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

TEST(XmlTextReaderSkip, GoesFromAnElementToTheContentBehindIt) {
    const struct {
        const char* document;  // Skip() is called on its second node
        const char* after;
    } kCases[] = {
        {"<r><a>t</a>u</r>", "Text \"u\""},
        {"<r><a></a><b/></r>", "Element b"},
        {"<r><a><b><c/>t</b><!--c--></a><d/></r>", "Element d"},
        {"<r><a><a><a>t</a></a></a><![CDATA[d]]></r>", "CDATA \"d\""},
        {"<r><a>t</a> <!--c--><?p?>\n<b/></r>", "Element b"},
        {"<r><a>t</a>&e;</r>", "EntityReference e"},
        {"<r><a>&e;<b>&e;</b>&e;</a>u</r>", "Text \"u\""},
        {"<r><a>t</a></r>", "EndElement r"},
        {"<r><a>t</a> <!--c--></r>", "EndElement r"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader(c.document);
        reader.ReadNodes(2);
        reader->Skip();
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderSkip, FromAnAttributeSkipsTheElement) {
    for (const int index : {0, 1}) {
        DocumentReader reader("<r><a x='1' y='2'><b/>t</a>u</r>");
        reader.ReadNodes(2);
        reader->MoveToAttribute(index);
        reader->Skip();
        EXPECT_EQ(NodeText(*reader), "Text \"u\"");
    }
}

// Deliberate: an empty element has no end tag of its own, so it is its parent's that is gone
// behind.
TEST(XmlTextReaderSkip, OfAnEmptyLastChildGoesBehindTheEndTagOfItsParent) {
    DocumentReader reader("<r><a><b/></a>t</r>");
    reader.ReadNodes(3);
    EXPECT_EQ(NodeText(*reader), "Element b");
    reader->Skip();
    EXPECT_EQ(NodeText(*reader), "Text \"t\"");

    DocumentReader onAttribute("<r><a><b x=''/></a> <c/></r>");
    onAttribute.ReadNodes(3);
    ASSERT_TRUE(onAttribute->MoveToFirstAttribute());
    onAttribute->Skip();
    EXPECT_EQ(NodeText(*onAttribute), "Element c");
}

TEST(XmlTextReaderSkip, OfAnEmptyElementGoesToTheNextNodeWhateverItIs) {
    const struct {
        const char* document;
        const char* after;
    } kCases[] = {
        {"<r><a/>t</r>", "Text \"t\""},
        {"<r><a/> <b/></r>", "Whitespace \" \""},
        {"<r><a/><!--c--><b/></r>", "Comment \"c\""},
        {"<r><a/><b>t</b></r>", "Element b"},
        {"<r><a/>&e;</r>", "EntityReference e"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader(c.document);
        reader.ReadNodes(2);
        reader->Skip();
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

// Deliberate: from other nodes it goes to the next one, and behind that when it is an end tag.
TEST(XmlTextReaderSkip, OfAnotherNodeGoesToTheNextAndBehindAnEndTag) {
    const struct {
        const char* document;
        int nodes;  // Skip() is called on this one
        const char* from;
        const char* after;
    } kCases[] = {
        {"<r><a>t</a>u</r>", 3, "Text \"t\"", "Text \"u\""},
        {"<r><a>t</a> <b/></r>", 3, "Text \"t\"", "Element b"},
        {"<r><a>t<b>u</b></a></r>", 3, "Text \"t\"", "Element b"},
        {"<r><a>t<!--c--></a></r>", 3, "Text \"t\"", "Comment \"c\""},
        {"<r><a><!--c--></a>u</r>", 3, "Comment \"c\"", "Text \"u\""},
        {"<r><a> </a>u</r>", 3, "Whitespace \" \"", "Text \"u\""},
        {"<r><a><?p?>t</a>u</r>", 3, "ProcessingInstruction p \"\"", "Text \"t\""},
        {"<r><a>&e;</a>u</r>", 3, "EntityReference e", "Text \"u\""},
        {"<r><a><![CDATA[d]]>&e;</a>u</r>", 3, "CDATA \"d\"", "EntityReference e"},
        // An end tag has the depth of its element.
        {"<r><a>t</a>u</r>", 4, "EndElement a", "Text \"u\""},
        {"<r><a>t</a><b>u</b></r>", 4, "EndElement a", "Element b"},
        {"<s><r><a>t</a></r>u</s>", 5, "EndElement a", "Text \"u\""},
        // Before the root.
        {"<!--c--><a>t</a>", 1, "Comment \"c\"", "Element a"},
        {"<?xml version='1.0'?> <a/>", 1, "XmlDeclaration xml \"version='1.0'\"",
         "Whitespace \" \""},
        {"<!DOCTYPE a><!--c--><a/>", 1, "DocumentType a \"\"", "Comment \"c\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader(c.document);
        reader.ReadNodes(c.nodes);
        EXPECT_EQ(NodeText(*reader), c.from);
        reader->Skip();
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderSkip, OfTheRootEndsTheDocument) {
    for (const char* document : {"<a/>", "<a></a>", "<a>t<b/></a>", "<a>t</a> <!--c-->\n"}) {
        SCOPED_TRACE(document);
        DocumentReader reader(document);
        reader.ReadNodes(1);
        reader->Skip();
        EXPECT_EQ(reader->NodeType(), XmlNodeType::None);
        EXPECT_TRUE(reader->Eof());
    }
}

// Before the first node the depth is 0, and every node is deeper.
TEST(XmlTextReaderSkip, BeforeTheFirstNodeSkipsTheDocument) {
    DocumentReader reader("<!--c--><a>t<b/></a><?p?>");
    reader->Skip();
    EXPECT_EQ(reader->NodeType(), XmlNodeType::None);
    EXPECT_TRUE(reader->Eof());
}

TEST(XmlTextReaderSkip, PassesOnWhatIsWrongInBetween) {
    for (const bool plain : {false, true}) {
        DocumentReader reader("<r><a><b></c></a></r>");
        reader.ReadNodes(2);
        EXPECT_THROW_FULL(plain ? static_cast<void>(reader->SkipElement()) : reader->Skip(),
                          "End tag 'c' doesn't match start tag 'b'", "</c>", 1, 13);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
        EXPECT_FALSE(reader->Read());
    }
}

TEST(XmlTextReaderSkip, TakesEntitiesAsTheyAreRead) {
    const std::string document =
        "<!DOCTYPE r [<!ENTITY m '<i>M</i>'><!ENTITY t 'T'>]><r><a>&m;<b>&t;&m;</b></a>u</r>";
    for (const auto entities :
         {Xml::XmlEntityHandling::ExpandNothing, Xml::XmlEntityHandling::ExpandCharEntities,
          Xml::XmlEntityHandling::ExpandEntities}) {
        SCOPED_TRACE(Xml::XmlEntityHandling(entities).ToString());
        ReaderSettings settings;
        settings.entities = entities;
        for (const bool plain : {false, true}) {
            DocumentReader reader(document, settings);
            reader.ReadNodes(3);
            EXPECT_EQ(NodeText(*reader), "Element a");
            plain ? static_cast<void>(reader->SkipElement()) : reader->Skip();
            EXPECT_EQ(NodeText(*reader), "Text \"u\"");
        }
    }
}

TEST(XmlTextReaderSkip, OfAnElementInAnEntityStaysInTheEntity) {
    DocumentReader reader("<!DOCTYPE r [<!ENTITY m '<i>M<j/></i>n'>]><r>&m;u</r>");
    reader.ReadNodes(3);
    reader->ResolveEntity();
    reader.ReadNodes(1);
    EXPECT_EQ(NodeText(*reader), "Element i");
    reader->Skip();
    EXPECT_EQ(NodeText(*reader), "Text \"n\"");
    reader->Skip();
    EXPECT_EQ(NodeText(*reader), "EndEntity m");
    reader->Skip();
    EXPECT_EQ(NodeText(*reader), "Text \"u\"");
}

// SkipElement: to the node behind the element, nothing more.

TEST(XmlTextReaderSkip, SkipElementGoesToTheNodeBehindTheElement) {
    const struct {
        const char* document;  // SkipElement() is called on its second node
        const char* after;
    } kCases[] = {
        {"<r><a>t</a>u</r>", "Text \"u\""},
        {"<r><a></a> <b/></r>", "Whitespace \" \""},
        {"<r><a><b><c/>t</b><!--c--></a><!--d--></r>", "Comment \"d\""},
        {"<r><a/><b/></r>", "Element b"},
        {"<r><a/></r>", "EndElement r"},
        {"<r><a></a></r>", "EndElement r"},
        {"<r><a><a/></a></r>", "EndElement r"},
        {"<r><a>&e;</a>&e;</r>", "EntityReference e"},
        {"<r><a>t</a><?p?></r>", "ProcessingInstruction p \"\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader(c.document);
        reader.ReadNodes(2);
        EXPECT_TRUE(reader->SkipElement());
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderSkip, SkipElementFromAnAttributeSkipsTheElement) {
    for (const char* document : {"<r><a x='1' y='2'><b/>t</a>u</r>", "<r><a x='1' y='2'/>u</r>"}) {
        SCOPED_TRACE(document);
        DocumentReader reader(document);
        reader.ReadNodes(2);
        ASSERT_TRUE(reader->MoveToAttribute("y"));
        EXPECT_TRUE(reader->SkipElement());
        EXPECT_EQ(NodeText(*reader), "Text \"u\"");
    }
}

TEST(XmlTextReaderSkip, SkipElementOfTheRootEndsTheDocument) {
    for (const char* document : {"<a/>", "<a x='1'>t<b/></a>"}) {
        SCOPED_TRACE(document);
        DocumentReader reader(document);
        reader.ReadNodes(1);
        EXPECT_FALSE(reader->SkipElement());
        EXPECT_TRUE(reader->Eof());
        EXPECT_FALSE(reader->SkipElement());
    }
    DocumentReader reader("<a>t</a><!--c-->");
    reader.ReadNodes(1);
    EXPECT_TRUE(reader->SkipElement());
    EXPECT_EQ(NodeText(*reader), "Comment \"c\"");
}

TEST(XmlTextReaderSkip, SkipElementOnOtherNodesReadsTheNext) {
    for (const XmlNodeType type : support::kEveryNodeType) {
        if (type == XmlNodeType::Element || type == XmlNodeType::Attribute) continue;
        SCOPED_TRACE(type.ToString());
        DocumentReader reader(support::kEveryNode);
        DocumentReader other(support::kEveryNode);
        support::ReadToType(*reader, type);
        support::ReadToType(*other, type);
        EXPECT_TRUE(reader->SkipElement());
        other.ReadNodes(1);
        EXPECT_EQ(NodeAndPlace(*reader), NodeAndPlace(*other));
    }
    DocumentReader reader("<a/>");
    EXPECT_TRUE(reader->SkipElement());
    EXPECT_EQ(NodeText(*reader), "Element a");
}

// Every element of a document, skipped in either way, leads to the same nodes as reading does.
TEST(XmlTextReaderSkip, LeadsToTheNodesThatReadingLeadsTo) {
    const std::string document =
        "<r>\n<a><b x='1'>t<c/></b><b/>u</a><!--c--><d/><e>\n<f></f></e>&g;<h>i</h></r><!--e-->";
    struct Node {
        std::string text;
        XmlNodeType type;
        int depth;
        bool isEmpty;
    };
    std::vector<Node> nodes;
    DocumentReader all(document);
    while (all->Read())
        nodes.push_back({NodeAndPlace(*all), all->NodeType(), all->Depth(), all->IsEmptyElement()});

    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (nodes[i].type != XmlNodeType::Element) continue;
        SCOPED_TRACE(nodes[i].text);
        std::size_t end = i;  // the last node of the element
        if (!nodes[i].isEmpty) {
            do {
                ++end;
            } while (nodes[end].depth > nodes[i].depth);
        }
        DocumentReader reader(document);
        reader.ReadNodes(static_cast<int>(i) + 1);
        EXPECT_TRUE(reader->SkipElement());
        EXPECT_EQ(NodeAndPlace(*reader), nodes[end + 1].text);
    }
}

}  // namespace
