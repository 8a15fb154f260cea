// SPDX-License-Identifier: MIT
#include <espalier/sax/Locator.h>
#include <espalier/sax/SAXException.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/SAXNotSupportedException.h>
#include <espalier/sax/SAXParseException.h>

#include "sax/ViewOf.h"

namespace sax {

SAXException::SAXException() = default;
SAXException::SAXException(const char* message) : message_(detail::ViewOf(message)) {}
SAXException::SAXException(const astring& message) : message_(message) {}
SAXException::SAXException(const SAXException& other) = default;
SAXException& SAXException::operator=(const SAXException& other) = default;
SAXException::~SAXException() = default;

SAXParseException::SAXParseException() = default;
SAXParseException::SAXParseException(const char* message) : SAXException(message) {}
SAXParseException::SAXParseException(const astring& message) : SAXException(message) {}

SAXParseException::SAXParseException(const astring& message, const Locator* locator)
    : SAXException(message) {
    if (locator == nullptr) return;
    publicId_ = detail::ViewOf(locator->getPublicId());
    systemId_ = detail::ViewOf(locator->getSystemId());
    lineNumber_ = locator->getLineNumber();
    columnNumber_ = locator->getColumnNumber();
}

SAXParseException::SAXParseException(const astring& message, const astring& publicId,
                                     const astring& systemId, int lineNumber, int columnNumber)
    : SAXException(message),
      publicId_(publicId),
      systemId_(systemId),
      lineNumber_(lineNumber),
      columnNumber_(columnNumber) {}

SAXParseException::SAXParseException(const SAXParseException& other) = default;
SAXParseException& SAXParseException::operator=(const SAXParseException& other) = default;
SAXParseException::~SAXParseException() = default;

SAXNotRecognizedException::SAXNotRecognizedException() = default;
SAXNotRecognizedException::SAXNotRecognizedException(const char* message) : SAXException(message) {}
SAXNotRecognizedException::SAXNotRecognizedException(const astring& message)
    : SAXException(message) {}
SAXNotRecognizedException::SAXNotRecognizedException(const SAXNotRecognizedException& other) =
    default;
SAXNotRecognizedException& SAXNotRecognizedException::operator=(
    const SAXNotRecognizedException& other) = default;
SAXNotRecognizedException::~SAXNotRecognizedException() = default;

SAXNotSupportedException::SAXNotSupportedException() = default;
SAXNotSupportedException::SAXNotSupportedException(const char* message) : SAXException(message) {}
SAXNotSupportedException::SAXNotSupportedException(const astring& message)
    : SAXException(message) {}
SAXNotSupportedException::SAXNotSupportedException(const SAXNotSupportedException& other) = default;
SAXNotSupportedException& SAXNotSupportedException::operator=(
    const SAXNotSupportedException& other) = default;
SAXNotSupportedException::~SAXNotSupportedException() = default;

}  // namespace sax
