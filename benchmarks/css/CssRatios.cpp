// SPDX-License-Identifier: MIT
// Measures our style sheets and litehtml's in pairs, and the matching of rules, and prints the
// tables and the bars.
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "css/CssReport.h"
#include "css/MadeSheet.h"
#include "css/RuleMatching.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kSmallSheet = 600'000;
constexpr std::size_t kLargeSheet = 10'000'000;

constexpr char kHelp[] =
    "usage: espalier_css_ratios [--rounds N] [--min-time SECONDS] [--markdown] [--figures FILE] "
    "[--check]\n"
    "                           [--enforce]\n"
    "\n"
    "Makes style sheets of 0.6 and 10 MB, reads them with CssReader into a CSSStyleSheet and with\n"
    "litehtml, checks that both see the rules that there are, and matches 10,000 rules with "
    "10,000\n"
    "elements; prints speeds, ratios and bars.\n"
    "\n"
    "  --rounds N          rounds of all ways (5); the median counts\n"
    "  --min-time SECONDS  how long a way works in a round, at least (0.2)\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what they see\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when they do not see the same.\n";

int Run(const bench::RunOptions& options) {
    const bench::MadeSheet small = bench::MakeSheetOfSize(kSmallSheet);
    const bench::MadeSheet large = bench::MakeSheetOfSize(kLargeSheet);
    const std::string disagreement =
        bench::SheetDisagreement(small) + bench::SheetDisagreement(large);
    if (!disagreement.empty()) {
        std::fprintf(stderr, "NOT THE SAME, not measured:\n%s", disagreement.c_str());
        return bench::kFailure;
    }
    if (options.checkOnly) {
        bench::CheckMatching();
        return EXIT_SUCCESS;
    }
    const std::vector<bench::SheetResult> results = {bench::MeasureSheet(small, options.measure),
                                                     bench::MeasureSheet(large, options.measure)};
    const double growth = bench::MeasureGrowth(small, large, options.measure);
    const bench::MatchingResult matching = bench::MeasureMatching(options.measure);
    const std::string tables = bench::FormatSheets(results, options.format) + "\n" +
                               bench::FormatMatching(matching, options.format);
    return bench::Publish(tables, bench::SheetFigures(results, growth, matching), options);
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunProgram({"espalier_css_ratios", kHelp, Run}, argc, argv, {});
}
