// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"

#include <string>
#include <vector>

namespace bench {

/// Returns the places of the lines of a scale that reaches from 0 to at least `most`: 0 first, at
/// most 6 of them, at a distance of 1, 2 or 5 times a power of ten. \pre `most` is positive
std::vector<double> TicksFor(double most);

/// Returns a number with as many decimals as a reader of a chart cares for: three digits that
/// count, and all that stand before the point.
std::string FormatAmount(double value);

/// Returns a chart as an SVG document of horizontal bars on one scale.
///
/// The colours follow the reader's choice of light or dark. All text is text. `title` and `desc`
/// say the same in words. The same chart always gives the same bytes.
/// \pre at least one of its bars was measured
std::string DrawChart(const Chart& chart);

}  // namespace bench
