// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ReaderSettings;
using Xml::XmlNodeType;

constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";

TEST(XmlTextReaderNamespace, LookupFollowsTheScopes) {
    DocumentReader reader(
        "<a xmlns='urn:a' xmlns:p='urn:p'>"
        "<b xmlns='' xmlns:p='urn:q' xmlns:r='urn:r'>text</b>"
        "<c/>"
        "</a>");
    const struct {
        const char* node;
        const char* defaultNamespace;
        const char* p;
        const char* r;
    } kExpected[] = {
        {"Element", "urn:a", "urn:p", ""},     // a
        {"Element", "", "urn:q", "urn:r"},     // b
        {"Text", "", "urn:q", "urn:r"},        //
        {"EndElement", "urn:a", "urn:p", ""},  // b has been left
        {"Element", "urn:a", "urn:p", ""},     // c
        {"EndElement", "", "", ""},            // a has been left
    };
    for (const auto& expected : kExpected) {
        ASSERT_TRUE(reader->Read());
        SCOPED_TRACE(expected.node);
        EXPECT_STREQ(reader->NodeType().ToString(), expected.node);
        EXPECT_EQ(reader->LookupNamespace(""), expected.defaultNamespace);
        EXPECT_EQ(reader->LookupNamespace("p"), expected.p);
        EXPECT_EQ(reader->LookupNamespace("r"), expected.r);
        EXPECT_EQ(reader->LookupNamespace("xml"), kXmlNamespace);
        EXPECT_EQ(reader->LookupNamespace("none"), "");
        EXPECT_EQ(reader->LookupNamespace("pp"), "");
    }
}

TEST(XmlTextReaderNamespace, AnEmptyElementIsInScopeUntilTheNextRead) {
    DocumentReader reader("<a><b xmlns:p='urn:p'/><c/></a>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->LookupNamespace("p"), "urn:p");
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->LookupNamespace("p"), "urn:p");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->LookupNamespace("p"), "");
}

TEST(XmlTextReaderNamespace, LookupIsEmptyWhenNamespacesAreOff) {
    ReaderSettings settings;
    settings.namespaces = false;
    DocumentReader reader("<a xmlns='urn:a' xmlns:p='urn:p'/>", settings);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->LookupNamespace(""), "");
    EXPECT_EQ(reader->LookupNamespace("p"), "");
    EXPECT_EQ(reader->LookupNamespace("xml"), "");
}

TEST(XmlTextReaderNamespace, PartsOfNames) {
    DocumentReader reader("<p:a xmlns:p='urn:p' p:x='1' y='2' q:z='3' xml:id='4'></p:a>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Name(), "p:a");
    EXPECT_EQ(reader->Prefix(), "p");
    EXPECT_EQ(reader->LocalName(), "a");
    EXPECT_EQ(reader->NamespaceURI(), "urn:p");
    const struct {
        const char* name;
        const char* prefix;
        const char* localName;
        const char* uri;
    } kAttributes[] = {
        {"xmlns:p", "xmlns", "p", ""},
        {"p:x", "p", "x", "urn:p"},
        {"y", "", "y", ""},
        {"q:z", "q", "z", ""},
        {"xml:id", "xml", "id", kXmlNamespace},
    };
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    for (const auto& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        EXPECT_EQ(reader->Name(), attribute.name);
        EXPECT_EQ(reader->Prefix(), attribute.prefix);
        EXPECT_EQ(reader->LocalName(), attribute.localName);
        EXPECT_EQ(reader->NamespaceURI(), attribute.uri);
        reader->MoveToNextAttribute();
    }
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndElement);
    EXPECT_EQ(reader->Prefix(), "p");
    EXPECT_EQ(reader->LocalName(), "a");
    EXPECT_EQ(reader->NamespaceURI(), "urn:p");
}

TEST(XmlTextReaderNamespace, ADeclarationOfTheDefaultNamespaceHasNoPrefix) {
    DocumentReader reader("<a xmlns='urn:a'/>");
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->Name(), "xmlns");
    EXPECT_EQ(reader->Prefix(), "");
    EXPECT_EQ(reader->LocalName(), "xmlns");
    EXPECT_EQ(reader->NamespaceURI(), "");
}

TEST(XmlTextReaderNamespace, ANameMayChangeItsNamespaceFromElementToElement) {
    std::string document = "<r>";
    for (int i = 0; i < 300; ++i) {
        const std::string uri = "urn:" + std::to_string(i % 7);
        document += i % 3 == 0 ? "<p:a/>" : "<p:a xmlns:p='" + uri + "' p:x='1'/>";
    }
    DocumentReader reader(document + "</r>");
    reader.ReadNodes(1);
    for (int i = 0; i < 300; ++i) {
        reader.ReadNodes(1);
        const std::string uri = i % 3 == 0 ? "" : "urn:" + std::to_string(i % 7);
        ASSERT_EQ(reader->NamespaceURI(), uri) << i;
        if (i % 3 != 0) {
            EXPECT_EQ(reader->GetAttribute("x", uri), "1");
        }
    }
}

TEST(XmlTextReaderNamespace, DeclarationsShadowEachOtherAtEveryDepth) {
    constexpr int kDepth = 200;
    std::string document;
    for (int i = 0; i < kDepth; ++i) {
        document += "<p:a xmlns:p='urn:" + std::to_string(i) + "'>";
    }
    for (int i = 0; i < kDepth; ++i)
        document += "<p:b/></p:a>";
    DocumentReader reader(document);
    for (int i = 0; i < kDepth; ++i) {
        reader.ReadNodes(1);
        ASSERT_EQ(reader->NamespaceURI(), "urn:" + std::to_string(i));
    }
    for (int i = kDepth - 1; i >= 0; --i) {
        reader.ReadNodes(1);
        ASSERT_EQ(reader->Name(), "p:b");
        ASSERT_EQ(reader->NamespaceURI(), "urn:" + std::to_string(i));
        reader.ReadNodes(1);
        ASSERT_EQ(reader->NodeType(), XmlNodeType::EndElement);
        ASSERT_EQ(reader->NamespaceURI(), "urn:" + std::to_string(i));
    }
}

TEST(XmlTextReaderNamespace, ManyPrefixesOnOneElement) {
    constexpr int kCount = 1000;
    std::string document = "<a";
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        document +=
            " xmlns:p" + number + "='urn:" + number + "' p" + number + ":x='" + number + "'";
    }
    DocumentReader reader(document + "/>");
    reader.ReadNodes(1);
    ASSERT_EQ(reader->AttributeCount(), 2 * kCount);
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(reader->LookupNamespace("p" + number), "urn:" + number);
        EXPECT_EQ(reader->GetAttribute("x", "urn:" + number), number);
        EXPECT_EQ(reader->GetAttribute("p" + number + ":x"), number);
    }
}

TEST(XmlTextReaderNamespace, ThePrefixXmlMayBeDeclaredAgain) {
    DocumentReader reader("<xml:a xmlns:xml='urn:x' xml:b='1'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NamespaceURI(), "urn:x");
    EXPECT_EQ(reader->GetAttribute("b", "urn:x"), "1");
}

TEST(XmlTextReaderNamespace, APrefixMayBeBoundToNothing) {
    DocumentReader reader("<a xmlns:p='urn:p'><p:b xmlns:p=''/><p:c/></a>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Prefix(), "p");
    EXPECT_EQ(reader->NamespaceURI(), "");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NamespaceURI(), "urn:p");
}

TEST(XmlTextReaderNamespace, NothingOfADocumentIsLeftForTheNext) {
    DocumentReader reader("<a xmlns='urn:a' xmlns:p='urn:p'><b>");
    reader.ReadNodes(2);
    support::DocumentStream next("<p:c/>");
    ASSERT_TRUE(reader->SetStream(next.get(), false));
    EXPECT_EQ(reader->LookupNamespace("p"), "");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NamespaceURI(), "");
    EXPECT_EQ(reader->LookupNamespace(""), "");
    EXPECT_EQ(reader->LookupNamespace("xml"), kXmlNamespace);
}

// Deliberate: the colon of a prefixed name is stepped over without adding to the column.
TEST(XmlTextReaderNamespace, AnEmptyPrefixDeclaresTheDefaultNamespace) {
    DocumentReader reader("<a xmlns:='urn:a'><b/></a>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->NamespaceURI(), "urn:a");
    EXPECT_EQ(reader->LookupNamespace(""), "urn:a");
}

TEST(XmlTextReaderNamespace, TheColonOfAPrefixedNameAddsNothingToTheColumn) {
    EXPECT_EQ(support::DumpDocument("<p:a p:x='1'><q:b/></p:a>"),
              "Element p:a prefix=p local=a depth=1 @1:1\n"
              "  Attribute p:x='1' prefix=p local=x depth=2 @1:5\n"
              "Element q:b prefix=q local=b depth=2 empty @1:12\n"
              "EndElement p:a prefix=p local=a depth=1 @1:17\n");
    // The next line counts from 1 again.
    EXPECT_EQ(support::DumpDocument("<p:a>\n<b/></p:a>"),
              "Element p:a prefix=p local=a depth=1 @1:1\n"
              "Whitespace \"\\n\" depth=2 @1:5\n"
              "Element b depth=2 empty @2:1\n"
              "EndElement p:a prefix=p local=a depth=1 @2:5\n");
}

}  // namespace
