// SPDX-License-Identifier: MIT
#include <espalier/dom/Attr.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/NamedNodeMap.h>
#include <espalier/dom/NodePtr.h>

#include "dom/AttributeTable.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"

namespace Dom {

using detail::AttributeTable;
using detail::NodeAccess;
namespace Message = detail::Message;

namespace {

using Kind = AttributeTable::Entry::Kind;

AttributeTable& TableOf(const Element& element) { return *NodeAccess::Table(element); }

Node* NodeAt(Element& owner, std::size_t index) {
    if (index == AttributeTable::kNone) return nullptr;
    return &AttributeTable::NodeOf(owner, TableOf(owner).At(index));
}

void CheckOwner(const Element& owner) {
    if (owner.IsReadOnly()) {
        DOMException::ThrowDOMException(DOMException::NO_MODIFICATION_ALLOWED_ERR,
                                        Message::kReadOnly);
    }
}

// Checks an attribute that is to be set, and returns it.
Attr& CheckItem(const Element& owner, Node* node) {
    if (node == nullptr) {
        DOMException::ThrowDOMException(DOMException::NOT_FOUND_ERR, Message::kNodeExpected);
    }
    CheckOwner(owner);
    const Document* const document = owner.OwnerDocument();
    if (document == nullptr || node->OwnerDocument() != document) {
        DOMException::ThrowDOMException(DOMException::WRONG_DOCUMENT_ERR,
                                        Message::kAttributeFromOther);
    }
    if (node->NodeType() != Node::ATTRIBUTE_NODE) {
        DOMException::ThrowDOMException(DOMException::HIERARCHY_REQUEST_ERR,
                                        Message::kOnlyAttributes);
    }
    auto& attribute = static_cast<Attr&>(*node);
    if (attribute.OwnerElement() != nullptr) {
        DOMException::ThrowDOMException(DOMException::INUSE_ATTRIBUTE_ERR,
                                        Message::kAttributeInUse);
    }
    if (NodeAccess::IsAtOrBelow(owner, attribute)) {
        DOMException::ThrowDOMException(DOMException::HIERARCHY_REQUEST_ERR,
                                        Message::kInsertAncestor);
    }
    return attribute;
}

Node* SetItem(Element& owner, Attr& attribute, Kind kind, std::size_t index) {
    AttributeTable& table = TableOf(owner);
    const AttributeTable::Entry entry(&NodeAccess::Name(attribute), kind, &attribute);
    Node* before = nullptr;
    if (index == AttributeTable::kNone) {
        NodeAccess::SetTable(owner, table.Add(entry));
    } else {
        auto& replaced = static_cast<Attr&>(*NodeAt(owner, index));
        NodeAccess::MakeOrphan(replaced, owner);
        NodeAccess::SetHeld(replaced, false);
        table.Replace(index, entry);
        before = &replaced;
    }
    NodeAccess::SetOwnerElement(attribute, &owner);
    NodeAccess::SetHeld(attribute, true);
    return before;
}

Node* TakeOut(Element& owner, std::size_t index, const astring& key) {
    CheckOwner(owner);
    if (index == AttributeTable::kNone) {
        DOMException::ThrowDOMException(DOMException::NOT_FOUND_ERR,
                                        astring(Message::kNoNodeNamed) + key + Message::kInThisMap);
    }
    auto& attribute = static_cast<Attr&>(*NodeAt(owner, index));
    TableOf(owner).RemoveAt(index);
    NodeAccess::SetOwnerElement(attribute, nullptr);
    NodeAccess::SetHeld(attribute, false);
    return &attribute;
}

// What messages call an attribute that is filed under namespace and local name.
astring KeyOf(std::string_view namespaceURI, std::string_view localName) {
    return namespaceURI.empty() ? astring(localName) : astring(localName) + '\x01' + namespaceURI;
}

}  // namespace

Node* NamedNodeMap::Item(std::size_t index) const {
    return index < Length() ? NodeAt(*owner_, index) : nullptr;
}

std::size_t NamedNodeMap::Length() const { return TableOf(*owner_).Count(); }

Node* NamedNodeMap::GetNamedItem(std::string_view name) const {
    return NodeAt(*owner_, TableOf(*owner_).Find(name));
}

Node* NamedNodeMap::GetNamedItemNS(std::string_view namespaceURI,
                                   std::string_view localName) const {
    return NodeAt(*owner_, TableOf(*owner_).Find(namespaceURI, localName));
}

Node* NamedNodeMap::SetNamedItem(Node* node) {
    Attr& attribute = CheckItem(*owner_, node);
    return SetItem(*owner_, attribute, Kind::ByName, TableOf(*owner_).Find(attribute.NameView()));
}

Node* NamedNodeMap::SetNamedItemNS(Node* node) {
    Attr& attribute = CheckItem(*owner_, node);
    const std::string_view uri = attribute.NamespaceURI();
    return SetItem(*owner_, attribute, uri.empty() ? Kind::ByName : Kind::ByNamespace,
                   uri.empty() ? TableOf(*owner_).Find(attribute.NameView())
                               : TableOf(*owner_).Find(uri, attribute.LocalNameView()));
}

Node* NamedNodeMap::RemoveNamedItem(std::string_view name) {
    return TakeOut(*owner_, TableOf(*owner_).Find(name), astring(name));
}

Node* NamedNodeMap::RemoveNamedItemNS(std::string_view namespaceURI, std::string_view localName) {
    return TakeOut(*owner_, TableOf(*owner_).Find(namespaceURI, localName),
                   KeyOf(namespaceURI, localName));
}

NamedNodeMap* NamedNodeMap::CloneAttributes(Element* newOwner) const {
    if (newOwner == nullptr) {
        DOMException::ThrowDOMException(DOMException::NOT_FOUND_ERR, Message::kNodeExpected);
    }
    if (&NodeAccess::Data(*newOwner) != &NodeAccess::Data(*owner_)) {
        DOMException::ThrowDOMException(DOMException::WRONG_DOCUMENT_ERR,
                                        Message::kAttributeFromOther);
    }
    const bool wasEmpty = !newOwner->HasAttributes();
    for (const AttributeTable::Entry& entry : TableOf(*owner_).All()) {
        AttributeTable& clones = newOwner->Table();
        if (!wasEmpty && clones.FindKeyOf(entry) != AttributeTable::kNone) continue;
        if (entry.Node() == nullptr) {  // and neither has the clone
            const Kind kind = entry.IsByNamespace() ? Kind::ChildlessByNamespace : Kind::Childless;
            NodeAccess::SetTable(*newOwner, clones.Add({&entry.Key(), kind, entry.OwnValue()}));
            continue;
        }
        NodePtr clone(entry.Node()->CloneNode(false));
        auto& attribute = static_cast<Attr&>(*clone);
        const Kind kind = entry.IsByNamespace() ? Kind::ByNamespace : Kind::ByName;
        NodeAccess::SetTable(*newOwner, clones.Add({&entry.Key(), kind, &attribute}));
        (void)clone.release();
        NodeAccess::SetOwnerElement(attribute, newOwner);
        NodeAccess::SetHeld(attribute, true);
    }
    NodeAccess::Data(*newOwner).AttributesHaveChanged();
    return newOwner->Attributes();
}

}  // namespace Dom
