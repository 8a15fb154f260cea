// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/HTMLDocument.h>

#include "dom/Implementation.h"
#include "dom/InterfaceName.h"
#include "dom/Messages.h"

#include <algorithm>

namespace Dom {

namespace {

struct Feature {
    std::string_view name;
    std::string_view version;
};

// Deliberate: "XMLVersion" is the one feature that no missing version stands for.
constexpr Feature kFeatures[] = {
    {"Core", ""},     {"Core", "2.0"},       {"Views", ""}, {"Views", "2.0"}, {"XML", ""},
    {"XML", "1.0"},   {"XMLVersion", "1.0"}, {"XHTML", ""}, {"XHTML", "1.0"}, {"HTML", ""},
    {"HTML", "4.01"}, {"HTML", "4.0"},       {"CSS", ""},   {"CSS", "2.0"},
};

}  // namespace

void* DOMObject::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::DOMObject") ? this : nullptr;
}

DOMObject::~DOMObject() = default;

void* DOMImplementation::QueryInterface(const char* name) {
    return detail::IsInterface(name, "Dom::DOMImplementation") ? this
                                                               : DOMObject::QueryInterface(name);
}

DOMImplementation::~DOMImplementation() = default;

bool DOMImplementation::HasFeature(std::string_view feature, std::string_view version) {
    return std::ranges::any_of(kFeatures, [&](const Feature& known) {
        return known.name == feature && known.version == version;
    });
}

DocumentType* DOMImplementation::CreateDocumentType(std::string_view /*qualifiedName*/,
                                                    std::string_view /*publicId*/,
                                                    std::string_view /*systemId*/) {
    DOMException::ThrowDOMException(DOMException::NOT_SUPPORTED_ERR, detail::Message::kNoFeature);
}

Document* DOMImplementation::CreateDocument(std::string_view namespaceURI,
                                            std::string_view qualifiedName, DocumentType* doctype) {
    if (qualifiedName == "html") {
        return new HTMLDocument(namespaceURI, qualifiedName, doctype, this);
    }
    return new Document(namespaceURI, qualifiedName, doctype, this);
}

DOMImplementation& detail::ImplementationOf(const Document* document) {
    static DOMImplementation shared;
    DOMImplementation* const own = document == nullptr ? nullptr : document->Implementation();
    return own == nullptr ? shared : *own;
}

}  // namespace Dom
