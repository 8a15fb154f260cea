// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace bench {

/// A limit that the measured figures are held against.
struct Bar {
    std::string title;
    double wanted = 0;
    double measured = 0;
    std::string unit = "times";
    bool isMost = false;  ///< `wanted` is the most that is allowed, not the least
    bool IsMet() const { return isMost ? measured <= wanted : measured >= wanted; }
};

/// Returns a line for each bar, with OK or MISS.
std::string FormatBars(const std::vector<Bar>& bars);

/// Tells whether all of them are met.
bool AreMet(const std::vector<Bar>& bars);

}  // namespace bench
