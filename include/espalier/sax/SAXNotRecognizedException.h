// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/sax/SAXException.h>

namespace sax {

/// A feature or property of that name does not exist.
class ESPALIER_EXPORT SAXNotRecognizedException : public SAXException {
public:
    SAXNotRecognizedException();
    explicit SAXNotRecognizedException(const char* message);
    explicit SAXNotRecognizedException(const astring& message);

    SAXNotRecognizedException(const SAXNotRecognizedException& other);
    SAXNotRecognizedException& operator=(const SAXNotRecognizedException& other);

    ~SAXNotRecognizedException() override;
};

}  // namespace sax
