// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace sax {

/// Tells where in a document an event belongs.
class ESPALIER_EXPORT Locator {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~Locator();

    /// Returns the public identifier of the document, or an empty string.
    virtual const char* getPublicId() const = 0;
    /// Returns the system identifier of the document, or an empty string.
    virtual const char* getSystemId() const = 0;
    /// Returns the line, from 1 on; 0 before the first and behind the last node.
    virtual int getLineNumber() const = 0;
    /// Returns the position in the line in characters, from 1 on; 0 as above.
    virtual int getColumnNumber() const = 0;

protected:
    Locator() = default;
    Locator(const Locator&) = default;
    Locator& operator=(const Locator&) = default;
};

}  // namespace sax
