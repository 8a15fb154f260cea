// SPDX-License-Identifier: MIT
// Measures our reader and its peers in pairs and prints the table of ratios and the bars.
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "reader/Library.h"
#include "reader/MeasureVisitors.h"
#include "reader/Report.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_reader_ratios [--rounds N] [--min-time SECONDS] [--file NAME]... "
    "[--markdown] [--figures FILE]\n"
    "                              [--check] [--enforce]\n"
    "\n"
    "Reads the documents in build/corpus (or $ESPALIER_CORPUS) with every library, checks that "
    "all\n"
    "of them see the same, and prints speeds, ratios and bars.\n"
    "\n"
    "  --rounds N          rounds of all libraries (5); the median counts\n"
    "  --min-time SECONDS  how long a library works on a file in a round, at least (0.2)\n"
    "  --file NAME         only this file; may be repeated\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what the libraries see\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when a file is missing or the libraries do not see the same.\n";

int Run(const bench::RunOptions& options) {
    std::vector<bench::FileResult> results;
    bool allAgree = true;
    for (const bench::CorpusEntry* entry : options.entries) {
        const bench::CorpusFile file = bench::LoadCorpusFile(*entry);
        const std::string disagreement = bench::Disagreement(file);
        if (!disagreement.empty()) {
            std::fprintf(stderr, "%s: NOT THE SAME, not measured:\n%s", entry->title,
                         disagreement.c_str());
            allAgree = false;
            continue;
        }
        std::fprintf(stderr, "%s: all see the same%s\n", entry->title,
                     options.checkOnly ? "" : "; measuring");
        if (!options.checkOnly) results.push_back(bench::MeasureLibraries(file, options.measure));
    }
    if (options.checkOnly || results.empty()) return allAgree ? EXIT_SUCCESS : bench::kFailure;

    const int status = bench::Publish(bench::FormatResults(results, options.format),
                                      bench::ReaderFigures(results), options);
    return allAgree ? status : bench::kFailure;
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunProgram({"espalier_reader_ratios", kHelp, Run}, argc, argv, {});
}
