// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/Measure.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace bench {

/// Returns the bar of what was measured in each round. \pre `rounds` is not empty
ChartBar BarOfRounds(const std::string& title, bool isOurs, const std::vector<double>& rounds);

/// Returns " (COUNT of ALL)" for a bar that not all files count for; empty where they do.
std::string NoteOfFiles(std::size_t count, std::size_t all);

/// Returns the bar of the geometric means over all files, a mean for each round. Where not all
/// files were measured, the title says how many. \pre `results` is not empty
ChartBar BarOfMeans(const std::string& title, bool isOurs, std::span<const FileResult> results,
                    std::size_t work);

/// Returns a chart of one group: the means of all works. The titles are those of the works, of
/// which the first `ourCount` are ours.
Chart ChartOfMeans(const std::string& name, const std::string& title,
                   std::span<const char* const> titles, std::size_t ourCount,
                   std::span<const FileResult> results);

}  // namespace bench
