// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace sax {

/// Receives the declarations of notations and unparsed entities in the internal subset, in their
/// order, behind the document type. Identifiers that are not given are empty.
class ESPALIER_EXPORT DTDHandler {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~DTDHandler();

    /// Receives a notation. An identifier that it has not is an empty string.
    virtual void notationDecl(const char* name, const char* publicId, const char* systemId) = 0;

    /// Receives an entity that is no XML, with the name of its notation.
    virtual void unparsedEntityDecl(const char* name, const char* publicId, const char* systemId,
                                    const char* notationName) = 0;

protected:
    DTDHandler() = default;
    DTDHandler(const DTDHandler&) = default;
    DTDHandler& operator=(const DTDHandler&) = default;
};

}  // namespace sax
