// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/NamespacePrefix.h>

#include "dom/css/SelectorParts.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Selectors, ready to be compared with elements.
class CompiledSelectors {
public:
    /// Reads selectors; those with an error select nothing.
    explicit CompiledSelectors(const astring& text, const NamespacePrefixes& prefixes = {});

    /// Returns where the first error is, if there is one.
    std::optional<std::size_t> Fault() const { return fault_; }
    const SelectorParts& Parts() const { return parts_; }

    /// Tells whether one of the selectors selects an element, or the part `pseudo` of it.
    bool Match(const Element& element, std::string_view pseudo) const;
    /// Tells whether one that is a single compound selects an element that has nothing else.
    bool Match(std::string_view name, const astring& id, const astring& classes) const;
    /// Tells whether one of the selectors selects an element, or a part of it.
    bool MatchOne(const ComplexSelector& selector, const Element& element) const;

private:
    SelectorParts parts_;
    std::uint64_t serial_;  // no other selectors have this one
    std::optional<std::size_t> fault_;
};

}  // namespace Dom::CSS::detail
