// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/sax/Forward.h>

namespace sax {

/// Finds the input of an external entity. An XMLReader keeps one for whoever asks for it and never
/// calls it, because it reads nothing but the document.
class ESPALIER_EXPORT EntityResolver {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~EntityResolver();

    /// \return an input, which the caller deletes, or null for the one that `systemId` names
    virtual InputSource* resolveEntity(const char* publicId, const char* systemId) = 0;

protected:
    EntityResolver() = default;
    EntityResolver(const EntityResolver&) = default;
    EntityResolver& operator=(const EntityResolver&) = default;
};

}  // namespace sax
