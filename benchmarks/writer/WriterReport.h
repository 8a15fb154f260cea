// SPDX-License-Identifier: MIT
#pragma once

#include "common/Bars.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// Returns the machine, the compiler and the versions of the libraries, a line each.
std::string DescribeWriterSetting(TableFormat format);

/// Returns the table of speeds and ratios, with the geometric means below it. \pre not empty
std::string FormatWriters(const std::vector<FileResult>& results, TableFormat format);

/// Returns the speed of base64 and of memcpy.
std::string FormatBase64(const Measurement& base64, TableFormat format);

/// Returns the bars that the results allow to judge.
std::vector<Bar> JudgeWriters(const std::vector<FileResult>& results, const Measurement& base64);

}  // namespace bench
