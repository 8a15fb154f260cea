// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/CustomValues.h"
#include "dom/css/computed/DeclarationBlock.h"

#include <cstddef>

namespace Dom::CSS::detail {

/// A declared value, with variables replaced by what they stand for.
struct SpecifiedValue {
    WideKeyword keyword;  ///< what turns out not to be valid is "unset"
    astring value;        ///< when `keyword` is none
};

/// Returns what a declaration with variables says (CSS Custom Properties Level 1 section 3.1).
/// \param custom the variables; may be null
/// \param budget how many bytes variables may be replaced by; less after that
SpecifiedValue SpecifyValue(const BlockEntry& entry, const CustomValues* custom,
                            std::size_t& budget);

}  // namespace Dom::CSS::detail
