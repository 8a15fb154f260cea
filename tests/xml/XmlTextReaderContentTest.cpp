// SPDX-License-Identifier: MIT
//
// Moving to content, checking and consuming tags, collecting text.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EveryNode.h"
#include "support/ExpectThrow.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <string_view>

namespace {

using support::DocumentReader;
using support::kEveryNode;
using support::kEveryNodeType;
using support::NodeAndPlace;
using support::NodesFromHere;
using support::NodeText;
using support::ReaderSettings;
using support::ReadToType;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

ReaderSettings With(Xml::XmlEntityHandling entities) {
    ReaderSettings settings;
    settings.entities = entities;
    return settings;
}

// Returns a reader on the node number `nodes` of a document.
struct At : DocumentReader {
    At(int nodes, const std::string& document, const ReaderSettings& settings = {})
        : DocumentReader(document, settings) {
        ReadNodes(nodes);
    }
};

// MoveToContent.

TEST(XmlTextReaderContent, MoveToContentStaysOnContentAndSkipsTheRest) {
    const struct {
        XmlNodeType::XML_NODE_TYPE from;
        const char* to;
    } kCases[] = {
        {XmlNodeType::XmlDeclaration, "Element r"},
        {XmlNodeType::Whitespace, "Element r"},
        {XmlNodeType::DocumentType, "Element r"},
        {XmlNodeType::Comment, "Element r"},
        {XmlNodeType::ProcessingInstruction, "Element r"},
        {XmlNodeType::Element, "Element r"},
        {XmlNodeType::Attribute, "Element r"},
        {XmlNodeType::Text, "Text \"t\""},
        {XmlNodeType::CDATA, "CDATA \"d\""},
        {XmlNodeType::EntityReference, "EntityReference e"},
        {XmlNodeType::EndEntity, "EndEntity e"},
        {XmlNodeType::SignificantWhitespace, "EndElement b"},
        {XmlNodeType::EndElement, "EndElement b"},
    };
    EXPECT_EQ(std::size(kCases), std::size(kEveryNodeType));
    for (const auto& c : kCases) {
        SCOPED_TRACE(XmlNodeType(c.from).ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, c.from);
        for (int i = 0; i < 2; ++i) {
            const XmlNodeType type = reader->MoveToContent();
            EXPECT_EQ(type, reader->NodeType());
            EXPECT_EQ(NodeText(*reader), c.to);
        }
    }
}

TEST(XmlTextReaderContent, MoveToContentPassesOverManyNodesInOneCall) {
    At reader(1, "<a><!--1--> <?p?>\n<!--2-->t</a><!--3--> <?q?>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->MoveToContent(), XmlNodeType::Text);
    reader.ReadNodes(2);
    EXPECT_EQ(NodeText(*reader), "Comment \"3\"");
    EXPECT_EQ(reader->MoveToContent(), XmlNodeType::None);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
}

TEST(XmlTextReaderContent, MoveToContentPassesErrorsOn) {
    At reader(2, "<a><!--1--> <b></a>");
    EXPECT_EQ(reader->MoveToContent(), XmlNodeType::Element);
    EXPECT_THROW_TEXT(reader->Skip(), "End tag 'a' doesn't match start tag 'b'", 1, 19);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);

    At other(2, "<a><!--1--></b>");
    EXPECT_THROW_TEXT(other->MoveToContent(), "End tag 'b' doesn't match start tag 'a'", 1, 15);
    EXPECT_EQ(other->ReadState(), XmlTextReader::Error);
}

// IsStartElement.

TEST(XmlTextReaderContent, IsStartElementMovesToContentFirst) {
    At reader(1, "<!--c--> <p:a xmlns:p='u'><b/>t</p:a>");
    EXPECT_TRUE(reader->IsStartElement());
    EXPECT_EQ(NodeText(*reader), "Element p:a");
    EXPECT_TRUE(reader->IsStartElement("p:a"));
    EXPECT_FALSE(reader->IsStartElement("a"));
    EXPECT_FALSE(reader->IsStartElement(""));
    EXPECT_TRUE(reader->IsStartElement("a", "u"));
    EXPECT_FALSE(reader->IsStartElement("a", ""));
    EXPECT_FALSE(reader->IsStartElement("a", "U"));
    EXPECT_FALSE(reader->IsStartElement("b", "u"));
    EXPECT_FALSE(reader->IsStartElement("p:a", "u"));
    EXPECT_TRUE(reader->IsStartElement(std::string_view("p:ab").substr(0, 3)));
    EXPECT_TRUE(reader->IsStartElement(std::string_view("ab").substr(0, 1), std::string("u")));
    EXPECT_TRUE(reader->IsStartElement(astring("a"), astring("u")));
    EXPECT_EQ(NodeText(*reader), "Element p:a");
    reader.ReadNodes(1);
    EXPECT_TRUE(reader->IsStartElement("b"));
    EXPECT_TRUE(reader->IsStartElement("b", ""));
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->IsStartElement());
    EXPECT_EQ(NodeText(*reader), "Text \"t\"");
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->IsStartElement());
    EXPECT_FALSE(reader->IsStartElement("p:a"));
    EXPECT_FALSE(reader->IsStartElement("a", "u"));
    EXPECT_EQ(NodeText(*reader), "EndElement p:a");
}

TEST(XmlTextReaderContent, IsStartElementOnAnAttributeIsAboutTheElement) {
    At reader(1, "<a x='1'/>");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_FALSE(reader->IsStartElement("x"));
    EXPECT_EQ(NodeText(*reader), "Element a");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_TRUE(reader->IsStartElement("a"));
}

// ReadStartElement.

TEST(XmlTextReaderContent, ReadStartElementReadsTheStartTag) {
    const auto forms = {
        +[](XmlTextReader& reader) { reader.ReadStartElement(); },
        +[](XmlTextReader& reader) { reader.ReadStartElement("p:a"); },
        +[](XmlTextReader& reader) { reader.ReadStartElement("a", "u"); },
        +[](XmlTextReader& reader) {
            reader.ReadStartElement(std::string_view("p:abc").substr(0, 3));
        },
        +[](XmlTextReader& reader) { reader.ReadStartElement(astring("a"), std::string("u")); },
    };
    for (const auto& form : forms) {
        DocumentReader reader("<!--c--><p:a xmlns:p='u'> <b/></p:a>");
        form(*reader);  // from the very beginning
        EXPECT_EQ(NodeText(*reader), "Whitespace \" \"");

        At onAttribute(2, "<!--c--><p:a xmlns:p='u'> <b/></p:a>");
        ASSERT_TRUE(onAttribute->MoveToFirstAttribute());
        form(*onAttribute);
        EXPECT_EQ(NodeText(*onAttribute), "Whitespace \" \"");
    }
}

TEST(XmlTextReaderContent, ReadStartElementOfTheOnlyTagEndsTheDocument) {
    At reader(1, "<a/>");
    EXPECT_NO_THROW(reader->ReadStartElement("a"));
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
}

TEST(XmlTextReaderContent, ReadStartElementRefusesOtherNodes) {
    const struct {
        XmlNodeType::XML_NODE_TYPE from;
        const char* argument;
        const char* node;
        int column;
    } kCases[] = {
        {XmlNodeType::Text, "Text", "Text \"t\"", 86},
        {XmlNodeType::CDATA, "CDATA", "CDATA \"d\"", 87},
        {XmlNodeType::EntityReference, "EntityReference", "EntityReference e", 101},
        {XmlNodeType::EndElement, "EndElement", "EndElement b", 134},
        {XmlNodeType::SignificantWhitespace, "EndElement", "EndElement b", 134},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(XmlNodeType(c.from).ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, c.from);
        for (int i = 0; i < 2; ++i) {
            const char* const message = "Not an element node";
            EXPECT_THROW_FULL(reader->ReadStartElement(), message, c.argument, 2, c.column);
            EXPECT_THROW_FULL(reader->ReadStartElement("r"), message, c.argument, 2, c.column);
            EXPECT_THROW_FULL(reader->ReadStartElement("r", ""), message, c.argument, 2, c.column);
            EXPECT_EQ(NodeText(*reader), c.node);
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        }
    }
}

TEST(XmlTextReaderContent, ReadStartElementOnAnEndTagIsRefusedWithItsType) {
    At reader(2, "<a>\n</a>");
    EXPECT_THROW_FULL(reader->ReadStartElement(), "Not an element node", "EndElement", 2, 1);
    EXPECT_EQ(NodeText(*reader), "EndElement a");
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextReaderContent, ReadStartElementRefusesAnotherElement) {
    At reader(2, "<r>\n <p:a xmlns:p='u' x='1'>t</p:a></r>");
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW_FULL(reader->ReadStartElement("a"), "Unexpected element", "p:a", 2, 2);
        EXPECT_EQ(NodeAndPlace(*reader), "Element p:a depth=2 @2:2");
        EXPECT_THROW_FULL(reader->ReadStartElement("p:A"), "Unexpected element", "p:a", 2, 2);
        EXPECT_THROW_FULL(reader->ReadStartElement(""), "Unexpected element", "p:a", 2, 2);
        EXPECT_THROW_FULL(reader->ReadStartElement("a", ""), "Unexpected element", "p:a", 2, 2);
        EXPECT_THROW_FULL(reader->ReadStartElement("b", "u"), "Unexpected element", "p:a", 2, 2);
        EXPECT_THROW_FULL(reader->ReadStartElement("p:a", "u"), "Unexpected element", "p:a", 2, 2);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        EXPECT_EQ(reader->GetAttribute("x"), "1");
    }
    EXPECT_NO_THROW(reader->ReadStartElement("a", "u"));
    EXPECT_EQ(NodeText(*reader), "Text \"t\"");
}

// ReadEndElement.

TEST(XmlTextReaderContent, ReadEndElementReadsTheEndTag) {
    At reader(3, "<a><b></b>t</a>\n");
    EXPECT_NO_THROW(reader->ReadEndElement());
    EXPECT_EQ(NodeText(*reader), "Text \"t\"");
    reader.ReadNodes(1);
    EXPECT_NO_THROW(reader->ReadEndElement());
    EXPECT_EQ(NodeText(*reader), "Whitespace \"\\n\"");
}

TEST(XmlTextReaderContent, ReadEndElementFailsWhereNothingFollows) {
    At reader(3, "<a>t\n </a>");
    EXPECT_EQ(NodeAndPlace(*reader), "EndElement a depth=1 @2:2");
    EXPECT_THROW_FULL(reader->ReadEndElement(), "Read failed", "", 2, 2);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
}

// It does not move to content first, so white space before the end tag is refused.
TEST(XmlTextReaderContent, ReadEndElementRefusesOtherNodes) {
    for (const XmlNodeType type : kEveryNodeType) {
        if (type == XmlNodeType::EndElement) continue;
        SCOPED_TRACE(type.ToString());
        DocumentReader reader(kEveryNode);
        ReadToType(*reader, type);
        const std::string before = NodeAndPlace(*reader);
        const int line = reader->LineNumber();
        const int column = reader->LinePosition();
        for (int i = 0; i < 2; ++i) {
            EXPECT_THROW_FULL(reader->ReadEndElement(), "Not an end element node", type.ToString(),
                              line, column);
            EXPECT_EQ(NodeAndPlace(*reader), before);
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        }
    }
}

// ReadString.

TEST(XmlTextReaderContent, ReadStringJoinsTextUpToTheNextTagOrReference) {
    const struct {
        const char* document;  // ReadString() is called on its first element
        const char* text;
        const char* after;
    } kCases[] = {
        {"<a>t</a>", "t", "EndElement a"},
        {"<a></a>", "", "EndElement a"},
        {"<a/>", "", "Element a"},
        {"<a x='1'/>", "", "Element a"},
        {"<a>one<!--c--><![CDATA[two]]>three</a>", "onetwothree", "EndElement a"},
        {"<a>one<?p?><!--c-->two</a>", "onetwo", "EndElement a"},
        {"<a><!--c-->t</a>", "t", "EndElement a"},
        {"<a>t<b/>u</a>", "t", "Element b"},
        {"<a><b/>u</a>", "", "Element b"},
        {"<a>t&e;u</a>", "t", "EntityReference e"},
        {"<a>t&lt;&#65;u</a>", "t<Au", "EndElement a"},
        {"<a>]]&gt;<![CDATA[]]>\xC3\xA9</a>", "]]>\xC3\xA9", "EndElement a"},
        {"<a><![CDATA[ ]]></a>", " ", "EndElement a"},
        // White space that is a node of its own is not collected.
        {"<a> </a>", "", "EndElement a"},
        {"<a> <!--c-->\n</a>", "", "EndElement a"},
        {"<a> t </a>", " t ", "EndElement a"},
        {"<a>t<!--c--> <!--c-->u</a>", "tu", "EndElement a"},
        {"<a>t<![CDATA[d]]> </a>", "td", "EndElement a"},
        {"<a xml:space='preserve'> <!--c-->t</a>", "t", "EndElement a"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        At reader(1, c.document);
        EXPECT_EQ(reader->ReadString(), c.text);
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderContent, ReadStringGoesOnFromWhereItIs) {
    At reader(2, "<a>one<!--c-->two<b>three</b>four</a>");
    EXPECT_EQ(reader->ReadString(), "onetwo");
    EXPECT_EQ(NodeText(*reader), "Element b");
    EXPECT_EQ(reader->ReadString(), "three");
    EXPECT_EQ(NodeText(*reader), "EndElement b");
    EXPECT_EQ(reader->ReadString(), "");
    EXPECT_EQ(NodeText(*reader), "EndElement b");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->ReadString(), "four");
    EXPECT_EQ(NodeText(*reader), "EndElement a");
}

TEST(XmlTextReaderContent, ReadStringFromCommentsAndWhiteSpaceMovesToContent) {
    At reader(2, "<a><!--c--> t<b/></a>");
    EXPECT_EQ(reader->ReadString(), " t");
    At prolog(1, "<!--c--> <a>t</a>");
    EXPECT_EQ(prolog->ReadString(), "");
    EXPECT_EQ(NodeText(*prolog), "Element a");
}

TEST(XmlTextReaderContent, ReadStringFromAnAttributeReadsBehindTheTag) {
    At reader(1, "<a x='1' y='2'>t</a>");
    ASSERT_TRUE(reader->MoveToAttribute("y"));
    EXPECT_EQ(reader->ReadString(), "t");
    EXPECT_EQ(NodeText(*reader), "EndElement a");
    // An empty element, too: what follows is read then.
    At empty(2, "<r><a x='1'/>t<b/></r>");
    ASSERT_TRUE(empty->MoveToFirstAttribute());
    EXPECT_EQ(empty->ReadString(), "t");
    EXPECT_EQ(NodeText(*empty), "Element b");
}

TEST(XmlTextReaderContent, ReadStringFromAnAttributeOfTheLastTagIsAnInvalidOperation) {
    At reader(1, "<a x='1'/>");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_THROW_FULL(reader->ReadString(), "Invalid operation", "ReadString", -1, -1);
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
}

TEST(XmlTextReaderContent, ReadStringTakesInEntitiesAsTheReaderDoes) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY m 'M<b/>N'>]><a>1&e;2&m;3</a>";
    At all(2, document, With(Xml::XmlEntityHandling::ExpandEntities));
    EXPECT_EQ(all->ReadString(), "1E2M");
    EXPECT_EQ(NodeText(*all), "Element b");
    all.ReadNodes(1);
    EXPECT_EQ(all->ReadString(), "N");
    EXPECT_EQ(NodeText(*all), "EndEntity m");

    At nothing(2, document, With(Xml::XmlEntityHandling::ExpandNothing));
    EXPECT_EQ(nothing->ReadString(), "1&e;2&m;3");

    At references(2, document);
    EXPECT_EQ(references->ReadString(), "1");
    references->ResolveEntity();
    references.ReadNodes(1);
    EXPECT_EQ(references->ReadString(), "E");
    EXPECT_EQ(NodeText(*references), "EndEntity e");
}

TEST(XmlTextReaderContent, ReadStringOfALongText) {
    std::string document = "<a>";
    std::string text;
    for (int i = 0; i < 3000; ++i) {
        const std::string number = std::to_string(i);
        document += number + "&lt;<![CDATA[\xE2\x82\xAC " + number + "]]><!-- -->\n";
        text += (i > 0 ? "\n" : "") + number + "<\xE2\x82\xAC " + number;
    }
    At reader(1, document + "</a>");
    EXPECT_EQ(reader->ReadString(), text);
    EXPECT_EQ(NodeText(*reader), "EndElement a");
}

// ReadElementString.

TEST(XmlTextReaderContent, ReadElementStringReturnsTheTextAndMovesBehindTheElement) {
    const struct {
        const char* document;  // ReadElementString() is called on its second node
        const char* text;
        const char* after;
    } kCases[] = {
        {"<r><a>t</a>u</r>", "t", "Text \"u\""},
        {"<r><a></a><b/></r>", "", "Element b"},
        {"<r><a/><b/></r>", "", "Element b"},
        {"<r><a/></r>", "", "EndElement r"},
        {"<r><a>o<!--c--><![CDATA[t]]>u</a> </r>", "otu", "Whitespace \" \""},
        {"<r><!--c--> <a>t</a></r>", "t", "EndElement r"},
        {"<r><a x='1'> t </a></r>", " t ", "EndElement r"},
        {"<r><a> </a></r>", "", "EndElement r"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        At reader(2, c.document);
        EXPECT_EQ(reader->ReadElementString(), c.text);
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderContent, ReadElementStringFromTheBeginningAndFromAnAttribute) {
    DocumentReader reader("<!--c--><a>t</a>");
    EXPECT_EQ(reader->ReadElementString(), "t");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);

    for (const char* document : {"<a x='1'>t</a><?p?>", "<a x='1'/><?p?>"}) {
        At onAttribute(1, document);
        ASSERT_TRUE(onAttribute->MoveToFirstAttribute());
        EXPECT_EQ(onAttribute->ReadElementString(), document[8] == '/' ? "" : "t");
        EXPECT_EQ(NodeText(*onAttribute), "ProcessingInstruction p \"\"");
    }
}

TEST(XmlTextReaderContent, ReadElementStringOfTheOnlyTagEndsTheDocument) {
    At reader(1, "<a/>");
    EXPECT_EQ(reader->ReadElementString(), "");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
}

TEST(XmlTextReaderContent, ReadElementStringRefusesNodesThatAreNoElement) {
    const struct {
        const char* document;
        int nodes;
        const char* argument;
        int line, column;
    } kCases[] = {
        {"<a>\n t</a>", 2, "Text", 1, 4},
        {"<a>\n<![CDATA[d]]></a>", 3, "CDATA", 2, 1},
        {"<a>\n<!--c--> &e;</a>", 3, "EntityReference", 2, 10},
        {"<a>\n </a>", 2, "EndElement", 2, 2},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        At reader(c.nodes, c.document);
        for (int i = 0; i < 2; ++i) {
            EXPECT_THROW_FULL(reader->ReadElementString(), "Invalid node type", c.argument, c.line,
                              c.column);
            EXPECT_STREQ(reader->NodeType().ToString(), c.argument);
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        }
    }
}

TEST(XmlTextReaderContent, ReadElementStringRefusesWhatIsNoTextInTheElement) {
    const struct {
        const char* document;
        const char* argument;
        const char* node;
        int line, column;
    } kCases[] = {
        {"<a>t\n<b/></a>", "Element", "Element b", 2, 1},
        {"<a>\n <b>u</b></a>", "Element", "Element b", 2, 2},
        {"<a>t\n&e;</a>", "EntityReference", "EntityReference e", 2, 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        At reader(1, c.document);
        EXPECT_THROW_FULL(reader->ReadElementString(), "Unexpected node type", c.argument, c.line,
                          c.column);
        EXPECT_EQ(NodeText(*reader), c.node);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
    }
}

// LookupNamespace.

TEST(XmlTextReaderContent, LookupNamespaceTellsWhatIsBoundAtTheNode) {
    At reader(1, "<a xmlns='d' xmlns:p='1'><b xmlns='' xmlns:p='2' xmlns:q='3'>t</b>u</a>");
    const auto bound = [&] {
        return reader->LookupNamespace("").str() + "," + reader->LookupNamespace("p").str() + "," +
               reader->LookupNamespace("q").str() + "," + reader->LookupNamespace("r").str();
    };
    EXPECT_EQ(bound(), "d,1,,");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(bound(), "d,1,,");
    reader.ReadNodes(1);  // <b>
    EXPECT_EQ(bound(), ",2,3,");
    reader.ReadNodes(1);  // t
    EXPECT_EQ(bound(), ",2,3,");
    reader.ReadNodes(1);  // </b>: the element has been left
    EXPECT_EQ(bound(), "d,1,,");
    reader.ReadNodes(2);  // u, </a>
    EXPECT_EQ(bound(), ",,,");
    EXPECT_EQ(reader->LookupNamespace("xml"), "http://www.w3.org/XML/1998/namespace");
}

TEST(XmlTextReaderContent, LookupNamespaceIsEmptyWhenNamespacesAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    At reader(1, "<a xmlns='d' xmlns:p='1'/>", settings);
    for (const char* prefix : {"", "p", "xml", "xmlns"})
        EXPECT_EQ(reader->LookupNamespace(prefix), "") << prefix;
}

}  // namespace
