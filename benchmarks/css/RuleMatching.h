// SPDX-License-Identifier: MIT
#pragma once

#include "common/Measure.h"

#include <cstddef>

namespace bench {

inline constexpr std::size_t kMatchedRules = 10'000;
inline constexpr std::size_t kMatchedElements = 10'000;

/// How long it takes to find the rules for elements. Seconds are those of the processor.
struct MatchingResult {
    std::size_t matches = 0;     ///< rules found, for all elements
    double indexSeconds = 0;     ///< to compile the selectors and make the index
    double matchSeconds = 0;     ///< to find the rules for all elements in it
    double bothSeconds = 0;      ///< measured in one go
    std::size_t asked = 0;       ///< elements for which every rule was asked
    double oneByOneSeconds = 0;  ///< for these
    double indexOnThem = 0;      ///< seconds in the index for the same elements
};

/// Matches the rules of a made sheet with the elements of a made page.
/// \throws std::runtime_error when the index finds other rules than asking each of them does
MatchingResult MeasureMatching(const MeasureOptions& options);

/// Compares the two ways only.
/// \throws std::runtime_error as above
void CheckMatching();

}  // namespace bench
