// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// Returns the table of speeds and ratios, with the geometric means below it. \pre not empty
std::string FormatWriters(const std::vector<FileResult>& results, TableFormat format);

/// Returns the speed of base64 and of memcpy.
std::string FormatBase64(const Measurement& base64);

/// Returns the libraries, the chart, and the bars that the results allow to judge.
Figures WriterFigures(const std::vector<FileResult>& results, const Measurement& base64);

}  // namespace bench
