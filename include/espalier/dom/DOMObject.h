// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Dom {

/// The root of interfaces that are asked for by name.
class ESPALIER_EXPORT DOMObject {
public:
    DOMObject() = default;
    DOMObject(const DOMObject&) = default;
    DOMObject& operator=(const DOMObject&) = default;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `name`, for example "Dom::DOMObject", or null when it is
    /// none. The pointer is that of the subobject of the class, so that it may be cast to it.
    virtual void* QueryInterface(const char* name);

    virtual ~DOMObject();
};

}  // namespace Dom
