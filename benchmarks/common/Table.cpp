// SPDX-License-Identifier: MIT
#include "common/Table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace bench {

namespace {

std::vector<std::size_t> ColumnWidths(const std::vector<TableRow>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const TableRow& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    return widths;
}

std::string FormatRow(const TableRow& row, const std::vector<std::size_t>& widths,
                      TableFormat format) {
    const bool isMarkdown = format == TableFormat::Markdown;
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        const std::string padding(widths[i] - row[i].size(), ' ');
        line += isMarkdown ? "| " : "";
        line += i == 0 ? row[i] + padding : padding + row[i];
        line += isMarkdown ? " " : "  ";
    }
    return line + (isMarkdown ? "|\n" : "\n");
}

// Returns the line below the head.
std::string FormatRule(const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        line += (i == 0 ? "|-" : "|") + std::string(widths[i], '-') + (i == 0 ? "-" : "-:");
    }
    return line + "|\n";
}

}  // namespace

std::string FormatTable(const std::vector<TableRow>& rows, TableFormat format) {
    const std::vector<std::size_t> widths = ColumnWidths(rows);
    std::string text = FormatRow(rows.front(), widths, format);
    if (format == TableFormat::Markdown) text += FormatRule(widths);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        text += FormatRow(rows[i], widths, format);
    }
    return text;
}

std::string FormatNumber(double value, int decimals) {
    if (std::isnan(value)) return "-";
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

}  // namespace bench
