// SPDX-License-Identifier: MIT
#include <espalier/dom/css/SelectorException.h>

#include "dom/css/Messages.h"

namespace Dom::CSS {

SelectorException::SelectorException(std::size_t position)
    : DOMException(SYNTAX_ERR, detail::Message::kSelector), position_(position) {}

SelectorException::SelectorException(const SelectorException&) noexcept = default;
SelectorException& SelectorException::operator=(const SelectorException&) noexcept = default;
SelectorException::~SelectorException() noexcept = default;

}  // namespace Dom::CSS
