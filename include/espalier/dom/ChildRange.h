// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>

#include <cstddef>
#include <iterator>

namespace Dom {

/// The children of a node in their true order, to loop over. The loop may remove or destroy the
/// child that it stands on.
class ESPALIER_EXPORT ChildRange {
public:
    /// Visits the children.
    class Iterator {
    public:
        /// \cond
        using iterator_category = std::forward_iterator_tag;
        using value_type = Node;
        using difference_type = std::ptrdiff_t;
        using pointer = Node*;
        using reference = Node&;
        /// \endcond

        Iterator() = default;
        explicit Iterator(Node* node) : node_(node), next_(Next(node)) {}

        Node& operator*() const { return *node_; }
        Node* operator->() const { return node_; }
        Iterator& operator++() {
            *this = Iterator(next_);
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return node_ == other.node_; }

    private:
        ESPALIER_EXPORT static Node* Next(const Node* node);

        Node* node_ = nullptr;
        Node* next_ = nullptr;  // already known, so that the loop may remove the node
    };

    explicit ChildRange(Node* first) : first_(first) {}

    /// \name The range
    /// In the order of the document.
    /// @{
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return {}; }
    bool empty() const { return first_ == nullptr; }
    /// @}

private:
    Node* first_;
};

}  // namespace Dom
