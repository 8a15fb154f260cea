// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

namespace {

using support::DocumentWriter;
using support::WriterCalls;
using support::WrittenBy;
using Xml::XmlTextWriter;

constexpr char kXmlnsUri[] = "http://www.w3.org/2000/xmlns/";
constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";

struct Document {
    const char* name;
    WriterCalls calls;
    const char* expected;
};

TEST(XmlTextWriterNamespace, Elements) {
    const Document kDocuments[] = {
        {"no namespace", [](XmlTextWriter& w) { w.WriteStartElement("e"); }, "<e/>"},
        {"empty prefix and namespace", [](XmlTextWriter& w) { w.WriteStartElement("", "e", ""); },
         "<e/>"},
        {"a prefix and a namespace",
         [](XmlTextWriter& w) { w.WriteStartElement("a", "x", "urn:x"); },
         "<a:x xmlns:a=\"urn:x\"/>"},
        {"a namespace becomes the default one, on the root too",
         [](XmlTextWriter& w) { w.WriteStartElement("e", "urn:x"); }, "<e xmlns=\"urn:x\"/>"},
        {"the default namespace of the parent",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:x");
             w.WriteStartElement("f", "urn:x");
         },
         "<e xmlns=\"urn:x\"><f/></e>"},
        {"another default namespace",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:x");
             w.WriteStartElement("f", "urn:y");
             w.WriteStartElement("g", "urn:y");
             w.WriteStartElement("h", "urn:x");
         },
         "<e xmlns=\"urn:x\"><f xmlns=\"urn:y\"><g><h xmlns=\"urn:x\"/></g></f></e>"},
        {"a prefix that is bound to the namespace is used",
         [](XmlTextWriter& w) {
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteStartElement("f", "urn:x");
         },
         "<a:e xmlns:a=\"urn:x\"><a:f/></a:e>"},
        {"a prefix without a namespace that is bound",
         [](XmlTextWriter& w) {
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteStartElement("a", "f", nullptr);
             w.WriteStartElement("a", "g", "");
         },
         "<a:e xmlns:a=\"urn:x\"><a:f><a:g/></a:f></a:e>"},
        {"a prefix with its namespace is declared again",
         [](XmlTextWriter& w) {
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteStartElement("a", "f", "urn:x");
         },
         "<a:e xmlns:a=\"urn:x\"><a:f xmlns:a=\"urn:x\"/></a:e>"},
        {"a prefix that is bound to something else",
         [](XmlTextWriter& w) {
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteStartElement("a", "f", "urn:y");
             w.WriteEndElement();
             w.WriteStartElement("g", "urn:x");
         },
         "<a:e xmlns:a=\"urn:x\"><a:f xmlns:a=\"urn:y\"/><a:g/></a:e>"},
        {"a prefix that is shadowed is not used",
         [](XmlTextWriter& w) {
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteStartElement("a", "f", "urn:y");
             w.WriteStartElement("g", "urn:x");
         },
         "<a:e xmlns:a=\"urn:x\"><a:f xmlns:a=\"urn:y\"><g xmlns=\"urn:x\"/></a:f></a:e>"},
        {"a declaration ends with its element",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("a", "e", "urn:x");
             w.WriteEndElement();
             w.WriteStartElement("f", "urn:x");
             w.WriteEndElement();
             w.WriteStartElement("g", "urn:x");
         },
         "<r><a:e xmlns:a=\"urn:x\"/><f xmlns=\"urn:x\"/><g xmlns=\"urn:x\"/></r>"},
        {"no xmlns=\"\" below a default namespace",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:x");
             w.WriteStartElement("f", "");
             w.WriteStartElement("g");
         },
         "<e xmlns=\"urn:x\"><f><g/></f></e>"},
        {"the prefix xml is always bound",
         [](XmlTextWriter& w) { w.WriteStartElement("xml", "e", nullptr); }, "<xml:e/>"},
        {"elements with a text",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteElementString("e", "urn:x", "t");
             w.WriteElementString("a", "e", "urn:x", "t");
         },
         "<r><e xmlns=\"urn:x\">t</e><a:e xmlns:a=\"urn:x\">t</a:e></r>"},
    };
    for (const Document& document : kDocuments) {
        SCOPED_TRACE(document.name);
        DocumentWriter writer;
        document.calls(*writer);
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), document.expected);
    }
}

TEST(XmlTextWriterNamespace, AttributesOfAnElement) {
    const Document kDocuments[] = {
        {"no namespace", [](XmlTextWriter& w) { w.WriteAttributeString("x", "1"); },
         "<a:e x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"empty prefix and namespace",
         [](XmlTextWriter& w) { w.WriteAttributeString("", "x", "", "1"); },
         "<a:e x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"the prefix of the element",
         [](XmlTextWriter& w) { w.WriteAttributeString("a", "x", "urn:a", "1"); },
         "<a:e a:x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"a bound prefix, no namespace given",
         [](XmlTextWriter& w) { w.WriteAttributeString("a", "x", nullptr, "1"); },
         "<a:e a:x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"a namespace takes the bound prefix",
         [](XmlTextWriter& w) { w.WriteAttributeString("x", "urn:a", "1"); },
         "<a:e a:x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"a namespace given with an empty prefix",
         [](XmlTextWriter& w) { w.WriteAttributeString("", "x", "urn:a", "1"); },
         "<a:e a:x=\"1\" xmlns:a=\"urn:a\"/>"},
        {"the prefix xml, however its namespace is given",
         [](XmlTextWriter& w) {
             w.WriteAttributeString("xml", "id", nullptr, "1");
             w.WriteAttributeString("xml", "base", kXmlUri, "2");
             w.WriteAttributeString("xml", "x", "", "3");
         },
         "<a:e xml:id=\"1\" xml:base=\"2\" xml:x=\"3\" xmlns:a=\"urn:a\"/>"},
        {"the namespace of xml",
         [](XmlTextWriter& w) { w.WriteAttributeString("lang", kXmlUri, "en"); },
         "<a:e xml:lang=\"en\" xmlns:a=\"urn:a\"/>"},
        {"a declaration of the element's own prefix is not written twice",
         [](XmlTextWriter& w) { w.WriteAttributeString("xmlns", "a", kXmlnsUri, "urn:a"); },
         "<a:e xmlns:a=\"urn:a\"/>"},
        {"the same without a namespace",
         [](XmlTextWriter& w) { w.WriteAttributeString("xmlns", "a", nullptr, "urn:a"); },
         "<a:e xmlns:a=\"urn:a\"/>"},
        {"the same without a prefix",
         [](XmlTextWriter& w) { w.WriteAttributeString("a", kXmlnsUri, "urn:a"); },
         "<a:e xmlns:a=\"urn:a\"/>"},
        {"another declaration, used at once",
         [](XmlTextWriter& w) {
             w.WriteAttributeString("xmlns", "a", nullptr, "urn:a");
             w.WriteAttributeString("xmlns", "b", nullptr, "urn:b");
             w.WriteAttributeString("x", "urn:b", "1");
             w.WriteStartElement("f", "urn:b");
         },
         "<a:e xmlns:a=\"urn:a\" xmlns:b=\"urn:b\" b:x=\"1\"><b:f/></a:e>"},
        {"a declaration of the default namespace",
         [](XmlTextWriter& w) {
             w.WriteAttributeString("xmlns", "urn:d");
             w.WriteAttributeString("xmlns", "a", nullptr, "urn:a");
             w.WriteStartElement("f", "urn:d");
         },
         "<a:e xmlns=\"urn:d\" xmlns:a=\"urn:a\"><f/></a:e>"},
        {"a declaration in parts",
         [](XmlTextWriter& w) {
             w.WriteStartAttribute("xmlns", "b", nullptr);
             w.WriteString("urn");
             w.WriteString(":b");
             w.WriteEndAttribute();
             w.WriteAttributeString("xmlns", "a", nullptr, "urn:a");
             w.WriteStartElement("f", "urn:b");
         },
         "<a:e xmlns:b=\"urn:b\" xmlns:a=\"urn:a\"><b:f/></a:e>"},
    };
    for (const Document& document : kDocuments) {
        SCOPED_TRACE(document.name);
        DocumentWriter writer;
        writer->WriteStartElement("a", "e", "urn:a");
        document.calls(*writer);
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), document.expected);
    }
}

TEST(XmlTextWriterNamespace, PendingAndGeneratedDeclarations) {
    const Document kDocuments[] = {
        {"a new prefix",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e");
             w.WriteAttributeString("x", "urn:a", "1");
         },
         "<e ns1:x=\"1\" xmlns:ns1=\"urn:a\"/>"},
        {"the new prefix is used again",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e");
             w.WriteAttributeString("x", "urn:a", "1");
             w.WriteAttributeString("y", "urn:a", "2");
             w.WriteStartElement("f", "urn:a");
             w.WriteAttributeString("z", "urn:a", "3");
         },
         "<e ns1:x=\"1\" ns1:y=\"2\" xmlns:ns1=\"urn:a\"><ns1:f ns1:z=\"3\"/></e>"},
        {"the counter goes on in the document",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("e");
             w.WriteAttributeString("x", "urn:a", "1");
             w.WriteEndElement();
             w.WriteStartElement("f");
             w.WriteAttributeString("x", "urn:b", "1");
         },
         "<r><e ns1:x=\"1\" xmlns:ns1=\"urn:a\"/><f ns2:x=\"1\" xmlns:ns2=\"urn:b\"/></r>"},
        {"and begins anew in the next",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e");
             w.WriteAttributeString("x", "urn:a", "1");
             w.WriteEndDocument();
             w.WriteStartElement("e");
             w.WriteAttributeString("x", "urn:a", "1");
         },
         "<e ns1:x=\"1\" xmlns:ns1=\"urn:a\"/><e ns1:x=\"1\" xmlns:ns1=\"urn:a\"/>"},
        {"a prefix in scope is skipped",
         [](XmlTextWriter& w) {
             w.WriteStartElement("ns1", "e", "urn:a");
             w.WriteStartElement("f");
             w.WriteAttributeString("x", "urn:b", "1");
         },
         "<ns1:e xmlns:ns1=\"urn:a\"><f ns2:x=\"1\" xmlns:ns2=\"urn:b\"/></ns1:e>"},
        {"the default namespace is none for attributes",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteAttributeString("x", "urn:a", "1");
         },
         "<e ns1:x=\"1\" xmlns=\"urn:a\" xmlns:ns1=\"urn:a\"/>"},
        {"a prefix with its namespace",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e");
             w.WriteAttributeString("a", "x", "urn:a", "1");
             w.WriteStartElement("f", "urn:a");
         },
         "<e a:x=\"1\" xmlns:a=\"urn:a\"><a:f/></e>"},
        {"an attribute replaces the declaration that is pending",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteAttributeString("xmlns", "urn:a");
             w.WriteStartElement("f", "urn:a");
         },
         "<e xmlns=\"urn:a\"><f/></e>"},
        {"a default namespace that an attribute takes back is declared again",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteStartElement("f");
             w.WriteAttributeString("xmlns", "");
             w.WriteStartElement("g", "urn:a");
         },
         "<e xmlns=\"urn:a\"><f xmlns=\"\"><g xmlns=\"urn:a\"/></f></e>"},
        {"also where the element asked for the namespace of its parent",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteStartElement("f", "urn:a");
             w.WriteAttributeString("xmlns", "urn:b");
             w.WriteStartElement("g", "urn:a");
         },
         "<e xmlns=\"urn:a\"><f xmlns=\"urn:b\"><g xmlns=\"urn:a\"/></f></e>"},
        {"also where nothing takes its place",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteStartElement("f", "urn:a");
             w.WriteAttributeString("xmlns", "");
             w.WriteStartElement("g", "urn:a");
         },
         "<e xmlns=\"urn:a\"><f xmlns=\"\"><g xmlns=\"urn:a\"/></f></e>"},
        {"a declaration replaces that of the element's own prefix",
         [](XmlTextWriter& w) {
             w.WriteStartElement("p", "e", "urn:a");
             w.WriteAttributeString("xmlns", "p", nullptr, "urn:b");
             w.WriteStartElement("f", "urn:b");
         },
         "<p:e xmlns:p=\"urn:b\"><p:f/></p:e>"},
        {"the same given with its namespace",
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:a");
             w.WriteAttributeString("xmlns", kXmlnsUri, "urn:a");
         },
         "<e xmlns=\"urn:a\"/>"},
    };
    for (const Document& document : kDocuments) {
        SCOPED_TRACE(document.name);
        DocumentWriter writer;
        document.calls(*writer);
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), document.expected);
    }
}

// A prefix from further out that the tag has used already stays what it is there.
TEST(XmlTextWriterNamespace, PrefixesInUseAreNotDeclaredAnew) {
    const Document kDocuments[] = {
        {"by the element, which took it for its namespace",
         [](XmlTextWriter& w) {
             w.WriteStartElement("p", "o", "urn:1");
             w.WriteStartElement("a", "urn:1");
             w.WriteAttributeString("p", "x", "urn:2", "1");
             w.WriteEndDocument();
         },
         "<p:o xmlns:p=\"urn:1\"><p:a ns1:x=\"1\" xmlns:ns1=\"urn:2\"/></p:o>"},
        {"by the element, which was given it",
         [](XmlTextWriter& w) {
             w.WriteStartElement("p", "o", "urn:1");
             w.WriteStartElement("p", "a", nullptr);
             w.WriteAttributeString("p", "x", "urn:2", "1");
             w.WriteEndDocument();
         },
         "<p:o xmlns:p=\"urn:1\"><p:a ns1:x=\"1\" xmlns:ns1=\"urn:2\"/></p:o>"},
        {"by an attribute",
         [](XmlTextWriter& w) {
             w.WriteStartElement("p", "o", "urn:1");
             w.WriteStartElement("a");
             w.WriteAttributeString("p", "x", "urn:1", "1");
             w.WriteAttributeString("p", "x", "urn:2", "2");
             w.WriteEndDocument();
         },
         "<p:o xmlns:p=\"urn:1\"><a p:x=\"1\" ns1:x=\"2\" xmlns:ns1=\"urn:2\"/></p:o>"},
        {"by none",
         [](XmlTextWriter& w) {
             w.WriteStartElement("p", "o", "urn:1");
             w.WriteStartElement("a");
             w.WriteAttributeString("p", "x", "urn:2", "2");
             w.WriteEndDocument();
         },
         "<p:o xmlns:p=\"urn:1\"><a p:x=\"2\" xmlns:p=\"urn:2\"/></p:o>"},
    };
    for (const Document& document : kDocuments) {
        SCOPED_TRACE(document.name);
        EXPECT_EQ(WrittenBy(document.calls), document.expected);
    }
}

TEST(XmlTextWriterNamespace, DeclarationsAreWrittenInTheQuotesOfTheWriter) {
    DocumentWriter writer;
    writer->SetQuoteChar('\'');
    writer->WriteStartElement("e", "urn:x");
    writer->WriteStartElement("a", "f", "urn:a");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<e xmlns='urn:x'><a:f xmlns:a='urn:a'/></e>");
}

TEST(XmlTextWriterNamespace, RefusedElements) {
    const struct {
        const char* prefix;
        const char* ns;
        const char* message;
    } kCases[] = {
        {"b", nullptr, "Invalid Argument: Prefix not declared"},
        {"b", "", "Invalid Argument: Prefix not declared"},
        {"xml", "urn:x", "Invalid Argument: Invalid Prefix"},
        {"xml", kXmlUri, "Invalid Argument: Invalid Prefix"},
        {"xmlns", kXmlnsUri, "Invalid Argument: Invalid Prefix"},
        {"XML", "urn:x", "Invalid Argument: Invalid Prefix"},
        {"xMlfoo", "urn:x", "Invalid Argument: Invalid Prefix"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.prefix);
        DocumentWriter writer;
        EXPECT_THROW_FULL(writer->WriteStartElement(c.prefix, "e", c.ns), c.message, "", -1, -1);
        EXPECT_THROW_FULL(writer->WriteElementString(c.prefix, "e", c.ns, "t"), c.message, "", -1,
                          -1);
        EXPECT_EQ(writer.Text(), "");
        writer->WriteStartElement("xm", "e", "urn:x");
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), "<xm:e xmlns:xm=\"urn:x\"/>");
    }
}

TEST(XmlTextWriterNamespace, RefusedAttributes) {
    DocumentWriter writer;
    writer->WriteStartElement("a", "e", "urn:a");
    const char kEmpty[] = "Invalid Argument: Prefix defined for empty namespace";
    const char kMissing[] = "Bad attribute: Missing namespace URI";
    EXPECT_THROW_FULL(writer->WriteStartAttribute("b", "x", ""), kEmpty, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartAttribute("a", "x", ""), kEmpty, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteAttributeString("b", "x", "", "1"), kEmpty, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartAttribute("b", "x", nullptr), kMissing, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteAttributeString("b", "x", nullptr, "1"), kMissing, "", -1, -1);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<a:e xmlns:a=\"urn:a\"/>");
}

TEST(XmlTextWriterNamespace, WithoutNamespacesNamesAreWrittenAsTheyAre) {
    DocumentWriter writer;
    writer->SetNamespaces(false);
    writer->WriteStartElement("p:e");
    writer->WriteAttributeString("q:x", "1");
    writer->WriteAttributeString("xmlns", "urn:a");
    writer->WriteAttributeString("xmlns:p", "urn:b");
    writer->WriteStartElement("", "f", "");
    writer->WriteAttributeString("", "y", "", "2");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<p:e q:x=\"1\" xmlns=\"urn:a\" xmlns:p=\"urn:b\"><f y=\"2\"/></p:e>");
}

TEST(XmlTextWriterNamespace, WithoutNamespacesPrefixAndNamespaceAreRefused) {
    const char kMessage[] = "Invalid Argument: Namespaces not enabled";
    DocumentWriter writer;
    writer->SetNamespaces(false);
    EXPECT_THROW_FULL(writer->WriteStartElement("e", "urn:x"), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartElement("a", "e", nullptr), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartElement("a", "e", "urn:x"), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteElementString("e", "urn:x", "t"), kMessage, "", -1, -1);
    writer->WriteStartElement("e");
    EXPECT_THROW_FULL(writer->WriteStartAttribute("x", "urn:x"), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartAttribute("a", "x", nullptr), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteAttributeString("a", "x", "urn:x", "1"), kMessage, "", -1, -1);
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<e/>");
}

TEST(XmlTextWriterNamespace, SupportCannotBeChangedAfterTheFirstElement) {
    const char kMessage[] =
        "Invalid Operation: Namespace support cannot be changed while writing the XML file";
    DocumentWriter writer;
    writer->WriteStartElement("e");
    EXPECT_THROW_FULL(writer->SetNamespaces(false), kMessage, "", -1, -1);
    EXPECT_TRUE(writer->GetNamespaces());
    writer->WriteEndDocument();
    writer->SetNamespaces(false);
    EXPECT_FALSE(writer->GetNamespaces());
}

// The context of a writer declares xmlns too.
TEST(XmlTextWriterNamespace, LookupPrefixKnowsXmlns) {
    DocumentWriter writer;
    EXPECT_EQ(writer->LookupPrefix(kXmlnsUri), "xmlns");
    writer->WriteStartElement("e");
    EXPECT_EQ(writer->LookupPrefix(kXmlnsUri), "xmlns");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<e/>");
}

TEST(XmlTextWriterNamespace, LookupPrefixTellsWhatIsBoundHere) {
    DocumentWriter writer;
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "");
    EXPECT_EQ(writer->LookupPrefix(kXmlUri), "xml");

    writer->WriteStartElement("a", "e", "urn:a");
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "a");
    writer->WriteStartElement("f", "urn:d");
    EXPECT_EQ(writer->LookupPrefix("urn:d"), "");
    writer->WriteStartElement("b", "g", "urn:a");
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "b");
    writer->WriteEndElement();
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "a");
    writer->WriteStartElement("a", "g", "urn:b");
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "");
    EXPECT_EQ(writer->LookupPrefix(astring("urn:b")), "a");
    writer->WriteEndDocument();
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "");
}

TEST(XmlTextWriterNamespace, DeclaredNamespacesAreEscapedAsValues) {
    DocumentWriter writer;
    writer->WriteStartElement("p", "e", "a\tb\r\nc<\"");
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<p:e xmlns:p=\"a&#x9;b&#xA;c&lt;&quot;\"/>");
}

TEST(XmlTextWriterNamespace, ADeclarationHoldsWhenItsAttributeEnds) {
    DocumentWriter writer;
    writer->WriteStartElement("e");
    writer->WriteStartAttribute("xmlns", "a", nullptr);
    writer->WriteString("urn:a");
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "");
    writer->WriteEndAttribute();
    EXPECT_EQ(writer->LookupPrefix("urn:a"), "a");
}

TEST(XmlTextWriterNamespace, AnElementOfAPrefixEndsAtOnce) {
    EXPECT_EQ(WrittenBy([](XmlTextWriter& w) {
                  w.WriteStartElement("a", "x", "urn:x");
                  w.WriteEndElement();
              }),
              "<a:x xmlns:a=\"urn:x\"/>");
}

}  // namespace
