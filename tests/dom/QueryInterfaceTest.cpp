// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMObject.h>
#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/DocumentStyle.h>
#include <espalier/dom/css/ElementCSSInlineStyle.h>
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/dom/css/MediaList.h>
#include <espalier/dom/css/StyleSheet.h>

#include "dom/DomNodes.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

const char* const kInterfaces[] = {"Dom::Node",
                                   "Dom::Attr",
                                   "Dom::Element",
                                   "Dom::CharacterData",
                                   "Dom::Text",
                                   "Dom::CDATASection",
                                   "Dom::Comment",
                                   "Dom::EntityReference",
                                   "Dom::ProcessingInstruction",
                                   "Dom::DocumentFragment",
                                   "Dom::Document",
                                   "Dom::DOMObject",
                                   "Dom::DOMImplementation",
                                   "DocumentStyle",
                                   "Dom::StyleSheets::DocumentStyle"};

// What is no name of an interface, but nearly one.
const char* const kOthers[] = {"",           "Dom::",     "Node",          "Dom::Nod",
                               "Dom::Nodes", "dom::Node", " Dom::Node",    "Dom::Node ",
                               "Dom::attr",  "Element",   "Dom::DOM",      "Document",
                               "*",          "Text",      "Dom::TextNode", "documentstyle"};

std::vector<std::string> AnswersOf(Dom::Node& node) {
    std::vector<std::string> answers;
    for (const char* name : kInterfaces)
        if (node.QueryInterface(name) != nullptr) answers.emplace_back(name);
    for (const char* name : kOthers)
        if (node.QueryInterface(name) != nullptr) answers.emplace_back(name);
    std::sort(answers.begin(), answers.end());
    return answers;
}

TEST(QueryInterface, ANodeAnswersItsClassAndThoseThatItDerivesFrom) {
    Dom::Document document;
    const struct {
        Dom::NodePtr node;
        std::vector<std::string> answers;  // sorted
    } kCases[] = {
        {Dom::NodePtr(document.CreateAttribute("a")), {"Dom::Attr", "Dom::Node"}},
        {Dom::NodePtr(document.CreateElement("a")), {"Dom::Element", "Dom::Node"}},
        {Dom::NodePtr(document.CreateTextNode("a")),
         {"Dom::CharacterData", "Dom::Node", "Dom::Text"}},
        {Dom::NodePtr(document.CreateCDATASection("a")),
         {"Dom::CDATASection", "Dom::CharacterData", "Dom::Node", "Dom::Text"}},
        {Dom::NodePtr(document.CreateComment("a")),
         {"Dom::CharacterData", "Dom::Comment", "Dom::Node"}},
        {Dom::NodePtr(document.CreateEntityReference("a")), {"Dom::EntityReference", "Dom::Node"}},
        {Dom::NodePtr(document.CreateProcessingInstruction("a", "b")),
         {"Dom::Node", "Dom::ProcessingInstruction"}},
        {Dom::NodePtr(document.CreateDocumentFragment()), {"Dom::DocumentFragment", "Dom::Node"}},
        {Dom::NodePtr(new Dom::Document),
         {"DocumentStyle", "Dom::Document", "Dom::Node", "Dom::StyleSheets::DocumentStyle"}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.node->NodeType().ToString());
        EXPECT_EQ(AnswersOf(*c.node), c.answers);
    }
}

TEST(QueryInterface, AnyOtherNodeAnswersNodeOnly) {
    Dom::Document document;
    support::AnyNode node(Dom::DOMNodeType::NOTATION_NODE, "n", &document);
    EXPECT_EQ(AnswersOf(node), std::vector<std::string>{"Dom::Node"});
}

// A pointer of no type may be cast to the class that was asked for, and to no other one.
TEST(QueryInterface, GivesTheAddressOfThePartOfThatClass) {
    Dom::Document document;
    Dom::Node* node = &document;
    EXPECT_EQ(node->QueryInterface("Dom::Node"), static_cast<void*>(node));
    EXPECT_EQ(node->QueryInterface("Dom::Document"), static_cast<void*>(&document));
    auto* style = static_cast<Dom::StyleSheets::DocumentStyle*>(&document);
    EXPECT_EQ(node->QueryInterface("DocumentStyle"), static_cast<void*>(style));
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::DocumentStyle"), static_cast<void*>(style));
}

struct InFront {
    virtual ~InFront() = default;
    int number = 7;
};

// g++ takes the part that a node is of a class with another base in front for no pointer to delete.
#if defined(__GNUC__) && !defined(__clang__)
#    pragma GCC diagnostic push
#    pragma GCC diagnostic ignored "-Wfree-nonheap-object"
#endif
struct Mixed : InFront, Dom::Text {
    explicit Mixed(Dom::Document* owner) : Text("data", owner) {}
};
#if defined(__GNUC__) && !defined(__clang__)
#    pragma GCC diagnostic pop
#endif

TEST(QueryInterface, GivesThePartsOfANodeWithAnotherBaseInFront) {
    Dom::Document document;
    const auto mixed = std::make_unique<Mixed>(&document);
    Dom::Node* node = mixed.get();
    EXPECT_EQ(node->QueryInterface("Dom::Text"),
              static_cast<void*>(static_cast<Dom::Text*>(mixed.get())));
    EXPECT_EQ(static_cast<Dom::CharacterData*>(node->QueryInterface("Dom::CharacterData"))->Data(),
              "data");
    EXPECT_EQ(static_cast<Dom::Node*>(node->QueryInterface("Dom::Node")), node);
    EXPECT_EQ(mixed->number, 7);
}

TEST(QueryInterface, AnImplementationAnswersItsClassAndObject) {
    Dom::DOMImplementation implementation;
    EXPECT_EQ(implementation.QueryInterface("Dom::DOMImplementation"),
              static_cast<void*>(&implementation));
    EXPECT_EQ(implementation.QueryInterface("Dom::DOMObject"),
              static_cast<void*>(static_cast<Dom::DOMObject*>(&implementation)));
    EXPECT_EQ(implementation.QueryInterface("Dom::Node"), nullptr);
    EXPECT_EQ(implementation.QueryInterface(""), nullptr);
    Dom::DOMObject object;
    EXPECT_EQ(object.QueryInterface("Dom::DOMObject"), static_cast<void*>(&object));
    EXPECT_EQ(object.QueryInterface("Dom::DOMImplementation"), nullptr);
}

TEST(QueryInterface, IsTheFirstVirtualFunctionEverywhere) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&Dom::DOMObject::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::Node::QueryInterface), 0);  // 1 and 2: the destructor
    EXPECT_EQ(VirtualSlot(&Dom::Node::CloneNode), 3);
    EXPECT_EQ(VirtualSlot(&Dom::ProcessingInstruction::SetData), 4);
    EXPECT_EQ(VirtualSlot(&Dom::StyleProcessingInstruction::SetData), 4);
    EXPECT_EQ(VirtualSlot(&Dom::CSS::CSSStyleDeclaration::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::CSS::ElementCSSInlineStyle::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::StyleSheets::DocumentStyle::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::StyleSheets::LinkStyle::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::StyleSheets::MediaList::QueryInterface), 0);
    EXPECT_EQ(VirtualSlot(&Dom::StyleSheets::StyleSheet::QueryInterface), 0);
}

}  // namespace
