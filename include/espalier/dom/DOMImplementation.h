// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMObject.h>
#include <espalier/dom/Forward.h>

#include <string_view>

namespace Dom {

/// Makes documents and tells what the library implements. It has no state.
class ESPALIER_EXPORT DOMImplementation : public DOMObject {
public:
    void* QueryInterface(const char* name) override;
    ~DOMImplementation() override;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Tells whether a version of a feature is implemented, by this table. Both are compared
    /// exactly.
    ///
    /// | Feature | Versions |
    /// |---|---|
    /// | "Core", "Views", "CSS" | none given, or "2.0" |
    /// | "XML", "XHTML" | none given, or "1.0" |
    /// | "XMLVersion" | "1.0"; deliberately not without a version |
    /// | "HTML" | none given, "4.01" or "4.0" |
    virtual bool HasFeature(std::string_view feature, std::string_view version);

    /// \throws DOMException 9 "Feature not implemented!", always
    virtual DocumentType* CreateDocumentType(std::string_view qualifiedName,
                                             std::string_view publicId, std::string_view systemId);

    /// Makes a document with a root element, which the caller owns; for the name "html" an
    /// HTMLDocument.
    /// \param doctype may be null; it stays the caller's
    virtual Document* CreateDocument(std::string_view namespaceURI, std::string_view qualifiedName,
                                     DocumentType* doctype);
};

}  // namespace Dom
