// SPDX-License-Identifier: MIT

// InsertChild() and ExchangeChild(), after which all links tell of the new node. NodeModelTest
// mixes them with the others; what they refuse is in PlacingChecksTest.

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

using Dom::NodePtr;
using support::AddElement;
using support::Links;

// Appends `count` elements named a, b, c, d.
std::vector<Dom::Node*> AddChildren(Dom::Element& root, std::size_t count) {
    std::vector<Dom::Node*> nodes;
    for (std::size_t i = 0; i < count; ++i)
        nodes.push_back(AddElement(root, std::string(1, static_cast<char>('a' + i))));
    return nodes;
}

TEST(InsertChild, LinksTheNodeWithBothNeighbours) {
    const struct {
        std::size_t count;
        std::size_t position;
        const char* links;
    } kCases[] = {
        {1, 0, "first=n last=a a(n,-) n(-,a)"},
        {2, 0, "first=n last=b a(n,b) b(a,-) n(-,a)"},
        {2, 1, "first=a last=b a(-,n) b(n,-) n(a,b)"},
        {3, 1, "first=a last=c a(-,n) b(n,c) c(b,-) n(a,b)"},
        {3, 2, "first=a last=c a(-,b) b(a,n) c(n,-) n(b,c)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.links);
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        std::vector<Dom::Node*> nodes = AddChildren(*root, c.count);
        Dom::Node* reference = nodes[c.position];
        nodes.push_back(document.CreateElement("n"));
        EXPECT_EQ(root->InsertChild(nodes.back(), reference), nodes.back());
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::TrueChildren(*root), support::Forward(*root));
    }
}

TEST(InsertChild, WithoutAReferenceItAppends) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Node* n = root->InsertChild(document.CreateElement("n"), nullptr);
    EXPECT_EQ(Links(*root, {a, n}), "first=a last=n a(-,n) n(a,-)");
    EXPECT_DOM_ERROR(root->InsertChild(a, nullptr), "3 The node is already a child of this node");
}

TEST(InsertChild, MovesAChildAndLeavesItBeforeItself) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const std::vector<Dom::Node*> nodes = AddChildren(*root, 3);
    EXPECT_EQ(root->InsertChild(nodes[1], nodes[1]), nodes[1]);
    EXPECT_EQ(Links(*root, nodes), "first=a last=c a(-,b) b(a,c) c(b,-)");
    EXPECT_EQ(root->InsertChild(nodes[2], nodes[1]), nodes[2]);
    EXPECT_EQ(Links(*root, nodes), "first=a last=b a(-,c) b(c,-) c(a,b)");
    EXPECT_EQ(root->InsertChild(nodes[1], nodes[0]), nodes[1]);
    EXPECT_EQ(Links(*root, nodes), "first=b last=c a(b,c) b(-,a) c(a,-)");
}

TEST(InsertChild, EndsALinkThatWentPastTheNode) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const std::vector<Dom::Node*> nodes = AddChildren(*root, 2);
    Dom::Node* unseen = root->InsertBefore(document.CreateElement("unseen"), nodes[1]);
    ASSERT_EQ(nodes[0]->NextSibling(), nodes[1]);
    Dom::Node* n = root->InsertChild(document.CreateElement("n"), unseen);
    EXPECT_EQ(Links(*root, {nodes[0], n, unseen, nodes[1]}),
              "first=a last=b a(-,n) n(a,unseen) unseen(n,b) b(unseen,-)");
}

TEST(ExchangeChild, LinksTheNodeWithBothNeighbours) {
    const struct {
        std::size_t count;
        std::size_t position;
        const char* links;
    } kCases[] = {
        {1, 0, "first=n last=n a(-,-)@- n(-,-)"},
        {2, 0, "first=n last=b a(-,-)@- b(n,-) n(-,b)"},
        {2, 1, "first=a last=n a(-,n) b(-,-)@- n(a,-)"},
        {3, 1, "first=a last=c a(-,n) b(-,-)@- c(n,-) n(a,c)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.links);
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        std::vector<Dom::Node*> nodes = AddChildren(*root, c.count);
        nodes.push_back(document.CreateElement("n"));
        const NodePtr old(root->ExchangeChild(nodes.back(), nodes[c.position]));
        EXPECT_EQ(old.get(), nodes[c.position]);
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::TrueChildren(*root), support::Forward(*root));
    }
}

TEST(ExchangeChild, ByASiblingAndByItself) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const std::vector<Dom::Node*> nodes = AddChildren(*root, 3);
    const NodePtr b(root->ExchangeChild(nodes[2], nodes[1]));
    EXPECT_EQ(Links(*root, nodes), "first=a last=c a(-,c) b(-,-)@- c(a,-)");
    const NodePtr a(root->ExchangeChild(nodes[0], nodes[0]));
    EXPECT_EQ(Links(*root, nodes), "first=c last=c a(-,-)@- b(-,-)@- c(-,-)");
}

}  // namespace
