// SPDX-License-Identifier: MIT
#include <espalier/dom/Element.h>
#include <espalier/dom/HTMLDocument.h>

#include "dom/InterfaceName.h"

#include <memory>

namespace Dom {

HTMLDocument::HTMLDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                           DocumentType* doctype, DOMImplementation* implementation)
    : HTMLDocument(doctype, implementation) {
    // The class of the root element is the one that this document makes.
    std::unique_ptr<Element> root(HTMLDocument::CreateElementNS(namespaceURI, qualifiedName));
    AppendChild(root.get());
    (void)root.release();  // it is the document's
}

HTMLDocument::HTMLDocument(DocumentType* doctype, DOMImplementation* implementation)
    : Document(doctype, implementation) {}

HTMLDocument::~HTMLDocument() = default;

void* HTMLDocument::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::HTMLDocument") ? this : Document::QueryInterface(name);
}

Node* HTMLDocument::CloneNode(bool /*deep*/) {
    auto clone = std::unique_ptr<HTMLDocument>(new HTMLDocument(Doctype(), Implementation()));
    clone->CopyProperties(*this);
    return clone.release();
}

}  // namespace Dom
