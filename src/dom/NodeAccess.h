// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Attr.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/NamedNodeMap.h>

#include "dom/AttributeTable.h"
#include "dom/DocumentData.h"

#include <cstdint>
#include <memory>
#include <new>
#include <string_view>

namespace Dom::detail {

/// What the code of this layer does with nodes beyond their interface.
class NodeAccess {
public:
    using Flag = Node::Flag;
    static constexpr Flag kImpliedText = Node::ImpliedText;
    static constexpr Flag kIsSpecified = Node::IsSpecified;

    static DocumentData& Data(const Node& node) { return *node.name_->data; }
    static const NodeName& Name(const Node& node) { return *node.name_; }
    static void SetName(Node& node, const NodeName* name) { node.name_ = name; }

    /// Returns the node that a list of children is a part of.
    static Node* HolderOf(const NodeList& list) {
        // The list is the first member of a base of the node.
        const auto& holder = reinterpret_cast<const ChildList&>(list);
        return const_cast<Node*>(static_cast<const Node*>(&holder));
    }

    /// Tells whether `node` is `ancestor` or below it, also by way of an attribute.
    static bool IsAtOrBelow(const Node& node, const Node& ancestor) {
        return node.IsAtOrBelow(ancestor);
    }

    /// \name True links
    /// @{
    static Node* First(const Node& node) { return node.TrueFirst(); }
    static Node* Last(const Node& node) { return node.TrueLast(); }
    static Node* Previous(const Node& node) { return node.TruePrevious(); }
    static Node* Next(const Node& node) { return node.next_; }
    /// The next node in document order below `root`, true links only; null behind the last one.
    static Node* NextBelow(const Node& root, const Node& node);
    static Node* NextBehind(const Node& root, const Node& node);
    /// @}

    /// \name Places in the tree
    /// Nothing is checked.
    /// @{

    /// Puts a free node before `next`, or at the end of the children when that is null.
    static void Link(Node& parent, Node& node, Node* next);
    /// As Link(), at the end, for a new node that nothing leads to.
    static void LinkNew(Node& parent, Node& node) {
        node.parent_ = &parent;
        Node* const first = parent.TrueFirst();
        if (first == nullptr) {
            SetFirst(parent, &node);
            node.previous_ = &node;
            return;
        }
        Node* const last = first->previous_;
        last->next_ = &node;
        node.previous_ = last;
        first->previous_ = &node;
    }
    /// Takes a node out of its parent, if it has one.
    static void Unlink(Node& node) noexcept;
    /// Puts `node` before `next` in the way of Node::InsertBefore().
    static void InsertUntold(Node& parent, Node& node, Node& next);
    /// Puts `node` in the place of `old` in the way of Node::ReplaceChild().
    static void ReplaceUntold(Node& parent, Node& node, Node& old);
    /// Puts `node` before `next`; all links tell of it.
    static void InsertTold(Node& parent, Node& node, Node& next);
    /// @}

    /// \name Flags
    /// @{
    static bool Has(const Node& node, Flag flag) { return node.Has(flag); }
    static void Set(Node& node, Flag flag, bool value = true) { node.Set(flag, value); }
    static void MarkOtherLinks(Node& node, bool first, bool previous, bool next) {
        node.Set(Node::OtherFirst, first);
        node.Set(Node::OtherPrevious, previous);
        node.Set(Node::OtherNext, next);
    }
    static bool HasOtherLinks(const Node& node) {
        return node.Has(Node::OtherFirst) || node.Has(Node::OtherPrevious) ||
               node.Has(Node::OtherNext) || node.Has(Node::IsTarget);
    }
    static void MarkTarget(Node& node, bool isTarget) { node.Set(Node::IsTarget, isTarget); }
    /// Notes that a node has memory that is not the pool's.
    static void MarkOwnMemory(Node& node) {
        if (node.Has(Node::NeedsDestruction)) return;
        node.Set(Node::NeedsDestruction);
        ++Data(node).ownMemory;
    }
    /// @}

    /// \name Making nodes
    /// @{

    /// Makes a node in the pool, for a place in the tree that it gets at once.
    template <typename T>
    static T* MakeLinked(DocumentData& data, const NodeName* name) {
        T* const node = ::new (data.pool.Allocate(sizeof(T))) T(name);
        node->SetPoolSize(sizeof(T));
        return node;
    }
    /// Makes a free node in the pool, which the caller owns.
    template <typename T>
    static T* Make(DocumentData& data, const NodeName* name) {
        T* const node = MakeLinked<T>(data, name);
        ++data.freeNodes;
        return node;
    }
    /// Makes a free node with a value of its own.
    template <typename T>
    static T* Make(DocumentData& data, const NodeName* name, std::string_view value) {
        std::unique_ptr<T> node(Make<T>(data, name));
        SetValue(*node, value);
        return node.release();
    }
    /// Makes an element of a derived class with the name and the attributes of another one.
    template <typename T>
    static T* CloneElement(T& element) {
        std::unique_ptr<T> clone(Make<T>(Data(element), &Name(element)));
        if (element.HasAttributes()) element.Attributes()->CloneAttributes(clone.get());
        return clone.release();
    }
    static Attr* MakeAttribute(Element& owner, const NodeName* name, astring* value,
                               bool fieldIsEmpty);
    /// Gives a node that has none a value that is freed with all others.
    static void SetSharedValue(Node& node, astring* value) { node.rest_.value = value; }
    /// @}

    /// \name Attributes
    /// @{
    static AttributeTable* Table(const Node& node) {
        return node.NodeType() == Node::ELEMENT_NODE ? node.rest_.attributes : nullptr;
    }
    static void SetTable(Element& element, AttributeTable* table) {
        element.rest_.attributes = table;
    }
    /// Marks an attribute as held by the map of its element, or not.
    static void SetHeld(Attr& attribute, bool isHeld);
    static void SetOwnerElement(Attr& attribute, Element* element) {
        attribute.ownerElement_ = element;
    }
    /// Lets an attribute without children have its value as a text.
    static void ShowText(Attr& attribute) {
        if (attribute.TrueFirst() == nullptr) attribute.Set(Node::ImpliedText);
    }
    static void MakeOrphan(Attr& attribute, Element& element);
    static void ForgetOrphans(Element& element) noexcept;
    static void ForgetOrphan(Attr& attribute) noexcept;
    static void MarkOverrides(Element& element) { element.Set(Node::HasOverrides); }
    static void ForgetOverrides(Element& element) noexcept;
    /// @}

    static void SetLoadedProperties(Document& document, std::string_view version,
                                    std::string_view encoding, bool standalone) {
        document.xmlVersion_ = version;
        document.xmlEncoding_ = encoding;
        document.xmlStandalone_ = standalone;
    }
    static void SetLoadedVersion(Document& document, std::string_view version) {
        document.xmlVersion_ = version;
    }
    static void SetInputEncoding(Document& document, std::string_view encoding) {
        document.inputEncoding_ = encoding;
    }
    /// Destroys all that a document holds. Lists that are looked at meanwhile want another change
    /// of the stamp behind it.
    static void Clear(Document& document) noexcept;
    static void CheckVersion(const Document& document, std::string_view version) {
        document.CheckVersion(version);
    }

    /// Destroys what is below a node, without recursion.
    static void DestroyChildren(Node& node) noexcept;
    /// Frees the value of a node.
    static void DropValue(Node& node) noexcept;
    /// Gives a node a value of its own.
    static void SetValue(Node& node, std::string_view value) { node.SetNodeValue(value); }
    static void SetFirst(Node& parent, Node* child) {
        parent.list_.word_ = reinterpret_cast<std::uintptr_t>(child) | NodeList::IsEmbedded;
    }

private:
    static void LinkBefore(Node& parent, Node& node, Node& next);
    static void UnlinkTrue(Node& node) noexcept;
    static void PassLinksOn(Node& node) noexcept;
    static void EndCircles(Node& parent, const Node& node) noexcept;
    static Node* DetachFirst(Node& parent) noexcept;
};

}  // namespace Dom::detail
