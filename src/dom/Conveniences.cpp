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

#include <memory>
#include <utility>  // std::pair
#include <vector>

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

// Nodes, each with the copy that is to get copies of what is below the node.
using Pending = std::vector<std::pair<const Node*, Node*>>;

// Copies what is below a node to below its copy. Depth costs no stack.
template <typename Maker>
void CopyBelow(const Node& source, Node& copy, const Maker& make, Pending& pending) {
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
        to = &Append(*to, NodePtr(make(*next, pending)));
        from = next;
    }
}

// Copies all that is pending, and what becomes so meanwhile: elements may be below attributes, and
// these have attributes again.
template <typename Maker>
void CopyPending(const Maker& make, Pending& pending) {
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        CopyBelow(*source, *copy, make, pending);
    }
}

template <typename Maker>
Node* CopyOf(const Node& source, const Maker& make, bool deep) {
    Pending pending;
    NodePtr copy(make(source, pending));
    if (deep) pending.emplace_back(&source, copy.get());
    CopyPending(make, pending);
    return copy.release();
}

// Tells whether an attribute has the single text that its value implies.
bool ShowsText(const AttributeTable::Entry& entry) {
    return entry.Node() == nullptr ? !entry.IsChildless()
                                   : NodeAccess::Has(*entry.Node(), NodeAccess::kImpliedText);
}

bool HasChildren(const Node* node) {
    return node != nullptr && NodeAccess::First(*node) != nullptr;
}

// Lets the clones of attributes have what is below these.
void CloneBelowAttributes(const Node& source, Node& clone, Pending& pending) {
    const AttributeTable* const table = NodeAccess::Table(source);
    AttributeTable* const clones = NodeAccess::Table(clone);
    if (table == nullptr || clones == nullptr) return;
    for (const AttributeTable::Entry& entry : table->All()) {
        const std::size_t index = clones->FindKeyOf(entry);
        if (index == AttributeTable::kNone) continue;
        if (ShowsText(entry)) {
            clones->At(index).ShowText();
        } else if (HasChildren(entry.Node())) {
            auto& owner = static_cast<Element&>(clone);
            pending.emplace_back(entry.Node(), &AttributeTable::NodeOf(owner, clones->At(index)));
        }
    }
}

// Lets the clone of an attribute have its own value and its text. The clone has the text as its own
// value, too, which the value of another attribute that it is below is made of.
void CloneText(const Attr& source, Attr& clone) {
    const bool showsText = NodeAccess::Has(source, NodeAccess::kImpliedText);
    if (source.NodeValue() == clone.NodeValue()) {
        if (showsText) NodeAccess::ShowText(clone);
        return;
    }
    const astring& text = source.Value();
    NodeAccess::SetValue(clone, source.NodeValue());
    if (showsText) Append(clone, NodePtr(clone.OwnerDocument()->CreateTextNode(text)));
}

Node* CloneOf(const Node& node, Pending& pending) {
    NodePtr clone(const_cast<Node&>(node).CloneNode(false));
    CloneBelowAttributes(node, *clone, pending);
    if (node.NodeType() == Node::ATTRIBUTE_NODE) {
        CloneText(static_cast<const Attr&>(node), static_cast<Attr&>(*clone));
    }
    return clone.release();
}

/// Makes copies of nodes for a document.
class Importer {
public:
    explicit Importer(Document& document) : document_(document) {}

    Node* operator()(const Node& node, Pending& pending) const;

private:
    Node* Import(const Element& element, Pending& pending) const;
    NodePtr Import(const AttributeTable::Entry& other) const;

    Document& document_;
};

Node* Importer::operator()(const Node& node, Pending& pending) const {
    switch (static_cast<Node::DOM_NODE_TYPE>(node.NodeType())) {
    case Node::ELEMENT_NODE: return Import(static_cast<const Element&>(node), pending);
    case Node::ATTRIBUTE_NODE: {
        auto& attribute = const_cast<Attr&>(static_cast<const Attr&>(node));
        const auto kind = AttributeTable::Entry::ByName;
        return Import({&NodeAccess::Name(node), kind, &attribute}).release();
    }
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

// Makes an attribute without the children that the other one has beside its text, which are copied
// as others are. Its field is that of the other one, which is empty when its value is its text
// only.
NodePtr Importer::Import(const AttributeTable::Entry& other) const {
    const NodeName& name = other.Name();
    std::unique_ptr<Attr> attribute(document_.CreateAttributeNS(*name.uri, name.qualified));
    const bool isField = other.FieldValue() == other.Value();
    if (ShowsText(other) && isField) {
        attribute->SetValue(other.Value());
    } else {
        NodeAccess::SetValue(*attribute, other.FieldValue());
        if (ShowsText(other)) Append(*attribute, NodePtr(document_.CreateTextNode(other.Value())));
    }
    if (other.Node() != nullptr) {
        NodeAccess::Set(*attribute, NodeAccess::kIsSpecified, other.Node()->Specified());
    }
    return attribute;
}

Node* Importer::Import(const Element& element, Pending& pending) const {
    NodePtr made(document_.CreateElementNS(element.NamespaceURI(), element.NodeName()));
    const AttributeTable* const table = NodeAccess::Table(element);
    if (table == nullptr) return made.release();
    auto& copy = static_cast<Element&>(*made);
    for (const AttributeTable::Entry& entry : table->All()) {
        NodePtr attribute = Import(entry);
        auto* const node = static_cast<Attr*>(attribute.get());
        const NodePtr replaced(entry.IsByNamespace() ? copy.SetAttributeNodeNS(node)
                                                     : copy.SetAttributeNode(node));
        (void)attribute.release();
        if (replaced != nullptr) {
            std::erase_if(pending, [&](const auto& one) { return one.second == replaced.get(); });
        }
        if (HasChildren(entry.Node())) pending.emplace_back(entry.Node(), node);
    }
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
    if (NodeType() != DOCUMENT_NODE) return CopyOf(*this, CloneOf, true);
    NodePtr copy(const_cast<Node*>(this)->CloneNode(false));
    Pending pending{{this, copy.get()}};
    CopyPending(Importer(static_cast<Document&>(*copy)), pending);
    return copy.release();
}

Node* Document::ImportNode(const Node& node, bool deep) {
    return CopyOf(node, Importer(*this), deep || node.NodeType() == ATTRIBUTE_NODE);
}

}  // namespace Dom
