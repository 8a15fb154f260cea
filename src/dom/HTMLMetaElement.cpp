// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLMetaElement.h>

#include "dom/InterfaceName.h"
#include "dom/NodeAccess.h"

namespace Dom {

HTMLMetaElement::HTMLMetaElement(std::string_view namespaceURI, std::string_view qualifiedName,
                                 Document* ownerDocument)
    : HTMLElement(namespaceURI, qualifiedName, ownerDocument) {}

HTMLMetaElement::HTMLMetaElement(const detail::NodeName* name) : HTMLElement(name) {}

HTMLMetaElement::~HTMLMetaElement() = default;

void* HTMLMetaElement::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::HTMLMetaElement") ? this
                                                             : HTMLElement::QueryInterface(name);
}

Node* HTMLMetaElement::CloneNode(bool /*deep*/) { return detail::NodeAccess::CloneElement(*this); }

const astring& HTMLMetaElement::Content() const { return GetXHtmlAttribute("content"); }
const astring& HTMLMetaElement::HttpEquiv() const { return GetXHtmlAttribute("http-equiv"); }
const astring& HTMLMetaElement::Name() const { return GetXHtmlAttribute("name"); }
const astring& HTMLMetaElement::Scheme() const { return GetXHtmlAttribute("scheme"); }

}  // namespace Dom
