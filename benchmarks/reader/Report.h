// SPDX-License-Identifier: MIT
#pragma once

#include "reader/Measure.h"
#include "reader/Table.h"

#include <string>
#include <vector>

namespace bench {

/// A limit that the measured figures are held against.
struct Bar {
    std::string title;
    double wanted = 0;
    double measured = 0;
    bool IsMet() const { return measured >= wanted; }
};

/// Returns the machine, the compiler and the versions of the libraries, a line each.
std::string DescribeSetting(TableFormat format);

/// Returns the table of speeds and ratios, with the geometric means below it, and the one of the
/// files with entities. \pre not empty
std::string FormatResults(const std::vector<FileResult>& results, TableFormat format);

/// Returns the bars that the results allow to judge.
std::vector<Bar> JudgeBars(const std::vector<FileResult>& results);

/// Returns a line for each bar, with OK or MISS.
std::string FormatBars(const std::vector<Bar>& bars, TableFormat format);

}  // namespace bench
