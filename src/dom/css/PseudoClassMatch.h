// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include "dom/css/SelectorParts.h"

namespace Dom::CSS::detail {

/// Tells whether an element is in a pseudo-class other than :not(). What only a user does to an
/// element is not known: it is in none of those.
bool MatchesPseudoClass(const SelectorTest& test, const Element& element);

}  // namespace Dom::CSS::detail
