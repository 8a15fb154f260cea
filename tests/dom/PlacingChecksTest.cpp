// SPDX-License-Identifier: MIT

// What InsertBefore(), ReplaceChild() and their consistent forms check, and in which order: those
// that put a node in a place that a child marks.

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

namespace {

using Dom::DOMNodeType;
using Dom::NodePtr;
using support::Add;
using support::AddElement;
using support::AnyNode;
using support::Lockable;

using LockableElement = Lockable<Dom::Element>;

constexpr char kExpected[] = "8 Node expected";
constexpr char kReadOnly[] = "7 This node is read-only";
// Deliberate: replacing has the text of insertion.
constexpr char kParentReadOnly[] = "7 The parent of the node being inserted is read-only";

struct Operation {
    const char* name;
    Dom::Node* (Dom::Node::*call)(Dom::Node*, Dom::Node*);
    bool replaces;
    const char* otherDocument;
    const char* ancestor;
};

constexpr char kInsertOther[] =
    "4 The node to insert is was created from a different document than the one that created this "
    "node";
constexpr char kInsertAncestor[] = "3 The node to insert is one of this node's ancestors";
constexpr char kReplaceOther[] =
    "4 The node to replace is was created from a different document than the one that created this "
    "node";
constexpr char kReplaceAncestor[] = "3 The node to replace is one of this node's ancestors";

const Operation kOperations[] = {
    {"InsertBefore", &Dom::Node::InsertBefore, false, kInsertOther, kInsertAncestor},
    {"InsertChild", &Dom::Node::InsertChild, false, kInsertOther, kInsertAncestor},
    {"ReplaceChild", &Dom::Node::ReplaceChild, true, kReplaceOther, kReplaceAncestor},
    {"ExchangeChild", &Dom::Node::ExchangeChild, true, kReplaceOther, kReplaceAncestor},
};

void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }

// root(a(below) locked(inLocked(belowLocked)) lockedToo(inLockedToo)), where those named so are
// read-only, and nodes of another document.
class PlacingChecks : public testing::TestWithParam<Operation> {
public:
    PlacingChecks() {
        locked->SetReadOnly(true);
        lockedToo->SetReadOnly(true);
        strangeParent->SetReadOnly(true);
    }
    ~PlacingChecks() override {
        EXPECT_EQ(support::TrueChildren(*root), "a locked lockedToo");
        EXPECT_EQ(support::TrueChildren(*a), "below");
        EXPECT_EQ(support::TrueChildren(*locked), "inLocked");
        EXPECT_EQ(support::TrueChildren(*lockedToo), "inLockedToo");
        EXPECT_EQ(fresh->ParentNode(), nullptr);
    }

    /// What putting `node` before or in the place of `child` of `parent` throws.
    static std::string ErrorOf(Dom::Node* parent, Dom::Node* node, Dom::Node* child) {
        return support::DomErrorOf([=] { (parent->*GetParam().call)(node, child); });
    }

    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* below = AddElement(*a, "below");
    LockableElement* locked = Add<LockableElement>(*root, "locked");
    Dom::Element* inLocked = AddElement(*locked, "inLocked");
    Dom::Element* belowLocked = AddElement(*inLocked, "belowLocked");
    LockableElement* lockedToo = Add<LockableElement>(*root, "lockedToo");
    Dom::Element* inLockedToo = AddElement(*lockedToo, "inLockedToo");
    LockableElement* strangeParent = Add<LockableElement>(other, "strangeParent");
    Dom::Element* inStrangeParent = AddElement(*strangeParent, "inStrangeParent");
    NodePtr stranger{other.CreateElement("stranger")};
    NodePtr fresh{document.CreateElement("fresh")};
};
INSTANTIATE_TEST_SUITE_P(All, PlacingChecks, testing::ValuesIn(kOperations));

TEST_P(PlacingChecks, RefuseNullAndPlacesThatAreNoChildren) {
    EXPECT_EQ(ErrorOf(root, nullptr, a), kExpected);
    EXPECT_EQ(ErrorOf(root, fresh.get(), root), kExpected);
    EXPECT_EQ(ErrorOf(root, fresh.get(), below), kExpected);
    EXPECT_EQ(ErrorOf(root, fresh.get(), stranger.get()), kExpected);
    EXPECT_EQ(ErrorOf(root, fresh.get(), strangeParent), kExpected);
    EXPECT_EQ(ErrorOf(root, fresh.get(), fresh.get()), kExpected);
    if (GetParam().replaces) {
        EXPECT_EQ(ErrorOf(root, fresh.get(), nullptr), kExpected);
        EXPECT_EQ(ErrorOf(root, nullptr, nullptr), kExpected);
    }
}

TEST_P(PlacingChecks, RefuseWhenItselfOrTheOldParentIsReadOnly) {
    EXPECT_EQ(ErrorOf(locked, fresh.get(), inLocked), kReadOnly);
    EXPECT_EQ(ErrorOf(root, inLocked, a), kParentReadOnly);
    EXPECT_EQ(ErrorOf(root, inLocked, locked), kParentReadOnly);
}

TEST_P(PlacingChecks, RefuseNodesOfOtherDocumentsAndDocuments) {
    EXPECT_EQ(ErrorOf(root, stranger.get(), a), GetParam().otherDocument);
    EXPECT_EQ(ErrorOf(&document, stranger.get(), root), GetParam().otherDocument);
    EXPECT_EQ(ErrorOf(root, &document, a), GetParam().otherDocument);
    EXPECT_EQ(ErrorOf(&document, &document, root), GetParam().otherDocument);
    EXPECT_EQ(ErrorOf(&document, &other, root), GetParam().otherDocument);
}

// A node that were its own parent would have no end.
TEST_P(PlacingChecks, RefuseTheNodeItselfAndThoseAboveIt) {
    EXPECT_EQ(ErrorOf(a, a, below), GetParam().ancestor);
    EXPECT_EQ(ErrorOf(a, root, below), GetParam().ancestor);
    EXPECT_EQ(ErrorOf(root, root, a), GetParam().ancestor);
    a->SetAttribute("x", "1");
    Dom::Attr* attribute = a->GetAttributeNode("x");
    EXPECT_EQ(ErrorOf(attribute, a, attribute->FirstChild()), GetParam().ancestor);
    EXPECT_EQ(ErrorOf(attribute, root, attribute->FirstChild()), GetParam().ancestor);
}

TEST_P(PlacingChecks, OfTwoReasonsTheFirstIsTold) {
    EXPECT_EQ(ErrorOf(locked, nullptr, inLocked), kExpected) << "read-only too";
    EXPECT_EQ(ErrorOf(locked, stranger.get(), root), kExpected) << "read-only too";
    EXPECT_EQ(ErrorOf(root, inLocked, belowLocked), kExpected) << "old parent read-only too";
    EXPECT_EQ(ErrorOf(root, stranger.get(), below), kExpected) << "other document too";
    EXPECT_EQ(ErrorOf(root, root, below), kExpected) << "itself too";
    EXPECT_EQ(ErrorOf(lockedToo, inLocked, inLockedToo), kReadOnly) << "old parent read-only too";
    EXPECT_EQ(ErrorOf(locked, stranger.get(), inLocked), kReadOnly) << "other document too";
    EXPECT_EQ(ErrorOf(locked, root, inLocked), kReadOnly) << "ancestor too";
    EXPECT_EQ(ErrorOf(root, inStrangeParent, a), kParentReadOnly) << "other document too";
    EXPECT_EQ(ErrorOf(inLocked, inLocked, belowLocked), kParentReadOnly) << "itself too";
}

// Deliberate: a document's rules for the types of children are those of AppendChild() only.
TEST_P(PlacingChecks, NoTypeIsRefusedByADocument) {
    for (int type = 0; type < 14; ++type) {
        if (type == DOMNodeType::DOCUMENT_NODE) continue;  // never of the same document
        SCOPED_TRACE(type);
        Dom::Document taking;
        AddElement(taking, "root");
        NodePtr comment(taking.CreateComment(""));
        taking.AppendChild(comment.get());
        auto* node = new AnyNode(static_cast<DOMNodeType::DOM_NODE_TYPE>(type), "node", &taking);
        Dom::Node* returned = (taking.*GetParam().call)(node, comment.get());
        EXPECT_EQ(returned, GetParam().replaces ? comment.get() : node);
        EXPECT_EQ(node->ParentNode(), &taking);
        EXPECT_EQ(comment->ParentNode(), GetParam().replaces ? nullptr : &taking);
    }
}

// An attribute that is a child, too, has two ways up. Many of them one above the other have very
// many ways, each of which is to be looked at once.
TEST(PlacingChecks, AttributesWithTwoPlacesAreClimbedOnce) {
    constexpr int kLevels = 64;
    Dom::Document document;
    Dom::Element* bottom = document.CreateElement("bottom");
    Dom::NodePtr top(bottom);
    for (int i = 0; i < kLevels; ++i) {
        Dom::NodePtr level(document.CreateElement("level"));
        Dom::Element* holder = support::AddElement(*level, "holder");
        holder->SetAttribute("a", "1");
        Dom::Attr* attribute = holder->GetAttributeNode("a");
        support::AddElement(*level, "parent")->AppendChild(attribute);
        attribute->AppendChild(top.release());
        top = std::move(level);
    }
    const Dom::NodePtr other(document.CreateElement("other"));
    support::AddElement(*other, "child");
    bottom->AppendChild(other->FirstChild());
    EXPECT_EQ(support::TrueChildren(*bottom), "child");
    EXPECT_DOM_ERROR(bottom->AppendChild(top.get()),
                     "3 The node to append is one of this node's ancestors");
    EXPECT_DOM_ERROR(bottom->AppendChild(top->FirstChild()),
                     "3 The node to append is one of this node's ancestors");
    EXPECT_DOM_ERROR(bottom->AppendChild(top->LastChild()),
                     "3 The node to append is one of this node's ancestors");
}

}  // namespace
