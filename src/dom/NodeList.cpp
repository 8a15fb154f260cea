// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/Node.h>
#include <espalier/dom/NodeList.h>

#include "dom/CollectionMembers.h"
#include "dom/NodeAccess.h"

#include <algorithm>
#include <memory>

namespace Dom {

using detail::NodeAccess;

/// What a list of descendants is made of.
struct NodeList::Filter {
    Node* root;
    Kind kind;
    astring filter;
    astring filter2;
    mutable detail::ListPlace place;
    mutable detail::AppletHolders holders;

    bool Accepts(const Node& node) const;
    Node* First() const;
    Node* FirstFrom(Node* node) const;
    Node* Behind(const Node* node) const;
};

namespace {

bool IsFormControl(const Node& node) {
    static constexpr std::string_view kNames[] = {"input", "button", "select", "textarea"};
    return node.NodeType() == Node::ELEMENT_NODE &&
           std::ranges::find(kNames, node.NameView()) != std::end(kNames);
}

}  // namespace

bool NodeList::Filter::Accepts(const Node& node) const {
    switch (kind) {
    case ByNamespace: return node.LocalNameView() == filter2 && node.NamespaceURI() == filter;
    case ByFormName:
        return IsFormControl(node) &&
               static_cast<const Element&>(node).GetAttribute("name") == filter;
    case ByName:
    case Children: return node.NodeName() == filter;
    default: return detail::IsCollectionMember(*root, node, kind, holders);
    }
}

// Deliberate: behind the root's last descendant the walk goes on with the root's own next sibling.
// Only when it gets to the root again, which has none, or to a node that leads nowhere, it ends.
Node* NodeList::Filter::Behind(const Node* node) const {
    if (detail::IsCollection(kind)) return NodeAccess::NextBelow(*root, *node);
    if (Node* const child = node->FirstChild()) return child;
    while (node != nullptr && node->NextSibling() == nullptr) {
        node = node == root ? nullptr : node->ParentNode();
    }
    return node == nullptr ? nullptr : node->NextSibling();
}

Node* NodeList::Filter::First() const {
    return FirstFrom(detail::IsCollection(kind) ? NodeAccess::First(*root) : root->FirstChild());
}

Node* NodeList::Filter::FirstFrom(Node* node) const {
    while (node != nullptr && !Accepts(*node))
        node = Behind(node);
    return node;
}

NodeList::NodeList(Node* root) : word_(reinterpret_cast<std::uintptr_t>(root)) {}

NodeList::NodeList(Node* root, Kind kind, std::string_view filter, std::string_view filter2)
    : NodeList(root) {
    if (kind == Children || root == nullptr) return;
    auto* const made = new Filter{root, kind, astring(filter), astring(filter2), {}, {}};
    word_ = reinterpret_cast<std::uintptr_t>(made) | IsFilter;
}

NodeList::NodeList(const NodeList& other) : word_(reinterpret_cast<std::uintptr_t>(other.Root())) {
    if (const Filter* const filter = other.GetFilter()) {
        word_ = reinterpret_cast<std::uintptr_t>(new Filter(*filter)) | IsFilter;
    }
}

NodeList& NodeList::operator=(const NodeList& other) {
    NodeList copy(other);
    std::swap(word_, copy.word_);
    return *this;
}

NodeList::~NodeList() { delete GetFilter(); }

const NodeList::Filter* NodeList::GetFilter() const {
    if ((word_ & TagMask) != IsFilter) return nullptr;
    return reinterpret_cast<const Filter*>(word_ & ~std::uintptr_t{TagMask});
}

// Returns the root of a list of children.
Node* NodeList::Root() const {
    switch (word_ & TagMask) {
    case IsRoot: return reinterpret_cast<Node*>(word_);
    case IsEmbedded: return NodeAccess::HolderOf(*this);
    default: return nullptr;
    }
}

Node* NodeList::First() const {
    if (const Filter* const filter = GetFilter()) return filter->First();
    const Node* const root = Root();
    return root == nullptr ? nullptr : root->FirstChild();
}

Node* NodeList::Next(const Node* node) const {
    const Filter* const filter = GetFilter();
    return filter != nullptr ? filter->FirstFrom(filter->Behind(node)) : node->NextSibling();
}

// Returns where the list was looked at last, if that still holds; null for an empty list.
detail::ListPlace* NodeList::Place() const {
    const Filter* const filter = GetFilter();
    const Node* const root = filter != nullptr ? filter->root : Root();
    if (root == nullptr) return nullptr;
    detail::DocumentData& data = NodeAccess::Data(*root);
    if (filter == nullptr) return &data.childListPlaces.Of(root, data.stamp);
    filter->place.Check(root, data.stamp);
    return &filter->place;
}

Node* NodeList::Item(std::size_t index) const {
    detail::ListPlace* const place = Place();
    if (place == nullptr) return nullptr;
    std::size_t at = place->index;
    Node* node = place->node;
    if (node == nullptr || at > index) {
        at = 0;
        node = First();
    }
    for (; node != nullptr && at < index; ++at)
        node = Next(node);
    if (node != nullptr) {
        place->index = at;
        place->node = node;
    }
    return node;
}

std::size_t NodeList::Length() const {
    detail::ListPlace* const place = Place();
    if (place == nullptr) return 0;
    if (place->length == detail::ListPlace::kUnknown) {
        std::size_t length = 0;
        for (const Node* node = First(); node != nullptr; node = Next(node))
            ++length;
        place->length = length;
    }
    return place->length;
}

NodeList::Iterator NodeList::begin() const { return Iterator(this, First()); }

NodeList::Iterator NodeList::end() const { return Iterator(this, nullptr); }

NodeList::Iterator& NodeList::Iterator::operator++() {
    node_ = list_->Next(node_);
    return *this;
}

}  // namespace Dom
