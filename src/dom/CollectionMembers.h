// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/NodeList.h>

#include <cstdint>
#include <unordered_set>

namespace Dom::detail {

/// The nodes above the elements "applet" below a root, found once for each state of the tree.
class AppletHolders {
public:
    /// \param stamp changes with the tree
    bool Contains(const Node& root, const Node& node, std::uint64_t stamp);

private:
    std::unordered_set<const Node*> nodes_;
    std::uint64_t stamp_ = 0;
    bool isKnown_ = false;
};

/// Tells whether `kind` is one of those of an HTMLCollection.
constexpr bool IsCollection(NodeList::Kind kind) { return kind >= NodeList::Forms; }

/// Tells whether a node belongs to the collection of a kind, below `root`.
bool IsCollectionMember(const Node& root, const Node& node, NodeList::Kind kind,
                        AppletHolders& holders);

}  // namespace Dom::detail
