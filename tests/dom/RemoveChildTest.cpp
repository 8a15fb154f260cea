// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using Dom::NodePtr;
using support::Add;
using support::AddElement;
using support::Links;
using support::Lockable;

using LockableElement = Lockable<Dom::Element>;

constexpr char kExpected[] = "8 Node expected";
constexpr char kNoChild[] = "8 The old child is not a child of this node";
constexpr char kReadOnly[] = "7 This node is read-only";

TEST(RemoveChild, LinksTheNeighboursAndFreesTheNode) {
    const struct {
        std::size_t count;  // of children, which are named a, b, c, d
        std::size_t position;
        const char* links;
    } kCases[] = {
        {1, 0, "first=- last=- a(-,-)@-"},
        {2, 0, "first=b last=b a(-,-)@- b(-,-)"},
        {2, 1, "first=a last=a a(-,-) b(-,-)@-"},
        {3, 0, "first=b last=c a(-,-)@- b(-,c) c(b,-)"},
        {3, 1, "first=a last=c a(-,c) b(-,-)@- c(a,-)"},
        {3, 2, "first=a last=b a(-,b) b(a,-) c(-,-)@-"},
        {4, 1, "first=a last=d a(-,c) b(-,-)@- c(a,d) d(c,-)"},
        {4, 2, "first=a last=d a(-,b) b(a,d) c(-,-)@- d(b,-)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.count) + " children, at " + std::to_string(c.position));
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        std::vector<Dom::Node*> nodes;
        for (std::size_t i = 0; i < c.count; ++i)
            nodes.push_back(AddElement(*root, std::string(1, static_cast<char>('a' + i))));
        const NodePtr removed(root->RemoveChild(nodes[c.position]));
        EXPECT_EQ(removed.get(), nodes[c.position]);
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(root->HasChildNodes(), c.count > 1);
    }
}

TEST(RemoveChild, TheNodeKeepsItsDocumentAndWhatIsBelowIt) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddElement(*root, "below");
    const NodePtr removed(document.RemoveChild(root));
    EXPECT_EQ(removed->OwnerDocument(), &document);
    EXPECT_EQ(support::TrueChildren(*removed), "below");
    EXPECT_EQ(document.DocumentElement(), nullptr);
}

TEST(RemoveChild, ARemovedNodeMayBeAppendedAgain) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    root->AppendChild(root->RemoveChild(a));
    EXPECT_EQ(Links(*root, {a, b}), "first=b last=a a(b,-) b(-,a)");
}

TEST(RemoveChild, RefusesNull) {
    Dom::Document document;
    EXPECT_DOM_ERROR(document.RemoveChild(nullptr), kExpected);
}

TEST(RemoveChild, RefusesNodesThatAreNoChildren) {
    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* below = AddElement(*a, "below");
    const NodePtr freeNode(document.CreateElement("free"));
    a->SetAttribute("x", "1");
    EXPECT_DOM_ERROR(root->RemoveChild(root), kNoChild);
    EXPECT_DOM_ERROR(root->RemoveChild(below), kNoChild);
    EXPECT_DOM_ERROR(root->RemoveChild(freeNode.get()), kNoChild);
    EXPECT_DOM_ERROR(root->RemoveChild(&document), kNoChild);
    EXPECT_DOM_ERROR(root->RemoveChild(AddElement(other, "otherRoot")), kNoChild);
    EXPECT_DOM_ERROR(a->RemoveChild(a->GetAttributeNode("x")), kNoChild);
    EXPECT_EQ(support::TrueChildren(*root), "a");
}

TEST(RemoveChild, RefusesWhenItIsReadOnly) {
    Dom::Document document;
    auto* locked = Add<LockableElement>(document, "root");
    Dom::Element* a = AddElement(*locked, "a");
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(locked->RemoveChild(a), kReadOnly);
    EXPECT_EQ(Links(*locked, {a}), "first=a last=a a(-,-)");
    locked->SetReadOnly(false);
    const NodePtr removed(locked->RemoveChild(a));
    EXPECT_FALSE(locked->HasChildNodes());
}

TEST(RemoveChild, OfTwoReasonsTheFirstIsTold) {
    Dom::Document document;
    auto* locked = Add<LockableElement>(document, "root");
    locked->SetReadOnly(true);
    const NodePtr freeNode(document.CreateElement("free"));
    EXPECT_DOM_ERROR(locked->RemoveChild(nullptr), kExpected) << "read-only too";
    EXPECT_DOM_ERROR(locked->RemoveChild(freeNode.get()), kNoChild) << "read-only too";
    EXPECT_DOM_ERROR(locked->RemoveChild(locked), kNoChild) << "read-only too";
}

TEST(DestroyNode, TakesTheNodeOutFirst) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Element* c = AddElement(*root, "c");
    b->DestroyNode();
    EXPECT_EQ(Links(*root, {a, c}), "first=a last=c a(-,c) c(a,-)");
    delete a;
    EXPECT_EQ(Links(*root, {c}), "first=c last=c c(-,-)");
    delete static_cast<Dom::Node*>(c);
    EXPECT_FALSE(root->HasChildNodes());
}

// Destruction does not ask: a read-only parent loses its child all the same.
TEST(DestroyNode, DoesNotCheckForReadOnly) {
    Dom::Document document;
    auto* locked = Add<LockableElement>(document, "root");
    Dom::Element* a = AddElement(*locked, "a");
    locked->SetReadOnly(true);
    a->DestroyNode();
    EXPECT_FALSE(locked->HasChildNodes());
}

}  // namespace
