// SPDX-License-Identifier: MIT
#include <espalier/dom/Attr.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/NamedNodeMap.h>
#include <espalier/dom/NodeList.h>

#include "dom/AttributeTable.h"
#include "dom/InterfaceName.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"

#include <memory>

namespace Dom {

using detail::AttributeTable;
using detail::NodeAccess;

namespace {

std::size_t Find(const AttributeTable* table, std::string_view name) {
    return table == nullptr ? AttributeTable::kNone : table->Find(name);
}

std::size_t Find(const AttributeTable* table, std::string_view uri, std::string_view localName) {
    return table == nullptr ? AttributeTable::kNone : table->Find(uri, localName);
}

// The tree does not change by it, so looking at an attribute may make its node.
Attr* NodeAt(const Element& element, std::size_t index) {
    if (index == AttributeTable::kNone) return nullptr;
    return &AttributeTable::NodeOf(const_cast<Element&>(element),
                                   NodeAccess::Table(element)->At(index));
}

NodeList ListOf(const Element& root, std::string_view name, std::string_view localName = {}) {
    return {const_cast<Element*>(&root), NodeList::ByName, name, localName};
}

}  // namespace

Element::Element(std::string_view namespaceURI, std::string_view qualifiedName,
                 Document* ownerDocument)
    : Node(ELEMENT_NODE, namespaceURI, qualifiedName, ownerDocument) {}

void* Element::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::Element") ? this : Node::QueryInterface(name);
}

AttributeTable& Element::Table() {
    if (rest_.attributes == nullptr) {
        rest_.attributes = AttributeTable::Make(NodeAccess::Data(*this).pool, 2);
    }
    return *rest_.attributes;
}

Node* Element::CloneNode(bool /*deep*/) { return NodeAccess::CloneElement(*this); }

const astring& Element::GetAttribute(std::string_view name) const {
    const std::size_t index = Find(rest_.attributes, name);
    return index == AttributeTable::kNone ? EmptyText() : rest_.attributes->At(index).Value();
}

const astring& Element::GetAttributeNS(std::string_view namespaceURI,
                                       std::string_view localName) const {
    const std::size_t index = Find(rest_.attributes, namespaceURI, localName);
    return index == AttributeTable::kNone ? EmptyText() : rest_.attributes->At(index).Value();
}

void Element::SetAttribute(std::string_view name, std::string_view value) {
    std::unique_ptr<Attr> attribute(NodeAccess::Make<Attr>(
        NodeAccess::Data(*this), NodeAccess::Data(*this).names.Intern({}, name)));
    attribute->SetValue(value);
    attribute->Set(IsSpecified);
    delete Attributes()->SetNamedItem(attribute.get());
    (void)attribute.release();
}

void Element::SetAttributeNS(std::string_view namespaceURI, std::string_view qualifiedName,
                             std::string_view value) {
    std::unique_ptr<Attr> attribute(
        NodeAccess::Make<Attr>(NodeAccess::Data(*this),
                               NodeAccess::Data(*this).names.Intern(namespaceURI, qualifiedName)));
    attribute->SetValue(value);
    attribute->Set(IsSpecified);
    delete Attributes()->SetNamedItemNS(attribute.get());
    (void)attribute.release();
}

void Element::RemoveAttribute(std::string_view name) { delete Attributes()->RemoveNamedItem(name); }

void Element::RemoveAttributeNS(std::string_view namespaceURI, std::string_view localName) {
    delete Attributes()->RemoveNamedItemNS(namespaceURI, localName);
}

bool Element::HasAttribute(std::string_view name) const {
    return Find(rest_.attributes, name) != AttributeTable::kNone ||
           HasAttributeNS(NamespaceURI(), name);
}

bool Element::HasAttributeNS(std::string_view namespaceURI, std::string_view localName) const {
    return Find(rest_.attributes, namespaceURI, localName) != AttributeTable::kNone;
}

Attr* Element::GetAttributeNode(std::string_view name) const {
    return NodeAt(*this, Find(rest_.attributes, name));
}

Attr* Element::GetAttributeNodeNS(std::string_view namespaceURI, std::string_view localName) const {
    return NodeAt(*this, Find(rest_.attributes, namespaceURI, localName));
}

Attr* Element::SetAttributeNode(Attr* attribute) {
    return static_cast<Attr*>(Attributes()->SetNamedItem(attribute));
}

Attr* Element::SetAttributeNodeNS(Attr* attribute) {
    return static_cast<Attr*>(Attributes()->SetNamedItemNS(attribute));
}

Attr* Element::RemoveAttributeNode(Attr* attribute) {
    if (attribute == nullptr) {
        DOMException::ThrowDOMException(DOMException::NOT_FOUND_ERR,
                                        detail::Message::kNodeExpected);
    }
    return static_cast<Attr*>(Attributes()->RemoveNamedItem(attribute->NameView()));
}

AttributeRange Element::AttributeViews() const { return AttributeRange(rest_.attributes); }

NodeList Element::GetElementsByTagName(std::string_view name) const { return ListOf(*this, name); }

NodeList Element::GetElementsByTagNameNS(std::string_view namespaceURI,
                                         std::string_view localName) const {
    return ListOf(*this, namespaceURI, localName);
}

}  // namespace Dom
