// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Node.h>

namespace Dom {

/// A document type: a name and the identifiers of the external subset. Loading a document makes
/// none.
class ESPALIER_EXPORT DocumentType : public Node {
public:
    /// \param ownerDocument may be null, for a document type that a document is to be made with
    DocumentType(std::string_view name, std::string_view publicId, std::string_view systemId,
                 Document* ownerDocument);

    void* QueryInterface(const char* name) override;
    Node* CloneNode(bool deep) override;

    /// Returns the name of the root element that the type is for.
    const astring& Name() const { return NodeName(); }
    /// Returns the public identifier, or empty.
    const astring& PublicId() const { return publicId_; }
    /// Returns the system identifier, or empty.
    const astring& SystemId() const { return systemId_; }

private:
    astring publicId_;
    astring systemId_;
};

}  // namespace Dom
