// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>

#include "dom/Messages.h"

namespace Dom {

DOMException::DOMException(EXCEPTION_CODE code, std::string_view message)
    : Xml::Exception(astring(detail::Message::kPrefix) + message, astring(), -1, -1), code_(code) {}

DOMException::DOMException(const DOMException& other) noexcept = default;

DOMException& DOMException::operator=(const DOMException& other) noexcept = default;

DOMException::~DOMException() noexcept = default;

void DOMException::ThrowDOMException(EXCEPTION_CODE code, std::string_view message) {
    throw DOMException(code, message);
}

}  // namespace Dom
