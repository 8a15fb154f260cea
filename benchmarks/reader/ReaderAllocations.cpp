// SPDX-License-Identifier: MIT
// Counts what our reader allocates in the second half of each document, when names, depths and
// lengths have been seen before. The bar is none at all, for the documents that repeat themselves.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "reader/AllocationCounter.h"
#include "reader/Corpus.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

namespace {

struct Counts {
    std::uint64_t nodes = 0;
    std::uint64_t allocations = 0;
};

// Asks for all that a node has, so that what is made on demand is made. Returns the bytes.
std::size_t Touch(Xml::XmlTextReader& reader) {
    std::size_t bytes = reader.Name().size() + reader.Value().size();
    if (reader.NodeType() != Xml::XmlNodeType::Element) return bytes;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        bytes += reader.Name().size() + reader.LocalName().size() + reader.Prefix().size() +
                 reader.NamespaceURI().size() + reader.Value().size();
    }
    return bytes;
}

// Counts the nodes from number `first` on and what is allocated while they are read.
Counts CountFrom(std::uint64_t first, std::string_view document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    std::uint64_t number = 0;
    std::uint64_t before = bench::AllocationCount();
    volatile std::size_t sink = 0;
    while (reader.Read()) {
        sink = sink + Touch(reader);
        if (++number == first) before = bench::AllocationCount();
    }
    return {number - first, bench::AllocationCount() - before};
}

Counts CountSecondHalves(const bench::CorpusFile& file) {
    Counts sum;
    for (const std::string& document : file.documents) {
        const std::uint64_t all = CountFrom(0, document).nodes;
        const Counts half = CountFrom(all / 2, document);
        sum.nodes += half.nodes;
        sum.allocations += half.allocations;
    }
    return sum;
}

// Returns whether the bar is met.
bool Report(const bench::CorpusEntry& entry) {
    const Counts counts = CountSecondHalves(bench::LoadCorpusFile(entry));
    const bool met = counts.allocations == 0;
    std::printf("%-20s %10" PRIu64 " %12" PRIu64 " %12.6f  %s\n", entry.title, counts.nodes,
                counts.allocations,
                static_cast<double>(counts.allocations) / static_cast<double>(counts.nodes),
                !entry.repeatsItsShapes ? "-"
                : met                   ? "OK"
                                        : "MISS");
    return met || !entry.repeatsItsShapes;
}

}  // namespace

int main(int argc, char** argv) {
    std::printf("%-20s %10s %12s %12s\n", "second half of", "nodes", "allocations", "per node");
    bool allMet = true;
    try {
        for (const bench::CorpusEntry& entry : bench::CorpusEntries()) {
            if (argc > 1 && std::string_view(argv[1]) != entry.name) continue;
            if (entry.origin != nullptr && !bench::IsPresent(entry)) continue;
            allMet = Report(entry) && allMet;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "espalier_reader_allocations: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return allMet ? EXIT_SUCCESS : EXIT_FAILURE;
}
