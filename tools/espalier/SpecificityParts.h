// SPDX-License-Identifier: MIT
#pragma once

namespace Tool {

/// The three numbers that a specificity is packed from (see Dom::CSS::CSS_SPECIFICITY()).
struct SpecificityParts {
    explicit constexpr SpecificityParts(int packed)
        : ids(packed / 1'000'000), classes(packed / 1000 % 1000), elements(packed % 1000) {}

    int ids;
    int classes;  ///< attributes and pseudo-classes, too
    int elements;
};

}  // namespace Tool
