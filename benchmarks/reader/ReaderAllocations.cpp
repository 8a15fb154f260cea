// SPDX-License-Identifier: MIT
// Counts what our reader allocates in the second half of each document, when names, depths and
// lengths have been seen before. The bar is none at all, for the documents that repeat themselves.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "common/AllocationCounter.h"
#include "common/AllocationTable.h"
#include "common/Charts.h"
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "reader/Library.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_reader_allocations [--file NAME]... [--markdown] [--figures FILE] "
    "[--enforce]\n"
    "\n"
    "Counts the blocks that our reader asks the heap for in the second half of each document, and\n"
    "those that all libraries ask for on three documents when their parser is used again.\n"
    "\n"
    "  --file NAME     only this file; may be repeated\n"
    "  --markdown      print only the tables, in Markdown\n"
    "  --figures FILE  write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --enforce       exit with 3 when a bar is missed\n";

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
bench::AllocationCounts CountFrom(std::uint64_t first, std::string_view document,
                                  bench::CorpusGroup group) {
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

bench::AllocationCounts CountSecondHalves(const bench::CorpusFile& file) {
    const bench::CorpusGroup group = file.entry->group;
    bench::AllocationCounts sum;
    for (const std::string& document : file.documents) {
        const std::uint64_t all = CountFrom(0, document, group).pieces;
        const bench::AllocationCounts half = CountFrom(all / 2, document, group);
        sum.pieces += half.pieces;
        sum.allocations += half.allocations;
    }
    return sum;
}

// Documents on which all libraries are counted: a second pass of a parser that is used again.
constexpr const char* kCompared[] = {"text", "attributes", "records"};

bool IsCompared(const bench::CorpusEntry& entry) {
    return std::find(std::begin(kCompared), std::end(kCompared), std::string_view(entry.name)) !=
           std::end(kCompared);
}

// What each library has asked for, and for how many elements.
struct Comparison {
    std::vector<double> allocations = std::vector<double>(bench::kLibraryCount);
    double elements = 0;

    void Add(const bench::CorpusFile& file) {
        for (std::size_t i = 0; i < bench::kLibraryCount; ++i) {
            const auto visitor = bench::Libraries()[i].makeVisitor(file.entry->group);
            const double count = static_cast<double>(bench::VisitAll(*visitor, file).elements);
            const std::uint64_t before = bench::AllocationCount();
            bench::VisitAll(*visitor, file);
            allocations[i] += static_cast<double>(bench::AllocationCount() - before);
            if (i == bench::kEspalier) elements += count;
        }
    }

    bench::Chart MakeChart() const {
        bench::Chart chart = {"allocations",
                              "Blocks asked of the heap by a parser used again",
                              "blocks for 1,000 elements",
                              true,
                              {{}}};
        for (std::size_t i = 0; i < bench::kLibraryCount; ++i) {
            chart.groups.front().bars.push_back(
                bench::BarOfRounds(bench::Libraries()[i].title, i <= bench::kEspalierStandard,
                                   {allocations[i] / elements * 1000}));
        }
        return chart;
    }
};

int Run(const bench::RunOptions& options) {
    bench::AllocationTable table("nodes", "a node");
    Comparison comparison;
    for (const bench::CorpusEntry* entry : options.entries) {
        const bench::CorpusFile file = bench::LoadCorpusFile(*entry);
        table.Add(*entry, CountSecondHalves(file));
        if (IsCompared(*entry)) comparison.Add(file);
    }
    bench::Figures figures = bench::FiguresOfThisBuild();
    for (const bench::Library& library : bench::Libraries())
        figures.libraries.push_back({library.title, library.version()});
    if (comparison.elements > 0) figures.charts.push_back(comparison.MakeChart());
    figures.bars.push_back(table.Judge("blocks while a document is read"));
    return bench::Publish(
        "Blocks asked of the heap while the second half of a document is "
        "read:\n\n" +
            table.Format(options.format),
        figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.offersCheck = false;
    return bench::RunProgram({"espalier_reader_allocations", kHelp, Run}, argc, argv, options);
}
