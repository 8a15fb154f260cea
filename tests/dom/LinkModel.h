// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace support {

/// The links of trees in the plainest form: nodes are numbers, children are vectors of them.
///
/// Children have a true order, which is what `children` holds. What FirstChild(), NextSibling() and
/// PreviousSibling() answer differs from it where InsertBefore() and ReplaceChild() left a link as
/// it was: such a link is held here, beside the order, as what it leads to. A next link that
/// differs leads to a later child of the same parent or to a node without a parent.
class LinkModel {
public:
    static constexpr int kNone = -1;

    struct Node {
        bool exists = false;
        int parent = kNone;
        std::vector<int> children;
        int first = kNone;     // what FirstChild() is in place of the first of the children
        int next = kNone;      // what NextSibling() is in place of the true one
        int previous = kNone;  // what PreviousSibling() is in place of the true one
    };

    explicit LinkModel(int count) : nodes_(static_cast<std::size_t>(count)) {}

    int Count() const { return static_cast<int>(nodes_.size()); }
    const Node& At(int node) const { return nodes_[static_cast<std::size_t>(node)]; }

    /// \name What the operations of a node answer
    /// @{
    int First(int parent) const;
    int Last(int parent) const;
    int Next(int node) const;
    int Previous(int node) const;
    /// @}

    /// Tells whether `above` is `node` or one of those above it.
    bool IsSelfOrAbove(int above, int node) const;

    /// \name Changes
    /// All preconditions hold.
    /// @{
    void Create(int node) { Edit(node) = Node{true, kNone, {}, kNone, kNone, kNone}; }
    void Append(int parent, int node);
    void InsertBefore(int parent, int node, int reference);
    void Replace(int parent, int node, int old);
    void Remove(int node);
    /// Inserts so that all links tell of it.
    void InsertChild(int parent, int node, int reference);
    /// Does that before the old node, then removes the old one.
    void ExchangeChild(int parent, int node, int old);
    void Destroy(int node);
    /// @}

    /// Returns what is wrong with the links, or "": forward walks end, within the tree or at one
    /// node that has no parent, and links lead to nodes that exist.
    std::string BrokenRule() const;

private:
    Node& Edit(int node) { return nodes_[static_cast<std::size_t>(node)]; }

    int PositionOf(int node) const;
    int TrueFirst(int parent) const;
    int TrueNext(int node) const;
    int TruePrevious(int node) const;

    void Insert(int parent, int node, int reference);
    void EndLinksTo(int linked);
    void EndCircles(int linked);
    int TopOf(int node) const;
    bool LeadsTo(int from, int to) const;
    void EndLinksThatDoNotDiffer();

    std::vector<Node> nodes_;
};

}  // namespace support
