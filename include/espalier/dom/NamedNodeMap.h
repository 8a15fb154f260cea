// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>

#include <cstddef>
#include <iterator>
#include <string_view>

namespace Dom {

/// The attributes of an element, as nodes, in the order in which they were set.
///
/// The map is a part of its element and owns the attributes. An attribute is filed under its name,
/// or under its local name and namespace; the name under which it was filed stays when
/// Node::SetPrefix() changes that of the attribute.
class ESPALIER_EXPORT NamedNodeMap {
public:
    class Iterator;

    NamedNodeMap(const NamedNodeMap&) = delete;
    NamedNodeMap& operator=(const NamedNodeMap&) = delete;

    /// Returns attribute `index`, from 0 on, or null when there are not as many.
    Node* Item(std::size_t index) const;
    /// Returns the number of attributes.
    std::size_t Length() const;

    /// Returns the attribute that was filed under `name`, or null.
    Node* GetNamedItem(std::string_view name) const;
    /// Returns the attribute that was filed under that namespace and local name, or null; without
    /// a namespace that is GetNamedItem(localName).
    Node* GetNamedItemNS(std::string_view namespaceURI, std::string_view localName) const;

    /// Files an attribute under its name.
    /// \return the attribute that was filed there before, which belongs to the caller now, or null
    /// \throws DOMException 8 "Node expected" for null; 7 "This node is read-only"; 4 "The
    /// attribute
    ///     to set was created from a different document than the one that created this map"; 10
    ///     "The attribute to set is already an attribute of another Element object", also when it
    ///     is this one; 3 "Elements only accept Attr nodes as attributes"; 3 "The node to insert is
    ///     one of this node's ancestors" for an attribute that the element is below
    Node* SetNamedItem(Node* node);
    /// Files an attribute under its local name and namespace, or its name if it has no namespace.
    /// \return and \throws as SetNamedItem()
    Node* SetNamedItemNS(Node* node);

    /// Takes an attribute out, which belongs to the caller then.
    /// \throws DOMException 7 "This node is read-only"; 8 "No node named ... in this map" with the
    ///     name
    Node* RemoveNamedItem(std::string_view name);
    /// Does so by namespace and local name; without a namespace that is
    /// RemoveNamedItem(localName).
    Node* RemoveNamedItemNS(std::string_view namespaceURI, std::string_view localName);

    /// Gives `newOwner` clones of all attributes, except those under whose names it has some.
    /// \return its map
    /// \throws DOMException 8 "Node expected" for null; 4 "The attribute to set was created from a
    ///     different document than the one that created this map"
    NamedNodeMap* CloneAttributes(Element* newOwner) const;

    /// \name Iteration
    /// Over the attributes, as `Node*`.
    /// @{
    Iterator begin() const;
    Iterator end() const;
    /// @}

private:
    friend class Element;
    friend class detail::AttributeTable;
    explicit NamedNodeMap(Element* owner) : owner_(owner) {}
    ~NamedNodeMap() = default;

    Element* owner_;
};

/// Visits the attributes of a map.
class NamedNodeMap::Iterator {
public:
    /// \cond
    using iterator_category = std::forward_iterator_tag;
    using value_type = Node*;
    using difference_type = std::ptrdiff_t;
    using pointer = Node* const*;
    using reference = Node*;
    /// \endcond

    Iterator() = default;

    Node* operator*() const { return map_->Item(index_); }
    Iterator& operator++() {
        ++index_;
        return *this;
    }
    Iterator operator++(int) {
        Iterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const Iterator& other) const { return index_ == other.index_; }

private:
    friend class NamedNodeMap;
    Iterator(const NamedNodeMap* map, std::size_t index) : map_(map), index_(index) {}

    const NamedNodeMap* map_ = nullptr;
    std::size_t index_ = 0;
};

inline NamedNodeMap::Iterator NamedNodeMap::begin() const { return {this, 0}; }
inline NamedNodeMap::Iterator NamedNodeMap::end() const { return {this, Length()}; }

}  // namespace Dom
