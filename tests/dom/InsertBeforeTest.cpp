// SPDX-License-Identifier: MIT
// What InsertBefore() refuses is in PlacingChecksTest.

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

constexpr char kReadOnly[] = "7 This node is read-only";

// --- links ---

// Deliberate: the node before the place keeps its next link, so only the links of the others tell
// of the new node.
TEST(InsertBefore, TheNodeBeforeKeepsItsNextSibling) {
    const struct {
        std::size_t count;     // of children, which are named a, b, c, d
        std::size_t position;  // of the reference
        const char* links;
        const char* forward;
    } kCases[] = {
        {1, 0, "first=n last=a a(n,-) n(-,a)", "n a"},
        {2, 0, "first=n last=b a(n,b) b(a,-) n(-,a)", "n a b"},
        {2, 1, "first=a last=b a(-,b) b(n,-) n(a,b)", "a b"},
        {3, 0, "first=n last=c a(n,b) b(a,c) c(b,-) n(-,a)", "n a b c"},
        {3, 1, "first=a last=c a(-,b) b(n,c) c(b,-) n(a,b)", "a b c"},
        {3, 2, "first=a last=c a(-,b) b(a,c) c(n,-) n(b,c)", "a b c"},
        {4, 2, "first=a last=d a(-,b) b(a,c) c(n,d) d(c,-) n(b,c)", "a b c d"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.count) + " children, before " + std::to_string(c.position));
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        std::vector<Dom::Node*> nodes;
        std::string trueOrder;
        for (std::size_t i = 0; i < c.count; ++i) {
            nodes.push_back(AddElement(*root, std::string(1, static_cast<char>('a' + i))));
            trueOrder += (i == 0 ? "" : " ") + std::string(i == c.position ? "n " : "") +
                         nodes.back()->NodeName().str();
        }
        Dom::Node* reference = nodes[c.position];
        nodes.push_back(document.CreateElement("n"));
        EXPECT_EQ(root->InsertBefore(nodes.back(), reference), nodes.back());
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::Forward(*root), c.forward);
        EXPECT_EQ(support::Members(root->ChildNodes()), c.forward);
        EXPECT_EQ(support::TrueChildren(*root), trueOrder);
    }
}

TEST(InsertBefore, BackwardsAllChildrenAreFound) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    root->InsertBefore(document.CreateElement("n"), b);
    EXPECT_EQ(support::Backward(*root), "b n a");
}

TEST(InsertBefore, TakesTheNodeOutOfItsOldParent) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* p = AddElement(*root, "p");
    Dom::Element* q = AddElement(*root, "q");
    const std::vector<Dom::Node*> nodes = {AddElement(*p, "a"), AddElement(*p, "b"),
                                           AddElement(*p, "c")};
    Dom::Element* x = AddElement(*q, "x");
    EXPECT_EQ(q->InsertBefore(nodes[1], x), nodes[1]);
    EXPECT_EQ(Links(*p, nodes), "first=a last=c a(-,c) b(-,x)@q c(a,-)");
    EXPECT_EQ(Links(*q, {nodes[1], x}), "first=b last=x b(-,x) x(b,-)");
}

// A child may be moved in this way, unlike by AppendChild(). It is out before the links of the
// reference are read.
TEST(InsertBefore, MovesAChild) {
    const struct {
        std::size_t moved;
        std::size_t reference;
        const char* links;
        const char* trueOrder;
    } kCases[] = {
        {0, 1, "first=a last=c a(-,b) b(a,c) c(b,-)", "a b c"},
        {0, 2, "first=b last=c a(b,c) b(-,c) c(a,-)", "b a c"},
        {1, 0, "first=b last=c a(b,c) b(-,a) c(a,-)", "b a c"},
        {1, 2, "first=a last=c a(-,c) b(a,c) c(b,-)", "a b c"},
        {2, 0, "first=c last=b a(c,b) b(a,-) c(-,a)", "c a b"},
        {2, 1, "first=a last=b a(-,b) b(c,-) c(a,b)", "a c b"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.moved) + " before " + std::to_string(c.reference));
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        const std::vector<Dom::Node*> nodes = {AddElement(*root, "a"), AddElement(*root, "b"),
                                               AddElement(*root, "c")};
        EXPECT_EQ(root->InsertBefore(nodes[c.moved], nodes[c.reference]), nodes[c.moved]);
        EXPECT_EQ(Links(*root, nodes), c.links);
        EXPECT_EQ(support::TrueChildren(*root), c.trueOrder);
    }
}

TEST(InsertBefore, BeforeItselfChangesNothing) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const std::vector<Dom::Node*> nodes = {AddElement(*root, "a"), AddElement(*root, "b"),
                                           AddElement(*root, "c")};
    for (Dom::Node* node : nodes) {
        EXPECT_EQ(root->InsertBefore(node, node), node);
        EXPECT_EQ(Links(*root, nodes), "first=a last=c a(-,b) b(a,c) c(b,-)");
    }
}

TEST(InsertBefore, BeforeItselfIsCheckedAllTheSame) {
    Dom::Document document;
    auto* locked = Add<LockableElement>(document, "root");
    Dom::Element* a = AddElement(*locked, "a");
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(locked->InsertBefore(a, a), kReadOnly);
}

TEST(InsertBefore, ThenAppendingLinksBehindTheLastChild) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Node* n = root->InsertBefore(document.CreateElement("n"), b);
    Dom::Element* c = AddElement(*root, "c");
    EXPECT_EQ(Links(*root, {a, n, b, c}), "first=a last=c a(-,b) n(a,b) b(n,c) c(b,-)");
}

TEST(InsertBefore, SeveralNodesBeforeOne) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Node* x = root->InsertBefore(document.CreateElement("x"), b);
    Dom::Node* y = root->InsertBefore(document.CreateElement("y"), b);
    EXPECT_EQ(Links(*root, {a, x, y, b}), "first=a last=b a(-,b) x(a,b) y(x,b) b(y,-)");
    EXPECT_EQ(support::Forward(*root), "a b");
    EXPECT_EQ(support::TrueChildren(*root), "a x y b");
    Dom::Node* z = root->InsertBefore(document.CreateElement("z"), x);
    EXPECT_EQ(Links(*root, {a, z, x, y, b}), "first=a last=b a(-,b) z(a,x) x(z,b) y(x,b) b(y,-)");
}

// --- null as the reference ---

TEST(InsertBefore, NullAsTheReferenceAppends) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = document.CreateElement("a");
    Dom::Element* b = document.CreateElement("b");
    EXPECT_EQ(root->InsertBefore(a, nullptr), a);
    EXPECT_EQ(root->InsertBefore(b, nullptr), b);
    EXPECT_EQ(Links(*root, {a, b}), "first=a last=b a(-,b) b(a,-)");
    EXPECT_EQ(support::Forward(*root), "a b");
}

TEST(InsertBefore, NullAsTheReferenceFailsAsAppendingDoes) {
    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    const NodePtr stranger(other.CreateElement("stranger"));
    const NodePtr second(document.CreateElement("second"));
    auto* locked = Add<LockableElement>(*root, "locked");
    Dom::Element* inLocked = AddElement(*locked, "inLocked");
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(root->InsertBefore(nullptr, nullptr), "8 Node expected");
    EXPECT_DOM_ERROR(locked->InsertBefore(second.get(), nullptr), "7 This node is read-only");
    EXPECT_DOM_ERROR(root->InsertBefore(inLocked, nullptr),
                     "7 The parent of the node being appended is read-only");
    EXPECT_DOM_ERROR(root->InsertBefore(stranger.get(), nullptr),
                     "4 The node to append is was created from a different document than the one "
                     "that created this node");
    EXPECT_DOM_ERROR(a->InsertBefore(root, nullptr),
                     "3 The node to append is one of this node's ancestors");
    EXPECT_DOM_ERROR(root->InsertBefore(a, nullptr), "3 The node is already a child of this node");
    EXPECT_DOM_ERROR(document.InsertBefore(second.get(), nullptr),
                     "3 A document can only have one root element");
}

// --- documents ---

// Deliberate: what AppendChild() refuses may be inserted.
TEST(InsertBefore, ADocumentTakesASecondElementAndAnyText) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    document.InsertBefore(document.CreateTextNode("  x"), root);
    EXPECT_EQ(support::Forward(document), "'  x' root");
    Dom::Element* second = document.CreateElement("second");
    document.InsertBefore(second, document.FirstChild());
    EXPECT_EQ(document.DocumentElement(), second);
}

}  // namespace
