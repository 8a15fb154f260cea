// SPDX-License-Identifier: MIT
#include "dom/DomReport.h"

#include <espalier/dom/Element.h>

#include "common/Charts.h"
#include "common/RatioTable.h"
#include "common/Setting.h"
#include "dom/TreeLibrary.h"
#include "dom/TreeSize.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bench {

namespace {

std::vector<const char*> ShortTitles() {
    std::vector<const char*> titles;
    for (const TreeLibrary& library : TreeLibraries()) {
        titles.push_back(library.shortTitle);
    }
    return titles;
}

// Returns our share of the heap that another library takes.
double HeapAgainst(TreeLibraryIndex library, const TreeSizes& sizes) {
    return sizes.heaps[kEspalierTree] / sizes.heaps[library];
}

double MeanHeapAgainst(TreeLibraryIndex library, const std::vector<TreeSizes>& sizes) {
    std::vector<double> shares;
    for (const TreeSizes& size : sizes) {
        shares.push_back(HeapAgainst(library, size));
    }
    return GeometricMean(shares);
}

std::vector<TreeSizes> OnlyUtf8(const std::vector<TreeSizes>& sizes) {
    std::vector<TreeSizes> chosen;
    for (const TreeSizes& size : sizes) {
        if (size.entry->group == CorpusGroup::Utf8) chosen.push_back(size);
    }
    return chosen;
}

TableRow SizeRow(const TreeSizes& size) {
    TableRow row = {size.entry->title, FormatNumber(size.bytes / 1e6, 1)};
    for (const double heap : size.heaps) {
        row.push_back(FormatNumber(heap / size.bytes, 2));
    }
    row.push_back(FormatNumber(HeapAgainst(kLibxmlTree, size), 2));
    row.push_back(FormatNumber(HeapAgainst(kPugixmlFullTree, size), 2));
    row.push_back(FormatNumber(size.heaps[kEspalierTree] / size.nodes, 0));
    return row;
}

TableRow MeanSizeRow(const char* title, const std::vector<TreeSizes>& sizes) {
    TableRow row = {title, ""};
    for (std::size_t i = 0; i < kTreeLibraryCount; ++i) {
        std::vector<double> times;
        for (const TreeSizes& size : sizes) {
            times.push_back(size.heaps[i] / size.bytes);
        }
        row.push_back(FormatNumber(GeometricMean(times), 2));
    }
    row.push_back(FormatNumber(MeanHeapAgainst(kLibxmlTree, sizes), 2));
    row.push_back(FormatNumber(MeanHeapAgainst(kPugixmlFullTree, sizes), 2));
    row.emplace_back();
    return row;
}

std::vector<Bar> JudgeTrees(const std::vector<FileResult>& results,
                            const std::vector<TreeSizes>& sizes) {
    std::vector<Bar> bars;
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) {
        const std::string over = ", geometric mean of " + std::to_string(utf8.size()) + " files";
        bars.push_back({"libxml2's tree" + over, 4, MeanRatio(utf8, kLibxmlTree)});
        bars.push_back({"pugixml with full content" + over, 1, MeanRatio(utf8, kPugixmlFullTree)});
        bars.push_back({"heap of pugixml with full content" + over, 1,
                        MeanHeapAgainst(kPugixmlFullTree, OnlyUtf8(sizes)), "times", true});
    }
    const auto largest =
        std::max_element(sizes.begin(), sizes.end(), [](const TreeSizes& a, const TreeSizes& b) {
            return HeapAgainst(kLibxmlTree, a) < HeapAgainst(kLibxmlTree, b);
        });
    bars.push_back(
        {std::string("heap of libxml2's tree, most of all files (") + largest->entry->title + ")",
         0.5, HeapAgainst(kLibxmlTree, *largest), "times", true});
    bars.push_back({"an element without attributes", 100, static_cast<double>(sizeof(Dom::Element)),
                    "bytes", true});
    return bars;
}

// What the heap holds is the same in every round, so one is enough.
Chart ChartOfHeaps(const std::vector<TreeSizes>& sizes, const std::string& title) {
    Chart chart = {"heap", title, "times the file", true, {{}}};
    for (std::size_t i = 0; i < kTreeLibraryCount; ++i) {
        std::vector<double> times;
        std::size_t count = 0;
        for (const TreeSizes& size : sizes) {
            times.push_back(size.heaps[i] / size.bytes);
            count += std::isnan(times.back()) ? 0U : 1U;
        }
        const std::string note = NoteOfFiles(count, sizes.size());
        chart.groups.front().bars.push_back(BarOfRounds(
            TreeLibraries()[i].title + note, i == kEspalierTree, {GeometricMean(times)}));
    }
    return chart;
}

}  // namespace

FileResult MeasureTrees(const CorpusFile& file, MeasureOptions options) {
    volatile std::int64_t sink = 0;
    std::vector<Work> works;
    for (const TreeLibrary& library : TreeLibraries()) {
        works.emplace_back();
        if (!library.takes(*file.entry)) continue;
        works.back() = [&] { sink = sink + VisitTrees(library, file).Sum(); };
    }
    options.prepare = EmptyHeap;
    return {Measure(static_cast<double>(file.bytes) / 1e6, works, options), file.entry};
}

TreeSizes WeighTrees(const CorpusFile& file) {
    const TreeTotals totals = VisitTrees(TreeLibraries()[kEspalierTree], file);
    TreeSizes sizes = {file.entry,
                       static_cast<double>(file.bytes),
                       static_cast<double>(totals.elements + totals.attributes),
                       {}};
    for (const TreeLibrary& library : TreeLibraries()) {
        sizes.heaps.push_back(library.takes(*file.entry)
                                  ? static_cast<double>(HeapOfTrees(library, file))
                                  : std::numeric_limits<double>::quiet_NaN());
    }
    return sizes;
}

std::string FormatTrees(const std::vector<FileResult>& results, TableFormat format) {
    std::vector<TableRow> rows = {RatioHead(ShortTitles())};
    for (const FileResult& result : results) {
        rows.push_back(RatioRow(result));
    }
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) rows.push_back(RatioMeanRow("mean of UTF-8", utf8));
    rows.push_back(RatioMeanRow("mean of all", results));
    return "Loading from memory, walking and freeing: MB/s, then how many times as fast as each "
           "peer:\n\n" +
           FormatTable(rows, format);
}

std::string FormatSizes(const std::vector<TreeSizes>& sizes, TableFormat format) {
    TableRow head = {"file", "MB"};
    for (const char* title : ShortTitles()) {
        head.emplace_back(title);
    }
    for (const char* title : {"of libxml2", "of pugi full", "bytes a node"}) {
        head.emplace_back(title);
    }
    std::vector<TableRow> rows = {head};
    for (const TreeSizes& size : sizes) {
        rows.push_back(SizeRow(size));
    }
    const std::vector<TreeSizes> utf8 = OnlyUtf8(sizes);
    if (!utf8.empty()) rows.push_back(MeanSizeRow("mean of UTF-8", utf8));
    rows.push_back(MeanSizeRow("mean of all", sizes));
    return "Heap after loading: times the file; our share of what others take; our bytes for each "
           "element\nor attribute, texts included:\n\n" +
           FormatTable(rows, format);
}

Figures TreeFigures(const std::vector<FileResult>& results, const std::vector<TreeSizes>& sizes) {
    Figures figures = FiguresOfThisBuild();
    std::vector<const char*> titles;
    for (const TreeLibrary& library : TreeLibraries()) {
        figures.libraries.push_back({library.title, library.version()});
        titles.push_back(library.title);
    }
    const std::vector<FileResult> utf8 = OnlyOf(CorpusGroup::Utf8, results);
    if (!utf8.empty()) {
        const std::string over = ": mean of " + std::to_string(utf8.size()) + " documents in UTF-8";
        figures.charts.push_back(ChartOfMeans("trees", "Loading a tree, walking and freeing" + over,
                                              titles, kLibxmlTree, utf8));
        figures.charts.push_back(ChartOfHeaps(OnlyUtf8(sizes), "Heap of a loaded tree" + over));
    }
    figures.bars = JudgeTrees(results, sizes);
    return figures;
}

}  // namespace bench
