// SPDX-License-Identifier: MIT
//
// What tree a document becomes. Elements are read in one of two ways, with namespaces and without.
#include <espalier/dom.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "dom/LoadText.h"
#include "support/PrintAstring.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using support::Lines;
using support::LoadedTree;
using support::LoadText;
using support::PartsOf;
using support::WithNamespaces;
using support::WithoutNamespaces;

constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";

struct Row {
    const char* what;
    const char* document;
    Lines tree;
};

void ExpectTrees(const std::vector<Row>& rows, const support::ReaderSettings& settings) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(LoadedTree(row.document, settings), row.tree) << row.document;
    }
}

// What both ways have in common.
const std::vector<Row> kBoth = {
    {"an empty element", "<a/>", {"Element a"}},
    {"an element without content", "<a></a>", {"Element a"}},
    {"elements in elements",
     "<a><b><c/></b><d></d></a>",
     {"Element a", "  Element b", "    Element c", "  Element d"}},
    {"a text", "<a>t</a>", {"Element a", "  Text \"t\""}},
    {"texts between elements",
     "<a>1<b>2</b>3</a>",
     {"Element a", "  Text \"1\"", "  Element b", "    Text \"2\"", "  Text \"3\""}},
    {"character references in a text", "<a>&lt;&#65;&amp;</a>", {"Element a", "  Text \"<A&\""}},
    {"a CDATA section", "<a><![CDATA[<&]]></a>", {"Element a", "  CDATASection \"<&\""}},
    {"an empty CDATA section", "<a><![CDATA[]]></a>", {"Element a", "  CDATASection \"\""}},
    {"a text and CDATA sections stay apart",
     "<a>1<![CDATA[2]]><![CDATA[3]]>4</a>",
     {"Element a", "  Text \"1\"", "  CDATASection \"2\"", "  CDATASection \"3\"", "  Text \"4\""}},
    {"a comment", "<a><!--c--></a>", {"Element a", "  Comment \"c\""}},
    {"attributes in their order",
     "<a c='1' b='' a='&lt;&#65;'/>",
     {R"(Element a c="1" b="" a="<A")"}},
    {"comments and instructions around the root",
     "<!--1--> <?p 2?>\n<!--3--><a/> <?q 4?> <!--5-->\n",
     {"Comment \"1\"", "ProcessingInstruction p \"2\"", "Comment \"3\"", "Element a",
      "ProcessingInstruction q \"4\"", "Comment \"5\""}},
    {"an instruction without data", "<?p?><a/>", {"ProcessingInstruction p \"\"", "Element a"}},
    {"no node for the declaration", "<?xml version='1.0'?>\n<a/>", {"Element a"}},
    {"no node for the document type",
     "<!--1--><!DOCTYPE a SYSTEM 's' [<!--no--><?no?>]><!--2--><?p 3?> <a/>",
     {"Comment \"1\"", "Comment \"2\"", "ProcessingInstruction p \"3\"", "Element a"}},
    {"white space around the root is dropped",
     " \n<!--c-->\n <a/>\n ",
     {"Comment \"c\"", "Element a"}},
};

TEST(Load, MakesTheSameTreeInBothWays) {
    ExpectTrees(kBoth, WithNamespaces());
    ExpectTrees(kBoth, WithoutNamespaces());
}

// With namespaces.

const std::vector<Row> kNamespaceRows = {
    {"a prefix",
     "<p:a xmlns:p='urn:p'><p:b/></p:a>",
     {R"(Element p:a {urn:p} xmlns:p="urn:p")", "  Element p:b {urn:p}"}},
    {"a default namespace",
     "<a xmlns='urn:d'><b/><c xmlns=''/></a>",
     {R"(Element a {urn:d} xmlns="urn:d")", "  Element b {urn:d}", R"(  Element c xmlns="")"}},
    {"namespaces of attributes",
     "<a xmlns='urn:d' x='1' xmlns:p='urn:p' p:x='2'/>",
     {R"(Element a {urn:d} xmlns="urn:d" x="1" xmlns:p="urn:p" p:x{urn:p}="2")"}},
    {"a prefix that is not declared", "<p:a q:x='1'/>", {R"(Element p:a q:x="1")"}},
    {"the prefix xml",
     "<a xml:lang='en'/>",
     {R"(Element a xml:lang{http://www.w3.org/XML/1998/namespace}="en")"}},
    {"white space is kept",
     "<a> <b/>\n</a>",
     {"Element a", "  Text \" \"", "  Element b", "  Text \"\\n\""}},
    {"significant white space",
     "<a xml:space='preserve'> <b/></a>",
     {R"(Element a xml:space{http://www.w3.org/XML/1998/namespace}="preserve")", "  Text \" \"",
      "  Element b"}},
    {"instructions",
     "<a><?p d?>t<?xml-stylesheet e?></a>",
     {"Element a", "  ProcessingInstruction p \"d\"", "  Text \"t\"",
      "  ProcessingInstruction xml-stylesheet \"e\""}},
};

TEST(Load, WithNamespacesKeepsWhiteSpaceAndInstructions) {
    ExpectTrees(kNamespaceRows, WithNamespaces());
}

TEST(Load, WithNamespacesTakesTheWhiteSpaceThatTheReaderReports) {
    support::ReaderSettings settings;
    settings.whitespace = Xml::XmlTextReader::WsSignificant;
    EXPECT_EQ(
        LoadedTree("<a> <b xml:space='preserve'> </b> </a>", settings),
        (Lines{"Element a", "  Element b xml:space{" + std::string(kXmlUri) + "}=\"preserve\"",
               "    Text \" \""}));
    settings.whitespace = Xml::XmlTextReader::WsNone;
    EXPECT_EQ(LoadedTree("<a> <b> t </b> </a>", settings),
              (Lines{"Element a", "  Element b", "    Text \" t \""}));
}

TEST(Load, WithNamespacesAnAttributeHasItsValueAndATextChild) {
    Dom::Document document;
    LoadText(document, "<a x='1&lt;2' y='' xmlns:p='urn:p' p:z='3'/>");
    const Dom::Element& root = *document.DocumentElement();
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("x")), R"(value "1<2" node "1<2" Text "1<2")");
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("y")), R"(value "" node "" Text "")");
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("xmlns:p")),
              R"(value "urn:p" node "urn:p" Text "urn:p")");
    EXPECT_EQ(PartsOf(*root.GetAttributeNodeNS("urn:p", "z")), R"(value "3" node "3" Text "3")");
}

TEST(Load, WithNamespacesAPrefixedAttributeIsFoundByItsNamespaceOnly) {
    Dom::Document document;
    LoadText(document, "<a xmlns:p='urn:p' p:x='1' q:x='2' x='3'/>");
    Dom::Element& root = *document.DocumentElement();
    EXPECT_EQ(root.GetAttribute("p:x"), "");
    EXPECT_EQ(root.GetAttributeNS("urn:p", "x"), "1");
    EXPECT_EQ(root.GetAttribute("q:x"), "2");
    EXPECT_EQ(root.GetAttribute("x"), "3");
    EXPECT_EQ(root.GetAttribute("xmlns:p"), "urn:p");
    EXPECT_EQ(root.Attributes()->Length(), 4U);
}

TEST(Load, AttributesAreNotSpecified) {
    for (const support::ReaderSettings& settings : {WithNamespaces(), WithoutNamespaces()}) {
        Dom::Document document;
        LoadText(document, "<a x='1'/>", settings);
        const Dom::Attr* const attribute = document.DocumentElement()->GetAttributeNode("x");
        ASSERT_NE(attribute, nullptr);
        EXPECT_FALSE(attribute->Specified());
        EXPECT_EQ(attribute->OwnerElement(), document.DocumentElement());
    }
}

// Without namespaces.

const std::vector<Row> kPlainRows = {
    {"prefixes mean nothing",
     "<p:a xmlns:p='urn:p' p:x='1'><p:b/></p:a>",
     {R"(Element p:a xmlns:p="urn:p" p:x="1")", "  Element p:b"}},
    {"white space between markup is dropped", "<a> <b/>\n</a>", {"Element a", "  Element b"}},
    {"white space at the ends of a text is kept", "<a> t </a>", {"Element a", "  Text \" t \""}},
    {"significant white space",
     "<a xml:space='preserve'> <b/></a>",
     {R"(Element a xml:space="preserve")", "  Text \" \"", "  Element b"}},
    {"instructions in elements are dropped",
     "<?p 1?><a><?p 2?>t<?xml-stylesheet 3?></a><?p 4?>",
     {"ProcessingInstruction p \"1\"", "Element a", "  Text \"t\"",
      "ProcessingInstruction p \"4\""}},
};

TEST(Load, WithoutNamespacesDropsWhiteSpaceAndInstructionsInElements) {
    ExpectTrees(kPlainRows, WithoutNamespaces());
}

TEST(Load, DeliberateWithoutNamespacesAnAttributeHasItsValueInItsChildrenOnly) {
    Dom::Document document;
    LoadText(document, "<a x='1&lt;2' y='' p:z='3'/>", WithoutNamespaces());
    const Dom::Element& root = *document.DocumentElement();
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("x")), R"(value "1<2" node "" Text "1<2")");
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("y")), R"(value "" node "" Text "")");
    EXPECT_EQ(PartsOf(*root.GetAttributeNode("p:z")), R"(value "3" node "" Text "3")");
    EXPECT_EQ(root.GetAttribute("p:z"), "3");
}

// The prologue and what is told of it.

struct Declaration {
    const char* document;
    const char* version;
    const char* encoding;
    bool standalone;
};

TEST(Load, TellsWhatTheDeclarationSays) {
    constexpr Declaration kCases[] = {
        {"<a/>", "1.0", "", false},
        {"<!--c--><a/>", "1.0", "", false},
        {"<?xml version='1.0'?><a/>", "1.0", "", false},
        {"<?xml version='1.0' encoding='utf-8'?><a/>", "1.0", "utf-8", false},
        {"<?xml version='1.0' encoding='UTF-8' standalone='yes'?><a/>", "1.0", "UTF-8", true},
        {"<?xml version='1.0' standalone='yes'?>\n<!--c--><a/>", "1.0", "", true},
        {"<?xml version='1.0' standalone='no'?><a/>", "1.0", "", false},
    };
    for (const Declaration& c : kCases) {
        for (const support::ReaderSettings& settings : {WithNamespaces(), WithoutNamespaces()}) {
            SCOPED_TRACE(c.document);
            Dom::Document document;
            LoadText(document, c.document, settings);
            EXPECT_EQ(document.XmlVersion(), c.version);
            EXPECT_EQ(document.XmlEncoding(), c.encoding);
            EXPECT_EQ(document.XmlStandalone(), c.standalone);
            EXPECT_EQ(document.InputEncoding(), "UTF-8");
            EXPECT_EQ(document.DocumentURI(), "uri/text.xml");
            EXPECT_EQ(document.BaseURI(), "uri/");
        }
    }
}

TEST(Load, ForgetsWhatAnEarlierDeclarationSaid) {
    Dom::Document document;
    LoadText(document, "<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?><a/>");
    EXPECT_EQ(document.XmlEncoding(), "ISO-8859-1");
    LoadText(document, "<b/>");
    EXPECT_EQ(document.XmlVersion(), "1.0");
    EXPECT_EQ(document.XmlEncoding(), "");
    EXPECT_FALSE(document.XmlStandalone());
    EXPECT_EQ(document.InputEncoding(), "UTF-8");
}

TEST(Load, LeavesTheDocumentTypeAndTheCheckingAsTheyWere) {
    Dom::DocumentType type("other", "", "", nullptr);
    Dom::DOMImplementation implementation;
    Dom::Document document("", "other", &type, &implementation);
    document.SetStrictErrorChecking(false);
    LoadText(document, "<!DOCTYPE a [<!ENTITY e 'E'>]><a/>");
    EXPECT_EQ(document.Doctype(), &type);
    EXPECT_EQ(document.Implementation(), &implementation);
    EXPECT_FALSE(document.StrictErrorChecking());
    EXPECT_EQ(support::TreeBelow(document), Lines{"Element a"});
}

TEST(Load, MakesStyleInstructionsOfThoseForStyleSheets) {
    Dom::Document document;
    LoadText(document, "<?xml-stylesheet href='a'?><?XML-STYLESHEET b?><a/>");
    EXPECT_NE(dynamic_cast<Dom::StyleProcessingInstruction*>(document.FirstChild()), nullptr);
    EXPECT_EQ(document.FirstChild()->NodeValue(), "href='a'");
    Dom::Node* const second = document.FirstChild()->NextSibling();
    EXPECT_NE(dynamic_cast<Dom::ProcessingInstruction*>(second), nullptr);
    EXPECT_EQ(dynamic_cast<Dom::StyleProcessingInstruction*>(second), nullptr);
}

// A removed first child leaves its parent with the stale link that it had.
TEST(Load, WhatIsLoadedIsSeenAfterAReplacedChild) {
    Dom::Document document;
    Dom::Node* first = document.AppendChild(document.CreateComment("first"));
    Dom::Node* old = document.AppendChild(document.CreateComment("old"));
    const Dom::NodePtr replaced(document.ReplaceChild(document.CreateComment("new"), old));
    const Dom::NodePtr removed(document.RemoveChild(first));
    ASSERT_EQ(document.FirstChild(), old);
    LoadText(document, "<a id='x'/>");
    EXPECT_EQ(support::TreeBelow(document), Lines{R"(Element a id="x")"});
    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.FirstChild(), document.DocumentElement());
    EXPECT_EQ(document.GetElementById("x"), document.DocumentElement());
}

// A stream may look at the document that is loaded from it.
TEST(Load, ListsForgetWhatTheyHadMeanwhile) {
    class LookingStream : public support::TrickleStream {
    public:
        LookingStream(IO::Stream& inner, const Dom::Document& document)
            : TrickleStream(inner, 1000), document_(document) {}

        int Read(unsigned char* data, int offset, int count) override {
            if (seen == 0 && document_.HasChildNodes()) seen = document_.ChildNodes().Length();
            return TrickleStream::Read(data, offset, count);
        }

        std::size_t seen = 0;

    private:
        const Dom::Document& document_;
    };
    std::string text;
    for (int i = 0; i < 50000; ++i)
        text += "<!--c-->";
    text += "<a/>";
    IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Dom::Document document;
    LookingStream stream(memory, document);
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    document.Load(reader, "");
    EXPECT_GT(stream.seen, 0u);
    EXPECT_LT(stream.seen, 50001u);
    EXPECT_EQ(document.ChildNodes().Length(), 50001u);
    EXPECT_EQ(document.ChildNodes().Item(50000), document.DocumentElement());
}

TEST(Load, NodesBelongToTheDocument) {
    Dom::Document document;
    LoadText(document, "<!--c--><a x='1'><b>t</b></a>");
    EXPECT_EQ(document.FirstChild()->OwnerDocument(), &document);
    const Dom::Element& root = *document.DocumentElement();
    EXPECT_EQ(root.OwnerDocument(), &document);
    EXPECT_EQ(root.GetAttributeNode("x")->OwnerDocument(), &document);
    EXPECT_EQ(root.FirstChild()->FirstChild()->OwnerDocument(), &document);
    EXPECT_EQ(root.FirstChild()->FirstChild()->NodeType(), Dom::DOMNodeType::TEXT_NODE);
}

}  // namespace
