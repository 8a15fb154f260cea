// SPDX-License-Identifier: MIT
// Measures the decoding of code pages, as the reader does it, and that of iconv in pairs, and
// prints the table of ratios and the bars.
#include "common/Charts.h"
#include "common/Measure.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "common/Table.h"
#include "encoding/CharCodec.h"
#include "encoding/PageTexts.h"

#include <cstdio>
#include <cstdlib>
#include <gnu/libc-version.h>
#include <string>
#include <vector>

namespace {

constexpr double kWantedRatio = 3;

constexpr char kHelp[] =
    "usage: espalier_encoding_ratios [--rounds N] [--min-time SECONDS] [--markdown] [--figures "
    "FILE] [--check]\n"
    "                                [--enforce]\n"
    "\n"
    "Decodes a text in each of some code pages to UTF-8, as the reader does and with iconv, "
    "checks\n"
    "that both give the same, and prints speeds, ratios and bars.\n"
    "\n"
    "  --rounds N          rounds of both (5); the median counts\n"
    "  --min-time SECONDS  how long each works on a text in a round, at least (0.2)\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --check             only compare what they give\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when they do not give the same.\n";

std::size_t Decode(const bench::PageText& text, std::string& output) {
    const auto* position = reinterpret_cast<const unsigned char*>(text.bytes.data());
    auto* const begin = reinterpret_cast<unsigned char*>(output.data());
    unsigned char* destination = begin;
    text.codec->DecodeRun(position, position + text.bytes.size(), destination,
                          begin + output.size());
    return static_cast<std::size_t>(destination - begin);
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::TableRow> rows = {{"text", "MB", "espalier", "iconv", "/iconv", "spread %"}};
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()},
                         {"iconv of glibc", gnu_get_libc_version()}};
    bench::Chart chart = {"encodings", "Decoding code pages to UTF-8", "MB/s", false, {}};
    for (const bench::PageText& text : bench::MakePageTexts()) {
        bench::Iconv iconv(text.iconvName, "UTF-8");
        std::string ours(3 * text.bytes.size(), '\0'), theirs(ours.size(), '\0');
        const std::size_t length = Decode(text, ours);
        if (length != iconv.Convert(text.bytes, theirs) ||
            ours.compare(0, length, theirs, 0, length) != 0) {
            std::fprintf(stderr, "%s: NOT THE SAME, not measured\n", text.title);
            return bench::kFailure;
        }
        if (options.checkOnly) continue;
        const bench::Work works[] = {[&] { Decode(text, ours); },
                                     [&] { iconv.Convert(text.bytes, theirs); }};
        const double megabytes = static_cast<double>(text.bytes.size()) / 1e6;
        const bench::Measurement result = bench::Measure(megabytes, works, options.measure);
        rows.push_back({text.title, bench::FormatNumber(megabytes, 1),
                        bench::FormatNumber(result.speeds[0], 0),
                        bench::FormatNumber(result.speeds[1], 0),
                        bench::FormatNumber(result.ratios[1], 2),
                        bench::FormatNumber(result.spread * 100, 0)});
        figures.bars.push_back(
            {std::string("iconv, ") + text.title, kWantedRatio, result.ratios[1]});
        chart.groups.push_back({text.title,
                                {bench::BarOfRounds("espalier", true, result.rounds[0]),
                                 bench::BarOfRounds("iconv", false, result.rounds[1])}});
    }
    if (options.checkOnly) return EXIT_SUCCESS;
    figures.charts = {chart};
    return bench::Publish("MB/s of encoded text in memory, then how many times as fast:\n\n" +
                              bench::FormatTable(rows, options.format),
                          figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    return bench::RunProgram({"espalier_encoding_ratios", kHelp, Run}, argc, argv, {});
}
