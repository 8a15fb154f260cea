// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/HTMLLinkElement.h>
#include <espalier/dom/HTMLMetaElement.h>
#include <espalier/dom/HTMLStyleElement.h>
#include <espalier/dom/NodePtr.h>
#include <espalier/dom/Text.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/HtmlElements.h"
#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"
#include "dom/UriReference.h"

#include <memory>
#include <utility>  // std::move

namespace Dom {

using detail::DocumentData;
using detail::NodeAccess;

namespace {

bool IsElement(const Node& node, std::string_view localName) {
    return node.NodeType() == Node::ELEMENT_NODE && node.LocalNameView() == localName;
}

// Returns the first child that is an element of that name, or null.
Element* ChildElement(const Node* parent, std::string_view localName) {
    if (parent == nullptr) return nullptr;
    for (Node& child : parent->Children()) {
        if (IsElement(child, localName)) return static_cast<Element*>(&child);
    }
    return nullptr;
}

// Puts an element with the namespace and the prefix of the root into a parent.
Element& InsertLike(Element& root, std::string_view localName, Node& parent, Node* next) {
    const astring prefix = root.Prefix();
    const astring name = prefix.empty() ? astring(localName) : prefix + ':' + localName;
    NodePtr made(root.OwnerDocument()->CreateElementNS(root.NamespaceURI(), name));
    parent.InsertChild(made.get(), next);
    return static_cast<Element&>(*made.release());
}

}  // namespace

HTMLElement* detail::MakeHtmlElement(DocumentData& data, const NodeName* name,
                                     std::string_view className) {
    if (className == "style") return NodeAccess::MakeLinked<HTMLStyleElement>(data, name);
    if (className == "link") return NodeAccess::MakeLinked<HTMLLinkElement>(data, name);
    if (className == "meta") return NodeAccess::MakeLinked<HTMLMetaElement>(data, name);
    return NodeAccess::MakeLinked<HTMLElement>(data, name);
}

HTMLDocument::HTMLDocument() : HTMLDocument(nullptr, nullptr) {}

HTMLDocument::HTMLDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                           DocumentType* doctype, DOMImplementation* implementation)
    : HTMLDocument(doctype, implementation) {
    // The class of the root element is the one that this document makes.
    std::unique_ptr<Element> root(HTMLDocument::CreateElementNS(namespaceURI, qualifiedName));
    AppendChild(root.get());
    (void)root.release();  // it is the document's
}

HTMLDocument::HTMLDocument(DocumentType* doctype, DOMImplementation* implementation)
    : Document(doctype, implementation), forms_(this, NodeList::Forms) {}

HTMLDocument::~HTMLDocument() = default;

void* HTMLDocument::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::HTMLDocument") ? this : Document::QueryInterface(name);
}

Node* HTMLDocument::CloneNode(bool /*deep*/) {
    auto clone = std::unique_ptr<HTMLDocument>(new HTMLDocument(Doctype(), Implementation()));
    clone->CopyProperties(*this);
    clone->referrer_ = referrer_;
    clone->domain_ = domain_;
    clone->url_ = url_;
    clone->cookie_ = cookie_;
    return clone.release();
}

// The factory.

Element* HTMLDocument::CreateElement(std::string_view name) {
    DocumentData& data = NodeAccess::Data(*this);
    Element* const made = detail::MakeHtmlElement(data, data.names.Intern({}, name), name);
    ++data.freeNodes;
    return made;
}

Element* HTMLDocument::CreateElementNS(std::string_view namespaceURI,
                                       std::string_view qualifiedName) {
    DocumentData& data = NodeAccess::Data(*this);
    const detail::NodeName* const name = data.names.Intern(namespaceURI, qualifiedName);
    Element* const made = detail::MakeHtmlElement(data, name, detail::ClassNameOf(*name));
    ++data.freeNodes;
    return made;
}

// Parts of the page.

astring HTMLDocument::Title() const {
    const Element* const head = ChildElement(DocumentElement(), "head");
    if (head == nullptr) return {};
    for (const Node& child : head->Children()) {
        if (!IsElement(child, "title")) continue;
        const Node* const first = NodeAccess::First(child);
        if (first == nullptr) continue;
        const bool isText =
            first->NodeType() == TEXT_NODE || first->NodeType() == CDATA_SECTION_NODE;
        return isText ? first->NodeValue() : astring();
    }
    return {};
}

void HTMLDocument::SetTitle(std::string_view text) {
    Element* const root = DocumentElement();
    if (root == nullptr) return;
    NodePtr content(CreateTextNode(text));  // first, as the text may be in the old one
    Element* head = ChildElement(root, "head");
    // Not by InsertBefore(), which would hide the head from whoever walks forward.
    if (head == nullptr) head = &InsertLike(*root, "head", *root, ChildElement(root, "body"));
    Element* title = ChildElement(head, "title");
    if (title == nullptr) title = &InsertLike(*root, "title", *head, nullptr);
    while (Node* const child = NodeAccess::First(*title))
        delete title->RemoveChild(child);
    title->AppendChild(content.get());
    (void)content.release();
}

Element* HTMLDocument::Body() const { return ChildElement(DocumentElement(), "body"); }

HTMLCollection HTMLDocument::Images() const {
    return {const_cast<HTMLDocument*>(this), NodeList::Images};
}

HTMLCollection HTMLDocument::Applets() const {
    return {const_cast<HTMLDocument*>(this), NodeList::Applets};
}

HTMLCollection HTMLDocument::Links() const {
    return {const_cast<HTMLDocument*>(this), NodeList::Links};
}

HTMLCollection HTMLDocument::Anchors() const {
    return {const_cast<HTMLDocument*>(this), NodeList::Anchors};
}

NodeList HTMLDocument::GetElementsByName(std::string_view name) const {
    return Document::GetElementsByName(name);
}

astring HTMLDocument::Domain() const {
    return domain_.empty() ? astring(detail::HostOf(URL())) : domain_;
}

// Styles.

CSS::CSSStyleDeclaration* HTMLDocument::GetOverrideStyle(Element* element,
                                                         std::string_view pseudo) {
    if (element == nullptr || element->OwnerDocument() != this) return nullptr;
    detail::OverrideStyles& styles = NodeAccess::Data(*this).overrides[element];
    NodeAccess::MarkOverrides(*element);
    return &styles.try_emplace(astring(pseudo), nullptr).first->second;
}

const CSS::CSSStyleDeclaration* HTMLDocument::FindOverrideStyle(const Element& element,
                                                                std::string_view pseudo) const {
    const auto& overrides = NodeAccess::Data(*this).overrides;
    const auto styles = overrides.find(&element);
    if (styles == overrides.end()) return nullptr;
    const auto found = styles->second.find(pseudo);
    return found == styles->second.end() ? nullptr : &found->second;
}

// Writing the page.

void HTMLDocument::Open() {
    NodeAccess::Clear(*this);
    written_.emplace();
}

void HTMLDocument::Write(std::string_view text) {
    const astring own(written_ ? std::string_view() : text);  // it may be in what Open() destroys
    if (!written_) {
        Open();
        text = own;
    }
    *written_ += text;
}

void HTMLDocument::Writeln(std::string_view text) {
    Write(text);
    *written_ += '\n';
}

void HTMLDocument::Close() {
    if (!written_) return;
    const astring text = std::move(*written_);
    written_.reset();
    const astring uri = DocumentURI();
    LoadXml(text, uri);
}

}  // namespace Dom
