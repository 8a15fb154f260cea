// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>

namespace Dom {

/// A document of XHTML, with the root element "html".
class ESPALIER_EXPORT HTMLDocument : public Document {
public:
    /// \param doctype and \param implementation as those of Document
    HTMLDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                 DocumentType* doctype, DOMImplementation* implementation);
    ~HTMLDocument() override;

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

protected:
    /// Makes a document without a root element.
    HTMLDocument(DocumentType* doctype, DOMImplementation* implementation);
};

}  // namespace Dom
