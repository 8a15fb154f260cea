// SPDX-License-Identifier: MIT
#pragma once

#include "reader/Measure.h"

#include <string>
#include <vector>

namespace bench {

enum class ReportFormat { Text, Markdown };

/// A limit that the measured figures are held against.
struct Bar {
    std::string title;
    double wanted = 0;
    double measured = 0;
    bool IsMet() const { return measured >= wanted; }
};

/// Returns the machine, the compiler and the versions of the libraries, a line each.
std::string DescribeSetting();

/// Returns the table of speeds and ratios, with the geometric means below it.
std::string FormatTable(const std::vector<FileResult>& results, ReportFormat format);

/// Returns the bars that the results allow to judge.
std::vector<Bar> JudgeBars(const std::vector<FileResult>& results);

/// Returns a line for each bar, with OK or MISS.
std::string FormatBars(const std::vector<Bar>& bars, ReportFormat format);

}  // namespace bench
