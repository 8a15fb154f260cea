// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include "dom/css/SelectorParts.h"

#include <cstdint>

namespace Dom::CSS::detail {

/// Tells whether a selector selects an element, or a part of it.
///
/// \param serial the number of these parts, which no others have
bool MatchesComplex(const SelectorParts& parts, std::uint64_t serial,
                    const ComplexSelector& selector, const Element& element);

}  // namespace Dom::CSS::detail
