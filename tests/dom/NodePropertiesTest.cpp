// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::DOMNodeType;
using Dom::NodePtr;
using support::AddElement;
using support::Lockable;

constexpr char kXmlNamespace[] = "http://www.w3.org/XML/1998/namespace";
constexpr char kXmlnsNamespace[] = "http://www.w3.org/2000/xmlns/";

TEST(NodeProperties, EachClassHasItsTypeNameAndValue) {
    Dom::Document document;
    const struct {
        NodePtr node;
        DOMNodeType::DOM_NODE_TYPE type;
        const char* name;
        const char* value;
    } kCases[] = {
        {NodePtr(document.CreateElement("p:e")), DOMNodeType::ELEMENT_NODE, "p:e", ""},
        {NodePtr(document.CreateAttribute("p:a")), DOMNodeType::ATTRIBUTE_NODE, "p:a", ""},
        {NodePtr(document.CreateTextNode("data")), DOMNodeType::TEXT_NODE, "#text", "data"},
        {NodePtr(document.CreateCDATASection("data")), DOMNodeType::CDATA_SECTION_NODE,
         "#cdata-section", "data"},
        {NodePtr(document.CreateComment("data")), DOMNodeType::COMMENT_NODE, "#comment", "data"},
        {NodePtr(document.CreateEntityReference("ent")), DOMNodeType::ENTITY_REFERENCE_NODE, "ent",
         ""},
        {NodePtr(document.CreateProcessingInstruction("target", "data")),
         DOMNodeType::PROCESSING_INSTRUCTION_NODE, "target", "data"},
        {NodePtr(document.CreateDocumentFragment()), DOMNodeType::DOCUMENT_FRAGMENT_NODE,
         "#document-fragment", ""},
        {NodePtr(new Dom::Document), DOMNodeType::DOCUMENT_NODE, "#document", ""},
        {NodePtr(new Dom::DocumentType("doctype", "", "", &document)),
         DOMNodeType::DOCUMENT_TYPE_NODE, "doctype", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.node->NodeType(), c.type);
        EXPECT_EQ(c.node->NodeName(), c.name);
        EXPECT_EQ(c.node->NodeValue(), c.value);
        EXPECT_EQ(c.node->NamespaceURI(), "");
    }
}

TEST(NodeProperties, AFreshNodeIsLinkedToNothingButItsDocument) {
    Dom::Document document;
    const NodePtr kNodes[] = {
        NodePtr(document.CreateElement("e")),
        NodePtr(document.CreateAttribute("a")),
        NodePtr(document.CreateTextNode("t")),
        NodePtr(document.CreateDocumentFragment()),
        NodePtr(document.CreateProcessingInstruction("p", "")),
    };
    for (const NodePtr& node : kNodes) {
        SCOPED_TRACE(node->NodeName());
        EXPECT_EQ(node->OwnerDocument(), &document);
        EXPECT_EQ(node->ParentNode(), nullptr);
        EXPECT_EQ(node->FirstChild(), nullptr);
        EXPECT_EQ(node->LastChild(), nullptr);
        EXPECT_EQ(node->PreviousSibling(), nullptr);
        EXPECT_EQ(node->NextSibling(), nullptr);
        EXPECT_FALSE(node->HasChildNodes());
        EXPECT_FALSE(node->HasAttributes());
        EXPECT_FALSE(node->IsReadOnly());
        EXPECT_EQ(node->ChildNodes().Length(), 0u);
    }
}

TEST(NodeProperties, ADocumentHasNoOwnerDocument) {
    Dom::Document document;
    EXPECT_EQ(document.OwnerDocument(), nullptr);
    EXPECT_EQ(document.ParentNode(), nullptr);
}

TEST(NodeProperties, PrefixAndLocalNameArePartedByTheFirstColon) {
    Dom::Document document;
    const struct {
        const char* name;
        const char* prefix;
        const char* localName;
    } kCases[] = {
        {"a", "", "a"},  {"p:a", "p", "a"}, {"p:a:b", "p", "a:b"},
        {":a", "", "a"}, {"a:", "a", ""},   {"p::a", "p", ":a"},
        {"", "", ""},    {":", "", ""},     {"\xC3\xA4:\xC3\xB6", "\xC3\xA4", "\xC3\xB6"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const NodePtr element(document.CreateElement(c.name));
        EXPECT_EQ(element->NodeName(), c.name);
        EXPECT_EQ(element->Prefix(), c.prefix);
        EXPECT_EQ(element->LocalName(), c.localName);
        EXPECT_EQ(element->NameView(), c.name);
        EXPECT_EQ(element->PrefixView(), c.prefix);
        EXPECT_EQ(element->LocalNameView(), c.localName);
        const NodePtr attribute(document.CreateAttribute(c.name));
        EXPECT_EQ(attribute->Prefix(), c.prefix);
        EXPECT_EQ(attribute->LocalName(), c.localName);
    }
}

TEST(NodeProperties, NamesAreNotMixedUpWithThoseOfOtherNamespaces) {
    Dom::Document document;
    const NodePtr none(document.CreateElement("p:a"));
    const NodePtr first(document.CreateElementNS("urn:1", "p:a"));
    const NodePtr second(document.CreateElementNS("urn:2", "p:a"));
    const NodePtr again(document.CreateAttributeNS("urn:1", "p:a"));
    EXPECT_EQ(none->NamespaceURI(), "");
    EXPECT_EQ(first->NamespaceURI(), "urn:1");
    EXPECT_EQ(second->NamespaceURI(), "urn:2");
    EXPECT_EQ(again->NamespaceURI(), "urn:1");
    EXPECT_EQ(first->NodeName(), "p:a");
}

TEST(NodeProperties, NamesMayHoldAnyBytes) {
    Dom::Document document;
    const std::string_view name("a\0b", 3);
    const std::string_view uri("u\0v", 3);
    const NodePtr element(document.CreateElementNS(uri, name));
    EXPECT_EQ(element->NodeName(), name);
    EXPECT_EQ(element->NamespaceURI(), uri);
    const NodePtr longOne(document.CreateElement(std::string(100000, 'n')));
    EXPECT_EQ(longOne->NodeName(), std::string(100000, 'n'));
}

// --- SetPrefix() ---

TEST(SetPrefix, PutsThePrefixBeforeTheName) {
    Dom::Document document;
    const struct {
        const char* name;
        const char* prefix;
        const char* expected;
    } kCases[] = {
        {"b", "a", "a:b"},       {"a:b", "x", "x:b"},   {"a:b", "a", "a:b"},
        {"a:b:c", "x", "x:b:c"}, {":b", "x", "x:b"},    {"b", "x:y", "x:y:b"},
        {"a:", "x", "x:"},       {"b", "Xml", "Xml:b"}, {"b", "xmlnss", "xmlnss:b"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.name) + " with " + c.prefix);
        const NodePtr element(document.CreateElementNS("urn:x", c.name));
        element->SetPrefix(c.prefix);
        EXPECT_EQ(element->NodeName(), c.expected);
        EXPECT_EQ(element->NamespaceURI(), "urn:x");
        const NodePtr attribute(document.CreateAttributeNS("urn:x", c.name));
        attribute->SetPrefix(c.prefix);
        EXPECT_EQ(attribute->NodeName(), c.expected);
    }
}

// Deliberate: an empty prefix is not treated specially.
TEST(SetPrefix, AnEmptyPrefixGivesANameThatBeginsWithAColon) {
    Dom::Document document;
    const NodePtr plain(document.CreateElementNS("urn:x", "b"));
    plain->SetPrefix("");
    EXPECT_EQ(plain->NodeName(), ":b");
    const NodePtr prefixed(document.CreateElementNS("urn:x", "a:b"));
    prefixed->SetPrefix("");
    EXPECT_EQ(prefixed->NodeName(), ":b");
}

TEST(SetPrefix, ChangesNoOtherNodeOfThatName) {
    Dom::Document document;
    const NodePtr one(document.CreateElementNS("urn:x", "a:b"));
    const NodePtr other(document.CreateElementNS("urn:x", "a:b"));
    one->SetPrefix("c");
    EXPECT_EQ(one->NodeName(), "c:b");
    EXPECT_EQ(other->NodeName(), "a:b");
}

TEST(SetPrefix, TakesTheReservedPrefixesInTheirNamespacesOnly) {
    Dom::Document document;
    const struct {
        const char* uri;
        const char* name;
        const char* prefix;
        const char* expected;  // the name, or null when it is refused
    } kCases[] = {
        {kXmlNamespace, "a:b", "xml", "xml:b"},
        {kXmlNamespace, "b", "xml", "xml:b"},
        {"urn:x", "b", "xml", nullptr},
        {kXmlnsNamespace, "b", "xml", nullptr},
        {"http://www.w3.org/XML/1998/namespac", "b", "xml", nullptr},
        {kXmlnsNamespace, "a:b", "xmlns", "xmlns:b"},
        {"urn:x", "a:b", "xmlns", nullptr},
        {kXmlNamespace, "a:b", "xmlns", nullptr},
        {"http://www.w3.org/2000/xmlns", "a:b", "xmlns", nullptr},
        {kXmlNamespace, "xml:b", "other", "other:b"},
        {kXmlnsNamespace, "xmlns:b", "other", "other:b"},
        {"", "b", "x", nullptr},
        {"", "a:b", "xml", nullptr},
        {"", "b", "", nullptr},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.uri) + " " + c.name + " with " + c.prefix);
        const NodePtr node(document.CreateAttributeNS(c.uri, c.name));
        if (c.expected != nullptr) {
            node->SetPrefix(c.prefix);
            EXPECT_EQ(node->NodeName(), c.expected);
        } else {
            EXPECT_DOM_ERROR(node->SetPrefix(c.prefix), "14 Invalid prefix specified");
            EXPECT_EQ(node->NodeName(), c.name);
        }
    }
}

TEST(SetPrefix, IsRefusedForTheAttributeXmlns) {
    Dom::Document document;
    for (const char* uri : {kXmlnsNamespace, "urn:x"}) {
        SCOPED_TRACE(uri);
        const NodePtr attribute(document.CreateAttributeNS(uri, "xmlns"));
        for (const char* prefix : {"p", "", "xml", "xmlns"})
            EXPECT_DOM_ERROR(attribute->SetPrefix(prefix), "14 Invalid prefix specified");
        EXPECT_EQ(attribute->NodeName(), "xmlns");
    }
    const NodePtr element(document.CreateElementNS("urn:x", "xmlns"));
    element->SetPrefix("p");
    EXPECT_EQ(element->NodeName(), "p:xmlns");
}

TEST(SetPrefix, IsRefusedForNodesWithoutANamespace) {
    Dom::Document document;
    const NodePtr text(document.CreateTextNode("t"));
    EXPECT_DOM_ERROR(text->SetPrefix("p"), "14 Invalid prefix specified");
    EXPECT_DOM_ERROR(document.SetPrefix("p"), "14 Invalid prefix specified");
    EXPECT_EQ(text->NodeName(), "#text");
    EXPECT_EQ(document.NodeName(), "#document");
}

TEST(SetPrefix, AReadOnlyNodeIsSeenBeforeABadPrefix) {
    Dom::Document document;
    Lockable<Dom::Element> element("urn:x", "b", &document);
    element.SetReadOnly(true);
    EXPECT_DOM_ERROR(element.SetPrefix("p"), "7 This node is read-only");
    EXPECT_DOM_ERROR(element.SetPrefix("xml"), "7 This node is read-only");
    Lockable<Dom::Element> without("", "b", &document);
    without.SetReadOnly(true);
    EXPECT_DOM_ERROR(without.SetPrefix("p"), "7 This node is read-only");
    Lockable<Dom::Attr> xmlns(kXmlnsNamespace, "xmlns", &document);
    xmlns.SetReadOnly(true);
    EXPECT_DOM_ERROR(xmlns.SetPrefix("p"), "7 This node is read-only");
    element.SetReadOnly(false);
    element.SetPrefix("p");
    EXPECT_EQ(element.NodeName(), "p:b");
}

// --- others ---

TEST(BaseURI, EndsWithTheLastSlashOrBackslashOfTheDocumentURI) {
    const struct {
        const char* documentURI;
        const char* expected;
    } kCases[] = {
        {"", ""},
        {"doc.xml", ""},
        {"http://host/path/doc.xml", "http://host/path/"},
        {"http://host/path/", "http://host/path/"},
        {"c:\\dir\\doc.xml", "c:\\dir\\"},
        {"a/b\\c", "a/b\\"},
        {"a\\b/c", "a\\b/"},
        {"/", "/"},
        {"\\", "\\"},
        {"/doc.xml", "/"},
        {"urn:doc", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.documentURI);
        Dom::Document document;
        document.SetDocumentURI(c.documentURI);
        EXPECT_EQ(document.BaseURI(), c.expected);
        EXPECT_EQ(AddElement(document, "root")->BaseURI(), c.expected);
        const NodePtr attribute(document.CreateAttribute("a"));
        EXPECT_EQ(attribute->BaseURI(), c.expected);
    }
}

TEST(IsSupported, AnswersAsTheImplementationDoes) {
    Dom::Document document;
    Dom::DOMImplementation implementation;
    const NodePtr text(document.CreateTextNode(""));
    const struct {
        const char* feature;
        const char* version;
        bool expected;
    } kCases[] = {
        {"Core", "2.0", true},  {"Core", "", true},          {"Core", "1.0", false},
        {"Views", "2.0", true}, {"XML", "1.0", true},        {"XML", "", true},
        {"XML", "2.0", false},  {"XMLVersion", "1.0", true}, {"XMLVersion", "", false},
        {"HTML", "4.0", true},  {"HTML", "4.01", true},      {"CSS", "2.0", true},
        {"core", "2.0", false}, {"Events", "2.0", false},    {"", "", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.feature) + " " + c.version);
        EXPECT_EQ(text->IsSupported(c.feature, c.version), c.expected);
        EXPECT_EQ(document.IsSupported(c.feature, c.version), c.expected);
        EXPECT_EQ(implementation.HasFeature(c.feature, c.version), c.expected);
    }
}

TEST(IsParentOf, IsTrueForEveryNodeBelow) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*a, "b");
    Dom::Element* c = AddElement(*root, "c");
    EXPECT_TRUE(root->IsParentOf(a));
    EXPECT_TRUE(root->IsParentOf(b));
    EXPECT_TRUE(a->IsParentOf(b));
    EXPECT_FALSE(a->IsParentOf(a));
    EXPECT_FALSE(b->IsParentOf(a));
    EXPECT_FALSE(a->IsParentOf(c));
    EXPECT_FALSE(c->IsParentOf(b));
    EXPECT_FALSE(a->IsParentOf(nullptr));
}

// A document has no owner document, so its own and those of its nodes differ.
TEST(IsParentOf, IsFalseForNodesWithAnotherOwnerDocument) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    EXPECT_FALSE(document.IsParentOf(root));
    EXPECT_FALSE(root->IsParentOf(&document));
    Dom::Document other;
    EXPECT_FALSE(root->IsParentOf(AddElement(other, "root")));
    EXPECT_FALSE(document.IsParentOf(&other));
}

TEST(HasAttributes, TellsWhetherThereIsOne) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    EXPECT_FALSE(root->HasAttributes());
    ASSERT_NE(root->Attributes(), nullptr);
    EXPECT_EQ(root->Attributes()->Length(), 0u);
    EXPECT_FALSE(root->HasAttributes());
    root->SetAttribute("a", "1");
    EXPECT_TRUE(root->HasAttributes());
    root->RemoveAttribute("a");
    EXPECT_FALSE(root->HasAttributes());
}

TEST(HasAttributes, OnlyElementsHaveAMap) {
    Dom::Document document;
    const NodePtr kNodes[] = {NodePtr(document.CreateAttribute("a")),
                              NodePtr(document.CreateTextNode("")),
                              NodePtr(document.CreateComment("")),
                              NodePtr(document.CreateCDATASection("")),
                              NodePtr(document.CreateDocumentFragment()),
                              NodePtr(document.CreateEntityReference("")),
                              NodePtr(document.CreateProcessingInstruction("p", "d")),
                              NodePtr(new Dom::Document)};
    for (const NodePtr& node : kNodes) {
        SCOPED_TRACE(node->NodeName());
        EXPECT_EQ(node->Attributes(), nullptr);
        EXPECT_FALSE(node->HasAttributes());
    }
}

TEST(ProcessingInstruction, HasATargetAndData) {
    Dom::Document document;
    const std::unique_ptr<Dom::ProcessingInstruction> instruction(
        document.CreateProcessingInstruction("target", "data"));
    EXPECT_EQ(instruction->Target(), "target");
    EXPECT_EQ(instruction->Data(), "data");
    instruction->SetData("other");
    EXPECT_EQ(instruction->Data(), "other");
    EXPECT_EQ(instruction->NodeValue(), "other");
    EXPECT_EQ(instruction->Target(), "target");
}

// Deliberate: the data of an instruction can be set although it is read-only.
TEST(ProcessingInstruction, DoesNotCheckForReadOnly) {
    Dom::Document document;
    Lockable<Dom::ProcessingInstruction> instruction("target", "data", &document);
    instruction.SetReadOnly(true);
    EXPECT_TRUE(instruction.IsReadOnly());
    instruction.SetData("other");
    EXPECT_EQ(instruction.Data(), "other");
}

}  // namespace
