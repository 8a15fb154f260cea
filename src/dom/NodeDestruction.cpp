// SPDX-License-Identifier: MIT

/// \file
/// How nodes end: what becomes of their memory, and of what leads to them.

#include <espalier/dom/Attr.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/Node.h>

#include "dom/AttributeTable.h"
#include "dom/NodeAccess.h"

#include <new>

namespace Dom {

namespace detail {

void NodeAccess::DropValue(Node& node) noexcept {
    if (node.rest_.value == nullptr || node.Has(Node::SharedValue)) return;
    node.rest_.value->~astring();
    Data(node).pool.Free(node.rest_.value, sizeof(astring));
    node.rest_.value = nullptr;
}

// Takes the first child out of a node that is about to be destroyed. What is below the child, and
// below its attributes, comes before the other children: so nothing is left below it, and its
// destruction does not lead to others.
Node* NodeAccess::DetachFirst(Node& parent) noexcept {
    Node& child = *First(parent);
    Node* const rest = child.next_;
    SetFirst(parent, rest);
    if (rest != nullptr) rest->previous_ = child.previous_;
    const auto takeChildrenOf = [&parent](Node& node) {
        Node* const first = First(node);
        if (first == nullptr) return;
        Node* const last = first->previous_;
        Node* const behind = First(parent);
        // One that is an attribute may be destroyed with its element before its turn comes.
        for (Node* moved = first; moved != nullptr; moved = moved->next_)
            moved->parent_ = &parent;
        SetFirst(node, nullptr);
        SetFirst(parent, first);
        last->next_ = behind;
        if (behind != nullptr) {
            first->previous_ = behind->previous_;
            behind->previous_ = last;
        }
    };
    child.parent_ = child.previous_ = child.next_ = nullptr;
    if (child.Has(Node::InMap)) return &child;  // an attribute that its element destroys
    takeChildrenOf(child);
    if (AttributeTable* const table = Table(child)) {
        for (AttributeTable::Entry& entry : table->All()) {
            if (entry.Node() != nullptr) takeChildrenOf(*entry.Node());
        }
    }
    return &child;
}

void NodeAccess::DestroyChildren(Node& node) noexcept {
    DocumentData& data = Data(node);
    while (First(node) != nullptr) {
        Node* const child = DetachFirst(node);
        if (child->Has(Node::InMap)) {
            if (HasOtherLinks(*child)) data.otherLinks.Forget(*child);
            continue;
        }
        ++data.freeNodes;
        delete child;
    }
    // Nothing is left that could stand before what is appended next.
    if (node.Has(Node::OtherFirst)) data.otherLinks.SetFirst(node, nullptr);
}

void NodeAccess::Clear(Document& document) noexcept {
    DocumentData& data = Data(document);
    if (!data.GoesWithPool()) DestroyChildren(document);
    data.ClearWhenUnused();
    ++data.stamp;
}

}  // namespace detail

using detail::NodeAccess;

Node::~Node() {
    detail::DocumentData& data = *name_->data;
    NodeAccess::Unlink(*this);
    NodeAccess::DestroyChildren(*this);
    if (NodeAccess::HasOtherLinks(*this)) data.otherLinks.Forget(*this);
    if (NodeType() != ELEMENT_NODE) NodeAccess::DropValue(*this);
    if (NodeType() == ATTRIBUTE_NODE) {
        data.AttributesHaveChanged();
    } else {
        ++data.stamp;
    }
    if (Has(NeedsDestruction)) --data.ownMemory;
    if (!Has(InPool)) data.Release();
}

Attr::~Attr() {
    if (Has(IsOrphan)) NodeAccess::ForgetOrphan(*this);
    if (!Has(InMap)) return;
    detail::AttributeTable& table = *NodeAccess::Table(*ownerElement_);
    table.RemoveAt(table.Find(*this));
    NodeAccess::SetHeld(*this, false);
}

Element::~Element() {
    if (Has(HasOrphans)) NodeAccess::ForgetOrphans(*this);
    if (Has(HasOverrides)) NodeAccess::ForgetOverrides(*this);
    detail::AttributeTable* const table = NodeAccess::Table(*this);
    if (table == nullptr) return;
    NodeAccess::SetTable(*this, nullptr);
    for (detail::AttributeTable::Entry& entry : table->All()) {
        Attr* const attribute = entry.Node();
        if (attribute == nullptr) continue;
        NodeAccess::SetHeld(*attribute, false);
        delete attribute;
    }
    table->Free(NodeAccess::Data(*this).pool);
}

void Node::DestroyNode() { delete this; }

void Node::DestroyNode(Node* node) { delete node; }

void* Node::operator new(std::size_t size) { return ::operator new(size); }

void Node::operator delete(void* memory) { ::operator delete(memory); }

void* Node::operator new(std::size_t size, std::align_val_t alignment) {
    return ::operator new(size, alignment);
}

void Node::operator delete(void* memory, std::align_val_t alignment) {
    ::operator delete(memory, alignment);
}

void Node::operator delete(Node* node, std::destroying_delete_t, std::align_val_t alignment) {
    void* const memory = dynamic_cast<void*>(node);
    node->~Node();
    ::operator delete(memory, alignment);
}

void Node::operator delete(Node* node, std::destroying_delete_t) {
    if (!node->Has(InPool)) {
        void* const memory = dynamic_cast<void*>(node);
        node->~Node();
        ::operator delete(memory);
        return;
    }
    detail::DocumentData& data = *node->name_->data;
    const std::size_t size = node->PoolSize();
    node->~Node();
    // The node still counts: ~Node() leaves that to us for nodes in the pool.
    data.pool.Free(node, size);  // NOLINT(clang-analyzer-cplusplus.NewDelete)
    data.Release();              // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

}  // namespace Dom
