// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/Node.h>

#include "dom/Implementation.h"
#include "dom/InterfaceName.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"

#include <memory>
#include <new>

namespace Dom {

using detail::NodeAccess;
namespace Message = detail::Message;

namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";

// Returns a name for a node of a document, or of none.
const detail::NodeName* InternName(Document* document, std::string_view uri,
                                   std::string_view name) {
    if (document != nullptr) return NodeAccess::Data(*document).names.Intern(uri, name);
    auto data = std::make_unique<detail::DocumentData>(nullptr);
    const detail::NodeName* const interned = data->names.Intern(uri, name);
    (void)data.release();  // its node deletes it
    return interned;
}

}  // namespace

Node::Node(DOM_NODE_TYPE type, std::string_view namespaceURI, std::string_view name,
           Document* ownerDocument)
    : DOMNodeType(type), name_(InternName(ownerDocument, namespaceURI, name)) {
    list_.word_ = NodeList::IsEmbedded;
    ++name_->data->freeNodes;
    NodeAccess::MarkOwnMemory(*this);
}

Node::Node(detail::DocumentData& data)
    : DOMNodeType(DOCUMENT_NODE), name_(data.Name(detail::DocumentData::FixedName::Document)) {
    list_.word_ = NodeList::IsEmbedded;
}

void* Node::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::Node") ? this : nullptr;
}

const astring& Node::EmptyText() {
    static const astring empty;
    return empty;
}

void Node::CheckReadOnly() const {
    if (IsReadOnly()) {
        DOMException::ThrowDOMException(DOMException::NO_MODIFICATION_ALLOWED_ERR,
                                        Message::kReadOnly);
    }
}

void Node::SetNodeValue(std::string_view value) {
    if (rest_.value != nullptr && !Has(SharedValue)) {
        *rest_.value = value;
    } else {
        detail::NodePool& pool = name_->data->pool;
        astring text(value);
        rest_.value = ::new (pool.Allocate(sizeof(astring))) astring(std::move(text));
        Set(SharedValue, false);
    }
    Set(ValueBearing);
    ValueHasChanged();
}

// A value that grows piece by piece is not copied with each.
void Node::AppendNodeValue(std::string_view value) {
    if (!HasValue() || Has(SharedValue)) return SetNodeValue(NodeValue() + value);
    rest_.value->append(value);
    ValueHasChanged();
}

void Node::ValueHasChanged() {
    if (rest_.value->capacity() > astring().capacity()) NodeAccess::MarkOwnMemory(*this);
    // Lists of form controls look at the values of attributes.
    if (parent_ != nullptr && parent_->NodeType() == ATTRIBUTE_NODE) {
        name_->data->AttributesHaveChanged();
    } else {
        ++name_->data->valueChanges;
    }
}

void Node::SetPrefix(std::string_view prefix) {
    CheckReadOnly();
    const bool isWrong = NamespaceURI().empty() || (prefix == "xml" && NamespaceURI() != kXmlUri) ||
                         (prefix == "xmlns" && NamespaceURI() != kXmlnsUri) ||
                         (NodeType() == ATTRIBUTE_NODE && NodeName() == "xmlns");
    if (isWrong) {
        DOMException::ThrowDOMException(DOMException::NAMESPACE_ERR, Message::kInvalidPrefix);
    }
    const astring name = astring(prefix) + ':' + LocalNameView();
    name_ = name_->data->names.Intern(NamespaceURI(), name);
    ++name_->data->stamp;
}

astring Node::BaseURI() const {
    const Document* const document = name_->Owner();
    if (document == nullptr) return {};
    const std::string_view uri = document->DocumentURI();
    const std::size_t slash = uri.find_last_of("/\\");
    return slash == std::string_view::npos ? astring() : astring(uri.substr(0, slash + 1));
}

bool Node::IsSupported(std::string_view feature, std::string_view version) const {
    return detail::ImplementationOf(name_->Owner()).HasFeature(feature, version);
}

Node* Node::SlowFirstChild() const {
    if (Has(ImpliedText)) return static_cast<Attr*>(const_cast<Node*>(this))->MakeImpliedText();
    return name_->data->otherLinks.First(*this);
}

Node* Node::SlowLastChild() const {
    return static_cast<Attr*>(const_cast<Node*>(this))->MakeImpliedText();
}

Node* Node::SlowPrevious() const { return name_->data->otherLinks.Previous(*this); }

Node* Node::SlowNext() const { return name_->data->otherLinks.Next(*this); }

bool Node::HasAttributes() const {
    const detail::AttributeTable* const table = NodeAccess::Table(*this);
    return table != nullptr && table->Count() > 0;
}

NamedNodeMap* Node::Attributes() {
    if (NodeType() != ELEMENT_NODE) return nullptr;
    auto& element = static_cast<Element&>(*this);
    return &element.Table().Map(element);
}

bool Node::IsParentOf(const Node* node) const {
    if (node == nullptr || node->OwnerDocument() != OwnerDocument()) return false;
    const Node* ancestor = node->ParentNode();
    while (ancestor != nullptr && ancestor != this)
        ancestor = ancestor->ParentNode();
    return ancestor != nullptr;
}

ChildRange Node::Children() const {
    return ChildRange(Has(ImpliedText) ? FirstChild() : TrueFirst());
}

Node* ChildRange::Iterator::Next(const Node* node) {
    return node == nullptr ? nullptr : NodeAccess::Next(*node);
}

}  // namespace Dom
