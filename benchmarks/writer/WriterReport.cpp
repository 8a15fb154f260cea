// SPDX-License-Identifier: MIT
#include "writer/WriterReport.h"

#include "common/RatioTable.h"
#include "common/Setting.h"
#include "writer/DocumentWriter.h"

namespace bench {

std::string DescribeWriterSetting(TableFormat format) {
    std::string libraries;
    for (const WriterLibrary& library : WriterLibraries()) {
        const std::string version = library.version();
        if (version.empty()) continue;
        libraries += std::string(libraries.empty() ? "" : "; ") + library.title + " " + version;
    }
    return DescribeSetting(libraries, format);
}

std::string FormatWriters(const std::vector<FileResult>& results, TableFormat format) {
    std::vector<const char*> titles;
    for (const WriterLibrary& library : WriterLibraries()) {
        titles.push_back(library.shortTitle);
    }
    std::vector<TableRow> rows = {RatioHead(titles)};
    for (const FileResult& result : results) {
        rows.push_back(RatioRow(result));
    }
    rows.push_back(RatioMeanRow("mean", results));
    return "MB/s to memory, then how many times as fast as each other way:\n\n" +
           FormatTable(rows, format);
}

std::string FormatBase64(const Measurement& base64, TableFormat format) {
    const std::string bullet = format == TableFormat::Markdown ? "- " : "";
    return bullet + "base64: " + FormatNumber(base64.speeds[0] / 1e3, 2) +
           " GB/s of input; memcpy: " + FormatNumber(base64.speeds[1] / 1e3, 2) +
           " GB/s; ratio: " + FormatNumber(base64.ratios[1], 3) +
           "; spread: " + FormatNumber(base64.spread * 100, 0) + " %\n";
}

std::vector<Bar> JudgeWriters(const std::vector<FileResult>& results, const Measurement& base64) {
    const std::string over = ", geometric mean of " + std::to_string(results.size()) + " documents";
    return {
        {"tinyxml2's printer" + over, 2, MeanRatio(results, kTinyxml2Printer)},
        {"pugixml's save" + over, 1, MeanRatio(results, kPugixmlSave)},
        {"a plain append loop" + over, 0.8, MeanRatio(results, kPlainLoop)},
        {"base64", 1, base64.speeds[0] / 1e3, "GB/s"},
    };
}

}  // namespace bench
