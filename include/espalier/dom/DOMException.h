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
    /// The kinds of errors.
    enum EXCEPTION_CODE : unsigned short {
        INDEX_SIZE_ERR = 1,               ///< an index that is out of range
        DOMSTRING_SIZE_ERR = 2,           ///< not used
        HIERARCHY_REQUEST_ERR = 3,        ///< a node where it does not belong
        WRONG_DOCUMENT_ERR = 4,           ///< a node of another document
        INVALID_CHARACTER_ERR = 5,        ///< not used
        NO_DATA_ALLOWED_ERR = 6,          ///< not used
        NO_MODIFICATION_ALLOWED_ERR = 7,  ///< a node that is read-only
        NOT_FOUND_ERR = 8,                ///< a node that is not there
        NOT_SUPPORTED_ERR = 9,            ///< what is not implemented
        INUSE_ATTRIBUTE_ERR = 10,         ///< an attribute that an element has
        INVALID_STATE_ERR = 11,           ///< not used
        SYNTAX_ERR = 12,                  ///< a text that is not well-formed
        INVALID_MODIFICATION_ERR = 13,    ///< not used
        NAMESPACE_ERR = 14,               ///< a name that its namespace does not allow
        INVALID_ACCESS_ERR = 15           ///< an operation that the object does not have
    };

    /// \param message what is wrong, without "DOMException: "
    DOMException(EXCEPTION_CODE code, std::string_view message);
    DOMException(const DOMException& other) noexcept;
    DOMException& operator=(const DOMException& other) noexcept;
    ~DOMException() noexcept override;

    /// Returns the kind of error.
    EXCEPTION_CODE Code() const noexcept { return code_; }

    /// Throws an exception made from the arguments.
    [[noreturn]] static void ThrowDOMException(EXCEPTION_CODE code, std::string_view message);

private:
    EXCEPTION_CODE code_;
};

}  // namespace Dom
