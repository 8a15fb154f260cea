// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// What was measured on a page. Seconds are those of the processor.
struct StylingResult {
    std::size_t elements = 0;
    double loadSeconds = 0;     ///< to make the tree
    double sheetSeconds = 0;    ///< to read the sheet
    double styleSeconds = 0;    ///< to style all elements
    double restyleSeconds = 0;  ///< to style all again after the rule for one of a hundred changed
    double wholeSeconds = 0;    ///< for all but the last, and to free it
    double litehtmlSeconds = 0;
    double ratio = 0;  ///< how many times as fast as litehtml
    /// The seconds of each round for all but styling again: ours, litehtml's.
    std::vector<std::vector<double>> rounds;
};

/// Checks that both libraries see the elements that there are, and that a changed rule counts.
/// \return an empty text, else what is wrong
std::string StylingDisagreement(std::size_t elements, const std::string& sheet);

/// Measures how fast a page with a sheet is styled.
StylingResult MeasureStyling(std::size_t elements, const std::string& sheet,
                             const MeasureOptions& options);

/// Returns how many times as long an element of the large page takes as one of the small page.
double MeasureStylingGrowth(std::size_t small, std::size_t large, const std::string& sheet,
                            const MeasureOptions& options);

/// Returns the table.
std::string FormatStyling(const std::vector<StylingResult>& results, TableFormat format);

/// Returns the libraries, the chart and the bars. `growth` is what MeasureStylingGrowth() returned.
Figures StylingFigures(const std::vector<StylingResult>& results, double growth);

}  // namespace bench
