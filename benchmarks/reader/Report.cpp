// SPDX-License-Identifier: MIT
#include "reader/Report.h"

#include "common/Charts.h"
#include "common/Corpus.h"
#include "common/RatioTable.h"
#include "common/Setting.h"
#include "reader/Library.h"

#include <algorithm>

namespace bench {

namespace {

// How much of the time of the default mode the standard mode may take.
constexpr double kMostOfStandard = 1.05;

std::vector<TableRow> ResultRows(const std::vector<FileResult>& results) {
    std::vector<const char*> titles;
    for (const Library& library : Libraries())
        titles.push_back(library.shortTitle);
    std::vector<TableRow> rows = {RatioHead(titles)};
    for (const FileResult& result : results) {
        rows.push_back(RatioRow(result));
    }
    return rows;
}

std::vector<FileResult> WithoutEntities(const std::vector<FileResult>& results) {
    std::vector<FileResult> chosen;
    for (const FileResult& result : results) {
        if (result.entry->group != CorpusGroup::Entities) chosen.push_back(result);
    }
    return chosen;
}

// The results with the standard mode in the place of the default one.
std::vector<FileResult> OfStandardMode(std::vector<FileResult> results) {
    for (FileResult& result : results) {
        const double standard = result.ratios[kEspalierStandard];
        for (double& ratio : result.ratios)
            ratio /= standard;
    }
    return results;
}

void AddStandardBars(const std::vector<FileResult>& results, std::vector<Bar>& bars) {
    const std::string files = " of " + std::to_string(results.size()) + " files";
    bars.push_back({"time of the standard mode, geometric mean" + files, kMostOfStandard,
                    MeanRatio(results, kEspalierStandard), "times that of the default one", true});
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, OfStandardMode(results));
    if (utf8.empty()) return;
    const std::string over = " in standard mode, " + std::to_string(utf8.size()) + " files";
    bars.push_back({"libxml2's reader" + over, 5, MeanRatio(utf8, kLibxmlReader)});
    bars.push_back({"expat with namespaces" + over, 3, MeanRatio(utf8, kExpatNamespaces)});
    bars.push_back({"libxml2 SAX2" + over, 2, MeanRatio(utf8, kLibxmlSax2)});
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
        if (result.entry->group == CorpusGroup::CodePage) {
            bars.push_back({std::string("libxml2's reader, ") + result.entry->title, 4,
                            result.ratios[kLibxmlReader]});
        }
        if (result.entry->group != CorpusGroup::OtherForm) continue;
        bars.push_back({std::string("expat with namespaces, ") + result.entry->title, 3,
                        result.ratios[kExpatNamespaces]});
    }
    if (!results.empty()) AddStandardBars(results, bars);
    return bars;
}

Chart ChartOfLibraries(const std::vector<FileResult>& utf8) {
    std::vector<const char*> titles;
    for (const Library& library : Libraries())
        titles.push_back(library.title);
    return ChartOfMeans("reader",
                        "Reading every node, name and value: mean of " +
                            std::to_string(utf8.size()) + " documents in UTF-8",
                        titles, kLibxmlReader, utf8);
}

Chart ChartOfModes(const std::vector<FileResult>& results) {
    Chart chart = {
        "standard", "Reading in the default mode and in standard mode", "MB/s", false, {}};
    for (const FileResult& result : results) {
        chart.groups.push_back({result.entry->title,
                                {BarOfRounds("default", true, result.rounds[kEspalier]),
                                 BarOfRounds("standard", true, result.rounds[kEspalierStandard])}});
    }
    return chart;
}

}  // namespace

std::string FormatResults(const std::vector<FileResult>& results, TableFormat format) {
    std::string text;
    const std::vector<FileResult> plain = WithoutEntities(results);
    if (!plain.empty()) {
        std::vector<TableRow> rows = ResultRows(plain);
        const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, plain);
        if (!utf8.empty()) rows.push_back(RatioMeanRow("mean of UTF-8", utf8));
        rows.push_back(RatioMeanRow("mean of all", plain));
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

Figures ReaderFigures(const std::vector<FileResult>& results) {
    Figures figures = FiguresOfThisBuild();
    for (const Library& library : Libraries())
        figures.libraries.push_back({library.title, library.version()});
    const std::vector<FileResult> plain = WithoutEntities(results);
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, plain);
    if (!utf8.empty()) figures.charts.push_back(ChartOfLibraries(utf8));
    if (!plain.empty()) figures.charts.push_back(ChartOfModes(plain));
    figures.bars = JudgeBars(results);
    return figures;
}

}  // namespace bench
