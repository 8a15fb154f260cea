// SPDX-License-Identifier: MIT
//
// What a tree is written as.
#include <espalier/dom.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>

#include "dom/LoadText.h"
#include "support/ExpectThrow.h"
#include "support/MemoryWriter.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;
using Dom::NodePtr;
using Dom::WriteNode;
using support::MemoryWriter;

constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";
constexpr char kXmlnsUri[] = "http://www.w3.org/2000/xmlns/";

std::string Written(const Node& node) {
    MemoryWriter writer;
    WriteNode(node, *writer);
    return writer.Text();
}

// What the root element of a document that was loaded from a text is written as.
std::string Rewritten(std::string_view text) {
    Document document;
    document.LoadXml(text);
    return Written(*document.DocumentElement());
}

// Documents.

TEST(WriteNode, ADocumentBeginsWithADeclaration) {
    Document document;
    document.LoadXml("<!--1--><a><b>t</b></a><?p 2?>");
    EXPECT_EQ(Written(document),
              R"(<?xml version="1.0" encoding="UTF-8"?><!--1--><a><b>t</b></a><?p 2?>)");
    document.SetXmlStandalone(true);
    EXPECT_EQ(Written(document), R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
                                 R"(<!--1--><a><b>t</b></a><?p 2?>)");
}

TEST(WriteNode, ADocumentAddsToWhatHasBegun) {
    Document document;
    document.LoadXml("<!--1--><a/>");
    MemoryWriter begun;
    begun->WriteStartDocument(false);
    WriteNode(document, *begun);
    EXPECT_EQ(begun.Text(),
              R"(<?xml version="1.0" encoding="UTF-8" standalone="no"?><!--1--><a/>)");

    MemoryWriter inside;
    inside->WriteStartElement("r");
    WriteNode(document, *inside);
    inside->WriteEndElement();
    EXPECT_EQ(inside.Text(), "<r><!--1--><a/></r>");
}

TEST(WriteNode, AnEmptyDocumentIsADeclaration) {
    EXPECT_EQ(Written(Document()), R"(<?xml version="1.0" encoding="UTF-8"?>)");
}

TEST(WriteNode, TheTypeOfADocumentIsWrittenWhenItNamesTheRoot) {
    constexpr struct {
        const char* type;
        const char* root;
        const char* written;
    } kCases[] = {
        {"a", "a", R"(<!DOCTYPE a PUBLIC "p" "s"><a/>)"},
        {"b", "a", "<a/>"},
        {"p:a", "p:a", R"(<p:a xmlns:p="urn:u"/>)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.root);
        Dom::DocumentType type(c.type, "p", "s", nullptr);
        const std::string_view root = c.root;
        const Document document(root == "a" ? "" : "urn:u", root, &type, nullptr);
        EXPECT_EQ(Written(document),
                  std::string(R"(<?xml version="1.0" encoding="UTF-8"?>)") + c.written);
    }
}

TEST(WriteNode, ATypeThatIsAChildIsWrittenWhereItStands) {
    Document document;
    document.AppendChild(document.CreateComment("c"));
    document.AppendChild(new Dom::DocumentType("a", "", "s", &document));
    document.AppendChild(document.CreateElement("a"));
    EXPECT_EQ(Written(document),
              R"(<?xml version="1.0" encoding="UTF-8"?><!--c--><!DOCTYPE a SYSTEM "s"><a/>)");
}

TEST(WriteNode, BlankTextsOutsideOfElementsAreLeftOut) {
    Document document;
    document.AppendChild(document.CreateTextNode("\n"));
    document.AppendChild(document.CreateElement("a"));
    document.AppendChild(document.CreateTextNode(""));
    EXPECT_EQ(Written(document), R"(<?xml version="1.0" encoding="UTF-8"?><a/>)");
    document.AppendChild(document.CreateTextNode("x "));
    EXPECT_THROW_TEXT(Written(document), "Invalid Operation: Text not allowed in this state", -1,
                      -1);
}

// Nodes.

TEST(WriteNode, NodesOfEveryType) {
    constexpr const char* kTexts[] = {
        "<a/>",
        "<a>t</a>",
        "<a>&lt;&amp;&gt;</a>",
        "<a><![CDATA[<&]]></a>",
        "<a><!--c--></a>",
        "<a><?p d?></a>",
        "<a>1&e;2</a>",
        R"(<a x="1" y=""/>)",
        R"(<a x="&lt;&amp;&quot;"/>)",
        "<a><b/><c><d/></c>t<e>u</e></a>",
        "<a><![CDATA[]]></a>",
        "<\xC3\xA9>\xE2\x82\xAC</\xC3\xA9>",
    };
    for (const char* const text : kTexts)
        EXPECT_EQ(Rewritten(text), text);
}

TEST(WriteNode, WritesPartsOfATreeAlone) {
    Document document;
    document.LoadXml("<a>1<b x='2'>3<c/></b><d/></a>");
    const Node& b = *document.DocumentElement()->FirstChild()->NextSibling();
    EXPECT_EQ(Written(b), R"(<b x="2">3<c/></b>)");
    MemoryWriter writer;
    writer->WriteStartElement("r");
    for (const Node& child : b.Children())
        WriteNode(child, *writer);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<r>3<c/></r>");
}

TEST(WriteNode, AFragmentIsItsChildren) {
    Document document;
    const NodePtr fragment(document.CreateDocumentFragment());
    fragment->AppendChild(document.CreateElement("a"));
    fragment->AppendChild(document.CreateTextNode("t"));
    Node* const inner = fragment->AppendChild(document.CreateDocumentFragment());
    inner->AppendChild(document.CreateComment("c"));
    MemoryWriter writer;
    writer->WriteStartElement("r");
    WriteNode(*fragment, *writer);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<r><a/>t<!--c--></r>");
}

TEST(WriteNode, AnAttributeGoesIntoTheOpenTag) {
    Document document;
    document.LoadXml("<a x='1&amp;2' xmlns:p='urn:p' p:y='3'/>");
    const Element& root = *document.DocumentElement();
    MemoryWriter writer;
    writer->WriteStartElement("r");
    WriteNode(*root.GetAttributeNode("x"), *writer);
    WriteNode(*root.GetAttributeNodeNS("urn:p", "y"), *writer);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), R"(<r x="1&amp;2" p:y="3" xmlns:p="urn:p"/>)");
}

TEST(WriteNode, TheNodesUnderAReferenceAreNotWritten) {
    Document document("", "a", nullptr, nullptr);
    Node* const reference =
        document.DocumentElement()->AppendChild(document.CreateEntityReference("e"));
    reference->AppendChild(document.CreateTextNode("what the entity stands for"));
    EXPECT_EQ(Written(*document.DocumentElement()), "<a>&e;</a>");
}

TEST(WriteNode, AnAttributeKeepsItsReferences) {
    Document document("", "a", nullptr, nullptr);
    Dom::Attr* const attribute = document.CreateAttribute("x");
    attribute->AppendChild(document.CreateTextNode("1&"));
    attribute->AppendChild(document.CreateEntityReference("e"));
    attribute->AppendChild(document.CreateTextNode("2"));
    document.DocumentElement()->SetAttributeNode(attribute);
    EXPECT_EQ(Written(*document.DocumentElement()), R"(<a x="1&amp;&e;2"/>)");
    MemoryWriter writer;
    writer->WriteStartElement("r");
    WriteNode(*attribute, *writer);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), R"(<r x="1&amp;&e;2"/>)");
}

TEST(WriteNode, ReferencesInTheTextOfAnAttributeAreText) {
    EXPECT_EQ(Rewritten("<a x='1&e;2'/>"), R"(<a x="1&amp;e;2"/>)");
}

// What markup cannot hold.

TEST(WriteNode, WhatEndsMarkupIsTakenApart) {
    Document document;
    const struct {
        NodePtr node;
        const char* written;
    } kCases[] = {
        {NodePtr(document.CreateCDATASection("1]]>2")), "<![CDATA[1]]]]><![CDATA[>2]]>"},
        {NodePtr(document.CreateCDATASection("]]>")), "<![CDATA[]]]]><![CDATA[>]]>"},
        {NodePtr(document.CreateCDATASection("]]>]]>")),
         "<![CDATA[]]]]><![CDATA[>]]]]><![CDATA[>]]>"},
        {NodePtr(document.CreateCDATASection("]]]>")), "<![CDATA[]]]]]><![CDATA[>]]>"},
        {NodePtr(document.CreateCDATASection("]] >]")), "<![CDATA[]] >]]]>"},
        {NodePtr(document.CreateComment("1--2")), "<!--1- -2-->"},
        {NodePtr(document.CreateComment("---")), "<!--- - - -->"},
        {NodePtr(document.CreateComment("1-")), "<!--1- -->"},
        {NodePtr(document.CreateComment("-1")), "<!---1-->"},
        {NodePtr(document.CreateComment("-")), "<!--- -->"},
        {NodePtr(document.CreateProcessingInstruction("p", "1?>2")), "<?p 1? >2?>"},
        {NodePtr(document.CreateProcessingInstruction("p", "? >")), "<?p ? >?>"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.written);
        MemoryWriter writer;
        writer->WriteStartElement("r");
        WriteNode(*c.node, *writer);
        writer->WriteEndElement();
        const std::string text = writer.Text();
        EXPECT_EQ(text, "<r>" + std::string(c.written) + "</r>");
        EXPECT_NO_THROW(document.LoadXml(text));
    }
}

// Trees that were edited.

TEST(WriteNode, ChildrenAreWrittenInTheirTrueOrder) {
    Document document;
    document.LoadXml("<r><a/><b/><c/></r>");
    Element& root = *document.DocumentElement();
    Node* const b = root.FirstChild()->NextSibling();
    root.InsertBefore(document.CreateElement("n"), b);
    EXPECT_EQ(Written(root), "<r><a/><n/><b/><c/></r>");
    const NodePtr old(root.ReplaceChild(document.CreateElement("m"), b));
    EXPECT_EQ(Written(root), "<r><a/><n/><m/><c/></r>");
    EXPECT_EQ(Written(*old), "<b/>");
    static_cast<Dom::Text*>(root.InsertBefore(document.CreateTextNode("tu"), root.LastChild()))
        ->SplitText(1);
    EXPECT_EQ(Written(root), "<r><a/><n/><m/>tu<c/></r>");
}

TEST(WriteNode, AttributesAreWrittenInTheOrderOfTheMap) {
    Document document("", "a", nullptr, nullptr);
    Element& root = *document.DocumentElement();
    for (const char* const name : {"c", "a", "b"})
        root.SetAttribute(name, "1");
    root.SetAttribute("a", "2");
    root.RemoveAttribute("c");
    EXPECT_EQ(Written(root), R"(<a a="2" b="1"/>)");
}

// Namespaces.

TEST(WriteNode, DeclarationsOfTheTreeAreWrittenOnce) {
    constexpr const char* kTexts[] = {
        R"(<a xmlns="urn:d"><b/></a>)",
        R"(<a xmlns="urn:d"><b xmlns=""><c/></b></a>)",
        R"(<p:a xmlns:p="urn:p"><p:b/><p:c p:x="1"/></p:a>)",
        R"(<p:a xmlns:p="urn:p"><p:b xmlns:p="urn:q"><p:c/></p:b><p:d/></p:a>)",
        R"(<a xmlns:p="urn:d" xmlns="urn:d"><b/><p:c/></a>)",
        R"(<a xmlns:p="urn:d"><b xmlns="urn:d"/><p:b/></a>)",
        R"(<a p:x="1" xmlns:p="urn:p"/>)",
        R"(<a xmlns:p="urn:u" xmlns:q="urn:u" p:x="1" q:y="2"/>)",
        R"(<a xml:lang="en" xml:space="preserve"> </a>)",
        R"(<a xmlns:unused="urn:u"/>)",
        R"(<a xmlns:p="urn:1"><b xmlns:p="urn:1"/></a>)",
        R"(<p:a q:x="1"/>)",
        R"(<xmlns-a xml-b="1"/>)",
    };
    for (const char* const text : kTexts)
        EXPECT_EQ(Rewritten(text), text);
}

// Builds below the root element of a document, which is `<r xmlns:p="urn:p">`.
struct Built {
    const char* what;
    std::function<void(Document& document, Element& root)> build;
    const char* written;  // in the root
};

Element* Add(Node& parent, Document& document, const char* uri, const char* name) {
    Element* const element = document.CreateElementNS(uri, name);
    parent.AppendChild(element);
    return element;
}

const Built kBuilt[] = {
    {"a prefix that is declared above", [](Document& d, Element& r) { Add(r, d, "urn:p", "p:a"); },
     "<p:a/>"},
    {"a prefix that is not declared", [](Document& d, Element& r) { Add(r, d, "urn:q", "q:a"); },
     R"(<q:a xmlns:q="urn:q"/>)"},
    {"a prefix for another namespace",
     [](Document& d, Element& r) { Add(*Add(r, d, "urn:q", "p:a"), d, "urn:q", "p:b"); },
     R"(<p:a xmlns:p="urn:q"><p:b/></p:a>)"},
    {"a declaration holds for its element only",
     [](Document& d, Element& r) {
         Add(r, d, "urn:q", "q:a");
         Add(r, d, "urn:q", "q:b");
     },
     R"(<q:a xmlns:q="urn:q"/><q:b xmlns:q="urn:q"/>)"},
    {"a default namespace",
     [](Document& d, Element& r) {
         Element* const a = Add(r, d, "urn:d", "a");
         Add(*a, d, "urn:d", "b");
         Add(*a, d, "", "c");
         Add(*a, d, "urn:e", "d");
     },
     R"(<a xmlns="urn:d"><b/><c xmlns=""/><d xmlns="urn:e"/></a>)"},
    {"a namespace that has a prefix, too", [](Document& d, Element& r) { Add(r, d, "urn:p", "a"); },
     R"(<a xmlns="urn:p"/>)"},
    {"an attribute with a prefix that is not declared",
     [](Document& d, Element& r) { Add(r, d, "", "a")->SetAttributeNS("urn:q", "q:x", "1"); },
     R"(<a q:x="1" xmlns:q="urn:q"/>)"},
    {"an attribute of a declared namespace without a prefix",
     [](Document& d, Element& r) { Add(r, d, "", "a")->SetAttributeNS("urn:p", "x", "1"); },
     R"(<a p:x="1"/>)"},
    {"an attribute of a namespace without a prefix",
     [](Document& d, Element& r) { Add(r, d, "", "a")->SetAttributeNS("urn:q", "x", "1"); },
     R"(<a ns1:x="1" xmlns:ns1="urn:q"/>)"},
    {"an attribute whose prefix the element has for another namespace",
     [](Document& d, Element& r) {
         Add(r, d, "urn:p", "p:a")->SetAttributeNS("urn:q", "p:x", "1");
     },
     R"(<p:a ns1:x="1" xmlns:ns1="urn:q"/>)"},
    {"declarations that were made as attributes of their namespace",
     [](Document& d, Element& r) {
         Element* const a = Add(r, d, "urn:q", "q:a");
         a->SetAttributeNS(kXmlnsUri, "xmlns:q", "urn:q");
         Element* const b = Add(*a, d, "urn:d", "b");
         b->SetAttributeNS(kXmlnsUri, "xmlns", "urn:d");
     },
     R"(<q:a xmlns:q="urn:q"><b xmlns="urn:d"/></q:a>)"},
    {"a declaration that contradicts",
     [](Document& d, Element& r) {
         Add(r, d, "urn:q", "q:a")->SetAttribute("xmlns:q", "urn:other");
     },
     R"(<q:a xmlns:q="urn:other"/>)"},
    {"attributes of the namespace of xml",
     [](Document& d, Element& r) {
         Element* const a = Add(r, d, "", "a");
         a->SetAttribute("xml:lang", "en");
         a->SetAttributeNS(kXmlUri, "xml:space", "default");
     },
     R"(<a xml:lang="en" xml:space="default"/>)"},
};

TEST(WriteNode, DeclaresWhatTheTreeDoesNot) {
    for (const Built& c : kBuilt) {
        SCOPED_TRACE(c.what);
        Document document;
        document.LoadXml("<r xmlns:p='urn:p'/>");
        c.build(document, *document.DocumentElement());
        EXPECT_EQ(Written(*document.DocumentElement()),
                  R"(<r xmlns:p="urn:p">)" + std::string(c.written) + "</r>");
    }
}

TEST(WriteNode, ATreeThatWasLoadedWithoutNamespacesGetsNoDeclarations) {
    constexpr char kText[] =
        R"(<a xmlns="urn:d" xmlns:p="urn:p"><b p:x="1"/><p:c><d xmlns="urn:e"><e/></d></p:c></a>)";
    support::DocumentReader reader(kText, support::WithoutNamespaces());
    Document document;
    document.Load(*reader, "u");
    EXPECT_EQ(Written(*document.DocumentElement()), kText);
}

TEST(WriteNode, AnOpenElementsNamespacesAreInForce) {
    Document document;
    document.LoadXml("<a xmlns='urn:d' xmlns:p='urn:p'><b p:x='1'/><p:c/></a>");
    Node* const b = document.DocumentElement()->FirstChild();
    Node* const c = document.DocumentElement()->LastChild();
    MemoryWriter writer;
    writer->WriteStartElement("r", "urn:d");
    writer->WriteAttributeString("xmlns", "p", nullptr, "urn:p");
    WriteNode(*b, *writer);
    WriteNode(*c, *writer);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), R"(<r xmlns:p="urn:p" xmlns="urn:d"><b p:x="1"/><p:c/></r>)");

    MemoryWriter other;
    other->WriteStartElement("r");
    WriteNode(*b, *other);
    WriteNode(*c, *other);
    other->WriteEndElement();
    EXPECT_EQ(other.Text(), R"(<r><b p:x="1" xmlns="urn:d" xmlns:p="urn:p"/>)"
                            R"(<p:c xmlns:p="urn:p"/></r>)");
}

TEST(WriteNode, AWriterWithoutNamespacesWritesNamesAsTheyAre) {
    Document document("urn:d", "p:a", nullptr, nullptr);
    Element& root = *document.DocumentElement();
    root.SetAttributeNS("urn:q", "q:x", "1");
    root.SetAttributeNS("urn:q", "y", "2");
    root.AppendChild(document.CreateElementNS("urn:e", "b"));
    MemoryWriter writer;
    writer->SetNamespaces(false);
    WriteNode(root, *writer);
    EXPECT_EQ(writer.Text(), R"(<p:a q:x="1" y="2"><b/></p:a>)");
}

// Settings and failures.

TEST(WriteNode, TheWritersSettingsHold) {
    Document document;
    document.LoadXml("<a x='1'><b/><c>t</c></a>");
    MemoryWriter writer;
    writer->SetFormatting(Xml::Formatting::Indented);
    writer->SetQuoteChar('\'');
    writer->SetNewLineChars("\n");
    WriteNode(*document.DocumentElement(), *writer);
    EXPECT_EQ(writer.Text(), "<a x='1'>\n  <b/>\n  <c>t</c>\n</a>");
}

TEST(WriteNode, AnEncodingIsTheWriters) {
    Document document;
    document.LoadXml("<a>\xC3\xA9</a>");
    MemoryWriter writer(*Xml::Encoding::Latin1());
    WriteNode(document, *writer);
    EXPECT_EQ(writer.Text(), "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?><a>\xE9</a>");
}

TEST(WriteNode, ThrowsWhatTheWriterThrows) {
    Document document("", "a", nullptr, nullptr);
    const struct {
        NodePtr node;
        const char* message;
    } kCases[] = {
        {NodePtr(document.CreateEntityReference("")), "Invalid Argument: Empty name"},
        {NodePtr(document.CreateEntityReference("1")), "Invalid Argument: Not a valid XML name"},
        {NodePtr(document.CreateProcessingInstruction("1", "")),
         "Invalid Argument: Not a valid XML name"},
        {NodePtr(document.CreateTextNode("\x01")), "Invalid XML character"},
        {NodePtr(document.CreateComment("\x01")), "Invalid XML character"},
        {NodePtr(document.CreateCDATASection("\x01")), "Invalid XML character"},
    };
    for (const auto& c : kCases) {
        MemoryWriter writer;
        writer->WriteStartElement("r");
        EXPECT_THROW_TEXT(WriteNode(*c.node, *writer), c.message, -1, -1);
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), "<r/>");
    }
    MemoryWriter writer;
    EXPECT_THROW_TEXT(WriteNode(*kCases[3].node, *writer),
                      "Invalid Operation: Text not allowed in this state", -1, -1);
    document.DocumentElement()->SetAttribute("xml:space", "none");
    EXPECT_THROW_TEXT(WriteNode(*document.DocumentElement(), *writer),
                      "Bad attribute: Invalid xml:space value", -1, -1);
    Xml::XmlTextWriter closed;
    EXPECT_THROW_TEXT(WriteNode(document, closed), "Invalid Operation: Writer closed", -1, -1);
}

}  // namespace
