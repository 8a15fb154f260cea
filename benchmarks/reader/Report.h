// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// Returns the table of speeds and ratios, with the geometric means below it, and the one of the
/// files with entities. \pre not empty
std::string FormatResults(const std::vector<FileResult>& results, TableFormat format);

/// Returns the libraries, the charts, and the bars that the results allow to judge.
Figures ReaderFigures(const std::vector<FileResult>& results);

}  // namespace bench
