// SPDX-License-Identifier: MIT
//
// What is read and written again reads back as the same nodes: the samples and all documents of
// tests/cases, in several encodings.
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/CaseFile.h"
#include "support/DocumentReader.h"
#include "support/MemoryWriter.h"
#include "support/NodeCopy.h"
#include "support/RandomDocument.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

using support::DocumentReader;
using support::MemoryWriter;
using support::ReaderSettings;
using Lines = std::vector<std::string>;

constexpr char kRootDiffers[] = "Invalid Argument: Root element name does not match document type";

struct Document {
    std::string name;
    std::string bytes;
};

std::string ContentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::vector<Document> Samples() {
    std::vector<Document> documents;
    for (const auto& entry : fs::directory_iterator(ESPALIER_SAMPLES)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".xml" || extension == ".svg" || extension == ".xhtml") {
            documents.push_back({entry.path().filename().string(), ContentOf(entry.path())});
        }
    }
    return documents;
}

std::vector<Document> Cases() {
    std::vector<Document> documents;
    for (const auto& entry : fs::directory_iterator(std::string(ESPALIER_TEST_CASES) + "/reader")) {
        for (const auto& readerCase : support::CaseFile::Load(entry.path().string()).cases)
            documents.push_back({readerCase.name, readerCase.Document()});
    }
    return documents;
}

// The ways in which a document is written again.
enum class Target { Utf8, Utf8Mark, Utf16LE, Utf16BE, Latin1 };

constexpr Target kTargets[] = {Target::Utf8, Target::Utf8Mark, Target::Utf16LE, Target::Utf16BE,
                               Target::Latin1};

// What becomes of the documents.
struct Counts {
    int written = 0;       // once for each target and setting
    int inLatin1 = 0;      // of these
    int malformed = 0;     // documents that the reader refuses
    int withoutNames = 0;  // with prefixes that nothing declares, known to a writer without them
    int otherRoots = 0;    // whose document type names another element, which the writer refuses
};

// Returns the nodes, or nothing where the document is not well-formed.
std::optional<Lines> NodesOf(const std::string& bytes, const ReaderSettings& settings) {
    try {
        DocumentReader reader(bytes, settings);
        return support::TellNodes(*reader);
    } catch (const Xml::Exception&) {
        return std::nullopt;
    }
}

// What the characters of a document allow.
struct Fitness {
    // Names in ASCII, for the reader takes no others there, and all else in printable characters.
    bool latin1 = true;
    // Names that the reader takes in two bytes a character.
    bool utf16 = true;
};

bool IsPrintableBelow(std::string_view text, char32_t limit) {
    const auto codes = support::DecodeUtf8(text);
    return codes && std::all_of(codes->begin(), codes->end(), [limit](char32_t code) {
               return code < limit && (code < 0x7F || code > 0x9F);
           });
}

Fitness FitnessOf(const std::string& bytes, const ReaderSettings& settings) {
    constexpr std::size_t kLongestName = 500;
    DocumentReader reader(bytes, settings);
    Fitness fitness;
    const auto judge = [&fitness](std::string_view name, std::string_view value) {
        if (!IsPrintableBelow(name, 0x80) || !IsPrintableBelow(value, 0x100)) {
            fitness.latin1 = false;
        }
        if (name.size() > kLongestName) fitness.utf16 = false;
    };
    while (reader->Read()) {
        judge(reader->Name(), reader->Value());
        for (const Xml::XmlAttributeRef attribute : reader->Attributes())
            judge(attribute.Name(), attribute.Value());
    }
    return fitness;
}

bool IsFitFor(const Fitness& fitness, Target target) {
    switch (target) {
    case Target::Latin1: return fitness.latin1;
    case Target::Utf16LE:
    case Target::Utf16BE: return fitness.utf16;
    default: return true;
    }
}

void Copy(const std::string& bytes, const ReaderSettings& settings, MemoryWriter& writer,
          bool declares) {
    DocumentReader reader(bytes, settings);
    writer->SetNamespaces(settings.namespaces);
    // As they are: the reader does not normalize them either.
    writer->SetNewLineHandling(Xml::NewLineHandling::NoHandling);
    support::CopyNodes(*reader, *writer, declares);
}

std::string Written(const std::string& bytes, const ReaderSettings& settings, Target target) {
    Xml::UTF8Encoding utf8(target == Target::Utf8Mark, false);
    Xml::UnicodeEncoding utf16(target == Target::Utf16BE, true, false);
    const bool isUtf8 = target == Target::Utf8 || target == Target::Utf8Mark;
    const bool isLatin1 = target == Target::Latin1;
    Xml::Encoding& wide = isLatin1 ? *Xml::Encoding::Latin1() : utf16;
    MemoryWriter writer(isUtf8 ? utf8 : wide);
    Copy(bytes, settings, writer, isLatin1);
    return writer.Text();
}

// Writes the document in all encodings and reads it back.
void ExpectSameNodes(const std::string& bytes, const ReaderSettings& settings, const Lines& nodes,
                     Counts& counts) {
    const Fitness fitness = FitnessOf(bytes, settings);
    for (const Target target : kTargets) {
        if (!IsFitFor(fitness, target)) continue;
        SCOPED_TRACE("target " + std::to_string(static_cast<int>(target)));
        const std::string written = Written(bytes, settings, target);
        SCOPED_TRACE(written.substr(0, 400));
        const std::optional<Lines> again = NodesOf(written, settings);
        ASSERT_TRUE(again.has_value()) << "is refused";
        const auto [mine, other] =
            std::mismatch(nodes.begin(), nodes.end(), again->begin(), again->end());
        ASSERT_TRUE(mine == nodes.end() && other == again->end())
            << "read:    " << (mine == nodes.end() ? "(end)" : *mine)
            << "\nwritten: " << (other == again->end() ? "(end)" : *other);
        ++counts.written;
        if (target == Target::Latin1) ++counts.inLatin1;
    }
}

void ExpectRoundTrip(const Document& document, const ReaderSettings& settings, Counts& counts) {
    SCOPED_TRACE(document.name + "\n" + document.bytes.substr(0, 400));
    const std::optional<Lines> nodes = NodesOf(document.bytes, settings);
    if (!nodes) {
        ++counts.malformed;
        return;
    }
    try {
        ExpectSameNodes(document.bytes, settings, *nodes, counts);
    } catch (const Xml::Exception& error) {
        const std::string_view message = error.What();
        if (message == kRootDiffers) {
            ++counts.otherRoots;
        } else if (settings.namespaces &&
                   (message == "Invalid Argument: Prefix not declared" ||
                    message == "Invalid Argument: Prefix defined for empty namespace")) {
            ++counts.withoutNames;
        } else {
            ADD_FAILURE() << message;
        }
    }
}

Counts RoundTrips(const std::vector<Document>& documents) {
    Counts counts;
    for (const bool namespaces : {true, false}) {
        for (const Document& document : documents) {
            for (const auto entities : {Xml::XmlEntityHandling::ExpandCharEntities,
                                        Xml::XmlEntityHandling::ExpandEntities}) {
                ReaderSettings settings = support::WithEntities(entities);
                settings.namespaces = namespaces;
                ExpectRoundTrip(document, settings, counts);
            }
        }
    }
    return counts;
}

TEST(XmlTextWriterRoundTrip, TheSamplesKeepTheirNodes) {
    const std::vector<Document> samples = Samples();
    ASSERT_EQ(samples.size(), 8U);
    const Counts counts = RoundTrips(samples);
    EXPECT_EQ(counts.malformed, 0);
    EXPECT_EQ(counts.otherRoots, 0);
    EXPECT_EQ(counts.withoutNames, 0);
    EXPECT_GE(counts.written, 8 * 2 * 2 * 4);
    EXPECT_GT(counts.inLatin1, 0);
}

TEST(XmlTextWriterRoundTrip, TheCasesOfTheReaderKeepTheirNodes) {
    const std::vector<Document> cases = Cases();
    ASSERT_GE(cases.size(), 300U);
    const Counts counts = RoundTrips(cases);
    const int runs = static_cast<int>(cases.size()) * 4;
    // Most are well-formed; the others are there for their errors.
    EXPECT_GE(counts.written, runs * 2);
    EXPECT_GE(counts.inLatin1, runs / 4);
    EXPECT_LE(counts.otherRoots, runs / 20);
    EXPECT_LE(counts.withoutNames, runs / 20);
    RecordProperty("written", counts.written);
    RecordProperty("malformed", counts.malformed);
    RecordProperty("otherRoots", counts.otherRoots);
    RecordProperty("withoutNames", counts.withoutNames);
}

TEST(XmlTextWriterRoundTrip, RandomDocumentsKeepTheirNodes) {
    constexpr unsigned kSeed = 20;
    constexpr int kCount = 500;
    support::RandomDocument random(kSeed);
    Counts counts;
    for (int i = 0; i < kCount && !testing::Test::HasFailure(); ++i) {
        const Document document = {"document " + std::to_string(i), random.Write()};
        ReaderSettings settings;
        settings.namespaces = i % 2 == 0;
        ExpectRoundTrip(document, settings, counts);
    }
    EXPECT_GE(counts.written, kCount);
}

TEST(XmlTextWriterRoundTrip, WhatIsWrittenIsStable) {
    for (const Document& sample : Samples()) {
        SCOPED_TRACE(sample.name);
        for (const Target target : kTargets) {
            if (!IsFitFor(FitnessOf(sample.bytes, {}), target)) continue;
            const std::string once = Written(sample.bytes, {}, target);
            EXPECT_TRUE(Written(once, {}, target) == once);
        }
    }
}

// End tags of copies are no end tags of XML, so only what has none reads back.
TEST(XmlTextWriterRoundTrip, WriteNodeKeepsTheNodesOfEmptyElements) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E'>]><!--c--><?p d?><a xmlns='urn:a' xmlns:p='urn:p' p:x='&e;' "
        "y='&lt;&#9;\xC3\xA9' xml:lang='en'/><!--f-->";
    DocumentReader reader(document);
    MemoryWriter writer;
    writer->WriteNode(&*reader, false);
    EXPECT_EQ(NodesOf(writer.Text(), {}), NodesOf(document, {}));
}

}  // namespace
