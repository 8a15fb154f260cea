// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

#include "dom/LinkModel.h"

#include <cstddef>
#include <string>
#include <vector>

namespace support {

/// A LinkModel with the nodes that it stands for: each change is made to both, and the links of
/// both can be compared. Who makes a LinkTree destroys its nodes, with Destroy() or otherwise.
class LinkTree {
public:
    explicit LinkTree(int count) : model_(count), nodes_(static_cast<std::size_t>(count)) {}

    const LinkModel& Model() const { return model_; }
    Dom::Node* At(int node) const {
        return node == LinkModel::kNone ? nullptr : nodes_[static_cast<std::size_t>(node)];
    }
    bool Exists(int node) const { return At(node) != nullptr; }

    /// Takes a new node without links in as number `node`.
    void Adopt(int node, Dom::Node* made) {
        nodes_[static_cast<std::size_t>(node)] = made;
        model_.Create(node);
    }

    /// \name Changes
    /// The model is changed first, so that its preconditions are checked by the caller.
    /// @{
    void Append(int parent, int node);
    void InsertBefore(int parent, int node, int reference);
    void Replace(int parent, int node, int old);
    void Remove(int node);
    void InsertChild(int parent, int node, int reference);
    void ExchangeChild(int parent, int node, int old);
    void Destroy(int node);
    /// @}

    /// Returns the first link that differs, as "NODE: WHAT is X, not Y", or "".
    std::string Difference() const;

private:
    std::string DifferenceOf(int node) const;
    std::string DifferenceOfChildren(int node) const;
    std::string Name(const Dom::Node* node) const;
    void ForgetBelow(int node);

    LinkModel model_;
    std::vector<Dom::Node*> nodes_;
};

}  // namespace support
