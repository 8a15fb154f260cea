// SPDX-License-Identifier: MIT
#include "reader/Report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <utility>

namespace bench {

namespace {

using Row = std::vector<std::string>;

constexpr std::size_t kNameWidth = 18;
constexpr std::size_t kNumberWidth = 10;

std::string Number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// Returns the name padded on the right and the numbers padded on the left.
std::string FormatRow(const Row& row, ReportFormat format) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (format == ReportFormat::Markdown) {
            line += "| " + row[i] + " ";
        } else {
            const std::size_t width = i == 0 ? kNameWidth : kNumberWidth;
            const std::string padding(width - std::min(width, row[i].size()), ' ');
            line += i == 0 ? row[i] + padding : padding + row[i];
        }
    }
    return line + (format == ReportFormat::Markdown ? "|\n" : "\n");
}

// Speeds come first, then ratios; ours has no ratio.
Row HeadRow() {
    static constexpr const char* kShort[kLibraryCount] = {"espalier", "reader", "SAX2", "expat",
                                                          "expat ns"};
    Row row = {"file", "MB"};
    for (const char* title : kShort) {
        row.emplace_back(title);
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(std::string("/") + kShort[i]);
    }
    row.emplace_back("spread %");
    return row;
}

Row ResultRow(const FileResult& result) {
    Row row = {result.entry->title, Number(result.megabytes, 1)};
    for (const double speed : result.speeds) {
        row.push_back(Number(speed, 0));
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(Number(result.ratios[i], 2));
    }
    row.push_back(Number(result.spread * 100, 0));
    return row;
}

enum class Choice { All, Utf8 };

std::vector<FileResult> Choose(const std::vector<FileResult>& results, Choice choice) {
    std::vector<FileResult> chosen;
    for (const FileResult& result : results) {
        if (choice == Choice::All || result.entry->group == CorpusGroup::Utf8) {
            chosen.push_back(result);
        }
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

Row MeanRow(const char* title, const std::vector<FileResult>& results) {
    Row row = {title, ""};
    for (std::size_t i = 0; i < kLibraryCount; ++i) {
        std::vector<double> speeds;
        for (const FileResult& result : results) {
            speeds.push_back(result.speeds[i]);
        }
        row.push_back(Number(GeometricMean(speeds), 0));
    }
    for (std::size_t i = kEspalier + 1; i < kLibraryCount; ++i) {
        row.push_back(Number(MeanRatio(results, i), 2));
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

std::string DescribeSetting() {
    std::string text = "machine:   " + ProcessorName() + "\n";
#if defined(__clang__)
    text += "compiler:  clang " __clang_version__ "\n";
#else
    text += "compiler:  g++ " __VERSION__ "\n";
#endif
    text += "libraries:";
    for (const Library& library : Libraries()) {
        text += std::string(library.name == Libraries().front().name ? " " : ", ") + library.title +
                " " + library.version();
    }
    return text + "\n";
}

std::string FormatTable(const std::vector<FileResult>& results, ReportFormat format) {
    std::string text = "MB/s from memory; then how many times as fast as each peer\n\n";
    text += FormatRow(HeadRow(), format);
    if (format == ReportFormat::Markdown) {
        text += "|---";
        for (std::size_t i = 1; i < HeadRow().size(); ++i) {
            text += "|---:";
        }
        text += "|\n";
    }
    for (const FileResult& result : results) {
        text += FormatRow(ResultRow(result), format);
    }
    const std::vector<FileResult> utf8 = Choose(results, Choice::Utf8);
    if (!utf8.empty()) text += FormatRow(MeanRow("mean of UTF-8", utf8), format);
    if (!results.empty()) text += FormatRow(MeanRow("mean of all", results), format);
    return text;
}

std::vector<Bar> JudgeBars(const std::vector<FileResult>& results) {
    std::vector<Bar> bars;
    const std::vector<FileResult> utf8 = Choose(results, Choice::Utf8);
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

std::string FormatBars(const std::vector<Bar>& bars, ReportFormat format) {
    std::string text;
    for (const Bar& bar : bars) {
        const std::string verdict = bar.IsMet() ? "OK" : "MISS";
        const std::string numbers =
            Number(bar.measured, 2) + " times, wanted " + Number(bar.wanted, 0);
        if (format == ReportFormat::Markdown) {
            text += "- " + bar.title + ": " + numbers + " (" + verdict + ")\n";
        } else {
            text +=
                verdict + std::string(6 - verdict.size(), ' ') + bar.title + ": " + numbers + "\n";
        }
    }
    return text;
}

}  // namespace bench
