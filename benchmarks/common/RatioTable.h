// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <cstddef>
#include <span>
#include <vector>

namespace bench {

// The rows of a table of speeds of all libraries and, behind them, of how many times as fast the
// first one is as each of the others.

/// Returns the head. `titles` are those of the libraries, ours first.
TableRow RatioHead(std::span<const char* const> titles);

/// Returns the row of a file.
TableRow RatioRow(const FileResult& result);

/// Returns the row of the geometric means. \pre `results` is not empty
TableRow RatioMeanRow(const char* title, std::span<const FileResult> results);

/// Returns the geometric mean of how many times as fast the first library is as that one.
/// \pre `results` is not empty
double MeanRatio(std::span<const FileResult> results, std::size_t library);

/// Returns the results of the files of a group.
std::vector<FileResult> OnlyOf(CorpusGroup group, std::span<const FileResult> results);

}  // namespace bench
