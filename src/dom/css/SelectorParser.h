// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/NamespacePrefix.h>

#include "dom/css/SelectorParts.h"

#include <cstddef>
#include <optional>

namespace Dom::CSS::detail {

/// Reads selectors (Selectors Level 3) up to the NUL of a text.
///
/// \param prefixes what prefixes stand for; others are an error
/// \param parts gets the selectors; those with an error are left out
/// \return where the first error is, if there is one
std::optional<std::size_t> ParseSelectors(const char* text, const NamespacePrefixes& prefixes,
                                          SelectorParts& parts);

}  // namespace Dom::CSS::detail
