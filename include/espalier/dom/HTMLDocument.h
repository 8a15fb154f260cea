// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>

namespace Dom {

/// A document of XHTML, with the root element "html".
class ESPALIER_EXPORT HTMLDocument : public Document {
public:
    /// Makes a document with a root element, which this class makes itself.
    /// \param doctype kept for Doctype(); may be null, stays the caller's
    /// \param implementation what Implementation() returns; may be null
    HTMLDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                 DocumentType* doctype, DOMImplementation* implementation);
    ~HTMLDocument() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new HTMLDocument, as Document::CloneNode() does.
    Node* CloneNode(bool deep) override;

protected:
    /// Makes a document without a root element.
    HTMLDocument(DocumentType* doctype, DOMImplementation* implementation);
};

}  // namespace Dom
