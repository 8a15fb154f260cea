// SPDX-License-Identifier: MIT
#include "css/CssReport.h"

#include "common/Charts.h"
#include "common/Setting.h"
#include "css/LitehtmlVersion.h"
#include "css/SheetReading.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace bench {

namespace {

using ReadSheet = SheetTotals (*)(const std::string& text);

// A way to read a sheet.
struct SheetReader {
    const char* title;  // as in the table
    const char* what;   // as in the chart
    ReadSheet read;
    bool isBare;  // it gets the sheet without its comments
};

enum SheetReaderIndex {
    kEspalier,
    kEspalierMade,
    kLitehtml,
    kLitehtmlBare,
    kLitehtmlWhole,
    kParse
};

// litehtml goes through the text from its begin for each comment. So that not only this is
// measured, it gets a sheet without comments, too.
constexpr SheetReader kReaders[] = {
    {"espalier", "CssReader", ReadEspalierSheet, false},
    {"made", "CssReader, properties made", ReadEspalierSheetWhole, false},
    {"litehtml", "litehtml", ReadLitehtmlSheet, false},
    {"bare", "litehtml, no comments", ReadLitehtmlSheet, true},
    {"whole", "the same, properties made", ReadLitehtmlSheetWhole, true},
    {"parse", "ParseStyleSheet()", ParseEspalierSheet, false},
};

std::string Describe(const SheetTotals& totals) {
    return std::to_string(totals.rules) + " rules, " + std::to_string(totals.selectors) +
           " selectors";
}

double MegabytesOf(const MadeSheet& sheet) { return static_cast<double>(sheet.text.size()) / 1e6; }

std::string SizeTitle(const Measurement& result) {
    return FormatNumber(result.megabytes, result.megabytes < 1 ? 1 : 0) + " MB";
}

TableRow MatchingRow(const char* way, std::size_t elements, double seconds) {
    const double pairs = static_cast<double>(elements * kMatchedRules);
    return {way, std::to_string(elements), FormatNumber(seconds * 1e3, 1),
            FormatNumber(pairs / seconds / 1e6, 0)};
}

std::vector<Bar> JudgeCss(const std::vector<SheetResult>& results, double growth,
                          const MatchingResult& matching) {
    std::vector<Bar> bars;
    for (const SheetResult& result : results) {
        // Against the faster of the two.
        bars.push_back({"litehtml, " + SizeTitle(result), 4,
                        std::min(result.ratios[kLitehtml], result.ratios[kLitehtmlBare])});
        // Ratios are how many times as fast as a way the first one is.
        bars.push_back({"litehtml by ParseStyleSheet(), " + SizeTitle(result), 1,
                        std::min(result.ratios[kLitehtml], result.ratios[kLitehtmlBare]) /
                            result.ratios[kParse]});
    }
    bars.push_back({"MB/s of the large sheet, compared with the small one", 0.9, growth});
    bars.push_back({std::to_string(kMatchedRules) + " rules matched with " +
                        std::to_string(kMatchedElements) + " elements, with making the index",
                    1, matching.bothSeconds, "s", true});
    return bars;
}

Chart ChartOfSheets(const std::vector<SheetResult>& results) {
    Chart chart = {"sheets", "Reading a style sheet into rules", "MB/s", false, {}};
    for (const SheetResult& result : results) {
        ChartGroup group = {"a sheet of " + SizeTitle(result), {}};
        for (const SheetReaderIndex i :
             {kEspalier, kParse, kEspalierMade, kLitehtml, kLitehtmlBare, kLitehtmlWhole}) {
            const bool isOurs = i == kEspalier || i == kParse || i == kEspalierMade;
            group.bars.push_back(BarOfRounds(kReaders[i].what, isOurs, result.rounds[i]));
        }
        chart.groups.push_back(group);
    }
    return chart;
}

}  // namespace

std::string SheetDisagreement(const MadeSheet& sheet) {
    const std::string bare = WithoutComments(sheet.text);
    std::string text;
    for (const SheetReader& reader : kReaders) {
        const SheetTotals totals = reader.read(reader.isBare ? bare : sheet.text);
        if (totals == sheet.totals) continue;
        text += std::string("  ") + reader.title + ": " + Describe(totals) +
                ", made: " + Describe(sheet.totals) + "\n";
    }
    return text;
}

SheetResult MeasureSheet(const MadeSheet& sheet, const MeasureOptions& options) {
    const std::string bare = WithoutComments(sheet.text);
    volatile std::size_t sink = 0;
    std::vector<Work> works;
    for (const SheetReader& reader : kReaders) {
        works.emplace_back([&sink, &sheet, &bare, &reader] {
            sink = sink + reader.read(reader.isBare ? bare : sheet.text).rules;
        });
    }
    return {Measure(MegabytesOf(sheet), works, options), sheet.totals};
}

double MeasureGrowth(const MadeSheet& small, const MadeSheet& large,
                     const MeasureOptions& options) {
    volatile std::size_t sink = 0;
    const int times = static_cast<int>(std::lround(MegabytesOf(large) / MegabytesOf(small)));
    const Work works[] = {
        [&] { sink = sink + ReadEspalierSheet(large.text).rules; },
        [&] {
            for (int i = 0; i < times; ++i)
                sink = sink + ReadEspalierSheet(small.text).rules;
        },
    };
    const double smallSecondsPerLarge = Measure(MegabytesOf(large), works, options).ratios[1];
    return smallSecondsPerLarge * MegabytesOf(large) / (times * MegabytesOf(small));
}

std::string FormatSheets(const std::vector<SheetResult>& results, TableFormat format) {
    TableRow head = {"sheet", "rules"};
    for (const SheetReader& reader : kReaders)
        head.emplace_back(reader.title);
    for (std::size_t i = 1; i < std::size(kReaders); ++i)
        head.push_back(std::string("/") + kReaders[i].title);
    head.emplace_back("made/whole");
    head.emplace_back("spread %");
    std::vector<TableRow> rows = {head};
    for (const SheetResult& result : results) {
        TableRow row = {SizeTitle(result), std::to_string(result.totals.rules)};
        for (const double speed : result.speeds)
            row.push_back(FormatNumber(speed, speed < 10 ? 1 : 0));
        for (std::size_t i = 1; i < result.ratios.size(); ++i)
            row.push_back(FormatNumber(result.ratios[i], 2));
        row.push_back(
            FormatNumber(result.ratios[kLitehtmlWhole] / result.ratios[kEspalierMade], 2));
        row.push_back(FormatNumber(result.spread * 100, 0));
        rows.push_back(row);
    }
    return "Reading a sheet from memory into rules and freeing them: MB/s, then how many times as "
           "fast:\n\n" +
           FormatTable(rows, format);
}

std::string FormatMatching(const MatchingResult& result, TableFormat format) {
    const std::vector<TableRow> rows = {
        {"way", "elements", "ms", "million pairs/s"},
        {"compile the rules, make the index", "-", FormatNumber(result.indexSeconds * 1e3, 1), "-"},
        MatchingRow("find rules in the index", kMatchedElements, result.matchSeconds),
        MatchingRow("both", kMatchedElements, result.bothSeconds),
        MatchingRow("find rules in the index", result.asked, result.indexOnThem),
        MatchingRow("ask each rule", result.asked, result.oneByOneSeconds)};
    return "Matching " + std::to_string(kMatchedRules) + " rules with elements (" +
           std::to_string(result.matches) + " matches for all " + std::to_string(kMatchedElements) +
           "):\n\n" + FormatTable(rows, format);
}

Figures SheetFigures(const std::vector<SheetResult>& results, double growth,
                     const MatchingResult& matching) {
    Figures figures = FiguresOfThisBuild();
    figures.libraries = {{"espalier", EspalierVersion()}, {"litehtml", LitehtmlVersion()}};
    figures.charts = {ChartOfSheets(results)};
    figures.bars = JudgeCss(results, growth, matching);
    return figures;
}

}  // namespace bench
