// SPDX-License-Identifier: MIT
#include "css/StylingReport.h"

#include "common/Charts.h"
#include "common/Setting.h"
#include "css/CardPage.h"
#include "css/LitehtmlVersion.h"
#include "css/PageStyling.h"

#include <vector>

namespace bench {

namespace {

constexpr const char* kFontStyles[] = {"oblique", "italic"};

double MillisecondsOf(double seconds) { return seconds * 1e3; }

double Median(const std::vector<double>& values) { return Quantile(values, 0.5); }

// Measures the steps one by one.
void MeasureSteps(const std::string& text, const std::string& sheet, int rounds,
                  StylingResult& result) {
    std::vector<double> load;
    std::vector<double> read;
    std::vector<double> style;
    std::vector<double> restyle;
    volatile std::size_t sink = 0;
    for (int round = 0; round < rounds; ++round) {
        double last = ProcessorSeconds();
        const auto note = [&last](std::vector<double>& seconds) {
            const double now = ProcessorSeconds();
            seconds.push_back(now - last);
            last = now;
        };
        EspalierPage page(text);
        note(load);
        page.AddSheet(sheet);
        note(read);
        sink = sink + page.Style();
        note(style);
        for (const char* const fontStyle : kFontStyles) {
            page.ChangeRareRule(fontStyle);
            sink = sink + page.Style();
            note(restyle);
        }
    }
    result.loadSeconds = Median(load);
    result.sheetSeconds = Median(read);
    result.styleSeconds = Median(style);
    result.restyleSeconds = Median(restyle);
}

std::vector<Bar> JudgeStyling(const std::vector<StylingResult>& results, double growth) {
    std::vector<Bar> bars;
    for (const StylingResult& result : results) {
        bars.push_back({"litehtml, a page of " + std::to_string(result.elements) + " elements", 3,
                        result.ratio});
    }
    bars.push_back({"an element of the large page, compared with one of the small page", 1.25,
                    growth, "times as long", true});
    return bars;
}

Chart ChartOfPages(const std::vector<StylingResult>& results) {
    Chart chart = {"styles",
                   "Styling every element of a page with Bootstrap 5",
                   "microseconds an element",
                   true,
                   {}};
    for (const StylingResult& result : results) {
        const auto bar = [&result](const char* title, bool isOurs, std::vector<double> seconds) {
            for (double& value : seconds)
                value *= 1e6 / static_cast<double>(result.elements);
            return BarOfRounds(title, isOurs, seconds);
        };
        chart.groups.push_back(
            {std::to_string(result.elements) + " elements",
             {bar("espalier", true, result.rounds[0]), bar("litehtml", false, result.rounds[1])}});
    }
    return chart;
}

}  // namespace

std::string StylingDisagreement(std::size_t elements, const std::string& sheet) {
    const std::string text = MakeCardPage(elements);
    EspalierPage page(text);
    page.AddSheet(sheet);
    const std::size_t ours = page.Style();
    const std::size_t theirs = StyleLitehtmlPage(text, sheet);
    std::string wrong;
    if (ours != elements) wrong += "  espalier: " + std::to_string(ours) + " elements\n";
    if (theirs != elements) wrong += "  litehtml: " + std::to_string(theirs) + " elements\n";
    const std::size_t rare = page.CountRare("italic");
    page.ChangeRareRule("oblique");
    page.Style();
    if (rare == 0 || rare > elements / 100 || page.CountRare("oblique") != rare) {
        wrong += "  espalier: " + std::to_string(rare) + " elements in italics, then " +
                 std::to_string(page.CountRare("oblique")) + " that are oblique\n";
    }
    return wrong;
}

StylingResult MeasureStyling(std::size_t elements, const std::string& sheet,
                             const MeasureOptions& options) {
    const std::string text = MakeCardPage(elements);
    volatile std::size_t sink = 0;
    const Work works[] = {
        [&] { sink = sink + StyleEspalierPage(text, sheet); },
        [&] { sink = sink + StyleLitehtmlPage(text, sheet); },
    };
    // It takes litehtml long enough to be measured well with fewer rounds.
    MeasureOptions fewer = options;
    constexpr std::size_t kLargePage = 50'000;
    if (elements > kLargePage) fewer.rounds = 1;
    const double megabytes = static_cast<double>(text.size()) / 1e6;
    const Measurement both = Measure(megabytes, works, fewer);
    StylingResult result;
    result.elements = elements;
    result.wholeSeconds = megabytes / both.speeds[0];
    result.litehtmlSeconds = megabytes / both.speeds[1];
    result.ratio = both.ratios[1];
    for (const std::vector<double>& speeds : both.rounds) {
        std::vector<double>& seconds = result.rounds.emplace_back();
        for (const double speed : speeds)
            seconds.push_back(megabytes / speed);
    }
    MeasureSteps(text, sheet, options.rounds, result);
    return result;
}

double MeasureStylingGrowth(std::size_t small, std::size_t large, const std::string& sheet,
                            const MeasureOptions& options) {
    const std::string smallPage = MakeCardPage(small);
    const std::string largePage = MakeCardPage(large);
    volatile std::size_t sink = 0;
    const std::size_t times = large / small;
    const Work works[] = {
        [&] {
            for (std::size_t i = 0; i < times; ++i)
                sink = sink + StyleEspalierPage(smallPage, sheet);
        },
        [&] { sink = sink + StyleEspalierPage(largePage, sheet); },
    };
    const double ratio = Measure(1, works, options).ratios[1];
    return ratio * static_cast<double>(times * small) / static_cast<double>(large);
}

std::string FormatStyling(const std::vector<StylingResult>& results, TableFormat format) {
    std::vector<TableRow> rows = {{"elements", "tree", "sheet", "styles", "all", "us/element",
                                   "litehtml", "/litehtml", "after a change"}};
    for (const StylingResult& result : results) {
        const double perElement = result.wholeSeconds / static_cast<double>(result.elements);
        rows.push_back(
            {std::to_string(result.elements), FormatNumber(MillisecondsOf(result.loadSeconds), 1),
             FormatNumber(MillisecondsOf(result.sheetSeconds), 1),
             FormatNumber(MillisecondsOf(result.styleSeconds), 1),
             FormatNumber(MillisecondsOf(result.wholeSeconds), 1),
             FormatNumber(perElement * 1e6, 2),
             FormatNumber(MillisecondsOf(result.litehtmlSeconds), 0), FormatNumber(result.ratio, 1),
             FormatNumber(MillisecondsOf(result.restyleSeconds), 1)});
    }
    return "Styling every element of a page with Bootstrap 5, in ms; styling it again after a rule "
           "for one of a\nhundred elements has changed:\n\n" +
           FormatTable(rows, format);
}

Figures StylingFigures(const std::vector<StylingResult>& results, double growth) {
    Figures figures = FiguresOfThisBuild();
    figures.libraries = {{"espalier", EspalierVersion()}, {"litehtml", LitehtmlVersion()}};
    figures.charts = {ChartOfPages(results)};
    figures.bars = JudgeStyling(results, growth);
    return figures;
}

}  // namespace bench
