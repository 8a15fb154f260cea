// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace bench {

enum class TableFormat { Text, Markdown };

using TableRow = std::vector<std::string>;

/// Returns the rows as a table: the first row is the head, the first column stands on the left and
/// the others on the right. \pre all rows have as many cells as the first
std::string FormatTable(const std::vector<TableRow>& rows, TableFormat format);

/// Returns `value` with that many decimals; "-" for NaN.
std::string FormatNumber(double value, int decimals);

}  // namespace bench
