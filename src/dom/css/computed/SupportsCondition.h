// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::CSS::detail {

/// Tells whether the condition of an "@supports" holds (CSS Conditional Rules Level 3 section 6):
/// whether properties are known and may have a value, and selectors are known. A condition that is
/// not understood, or has more than 32 parentheses in each other, does not.
bool SupportsCondition(std::string_view condition);

}  // namespace Dom::CSS::detail
