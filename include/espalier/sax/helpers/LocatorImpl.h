// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/Locator.h>

namespace sax::helpers {

/// A place in a document that stays what it is: a copy of what a Locator tells.
class ESPALIER_EXPORT LocatorImpl : public Locator {
public:
    /// Makes a place with empty identifiers and the numbers 0.
    LocatorImpl();

    /// Takes over what `locator` tells now; null is as without one.
    explicit LocatorImpl(const Locator* locator);

    LocatorImpl(const LocatorImpl& other);
    LocatorImpl& operator=(const LocatorImpl& other);

    ~LocatorImpl() override;

    const char* getPublicId() const override;
    const char* getSystemId() const override;
    int getLineNumber() const override;
    int getColumnNumber() const override;

    /// \name Set a part
    /// A null pointer is an empty text.
    /// @{
    void setPublicId(const char* publicId);
    void setSystemId(const char* systemId);
    void setLineNumber(int lineNumber) { lineNumber_ = lineNumber; }
    void setColumnNumber(int columnNumber) { columnNumber_ = columnNumber; }
    /// @}

private:
    astring publicId_;
    astring systemId_;
    int lineNumber_ = 0;
    int columnNumber_ = 0;
};

}  // namespace sax::helpers
