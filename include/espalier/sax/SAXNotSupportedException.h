// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/SAXException.h>

namespace sax {

/// A feature cannot take that value, or not now.
class ESPALIER_EXPORT SAXNotSupportedException : public SAXException {
public:
    SAXNotSupportedException();
    explicit SAXNotSupportedException(const char* message);
    explicit SAXNotSupportedException(const astring& message);

    SAXNotSupportedException(const SAXNotSupportedException& other);
    SAXNotSupportedException& operator=(const SAXNotSupportedException& other);

    ~SAXNotSupportedException() override;
};

}  // namespace sax
