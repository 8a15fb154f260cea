// SPDX-License-Identifier: MIT
#include "sax/SaxReport.h"

#include "common/Charts.h"
#include "common/Corpus.h"
#include "common/RatioTable.h"
#include "common/Setting.h"
#include "sax/EventLibrary.h"

#include <algorithm>
#include <memory>

namespace bench {

namespace {

std::vector<Bar> JudgeEvents(const std::vector<FileResult>& results) {
    constexpr double kMostTime = 1.15;  // of that which the pull parser takes for the same
    std::vector<Bar> bars;
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) {
        const std::string over = ", geometric mean of " + std::to_string(utf8.size()) + " files";
        bars.push_back({"expat with namespaces" + over, 3, MeanRatio(utf8, kExpatEvents)});
        bars.push_back({"libxml2 SAX2" + over, 2, MeanRatio(utf8, kLibxmlEvents)});
        bars.push_back({"our pull parser (15 % more time)" + over, 1 / kMostTime,
                        MeanRatio(utf8, kEspalierPull)});
    }
    const auto slowest = std::min_element(
        results.begin(), results.end(), [](const FileResult& a, const FileResult& b) {
            return a.ratios[kLibxmlEvents] < b.ratios[kLibxmlEvents];
        });
    bars.push_back(
        {std::string("libxml2 SAX2, lowest of all files (") + slowest->entry->title + ")", 1.5,
         slowest->ratios[kLibxmlEvents]});
    return bars;
}

}  // namespace

FileResult MeasureEvents(const CorpusFile& file, const MeasureOptions& options) {
    std::vector<std::unique_ptr<EventVisitor<Touch>>> visitors;
    for (const EventLibrary& library : EventLibraries()) {
        visitors.push_back(library.takes(*file.entry) ? library.makeTouching() : nullptr);
    }
    volatile std::uint64_t sink = 0;
    std::vector<Work> works;
    for (const auto& visitor : visitors) {
        works.emplace_back();
        if (visitor == nullptr) continue;
        works.back() = [&] { sink = sink + VisitEvents(*visitor, file).sum; };
    }
    return {Measure(static_cast<double>(file.bytes) / 1e6, works, options), file.entry};
}

std::string FormatEvents(const std::vector<FileResult>& results, TableFormat format) {
    std::vector<const char*> titles;
    for (const EventLibrary& library : EventLibraries()) {
        titles.push_back(library.shortTitle);
    }
    std::vector<TableRow> rows = {RatioHead(titles)};
    for (const FileResult& result : results) {
        rows.push_back(RatioRow(result));
    }
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) rows.push_back(RatioMeanRow("mean of UTF-8", utf8));
    rows.push_back(RatioMeanRow("mean of all", results));
    return "MB/s from memory, then how many times as fast as each other way:\n\n" +
           FormatTable(rows, format);
}

Figures EventFigures(const std::vector<FileResult>& results) {
    Figures figures = FiguresOfThisBuild();
    std::vector<const char*> titles;
    for (const EventLibrary& library : EventLibraries()) {
        figures.libraries.push_back({library.title, library.version()});
        titles.push_back(library.title);
    }
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) {
        figures.charts.push_back(ChartOfMeans(
            "events",
            "Events of a document: mean of " + std::to_string(utf8.size()) + " documents in UTF-8",
            titles, kExpatEvents, utf8));
    }
    figures.bars = JudgeEvents(results);
    return figures;
}

}  // namespace bench
