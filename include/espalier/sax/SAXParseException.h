// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/Forward.h>
#include <espalier/sax/SAXException.h>

namespace sax {

/// An error in a document, and where it is.
class ESPALIER_EXPORT SAXParseException : public SAXException {
public:
    SAXParseException();
    explicit SAXParseException(const char* message);
    explicit SAXParseException(const astring& message);

    /// Takes over what `locator` tells now; without one, the identifiers are empty and the numbers
    /// 0.
    SAXParseException(const astring& message, const Locator* locator);

    SAXParseException(const astring& message, const astring& publicId, const astring& systemId,
                      int lineNumber, int columnNumber);

    SAXParseException(const SAXParseException& other);
    SAXParseException& operator=(const SAXParseException& other);

    ~SAXParseException() override;

    /// Returns the public identifier of the document, or an empty string.
    const astring& getPublicId() const { return publicId_; }
    /// Returns the system identifier of the document, or an empty string.
    const astring& getSystemId() const { return systemId_; }
    /// Returns the line, from 1 on; 0 when it is not known.
    int getLineNumber() const { return lineNumber_; }
    /// Returns the position in the line in characters, from 1 on; 0 when it is not known.
    int getColumnNumber() const { return columnNumber_; }

private:
    astring publicId_;
    astring systemId_;
    int lineNumber_ = 0;
    int columnNumber_ = 0;
};

}  // namespace sax
