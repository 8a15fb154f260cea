// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/Selector.h>

#include "dom/css/CompiledSelectors.h"
#include "dom/css/Messages.h"

namespace Dom::CSS {

Selector::Selector(std::string_view text)
    : text_(text), compiled_(std::make_unique<detail::CompiledSelectors>(text_)) {
    if (!compiled_->IsGood() || text.find('\0') != std::string_view::npos) {
        DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, detail::Message::kSelector);
    }
}

Selector::Selector(Selector&&) noexcept = default;
Selector& Selector::operator=(Selector&&) noexcept = default;
Selector::~Selector() = default;

bool Selector::Matches(const Element& element, std::string_view pseudo) const {
    return compiled_->Match(element, pseudo);
}

}  // namespace Dom::CSS
