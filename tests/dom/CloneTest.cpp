// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/LoadText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>

namespace {

using Dom::NodePtr;
using support::Add;
using support::AddElement;
using support::AddText;
using support::Lockable;

void ExpectSameNode(Dom::Node& clone, Dom::Node& original) {
    EXPECT_NE(&clone, &original);
    EXPECT_TRUE(typeid(clone) == typeid(original));
    EXPECT_EQ(clone.NodeType(), original.NodeType());
    EXPECT_EQ(clone.NodeName(), original.NodeName());
    EXPECT_EQ(clone.NodeValue(), original.NodeValue());
    EXPECT_EQ(clone.NamespaceURI(), original.NamespaceURI());
    EXPECT_EQ(clone.OwnerDocument(), original.OwnerDocument());
}

void ExpectFree(const Dom::Node& node) {
    EXPECT_EQ(node.ParentNode(), nullptr);
    EXPECT_EQ(node.PreviousSibling(), nullptr);
    EXPECT_EQ(node.NextSibling(), nullptr);
    EXPECT_FALSE(node.IsReadOnly());
}

TEST(CloneNode, CopiesANodeOfEachClass) {
    Dom::Document document;
    const NodePtr kNodes[] = {
        NodePtr(document.CreateElementNS("urn:x", "p:e")),
        NodePtr(document.CreateAttributeNS("urn:x", "p:a")),
        NodePtr(document.CreateTextNode("text")),
        NodePtr(document.CreateCDATASection("cdata")),
        NodePtr(document.CreateComment("comment")),
        NodePtr(document.CreateEntityReference("entity")),
        NodePtr(document.CreateProcessingInstruction("target", "data")),
        NodePtr(document.CreateProcessingInstruction("xml-stylesheet", "href='a'")),
        NodePtr(document.CreateDocumentFragment()),
        NodePtr(new Dom::DocumentType("d", "public", "system", &document)),
    };
    for (const NodePtr& node : kNodes) {
        for (const bool deep : {false, true}) {
            SCOPED_TRACE(node->NodeName());
            const NodePtr clone(node->CloneNode(deep));
            ExpectSameNode(*clone, *node);
            ExpectFree(*clone);
            EXPECT_FALSE(clone->HasChildNodes());
        }
    }
}

// Deliberate: the children are not copied, whatever the argument says.
TEST(CloneNode, NeverCopiesChildren) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddElement(*root, "a");
    AddText(*root, "text");
    root->SetAttribute("x", "1");
    for (const bool deep : {false, true}) {
        SCOPED_TRACE(deep);
        const NodePtr clone(root->CloneNode(deep));
        EXPECT_FALSE(clone->HasChildNodes());
        EXPECT_EQ(clone->LastChild(), nullptr);
        EXPECT_EQ(clone->ChildNodes().Length(), 0u);
        EXPECT_EQ(static_cast<Dom::Element&>(*clone).GetAttribute("x"), "1");
    }
    const NodePtr fragment(document.CreateDocumentFragment());
    AddElement(*fragment, "a");
    const NodePtr clone(fragment->CloneNode(true));
    EXPECT_FALSE(clone->HasChildNodes());
}

TEST(CloneNode, IsNeitherLinkedNorReadOnly) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddElement(*root, "a");
    auto* locked = Add<Lockable<Dom::Element>>(*root, "b");
    AddElement(*root, "c");
    locked->SetReadOnly(true);
    const NodePtr clone(locked->CloneNode(true));
    ExpectFree(*clone);
    EXPECT_TRUE(locked->IsReadOnly());
}

TEST(CloneNode, ACopySharesNothing) {
    Dom::Document document;
    const std::unique_ptr<Dom::Text> text(document.CreateTextNode("text"));
    const std::unique_ptr<Dom::Text> clone(static_cast<Dom::Text*>(text->CloneNode(false)));
    text->SetData("other");
    EXPECT_EQ(clone->Data(), "text");
    clone->AppendData("!");
    EXPECT_EQ(text->Data(), "other");
    EXPECT_EQ(clone->Data(), "text!");
}

TEST(CloneNode, OfAnElementClonesItsAttributesInOrder) {
    Dom::Document document;
    const NodePtr owner(document.CreateElement("e"));
    auto& element = static_cast<Dom::Element&>(*owner);
    element.SetAttribute("b", "1");
    element.SetAttributeNS("urn:x", "p:c", "2");
    Dom::Attr* unspecified = document.CreateAttribute("a");
    unspecified->SetValue("3");
    element.SetAttributeNode(unspecified);

    const NodePtr made(element.CloneNode(false));
    auto& clone = static_cast<Dom::Element&>(*made);
    ASSERT_EQ(clone.Attributes()->Length(), 3u);
    EXPECT_EQ(support::Members(*clone.Attributes()), "b p:c a");
    EXPECT_EQ(clone.GetAttribute("b"), "1");
    EXPECT_EQ(clone.GetAttributeNS("urn:x", "c"), "2");
    EXPECT_EQ(clone.GetAttribute("p:c"), "");
    EXPECT_EQ(clone.GetAttribute("a"), "3");
    EXPECT_TRUE(clone.GetAttributeNode("b")->Specified());
    EXPECT_FALSE(clone.GetAttributeNode("a")->Specified());
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_NE(clone.Attributes()->Item(i), element.Attributes()->Item(i));
        EXPECT_EQ(static_cast<Dom::Attr*>(clone.Attributes()->Item(i))->OwnerElement(), &clone);
    }
    element.SetAttribute("b", "changed");
    element.RemoveAttribute("a");
    EXPECT_EQ(clone.GetAttribute("b"), "1");
    EXPECT_EQ(clone.GetAttribute("a"), "3");
}

TEST(CloneNode, OfAnElementWithoutAttributesHasNone) {
    Dom::Document document;
    const NodePtr element(document.CreateElement("e"));
    const NodePtr clone(element->CloneNode(true));
    EXPECT_FALSE(clone->HasAttributes());
    ASSERT_NE(clone->Attributes(), nullptr);
    EXPECT_EQ(clone->Attributes()->Length(), 0u);
}

TEST(CloneNode, OfAnAttributeHasItsValueButNoElement) {
    Dom::Document document;
    const std::unique_ptr<Dom::Element> element(document.CreateElement("e"));
    element->SetAttribute("a", "value");
    const NodePtr made(element->GetAttributeNode("a")->CloneNode(true));
    auto& clone = static_cast<Dom::Attr&>(*made);
    EXPECT_EQ(clone.Value(), "value");
    EXPECT_EQ(clone.NodeValue(), "value");
    EXPECT_TRUE(clone.Specified());
    EXPECT_EQ(clone.OwnerElement(), nullptr);
    EXPECT_FALSE(clone.HasChildNodes());
}

// The value of children becomes the value of the copy, which has none.
TEST(CloneNode, OfAnAttributeWithChildrenHasTheirJoinedValue) {
    Dom::Document document;
    const std::unique_ptr<Dom::Attr> attribute(document.CreateAttribute("a"));
    AddText(*attribute, "one");
    attribute->AppendChild(document.CreateEntityReference("entity"));
    AddText(*attribute, "two");
    const NodePtr made(attribute->CloneNode(true));
    auto& clone = static_cast<Dom::Attr&>(*made);
    EXPECT_EQ(clone.Value(), "onetwo");
    EXPECT_EQ(clone.NodeValue(), "onetwo");
    EXPECT_FALSE(clone.HasChildNodes());
    EXPECT_FALSE(clone.Specified());
}

// Whatever has been looked at before: nothing, the node of the attribute, or the text in it.
TEST(CloneNode, AnAttributeThatWasLoadedHasNoChildInTheCopyAndOneInCopiesOfTheTree) {
    for (const bool namespaces : {true, false}) {
        for (const char* const looked : {"nothing", "node", "text"}) {
            SCOPED_TRACE(std::string(looked) + (namespaces ? " with" : " without"));
            Dom::Document document;
            support::LoadText(
                document, "<e a='1'/>",
                namespaces ? support::WithNamespaces() : support::WithoutNamespaces());
            Dom::Element& element = *document.DocumentElement();
            if (looked != std::string_view("nothing")) {
                Dom::Attr* attribute = element.GetAttributeNode("a");
                if (looked == std::string_view("text")) {
                    ASSERT_TRUE(attribute->HasChildNodes());
                }
            }
            Dom::Document other;
            const struct {
                const char* what;
                NodePtr made;
                const char* children;
            } kCopies[] = {{"CloneNode", NodePtr(element.CloneNode(true)), ""},
                           {"CloneTree", NodePtr(element.CloneTree()), "'1'"},
                           {"ImportNode", NodePtr(other.ImportNode(element, false)), "'1'"},
                           {"a document's", NodePtr(document.CloneTree()), "'1'"}};
            for (const auto& copy : kCopies) {
                SCOPED_TRACE(copy.what);
                Dom::Node* root = copy.made.get();
                if (root->NodeType() == Dom::DOMNodeType::DOCUMENT_NODE) root = root->FirstChild();
                Dom::Attr* attribute = static_cast<Dom::Element*>(root)->GetAttributeNode("a");
                ASSERT_NE(attribute, nullptr);
                EXPECT_EQ(attribute->Value(), "1");
                EXPECT_EQ(support::Forward(*attribute), copy.children);
                const NodePtr again(root->CloneNode(true));
                attribute = static_cast<Dom::Element&>(*again).GetAttributeNode("a");
                EXPECT_EQ(attribute->Value(), "1");
                EXPECT_EQ(support::Forward(*attribute), "");
                const NodePtr tree(attribute->CloneTree());
                EXPECT_EQ(support::Forward(*tree), "");
            }
            const NodePtr tree(element.GetAttributeNode("a")->CloneTree());
            EXPECT_EQ(support::Forward(*tree), "'1'");
        }
    }
}

// In a document that was loaded without namespaces the texts of attributes are their values, and
// the attributes' own values are empty. So it is in a copy of the document.
TEST(CloneNode, AnAttributeOfACopiedDocumentHasNoOtherValueThanItsText) {
    for (const bool looked : {false, true}) {
        SCOPED_TRACE(looked);
        Dom::Document document;
        support::LoadText(document, "<e id='1'/>", support::WithoutNamespaces());
        if (looked) {
            EXPECT_EQ(document.DocumentElement()->Attributes()->Item(0)->NodeValue(), "");
        }
        const NodePtr made(document.CloneTree());
        auto& copy = static_cast<Dom::Document&>(*made);
        EXPECT_EQ(copy.GetElementById("1"), nullptr);
        ASSERT_EQ(copy.FindById("1"), copy.DocumentElement());
        const Dom::Attr& attribute = *copy.DocumentElement()->GetAttributeNode("id");
        EXPECT_EQ(attribute.NodeValue(), "");
        EXPECT_EQ(support::Forward(attribute), "'1'");
    }
}

TEST(CloneNode, OfADocumentHasItsPropertiesButNoChildren) {
    Dom::DOMImplementation implementation;
    Dom::DocumentType doctype("d", "", "", nullptr);
    Dom::Document document("", "root", &doctype, &implementation);
    document.SetDocumentURI("dir/doc.xml");
    document.SetXmlStandalone(true);
    document.SetStrictErrorChecking(false);
    const NodePtr made(document.CloneNode(true));
    auto& clone = static_cast<Dom::Document&>(*made);
    ExpectSameNode(clone, document);
    ExpectFree(clone);
    EXPECT_FALSE(clone.HasChildNodes());
    EXPECT_EQ(clone.DocumentElement(), nullptr);
    EXPECT_EQ(clone.Implementation(), &implementation);
    EXPECT_EQ(clone.Doctype(), &doctype);
    EXPECT_EQ(clone.DocumentURI(), "dir/doc.xml");
    EXPECT_EQ(clone.XmlVersion(), "1.0");
    EXPECT_TRUE(clone.XmlStandalone());
    EXPECT_FALSE(clone.StrictErrorChecking());
    AddElement(clone, "other");
    EXPECT_EQ(document.DocumentElement()->NodeName(), "root");
}

}  // namespace
