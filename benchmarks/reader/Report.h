// SPDX-License-Identifier: MIT
#pragma once

#include "common/Bars.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// Returns the machine, the compiler and the versions of the libraries, a line each.
std::string DescribeReaderSetting(TableFormat format);

/// Returns the table of speeds and ratios, with the geometric means below it, and the one of the
/// files with entities. \pre not empty
std::string FormatResults(const std::vector<FileResult>& results, TableFormat format);

/// Returns the bars that the results allow to judge.
std::vector<Bar> JudgeBars(const std::vector<FileResult>& results);

}  // namespace bench
