// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::CSS::detail {

/// Returns what CSS_SPECIFICITY() returns for selectors.
/// \param text which a NUL follows
/// \param end where the selectors end, at "{" or the end, when they are not refused
int SpecificitySum(std::string_view text, const char*& end);

}  // namespace Dom::CSS::detail
