// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace Dom {

/// A live list of nodes: the children of a node, or those of its descendants that pass a test.
///
/// A list is a small value that holds no nodes; Item() and Length() look at the tree as it is now.
/// Going through a list by index remembers the place, so a loop takes linear time while the tree
/// does not change. A list is valid as long as the node that it was made for.
///
/// Deliberate: a list by name that is rooted at a node with following siblings goes on behind the
/// root, through everything that follows it in document order.
class ESPALIER_EXPORT NodeList {
public:
    class Iterator;

    /// What the members of a list are.
    enum Kind {
        Children = 1,     ///< the children of the root
        ByName = 2,       ///< descendants whose node name is the first filter
        ByNamespace = 3,  ///< descendants with that namespace URI and local name
        ByFormName = 4,   ///< form controls whose attribute "name" is the first filter
        // What an HTMLCollection may hold, which goes by local names and true links.
        Forms = 5,    ///< elements "form"
        Images = 6,   ///< elements "img"
        Applets = 7,  ///< elements "applet", and elements "object" with one below them
        Links = 8,    ///< elements "a" and "area" with an attribute "href"
        Anchors = 9   ///< elements "a" with an attribute "name"
    };

    /// Makes an empty list.
    NodeList() = default;
    /// Makes a list of the children of `root`.
    explicit NodeList(Node* root);
    /// Makes a list of descendants of `root`; for `Children` the filters are not used.
    NodeList(Node* root, Kind kind, std::string_view filter, std::string_view filter2 = {});
    NodeList(const NodeList& other);
    NodeList& operator=(const NodeList& other);
    ~NodeList();

    /// Returns member `index`, from 0 on, or null when there are not as many.
    Node* Item(std::size_t index) const;
    /// Counts the members.
    std::size_t Length() const;

    /// \name Iteration
    /// Over the members, as `Node*`. The tree may not change meanwhile, except for what the loop
    /// has passed.
    /// @{
    Iterator begin() const;
    Iterator end() const;
    /// @}

private:
    friend class detail::NodeAccess;
    friend class Node;
    struct Filter;

    /// \cond
    // What the word is, by its lowest bits.
    enum Tag : std::uintptr_t {
        IsRoot = 0,      // the root of a list of children; null for an empty list
        IsEmbedded = 1,  // the first child of the node that the list is a part of
        IsFilter = 2,    // a Filter, which the list owns
        TagMask = 3
    };
    /// \endcond

    Node* Root() const;
    const Filter* GetFilter() const;
    Node* First() const;
    Node* Next(const Node* node) const;
    detail::ListPlace* Place() const;

    std::uintptr_t word_ = IsRoot;
};

/// Visits the members of a list.
class ESPALIER_EXPORT NodeList::Iterator {
public:
    /// \cond
    using iterator_category = std::forward_iterator_tag;
    using value_type = Node*;
    using difference_type = std::ptrdiff_t;
    using pointer = Node* const*;
    using reference = Node*;
    /// \endcond

    Iterator() = default;

    Node* operator*() const { return node_; }
    Iterator& operator++();
    Iterator operator++(int) {
        Iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Iterator& other) const { return node_ == other.node_; }

private:
    friend class NodeList;
    Iterator(const NodeList* list, Node* node) : list_(list), node_(node) {}

    const NodeList* list_ = nullptr;
    Node* node_ = nullptr;
};

}  // namespace Dom
