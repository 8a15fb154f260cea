// SPDX-License-Identifier: MIT
// Counts what our writer allocates while it writes a document that it has written before, when
// names, depths and lengths are no longer new. The bar is none at all.
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/SeekOrigin.h>
#include <espalier/xml/XmlTextWriter.h>

#include "common/AllocationCounter.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "common/Table.h"
#include "writer/Recording.h"
#include "writer/WriterCalls.h"
#include "writer/WriterDocuments.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_writer_allocations [--file NAME]... [--markdown] [--enforce]\n"
    "\n"
    "Counts the allocations of our writer while it writes a document once more, and while it "
    "makes\n"
    "calls of all kinds.\n"
    "\n"
    "Exit status: 0, 1 when a file is missing, or with --enforce 3 when the bar is missed.\n";

struct Counts {
    std::uint64_t calls = 0;
    std::uint64_t firstAllocations = 0;  ///< by a new writer on a new stream
    std::uint64_t allocations = 0;       ///< once more
};

/// Makes calls of all kinds. A reader is not among them, since it may allocate for itself.
class EveryCall {
public:
    explicit EveryCall(Xml::XmlTextWriter& writer) : writer_(writer) {}

    // Returns how many calls it made.
    std::uint64_t operator()() const {
        constexpr std::uint64_t kTimes = 1000;
        constexpr std::uint64_t kCalls = 26;
        for (std::uint64_t i = 0; i < kTimes; ++i) {
            writer_.WriteStartElement("", "row", "urn:rows");
            writer_.WriteStartElement("p", "cell", "urn:cells");
            Attributes();
            Content();
            writer_.WriteEndElement();
            writer_.WriteEndElement();
        }
        return kTimes * kCalls;
    }

private:
    void Attributes() const {
        writer_.WriteAttributeString("xmlns", "declared", nullptr, "urn:declared");
        writer_.WriteAttributeString("p", "known", "urn:cells", "1 < 2");
        writer_.WriteAttributeString("generated", "urn:generated",
                                     "a longer value with an & in it");
        writer_.WriteAttributeString("xml", "space", nullptr, "preserve");
        writer_.WriteAttributeString("xml", "lang", nullptr, "a-language-tag-that-is-long");
        writer_.WriteStartAttribute("parts");
        writer_.WriteString("one");
        writer_.WriteEntityRef("two");
        writer_.WriteBinHex(kBytes, 0, sizeof kBytes);
        writer_.WriteEndAttribute();
    }

    void Content() const {
        writer_.WriteString("a text that is longer than any short string, with <markup> in it\r\n");
        writer_.WriteWhitespace(" \n\t");
        writer_.WriteCData("a section that is longer than any short string");
        writer_.WriteComment("a comment that is longer than any short string");
        writer_.WriteProcessingInstruction("target", "data that are longer than any short string");
        writer_.WriteEntityRef("entity");
        writer_.WriteName("a-name-that-is-longer-than-any-short-string");
        writer_.WriteNmToken("1-token-that-is-longer-than-any-short-string");
        writer_.WriteRaw("<raw/>");
        writer_.WriteElementString("plain", "a text that is longer than any short string");
        writer_.WriteBase64(kBytes, 0, sizeof kBytes);
        writer_.WriteBinHex(kBytes, 0, sizeof kBytes);
    }

    static constexpr unsigned char kBytes[100] = {};

    Xml::XmlTextWriter& writer_;
};

// Goes back to the start of the stream, whose buffer stays.
void StartAgain(Xml::XmlTextWriter& writer, IO::MemoryStream& stream) {
    writer.WriteEndDocument();
    writer.Flush();
    stream.Seek(0, IO::SeekOrigin::Begin);
}

// Writes a document twice with one writer and counts the second time. `write` gets the writer and
// returns how many calls it made.
template <typename Write>
Counts CountSecondTime(Xml::Formatting formatting, Write write) {
    IO::MemoryStream stream;
    Xml::UTF8Encoding encoding;
    Xml::XmlTextWriter writer(&stream, &encoding);
    writer.SetFormatting(formatting);
    const std::uint64_t start = bench::AllocationCount();
    write(writer);
    StartAgain(writer, stream);
    const std::uint64_t before = bench::AllocationCount();
    const std::uint64_t calls = write(writer);
    StartAgain(writer, stream);
    return {calls, before - start, bench::AllocationCount() - before};
}

bench::TableRow RowFor(const std::string& title, const Counts& counts) {
    const double perCall =
        static_cast<double>(counts.allocations) / static_cast<double>(counts.calls);
    return {title,
            std::to_string(counts.calls),
            std::to_string(counts.firstAllocations),
            std::to_string(counts.allocations),
            bench::FormatNumber(perCall, 6),
            counts.allocations == 0 ? "OK" : "MISS"};
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::TableRow> rows = {
        {"document", "calls", "the first time", "once more", "a call", "bar"}};
    double most = 0;
    const auto add = [&](const std::string& title, const Counts& counts) {
        rows.push_back(RowFor(title, counts));
        most = std::max(most, static_cast<double>(counts.allocations));
    };
    for (const bench::CorpusEntry* entry : options.entries) {
        const bench::Recording recording = bench::RecordFile(*entry);
        add(entry->title, CountSecondTime(Xml::Formatting::None, [&](Xml::XmlTextWriter& writer) {
                bench::WriterCalls calls(writer);
                bench::Replay(recording, calls);
                return std::uint64_t{recording.calls.size()};
            }));
    }
    const auto everyCall = [](Xml::XmlTextWriter& writer) {
        writer.WriteStartElement("root");
        return EveryCall(writer)();
    };
    add("calls of all kinds", CountSecondTime(Xml::Formatting::None, everyCall));
    add("calls of all kinds, indented", CountSecondTime(Xml::Formatting::Indented, everyCall));
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()}};
    figures.bars = {{"blocks while a document is written once more", 0, most, "allocations", true}};
    return bench::Publish(
        "Blocks asked of the heap while a document is written, and then once "
        "more:\n\n" +
            bench::FormatTable(rows, options.format),
        figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.entries = bench::WriterDocuments();
    options.offersCheck = false;
    return bench::RunProgram({"espalier_writer_allocations", kHelp, Run}, argc, argv, options);
}
