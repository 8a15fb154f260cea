// SPDX-License-Identifier: MIT
//
// ReadInnerXml() and ReadOuterXml() on every kind of node, with entities, and when reading fails.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/DocumentStream.h"
#include "support/EveryNode.h"
#include "support/ExpectThrow.h"
#include "support/FailingStream.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::FailingStream;
using support::Failure;
using support::MessageOf;
using support::NodeAndPlace;
using support::NodesFromHere;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr auto kEveryHandling = {XmlEntityHandling::ExpandNothing,
                                 XmlEntityHandling::ExpandCharEntities,
                                 XmlEntityHandling::ExpandEntities};

ReaderSettings With(XmlEntityHandling entities) {
    ReaderSettings settings;
    settings.entities = entities;
    return settings;
}

// Returns the node that the reader stands on and those behind it.
std::string RestOf(XmlTextReader& reader) {
    const std::string here = NodeText(reader);
    return here + "; " + NodesFromHere(reader);
}

// Reads to the element of a name.
void ReadTo(DocumentReader& reader, const char* name) {
    do {
        ASSERT_TRUE(reader->Read()) << "no " << name;
    } while (reader->NodeType() != XmlNodeType::Element || reader->Name() != name);
}

TEST(XmlTextReaderMarkup, OfAnElementStandsAsInTheInput) {
    const struct {
        const char* document;  // the markup of <b> is taken
        const char* outer;
        const char* inner;
        const char* after;
    } kCases[] = {
        {"<a><b>t</b>u</a>", "<b>t</b>", "t", "Text \"u\""},
        {"<a><b></b>u</a>", "<b></b>", "", "Text \"u\""},
        {"<a><b/>u</a>", "<b/>", "", "Text \"u\""},
        {"<a><b x='1'/>u</a>", "<b x='1'/>", "", "Text \"u\""},
        {"<a><b  x = '1'\n\ty=\"2\" >t</b\n> u</a>", "<b  x = '1'\n\ty=\"2\" >t</b\n>", "t",
         "Text \" u\""},
        {"<a><b /></a>", "<b />", "", "EndElement a"},
        {"<a><b>\r\n t\ru </b></a>", "<b>\r\n t\ru </b>", "\r\n t\ru ", "EndElement a"},
        {"<a><b>&lt;&#65;&#x42;&e;</b></a>", "<b>&lt;&#65;&#x42;&e;</b>", "&lt;&#65;&#x42;&e;",
         "EndElement a"},
        {"<a><b x='&lt;&#10;&e;'>t</b></a>", "<b x='&lt;&#10;&e;'>t</b>", "t", "EndElement a"},
        {"<a><b><!-- </b> --><![CDATA[</b>]]><?p </b>?></b></a>",
         "<b><!-- </b> --><![CDATA[</b>]]><?p </b>?></b>",
         "<!-- </b> --><![CDATA[</b>]]><?p </b>?>", "EndElement a"},
        {"<a><b><c x='>'><b/></c> <d/></b><e/></a>", "<b><c x='>'><b/></c> <d/></b>",
         "<c x='>'><b/></c> <d/>", "Element e"},
        {"<a> <b>t</b> </a>", "<b>t</b>", "t", "Whitespace \" \""},
        {"<b>t</b>", "<b>t</b>", "t", "None"},
        {"<b/>", "<b/>", "", "None"},
        {"<b>t</b>\n<!--c-->", "<b>t</b>", "t", "Whitespace \"\\n\""},
        {"<?xml version='1.0'?><!DOCTYPE b [<!ENTITY e 'E'>]><b>&e;</b>", "<b>&e;</b>", "&e;",
         "None"},
        {"<a><b>\xE2\x82\xAC\xF0\x9F\x98\x80</b></a>", "<b>\xE2\x82\xAC\xF0\x9F\x98\x80</b>",
         "\xE2\x82\xAC\xF0\x9F\x98\x80", "EndElement a"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        for (const bool normalization : {false, true}) {
            ReaderSettings settings;
            settings.normalization = normalization;
            DocumentReader outer(c.document, settings);
            ReadTo(outer, "b");
            EXPECT_EQ(outer->ReadOuterXml(), c.outer);
            EXPECT_EQ(NodeText(*outer), c.after);
            DocumentReader inner(c.document, settings);
            ReadTo(inner, "b");
            EXPECT_EQ(inner->ReadInnerXml(), c.inner);
            EXPECT_EQ(NodeText(*inner), c.after);
        }
    }
}

TEST(XmlTextReaderMarkup, OfAnAttributeHasItsOwnQuotationMarks) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E'>]>"
        "<a x='1' y=\"2\" p:z='a\"b' w=\"it's &lt;&#65;\" v='1&e;' u=''>t</a>";
    const struct {
        XmlEntityHandling::XML_ENTITY_HANDLING entities;
        const char* outer[6];
        const char* inner[6];
    } kCases[] = {
        {XmlEntityHandling::ExpandCharEntities,
         {"x='1'", "y=\"2\"", "p:z='a\"b'", "w=\"it's <A\"", "v='1&e;'", "u=''"},
         {"1", "2", "a\"b", "it's <A", "1&e;", ""}},
        {XmlEntityHandling::ExpandNothing,
         {"x='1'", "y=\"2\"", "p:z='a\"b'", "w=\"it's <&#65;\"", "v='1&e;'", "u=''"},
         {"1", "2", "a\"b", "it's <&#65;", "1&e;", ""}},
        {XmlEntityHandling::ExpandEntities,
         {"x='1'", "y=\"2\"", "p:z='a\"b'", "w=\"it's <A\"", "v='1E'", "u=''"},
         {"1", "2", "a\"b", "it's <A", "1E", ""}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(XmlEntityHandling(c.entities).ToString());
        DocumentReader reader(document, With(c.entities));
        reader.ReadToElement();
        for (int i = 0; i < 6; ++i) {
            reader->MoveToAttribute(i);
            const std::string before = NodeAndPlace(*reader);
            for (int twice = 0; twice < 2; ++twice) {
                EXPECT_EQ(reader->ReadOuterXml(), c.outer[i]);
                EXPECT_EQ(reader->ReadInnerXml(), c.inner[i]);
                EXPECT_EQ(NodeAndPlace(*reader), before);
                EXPECT_EQ(reader->GetCurrentAttributeIndex(), i);
            }
        }
        EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EndElement a");
    }
}

TEST(XmlTextReaderMarkup, OfOtherNodesIsEmptyAndReadsOnce) {
    for (const XmlNodeType type : support::kEveryNodeType) {
        if (type == XmlNodeType::Element || type == XmlNodeType::Attribute) continue;
        SCOPED_TRACE(type.ToString());
        DocumentReader inner(support::kEveryNode);
        DocumentReader outer(support::kEveryNode);
        DocumentReader read(support::kEveryNode);
        support::ReadToType(*inner, type);
        support::ReadToType(*outer, type);
        support::ReadToType(*read, type);
        read.ReadNodes(1);
        EXPECT_EQ(inner->ReadInnerXml(), "");
        EXPECT_EQ(NodeAndPlace(*inner), NodeAndPlace(*read));
        EXPECT_EQ(outer->ReadOuterXml(), "");
        EXPECT_EQ(NodeAndPlace(*outer), NodeAndPlace(*read));
    }
}

TEST(XmlTextReaderMarkup, OfTheLastEndTagIsEmptyAndEndsTheDocument) {
    for (const bool isOuter : {false, true}) {
        DocumentReader reader("<a>t</a>");
        reader.ReadNodes(3);
        EXPECT_EQ(isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml(), "");
        EXPECT_TRUE(reader->Eof());
        EXPECT_EQ(isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml(), "");
        EXPECT_TRUE(reader->Eof());
    }
}

TEST(XmlTextReaderMarkup, IsTheSameAfterAWalkThroughTheAttributes) {
    // The start tag is longer than the reader's buffer, and so are the parts of a value.
    const std::string tag = "<b x='1&e;2' y='" + std::string(3000, 'v') + "&n;' z='3'>";
    const std::string content = "t<c>&e;</c>" + std::string(2000, 'u');
    const std::string subset =
        "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY n '" + std::string(2000, 'n') + "&e;'>]>";
    for (const int bytesPerRead : {0, 1, 1023}) {
        for (const bool isOuter : {false, true}) {
            DocumentReader reader(subset + "<a>" + tag + content + "</b>&e;</a>", {}, bytesPerRead);
            ReadTo(reader, "b");
            for (int i = 0; i < 3; ++i) {
                reader->MoveToAttribute(i);
                while (reader->ReadAttributeValue()) {
                    if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
                }
                EXPECT_NE(reader->ReadOuterXml(), "");
            }
            // Left among the parts.
            reader->MoveToAttribute(0);
            ASSERT_TRUE(reader->ReadAttributeValue());
            ASSERT_TRUE(reader->ReadAttributeValue());
            reader->ResolveEntity();
            ASSERT_TRUE(reader->MoveToElement());
            EXPECT_EQ(isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml(),
                      isOuter ? tag + content + "</b>" : content);
            EXPECT_EQ(RestOf(*reader), "EntityReference e; EndElement a");
        }
    }
}

TEST(XmlTextReaderMarkup, LeavesScopesAsReadingDoes) {
    DocumentReader reader(
        "<r xmlns:p='1' xml:lang='en'><a xmlns:p='2' xml:lang='de'><b xml:space='preserve'>"
        "</b></a><p:c/> </r>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->ReadOuterXml(),
              "<a xmlns:p='2' xml:lang='de'><b xml:space='preserve'></b></a>");
    EXPECT_EQ(NodeText(*reader), "Element p:c");
    EXPECT_EQ(reader->NamespaceURI(), "1");
    EXPECT_EQ(reader->XmlLang(), "en");
    EXPECT_EQ(reader->Depth(), 2);
    EXPECT_EQ(NodesFromHere(*reader), "Whitespace \" \"; EndElement r");
}

// Entities.

TEST(XmlTextReaderMarkup, KeepsReferencesAsWrittenWhateverIsExpanded) {
    const std::string content =
        "&#65;&lt;&t;&m;<c y='&t;'>&n;</c>&n;" + std::string(1500, 'x') + "&m;&m;2";
    const std::string element = "<b x=\"&t;\">" + content + "</b>";
    const std::string document =
        "<!DOCTYPE a [<!ENTITY t 'T'><!ENTITY m '<i>M&t;</i>'><!ENTITY n 'x&m;y'>]><a>1" + element +
        "3<d/></a>";
    for (const auto entities : kEveryHandling) {
        SCOPED_TRACE(XmlEntityHandling(entities).ToString());
        for (const int bytesPerRead : {0, 1, 1023}) {
            DocumentReader outer(document, With(entities), bytesPerRead);
            ReadTo(outer, "b");
            EXPECT_EQ(outer->ReadOuterXml(), element);
            EXPECT_EQ(RestOf(*outer), "Text \"3\"; Element d; EndElement a");
            DocumentReader inner(document, With(entities), bytesPerRead);
            ReadTo(inner, "b");
            EXPECT_EQ(inner->ReadInnerXml(), content);
            EXPECT_EQ(RestOf(*inner), "Text \"3\"; Element d; EndElement a");
            DocumentReader root(document, With(entities), bytesPerRead);
            ReadTo(root, "a");
            EXPECT_EQ(root->ReadInnerXml(), "1" + element + "3<d/>");
            EXPECT_TRUE(root->Eof());
        }
    }
}

// An element that an entity's text holds has the markup of that text.
TEST(XmlTextReaderMarkup, OfAnElementInAnEntityStandsAsInItsText) {
    const std::string filler(1500, 'x');
    const std::string b = "<b x=\"1\">" + filler + "<c/>&t;<!-- - --></b>";
    const std::string document = "<!DOCTYPE a [<!ENTITY t 'T'><!ENTITY m '" + b +
                                 "u<e z=\"&t;\"/>'><!ENTITY n '<d>&m;</d>v'>]><a>1&m;&n;<b>" +
                                 filler + "</b>2</a>";
    for (const bool resolve : {false, true}) {
        for (const int bytesPerRead : {0, 1, 1023}) {
            SCOPED_TRACE(resolve ? "resolved" : "expanded");
            DocumentReader reader(document,
                                  With(resolve ? XmlEntityHandling::ExpandCharEntities
                                               : XmlEntityHandling::ExpandEntities),
                                  bytesPerRead);
            const auto next = [&] {
                ASSERT_TRUE(reader->Read());
                if (reader->NodeType() == XmlNodeType::EntityReference) {
                    reader->ResolveEntity();
                    ASSERT_TRUE(reader->Read());
                }
            };
            ReadTo(reader, "a");
            next();
            EXPECT_EQ(NodeText(*reader), "Text \"1\"");
            next();
            EXPECT_EQ(NodeText(*reader), "Element b");
            EXPECT_EQ(reader->ReadOuterXml(), b);
            EXPECT_EQ(NodeText(*reader), "Text \"u\"");
            next();
            EXPECT_EQ(reader->ReadOuterXml(), "<e z=\"&t;\"/>");
            EXPECT_EQ(NodeText(*reader), "EndEntity m");
            next();
            EXPECT_EQ(NodeText(*reader), "Element d");
            EXPECT_EQ(reader->ReadOuterXml(), "<d>&m;</d>");
            EXPECT_EQ(NodeText(*reader), "Text \"v\"");
            next();
            EXPECT_EQ(NodeText(*reader), "EndEntity n");
            next();
            EXPECT_EQ(reader->ReadOuterXml(), "<b>" + filler + "</b>");
            EXPECT_EQ(RestOf(*reader), "Text \"2\"; EndElement a");
        }
    }
}

TEST(XmlTextReaderMarkup, InsideOfAnElementInAnEntity) {
    DocumentReader reader(
        "<!DOCTYPE a [<!ENTITY m '<b><c>1<d/></c>2<e></e></b>'>]><a>&m;<c>3</c></a>",
        With(XmlEntityHandling::ExpandEntities));
    ReadTo(reader, "c");
    EXPECT_EQ(reader->ReadInnerXml(), "1<d/>");
    EXPECT_EQ(NodeText(*reader), "Text \"2\"");
    ReadTo(reader, "e");
    EXPECT_EQ(reader->ReadInnerXml(), "");
    EXPECT_EQ(NodeText(*reader), "EndElement b");
    ReadTo(reader, "c");
    EXPECT_EQ(reader->ReadInnerXml(), "3");
    EXPECT_EQ(NodeText(*reader), "EndElement a");
}

// What an entity begins, the document may end, and the other way round: nothing is refused, and the
// reader gets behind the end tag.
TEST(XmlTextReaderMarkup, OfAnElementThatCrossesTheEndOfAnEntity) {
    for (const bool isOuter : {false, true}) {
        DocumentReader begun("<!DOCTYPE a [<!ENTITY m '<b>x'>]><a>&m;y</b>z</a>",
                             With(XmlEntityHandling::ExpandEntities));
        ReadTo(begun, "b");
        EXPECT_NO_THROW(isOuter ? begun->ReadOuterXml() : begun->ReadInnerXml());
        EXPECT_EQ(RestOf(*begun), "Text \"z\"; EndElement a");

        DocumentReader ended("<!DOCTYPE a [<!ENTITY m 'y</b>z'>]><a><b>x&m;<c>t</c></a>",
                             With(XmlEntityHandling::ExpandEntities));
        ReadTo(ended, "b");
        EXPECT_NO_THROW(isOuter ? ended->ReadOuterXml() : ended->ReadInnerXml());
        EXPECT_EQ(NodeText(*ended), "Text \"z\"");
        ReadTo(ended, "c");
        EXPECT_EQ(ended->ReadOuterXml(), "<c>t</c>");
        EXPECT_EQ(NodeText(*ended), "EndElement a");
    }
}

// Failures.

TEST(XmlTextReaderMarkup, PassesOnWhatIsWrongInTheContent) {
    const struct {
        const char* document;
        const char* message;
        const char* argument;
        int line, column;
    } kCases[] = {
        {"<a><b>t</c></a>", "End tag 'c' doesn't match start tag 'b'", "</c>", 1, 11},
        {"<a><b>t", "Missing end element", "b", 1, 8},
        {"<a><b>\n]]></b></a>", "Unexpected token", "]]>", 2, 4},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        for (const bool isOuter : {false, true}) {
            DocumentReader reader(c.document);
            reader.ReadNodes(2);
            EXPECT_TRUE(support::ThrowsXmlException(
                [&] { isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml(); }, "markup",
                c.message, c.argument, c.line, c.column));
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
            EXPECT_FALSE(reader->Read());
            EXPECT_EQ(isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml(), "");

            const std::string again = "<r><b x='1'>t<c/></b>u</r>";
            support::DocumentStream stream(again);
            ASSERT_TRUE(reader->SetStream(stream.get(), false));
            reader.ReadNodes(2);
            EXPECT_EQ(reader->ReadOuterXml(), "<b x='1'>t<c/></b>");
            EXPECT_EQ(RestOf(*reader), "Text \"u\"; EndElement r");
            reader->Close();
        }
    }
}

TEST(XmlTextReaderMarkup, ReaderIsGoodForAnotherInputAfterItsStreamFailed) {
    const std::string content = std::string(3000, 't') + "<c x='" + std::string(3000, 'v') + "'/>";
    const std::string document = "<a><b>" + content + "</b></a>";
    for (const Failure failure : {Failure::Throw, Failure::EndEarly}) {
        int failures = 0;
        XmlTextReader reader;
        for (int call = 1;; ++call) {
            SCOPED_TRACE(call);
            support::DocumentStream inner(document, 700);
            FailingStream stream(*inner.get(), call, failure);
            ASSERT_TRUE(reader.SetStream(&stream, false));
            astring markup;
            const std::string message = MessageOf([&] {
                reader.Read();
                reader.Read();
                markup = reader.ReadInnerXml();
                while (reader.Read())
                    continue;
            });
            if (message.empty()) {
                EXPECT_FALSE(failure == Failure::Throw && stream.HasFailed());
                EXPECT_EQ(markup, content);
            } else {
                ++failures;
                EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
                if (failure == Failure::Throw) {
                    EXPECT_EQ(message, FailingStream::kMessage);
                }
            }
            // The markup of the next document has nothing of this one.
            support::DocumentStream again(document, 900);
            ASSERT_TRUE(reader.SetStream(again.get(), false));
            ASSERT_TRUE(reader.Read());
            EXPECT_EQ(reader.ReadOuterXml(), document);
            EXPECT_TRUE(reader.Eof());
            if (!stream.HasFailed()) break;
        }
        EXPECT_GE(failures, 8);
    }
}

TEST(XmlTextReaderMarkup, ClosingAReaderForgetsTheMarkup) {
    XmlTextReader reader;
    const std::string document = "<a><b>t</b></a>";
    support::DocumentStream stream(document);
    ASSERT_TRUE(reader.SetStream(stream.get(), false));
    ASSERT_TRUE(reader.Read());
    ASSERT_TRUE(reader.Read());
    reader.Close();
    EXPECT_EQ(reader.ReadOuterXml(), "");
    EXPECT_EQ(reader.ReadInnerXml(), "");
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
}

}  // namespace
