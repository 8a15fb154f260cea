// SPDX-License-Identifier: MIT

/// \file
/// What is built on the tree: copies, joined texts, and nodes for other documents.

#include <espalier/dom/Attr.h>
#include <espalier/dom/CDATASection.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/DocumentFragment.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/NodePtr.h>
#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/Text.h>

#include "dom/AttributeTable.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"

namespace Dom {

using detail::AttributeTable;
using detail::NodeAccess;
using detail::NodeName;

namespace {

bool IsText(const Node& node) {
    return node.NodeType() == Node::TEXT_NODE || node.NodeType() == Node::CDATA_SECTION_NODE;
}

// Puts a new node behind the children of another.
Node& Append(Node& parent, NodePtr node) {
    NodeAccess::Link(parent, *node, nullptr);
    return *node.release();
}

// Copies what is below a node to below its copy. Depth costs no stack.
template <typename CopyOf>
void CopyBelow(const Node& source, Node& copy, const CopyOf& copyOf) {
    const Node* from = &source;
    Node* to = &copy;
    while (true) {
        const Node* next = NodeAccess::First(*from);
        if (next == nullptr) {
            while (from != &source && NodeAccess::Next(*from) == nullptr) {
                from = from->ParentNode();
                to = to->ParentNode();
            }
            if (from == &source) return;
            next = NodeAccess::Next(*from);
            to = to->ParentNode();
        }
        to = &Append(*to, NodePtr(copyOf(*next)));
        from = next;
    }
}

// Copies the children of attributes that hold more than their text.
template <typename CopyOf>
void CopyAttributeChildren(const Node& source, Node& copy, const CopyOf& copyOf) {
    const AttributeTable* const table = NodeAccess::Table(source);
    if (table == nullptr) return;
    for (std::size_t i = 0; i < table->Count(); ++i) {
        const Attr* const attribute = table->At(i).Node();
        if (attribute == nullptr || NodeAccess::First(*attribute) == nullptr) continue;
        auto& target = static_cast<Element&>(copy);
        Attr& made = AttributeTable::NodeOf(target, NodeAccess::Table(target)->At(i));
        NodeAccess::Set(made, NodeAccess::kImpliedText, false);
        CopyBelow(*attribute, made, copyOf);
    }
}

Node* CloneOf(const Node& node) {
    NodePtr clone(const_cast<Node&>(node).CloneNode(false));
    CopyAttributeChildren(node, *clone, CloneOf);
    return clone.release();
}

/// Makes copies of nodes for a document.
class Importer {
public:
    explicit Importer(Document& document) : document_(document) {}

    Node* operator()(const Node& node) const;

private:
    Node* Import(const Element& element) const;
    Attr* Import(const NodeName& name, const Attr* node, std::string_view value) const;

    Document& document_;
};

Node* Importer::operator()(const Node& node) const {
    switch (static_cast<Node::DOM_NODE_TYPE>(node.NodeType())) {
    case Node::ELEMENT_NODE: return Import(static_cast<const Element&>(node));
    case Node::ATTRIBUTE_NODE:
        return Import(NodeAccess::Name(node), static_cast<const Attr*>(&node),
                      static_cast<const Attr&>(node).Value());
    case Node::TEXT_NODE: return document_.CreateTextNode(node.NodeValue());
    case Node::CDATA_SECTION_NODE: return document_.CreateCDATASection(node.NodeValue());
    case Node::COMMENT_NODE: return document_.CreateComment(node.NodeValue());
    case Node::ENTITY_REFERENCE_NODE: return document_.CreateEntityReference(node.NodeName());
    case Node::PROCESSING_INSTRUCTION_NODE:
        return document_.CreateProcessingInstruction(node.NodeName(), node.NodeValue());
    case Node::DOCUMENT_FRAGMENT_NODE: return document_.CreateDocumentFragment();
    default:
        DOMException::ThrowDOMException(DOMException::NOT_SUPPORTED_ERR,
                                        detail::Message::kTypeNotSupported);
    }
}

// Makes an attribute without the children that `node` has beside its text, which are copied as
// others are. There is no node where nobody has asked for it.
Attr* Importer::Import(const NodeName& name, const Attr* node, std::string_view value) const {
    std::unique_ptr<Attr> attribute(document_.CreateAttributeNS(*name.uri, name.qualified));
    if (node == nullptr || NodeAccess::Has(*node, NodeAccess::kImpliedText)) {
        attribute->SetValue(value);
    } else {
        NodeAccess::SetValue(*attribute, node->NodeValue());
    }
    return attribute.release();
}

Node* Importer::Import(const Element& element) const {
    NodePtr made(document_.CreateElementNS(element.NamespaceURI(), element.NodeName()));
    const AttributeTable* const table = NodeAccess::Table(element);
    if (table == nullptr) return made.release();
    auto& copy = static_cast<Element&>(*made);
    for (const AttributeTable::Entry& entry : table->All()) {
        NodePtr attribute(Import(entry.Name(), entry.Node(), entry.Value()));
        auto* const node = static_cast<Attr*>(attribute.get());
        delete (entry.IsByNamespace() ? copy.SetAttributeNodeNS(node)
                                      : copy.SetAttributeNode(node));
        attribute.release();
    }
    CopyAttributeChildren(element, copy, *this);
    return made.release();
}

// Tells whether a node is a text that may go when another one has its value.
bool IsJoinable(const Node* node) {
    return node != nullptr && node->NodeType() == Node::TEXT_NODE &&
           NodeAccess::First(*node) == nullptr;
}

// Takes the texts behind a text into it. They are destroyed once it has them all.
void JoinFollowing(Text& text) {
    Node* const first = NodeAccess::Next(text);
    if (!IsJoinable(first)) return;
    astring joined = text.Data();
    for (const Node* next = first; IsJoinable(next); next = NodeAccess::Next(*next))
        joined += next->NodeValue();
    text.SetData(joined);
    for (Node* next = first; IsJoinable(next); next = NodeAccess::Next(text))
        delete next;
}

// Joins the texts in the values of attributes.
void JoinTextsOfAttributes(Node& node) {
    AttributeTable* const table = NodeAccess::Table(node);
    if (table == nullptr) return;
    for (AttributeTable::Entry& entry : table->All()) {
        if (entry.Node() == nullptr) continue;
        Node* child = NodeAccess::First(*entry.Node());
        for (; child != nullptr; child = NodeAccess::Next(*child)) {
            if (child->NodeType() == Node::TEXT_NODE) JoinFollowing(static_cast<Text&>(*child));
        }
    }
}

}  // namespace

astring Node::TextContent() const {
    switch (static_cast<DOM_NODE_TYPE>(NodeType())) {
    case ATTRIBUTE_NODE: return static_cast<const Attr*>(this)->Value();
    case TEXT_NODE:
    case CDATA_SECTION_NODE:
    case COMMENT_NODE:
    case PROCESSING_INSTRUCTION_NODE: return NodeValue();
    default: break;
    }
    astring content;
    for (const Node* node = NodeAccess::NextBelow(*this, *this); node != nullptr;
         node = NodeAccess::NextBelow(*this, *node)) {
        if (IsText(*node)) content += node->NodeValue();
    }
    return content;
}

void Node::Normalize() {
    JoinTextsOfAttributes(*this);
    Node* node = NodeAccess::NextBelow(*this, *this);
    while (node != nullptr) {
        Node* const text = node;
        JoinTextsOfAttributes(*node);
        const bool isText = text->NodeType() == TEXT_NODE;
        if (isText) JoinFollowing(static_cast<Text&>(*text));
        node = NodeAccess::NextBelow(*this, *text);
        if (isText && text->NodeValue().empty() && !text->HasChildNodes()) delete text;
    }
}

Node* Node::CloneTree() const {
    if (NodeType() != DOCUMENT_NODE) {
        NodePtr copy(CloneOf(*this));
        CopyBelow(*this, *copy, CloneOf);
        return copy.release();
    }
    NodePtr copy(const_cast<Node*>(this)->CloneNode(false));
    CopyBelow(*this, *copy, Importer(static_cast<Document&>(*copy)));
    return copy.release();
}

Node* Document::ImportNode(const Node& node, bool deep) {
    const Importer importer(*this);
    NodePtr copy(importer(node));
    if (deep || node.NodeType() == ATTRIBUTE_NODE) CopyBelow(node, *copy, importer);
    return copy.release();
}

}  // namespace Dom
