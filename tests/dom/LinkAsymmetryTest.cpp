// SPDX-License-Identifier: MIT

// InsertBefore() and ReplaceChild() leave links as they were. Whatever happens to the nodes
// afterwards, no link may lead to one that was destroyed, and every node is destroyed once: these
// tests are worth most under AddressSanitizer.

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/LinkTree.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using Dom::NodePtr;
using support::AddElement;
using support::AddText;
using support::Links;
using support::LinkTree;

// Children a, b and n, which was inserted before b: a still leads to b.
struct Inserted {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Node* n = root->InsertBefore(document.CreateElement("n"), b);
};

// Children a, n and c, where n replaced b, which is free: a and c still lead to b.
struct Replaced {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Element* c = AddElement(*root, "c");
    Dom::Element* n = document.CreateElement("n");
    NodePtr old{root->ReplaceChild(n, b)};
};

// --- what follows an insertion ---

TEST(LinkAsymmetry, ANodeThatNoNextLinkTellsOfIsDestroyedWithItsParent) {
    Inserted tree;
    EXPECT_EQ(support::Forward(*tree.root), "a b");
    tree.root->DestroyNode();
    EXPECT_FALSE(tree.document.HasChildNodes());
}

TEST(LinkAsymmetry, ANextLinkEndsWhenItsTargetIsDestroyed) {
    Inserted tree;
    tree.b->DestroyNode();
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n}), "first=a last=n a(-,n) n(a,-)");
}

TEST(LinkAsymmetry, ANextLinkStaysWhenItsTargetIsRemoved) {
    Inserted tree;
    const NodePtr removed(tree.root->RemoveChild(tree.b));
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n, tree.b}), "first=a last=n a(-,b) n(a,-) b(-,-)@-");
    EXPECT_EQ(support::Forward(*tree.root), "a b");
    EXPECT_EQ(support::TrueChildren(*tree.root), "a n");
}

TEST(LinkAsymmetry, TheParentTakesOverTheNextLinkOfItsFirstChild) {
    Inserted tree;
    const NodePtr removed(tree.root->RemoveChild(tree.a));
    EXPECT_EQ(Links(*tree.root, {tree.n, tree.b}), "first=b last=b n(-,b) b(n,-)");
    EXPECT_EQ(support::TrueChildren(*tree.root), "n b");
}

TEST(LinkAsymmetry, ANextLinkEndsWhenTheNodeBetweenIsGone) {
    Inserted tree;
    const NodePtr removed(tree.root->RemoveChild(tree.n));
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.b}), "first=a last=b a(-,b) b(a,-)");
    AddElement(*tree.root, "z");
    Dom::Node* m = tree.root->InsertChild(tree.document.CreateElement("m"), tree.b);
    EXPECT_EQ(tree.a->NextSibling(), m);
}

TEST(LinkAsymmetry, ANextLinkStaysWhenItsTargetIsAppendedAgain) {
    Inserted tree;
    Dom::Node* z = AddElement(*tree.root, "z");
    tree.root->AppendChild(tree.root->RemoveChild(tree.b));
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n, z, tree.b}),
              "first=a last=b a(-,b) n(a,z) z(n,b) b(z,-)");
}

TEST(LinkAsymmetry, ANextLinkEndsWhenItsTargetGetsAnotherParent) {
    Inserted tree;
    Dom::Element* inside = AddElement(*tree.n, "inside");
    inside->AppendChild(tree.b);
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n}), "first=a last=n a(-,n) n(a,-)");
}

TEST(LinkAsymmetry, ANextLinkEndsWhenItsTargetGetsBeforeItsSource) {
    Inserted tree;
    tree.root->InsertBefore(tree.b, tree.a);
    EXPECT_EQ(Links(*tree.root, {tree.b, tree.a, tree.n}), "first=b last=n b(-,a) a(b,n) n(a,-)");
}

TEST(LinkAsymmetry, TheNodeBeforeTakesOverTheNextLinkOfARemovedOne) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* z = AddElement(*root, "z");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Node* n = root->InsertBefore(document.CreateElement("n"), b);
    const NodePtr removed(root->RemoveChild(a));
    EXPECT_EQ(Links(*root, {z, n, b}), "first=z last=b z(-,b) n(z,b) b(n,-)");
}

// The tail of a text is inserted, too.
TEST(LinkAsymmetry, TheTailOfASplitTextIsNotSeenFromBefore) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "headtail");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Text* tail = text->SplitText(4);
    EXPECT_EQ(Links(*root, {text, tail, b}),
              "first='head' last=b 'head'(-,b) 'tail'('head',b) b('tail',-)");
    EXPECT_EQ(support::Forward(*root), "'head' b");
    b->DestroyNode();
    EXPECT_EQ(support::Forward(*root), "'head' 'tail'");
}

// --- what follows a replacement ---

TEST(LinkAsymmetry, TheOldNodeMayBeDestroyedBeforeOrAfterTheTree) {
    {
        Replaced tree;
        tree.old.reset();
        EXPECT_EQ(support::Forward(*tree.root), "a n c");
        EXPECT_EQ(support::Backward(*tree.root), "c n a");
    }
    Replaced tree;
    tree.root->DestroyNode();
    EXPECT_EQ(tree.old->NextSibling(), nullptr);
    EXPECT_EQ(tree.old->PreviousSibling(), nullptr);
    EXPECT_EQ(tree.old->ParentNode(), nullptr);
}

TEST(LinkAsymmetry, RemovingTheNeighboursLeavesTheOldNodeAlone) {
    Replaced tree;
    const NodePtr c(tree.root->RemoveChild(tree.c));
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n, tree.b}), "first=a last=n a(-,b) n(a,-) b(-,-)@-");
    const NodePtr a(tree.root->RemoveChild(tree.a));
    EXPECT_EQ(Links(*tree.root, {tree.n, tree.b}), "first=b last=n n(-,-) b(-,-)@-");
    EXPECT_EQ(support::TrueChildren(*tree.root), "n");
    EXPECT_EQ(support::Forward(*tree.root), "b");
    tree.old.reset();
    EXPECT_EQ(support::Forward(*tree.root), "n");
}

TEST(LinkAsymmetry, TheOldNodeMayComeBackElsewhere) {
    Replaced tree;
    Dom::Element* inside = AddElement(*tree.n, "inside");
    inside->AppendChild(tree.old.release());
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n, tree.c}), "first=a last=c a(-,n) n(a,c) c(n,-)");
    EXPECT_EQ(tree.b->ParentNode(), inside);
}

TEST(LinkAsymmetry, TheOldNodeMayComeBackAtTheEnd) {
    Replaced tree;
    tree.root->AppendChild(tree.old.release());
    EXPECT_EQ(Links(*tree.root, {tree.a, tree.n, tree.c, tree.b}),
              "first=a last=b a(-,b) n(a,c) c(n,b) b(c,-)");
}

TEST(LinkAsymmetry, TheOldNodeMayComeBackAtTheStart) {
    Replaced tree;
    tree.root->InsertBefore(tree.old.release(), tree.a);
    EXPECT_EQ(Links(*tree.root, {tree.b, tree.a, tree.n, tree.c}),
              "first=b last=c b(-,a) a(b,n) n(a,c) c(b,-)");
}

TEST(LinkAsymmetry, AChainOfReplacements) {
    Replaced tree;
    Dom::Element* m = tree.document.CreateElement("m");
    const NodePtr n(tree.root->ReplaceChild(m, tree.n));
    EXPECT_EQ(Links(*tree.root, {tree.a, m, tree.c, tree.n, tree.b}),
              "first=a last=c a(-,b) m(a,c) c(b,-) n(-,-)@- b(-,-)@-");
    tree.old.reset();
    EXPECT_EQ(Links(*tree.root, {tree.a, m, tree.c}), "first=a last=c a(-,m) m(a,c) c(m,-)");
}

// Where the parent gets below the node that was replaced, its links would lead back to there.
TEST(LinkAsymmetry, ALinkEndsWhenItsSourceGetsBelowItsTarget) {
    for (const bool inserted : {false, true}) {
        SCOPED_TRACE(inserted);
        Dom::Document document;
        const NodePtr root(document.CreateElement("root"));
        Dom::Element* parent = AddElement(*root, "parent");
        Dom::Element* a = AddElement(*parent, "a");
        Dom::Element* b = AddElement(*parent, "b");
        Dom::Element* c = AddElement(*parent, "c");
        const NodePtr old(parent->ReplaceChild(document.CreateElement("n"), b));
        ASSERT_EQ(a->NextSibling(), b);
        ASSERT_EQ(c->PreviousSibling(), b);
        Dom::Node* inside = AddElement(*AddElement(*b, "deeper"), "inside");
        if (inserted) {
            inside->ParentNode()->InsertBefore(parent, inside);
        } else {
            inside->AppendChild(parent);
        }
        EXPECT_EQ(support::Forward(*parent), "a n c");
        EXPECT_EQ(support::Backward(*parent), "c n a");
        EXPECT_EQ(b->GetElementsByTagName("c").Length(), 1u);
    }
}

TEST(LinkAsymmetry, LinksEndThatWouldLeadThroughTwoTreesInACircle) {
    Replaced one;
    Dom::Element* parent = one.document.CreateElement("parent");
    const NodePtr owner(parent);
    Dom::Element* x = AddElement(*parent, "x");
    Dom::Element* y = AddElement(*parent, "y");
    const NodePtr old(parent->ReplaceChild(one.document.CreateElement("z"), y));
    y->AppendChild(one.root);
    EXPECT_EQ(one.a->NextSibling(), one.b);
    one.b->AppendChild(parent);
    EXPECT_EQ(x->NextSibling(), y);
    EXPECT_EQ(support::Forward(*one.root), "a n c");
    EXPECT_EQ(y->GetElementsByTagName("c").Length(), 1u);
    EXPECT_EQ(one.b->GetElementsByTagName("c").Length(), 1u);
    static_cast<void>(one.b->RemoveChild(parent));
}

// A node that only a stale link tells of is no child.
TEST(LinkAsymmetry, AVisibleNodeWithoutAParentIsNoReference) {
    Replaced tree;
    ASSERT_EQ(tree.a->NextSibling(), tree.b);
    const NodePtr x(tree.document.CreateElement("x"));
    EXPECT_DOM_ERROR(tree.root->InsertBefore(x.get(), tree.b), "8 Node expected");
    EXPECT_DOM_ERROR(tree.root->ReplaceChild(x.get(), tree.b), "8 Node expected");
    EXPECT_DOM_ERROR(tree.root->RemoveChild(tree.b), "8 The old child is not a child of this node");
}

// --- every shape, with everything done to every node ---

constexpr int kParent = 0;
constexpr int kOther = 1;
constexpr int kFirstChild = 2;

enum class Change { Insert, Replace };
enum class Destruction { ParentFirst, ParentLast };

constexpr int kActionCount = 6;

// One thing that can be done to a node; false when it cannot.
bool Act(LinkTree& tree, int action, int node) {
    if (!tree.Exists(node)) return false;
    const bool hasParent = tree.Model().At(node).parent != support::LinkModel::kNone;
    const std::vector<int> children = tree.Model().At(kParent).children;
    switch (action) {
    case 0:
        if (!hasParent) return false;
        tree.Remove(node);
        return true;
    case 1: tree.Destroy(node); return true;
    case 2:
        if (hasParent) tree.Remove(node);
        tree.Append(kParent, node);
        return true;
    case 3:
        if (children.empty()) return false;
        tree.InsertBefore(kParent, node, children.front());
        return true;
    case 4:
        if (children.empty()) return false;
        tree.Replace(kParent, node, children.back());
        return true;
    case 5:
        if (tree.Model().At(node).parent == kOther) return false;
        tree.Append(kOther, node);
        return true;
    default: return false;
    }
}

struct Shape {
    int count;
    Change change;
    int position;
};

void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.count
         << (shape.change == Change::Insert ? " children, before " : " children, for ")
         << shape.position;
}

// Makes the shape; the numbers of the children follow each other, that of the new node is last. The
// nodes lie on the heap, not in the memory of the document, so that each use after its end is seen.
void Build(LinkTree& tree, Dom::Document& document, const Shape& shape) {
    const int fresh = kFirstChild + shape.count;
    for (int i = 0; i <= fresh; ++i)
        tree.Adopt(i, new Dom::Element("", "n", &document));
    for (int i = 0; i < shape.count; ++i)
        tree.Append(kParent, kFirstChild + i);
    if (shape.change == Change::Insert) {
        tree.InsertBefore(kParent, fresh, kFirstChild + shape.position);
    } else {
        tree.Replace(kParent, fresh, kFirstChild + shape.position);
    }
}

void DestroyAll(LinkTree& tree, Destruction destruction) {
    if (destruction == Destruction::ParentFirst) tree.Destroy(kParent);
    for (int node = tree.Model().Count() - 1; node >= 0; --node) {
        if (!tree.Exists(node)) continue;
        tree.Destroy(node);
        ASSERT_EQ(tree.Difference(), "") << "after destroying " << node;
    }
}

std::vector<Shape> AllShapes() {
    std::vector<Shape> shapes;
    for (int count = 2; count <= 4; ++count) {
        for (const Change change : {Change::Insert, Change::Replace}) {
            for (int position = 0; position < count; ++position)
                shapes.push_back({count, change, position});
        }
    }
    return shapes;
}

class LinkAsymmetryOfShape : public testing::TestWithParam<Shape> {};
INSTANTIATE_TEST_SUITE_P(All, LinkAsymmetryOfShape, testing::ValuesIn(AllShapes()));

TEST_P(LinkAsymmetryOfShape, LinksAreAsGivenAfterAnyTwoActions) {
    const int nodes = kFirstChild + GetParam().count + 1;
    int runs = 0;
    for (int first = 0; first < nodes * kActionCount; ++first) {
        for (int second = 0; second < nodes * kActionCount; ++second) {
            if (first / kActionCount < kFirstChild || second / kActionCount < kFirstChild) continue;
            SCOPED_TRACE("action " + std::to_string(first % kActionCount) + " on " +
                         std::to_string(first / kActionCount) + ", then " +
                         std::to_string(second % kActionCount) + " on " +
                         std::to_string(second / kActionCount));
            Dom::Document document;
            LinkTree tree(nodes);
            Build(tree, document, GetParam());
            ASSERT_EQ(tree.Difference(), "");
            Act(tree, first % kActionCount, first / kActionCount);
            ASSERT_EQ(tree.Difference(), "");
            Act(tree, second % kActionCount, second / kActionCount);
            ASSERT_EQ(tree.Difference(), "");
            ASSERT_NO_FATAL_FAILURE(DestroyAll(
                tree, ++runs % 2 == 0 ? Destruction::ParentFirst : Destruction::ParentLast));
        }
    }
    EXPECT_EQ(runs, (nodes - kFirstChild) * kActionCount * (nodes - kFirstChild) * kActionCount);
}

TEST_P(LinkAsymmetryOfShape, NothingIsLeftOrDestroyedTwiceAfterAnyAction) {
    const int nodes = kFirstChild + GetParam().count + 1;
    for (int node = kFirstChild; node < nodes; ++node) {
        for (int action = 0; action < kActionCount; ++action) {
            for (const auto destruction : {Destruction::ParentFirst, Destruction::ParentLast}) {
                SCOPED_TRACE("action " + std::to_string(action) + " on " + std::to_string(node));
                Dom::Document document;
                LinkTree tree(nodes);
                Build(tree, document, GetParam());
                Act(tree, action, node);
                ASSERT_EQ(tree.Difference(), "");
                ASSERT_NO_FATAL_FAILURE(DestroyAll(tree, destruction));
            }
        }
    }
}

}  // namespace
