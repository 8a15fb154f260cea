// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// What a text says as selectors.
struct SelectorSummary {
    std::optional<std::size_t> fault;  ///< where it goes wrong; nothing when it does not
    int specificity = 0;               ///< of all selectors together, as CSS_SPECIFICITY() counts
};

/// Checks the grammar of selectors (Selectors Level 3, section 10), where the names of
/// pseudo-classes and pseudo-elements may be any, with any arguments. Where CSS_SPECIFICITY()
/// accepts the selectors, too, the specificity is the same.
SelectorSummary SummarizeSelectors(std::string_view text);

}  // namespace Dom::CSS::detail
