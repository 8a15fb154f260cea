// SPDX-License-Identifier: MIT
#include <espalier/dom.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::Document;
using Dom::DOMNodeType;
using Dom::NodePtr;

// Has a feature that the library does not have.
class Version11 : public Dom::DOMImplementation {
public:
    std::string asked;

    bool HasFeature(std::string_view feature, std::string_view version) override {
        asked += std::string(feature) + "/" + std::string(version) + ";";
        return feature == "XMLVersion" && version == "1.1";
    }
};

// Construction.

TEST(Document, BeginsWithItsRootElementAndDefaults) {
    Dom::DOMImplementation implementation;
    Dom::DocumentType type("p:a", "", "", nullptr);
    Document document("urn:p", "p:a", &type, &implementation);
    EXPECT_EQ(document.NodeType(), DOMNodeType::DOCUMENT_NODE);
    EXPECT_EQ(document.NodeName(), "#document");
    EXPECT_EQ(document.NodeValue(), "");
    EXPECT_EQ(document.NamespaceURI(), "");
    EXPECT_EQ(document.OwnerDocument(), nullptr);
    EXPECT_EQ(document.ParentNode(), nullptr);
    EXPECT_EQ(document.Implementation(), &implementation);
    EXPECT_EQ(document.Doctype(), &type);
    EXPECT_EQ(document.DocumentURI(), "");
    EXPECT_EQ(document.InputEncoding(), "");
    EXPECT_EQ(document.XmlEncoding(), "");
    EXPECT_EQ(document.XmlVersion(), "1.0");
    EXPECT_FALSE(document.XmlStandalone());
    EXPECT_TRUE(document.StrictErrorChecking());
    EXPECT_FALSE(document.IsReadOnly());
    EXPECT_FALSE(document.HasAttributes());
    EXPECT_EQ(document.Attributes(), nullptr);

    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.DocumentElement()->NodeName(), "p:a");
    EXPECT_EQ(document.DocumentElement()->NamespaceURI(), "urn:p");
    EXPECT_EQ(document.DocumentElement()->OwnerDocument(), &document);
    EXPECT_EQ(document.ChildNodes().Length(), 1U);
}

TEST(Document, KeepsItsTypeWithoutMakingItAChild) {
    Dom::DocumentType type("a", "", "", nullptr);
    Document document("", "a", &type, nullptr);
    EXPECT_EQ(document.Doctype(), &type);
    EXPECT_EQ(type.ParentNode(), nullptr);
    EXPECT_EQ(document.FirstChild(), document.DocumentElement());
}

TEST(Document, AnEmptyNameStillMakesARootElement) {
    Document document("", "", nullptr, nullptr);
    ASSERT_NE(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.DocumentElement()->NodeName(), "");
    EXPECT_EQ(document.Implementation(), nullptr);
    EXPECT_EQ(document.Doctype(), nullptr);
}

TEST(Document, MadeToBeLoadedIsEmpty) {
    Document document;
    EXPECT_FALSE(document.HasChildNodes());
    EXPECT_EQ(document.DocumentElement(), nullptr);
    EXPECT_EQ(document.XmlVersion(), "1.0");
    EXPECT_TRUE(document.StrictErrorChecking());
    EXPECT_FALSE(document.XmlStandalone());
}

TEST(Document, TheDocumentElementIsTheFirstChildThatIsAnElement) {
    Document document;
    document.AppendChild(document.CreateComment("c"));
    EXPECT_EQ(document.DocumentElement(), nullptr);
    Dom::Element* const root = document.CreateElement("a");
    document.AppendChild(root);
    document.AppendChild(document.CreateProcessingInstruction("p", "d"));
    EXPECT_EQ(document.DocumentElement(), root);
    document.RemoveChild(root)->DestroyNode();
    EXPECT_EQ(document.DocumentElement(), nullptr);
}

// InsertBefore() has no rules for the children of a document, so that there may be two.
TEST(Document, OfTwoElementsTheFirstIsTheDocumentElement) {
    Document document("", "second", nullptr, nullptr);
    Dom::Element* const first = document.CreateElement("first");
    document.InsertBefore(first, document.FirstChild());
    EXPECT_EQ(document.DocumentElement(), first);
}

TEST(Document, AnswersTheNamesOfItsClassesWithTheirSubobjects) {
    Document document;
    EXPECT_EQ(document.QueryInterface("Dom::Document"), &document);
    EXPECT_EQ(document.QueryInterface("Dom::Node"), static_cast<Dom::Node*>(&document));
    auto* const style = static_cast<Dom::StyleSheets::DocumentStyle*>(&document);
    EXPECT_EQ(document.QueryInterface("DocumentStyle"), style);
    EXPECT_EQ(document.QueryInterface("Dom::StyleSheets::DocumentStyle"), style);
    for (const char* const other : {"", "Document", "Dom::Element", "Dom::DOMObject"})
        EXPECT_EQ(document.QueryInterface(other), nullptr) << other;
}

// Factories.

TEST(Document, MakesElements) {
    Document document;
    const NodePtr plain(document.CreateElement("p:a"));
    EXPECT_EQ(plain->NodeType(), DOMNodeType::ELEMENT_NODE);
    EXPECT_EQ(plain->NodeName(), "p:a");
    EXPECT_EQ(plain->NamespaceURI(), "");
    EXPECT_EQ(plain->OwnerDocument(), &document);
    EXPECT_EQ(plain->ParentNode(), nullptr);
    EXPECT_FALSE(plain->HasAttributes());
    ASSERT_NE(plain->Attributes(), nullptr);
    EXPECT_EQ(plain->Attributes()->Length(), 0U);
    EXPECT_FALSE(plain->HasChildNodes());

    const NodePtr named(document.CreateElementNS("urn:p", "p:a"));
    EXPECT_EQ(named->NodeType(), DOMNodeType::ELEMENT_NODE);
    EXPECT_EQ(named->NodeName(), "p:a");
    EXPECT_EQ(named->NamespaceURI(), "urn:p");
    EXPECT_EQ(named->Prefix(), "p");
    EXPECT_EQ(named->LocalName(), "a");
    EXPECT_FALSE(document.HasChildNodes());
}

TEST(Document, MakesAttributesThatAreNotSpecified) {
    Document document;
    const std::unique_ptr<Dom::Attr> plain(document.CreateAttribute("x"));
    const std::unique_ptr<Dom::Attr> named(document.CreateAttributeNS("urn:p", "p:x"));
    for (const Dom::Attr* const attribute : {plain.get(), named.get()}) {
        EXPECT_EQ(attribute->NodeType(), DOMNodeType::ATTRIBUTE_NODE);
        EXPECT_FALSE(attribute->Specified());
        EXPECT_EQ(attribute->OwnerElement(), nullptr);
        EXPECT_EQ(attribute->OwnerDocument(), &document);
        EXPECT_EQ(attribute->Value(), "");
    }
    EXPECT_EQ(plain->Name(), "x");
    EXPECT_EQ(plain->NamespaceURI(), "");
    EXPECT_EQ(named->Name(), "p:x");
    EXPECT_EQ(named->NamespaceURI(), "urn:p");
}

TEST(Document, MakesNodesWithText) {
    Document document;
    const struct {
        NodePtr node;
        DOMNodeType::DOM_NODE_TYPE type;
        const char* name;
        const char* value;
    } kCases[] = {
        {NodePtr(document.CreateTextNode("a<b")), DOMNodeType::TEXT_NODE, "#text", "a<b"},
        {NodePtr(document.CreateTextNode("")), DOMNodeType::TEXT_NODE, "#text", ""},
        {NodePtr(document.CreateComment("c")), DOMNodeType::COMMENT_NODE, "#comment", "c"},
        {NodePtr(document.CreateCDATASection("d")), DOMNodeType::CDATA_SECTION_NODE,
         "#cdata-section", "d"},
        {NodePtr(document.CreateProcessingInstruction("t", "d")),
         DOMNodeType::PROCESSING_INSTRUCTION_NODE, "t", "d"},
        {NodePtr(document.CreateEntityReference("e")), DOMNodeType::ENTITY_REFERENCE_NODE, "e", ""},
        {NodePtr(document.CreateDocumentFragment()), DOMNodeType::DOCUMENT_FRAGMENT_NODE,
         "#document-fragment", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.node->NodeType(), c.type);
        EXPECT_EQ(c.node->NodeName(), c.name);
        EXPECT_EQ(c.node->NodeValue(), c.value);
        EXPECT_EQ(c.node->NamespaceURI(), "");
        EXPECT_EQ(c.node->OwnerDocument(), &document);
        EXPECT_EQ(c.node->ParentNode(), nullptr);
        EXPECT_FALSE(c.node->HasChildNodes());
        EXPECT_FALSE(c.node->IsReadOnly());
    }
}

TEST(Document, ANameMayBeAnything) {
    Document document;
    for (const char* const name : {"", " ", "<", "a b", ":", "1"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(NodePtr(document.CreateElement(name))->NodeName(), name);
        EXPECT_EQ(NodePtr(document.CreateElementNS("u", name))->NodeName(), name);
        EXPECT_EQ(NodePtr(document.CreateAttribute(name))->NodeName(), name);
        EXPECT_EQ(NodePtr(document.CreateAttributeNS("u", name))->NodeName(), name);
        EXPECT_EQ(NodePtr(document.CreateEntityReference(name))->NodeName(), name);
        EXPECT_EQ(NodePtr(document.CreateProcessingInstruction(name, ""))->NodeName(), name);
    }
}

TEST(Document, AnInstructionForAStyleSheetIsOfItsOwnClass) {
    constexpr struct {
        const char* target;
        bool isStyle;
    } kCases[] = {{"xml-stylesheet", true},
                  {"XML-STYLESHEET", false},
                  {"xml-Stylesheet", false},
                  {"xml-stylesheet ", false},
                  {"xml", false},
                  {"", false}};
    Document document;
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.target);
        const NodePtr node(document.CreateProcessingInstruction(c.target, "href='a.css'"));
        EXPECT_EQ(dynamic_cast<Dom::StyleProcessingInstruction*>(node.get()) != nullptr, c.isStyle);
        EXPECT_EQ(node->NodeName(), c.target);
        EXPECT_EQ(node->NodeValue(), "href='a.css'");
        EXPECT_EQ(node->NodeType(), DOMNodeType::PROCESSING_INSTRUCTION_NODE);
    }
}

// Properties.

TEST(Document, SettersSetWithoutChecks) {
    Document document;
    document.SetXmlStandalone(true);
    EXPECT_TRUE(document.XmlStandalone());
    document.SetXmlStandalone(false);
    EXPECT_FALSE(document.XmlStandalone());
    document.SetStrictErrorChecking(false);
    EXPECT_FALSE(document.StrictErrorChecking());
    document.SetStrictErrorChecking(true);
    EXPECT_TRUE(document.StrictErrorChecking());
    document.SetDocumentURI("file:///a/b c.xml");
    EXPECT_EQ(document.DocumentURI(), "file:///a/b c.xml");
    EXPECT_EQ(document.BaseURI(), "file:///a/");
}

TEST(Document, TheVersionIsOneThatTheImplementationHas) {
    Dom::DOMImplementation implementation;
    Document document("", "a", nullptr, &implementation);
    document.SetXmlVersion("1.0");
    EXPECT_EQ(document.XmlVersion(), "1.0");
    EXPECT_DOM_ERROR(document.SetXmlVersion("1.1"), "9 XML version \"1.1\" not supported!");
    EXPECT_DOM_ERROR(document.SetXmlVersion(""), "9 XML version \"\" not supported!");
    EXPECT_DOM_ERROR(document.SetXmlVersion("\"&"), "9 XML version \"\"&\" not supported!");
    EXPECT_EQ(document.XmlVersion(), "1.0");
}

TEST(Document, TheVersionIsAskedOfItsOwnImplementation) {
    Version11 implementation;
    Document document("", "a", nullptr, &implementation);
    document.SetXmlVersion("1.1");
    EXPECT_EQ(document.XmlVersion(), "1.1");
    EXPECT_DOM_ERROR(document.SetXmlVersion("1.0"), "9 XML version \"1.0\" not supported!");
    EXPECT_EQ(document.XmlVersion(), "1.1");
    EXPECT_EQ(implementation.asked, "XMLVersion/1.1;XMLVersion/1.0;");
}

TEST(Document, WithoutAnImplementationTheLibrarysOwnIsAsked) {
    Document document("", "a", nullptr, nullptr);
    document.SetXmlVersion("1.0");
    EXPECT_DOM_ERROR(document.SetXmlVersion("1.1"), "9 XML version \"1.1\" not supported!");
    EXPECT_EQ(document.Implementation(), nullptr);
}

// What is not implemented.

TEST(Document, NormalizeDocumentThrowsUnlessToldToBeLax) {
    Document document("", "a", nullptr, nullptr);
    Dom::Element& root = *document.DocumentElement();
    root.AppendChild(document.CreateTextNode("1"));
    root.AppendChild(document.CreateTextNode("2"));
    EXPECT_DOM_ERROR(document.NormalizeDocument(), "15 Not implemented");
    document.SetStrictErrorChecking(false);
    document.NormalizeDocument();
    EXPECT_EQ(root.ChildNodes().Length(), 2U);
    document.SetStrictErrorChecking(true);
    EXPECT_DOM_ERROR(document.NormalizeDocument(), "15 Not implemented");
}

TEST(Document, RenameNodeAlwaysThrows) {
    Document document("", "a", nullptr, nullptr);
    Dom::Node* const root = document.DocumentElement();
    for (const bool strict : {true, false}) {
        document.SetStrictErrorChecking(strict);
        EXPECT_DOM_ERROR(document.RenameNode(root, "urn:p", "p:b"), "15 Not implemented");
        EXPECT_DOM_ERROR(document.RenameNode(nullptr, "", ""), "15 Not implemented");
    }
    EXPECT_EQ(root->NodeName(), "a");
}

// Copies.

TEST(Document, DeliberateACloneHasTheFieldsAndNoChildren) {
    Version11 implementation;
    Dom::DocumentType type("a", "", "", nullptr);
    Document document("", "a", &type, &implementation);
    document.SetXmlVersion("1.1");
    document.SetXmlStandalone(true);
    document.SetStrictErrorChecking(false);
    document.SetDocumentURI("dir/a.xml");
    for (const bool deep : {false, true}) {
        const NodePtr node(document.CloneNode(deep));
        ASSERT_EQ(node->NodeType(), DOMNodeType::DOCUMENT_NODE);
        const auto& clone = static_cast<const Document&>(*node);
        EXPECT_FALSE(clone.HasChildNodes());
        EXPECT_EQ(clone.DocumentElement(), nullptr);
        EXPECT_EQ(clone.NodeName(), "#document");
        EXPECT_EQ(clone.OwnerDocument(), nullptr);
        EXPECT_EQ(clone.Implementation(), &implementation);
        EXPECT_EQ(clone.Doctype(), &type);
        EXPECT_EQ(clone.DocumentURI(), "dir/a.xml");
        EXPECT_EQ(clone.XmlVersion(), "1.1");
        EXPECT_TRUE(clone.XmlStandalone());
        EXPECT_FALSE(clone.StrictErrorChecking());
    }
    EXPECT_NE(document.DocumentElement(), nullptr);
}

TEST(Document, ACloneKeepsTheEncodings) {
    Document document;
    document.LoadXml("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>", "u");
    const NodePtr node(document.CloneNode(true));
    const auto& clone = static_cast<const Document&>(*node);
    EXPECT_EQ(clone.XmlEncoding(), "ISO-8859-1");
    EXPECT_EQ(clone.InputEncoding(), document.InputEncoding());
    EXPECT_NE(clone.InputEncoding(), "");
}

TEST(Document, ACloneIsADocumentOfItsOwn) {
    auto document = std::make_unique<Document>("", "a", nullptr, nullptr);
    const NodePtr node(document->CloneNode(true));
    document.reset();
    auto& clone = static_cast<Document&>(*node);
    clone.AppendChild(clone.CreateElement("b"));
    EXPECT_EQ(clone.DocumentElement()->NodeName(), "b");
}

TEST(Document, ACopyOfTheTreeKeepsReferencesInAttributes) {
    Document document("", "a", nullptr, nullptr);
    Dom::Attr* const attribute = document.CreateAttribute("x");
    attribute->AppendChild(document.CreateTextNode("1"));
    attribute->AppendChild(document.CreateEntityReference("e"));
    attribute->AppendChild(document.CreateTextNode("2"));
    document.DocumentElement()->SetAttributeNode(attribute);
    document.DocumentElement()->SetAttributeNode(document.CreateAttribute("y"));
    const auto partNames = [](const Dom::Node* node) {
        std::string names;
        for (const Dom::Node& part : node->Children())
            names += part.NodeName().str() + "=" + part.NodeValue().str() + " ";
        return names;
    };
    const auto expectCopy = [&](const Dom::Node& root) {
        const auto& element = static_cast<const Dom::Element&>(root);
        EXPECT_EQ(partNames(element.GetAttributeNode("x")), "#text=1 e= #text=2 ");
        EXPECT_EQ(element.GetAttribute("x"), "12");
        EXPECT_FALSE(element.GetAttributeNode("y")->HasChildNodes());
        EXPECT_EQ(element.AttributeViews().size(), 2U);
    };
    const NodePtr copy(document.CloneTree());
    expectCopy(*static_cast<const Document&>(*copy).DocumentElement());
    expectCopy(*NodePtr(document.DocumentElement()->CloneTree()));
    Document other;
    expectCopy(*NodePtr(other.ImportNode(*document.DocumentElement(), true)));
    const NodePtr alone(other.ImportNode(*attribute, true));
    EXPECT_EQ(partNames(alone.get()), "#text=1 e= #text=2 ");
}

// Lists.

TEST(Document, ListsElementsOfTheWholeDocument) {
    Document document;
    document.LoadXml("<a><b/><c><b x='1'/></c><p:b xmlns:p='u'/></a>");
    EXPECT_EQ(document.GetElementsByTagName("b").Length(), 2U);
    EXPECT_EQ(document.GetElementsByTagName("a").Length(), 1U);
    EXPECT_EQ(document.GetElementsByTagName("p:b").Length(), 1U);
    EXPECT_EQ(document.GetElementsByTagName("*").Length(), 0U);
}

TEST(Document, DeliberateAListByNamespaceIsOneOfNodesNamedAsTheNamespace) {
    Document document;
    document.LoadXml("<a><b xmlns='b'/><c xmlns='b'/></a>");
    const Dom::NodeList list = document.GetElementsByTagNameNS("b", "c");
    ASSERT_EQ(list.Length(), 1U);
    EXPECT_EQ(list.Item(0)->NodeName(), "b");
}

// Shows what is protected.
class OpenDocument : public Document {
public:
    using Document::GetElementsByName;
};

TEST(Document, ListsFormControlsByTheirNameAttribute) {
    OpenDocument document;
    document.LoadXml(
        "<form><input name='n' i='1'/><p name='n'/><button name='n' i='2'><select name='n' i='3'/>"
        "</button><textarea name='m'/><textarea name='n' i='4'/><INPUT name='n'/><input/></form>");
    const Dom::NodeList list = document.GetElementsByName("n");
    std::string found;
    for (std::size_t i = 0; i < list.Length(); ++i)
        found += static_cast<Dom::Element*>(list.Item(i))->GetAttribute("i").str();
    EXPECT_EQ(found, "1234");
    EXPECT_EQ(document.GetElementsByName("m").Length(), 1U);
    EXPECT_EQ(document.GetElementsByName("x").Length(), 0U);
}

// The binary interface.

TEST(Document, KeepsTheOrderOfItsVirtualFunctions) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&Document::QueryInterface), 0);  // 1 and 2: the destructor
    EXPECT_EQ(VirtualSlot(&Document::CloneNode), 3);
    EXPECT_EQ(VirtualSlot(&Document::CreateElement), 4);
    EXPECT_EQ(VirtualSlot(&Document::CreateDocumentFragment), 5);
    EXPECT_EQ(VirtualSlot(&Document::CreateTextNode), 6);
    EXPECT_EQ(VirtualSlot(&Document::CreateComment), 7);
    EXPECT_EQ(VirtualSlot(&Document::CreateCDATASection), 8);
    EXPECT_EQ(VirtualSlot(&Document::CreateProcessingInstruction), 9);
    EXPECT_EQ(VirtualSlot(&Document::CreateAttribute), 10);
    EXPECT_EQ(VirtualSlot(&Document::CreateEntityReference), 11);
    EXPECT_EQ(VirtualSlot(&Document::CreateElementNS), 12);
    EXPECT_EQ(VirtualSlot(&Document::CreateAttributeNS), 13);
}

}  // namespace
