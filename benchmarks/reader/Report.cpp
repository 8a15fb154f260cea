// SPDX-License-Identifier: MIT
#include "reader/Report.h"

#include <algorithm>
#include <fstream>

namespace bench {

namespace {

// Speeds come first, then ratios; ours has no ratio.
TableRow HeadRow() {
    static constexpr const char* kShort[kLibraryCount] = {"espalier", "reader", "SAX2", "expat",
                                                          "expat ns"};
    TableRow row = {"file", "MB"};
    for (const char* title : kShort) {
        row.emplace_back(title);
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(std::string("/") + kShort[i]);
    }
    row.emplace_back("spread %");
    return row;
}

TableRow ResultRow(const FileResult& result) {
    TableRow row = {result.entry->title, FormatNumber(result.megabytes, 1)};
    for (const double speed : result.speeds) {
        row.push_back(FormatNumber(speed, 0));
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(FormatNumber(result.ratios[i], 2));
    }
    row.push_back(FormatNumber(result.spread * 100, 0));
    return row;
}

std::vector<TableRow> ResultRows(const std::vector<FileResult>& results) {
    std::vector<TableRow> rows = {HeadRow()};
    for (const FileResult& result : results) {
        rows.push_back(ResultRow(result));
    }
    return rows;
}

std::vector<FileResult> OnlyOf(CorpusGroup group, const std::vector<FileResult>& results) {
    std::vector<FileResult> chosen;
    for (const FileResult& result : results) {
        if (result.entry->group == group) chosen.push_back(result);
    }
    return chosen;
}

std::vector<FileResult> WithoutEntities(const std::vector<FileResult>& results) {
    std::vector<FileResult> chosen;
    for (const FileResult& result : results) {
        if (result.entry->group != CorpusGroup::Entities) chosen.push_back(result);
    }
    return chosen;
}

double MeanRatio(const std::vector<FileResult>& results, std::size_t library) {
    std::vector<double> ratios;
    for (const FileResult& result : results) {
        ratios.push_back(result.ratios[library]);
    }
    return GeometricMean(ratios);
}

TableRow MeanRow(const char* title, const std::vector<FileResult>& results) {
    TableRow row = {title, ""};
    for (std::size_t i = 0; i < kLibraryCount; ++i) {
        std::vector<double> speeds;
        for (const FileResult& result : results) {
            speeds.push_back(result.speeds[i]);
        }
        row.push_back(FormatNumber(GeometricMean(speeds), 0));
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(FormatNumber(MeanRatio(results, i), 2));
    }
    row.emplace_back();
    return row;
}

std::string ProcessorName() {
    std::ifstream input("/proc/cpuinfo");
    for (std::string line; std::getline(input, line);) {
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
}

}  // namespace

std::string DescribeSetting(TableFormat format) {
#if defined(__clang__)
    const std::string compiler = "clang " __clang_version__;
#else
    const std::string compiler = "g++ " __VERSION__;
#endif
    std::string libraries;
    for (const Library& library : Libraries()) {
        libraries +=
            std::string(libraries.empty() ? "" : "; ") + library.title + " " + library.version();
    }
    const char* const bullet = format == TableFormat::Markdown ? "- " : "";
    return bullet + std::string("machine: ") + ProcessorName() + "\n" +  //
           bullet + "compiler: " + compiler + "\n" +                     //
           bullet + "libraries: " + libraries + "\n";
}

std::string FormatResults(const std::vector<FileResult>& results, TableFormat format) {
    std::string text;
    const std::vector<FileResult> plain = WithoutEntities(results);
    if (!plain.empty()) {
        std::vector<TableRow> rows = ResultRows(plain);
        const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, plain);
        if (!utf8.empty()) rows.push_back(MeanRow("mean of UTF-8", utf8));
        rows.push_back(MeanRow("mean of all", plain));
        text = "MB/s from memory, then how many times as fast as each peer:\n\n" +
               FormatTable(rows, format);
    }
    const std::vector<FileResult> entities = OnlyOf(CorpusGroup::Entities, results);
    if (!entities.empty()) {
        text += std::string(text.empty() ? "" : "\n") +
                "The same with references to general entities, all replaced (no bar):\n\n" +
                FormatTable(ResultRows(entities), format);
    }
    return text;
}

std::vector<Bar> JudgeBars(const std::vector<FileResult>& allResults) {
    const std::vector<FileResult> results = WithoutEntities(allResults);
    std::vector<Bar> bars;
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) {
        const std::string over = ", geometric mean of " + std::to_string(utf8.size()) + " files";
        bars.push_back({"libxml2's reader" + over, 5, MeanRatio(utf8, kLibxmlReader)});
        bars.push_back({"expat with namespaces" + over, 3, MeanRatio(utf8, kExpatNamespaces)});
        bars.push_back({"libxml2 SAX2" + over, 2, MeanRatio(utf8, kLibxmlSax2)});
    }
    const auto slowest = std::min_element(
        results.begin(), results.end(), [](const FileResult& a, const FileResult& b) {
            return a.ratios[kLibxmlReader] < b.ratios[kLibxmlReader];
        });
    if (slowest != results.end()) {
        bars.push_back(
            {std::string("libxml2's reader, lowest of all files (") + slowest->entry->title + ")",
             3, slowest->ratios[kLibxmlReader]});
    }
    for (const FileResult& result : results) {
        if (result.entry->group == CorpusGroup::Utf8) continue;
        bars.push_back({std::string("expat with namespaces, ") + result.entry->title, 3,
                        result.ratios[kExpatNamespaces]});
    }
    return bars;
}

std::string FormatBars(const std::vector<Bar>& bars, TableFormat format) {
    std::string text;
    for (const Bar& bar : bars) {
        const std::string verdict = bar.IsMet() ? "OK" : "MISS";
        const std::string numbers =
            FormatNumber(bar.measured, 2) + " times, wanted " + FormatNumber(bar.wanted, 0);
        if (format == TableFormat::Markdown) {
            text += "- " + bar.title + ": " + numbers + " (" + verdict + ")\n";
        } else {
            text +=
                verdict + std::string(6 - verdict.size(), ' ') + bar.title + ": " + numbers + "\n";
        }
    }
    return text;
}

}  // namespace bench
