// SPDX-License-Identifier: MIT
// Measures Skip(), SkipElement(), ReadInnerXml() and ReadOuterXml() against reading the same nodes,
// in pairs like the libraries: whoever leaves nodes to the reader should not wait longer than who
// looks at each.
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "common/Charts.h"
#include "common/Corpus.h"
#include "common/Publish.h"
#include "common/RunOptions.h"
#include "common/Setting.h"
#include "common/Table.h"
#include "reader/Library.h"
#include "reader/MeasureVisitors.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr char kHelp[] =
    "usage: espalier_reader_content [--rounds N] [--min-time SECONDS] [--file NAME]... "
    "[--markdown] [--figures FILE]\n"
    "                               [--enforce]\n"
    "\n"
    "Goes through the documents in build/corpus (or $ESPALIER_CORPUS) with each operation on whole "
    "elements,\n"
    "and prints how many times as fast that is as reading every node.\n"
    "\n"
    "  --rounds N          rounds of all operations (5); the median counts\n"
    "  --min-time SECONDS  how long an operation works on a file in a round, at least (0.1)\n"
    "  --file NAME         only this file; may be repeated\n"
    "  --markdown          print only the tables, in Markdown\n"
    "  --figures FILE      write the charts and the bars for espalier_plot and scripts/benchmark\n"
    "  --enforce           exit with 3 when a bar is missed\n"
    "\n"
    "Exit status: 0, or 1 when a file is missing or an operation does not see what it should.\n";

constexpr double kBar = 1.0;  // times as fast as reading
constexpr double kMinSeconds = 0.1;

/// What a pass over a document has come across.
struct Pass {
    std::int64_t nodes = 0;     ///< handled one by one
    std::int64_t children = 0;  ///< elements in the root element
    std::int64_t markupBytes = 0;
    astring markup;  ///< the last one
};

using Operation = void (*)(Xml::XmlTextReader& reader, Pass& pass);

void SkipNode(Xml::XmlTextReader& reader, Pass& /*pass*/) { reader.Skip(); }

void SkipElement(Xml::XmlTextReader& reader, Pass& /*pass*/) { reader.SkipElement(); }

void TakeInner(Xml::XmlTextReader& reader, Pass& pass) {
    pass.markup = reader.ReadInnerXml();
    pass.markupBytes += bench::Bytes(pass.markup.size());
}

void TakeOuter(Xml::XmlTextReader& reader, Pass& pass) {
    pass.markup = reader.ReadOuterXml();
    pass.markupBytes += bench::Bytes(pass.markup.size());
}

// Ways of going through a document, from its first node on to its end.

void ReadRest(Xml::XmlTextReader& reader, Pass& pass) {
    while (reader.Read()) {
        ++pass.nodes;
    }
}

// Counts the children while it reads.
void ReadPlainly(Xml::XmlTextReader& reader, Pass& pass, Operation /*operation*/) {
    while (reader.Read()) {
        ++pass.nodes;
        if (reader.NodeType() == Xml::XmlNodeType::Element && reader.Depth() == 2) ++pass.children;
    }
}

void OnRoot(Xml::XmlTextReader& reader, Pass& pass, Operation operation) {
    while (reader.Read() && reader.NodeType() != Xml::XmlNodeType::Element) {
        ++pass.nodes;
    }
    operation(reader, pass);
    ReadRest(reader, pass);
}

void OnChildren(Xml::XmlTextReader& reader, Pass& pass, Operation operation) {
    while (reader.Read() && reader.NodeType() != Xml::XmlNodeType::Element) {
        ++pass.nodes;
    }
    bool isNode = reader.Read();
    while (isNode) {
        if (reader.NodeType() == Xml::XmlNodeType::Element) {
            ++pass.children;
            operation(reader, pass);
            isNode = reader.ReadState() == Xml::XmlTextReader::Interactive;
        } else {
            ++pass.nodes;
            isNode = reader.Read();
        }
    }
}

/// A way of going through a document.
struct Way {
    const char* title;  ///< as in the table
    void (*go)(Xml::XmlTextReader& reader, Pass& pass, Operation operation);
    Operation operation;
    bool hasBar;
};

constexpr Way kWays[] = {
    {"Read, untouched", ReadPlainly, nullptr, false},
    {"Skip children", OnChildren, SkipNode, true},
    {"Skip root", OnRoot, SkipNode, true},
    {"SkipElement children", OnChildren, SkipElement, true},
    {"SkipElement root", OnRoot, SkipElement, true},
    {"inner of children", OnChildren, TakeInner, true},
    {"inner of root", OnRoot, TakeInner, true},
    {"outer of children", OnChildren, TakeOuter, false},
};

constexpr std::size_t kWayCount = std::size(kWays);

Pass Go(Xml::XmlTextReader& reader, const Way& way, std::string_view document) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    reader.SetStream(&stream, false);
    Pass pass;
    way.go(reader, pass, way.operation);
    if (!reader.Eof()) throw std::runtime_error(std::string(way.title) + " stopped early");
    reader.Close();
    return pass;
}

class WayVisitor final : public bench::Visitor {
public:
    explicit WayVisitor(const Way& way) : way_(way) {}

    void Visit(std::string_view document, bench::Totals& totals) override {
        const Pass pass = Go(reader_, way_, document);
        totals.elements += pass.children;
        totals.textBytes += pass.markupBytes;
    }

private:
    const Way& way_;
    Xml::XmlTextReader reader_;
};

// Checks that every way comes to the end and across the same children, and that the markup of the
// root is a part of the document that ends before an end tag.
void CheckWays(const bench::CorpusFile& file) {
    const auto fail = [&](const Way& way, const char* what) {
        throw std::runtime_error(std::string(file.entry->title) + ": " + way.title + ": " + what);
    };
    Xml::XmlTextReader reader;
    for (const std::string& document : file.documents) {
        const std::int64_t children = Go(reader, kWays[0], document).children;
        for (const Way& way : kWays) {
            const Pass pass = Go(reader, way, document);
            if (way.go == OnChildren && pass.children != children) fail(way, "other children");
            if (way.operation != TakeInner || way.go != OnRoot) continue;
            const bool isDecoded = file.entry->group == bench::CorpusGroup::OtherForm ||
                                   file.entry->group == bench::CorpusGroup::CodePage;
            if (isDecoded) continue;
            const std::size_t found = document.find(pass.markup);
            if (pass.markup.empty() || found == std::string::npos ||
                document.compare(found + pass.markup.size(), 2, "</") != 0) {
                fail(way, "not a part of the document");
            }
        }
    }
}

// Tables. The first visitor is the one that touches all; ratios are times as fast as that.

bench::FileResult MeasureWays(const bench::CorpusFile& file, const bench::MeasureOptions& options) {
    std::vector<std::unique_ptr<bench::Visitor>> visitors;
    visitors.push_back(bench::MakeEspalier(bench::CorpusGroup::Utf8));
    for (const Way& way : kWays) {
        visitors.push_back(std::make_unique<WayVisitor>(way));
    }
    bench::FileResult result = bench::MeasureVisitors(file, visitors, options);
    for (double& ratio : result.ratios) {
        ratio = 1 / ratio;
    }
    return result;
}

std::string FormatWays(const std::vector<bench::FileResult>& results, bench::TableFormat format) {
    bench::TableRow head = {"file", "MB", "Read, MB/s"};
    for (const Way& way : kWays) {
        head.emplace_back(way.title);
    }
    head.emplace_back("spread %");
    std::vector<bench::TableRow> rows = {head};
    for (const bench::FileResult& result : results) {
        bench::TableRow row = {result.entry->title, bench::FormatNumber(result.megabytes, 1)};
        row.push_back(bench::FormatNumber(result.speeds[0], 0));
        for (std::size_t i = 1; i <= kWayCount; ++i) {
            row.push_back(bench::FormatNumber(result.speeds[i], 0) + " / " +
                          bench::FormatNumber(result.ratios[i], 2));
        }
        row.push_back(bench::FormatNumber(result.spread * 100, 0));
        rows.push_back(row);
    }
    return "Reading every node with its names and values, then MB/s of each operation and how many "
           "times as fast\nas that it is:\n\n" +
           bench::FormatTable(rows, format);
}

// Each operation is held against its slowest file.
std::vector<bench::Bar> JudgeWays(const std::vector<bench::FileResult>& results) {
    std::vector<bench::Bar> bars;
    for (std::size_t i = 0; i < kWayCount; ++i) {
        if (!kWays[i].hasBar) continue;
        const auto slowest = std::min_element(
            results.begin(), results.end(),
            [i](const auto& a, const auto& b) { return a.ratios[i + 1] < b.ratios[i + 1]; });
        bars.push_back(
            {std::string(kWays[i].title) + ", lowest of all files (" + slowest->entry->title + ")",
             kBar, slowest->ratios[i + 1]});
    }
    return bars;
}

bench::Chart ChartWays(const std::vector<bench::FileResult>& results) {
    std::vector<const char*> titles = {"Read, all touched"};
    for (const Way& way : kWays)
        titles.push_back(way.title);
    return bench::ChartOfMeans(
        "content",
        "Operations on whole elements: mean of " + std::to_string(results.size()) + " documents",
        titles, titles.size(), results);
}

int Run(const bench::RunOptions& options) {
    std::vector<bench::FileResult> results;
    for (const bench::CorpusEntry* entry : options.entries) {
        const bench::CorpusFile file = bench::LoadCorpusFile(*entry);
        CheckWays(file);
        std::fprintf(stderr, "%s: measuring\n", entry->title);
        results.push_back(MeasureWays(file, options.measure));
    }
    bench::Figures figures = bench::FiguresOfThisBuild();
    figures.libraries = {{"espalier", bench::EspalierVersion()}};
    figures.charts = {ChartWays(results)};
    figures.bars = JudgeWays(results);
    return bench::Publish(FormatWays(results, options.format), figures, options);
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunOptions options;
    options.measure.minSeconds = kMinSeconds;
    options.offersCheck = false;
    return bench::RunProgram({"espalier_reader_content", kHelp, Run}, argc, argv, options);
}
