// SPDX-License-Identifier: MIT
// Measures how fast we style pages with Bootstrap 5, and litehtml, in pairs, and prints the table
// and the bars.
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "css/StylingReport.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kSmallPage = 10'000;
constexpr std::size_t kLargePage = 100'000;
constexpr std::size_t kCheckedPage = 1'000;

constexpr char kHelp[] =
    "usage: espalier_style_ratios [--rounds N] [--min-time SECONDS] [--markdown] [--figures FILE] "
    "[--check]\n"
    "                             [--enforce]\n"
    "\n"
    "Makes pages of 10,000 and 100,000 elements with the class names of Bootstrap 5, styles every\n"
    "element, and has litehtml do so; prints times, ratios and bars. The sheet is the one that\n"
    "scripts/fetch-sheets gets, in build/sheets or the directory ESPALIER_SHEETS; without it\n"
    "nothing is measured.\n"
    "\n"
    "  --rounds N          rounds of all ways (5), of the large page 1 with litehtml; the median\n"
    "                      counts\n"
    "  --min-time SECONDS  how long a way works in a round, at least (0.2)\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what they see, on a page of 1,000 elements\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when they do not see the same.\n";

// Returns the text of the sheet, empty when there is none.
std::string ReadSheet() {
    const char* const directory = std::getenv("ESPALIER_SHEETS");
    std::ifstream file(std::string(directory == nullptr ? "build/sheets" : directory) +
                       "/bootstrap-5.css");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int Run(const bench::RunOptions& options) {
    const std::string sheet = ReadSheet();
    if (sheet.empty()) {
        std::printf("No sheet to style pages with: scripts/fetch-sheets gets it.\n");
        return EXIT_SUCCESS;
    }
    const std::string disagreement = bench::StylingDisagreement(kCheckedPage, sheet);
    if (!disagreement.empty()) {
        std::fprintf(stderr, "NOT THE SAME, not measured:\n%s", disagreement.c_str());
        return bench::kFailure;
    }
    if (options.checkOnly) return EXIT_SUCCESS;
    const std::vector<bench::StylingResult> results = {
        bench::MeasureStyling(kSmallPage, sheet, options.measure),
        bench::MeasureStyling(kLargePage, sheet, options.measure)};
    const double growth =
        bench::MeasureStylingGrowth(kSmallPage, kLargePage, sheet, options.measure);
    return bench::Publish(bench::FormatStyling(results, options.format),
                          bench::StylingFigures(results, growth), options);
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunProgram({"espalier_style_ratios", kHelp, Run}, argc, argv, {});
}
