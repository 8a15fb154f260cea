// SPDX-License-Identifier: MIT
#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/SelectorException.h>

#include "dom/css/CompiledSelectors.h"

#include <cstddef>
#include <optional>

namespace Dom::CSS {

Selector::Selector(std::string_view text, const NamespacePrefixes& prefixes)
    : text_(text), compiled_(std::make_unique<detail::CompiledSelectors>(text_, prefixes)) {
    if (const std::optional<std::size_t> fault = compiled_->Fault()) {
        throw SelectorException(*fault);
    }
    const std::size_t end = text.find('\0');
    if (end != std::string_view::npos) throw SelectorException(end);
}

Selector::Selector(Selector&&) noexcept = default;
Selector& Selector::operator=(Selector&&) noexcept = default;
Selector::~Selector() = default;

bool Selector::Matches(const Element& element, std::string_view pseudo) const {
    return compiled_->Match(element, pseudo);
}

}  // namespace Dom::CSS
