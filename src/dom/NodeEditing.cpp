// SPDX-License-Identifier: MIT

/// \file
/// How children come and go, with all that is checked before.

#include <espalier/dom/Attr.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Node.h>

#include "dom/Messages.h"
#include "dom/NodeAccess.h"

#include <unordered_set>
#include <vector>

namespace Dom {

using detail::NodeAccess;
namespace Message = detail::Message;

struct Node::ChildMessages {
    const char* readOnlyParent;
    const char* otherDocument;
    const char* ancestor;
};

namespace {

constexpr auto kHierarchy = DOMException::HIERARCHY_REQUEST_ERR;

[[noreturn]] void ThrowNotFound(const char* message) {
    DOMException::ThrowDOMException(DOMException::NOT_FOUND_ERR, message);
}

[[noreturn]] void ThrowHierarchy(const char* message) {
    DOMException::ThrowDOMException(kHierarchy, message);
}

bool HasChild(const Node& parent, DOMNodeType::DOM_NODE_TYPE type) {
    const Node* child = NodeAccess::First(parent);
    while (child != nullptr && child->NodeType() != type)
        child = NodeAccess::Next(*child);
    return child != nullptr;
}

// Deliberate: a text that begins with something other than white space may be a child of a
// document; one that has something behind white space may not.
void CheckTextOfDocument(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\n\r\f");
    if (begin != 0 && begin != std::string_view::npos) ThrowHierarchy(Message::kTextNotAllowed);
}

// Tells whether other nodes may be below a node.
bool MayContain(const Node& node) {
    if (NodeAccess::First(node) != nullptr) return true;
    const detail::AttributeTable* const table = NodeAccess::Table(node);
    if (table == nullptr) return false;
    for (const auto& entry : table->All()) {
        if (entry.Node() != nullptr) return true;
    }
    return false;
}

}  // namespace

bool Node::IsSameDocument(const Node& node) const {
    const Document* const owner = OwnerDocument();
    return owner != nullptr ? node.OwnerDocument() == owner : node.OwnerDocument() == this;
}

// Tells whether this node is `ancestor` or below it, also by way of an attribute. An attribute that
// is a child, too, has two ways up; none is taken twice.
bool Node::IsAtOrBelow(const Node& ancestor) const {
    if (this == &ancestor) return true;
    if (!MayContain(ancestor)) return false;
    std::vector<const Node*> others;
    std::unordered_set<const Node*> seen;
    for (const Node* node = this; node != nullptr;) {
        if (node == &ancestor) return true;
        const Node* above = node->parent_;
        if (node->Has(InMap)) {
            const Element* const element = static_cast<const Attr*>(node)->OwnerElement();
            if (above == nullptr) {
                above = element;
            } else if (seen.insert(node).second) {
                others.push_back(element);
            } else {
                above = nullptr;
            }
        }
        if (above == nullptr && !others.empty()) {
            above = others.back();
            others.pop_back();
        }
        node = above;
    }
    return false;
}

// What every operation that takes a child in checks, once there is a child.
void Node::CheckNewChild(const Node* newChild, const ChildMessages& messages) const {
    CheckReadOnly();
    if (newChild->parent_ != nullptr && newChild->parent_->IsReadOnly()) {
        DOMException::ThrowDOMException(DOMException::NO_MODIFICATION_ALLOWED_ERR,
                                        messages.readOnlyParent);
    }
    if (!IsSameDocument(*newChild)) {
        DOMException::ThrowDOMException(DOMException::WRONG_DOCUMENT_ERR, messages.otherDocument);
    }
    if (IsAtOrBelow(*newChild)) ThrowHierarchy(messages.ancestor);
}

void Node::CheckDocumentChild(const Node& newChild) const {
    const auto& document = static_cast<const Document&>(*this);
    switch (static_cast<DOM_NODE_TYPE>(newChild.NodeType())) {
    case ELEMENT_NODE:
        if (HasChild(*this, ELEMENT_NODE)) ThrowHierarchy(Message::kOneRoot);
        break;
    case DOCUMENT_TYPE_NODE:
        if (document.Doctype() != nullptr || HasChild(*this, DOCUMENT_TYPE_NODE)) {
            ThrowHierarchy(Message::kOneDtd);
        }
        if (HasChild(*this, ELEMENT_NODE)) ThrowHierarchy(Message::kDtdOutsideProlog);
        break;
    // Deliberate: a document takes no declaration either; its properties are what it declares.
    case XML_DECLARATION_NODE: ThrowHierarchy(Message::kDeclarationNotAllowed);
    case TEXT_NODE: CheckTextOfDocument(newChild.NodeValue()); break;
    case COMMENT_NODE:
    case PROCESSING_INSTRUCTION_NODE: break;
    default: ThrowHierarchy(Message::kNotAllowed);
    }
}

Node* Node::AppendChild(Node* newChild) {
    static constexpr ChildMessages kMessages = {
        Message::kAppendFromReadOnly, Message::kAppendFromOther, Message::kAppendAncestor};
    if (newChild == nullptr) ThrowNotFound(Message::kNodeExpected);
    CheckNewChild(newChild, kMessages);
    if (newChild->parent_ == this) ThrowHierarchy(Message::kAlreadyChild);
    if (NodeType() == DOCUMENT_NODE) CheckDocumentChild(*newChild);
    LastChild();  // makes the text that an attribute implies
    NodeAccess::Unlink(*newChild);
    NodeAccess::Link(*this, *newChild, nullptr);
    return newChild;
}

Node* Node::InsertBefore(Node* newChild, Node* refChild) {
    return MoveBefore(newChild, refChild, false);
}

Node* Node::InsertChild(Node* newChild, Node* refChild) {
    return MoveBefore(newChild, refChild, true);
}

Node* Node::MoveBefore(Node* newChild, Node* refChild, bool told) {
    static constexpr ChildMessages kMessages = {
        Message::kInsertFromReadOnly, Message::kInsertFromOther, Message::kInsertAncestor};
    if (refChild == nullptr) return AppendChild(newChild);
    if (newChild == nullptr || refChild->parent_ != this) ThrowNotFound(Message::kNodeExpected);
    CheckNewChild(newChild, kMessages);
    if (newChild == refChild) return newChild;
    NodeAccess::Unlink(*newChild);
    if (told) {
        NodeAccess::InsertTold(*this, *newChild, *refChild);
    } else {
        NodeAccess::InsertUntold(*this, *newChild, *refChild);
    }
    return newChild;
}

Node* Node::ReplaceChild(Node* newChild, Node* oldChild) {
    return MoveInto(newChild, oldChild, false);
}

Node* Node::ExchangeChild(Node* newChild, Node* oldChild) {
    return MoveInto(newChild, oldChild, true);
}

Node* Node::MoveInto(Node* newChild, Node* oldChild, bool told) {
    static constexpr ChildMessages kMessages = {
        Message::kInsertFromReadOnly, Message::kReplaceFromOther, Message::kReplaceAncestor};
    if (newChild == nullptr || oldChild == nullptr || oldChild->parent_ != this) {
        ThrowNotFound(Message::kNodeExpected);
    }
    CheckNewChild(newChild, kMessages);
    NodeAccess::Unlink(*newChild);
    if (newChild == oldChild) return oldChild;
    if (told) {
        NodeAccess::InsertTold(*this, *newChild, *oldChild);
        NodeAccess::Unlink(*oldChild);
    } else {
        NodeAccess::ReplaceUntold(*this, *newChild, *oldChild);
    }
    return oldChild;
}

Node* Node::RemoveChild(Node* oldChild) {
    if (oldChild == nullptr) ThrowNotFound(Message::kNodeExpected);
    if (oldChild->parent_ != this) ThrowNotFound(Message::kNotChild);
    CheckReadOnly();
    NodeAccess::Unlink(*oldChild);
    return oldChild;
}

}  // namespace Dom
