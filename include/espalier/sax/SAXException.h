// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

namespace sax {

/// An error of the event layer, and the root of the others. What a reader or a stream throws is an
/// Xml::Exception and passes through the event layer as it is.
///
/// Deliberate: the family has a root of its own, as in SAX2; std::exception is no base of it.
class ESPALIER_EXPORT SAXException {
public:
    SAXException();
    explicit SAXException(const char* message);
    explicit SAXException(const astring& message);

    SAXException(const SAXException& other);
    SAXException& operator=(const SAXException& other);

    virtual ~SAXException();

    /// Returns what has gone wrong.
    const astring& getMessage() const { return message_; }

private:
    astring message_;
};

}  // namespace sax
