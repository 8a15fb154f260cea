// SPDX-License-Identifier: MIT
// Counts what our events allocate in the second half of each document, when names, depths and
// lengths have been seen before. The bar is none at all, for the documents that repeat themselves.
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/Attributes.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "common/AllocationCounter.h"
#include "common/AllocationTable.h"
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"

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

/// Counts the events from number `first` on and what is allocated until the last of them. It asks
/// for all that attributes have, also by name.
class Counter final : public sax::helpers::DefaultHandler {
public:
    explicit Counter(std::uint64_t first) : first_(first), before_(bench::AllocationCount()) {}

    bench::AllocationCounts Result() const { return {number_ - first_, last_ - before_}; }

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

bench::AllocationCounts CountFrom(std::uint64_t first, std::string_view document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Counter counter(first);
    sax::XMLReader parser;
    parser.setContentHandler(&counter);
    parser.parse(sax::InputSource(&stream, ""));
    return counter.Result();
}

bench::AllocationCounts CountSecondHalves(const bench::CorpusFile& file) {
    bench::AllocationCounts sum;
    for (const std::string& document : file.documents) {
        const std::uint64_t all = CountFrom(0, document).pieces;
        const bench::AllocationCounts half = CountFrom(all / 2, document);
        sum.pieces += half.pieces;
        sum.allocations += half.allocations;
    }
    return sum;
}

int Run(const bench::RunOptions& options) {
    bench::AllocationTable table("events", "an event");
    for (const bench::CorpusEntry* entry : options.entries)
        table.Add(*entry, CountSecondHalves(bench::LoadCorpusFile(*entry)));
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()}};
    figures.bars = {table.Judge("blocks while events are reported")};
    return bench::Publish(
        "Blocks asked of the heap while the second half of a document is "
        "reported:\n\n" +
            table.Format(options.format),
        figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.offersCheck = false;
    return bench::RunProgram({"espalier_sax_allocations", kHelp, Run}, argc, argv, options);
}
