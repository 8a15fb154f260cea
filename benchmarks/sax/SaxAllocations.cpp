// SPDX-License-Identifier: MIT
// Counts what our events allocate in the second half of each document, when names, depths and
// lengths have been seen before. The bar is none at all, for the documents that repeat themselves.
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "common/AllocationCounter.h"
#include "common/Corpus.h"
#include "common/RunOptions.h"
#include "common/Table.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_sax_allocations [--file NAME]... [--markdown] [--enforce]\n"
    "\n"
    "Counts the allocations of our events in the second half of each document.\n"
    "\n"
    "Exit status: 0, 1 when a file is missing, or with --enforce 3 when the bar is missed.\n";

struct Counts {
    std::uint64_t events = 0;
    std::uint64_t allocations = 0;
};

/// Counts the events from number `first` on and what is allocated until the last of them. It asks
/// for all that attributes have, also by name.
class Counter final : public sax::helpers::DefaultHandler {
public:
    explicit Counter(std::uint64_t first) : first_(first), before_(bench::AllocationCount()) {}

    Counts Result() const { return {number_ - first_, last_ - before_}; }

    void startElement(const char* uri, const char* localName, const char* qName,
                      const sax::Attributes& attributes) override {
        sink_ = sink_ + *uri + *localName + *qName;
        for (int i = 0, count = attributes.getLength(); i < count; ++i) {
            sink_ = sink_ + *attributes.getURI(i) + *attributes.getLocalName(i) +
                    *attributes.getQName(i) + *attributes.getType(i) + *attributes.getValue(i);
        }
        sink_ = sink_ + attributes.getIndex("no such");
        Count();
    }
    void endElement(const char* uri, const char* localName, const char* qName) override {
        sink_ = sink_ + *uri + *localName + *qName;
        Count();
    }
    void characters(const char* text, int start, int length) override {
        if (length > 0) sink_ = sink_ + text[start];
        Count();
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        characters(text, start, length);
    }
    void processingInstruction(const char* target, const char* data) override {
        sink_ = sink_ + *target + *data;
        Count();
    }

private:
    void Count() {
        last_ = bench::AllocationCount();
        if (++number_ == first_) before_ = last_;
    }

    const std::uint64_t first_;
    std::uint64_t number_ = 0;
    std::uint64_t before_;
    std::uint64_t last_ = 0;
    volatile int sink_ = 0;
};

Counts CountFrom(std::uint64_t first, std::string_view document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Counter counter(first);
    sax::XMLReader parser;
    parser.setContentHandler(&counter);
    parser.parse(sax::InputSource(&stream, ""));
    return counter.Result();
}

Counts CountSecondHalves(const bench::CorpusFile& file) {
    Counts sum;
    for (const std::string& document : file.documents) {
        const std::uint64_t all = CountFrom(0, document).events;
        const Counts half = CountFrom(all / 2, document);
        sum.events += half.events;
        sum.allocations += half.allocations;
    }
    return sum;
}

// New names and depths come to the end of some documents, and entities are replaced on the heap.
bool HasBar(const bench::CorpusEntry& entry) {
    return entry.repeatsItsShapes && entry.group != bench::CorpusGroup::Entities;
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::TableRow> rows = {
        {"second half of", "events", "allocations", "an event", "bar"}};
    bool allMet = true;
    for (const bench::CorpusEntry* entry : options.entries) {
        const Counts counts = CountSecondHalves(bench::LoadCorpusFile(*entry));
        const bool isMet = !HasBar(*entry) || counts.allocations == 0;
        allMet = allMet && isMet;
        const double perEvent =
            static_cast<double>(counts.allocations) / static_cast<double>(counts.events);
        rows.push_back({entry->title, std::to_string(counts.events),
                        std::to_string(counts.allocations), bench::FormatNumber(perEvent, 6),
                        !HasBar(*entry) ? "-"
                        : isMet         ? "OK"
                                        : "MISS"});
    }
    std::fputs(bench::FormatTable(rows, options.format).c_str(), stdout);
    return options.enforce && !allMet ? bench::kBarMissed : EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.offersCheck = false;
    return bench::RunProgram({"espalier_sax_allocations", kHelp, Run}, argc, argv, options);
}
