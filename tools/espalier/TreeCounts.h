// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "PathCounts.h"

namespace Tool {

/// Writes what has been counted as a table, a line for each path, in the order of the documents.
/// \param levels how many levels of elements are written
void WriteCountsAsText(Output& out, const PathCounts& counts, int levels);

/// The same as JSON, an object a line.
void WriteCountsAsJson(Output& out, const PathCounts& counts, int levels);

}  // namespace Tool
