// SPDX-License-Identifier: MIT
// Measures our tree and the peers' in pairs, weighs them, and prints the tables and the bars.
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "dom/DomReport.h"
#include "dom/TreeLibrary.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_dom_ratios [--rounds N] [--min-time SECONDS] [--file NAME]... [--markdown] "
    "[--figures FILE]\n"
    "                           [--check] [--enforce]\n"
    "\n"
    "Loads the documents in build/corpus (or $ESPALIER_CORPUS) into the trees of all libraries,\n"
    "checks that these hold the same, and prints speeds, ratios, sizes and bars. Documents that\n"
    "declare entities are left out.\n"
    "\n"
    "  --rounds N          rounds of all libraries (5); the median counts\n"
    "  --min-time SECONDS  how long a library works on a file in a round, at least (0.2)\n"
    "  --file NAME         only this file; may be repeated\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what is in the trees\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when a file is missing or the trees do not hold the same.\n";

int Run(const bench::RunOptions& options) {
    std::vector<bench::FileResult> results;
    std::vector<bench::TreeSizes> sizes;
    bool allAgree = true;
    for (const bench::CorpusEntry* entry : options.entries) {
        if (entry->group == bench::CorpusGroup::Entities) continue;
        const bench::CorpusFile file = bench::LoadCorpusFile(*entry);
        const std::string disagreement = bench::TreeDisagreement(file);
        if (!disagreement.empty()) {
            std::fprintf(stderr, "%s: NOT THE SAME, not measured:\n%s", entry->title,
                         disagreement.c_str());
            allAgree = false;
            continue;
        }
        std::fprintf(stderr, "%s: all hold the same%s\n", entry->title,
                     options.checkOnly ? "" : "; measuring");
        if (options.checkOnly) continue;
        results.push_back(bench::MeasureTrees(file, options.measure));
        sizes.push_back(bench::WeighTrees(file));
    }
    if (options.checkOnly || results.empty()) return allAgree ? EXIT_SUCCESS : bench::kFailure;

    const std::string tables = bench::FormatTrees(results, options.format) + "\n" +
                               bench::FormatSizes(sizes, options.format);
    const int status = bench::Publish(tables, bench::TreeFigures(results, sizes), options);
    return allAgree ? status : bench::kFailure;
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunProgram({"espalier_dom_ratios", kHelp, Run}, argc, argv, {});
}
