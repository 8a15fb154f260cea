// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/io/Exception.h>

#include <string_view>

namespace Dom {

/// What operations on trees and style sheets throw. What() is "DOMException: " and the message;
/// Code() tells the kind of error, as numbered by DOM Level 2.
class ESPALIER_EXPORT DOMException : public Xml::Exception {
public:
    enum EXCEPTION_CODE : unsigned short {
        INDEX_SIZE_ERR = 1,
        DOMSTRING_SIZE_ERR = 2,
        HIERARCHY_REQUEST_ERR = 3,
        WRONG_DOCUMENT_ERR = 4,
        INVALID_CHARACTER_ERR = 5,
        NO_DATA_ALLOWED_ERR = 6,
        NO_MODIFICATION_ALLOWED_ERR = 7,
        NOT_FOUND_ERR = 8,
        NOT_SUPPORTED_ERR = 9,
        INUSE_ATTRIBUTE_ERR = 10,
        INVALID_STATE_ERR = 11,
        SYNTAX_ERR = 12,
        INVALID_MODIFICATION_ERR = 13,
        NAMESPACE_ERR = 14,
        INVALID_ACCESS_ERR = 15
    };

    /// \param message what is wrong, without "DOMException: "
    DOMException(EXCEPTION_CODE code, std::string_view message);
    DOMException(const DOMException& other) noexcept;
    DOMException& operator=(const DOMException& other) noexcept;
    ~DOMException() noexcept override;

    EXCEPTION_CODE Code() const noexcept { return code_; }

    /// Throws an exception made from the arguments.
    [[noreturn]] static void ThrowDOMException(EXCEPTION_CODE code, std::string_view message);

private:
    EXCEPTION_CODE code_;
};

}  // namespace Dom
