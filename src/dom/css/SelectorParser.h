// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/SelectorParts.h"

namespace Dom::CSS::detail {

/// Reads selectors (Selectors Level 3) up to the NUL of a text.
///
/// \param parts gets the selectors; those with an error are left out
/// \return whether there was no error
bool ParseSelectors(const char* text, SelectorParts& parts);

}  // namespace Dom::CSS::detail
