// SPDX-License-Identifier: MIT
#pragma once

namespace Dom::CSS::detail {

/// Returns what CSS_SPECIFICITY() returns for selectors.
/// \param end where the selectors end, at "{" or NUL, when they are not refused
int SpecificitySum(const char* text, const char*& end);

}  // namespace Dom::CSS::detail
