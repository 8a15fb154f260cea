// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/sax/Forward.h>

namespace sax {

/// Receives the errors that an XMLReader finds itself. It never calls warning() and error().
class ESPALIER_EXPORT ErrorHandler {
public:
    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~ErrorHandler();

    /// Never called by XMLReader.
    virtual void warning(const SAXParseException& exception) = 0;
    /// Never called by XMLReader.
    virtual void error(const SAXParseException& exception) = 0;

    /// Receives an error that ends the document. When it returns, endDocument() follows; what it
    /// throws passes through XMLReader::parse().
    virtual void fatalError(const SAXParseException& exception) = 0;

protected:
    ErrorHandler() = default;
    ErrorHandler(const ErrorHandler&) = default;
    ErrorHandler& operator=(const ErrorHandler&) = default;
};

}  // namespace sax
