// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/LoadText.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::NodePtr;
using support::AddElement;
using support::AddText;

using ElementPtr = std::unique_ptr<Dom::Element>;

constexpr int kDeep = 300000;  // levels, which would cost stack

// --- Children() ---

TEST(Children, VisitsTheChildrenInTheirTrueOrder) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    EXPECT_TRUE(root->Children().empty());
    AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    root->InsertBefore(document.CreateElement("n"), b);
    EXPECT_EQ(support::Forward(*root), "a b");
    EXPECT_EQ(support::TrueChildren(*root), "a n b");
    EXPECT_FALSE(root->Children().empty());
}

TEST(Children, ALoopMayRemoveOrDestroyTheChildItStandsOn) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* aside = document.CreateElement("aside");
    const NodePtr owner(aside);
    for (const char* name : {"a", "b", "c", "d", "e"})
        AddElement(*root, name);
    for (Dom::Node& child : root->Children()) {
        if (child.NodeName() == "a" || child.NodeName() == "d")
            child.DestroyNode();
        else if (child.NodeName() == "c" || child.NodeName() == "e")
            aside->AppendChild(&child);
    }
    EXPECT_EQ(support::TrueChildren(*root), "b");
    EXPECT_EQ(support::TrueChildren(*aside), "c e");
}

// --- TextContent() ---

TEST(TextContent, JoinsTheTextsAndSectionsBelow) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    EXPECT_EQ(root->TextContent(), "");
    AddText(*root, "one ");
    Dom::Element* a = AddElement(*root, "a");
    a->SetAttribute("x", "not this");
    AddText(*a, "two ");
    a->AppendChild(document.CreateComment("nor this"));
    a->AppendChild(document.CreateCDATASection("three "));
    root->AppendChild(document.CreateProcessingInstruction("pi", "nor this"));
    AddText(*root, "four");
    EXPECT_EQ(root->TextContent(), "one two three four");
    EXPECT_EQ(a->TextContent(), "two three ");
    EXPECT_EQ(document.TextContent(), "one two three four");
    const NodePtr fragment(document.CreateDocumentFragment());
    AddText(*fragment, "x");
    EXPECT_EQ(fragment->TextContent(), "x");
}

TEST(TextContent, OfANodeWithAValueIsTheValue) {
    Dom::Document document;
    const NodePtr kNodes[] = {NodePtr(document.CreateTextNode("value")),
                              NodePtr(document.CreateCDATASection("value")),
                              NodePtr(document.CreateComment("value")),
                              NodePtr(document.CreateProcessingInstruction("target", "value"))};
    for (const NodePtr& node : kNodes)
        EXPECT_EQ(node->TextContent(), "value") << node->NodeName();
    const std::unique_ptr<Dom::Attr> attribute(document.CreateAttribute("a"));
    attribute->SetValue("value");
    EXPECT_EQ(attribute->TextContent(), "value");
    AddText(*attribute, "s");
    EXPECT_EQ(attribute->TextContent(), "values");
}

TEST(TextContent, FollowsTheTrueOrder) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "onetwo");
    AddText(*root, "three");
    text->SplitText(3);
    EXPECT_EQ(support::Forward(*root), "'one' 'three'");
    EXPECT_EQ(root->TextContent(), "onetwothree");
}

// --- Normalize() ---

TEST(Normalize, JoinsAdjacentTextsAndDestroysEmptyOnes) {
    Dom::Document document;
    const struct {
        std::vector<const char*> parts;  // a text, or "<" for an element, "[" for a section
        const char* expected;
    } kCases[] = {
        {{}, ""},
        {{"a"}, "'a'"},
        {{""}, ""},
        {{"", "", ""}, ""},
        {{"a", "b", "c"}, "'abc'"},
        {{"", "a", "", "b", ""}, "'ab'"},
        {{"a", "<", "b", "c"}, "'a' e 'bc'"},
        {{"", "<", ""}, "e"},
        {{"a", "[", "b"}, "'a' #cdata-section 'b'"},
        {{"[", "", "["}, "#cdata-section #cdata-section"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        const ElementPtr root(document.CreateElement("root"));
        for (const std::string_view part : c.parts) {
            if (part == "<") {
                root->AppendChild(document.CreateElement("e"));
            } else if (part == "[") {
                root->AppendChild(document.CreateCDATASection("s"));
            } else {
                root->AppendChild(document.CreateTextNode(part));
            }
        }
        root->Normalize();
        EXPECT_EQ(support::TrueChildren(*root), c.expected);
        EXPECT_EQ(support::Forward(*root), c.expected);
    }
}

TEST(Normalize, ReachesEveryDepthAndAttributes) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    AddText(*a, "one");
    AddText(*a, "two");
    Dom::Attr* attribute = document.CreateAttribute("x");
    AddText(*attribute, "three");
    AddText(*attribute, "four");
    a->SetAttributeNode(attribute);
    document.Normalize();
    EXPECT_EQ(support::TrueChildren(*a), "'onetwo'");
    EXPECT_EQ(support::TrueChildren(*attribute), "'threefour'");
}

TEST(Normalize, LosesNothingAtATextThatIsReadOnly) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddText(*root, "a");
    AddText(*root, "b");
    AddElement(*root, "e");
    auto* locked = new support::Lockable<Dom::Text>("c", &document);
    root->AppendChild(locked);
    AddText(*root, "d");
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(root->Normalize(), "7 This node is read-only");
    EXPECT_EQ(support::TrueChildren(*root), "'ab' e 'c' 'd'");
}

TEST(Normalize, TextsWithChildrenStay) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddText(*root, "a");
    AddText(*root, "b");
    AddElement(*AddText(*root, "c"), "inside");
    AddText(*root, "d");
    root->Normalize();
    EXPECT_EQ(support::TrueChildren(*root), "'ab' 'cd'");
    EXPECT_EQ(support::TrueChildren(*root->LastChild()), "inside");
}

TEST(Normalize, JoinsTheTailOfASplitTextWithItsHead) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "headtail");
    Dom::Element* b = AddElement(*root, "b");
    text->SplitText(4);
    root->Normalize();
    EXPECT_EQ(support::Links(*root, {text, b}),
              "first='headtail' last=b 'headtail'(-,b) b('headtail',-)");
}

// --- CloneTree() ---

TEST(CloneTree, CopiesAllThatIsBelow) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    root->SetAttribute("a", "1");
    root->SetAttributeNS("urn:x", "p:b", "2");
    AddText(*root, "text");
    Dom::Element* inner = AddElement(*root, "inner");
    inner->SetAttribute("c", "3");
    AddElement(*inner, "deeper");
    root->AppendChild(document.CreateComment("comment"));
    root->AppendChild(document.CreateCDATASection("section"));
    root->AppendChild(document.CreateEntityReference("entity"));
    root->AppendChild(document.CreateProcessingInstruction("target", "data"));

    const NodePtr made(root->CloneTree());
    auto& clone = static_cast<Dom::Element&>(*made);
    EXPECT_EQ(clone.ParentNode(), nullptr);
    EXPECT_EQ(clone.OwnerDocument(), &document);
    EXPECT_EQ(clone.GetAttribute("a"), "1");
    EXPECT_EQ(clone.GetAttributeNS("urn:x", "b"), "2");
    EXPECT_EQ(support::TrueChildren(clone), "'text' inner #comment #cdata-section entity target");
    EXPECT_EQ(clone.LastChild()->NodeValue(), "data");
    auto* innerClone = static_cast<Dom::Element*>(clone.FirstChild()->NextSibling());
    EXPECT_NE(innerClone, inner);
    EXPECT_EQ(innerClone->GetAttribute("c"), "3");
    EXPECT_EQ(support::TrueChildren(*innerClone), "deeper");
    root->DestroyNode();
    EXPECT_EQ(support::TrueChildren(*innerClone), "deeper");
}

// The copy has the true order, and its links tell of it.
TEST(CloneTree, CopiesTheTrueOrderWithConsistentLinks) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    root->InsertBefore(document.CreateElement("n"), b);
    const NodePtr clone(root->CloneTree());
    EXPECT_EQ(support::Forward(*clone), "a n b");
    EXPECT_EQ(support::Backward(*clone), "b n a");
}

TEST(CloneTree, OfAnAttributeCopiesItsChildren) {
    Dom::Document document;
    const std::unique_ptr<Dom::Attr> attribute(document.CreateAttribute("a"));
    AddText(*attribute, "one");
    attribute->AppendChild(document.CreateEntityReference("entity"));
    const NodePtr made(attribute->CloneTree());
    EXPECT_EQ(support::TrueChildren(*made), "'one' entity");
    EXPECT_EQ(static_cast<Dom::Attr&>(*made).Value(), "one");
}

// The value of an attribute is made of its children's own values, and that of an attribute that has
// children is another one than its text.
TEST(CloneTree, OfAnAttributeWithinAnotherKeepsItsOwnValue) {
    Dom::Document document;
    Dom::Document loaded;
    support::LoadText(loaded, "<e a='text'/>", support::WithoutNamespaces());
    Dom::Attr* attributes[] = {document.CreateAttribute("a"),
                               loaded.DocumentElement()->RemoveAttributeNode(
                                   loaded.DocumentElement()->GetAttributeNode("a"))};
    AddText(*attributes[0], "text");
    for (Dom::Attr* const inner : attributes) {
        ASSERT_EQ(inner->Value(), "text");
        ASSERT_EQ(inner->NodeValue(), "");
        const std::unique_ptr<Dom::Attr> outer(inner->OwnerDocument()->CreateAttribute("outer"));
        outer->AppendChild(inner);
        ASSERT_EQ(outer->Value(), "");
        const NodePtr made(outer->CloneTree());
        EXPECT_EQ(static_cast<Dom::Attr&>(*made).Value(), "");
        ASSERT_NE(made->FirstChild(), nullptr);
        const auto& copy = static_cast<const Dom::Attr&>(*made->FirstChild());
        EXPECT_EQ(copy.NodeValue(), "");
        EXPECT_EQ(copy.Value(), "text");
        EXPECT_EQ(support::TrueChildren(copy), "'text'");
    }
}

TEST(CloneTree, OfADocumentIsADocumentWithTheSameNodes) {
    Dom::Document document;
    document.SetDocumentURI("uri");
    document.AppendChild(document.CreateComment("c"));
    Dom::Element* root = AddElement(document, "root");
    AddText(*root, "text");
    const NodePtr made(document.CloneTree());
    auto& clone = static_cast<Dom::Document&>(*made);
    EXPECT_EQ(clone.DocumentURI(), "uri");
    EXPECT_EQ(support::TrueChildren(clone), "#comment root");
    ASSERT_NE(clone.DocumentElement(), nullptr);
    EXPECT_EQ(clone.DocumentElement()->OwnerDocument(), &clone);
    EXPECT_EQ(support::TrueChildren(*clone.DocumentElement()), "'text'");
}

TEST(CloneTree, CopiesDeepTrees) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Node* deepest = root;
    for (int i = 0; i < kDeep; ++i)
        deepest = deepest->AppendChild(document.CreateElement("e"));
    AddText(*deepest, "bottom");
    const NodePtr clone(root->CloneTree());
    EXPECT_EQ(clone->TextContent(), "bottom");
    EXPECT_EQ(NodePtr(document.ImportNode(*root, true))->TextContent(), "bottom");
    root->Normalize();
    EXPECT_EQ(document.GetElementsByTagName("e").Length(), static_cast<std::size_t>(kDeep));
}

// --- ImportNode() ---

TEST(ImportNode, CopiesNodesOfOtherDocuments) {
    Dom::Document source;
    Dom::Element* root = AddElement(source, "root");
    root->SetAttribute("a", "1");
    root->SetAttributeNS("urn:x", "p:b", "2");
    AddText(*AddElement(*root, "inner"), "text");
    Dom::Document target;
    for (const bool deep : {false, true}) {
        SCOPED_TRACE(deep);
        const NodePtr made(target.ImportNode(*root, deep));
        auto& copy = static_cast<Dom::Element&>(*made);
        EXPECT_EQ(copy.OwnerDocument(), &target);
        EXPECT_EQ(copy.NodeName(), "root");
        EXPECT_EQ(copy.ParentNode(), nullptr);
        EXPECT_EQ(copy.GetAttribute("a"), "1");
        EXPECT_EQ(copy.GetAttributeNS("urn:x", "b"), "2");
        EXPECT_EQ(copy.GetAttributeNode("a")->OwnerDocument(), &target);
        EXPECT_EQ(support::TrueChildren(copy), deep ? "inner" : "");
        EXPECT_EQ(copy.TextContent(), deep ? "text" : "");
    }
    EXPECT_EQ(root->ParentNode(), &source);
}

TEST(ImportNode, CopiesNodesOfEachType) {
    Dom::Document source;
    Dom::Document target;
    const NodePtr kNodes[] = {NodePtr(source.CreateElementNS("urn:x", "p:e")),
                              NodePtr(source.CreateAttributeNS("urn:x", "p:a")),
                              NodePtr(source.CreateTextNode("text")),
                              NodePtr(source.CreateCDATASection("section")),
                              NodePtr(source.CreateComment("comment")),
                              NodePtr(source.CreateEntityReference("entity")),
                              NodePtr(source.CreateProcessingInstruction("target", "data")),
                              NodePtr(source.CreateDocumentFragment())};
    for (const NodePtr& node : kNodes) {
        SCOPED_TRACE(node->NodeName());
        const NodePtr copy(target.ImportNode(*node, true));
        EXPECT_EQ(copy->NodeType(), node->NodeType());
        EXPECT_EQ(copy->NodeName(), node->NodeName());
        EXPECT_EQ(copy->NodeValue(), node->NodeValue());
        EXPECT_EQ(copy->NamespaceURI(), node->NamespaceURI());
        EXPECT_EQ(copy->OwnerDocument(), &target);
    }
}

// What elements get from a document's own factory stands beside what they are given.
TEST(ImportNode, WhatIsInAttributesComesToThoseOfTheSameName) {
    class WithDefault : public Dom::Document {
    public:
        Dom::Element* CreateElementNS(std::string_view uri, std::string_view name) override {
            ElementPtr made(Document::CreateElementNS(uri, name));
            made->SetAttribute("default", "d");
            return made.release();
        }
    };
    Dom::Document source;
    const ElementPtr element(source.CreateElement("e"));
    for (const char* name : {"a", "b"}) {
        Dom::Attr* attribute = source.CreateAttribute(name);
        AddText(*attribute, name);
        AddText(*attribute, "+");
        element->SetAttributeNode(attribute);
    }
    WithDefault target;
    const NodePtr made(target.ImportNode(*element, false));
    std::string shown;
    for (Dom::Node* node : *made->Attributes())
        shown += node->NodeName().str() + ": " + support::TrueChildren(*node) + "; ";
    EXPECT_EQ(shown, "default: 'd'; a: 'a' '+'; b: 'b' '+'; ");
}

// Two attributes may be filed apart although they have got the same name. The later one stays.
TEST(ImportNode, AttributesOfOneNameBecomeOne) {
    Dom::Document source;
    const ElementPtr element(source.CreateElement("e"));
    const char* const kAttributes[][2] = {{"p:a", "1"}, {"q:a", "2"}};
    for (const auto& [name, value] : kAttributes) {
        Dom::Attr* attribute = source.CreateAttributeNS("urn:x", name);
        AddText(*attribute, value);
        AddText(*attribute, value);
        ASSERT_EQ(element->SetAttributeNode(attribute), nullptr);
        attribute->SetPrefix("q");
    }
    ASSERT_EQ(support::Members(*element->Attributes()), "q:a q:a");
    Dom::Document target;
    const NodePtr made(target.ImportNode(*element, false));
    ASSERT_EQ(support::Members(*made->Attributes()), "q:a");
    EXPECT_EQ(support::TrueChildren(*made->Attributes()->Item(0)), "'2' '2'");
    const NodePtr clone(element->CloneTree());
    ASSERT_EQ(clone->Attributes()->Length(), 2u);
    EXPECT_EQ(support::TrueChildren(*clone->Attributes()->Item(0)), "'1' '1'");
    EXPECT_EQ(support::TrueChildren(*clone->Attributes()->Item(1)), "'2' '2'");
}

TEST(ImportNode, KeepsWhetherAttributesAreSpecified) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    root->SetAttribute("a", "1");
    root->SetAttributeNode(document.CreateAttribute("b"));
    const NodePtr made(document.CloneTree());
    const Dom::Element& copy = *static_cast<Dom::Document&>(*made).DocumentElement();
    EXPECT_TRUE(copy.GetAttributeNode("a")->Specified());
    EXPECT_FALSE(copy.GetAttributeNode("b")->Specified());
}

TEST(ImportNode, TheCopyOutlivesItsSource) {
    Dom::Document target;
    NodePtr copy;
    {
        Dom::Document source;
        Dom::Element* root = AddElement(source, "root");
        AddText(*root, "a text that is longer than a small string is");
        copy.reset(target.ImportNode(*root, true));
    }
    EXPECT_EQ(copy->NodeName(), "root");
    target.AppendChild(copy.get());
    EXPECT_EQ(target.TextContent(), "a text that is longer than a small string is");
    EXPECT_EQ(copy.release(), target.DocumentElement());
}

TEST(ImportNode, RefusesDocumentsAndDocumentTypes) {
    Dom::Document source;
    Dom::Document target;
    const Dom::DocumentType doctype("d", "", "", &source);
    for (const bool deep : {false, true}) {
        EXPECT_DOM_ERROR(target.ImportNode(source, deep), "9 Node type not supported");
        EXPECT_DOM_ERROR(target.ImportNode(doctype, deep), "9 Node type not supported");
        EXPECT_DOM_ERROR(target.ImportNode(target, deep), "9 Node type not supported");
    }
}

// --- finding by id ---

TEST(FindById, FindsTheFirstElementInDocumentOrder) {
    Dom::Document document;
    EXPECT_EQ(document.FindById("x"), nullptr);
    EXPECT_EQ(document.GetElementById("x"), nullptr);
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* inner = AddElement(*a, "inner");
    Dom::Element* b = AddElement(*root, "b");
    b->SetAttribute("id", "x");
    EXPECT_EQ(document.FindById("x"), b);
    EXPECT_EQ(document.GetElementById("x"), b);
    inner->SetAttribute("id", "x");
    EXPECT_EQ(document.FindById("x"), inner);
    EXPECT_EQ(document.GetElementById("x"), inner);
    root->SetAttribute("id", "");
    EXPECT_EQ(document.FindById(""), root);
    EXPECT_EQ(document.GetElementById(""), root);
    EXPECT_EQ(document.FindById("X"), nullptr);
    EXPECT_EQ(document.GetElementById("X"), nullptr);
}

// Deliberate: GetElementById() compares the stored value, which an attribute does not have whose
// value is that of its children only.
TEST(FindById, FindsValuesThatAreThoseOfChildren) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Attr* id = document.CreateAttribute("id");
    AddText(*id, "x");
    root->SetAttributeNode(id);
    EXPECT_EQ(document.GetElementById("x"), nullptr);
    EXPECT_EQ(document.GetElementById(""), root);
    EXPECT_EQ(document.FindById("x"), root);
    EXPECT_EQ(document.FindById(""), nullptr);
}

TEST(FindById, AnAttributeOfANamespaceIsNoId) {
    Dom::Document document;
    AddElement(document, "root")->SetAttributeNS("urn:x", "p:id", "x");
    EXPECT_EQ(document.GetElementById("x"), nullptr);
    EXPECT_EQ(document.FindById("x"), nullptr);
}

// --- AttributeViews() ---

TEST(AttributeViews, ShowTheAttributesInOrder) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    EXPECT_TRUE(element->AttributeViews().empty());
    element->SetAttribute("b", "1");
    element->SetAttributeNS("urn:x", "p:a", "2");
    Dom::Attr* joined = document.CreateAttribute("c");
    AddText(*joined, "3");
    AddText(*joined, "4");
    element->SetAttributeNode(joined);
    EXPECT_EQ(element->AttributeViews().size(), 3u);
    std::string shown;
    for (const Dom::AttributeView attribute : element->AttributeViews()) {
        shown += attribute.Name().str() + "|" + std::string(attribute.Prefix()) + "|" +
                 std::string(attribute.LocalName()) + "|" + attribute.NamespaceURI().str() + "|" +
                 std::string(attribute.Value()) + "\n";
    }
    EXPECT_EQ(shown, "b||b||1\np:a|p|a|urn:x|2\nc||c||34\n");
    element->RemoveAttribute("b");
    EXPECT_EQ((*element->AttributeViews().begin()).Name(), "p:a");
}

}  // namespace
