// SPDX-License-Identifier: MIT
// Measures GZipStream against zlib's own gzip files in pairs and prints the table of ratios and the
// bars. Both work on a file in memory, so that no disk is measured.
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>

#include "common/Charts.h"
#include "common/Corpus.h"
#include "common/Measure.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "common/Table.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

using IO::CompressionMode;

constexpr char kHelp[] =
    "usage: espalier_gzip_ratios [--rounds N] [--min-time SECONDS] [--file NAME]... [--markdown] "
    "[--figures FILE]\n"
    "                            [--enforce]\n"
    "\n"
    "Compresses and decompresses documents of build/corpus (or $ESPALIER_CORPUS) with GZipStream "
    "and with\n"
    "zlib's gzread() and gzwrite(), and prints how many times as fast the former is.\n"
    "\n"
    "  --rounds N          rounds of both (5); the median counts\n"
    "  --min-time SECONDS  how long each works in a round, at least (0.2)\n"
    "  --file NAME         only this document; may be repeated (text, records)\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when a file is missing or the two do not give the same bytes.\n";

constexpr double kBar = 0.95;  // times as fast as zlib

// A file in memory.
class MemoryFile {
public:
    MemoryFile() : descriptor_(::memfd_create("espalier_gzip_ratios", MFD_CLOEXEC)) {
        if (descriptor_ < 0) throw std::runtime_error("no file in memory can be made");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    // Returns the descriptor, standing at the start of the file.
    int AtStart() const {
        ::lseek(descriptor_, 0, SEEK_SET);
        return descriptor_;
    }

    // Returns the descriptor of a file made empty.
    int Emptied() const {
        if (::ftruncate(descriptor_, 0) != 0) throw std::runtime_error("cannot empty the file");
        return AtStart();
    }

private:
    int descriptor_;
};

// The two ways to decompress and to compress: `take` and `give` handle one piece.

template <typename Take>
void ReadOurs(const MemoryFile& file, std::vector<unsigned char>& piece, const Take& take) {
    IO::FileStream source(file.AtStart(), 1, false);
    IO::GZipStream stream(&source, CompressionMode::Decompress);
    while (const int count = stream.Read(piece.data(), 0, static_cast<int>(piece.size())))
        take(count);
}

template <typename Take>
void ReadZlib(const MemoryFile& file, std::vector<unsigned char>& piece, const Take& take) {
    const gzFile stream = ::gzdopen(::dup(file.AtStart()), "rb");
    int count = 0;
    while ((count = ::gzread(stream, piece.data(), static_cast<unsigned>(piece.size()))) > 0)
        take(count);
    ::gzclose(stream);
    if (count < 0) throw std::runtime_error("gzread() failed");
}

void WriteOurs(const MemoryFile& file, const std::string& document, std::size_t piece) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(document.data());
    IO::FileStream target(file.Emptied(), 2, false);
    IO::GZipStream stream(&target, CompressionMode::Compress);
    for (std::size_t at = 0; at < document.size(); at += piece)
        stream.Write(bytes + at, 0, static_cast<int>(std::min(piece, document.size() - at)));
    stream.Close();
}

void WriteZlib(const MemoryFile& file, const std::string& document, std::size_t piece) {
    const gzFile stream = ::gzdopen(::dup(file.Emptied()), "wb");
    for (std::size_t at = 0; at < document.size(); at += piece)
        ::gzwrite(stream, document.data() + at,
                  static_cast<unsigned>(std::min(piece, document.size() - at)));
    if (::gzclose(stream) != Z_OK) throw std::runtime_error("gzwrite() failed");
}

std::string Decompressed(const MemoryFile& file, bool ours) {
    std::string all;
    std::vector<unsigned char> piece(10000);
    const auto take = [&](int count) { all.append(piece.begin(), piece.begin() + count); };
    if (ours) {
        ReadOurs(file, piece, take);
    } else {
        ReadZlib(file, piece, take);
    }
    return all;
}

// Checks that each understands the other.
void CheckBoth(const MemoryFile& file, const std::string& document) {
    WriteOurs(file, document, 5000);
    if (Decompressed(file, false) != document) throw std::runtime_error("zlib reads other bytes");
    WriteZlib(file, document, 5000);
    if (Decompressed(file, true) != document) throw std::runtime_error("we read other bytes");
}

struct Result {
    const bench::CorpusEntry* entry;
    const char* work;
    bool isRead;
    std::size_t piece;
    bench::Measurement measured;
};

constexpr std::size_t kPieces[] = {1024, 65536};  // what a reader asks for, and what a copy does

void MeasureDocument(const bench::CorpusEntry& entry, const bench::MeasureOptions& options,
                     std::vector<Result>& results) {
    std::string document;
    for (const std::string& part : bench::LoadCorpusFile(entry).documents)
        document += part;
    const double megabytes = static_cast<double>(document.size()) / 1e6;
    const MemoryFile file;
    CheckBoth(file, document);
    for (const std::size_t size : kPieces) {
        std::vector<unsigned char> piece(size);
        const auto ignore = [](int) {};
        const std::array<bench::Work, 2> works = {[&] { ReadOurs(file, piece, ignore); },
                                                  [&] { ReadZlib(file, piece, ignore); }};
        results.push_back({&entry, "read", true, size, bench::Measure(megabytes, works, options)});
    }
    for (const std::size_t size : kPieces) {
        const std::array<bench::Work, 2> works = {[&] { WriteOurs(file, document, size); },
                                                  [&] { WriteZlib(file, document, size); }};
        results.push_back(
            {&entry, "write", false, size, bench::Measure(megabytes, works, options)});
    }
}

std::string FormatResults(const std::vector<Result>& results, bench::TableFormat format) {
    std::vector<bench::TableRow> rows = {
        {"document", "work", "bytes a call", "MB", "espalier", "zlib", "/zlib", "spread %"}};
    for (const Result& result : results) {
        const bench::Measurement& measured = result.measured;
        rows.push_back(
            {result.entry->title, result.work, std::to_string(result.piece),
             bench::FormatNumber(measured.megabytes, 1), bench::FormatNumber(measured.speeds[0], 0),
             bench::FormatNumber(measured.speeds[1], 0), bench::FormatNumber(measured.ratios[1], 2),
             bench::FormatNumber(measured.spread * 100, 0)});
    }
    return "GZipStream and zlib's gzip files, MB/s of uncompressed data at the default level:\n\n" +
           bench::FormatTable(rows, format);
}

// Reading and writing are each held against their slowest row.
std::vector<bench::Bar> JudgeResults(const std::vector<Result>& results) {
    std::vector<bench::Bar> bars;
    for (const bool isRead : {true, false}) {
        bench::Bar bar = {isRead ? "GZipStream reading, against gzread()"
                                 : "GZipStream writing, against gzwrite()",
                          kBar, 1e9};
        for (const Result& result : results) {
            if (result.isRead == isRead) {
                bar.measured = std::min(bar.measured, result.measured.ratios[1]);
            }
        }
        bars.push_back(bar);
    }
    return bars;
}

bench::Figures GzipFigures(const std::vector<Result>& results) {
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()}, {"zlib", ::zlibVersion()}};
    bench::Chart chart = {
        "gzip", "Compressed streams", "MB/s of what is not compressed", false, {}};
    for (const Result& result : results) {
        const std::vector<std::vector<double>>& rounds = result.measured.rounds;
        chart.groups.push_back({std::string(result.work) + " " + result.entry->title + ", " +
                                    std::to_string(result.piece) + " bytes a call",
                                {bench::BarOfRounds("GZipStream", true, rounds[0]),
                                 bench::BarOfRounds("zlib", false, rounds[1])}});
    }
    figures.charts = {chart};
    figures.bars = JudgeResults(results);
    return figures;
}

int Run(const bench::RunOptions& options) {
    std::vector<Result> results;
    for (const bench::CorpusEntry* entry : options.entries) {
        std::fprintf(stderr, "%s: measuring\n", entry->title);
        MeasureDocument(*entry, options.measure, results);
    }
    return bench::Publish(FormatResults(results, options.format), GzipFigures(results), options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.entries = {&bench::FindCorpusEntry("text"), &bench::FindCorpusEntry("records")};
    options.offersCheck = false;
    return bench::RunProgram({"espalier_gzip_ratios", kHelp, Run}, argc, argv, options);
}
