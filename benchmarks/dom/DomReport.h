// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "common/Figures.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <string>
#include <vector>

namespace bench {

/// What the trees of one file take of the heap.
struct TreeSizes {
    const CorpusEntry* entry = nullptr;
    double bytes = 0;           ///< of the file
    double nodes = 0;           ///< elements and attributes
    std::vector<double> heaps;  ///< bytes of each library; NaN where it cannot load the file
};

/// Measures how fast all libraries load, walk and free `file`, in the order of TreeLibraries().
FileResult MeasureTrees(const CorpusFile& file, MeasureOptions options);

/// Loads `file` with all libraries, one after the other, and asks the heap.
TreeSizes WeighTrees(const CorpusFile& file);

/// Returns the table of speeds and ratios, with the geometric means below it. \pre not empty
std::string FormatTrees(const std::vector<FileResult>& results, TableFormat format);

/// Returns the table of what the trees take. \pre not empty
std::string FormatSizes(const std::vector<TreeSizes>& sizes, TableFormat format);

/// Returns the libraries, the charts and the bars. \pre not empty
Figures TreeFigures(const std::vector<FileResult>& results, const std::vector<TreeSizes>& sizes);

}  // namespace bench
