// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"
#include "css/MadeSheet.h"
#include "css/RuleMatching.h"

#include <string>
#include <vector>

namespace bench {

/// What was measured on one sheet.
struct SheetResult : Measurement {
    SheetTotals totals;
};

/// Checks that all libraries see the rules and selectors that a sheet was made of.
/// \return an empty text when they do, else which one sees something else
std::string SheetDisagreement(const MadeSheet& sheet);

/// Measures how fast all libraries read a sheet and free it.
SheetResult MeasureSheet(const MadeSheet& sheet, const MeasureOptions& options);

/// Measures how many times as fast as the small sheet we read the large one, byte by byte.
double MeasureGrowth(const MadeSheet& small, const MadeSheet& large, const MeasureOptions& options);

/// Returns the table of speeds and ratios.
std::string FormatSheets(const std::vector<SheetResult>& results, TableFormat format);

/// Returns the table of the matching.
std::string FormatMatching(const MatchingResult& result, TableFormat format);

/// Returns the libraries, the chart and the bars. `growth` is what MeasureGrowth() returned.
Figures SheetFigures(const std::vector<SheetResult>& results, double growth,
                     const MatchingResult& matching);

}  // namespace bench
