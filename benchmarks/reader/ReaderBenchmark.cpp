// SPDX-License-Identifier: MIT
// One benchmark for each file and library: espalier_reader_benchmark --benchmark_filter=text/
#include "common/Corpus.h"
#include "reader/Library.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

// Returns the file, which stays in memory until another one is asked for. Ends the program when it
// is missing or when the libraries do not see the same in it: such a measurement means nothing.
const bench::CorpusFile& FileFor(const bench::CorpusEntry& entry) {
    static bench::CorpusFile current;
    if (current.entry == &entry) return current;
    try {
        current = {};
        current = bench::LoadCorpusFile(entry);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        std::exit(EXIT_FAILURE);
    }
    const std::string disagreement = bench::Disagreement(current);
    if (!disagreement.empty()) {
        std::fprintf(stderr, "%s: NOT THE SAME:\n%s", entry.title, disagreement.c_str());
        std::exit(EXIT_FAILURE);
    }
    return current;
}

void Read(benchmark::State& state, const bench::CorpusEntry& entry, const bench::Library& library) {
    const bench::CorpusFile& file = FileFor(entry);
    const auto visitor = library.makeVisitor(entry.group);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::VisitAll(*visitor, file));
    }
    state.SetBytesProcessed(state.iterations() * bench::Bytes(file.bytes));
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;
    for (const bench::CorpusEntry* entry : bench::PresentCorpusEntries()) {
        for (const bench::Library& library : bench::Libraries()) {
            if (!library.takes(*entry)) continue;
            const std::string name = std::string(entry->name) + "/" + library.name;
            benchmark::RegisterBenchmark(name.c_str(), [entry, &library](benchmark::State& state) {
                Read(state, *entry, library);
            })->Unit(benchmark::kMillisecond);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
