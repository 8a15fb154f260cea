// SPDX-License-Identifier: MIT
#include <espalier/dom.h>

#include "dom/LoadText.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::Document;
using Dom::Element;

std::string NameOf(const Element* element) {
    return element == nullptr ? "-" : element->NodeName().str();
}

TEST(GetElementById, FindsTheFirstInDocumentOrder) {
    constexpr struct {
        const char* document;
        const char* found;  // for "i"
    } kCases[] = {
        {"<a/>", "-"},
        {"<a id='i'/>", "a"},
        {"<a id='I'/>", "-"},
        {"<a id='i '/>", "-"},
        {"<a id='ii'/>", "-"},
        {"<a ID='i' Id='i'/>", "-"},
        {"<a x='i'/>", "-"},
        {"<a>i</a>", "-"},
        {"<a xmlns:p='u' p:id='i'/>", "-"},
        {"<a xml:id='i'/>", "-"},
        {"<p:a xmlns:p='u' id='i'/>", "p:a"},
        {"<a><b/><c id='i'/></a>", "c"},
        {"<a id='i'><b id='i'/></a>", "a"},
        {"<a><b><c id='i'/></b><d id='i'/></a>", "c"},
        {"<a><b><c/></b>t<!--i--><d><e/></d><f id='i'/></a>", "f"},
        {"<!--i--><?i i?><a><b id='h'/><c><d><e id='i'/></d></c></a>", "e"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        Document document;
        document.LoadXml(c.document);
        EXPECT_EQ(NameOf(document.GetElementById("i")), c.found);
        EXPECT_EQ(NameOf(document.FindById("i")), c.found);
    }
}

TEST(GetElementById, AnElementWithoutTheAttributeIsNoMatchForAnEmptyId) {
    Document document;
    document.LoadXml("<a><b/><c id=''/></a>");
    EXPECT_EQ(NameOf(document.GetElementById("")), "c");
    EXPECT_EQ(NameOf(document.FindById("")), "c");
    document.LoadXml("<a><b/></a>");
    EXPECT_EQ(document.GetElementById(""), nullptr);
}

TEST(GetElementById, AnEmptyDocumentHasNone) {
    Document document;
    EXPECT_EQ(document.GetElementById("i"), nullptr);
    EXPECT_EQ(document.FindById("i"), nullptr);
}

// The value that is compared is the attribute's own, which is empty then.
TEST(GetElementById, DeliberateWithoutNamespacesNothingIsFound) {
    Document document;
    support::LoadText(document, "<a><b id='i'/></a>", support::WithoutNamespaces());
    EXPECT_EQ(document.GetElementById("i"), nullptr);
    EXPECT_EQ(NameOf(document.GetElementById("")), "b");
    EXPECT_EQ(NameOf(document.FindById("i")), "b");
}

TEST(GetElementById, SeesWhatWasSetAfterwards) {
    Document document("", "a", nullptr, nullptr);
    Element& root = *document.DocumentElement();
    Element* const child = document.CreateElement("b");
    root.AppendChild(child);
    child->SetAttribute("id", "i");
    EXPECT_EQ(document.GetElementById("i"), child);
    child->SetAttribute("id", "j");
    EXPECT_EQ(document.GetElementById("i"), nullptr);
    EXPECT_EQ(document.GetElementById("j"), child);
    root.SetAttribute("id", "j");
    EXPECT_EQ(document.GetElementById("j"), &root);
    root.RemoveAttribute("id");
    EXPECT_EQ(document.GetElementById("j"), child);
    const Dom::NodePtr removed(root.RemoveChild(child));
    EXPECT_EQ(document.GetElementById("j"), nullptr);
}

TEST(GetElementById, SeesAnAttributeThatWasSetAsANode) {
    Document document("", "a", nullptr, nullptr);
    Dom::Attr* const attribute = document.CreateAttribute("id");
    attribute->SetValue("i");
    document.DocumentElement()->SetAttributeNode(attribute);
    EXPECT_EQ(document.GetElementById("i"), document.DocumentElement());
}

TEST(GetElementById, AnAttributeOfANamespaceIsAnother) {
    Document document("", "a", nullptr, nullptr);
    document.DocumentElement()->SetAttributeNS("urn:u", "id", "i");
    EXPECT_EQ(document.GetElementById("i"), nullptr);
    document.DocumentElement()->SetAttributeNS("", "id", "i");
    EXPECT_EQ(document.GetElementById("i"), document.DocumentElement());
}

// The walk goes from child to next sibling, which does not lead to what InsertBefore() put between
// two others.
TEST(GetElementById, DeliberateWalksAlongTheVisibleLinks) {
    Document document;
    document.LoadXml("<a><b/><c/></a>");
    Element& root = *document.DocumentElement();
    Element* const inserted = document.CreateElement("d");
    inserted->SetAttribute("id", "i");
    root.InsertBefore(inserted, root.LastChild());
    EXPECT_EQ(document.GetElementById("i"), nullptr);
    root.RemoveChild(inserted);
    root.InsertChild(inserted, root.LastChild());
    EXPECT_EQ(document.GetElementById("i"), inserted);
}

TEST(GetElementById, FindsWhatWasInsertedFirst) {
    Document document;
    document.LoadXml("<a><b/></a>");
    Element* const inserted = document.CreateElement("d");
    inserted->SetAttribute("id", "i");
    document.DocumentElement()->InsertBefore(inserted, document.DocumentElement()->FirstChild());
    EXPECT_EQ(document.GetElementById("i"), inserted);
}

}  // namespace
