// SPDX-License-Identifier: MIT
// Measures our writer and its peers in pairs and prints the table of ratios and the bars.
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "writer/Base64.h"
#include "writer/DocumentWriter.h"
#include "writer/WriterDocuments.h"
#include "writer/WriterReport.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_writer_ratios [--rounds N] [--min-time SECONDS] [--file NAME]... "
    "[--markdown] [--figures FILE]\n"
    "                              [--check] [--enforce]\n"
    "\n"
    "Records the calls that write 1.5 MB of documents in build/corpus (or $ESPALIER_CORPUS), "
    "makes\n"
    "them on every library, checks that all outputs read the same, and prints speeds, ratios and\n"
    "bars.\n"
    "\n"
    "  --rounds N          rounds of all libraries (5); the median counts\n"
    "  --min-time SECONDS  how long a library writes a document in a round, at least (0.2)\n"
    "  --file NAME         only this file; may be repeated\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what the libraries write\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when a file is missing or the libraries do not write the same.\n";

bench::FileResult MeasureWriters(const bench::CorpusEntry& entry, const bench::Recording& recording,
                                 const bench::MeasureOptions& options) {
    std::vector<std::unique_ptr<bench::DocumentWriter>> writers;
    std::vector<bench::Work> works;
    for (const bench::WriterLibrary& library : bench::WriterLibraries()) {
        bench::DocumentWriter& writer = *writers.emplace_back(library.make(recording));
        works.emplace_back([&writer] { writer.Write(); });
    }
    // Some escape more than others and write more bytes for the same calls: ours count for all.
    bench::DocumentWriter& ours = *writers[bench::kEspalierWriter];
    ours.Write();
    const double megabytes = static_cast<double>(ours.Output().size()) / 1e6;
    return {bench::Measure(megabytes, works, options), &entry};
}

// Returns whether base64 is right.
bool ReportBase64() {
    const std::string wrong = bench::CheckBase64();
    if (!wrong.empty()) std::fprintf(stderr, "base64: NOT RIGHT: %s\n", wrong.c_str());
    return wrong.empty();
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::FileResult> results;
    bool allAgree = ReportBase64();
    for (const bench::CorpusEntry* entry : options.entries) {
        const bench::Recording recording = bench::RecordFile(*entry);
        const std::string disagreement = bench::WriterDisagreement(recording);
        if (!disagreement.empty()) {
            std::fprintf(stderr, "%s: NOT THE SAME, not measured:\n%s", entry->title,
                         disagreement.c_str());
            allAgree = false;
            continue;
        }
        std::fprintf(stderr, "%s: all write the same%s\n", entry->title,
                     options.checkOnly ? "" : "; measuring");
        if (!options.checkOnly) {
            results.push_back(MeasureWriters(*entry, recording, options.measure));
        }
    }
    if (options.checkOnly || results.empty()) return allAgree ? EXIT_SUCCESS : bench::kFailure;

    const bench::Measurement base64 = bench::MeasureBase64(options.measure);
    const std::string tables =
        bench::FormatWriters(results, options.format) + "\n" + bench::FormatBase64(base64);
    const int status = bench::Publish(tables, bench::WriterFigures(results, base64), options);
    return allAgree ? status : bench::kFailure;
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.entries = bench::WriterDocuments();
    return bench::RunProgram({"espalier_writer_ratios", kHelp, Run}, argc, argv, options);
}
