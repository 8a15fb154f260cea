// SPDX-License-Identifier: MIT
//
// Copies from a reader to a writer: attributes, and nodes with all that is in them.
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentReader.h"
#include "support/EveryNode.h"
#include "support/ExpectThrow.h"
#include "support/MemoryWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::MemoryWriter;
using support::ReaderSettings;
using support::WithEntities;
using Xml::WriteState;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;
using Xml::XmlTextWriter;
using namespace std::string_literals;

// Reads up to the `number`th node of a type, from 1 on.
void ReadToNode(XmlTextReader& reader, XmlNodeType type, int number = 1) {
    while (number > 0) {
        ASSERT_TRUE(reader.Read());
        if (reader.NodeType() == type) --number;
    }
}

// Attributes.

// What WriteAttributes() makes of the first element, in an element of that name.
std::string CopiedAttributes(const std::string& document, const ReaderSettings& settings = {}) {
    DocumentReader reader(document, settings);
    reader.ReadToElement();
    MemoryWriter writer;
    writer->WriteStartElement("e");
    writer->WriteAttributes(&*reader, false);
    EXPECT_EQ(writer->GetWriteState(), WriteState::Element);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    writer->WriteEndElement();
    return writer.Text();
}

TEST(XmlTextWriterAttributes, AreCopiedInTheirOrder) {
    constexpr struct {
        const char* document;
        const char* expected;
    } kCases[] = {
        {"<a x='1'/>", R"(<e x="1"/>)"},
        {"<a c='1' a='2' b='3'></a>", R"(<e c="1" a="2" b="3"/>)"},
        {"<a x=''/>", R"(<e x=""/>)"},
        {"<a x='&lt;&amp;&gt;' y='\"' z=\"'\"/>",
         R"(<e x="&lt;&amp;&gt;" y="&quot;" z="&apos;"/>)"},
        {"<a x='&#65;&#x42;'/>", R"(<e x="AB"/>)"},
        {"<a x='\xC3\xA9'/>", "<e x=\"\xC3\xA9\"/>"},
        {"<a xmlns:p='urn:p' p:x='1'/>", R"(<e xmlns:p="urn:p" p:x="1"/>)"},
        {"<a p:x='1' xmlns:p='urn:p'/>", R"(<e p:x="1" xmlns:p="urn:p"/>)"},
        {"<a xmlns='urn:a' x='1'/>", R"(<e xmlns="urn:a" x="1"/>)"},
        {"<a xml:id='i'/>", R"(<e xml:id="i"/>)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        EXPECT_EQ(CopiedAttributes(c.document), c.expected);
    }
}

TEST(XmlTextWriterAttributes, AnElementWithoutAnyWritesNothing) {
    EXPECT_EQ(CopiedAttributes("<a/>"), "<e/>");
    EXPECT_EQ(CopiedAttributes("<a>text</a>"), "<e/>");
}

TEST(XmlTextWriterAttributes, WriteNothingOfADeclaration) {
    DocumentReader reader("<?xml version='1.0' standalone='yes'?><a/>");
    reader.ReadNodes(1);
    ASSERT_EQ(reader->NodeType(), XmlNodeType::XmlDeclaration);
    MemoryWriter writer;
    writer->WriteStartElement("e");
    writer->WriteAttributes(&*reader, false);
    EXPECT_EQ(writer.Text(), "<e");
    EXPECT_EQ(reader->NodeType(), XmlNodeType::XmlDeclaration);
}

TEST(XmlTextWriterAttributes, AreCopiedFromTheCurrentOneToTheLast) {
    const char* const kExpected[] = {R"(<e x="1" y="2" z="3"/>)", R"(<e y="2" z="3"/>)",
                                     R"(<e z="3"/>)"};
    for (int first = 0; first < 3; ++first) {
        DocumentReader reader("<a x='1' y='2' z='3'/>");
        reader.ReadToElement();
        reader->MoveToAttribute(first);
        MemoryWriter writer;
        writer->WriteStartElement("e");
        writer->WriteAttributes(&*reader, false);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::Attribute);
        EXPECT_EQ(reader->Name(), "z");
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), kExpected[first]);
    }
}

TEST(XmlTextWriterAttributes, FollowThoseThatTheElementHas) {
    DocumentReader reader("<a x='1'/>");
    reader.ReadToElement();
    MemoryWriter writer;
    writer->WriteStartElement("e");
    writer->WriteStartAttribute("w");
    writer->WriteAttributes(&*reader, false);
    writer->WriteAttributeString("y", "2");
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), R"(<e w="" x="1" y="2"/>)");
}

TEST(XmlTextWriterAttributes, TheFlagForDefaultsMakesNoDifference) {
    for (const bool defaults : {false, true}) {
        DocumentReader reader("<!DOCTYPE a [<!ATTLIST a y CDATA 'd'>]><a x='1'><b z='2'/></a>");
        reader.ReadToElement();
        MemoryWriter writer;
        writer->WriteStartElement("e");
        writer->WriteAttributes(&*reader, defaults);
        writer->WriteNode(&*reader, defaults);
        EXPECT_EQ(writer.Text(), "<e x=\"1\"><a x=\"1\"><b z=\"2\"/><a>\0"s);
    }
}

TEST(XmlTextWriterAttributes, KeepTheReferencesThatTheReaderReports) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY f 'F'>]>"
        "<a x='&e;' y='1&e;2&f;' z='&#65;&lt;&e;'/>";
    EXPECT_EQ(CopiedAttributes(document, WithEntities(XmlEntityHandling::ExpandCharEntities)),
              R"(<e x="&e;" y="1&e;2&f;" z="A&lt;&e;"/>)");
    EXPECT_EQ(CopiedAttributes(document, WithEntities(XmlEntityHandling::ExpandEntities)),
              R"(<e x="E" y="1E2F" z="A&lt;E"/>)");
    // A character reference that is kept as written is text for the writer.
    EXPECT_EQ(CopiedAttributes(document, WithEntities(XmlEntityHandling::ExpandNothing)),
              R"(<e x="&e;" y="1&e;2&f;" z="&amp;#65;&lt;&e;"/>)");
}

TEST(XmlTextWriterAttributes, SpaceAndLanguageAreInForceInTheCopy) {
    DocumentReader reader("<a xml:space='preserve' xml:lang='de-AT'/>");
    reader.ReadToElement();
    MemoryWriter writer;
    writer->WriteStartElement("e");
    writer->WriteAttributes(&*reader, false);
    EXPECT_EQ(writer->GetXmlSpace(), Xml::XmlSpace::SpacePreserve);
    EXPECT_EQ(writer->GetXmlLang(), "de-AT");
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), R"(<e xml:space="preserve" xml:lang="de-AT"/>)");
}

TEST(XmlTextWriterAttributes, NewLinesAreHandledAsInAnyValue) {
    const std::string document = "<a x='1\n2\t3\r\n4\r5&#13;&#10;6'/>";
    constexpr struct {
        Xml::NewLineHandling::NEWLINE_HANDLING handling;
        const char* expected;
    } kCases[] = {
        {Xml::NewLineHandling::NoHandling, "<e x=\"1\n2\t3\r\n4\r5\r\n6\"/>"},
        {Xml::NewLineHandling::Entitize, R"(<e x="1&#xA;2&#x9;3&#xD;&#xA;4&#xD;5&#xD;&#xA;6"/>)"},
        // The character behind a carriage return goes with it.
        {Xml::NewLineHandling::Replace, R"(<e x="1&#xA;2&#x9;3&#xA;4&#xA;&#xA;6"/>)"},
    };
    for (const auto& c : kCases) {
        DocumentReader reader(document);
        reader.ReadToElement();
        MemoryWriter writer;
        writer->SetNewLineHandling(c.handling);
        writer->WriteStartElement("e");
        writer->WriteAttributes(&*reader, false);
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), c.expected);
    }
}

TEST(XmlTextWriterAttributes, TheReaderMustStandOnAnElementADeclarationOrAnAttribute) {
    int refused = 0;
    for (const XmlNodeType type : support::kEveryNodeType) {
        if (type == XmlNodeType::Element || type == XmlNodeType::XmlDeclaration ||
            type == XmlNodeType::Attribute) {
            continue;
        }
        SCOPED_TRACE(type.ToString());
        DocumentReader reader(support::kEveryNode);
        support::ReadToType(*reader, type);
        MemoryWriter writer;
        writer->WriteStartElement("e");
        EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), "Invalid XmlReader position",
                          "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Element);
        EXPECT_EQ(reader->NodeType(), type);
        EXPECT_EQ(writer.Text(), "<e");
        ++refused;
    }
    EXPECT_EQ(refused, 10);
}

TEST(XmlTextWriterAttributes, AReaderThatStandsOnNoNodeIsRefused) {
    constexpr char kPosition[] = "Invalid XmlReader position";
    XmlTextReader closed;
    DocumentReader reader("<a x='1'/>");
    MemoryWriter writer;
    writer->WriteStartElement("e");
    EXPECT_THROW_FULL(writer->WriteAttributes(&closed, false), kPosition, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), kPosition, "", -1, -1);
    reader.ReadAll();
    EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), kPosition, "", -1, -1);
    EXPECT_EQ(writer.Text(), "<e");
}

TEST(XmlTextWriterAttributes, AReaderIsAskedFor) {
    MemoryWriter writer;
    writer->WriteStartElement("e");
    EXPECT_THROW_FULL(writer->WriteAttributes(nullptr, false), "Invalid Argument", "", -1, -1);
    EXPECT_EQ(writer.Text(), "<e");
}

TEST(XmlTextWriterAttributes, WhatTheWriterThrowsPassesThrough) {
    constexpr struct {
        const char* document;
        bool namespaces;  // of the writer
        const char* message;
        const char* reason;
    } kCases[] = {
        {"<a p:x='1'/>", true, "Invalid Argument: Prefix defined for empty namespace",
         "a prefix that is not declared"},
        {"<a xmlns:p='urn:p' p:x='1'/>", false, "Invalid Argument: Namespaces not enabled",
         "the writer knows no prefixes"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.reason);
        DocumentReader reader(c.document);
        reader.ReadToElement();
        MemoryWriter writer;
        writer->SetNamespaces(c.namespaces);
        writer->WriteStartElement("e");
        EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), c.message, "", -1, -1);
    }
    DocumentReader reader("<a x='1'/>");
    reader.ReadToElement();
    MemoryWriter writer;
    writer->WriteStartElement("e");
    writer->WriteString("t");
    EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), "Invalid state", "", -1, -1);
    writer->Close();
    reader->MoveToElement();
    EXPECT_THROW_FULL(writer->WriteAttributes(&*reader, false), "Invalid Operation: Writer closed",
                      "", -1, -1);
}

// Nodes. An end tag is "<", the name, ">" and a NUL.

struct NodeCase {
    const char* reason;
    const char* document;
    XmlNodeType::XML_NODE_TYPE type;  // of the node that is copied,
    int number;                       // which is the so-manieth of its type
    std::string expected;             // behind "<w>"
    XmlNodeType::XML_NODE_TYPE next;  // where the reader is left,
    const char* name;                 // and that node's name
};

void ExpectCopy(const NodeCase& c) {
    SCOPED_TRACE(c.reason);
    DocumentReader reader(c.document);
    ReadToNode(*reader, c.type, c.number);
    MemoryWriter writer;
    writer->WriteStartElement("w");
    writer->WriteString("");
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(), "<w>" + c.expected);
    EXPECT_EQ(reader->NodeType(), c.next) << reader->NodeType().ToString();
    EXPECT_EQ(reader->Name(), c.name);
    EXPECT_EQ(writer->GetWriteState(), WriteState::Content);
}

TEST(XmlTextWriterNode, EveryTypeHasItsCall) {
    const NodeCase kCases[] = {
        {"an empty element", "<a><b x='1'/><c/></a>", XmlNodeType::Element, 2, R"(<b x="1"/>)",
         XmlNodeType::Element, "c"},
        {"an element with an end tag", "<a><b x='1'></b><c/></a>", XmlNodeType::Element, 2,
         "<b x=\"1\"><b>\0"s, XmlNodeType::Element, "c"},
        {"a text", "<a>1 &lt; 2<c/></a>", XmlNodeType::Text, 1, "1 &lt; 2", XmlNodeType::Element,
         "c"},
        {"a section", "<a><![CDATA[<&]]><c/></a>", XmlNodeType::CDATA, 1, "<![CDATA[<&]]>",
         XmlNodeType::Element, "c"},
        {"a reference", "<!DOCTYPE a [<!ENTITY e 'E'>]><a>&e;<c/></a>",
         XmlNodeType::EntityReference, 1, "&e;", XmlNodeType::Element, "c"},
        {"an instruction", "<a><?p data ?><c/></a>", XmlNodeType::ProcessingInstruction, 1,
         "<?p data ?>", XmlNodeType::Element, "c"},
        {"an instruction without data", "<a><?p?><c/></a>", XmlNodeType::ProcessingInstruction, 1,
         "<?p ?>", XmlNodeType::Element, "c"},
        {"a comment", "<a><!-- c --><c/></a>", XmlNodeType::Comment, 1, "<!-- c -->",
         XmlNodeType::Element, "c"},
        {"white space", "<a> \t<c/></a>", XmlNodeType::Whitespace, 1, " \t", XmlNodeType::Element,
         "c"},
        {"white space that means something", "<a xml:space='preserve'>  <c/></a>",
         XmlNodeType::SignificantWhitespace, 1, "  ", XmlNodeType::Element, "c"},
        {"a declaration", "<?xml version='1.0'  encoding='UTF-8'?><a/>",
         XmlNodeType::XmlDeclaration, 1, "<?xml version='1.0'  encoding='UTF-8'?>",
         XmlNodeType::Element, "a"},
    };
    for (const NodeCase& c : kCases)
        ExpectCopy(c);
}

TEST(XmlTextWriterNode, ADocumentTypeHasItsIdentifiersAndItsSubset) {
    constexpr struct {
        const char* document;
        const char* expected;
    } kCases[] = {
        {"<!DOCTYPE a><a/>", "<!DOCTYPE a>"},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a/>", R"(<!DOCTYPE a SYSTEM "a.dtd">)"},
        {"<!DOCTYPE a PUBLIC 'p' 'a.dtd'><a/>", R"(<!DOCTYPE a PUBLIC "p" "a.dtd">)"},
        {"<!DOCTYPE a [<!ENTITY e \"E\">]><a/>", R"(<!DOCTYPE a [<!ENTITY e "E">]>)"},
        {"<!DOCTYPE a PUBLIC 'p' 's' [ <!ENTITY e '&#65;'> ] ><a/>",
         R"(<!DOCTYPE a PUBLIC "p" "s" [ <!ENTITY e '&#65;'> ]>)"},
    };
    for (const auto& c : kCases) {
        DocumentReader reader(c.document);
        reader.ReadNodes(1);
        MemoryWriter writer;
        writer->WriteNode(&*reader, false);
        EXPECT_EQ(writer.Text(), c.expected);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Prolog);
        EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    }
}

TEST(XmlTextWriterNode, NothingIsWrittenForOtherTypes) {
    DocumentReader reader("<!DOCTYPE a [<!ENTITY e 'E'>]><a>&e;<c/></a>");
    reader.ReadToElement();
    ReadToNode(*reader, XmlNodeType::EntityReference);
    reader->ResolveEntity();
    ReadToNode(*reader, XmlNodeType::EndEntity);
    MemoryWriter writer;
    writer->WriteStartElement("w");
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(), "<w");
    EXPECT_EQ(reader->Name(), "c");
}

TEST(XmlTextWriterNode, AnAttributeIsPassedOver) {
    DocumentReader reader("<a x='1'>t<b/></a>");
    reader.ReadToElement();
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    MemoryWriter writer;
    writer->WriteStartElement("w");
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(), "<w");
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
}

// Deliberate: an end tag is what WriteFullEndElement() writes, no end tag of XML.
TEST(XmlTextWriterNode, DeliberateEndTagsHaveNoSlashAndANul) {
    ExpectCopy({"nested", "<a><b><c><d/></c></b></a>", XmlNodeType::Element, 2,
                "<b><c><d/><c>\0<b>\0"s, XmlNodeType::EndElement, "a"});
    Xml::UnicodeEncoding utf16(false, false, false);
    MemoryWriter writer(utf16);
    DocumentReader reader("<a>t</a>");
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(), "<\0a\0>\0t\0<\0a\0>\0\0\0"s);
}

TEST(XmlTextWriterNode, TheCopyStopsBehindTheNode) {
    const NodeCase kCases[] = {
        {"a sibling follows the empty element", "<a><b/><c>t</c></a>", XmlNodeType::Element, 2,
         "<b/>", XmlNodeType::Element, "c"},
        {"the parent ends behind the empty element", "<a><b/></a>", XmlNodeType::Element, 2, "<b/>",
         XmlNodeType::EndElement, "a"},
        {"a sibling follows the end tag", "<a><b>t</b><c>t</c></a>", XmlNodeType::Element, 2,
         "<b>t<b>\0"s, XmlNodeType::Element, "c"},
        {"the parent ends behind the end tag", "<a><b>t</b></a>", XmlNodeType::Element, 2,
         "<b>t<b>\0"s, XmlNodeType::EndElement, "a"},
        {"text follows the end tag", "<a><b>t</b>u</a>", XmlNodeType::Element, 2, "<b>t<b>\0"s,
         XmlNodeType::Text, ""},
        {"an element of the same name inside", "<a><b><b/><b>t</b></b><b/></a>",
         XmlNodeType::Element, 2, "<b><b/><b>t<b>\0<b>\0"s, XmlNodeType::Element, "b"},
        {"an element follows the text", "<a>t<b>u</b></a>", XmlNodeType::Text, 1, "t",
         XmlNodeType::Element, "b"},
        {"the element ends behind the text", "<a><b>t</b></a>", XmlNodeType::Text, 1, "t",
         XmlNodeType::EndElement, "b"},
        {"a comment follows the comment", "<a><!--1--><!--2--></a>", XmlNodeType::Comment, 1,
         "<!--1-->", XmlNodeType::Comment, ""},
        {"the document ends", "<a><b/></a>", XmlNodeType::Element, 1, "<a><b/><a>\0"s,
         XmlNodeType::None, ""},
        {"a comment follows the root element", "<a>t</a><!--c-->", XmlNodeType::Element, 1,
         "<a>t<a>\0"s, XmlNodeType::Comment, ""},
    };
    for (const NodeCase& c : kCases)
        ExpectCopy(c);
}

TEST(XmlTextWriterNode, AnEndTagIsWrittenAndOneNodeRead) {
    constexpr struct {
        const char* document;
        XmlNodeType::XML_NODE_TYPE next;
    } kCases[] = {
        {"<a><b>t</b></a>", XmlNodeType::EndElement},
        {"<a><b>t</b><b>u</b></a>", XmlNodeType::Element},
        {"<a><b>t</b>u</a>", XmlNodeType::Text},
    };
    for (const auto& c : kCases) {
        DocumentReader reader(c.document);
        ReadToNode(*reader, XmlNodeType::EndElement);
        MemoryWriter writer;
        writer->WriteStartElement("w");
        writer->WriteStartElement("v");
        writer->WriteNode(&*reader, false);
        EXPECT_EQ(writer.Text(), "<w><v><v>\0"s);
        EXPECT_EQ(reader->NodeType(), c.next);
    }
}

TEST(XmlTextWriterNode, BeforeTheFirstNodeTheWholeDocumentIsCopied) {
    const std::string document =
        "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e 'E'>]><!--c--><?p d?>"
        "<r x='1' y='2'>t<![CDATA[d]]> &e;<b xml:space='preserve' z='3'> </b></r><!--f-->";
    DocumentReader reader(document);
    MemoryWriter writer;
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(),
              "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e 'E'>]><!--c--><?p d?>"
              "<r x=\"1\" y=\"2\">t<![CDATA[d]]> &e;<b xml:space=\"preserve\" z=\"3\"> "
              "<b>\0<r>\0<!--f-->"s);
    EXPECT_TRUE(reader->Eof());
    writer->WriteNode(&*reader, false);
    EXPECT_FALSE(reader->Read());
}

TEST(XmlTextWriterNode, TheRestOfADocumentThatHasEndedIsNothing) {
    DocumentReader reader("<a/>");
    reader.ReadAll();
    MemoryWriter writer;
    writer->WriteNode(&*reader, true);
    EXPECT_EQ(writer.Text(), "");
    EXPECT_EQ(writer->GetWriteState(), WriteState::Start);
}

TEST(XmlTextWriterNode, ReferencesAreCopiedAsTheReaderTellsThem) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E'><!ENTITY m '<b>M</b>'>]>"
        "<a x='&e;'>1&e;2&m;&lt;&#65;</a>";
    const struct {
        XmlEntityHandling::XML_ENTITY_HANDLING handling;
        std::string expected;
    } kCases[] = {
        {XmlEntityHandling::ExpandCharEntities, "<a x=\"&e;\">1&e;2&m;&lt;A<a>\0"s},
        {XmlEntityHandling::ExpandEntities, "<a x=\"E\">1E2<b>M<b>\0&lt;A<a>\0"s},
        // Kept in the text, they are text for the writer.
        {XmlEntityHandling::ExpandNothing, "<a x=\"&e;\">1&amp;e;2&amp;m;&lt;&amp;#65;<a>\0"s},
    };
    for (const auto& c : kCases) {
        DocumentReader reader(document, WithEntities(c.handling));
        reader.ReadToElement();
        MemoryWriter writer;
        writer->WriteNode(&*reader, false);
        EXPECT_EQ(writer.Text(), c.expected);
    }
}

TEST(XmlTextWriterNode, DeclarationsAreWrittenOnceAndWhereTheyStood) {
    const NodeCase kCases[] = {
        {"the default namespace", "<a><b y='1' xmlns='urn:b' x='2'/></a>", XmlNodeType::Element, 2,
         R"(<b y="1" xmlns="urn:b" x="2"/>)", XmlNodeType::EndElement, "a"},
        {"the prefix of the element", "<a><p:b y='1' xmlns:p='urn:p' p:x='2'/></a>",
         XmlNodeType::Element, 2, R"(<p:b y="1" xmlns:p="urn:p" p:x="2"/>)",
         XmlNodeType::EndElement, "a"},
        {"another prefix", "<a><b p:x='1' xmlns:p='urn:p'/></a>", XmlNodeType::Element, 2,
         R"(<b p:x="1" xmlns:p="urn:p"/>)", XmlNodeType::EndElement, "a"},
        {"the default namespace is inherited", "<a xmlns='urn:a'><b><c/></b></a>",
         XmlNodeType::Element, 1, "<a xmlns=\"urn:a\"><b><c/><b>\0<a>\0"s, XmlNodeType::None, ""},
        {"the default namespace is taken back", "<a xmlns='urn:a'><b xmlns=''/></a>",
         XmlNodeType::Element, 1, "<a xmlns=\"urn:a\"><b xmlns=\"\"/><a>\0"s, XmlNodeType::None,
         ""},
        {"an element whose namespace is declared around it",
         "<r xmlns='urn:r' xmlns:p='urn:p'><a><p:b p:x='1'/></a></r>", XmlNodeType::Element, 2,
         "<a xmlns=\"urn:r\"><p:b p:x=\"1\" xmlns:p=\"urn:p\"/><a>\0"s, XmlNodeType::EndElement,
         "r"},
    };
    for (const NodeCase& c : kCases)
        ExpectCopy(c);
}

// Deliberate: a prefix that is given with its namespace is declared again on every element.
TEST(XmlTextWriterNode, DeliberateAPrefixInScopeIsDeclaredAgain) {
    ExpectCopy({"a prefix in scope", "<p:a xmlns:p='urn:p'><p:b/></p:a>", XmlNodeType::Element, 1,
                "<p:a xmlns:p=\"urn:p\"><p:b xmlns:p=\"urn:p\"/><p:a>\0"s, XmlNodeType::None, ""});
}

TEST(XmlTextWriterNode, AnElementIsIndentedAndItsEndTagIsNot) {
    DocumentReader reader("<b><c/>t<d/></b>");
    reader.ReadToElement();
    MemoryWriter writer;
    writer->SetFormatting(Xml::Formatting::Indented);
    writer->WriteStartElement("w");
    writer->WriteNode(&*reader, false);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<w>\r\n  <b>\r\n    <c/>t<d/><b>\0\r\n</w>"s);
}

TEST(XmlTextWriterNode, ALongDocumentIsCopiedWhole) {
    std::string document = "<r>";
    std::string expected = "<r>";
    for (int i = 0; i < 5000; ++i) {
        document += "<e n='" + std::to_string(i) + "'>text</e>";
        expected += "<e n=\"" + std::to_string(i) + "\">text<e>\0"s;
    }
    DocumentReader reader(document + "</r>");
    MemoryWriter writer;
    writer->WriteNode(&*reader, false);
    EXPECT_TRUE(writer.Text() == expected + "<r>\0"s);
}

TEST(XmlTextWriterNode, AReaderIsAskedFor) {
    MemoryWriter writer;
    EXPECT_THROW_FULL(writer->WriteNode(nullptr, false), "Invalid Argument", "", -1, -1);
    EXPECT_EQ(writer->GetWriteState(), WriteState::Start);
}

TEST(XmlTextWriterNode, WhatTheWriterThrowsPassesThroughAndWhatWasWrittenStays) {
    constexpr struct {
        const char* document;
        XmlNodeType::XML_NODE_TYPE type;
        const char* message;
    } kCases[] = {
        {"<a>t</a>", XmlNodeType::Text, "Invalid Operation: Text not allowed in this state"},
        {"<a><![CDATA[t]]></a>", XmlNodeType::CDATA,
         "Invalid Operation: Text not allowed in this state"},
        {"<a>&e;</a>", XmlNodeType::EntityReference, "Invalid Operation: Invalid state"},
        {"<a>t</a>", XmlNodeType::EndElement, "Invalid Operation: Wrong state"},
        {"<p:a/>", XmlNodeType::Element, "Invalid Argument: Prefix not declared"},
        {"<xmlp:a xmlns:xmlp='urn:p'/>", XmlNodeType::Element, "Invalid Argument: Invalid Prefix"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.message);
        DocumentReader reader(c.document);
        ReadToNode(*reader, c.type);
        MemoryWriter writer;
        writer->WriteComment("c");
        EXPECT_THROW_FULL(writer->WriteNode(&*reader, false), c.message, "", -1, -1);
        EXPECT_EQ(writer.Text(), "<!--c-->");
        EXPECT_EQ(reader->NodeType(), c.type);
        writer->Close();
        EXPECT_THROW_FULL(writer->WriteNode(&*reader, false), "Invalid Operation: Writer closed",
                          "", -1, -1);
    }
}

TEST(XmlTextWriterNode, ADocumentTypeInAnElementIsRefused) {
    DocumentReader reader("<!DOCTYPE a><a/>");
    MemoryWriter writer;
    writer->WriteStartElement("w");
    EXPECT_THROW_FULL(writer->WriteNode(&*reader, false),
                      "Invalid Operation: Doctype not allowed in this state", "", -1, -1);
    EXPECT_EQ(writer->GetWriteState(), WriteState::Element);
}

TEST(XmlTextWriterNode, ARootElementOfAnotherNameThanTheDocumentTypeIsRefused) {
    DocumentReader reader("<!DOCTYPE b><a/>");
    MemoryWriter writer;
    EXPECT_THROW_FULL(writer->WriteNode(&*reader, false),
                      "Invalid Argument: Root element name does not match document type", "", -1,
                      -1);
    EXPECT_EQ(writer.Text(), "<!DOCTYPE b>");
}

TEST(XmlTextWriterNode, WhatTheReaderThrowsPassesThroughAndWhatWasWrittenStays) {
    DocumentReader reader("<a>\n<b/></c>");
    MemoryWriter writer;
    try {
        writer->WriteNode(&*reader, false);
        ADD_FAILURE() << "nothing is thrown";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "End tag 'c' doesn't match start tag 'a'");
        EXPECT_EQ(error.LineNumber(), 2);
    }
    EXPECT_EQ(writer.Text(), "<a>\r\n<b/>");
    EXPECT_EQ(writer->GetWriteState(), WriteState::Content);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<a>\r\n<b/></a>");
    XmlTextReader closed;
    EXPECT_THROW_TEXT(writer->WriteNode(&closed, false), "No source stream to parse", 0, 0);
}

TEST(XmlTextWriterNode, WhatAnEntityOfAValueHoldsIsNotLookedAt) {
    DocumentReader reader("<!DOCTYPE a [<!ENTITY e '<'>]><a x='1&e;2'/>");
    MemoryWriter writer;
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(writer.Text(), "<!DOCTYPE a [<!ENTITY e '<'>]><a x=\"1&e;2\"/>");
}

}  // namespace
