// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/SelectorParts.h"
#include "dom/css/SelectorSubject.h"

namespace Dom::CSS::detail {

/// Tells whether an element meets all conditions of a compound.
bool MatchesCompound(const SelectorParts& parts, const Compound& compound,
                     const SelectorSubject& subject);

}  // namespace Dom::CSS::detail
