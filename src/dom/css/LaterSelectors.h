// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace Dom::CSS::detail {

/// Tells whether what is not understood in selectors is a pseudo-class or pseudo-element that later
/// levels or vendors have. It selects nothing, but the others of its group do: one that no standard
/// has makes all of them invalid (Selectors Level 3 section 5).
/// \param fault where the selectors go wrong
bool IsOfLaterLevel(std::string_view selectors, std::size_t fault);

}  // namespace Dom::CSS::detail
