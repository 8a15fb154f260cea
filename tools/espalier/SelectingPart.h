// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>

#include <string_view>

namespace Tool {

/// Returns the one of the selectors of a rule that selects an element; all of them when none does,
/// or several do.
/// \param pseudo empty for the element itself; else a pseudo-element of it
std::string_view SelectingPart(std::string_view selectors, const Dom::Element& element,
                               std::string_view pseudo);

}  // namespace Tool
