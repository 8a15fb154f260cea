// SPDX-License-Identifier: MIT

// Random changes of trees of a few nodes, beside a model of the rules. Every call is made with any
// nodes at all; the model says beforehand whether it is refused and with which error. All links are
// compared after each step. In the end everything is destroyed in random order.

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/LinkTree.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

using support::LinkModel;
using support::LinkTree;
using LockableElement = support::Lockable<Dom::Element>;

constexpr int kNone = LinkModel::kNone;
constexpr int kNodes = 9;
constexpr int kStrangers = 2;  // the last ones are of another document
constexpr int kSteps = 1000;

constexpr char kNodeExpected[] = "8 Node expected";
constexpr char kReadOnly[] = "7 This node is read-only";

std::string Strange(const char* verb) {
    return std::string("4 The node to ") + verb +
           " is was created from a different document than the one that created this node";
}

std::string Ancestor(const char* verb) {
    return std::string("3 The node to ") + verb + " is one of this node's ancestors";
}

enum class Means { AsGiven, Consistent, Both };

struct Setting {
    unsigned seed;
    Means means;
};

void PrintTo(const Setting& setting, std::ostream* out) {
    const char* const kMeans[] = {"InsertBefore and ReplaceChild", "InsertChild and ExchangeChild",
                                  "all four"};
    *out << "seed " << setting.seed << ", " << kMeans[static_cast<int>(setting.means)];
}

class RandomTree {
public:
    explicit RandomTree(const Setting& setting)
        : means_(setting.means), random_(setting.seed), tree_(kNodes) {
        for (int node = 0; node < kNodes; ++node)
            Make(node);
    }

    std::string Difference() const { return tree_.Difference(); }
    bool IsConsistent() const;

    /// Does something; returns what it was.
    std::string Step();

    /// Destroys a node, or a document; false when nothing is left.
    bool DestroySomething();

private:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    /// A node, or now and then none.
    int PickNode() { return Pick(12) == 0 ? kNone : Pick(kNodes); }
    /// A child of `parent` rather than any other node.
    int PickChildOf(int parent);

    bool IsStrange(int node) const { return node >= kNodes - kStrangers; }
    bool IsLocked(int node) const {
        return node != kNone && locked_[static_cast<std::size_t>(node)];
    }
    int ParentOf(int node) const { return tree_.Model().At(node).parent; }

    void Make(int node);
    void ToggleReadOnly(int node);
    std::string AppendError(int parent, int node) const;
    std::string PlaceError(int parent, int node, int place, const char* verb) const;
    std::string RemoveError(int parent, int node) const;

    std::string Append(int parent, int node);
    std::string Insert(int parent, int node, int reference);
    std::string Replace(int parent, int node, int old);
    std::string Remove(int parent, int node);
    bool TakesConsistentWay() {
        return means_ == Means::Both ? Pick(4) == 0 : means_ == Means::Consistent;
    }

    Means means_;
    std::mt19937 random_;
    std::array<std::unique_ptr<Dom::Document>, 2> documents_{std::make_unique<Dom::Document>(),
                                                             std::make_unique<Dom::Document>()};
    std::array<bool, kNodes> locked_{};
    LinkTree tree_;
};

void RandomTree::Make(int node) {
    Dom::Document& document = *documents_[IsStrange(node) ? 1 : 0];
    const std::string name = "n" + std::to_string(node);
    locked_[static_cast<std::size_t>(node)] = false;
    if (node % 2 == 0) {
        tree_.Adopt(node, new LockableElement("", name, &document));
    } else {
        tree_.Adopt(node, document.CreateElement(name));
    }
}

void RandomTree::ToggleReadOnly(int node) {
    if (node % 2 != 0) return;
    bool& locked = locked_[static_cast<std::size_t>(node)];
    locked = !locked;
    static_cast<LockableElement*>(tree_.At(node))->SetReadOnly(locked);
}

int RandomTree::PickChildOf(int parent) {
    const std::vector<int>& children = tree_.Model().At(parent).children;
    if (children.empty() || Pick(8) == 0) return PickNode();
    return children[static_cast<std::size_t>(Pick(static_cast<int>(children.size())))];
}

std::string RandomTree::AppendError(int parent, int node) const {
    if (node == kNone) return kNodeExpected;
    if (IsLocked(parent)) return kReadOnly;
    if (IsLocked(ParentOf(node))) return "7 The parent of the node being appended is read-only";
    if (IsStrange(node) != IsStrange(parent)) return Strange("append");
    if (tree_.Model().IsSelfOrAbove(node, parent)) return Ancestor("append");
    if (ParentOf(node) == parent) return "3 The node is already a child of this node";
    return "";
}

std::string RandomTree::PlaceError(int parent, int node, int place, const char* verb) const {
    if (node == kNone || place == kNone || ParentOf(place) != parent) return kNodeExpected;
    if (IsLocked(parent)) return kReadOnly;
    if (IsLocked(ParentOf(node))) return "7 The parent of the node being inserted is read-only";
    if (IsStrange(node) != IsStrange(parent)) return Strange(verb);
    if (tree_.Model().IsSelfOrAbove(node, parent)) return Ancestor(verb);
    return "";
}

std::string RandomTree::RemoveError(int parent, int node) const {
    if (node == kNone) return kNodeExpected;
    if (ParentOf(node) != parent) return "8 The old child is not a child of this node";
    return IsLocked(parent) ? kReadOnly : "";
}

std::string RandomTree::Append(int parent, int node) {
    if (const std::string error = AppendError(parent, node); !error.empty()) {
        EXPECT_DOM_ERROR(tree_.At(parent)->AppendChild(tree_.At(node)), error);
    } else {
        tree_.Append(parent, node);
    }
    return "append " + std::to_string(node) + " to " + std::to_string(parent);
}

std::string RandomTree::Insert(int parent, int node, int reference) {
    const bool consistent = TakesConsistentWay();
    const std::string error = reference == kNone ? AppendError(parent, node)
                                                 : PlaceError(parent, node, reference, "insert");
    Dom::Node* p = tree_.At(parent);
    if (error.empty()) {
        consistent ? tree_.InsertChild(parent, node, reference)
                   : tree_.InsertBefore(parent, node, reference);
    } else if (consistent) {
        EXPECT_DOM_ERROR(p->InsertChild(tree_.At(node), tree_.At(reference)), error);
    } else {
        EXPECT_DOM_ERROR(p->InsertBefore(tree_.At(node), tree_.At(reference)), error);
    }
    return std::string(consistent ? "insert consistently " : "insert ") + std::to_string(node) +
           " into " + std::to_string(parent) + " before " + std::to_string(reference);
}

std::string RandomTree::Replace(int parent, int node, int old) {
    const bool consistent = TakesConsistentWay();
    const std::string error = PlaceError(parent, node, old, "replace");
    Dom::Node* p = tree_.At(parent);
    if (error.empty()) {
        consistent ? tree_.ExchangeChild(parent, node, old) : tree_.Replace(parent, node, old);
    } else if (consistent) {
        EXPECT_DOM_ERROR(p->ExchangeChild(tree_.At(node), tree_.At(old)), error);
    } else {
        EXPECT_DOM_ERROR(p->ReplaceChild(tree_.At(node), tree_.At(old)), error);
    }
    return std::string(consistent ? "replace consistently " : "replace ") + std::to_string(old) +
           " in " + std::to_string(parent) + " by " + std::to_string(node);
}

std::string RandomTree::Remove(int parent, int node) {
    if (const std::string error = RemoveError(parent, node); !error.empty()) {
        EXPECT_DOM_ERROR(tree_.At(parent)->RemoveChild(tree_.At(node)), error);
    } else {
        tree_.Remove(node);
    }
    return "remove " + std::to_string(node) + " from " + std::to_string(parent);
}

std::string RandomTree::Step() {
    const int parent = Pick(3) == 0 ? Pick(kNodes) : Pick(3);
    const int node = PickNode();
    switch (Pick(16)) {
    case 0:
    case 1:
    case 2:
    case 3: return Append(parent, node);
    case 4:
    case 5:
    case 6:
    case 7:
    case 8: return Insert(parent, node, PickChildOf(parent));
    case 9:
    case 10:
    case 11: return Replace(parent, node, PickChildOf(parent));
    case 12:
    case 13: return Remove(parent, PickChildOf(parent));
    case 14:
        if (node == kNone) return "nothing";
        tree_.Destroy(node);
        for (int i = 0; i < kNodes; ++i)
            if (!tree_.Exists(i)) Make(i);
        return "destroy " + std::to_string(node);
    default:
        if (node != kNone && Pick(3) == 0) ToggleReadOnly(node);
        return "toggle read-only";
    }
}

bool RandomTree::IsConsistent() const {
    for (int i = 0; i < kNodes; ++i) {
        const LinkModel::Node& node = tree_.Model().At(i);
        if (node.first != kNone || node.next != kNone || node.previous != kNone) return false;
    }
    return true;
}

bool RandomTree::DestroySomething() {
    std::vector<int> left;
    for (int i = 0; i < kNodes; ++i)
        if (tree_.Exists(i)) left.push_back(i);
    if (left.empty()) return false;
    const int picked = Pick(static_cast<int>(left.size()) + 1);
    if (picked == static_cast<int>(left.size())) {
        documents_[static_cast<std::size_t>(Pick(2))].reset();
    } else {
        tree_.Destroy(left[static_cast<std::size_t>(picked)]);
    }
    return true;
}

class NodeModel : public testing::TestWithParam<Setting> {};

std::vector<Setting> AllSettings() {
    std::vector<Setting> settings;
    for (const Means means : {Means::AsGiven, Means::Consistent, Means::Both}) {
        for (unsigned seed = 1; seed <= 20; ++seed)
            settings.push_back({seed, means});
    }
    return settings;
}
INSTANTIATE_TEST_SUITE_P(All, NodeModel, testing::ValuesIn(AllSettings()));

TEST_P(NodeModel, AgreesWithTheTreeAfterEveryStep) {
    RandomTree tree(GetParam());
    ASSERT_EQ(tree.Difference(), "");
    std::string last;
    for (int step = 0; step < kSteps; ++step) {
        const std::string before = last;
        last = tree.Step();
        ASSERT_EQ(tree.Difference(), "") << "step " << step << ": " << last << ", after " << before;
        ASSERT_FALSE(HasFailure()) << "step " << step << ": " << last;
        if (GetParam().means == Means::Consistent) {
            ASSERT_TRUE(tree.IsConsistent());
        }
    }
    while (tree.DestroySomething())
        ASSERT_EQ(tree.Difference(), "");
}

}  // namespace
