// SPDX-License-Identifier: MIT
#include "writer/WriterReport.h"

#include "common/Charts.h"
#include "common/RatioTable.h"
#include "common/Setting.h"
#include "writer/DocumentWriter.h"
#include "writer/WriterDocuments.h"

#include <algorithm>
#include <iterator>

namespace bench {

namespace {

std::vector<FileResult> OfMeans(const std::vector<FileResult>& results) {
    std::vector<FileResult> chosen;
    std::copy_if(results.begin(), results.end(), std::back_inserter(chosen),
                 [](const FileResult& result) { return IsInMeans(*result.entry); });
    return chosen;
}

std::vector<Bar> JudgeWriters(const std::vector<FileResult>& results, const Measurement& base64) {
    std::vector<Bar> bars;
    const std::vector<FileResult> chosen = OfMeans(results);
    if (!chosen.empty()) {
        const std::string over =
            ", geometric mean of " + std::to_string(chosen.size()) + " documents";
        bars.push_back({"tinyxml2's printer" + over, 2, MeanRatio(chosen, kTinyxml2Printer)});
        bars.push_back({"pugixml's save" + over, 1, MeanRatio(chosen, kPugixmlSave)});
        bars.push_back({"a plain append loop" + over, 0.8, MeanRatio(chosen, kPlainLoop)});
    }
    bars.push_back({"base64", 1, base64.speeds[0] / 1e3, "GB/s"});
    return bars;
}

}  // namespace

std::string FormatWriters(const std::vector<FileResult>& results, TableFormat format) {
    std::vector<const char*> titles;
    for (const WriterLibrary& library : WriterLibraries()) {
        titles.push_back(library.shortTitle);
    }
    std::vector<TableRow> rows = {RatioHead(titles)};
    for (const FileResult& result : results) {
        rows.push_back(RatioRow(result));
    }
    const std::vector<FileResult> chosen = OfMeans(results);
    if (!chosen.empty()) {
        const std::string title = "mean of " + std::to_string(chosen.size());
        rows.push_back(RatioMeanRow(title.c_str(), chosen));
    }
    return "MB/s to memory, then how many times as fast as each other way:\n\n" +
           FormatTable(rows, format);
}

std::string FormatBase64(const Measurement& base64) {
    return "base64: " + FormatNumber(base64.speeds[0] / 1e3, 2) +
           " GB/s of input; memcpy: " + FormatNumber(base64.speeds[1] / 1e3, 2) +
           " GB/s; ratio: " + FormatNumber(base64.ratios[1], 3) +
           "; spread: " + FormatNumber(base64.spread * 100, 0) + " %\n";
}

Figures WriterFigures(const std::vector<FileResult>& results, const Measurement& base64) {
    Figures figures = FiguresOfThisBuild();
    std::vector<const char*> titles;
    for (const WriterLibrary& library : WriterLibraries()) {
        const std::string version = library.version();
        if (!version.empty()) figures.libraries.push_back({library.title, version});
        titles.push_back(library.title);
    }
    const std::vector<FileResult> chosen = OfMeans(results);
    if (!chosen.empty()) {
        figures.charts.push_back(ChartOfMeans(
            "writer", "Writing to memory: mean of " + std::to_string(chosen.size()) + " documents",
            titles, 1, chosen));
    }
    figures.bars = JudgeWriters(results, base64);
    return figures;
}

}  // namespace bench
