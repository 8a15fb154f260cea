// SPDX-License-Identifier: MIT
// What ReplaceChild() refuses is in PlacingChecksTest.

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
constexpr char kReadOnly[] = "7 This node is read-only";

// --- links ---

// Deliberate: the neighbours' links still lead to the node that was replaced.
TEST(ReplaceChild, TheNeighboursKeepTheirLinks) {
    const struct {
        std::size_t count;  // of children, which are named a, b, c, d
        std::size_t position;
        const char* links;
        const char* forward;
        const char* trueOrder;
    } kCases[] = {
        {1, 0, "first=n last=n a(-,-)@- n(-,-)", "n", "n"},
        {2, 0, "first=n last=b a(-,-)@- b(a,-) n(-,b)", "n b", "n b"},
        {2, 1, "first=a last=n a(-,b) b(-,-)@- n(a,-)", "a b", "a n"},
        {3, 0, "first=n last=c a(-,-)@- b(a,c) c(b,-) n(-,b)", "n b c", "n b c"},
        {3, 1, "first=a last=c a(-,b) b(-,-)@- c(b,-) n(a,c)", "a b", "a n c"},
        {3, 2, "first=a last=n a(-,b) b(a,c) c(-,-)@- n(b,-)", "a b c", "a b n"},
        {4, 1, "first=a last=d a(-,b) b(-,-)@- c(b,d) d(c,-) n(a,c)", "a b", "a n c d"},
        {4, 2, "first=a last=d a(-,b) b(a,c) c(-,-)@- d(c,-) n(b,d)", "a b c", "a b n d"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.count) + " children, at " + std::to_string(c.position));
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        std::vector<Dom::Node*> nodes;
        for (std::size_t i = 0; i < c.count; ++i)
            nodes.push_back(AddElement(*root, std::string(1, static_cast<char>('a' + i))));
        Dom::Node* old = nodes[c.position];
        nodes.push_back(document.CreateElement("n"));
        const NodePtr returned(root->ReplaceChild(nodes.back(), old));
        EXPECT_EQ(returned.get(), old);
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::Forward(*root), c.forward);
        EXPECT_EQ(support::Members(root->ChildNodes()), c.forward);
        EXPECT_EQ(support::TrueChildren(*root), c.trueOrder);
    }
}

TEST(ReplaceChild, OnceTheOldNodeIsDestroyedTheNeighboursLeadToTheNewOne) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Element* c = AddElement(*root, "c");
    Dom::Element* n = document.CreateElement("n");
    root->ReplaceChild(n, b)->DestroyNode();
    EXPECT_EQ(Links(*root, {a, n, c}), "first=a last=c a(-,n) n(a,c) c(n,-)");
}

TEST(ReplaceChild, TakesTheNodeOutOfItsOldParent) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* p = AddElement(*root, "p");
    Dom::Element* q = AddElement(*root, "q");
    const std::vector<Dom::Node*> nodes = {AddElement(*p, "a"), AddElement(*p, "b"),
                                           AddElement(*p, "c")};
    Dom::Element* x = AddElement(*q, "x");
    const NodePtr old(q->ReplaceChild(nodes[0], x));
    EXPECT_EQ(old.get(), x);
    EXPECT_EQ(Links(*p, nodes), "first=b last=c a(-,-)@q b(-,c) c(b,-)");
    EXPECT_EQ(Links(*q, {nodes[0], x}), "first=a last=a a(-,-) x(-,-)@-");
}

// A sibling is out before the links of the old node are read.
TEST(ReplaceChild, TakesASibling) {
    const struct {
        std::size_t taken;
        std::size_t old;
        const char* links;
        const char* trueOrder;
    } kCases[] = {
        {0, 1, "first=a last=c a(-,c) b(-,-)@- c(b,-)", "a c"},
        {0, 2, "first=b last=a a(b,-) b(-,c) c(-,-)@-", "b a"},
        {1, 0, "first=b last=c a(-,-)@- b(-,c) c(a,-)", "b c"},
        {1, 2, "first=a last=b a(-,c) b(a,-) c(-,-)@-", "a b"},
        {2, 0, "first=c last=b a(-,-)@- b(a,-) c(-,b)", "c b"},
        {2, 1, "first=a last=c a(-,b) b(-,-)@- c(a,-)", "a c"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.taken) + " for " + std::to_string(c.old));
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        const std::vector<Dom::Node*> nodes = {AddElement(*root, "a"), AddElement(*root, "b"),
                                               AddElement(*root, "c")};
        const NodePtr old(root->ReplaceChild(nodes[c.taken], nodes[c.old]));
        EXPECT_EQ(old.get(), nodes[c.old]);
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::TrueChildren(*root), c.trueOrder);
    }
}

TEST(ReplaceChild, ByItselfRemovesTheNode) {
    const char* const kLinks[] = {
        "first=b last=c a(-,-)@- b(-,c) c(b,-)",
        "first=a last=c a(-,c) b(-,-)@- c(a,-)",
        "first=a last=b a(-,b) b(a,-) c(-,-)@-",
    };
    for (std::size_t position = 0; position < 3; ++position) {
        SCOPED_TRACE(position);
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        const std::vector<Dom::Node*> nodes = {AddElement(*root, "a"), AddElement(*root, "b"),
                                               AddElement(*root, "c")};
        const NodePtr removed(root->ReplaceChild(nodes[position], nodes[position]));
        EXPECT_EQ(removed.get(), nodes[position]);
        EXPECT_EQ(Links(*root, nodes), kLinks[position]);
    }
}

TEST(ReplaceChild, ByItselfIsCheckedAllTheSame) {
    Dom::Document document;
    auto* locked = Add<LockableElement>(document, "root");
    Dom::Element* a = AddElement(*locked, "a");
    const NodePtr freeNode(document.CreateElement("free"));
    EXPECT_DOM_ERROR(locked->ReplaceChild(freeNode.get(), freeNode.get()), kExpected);
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(locked->ReplaceChild(a, a), kReadOnly);
    EXPECT_EQ(a->ParentNode(), locked);
}

TEST(ReplaceChild, TheOldNodeKeepsWhatIsBelowIt) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    AddElement(*a, "below");
    const NodePtr old(root->ReplaceChild(document.CreateElement("n"), a));
    EXPECT_EQ(support::TrueChildren(*old), "below");
    EXPECT_EQ(old->OwnerDocument(), &document);
}

// --- documents ---

TEST(ReplaceChild, GivesADocumentAnotherRootElement) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* n = document.CreateElement("n");
    const NodePtr old(document.ReplaceChild(n, root));
    EXPECT_EQ(document.DocumentElement(), n);
    const NodePtr second(document.CreateElement("second"));
    EXPECT_DOM_ERROR(document.AppendChild(second.get()),
                     "3 A document can only have one root element");
}

}  // namespace
