// SPDX-License-Identifier: MIT
// Counts what our reader allocates in the second half of each document, when names, depths and
// lengths have been seen before. The bar is none at all, for the documents that repeat themselves.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "common/AllocationCounter.h"
#include "common/Corpus.h"
#include "common/Table.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr int kBarMissed = 3;

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
Counts CountFrom(std::uint64_t first, std::string_view document, bench::CorpusGroup group) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    if (group == bench::CorpusGroup::Entities) {
        reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    }
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
    const bench::CorpusGroup group = file.entry->group;
    Counts sum;
    for (const std::string& document : file.documents) {
        const std::uint64_t all = CountFrom(0, document, group).nodes;
        const Counts half = CountFrom(all / 2, document, group);
        sum.nodes += half.nodes;
        sum.allocations += half.allocations;
    }
    return sum;
}

// New names and depths come to the end of some documents, and entities are expanded on the heap.
bool HasBar(const bench::CorpusEntry& entry) {
    return entry.repeatsItsShapes && entry.group != bench::CorpusGroup::Entities;
}

bench::TableRow RowFor(const bench::CorpusEntry& entry, const Counts& counts) {
    const char* verdict = "-";
    if (HasBar(entry)) verdict = counts.allocations == 0 ? "OK" : "MISS";
    const double perNode =
        static_cast<double>(counts.allocations) / static_cast<double>(counts.nodes);
    return {entry.title, std::to_string(counts.nodes), std::to_string(counts.allocations),
            bench::FormatNumber(perNode, 6), verdict};
}

struct Options {
    std::vector<const bench::CorpusEntry*> entries;
    bench::TableFormat format = bench::TableFormat::Text;
    bool enforce = false;
};

Options ParseOptions(std::span<char*> arguments) {
    Options options;
    for (const std::string_view argument : arguments) {
        if (argument == "--markdown") {
            options.format = bench::TableFormat::Markdown;
        } else if (argument == "--enforce") {
            options.enforce = true;
        } else {
            options.entries.push_back(&bench::FindCorpusEntry(argument));
        }
    }
    if (options.entries.empty()) options.entries = bench::PresentCorpusEntries();
    return options;
}

int Run(const Options& options) {
    std::vector<bench::TableRow> rows = {
        {"second half of", "nodes", "allocations", "a node", "bar"}};
    bool allMet = true;
    for (const bench::CorpusEntry* entry : options.entries) {
        const Counts counts = CountSecondHalves(bench::LoadCorpusFile(*entry));
        rows.push_back(RowFor(*entry, counts));
        if (HasBar(*entry) && counts.allocations != 0) allMet = false;
    }
    std::fputs(bench::FormatTable(rows, options.format).c_str(), stdout);
    return options.enforce && !allMet ? kBarMissed : EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(ParseOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1)));
    } catch (const std::exception& error) {
        std::fprintf(stderr,
                     "espalier_reader_allocations: %s\n"
                     "usage: espalier_reader_allocations [--markdown] [--enforce] [NAME]...\n",
                     error.what());
        return EXIT_FAILURE;
    }
}
