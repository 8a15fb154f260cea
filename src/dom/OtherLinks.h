// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include <set>
#include <unordered_map>
#include <utility>  // std::pair

namespace Dom::detail {

/// The links that nodes show instead of their true ones.
///
/// InsertBefore() and ReplaceChild() do not tell the neighbours of the place, whose links go on
/// leading to the node that they led to before. The tree is kept in order all the same; what is
/// shown instead is kept here. A next or first link that is kept here always leads to a sibling
/// further behind or to a node without a parent, a previous link to one further before or to one
/// without a parent, so that no walk goes in circles; and none leads to a node that is gone.
class OtherLinks {
public:
    Node* First(const Node& parent) const { return Get(parent, &Links::first); }
    Node* Previous(const Node& node) const { return Get(node, &Links::previous); }
    Node* Next(const Node& node) const { return Get(node, &Links::next); }

    bool IsEmpty() const { return links_.empty(); }

    /// \name Show another node
    /// Null, or the node that the true link leads to, ends it.
    /// @{
    void SetFirst(Node& parent, Node* target);
    void SetPrevious(Node& node, Node* target);
    void SetNext(Node& node, Node* target);
    /// @}

    /// Ends the links to a node that has got a new place, where they would lead back.
    void TargetIsLinked(Node& target);

    /// Ends the links to `top`, which has no parent, that would go in a circle now that there is
    /// something new below it.
    void EndCircles(Node& top) noexcept;

    /// Ends all that begins or ends at a node that is about to be destroyed.
    void Forget(Node& node);

private:
    struct Links {
        Node* first = nullptr;
        Node* previous = nullptr;
        Node* next = nullptr;
    };
    using Link = Node* Links::*;

    Node* Get(const Node& node, Link link) const;
    void Set(Node& node, Link link, Node* target);
    void Mark(Node& source);
    void EndLinksBack(Node& source, Node& target);
    void EndLinks(Node& source, const Node& target);
    bool LeadsTo(const Node& from, const Node& to) const;
    void ForgetSource(Node& target, Node& source);
    using Sources = std::set<std::pair<const Node*, Node*>>;  // each a target and a source
    Sources::const_iterator SourcesOf(const Node& target) const;

    std::unordered_map<const Node*, Links> links_;  // by source
    Sources sources_;  // ordered, so that one of many that lead to a target is found at once
};

}  // namespace Dom::detail
