// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

namespace sax {

/// An error of the event layer, and the root of the others. It has no base; what a reader or a
/// stream throws is an Xml::Exception and passes through the event layer as it is.
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
