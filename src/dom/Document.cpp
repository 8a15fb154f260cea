// SPDX-License-Identifier: MIT
#include <espalier/dom/Attr.h>
#include <espalier/dom/CDATASection.h>
#include <espalier/dom/Comment.h>
#include <espalier/dom/DOMException.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/DocumentFragment.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/EntityReference.h>
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/Text.h>

#include "dom/AttributeTable.h"
#include "dom/Implementation.h"
#include "dom/InterfaceName.h"
#include "dom/Messages.h"
#include "dom/NodeAccess.h"
#include "dom/StyleTarget.h"

#include <memory>

namespace Dom {

using detail::DocumentData;
using detail::NodeAccess;
using FixedName = DocumentData::FixedName;
namespace Message = detail::Message;

namespace {

// The next node of a walk through a document along the links that nodes show.
const Node* ShownBehind(const Node& document, const Node* node) {
    if (const Node* const child = node->FirstChild()) return child;
    while (node != nullptr && node != &document && node->NextSibling() == nullptr) {
        node = node->ParentNode();
    }
    return node == nullptr || node == &document ? nullptr : node->NextSibling();
}

// Returns the attribute "id", or null.
const detail::AttributeTable::Entry* IdOf(const Node& node) {
    const detail::AttributeTable* const table = NodeAccess::Table(node);
    if (table == nullptr) return nullptr;
    const std::size_t index = table->Find("id");
    return index == detail::AttributeTable::kNone ? nullptr : &table->At(index);
}

}  // namespace

Document::Document() : Document(nullptr, nullptr) {}

Document::Document(DocumentType* doctype, DOMImplementation* implementation)
    : Node(*new DocumentData(this)), implementation_(implementation), doctype_(doctype) {}

Document::Document(std::string_view namespaceURI, std::string_view qualifiedName,
                   DocumentType* doctype, DOMImplementation* implementation)
    : Document(doctype, implementation) {
    DocumentData& data = NodeAccess::Data(*this);
    AppendChild(NodeAccess::Make<Element>(data, data.names.Intern(namespaceURI, qualifiedName)));
}

Document::~Document() {
    DocumentData& data = NodeAccess::Data(*this);
    data.document = nullptr;
    // Nodes that own nothing but pool memory, and that nobody else holds, go with the pool.
    if (data.GoesWithPool()) NodeAccess::SetFirst(*this, nullptr);
}

void* Document::QueryInterface(const char* name) {
    if (detail::IsInterface(name, "Dom::Document")) return this;
    if (detail::IsInterface(name, "DocumentStyle") ||
        detail::IsInterface(name, "Dom::StyleSheets::DocumentStyle")) {
        return static_cast<StyleSheets::DocumentStyle*>(this);
    }
    return Node::QueryInterface(name);
}

Node* Document::CloneNode(bool /*deep*/) {
    auto clone = std::unique_ptr<Document>(new Document(doctype_, implementation_));
    clone->CopyProperties(*this);
    return clone.release();
}

void Document::CopyProperties(const Document& other) {
    documentURI_ = other.documentURI_;
    inputEncoding_ = other.inputEncoding_;
    xmlEncoding_ = other.xmlEncoding_;
    xmlVersion_ = other.xmlVersion_;
    xmlStandalone_ = other.xmlStandalone_;
    strictErrorChecking_ = other.strictErrorChecking_;
}

// The factory.

Element* Document::CreateElement(std::string_view name) {
    return Document::CreateElementNS({}, name);
}

Element* Document::CreateElementNS(std::string_view namespaceURI, std::string_view qualifiedName) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<Element>(data, data.names.Intern(namespaceURI, qualifiedName));
}

Attr* Document::CreateAttribute(std::string_view name) {
    return Document::CreateAttributeNS({}, name);
}

Attr* Document::CreateAttributeNS(std::string_view namespaceURI, std::string_view qualifiedName) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<Attr>(data, data.names.Intern(namespaceURI, qualifiedName),
                                  std::string_view());
}

DocumentFragment* Document::CreateDocumentFragment() {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<DocumentFragment>(data, data.Name(FixedName::Fragment));
}

Text* Document::CreateTextNode(std::string_view text) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<Text>(data, data.Name(FixedName::Text), text);
}

Comment* Document::CreateComment(std::string_view text) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<Comment>(data, data.Name(FixedName::Comment), text);
}

CDATASection* Document::CreateCDATASection(std::string_view text) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<CDATASection>(data, data.Name(FixedName::CDATASection), text);
}

EntityReference* Document::CreateEntityReference(std::string_view name) {
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<EntityReference>(data, data.names.Intern({}, name));
}

ProcessingInstruction* Document::CreateProcessingInstruction(std::string_view target,
                                                             std::string_view text) {
    if (target == detail::kStyleTarget) return new StyleProcessingInstruction(text, this);
    DocumentData& data = NodeAccess::Data(*this);
    return NodeAccess::Make<ProcessingInstruction>(data, data.names.Intern({}, target), text);
}

// Properties.

Element* Document::DocumentElement() const {
    Node* child = FirstChild();
    while (child != nullptr && child->NodeType() != ELEMENT_NODE)
        child = child->NextSibling();
    return static_cast<Element*>(child);
}

void Document::CheckVersion(std::string_view version) const {
    if (detail::ImplementationOf(this).HasFeature("XMLVersion", version)) return;
    DOMException::ThrowDOMException(DOMException::NOT_SUPPORTED_ERR,
                                    astring(Message::kVersion) + version + Message::kNotSupported);
}

void Document::SetXmlVersion(std::string_view version) {
    CheckVersion(version);
    xmlVersion_ = version;
}

void Document::NormalizeDocument() {
    if (!strictErrorChecking_) return;
    DOMException::ThrowDOMException(DOMException::INVALID_ACCESS_ERR, Message::kNotImplemented);
}

Node* Document::RenameNode(Node* /*node*/, std::string_view /*namespaceURI*/,
                           std::string_view /*qualifiedName*/) {
    DOMException::ThrowDOMException(DOMException::INVALID_ACCESS_ERR, Message::kNotImplemented);
}

// Looking up.

Element* Document::GetElementById(std::string_view id) const {
    for (const Node* node = FirstChild(); node != nullptr; node = ShownBehind(*this, node)) {
        const detail::AttributeTable::Entry* const entry = IdOf(*node);
        if (entry != nullptr && entry->FieldValue() == id) {
            return static_cast<Element*>(const_cast<Node*>(node));
        }
    }
    return nullptr;
}

Element* Document::FindById(std::string_view id) const {
    for (Node* node = NodeAccess::First(*this); node != nullptr;
         node = NodeAccess::NextBelow(*this, *node)) {
        const detail::AttributeTable::Entry* const entry = IdOf(*node);
        if (entry != nullptr && entry->Value() == id) return static_cast<Element*>(node);
    }
    return nullptr;
}

NodeList Document::GetElementsByTagName(std::string_view name) const {
    return {const_cast<Document*>(this), NodeList::ByName, name};
}

NodeList Document::GetElementsByTagNameNS(std::string_view namespaceURI,
                                          std::string_view localName) const {
    return {const_cast<Document*>(this), NodeList::ByName, namespaceURI, localName};
}

NodeList Document::GetElementsByName(std::string_view name) const {
    return {const_cast<Document*>(this), NodeList::ByFormName, name};
}

void Document::SetDocumentURI(std::string_view uri) {
    documentURI_ = uri;
    ++NodeAccess::Data(*this).valueChanges;
}

}  // namespace Dom
