// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// Measures all libraries on `file`, in the order of EventLibraries().
FileResult MeasureEvents(const CorpusFile& file, const MeasureOptions& options);

/// Returns the table of speeds and ratios, with the geometric means below it. \pre not empty
std::string FormatEvents(const std::vector<FileResult>& results, TableFormat format);

/// Returns the libraries, the chart and the bars. \pre not empty
Figures EventFigures(const std::vector<FileResult>& results);

}  // namespace bench
