// SPDX-License-Identifier: MIT
//
// Reads the samples and the documents of Debian packages with the reader, with expat and with
// libxml2, and compares what they tell; and what XMLReader tells with what expat does. A document
// counts when expat finds it well-formed, or does not know its encoding.
#include "Events.h"
#include "SameEvents.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

using differential::Detail;
using differential::ExpectSameEvents;
using differential::Reading;

// Where documents come from: a package, or a folder, as one that several packages fill.
struct Source {
    const char* name;
    const char* folder;  // "" for a package
};

constexpr Source kSources[] = {
    {"shared-mime-info", ""},
    {"docbook-xsl", ""},
    {"xcb-proto", ""},
    {"libvulkan-dev", ""},
    {"libgtk-3-dev", ""},
    {"libglib2.0-dev", ""},
    {"adwaita-icon-theme", ""},
    {"introspection", "/usr/share/gir-1.0"},
    {"samples", ESPALIER_SAMPLES},
    {"encodings", ESPALIER_SAMPLES "/encodings"},
};

bool IsDocument(const fs::path& path) {
    constexpr std::array<std::string_view, 16> kExtensions = {
        ".xml",   ".xsl", ".xslt", ".svg", ".gir",  ".rng", ".xsd", ".xconf",
        ".xhtml", ".ui",  ".its",  ".loc", ".page", ".opf", ".ncx", ".rdf"};
    std::error_code ignored;
    return std::find(kExtensions.begin(), kExtensions.end(), path.extension().string()) !=
               kExtensions.end() &&
           fs::is_regular_file(path, ignored);
}

// Returns the lines of the package manager's list of the package's files, whatever architecture
// its name carries; nothing when the package is not installed.
std::vector<fs::path> FilesOfPackage(const std::string& package) {
    std::vector<fs::path> files;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator("/var/lib/dpkg/info", ignored)) {
        if (entry.path().extension() != ".list") continue;
        const std::string stem = entry.path().stem().string();
        if (stem != package && !stem.starts_with(package + ":")) continue;
        std::ifstream list(entry.path());
        for (std::string line; std::getline(list, line);)
            files.emplace_back(line);
    }
    return files;
}

std::vector<fs::path> DocumentsOf(const Source& source) {
    std::vector<fs::path> files;
    std::error_code ignored;
    if (*source.folder == '\0') {
        files = FilesOfPackage(source.name);
    } else {
        for (const auto& entry : fs::directory_iterator(source.folder, ignored)) {
            files.push_back(entry.path());
        }
    }
    std::erase_if(files, [](const fs::path& path) { return !IsDocument(path); });
    std::sort(files.begin(), files.end());
    return files;
}

std::string ContentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// Whether the document type refers to a parameter entity between its declarations. Its name is
// taken for one of ASCII letters.
bool RefersToParameterEntities(std::string_view document) {
    const std::string_view subset = document.substr(0, document.find("]>"));
    for (std::size_t at = subset.find('%'); at != std::string_view::npos;
         at = subset.find('%', at + 1)) {
        const std::size_t end = subset.find_first_of("; \t\r\n'\"", at + 1);
        if (end < subset.size() && subset[end] == ';' && end > at + 1) return true;
    }
    return false;
}

// What became of the documents of a source.
struct Counts {
    int whole = 0;
    int structure = 0;
    int withMarkupEntities = 0;
    int withOddLanguages = 0;
    int notWellFormed = 0;
};

// Compares a document that refers to entities which only the external subset declares. Deliberate:
// the reader does not expand what it cannot know; it reads such a document with the references
// kept.
void CompareStructure(const std::string& document, Counts& counts) {
    const Reading expat = differential::ReadWithExpat(document, Detail::Structure);
    const Reading ours = differential::ReadWithReader(document, Detail::Structure);
    EXPECT_EQ(ours.error, "") << "is refused";
    if (expat.hasMarkupEntity) {
        ++counts.withMarkupEntities;
        return;
    }
    ExpectSameEvents(ours, expat, "expat");
    ++counts.structure;
}

// Compares what handlers are told, but for comments, of which they are not.
void CompareEvents(const std::string& document, const Reading& expat) {
    const Reading events = differential::ReadWithEvents(document);
    EXPECT_EQ(events.error, "") << "is refused when handlers are called";
    ExpectSameEvents(events, differential::WithoutComments(expat), "expat, without comments");
}

void CompareDocument(const std::string& document, Counts& counts) {
    const Reading expat = differential::ReadWithExpat(document, Detail::Whole);
    const bool isKnownEncoding = expat.errorCode != XML_ERROR_UNKNOWN_ENCODING;
    if (isKnownEncoding && !expat.error.empty()) {
        ++counts.notWellFormed;
        return;
    }
    const Reading ours = differential::ReadWithReader(document, Detail::Whole);
    // Deliberate: xml:lang must be a language identifier, which the peers do not ask for.
    if (ours.error.ends_with("Bad language ID")) {
        ++counts.withOddLanguages;
        return;
    }
    const bool isDeclaredElsewhere = expat.hasSkippedEntity || RefersToParameterEntities(document);
    if (isDeclaredElsewhere && ours.error.ends_with("Undeclared entity")) {
        CompareStructure(document, counts);
        return;
    }
    EXPECT_EQ(ours.error, "") << "is refused";
    // Deliberate: declarations behind a reference to a parameter entity count, which expat asks for
    // the entity to be read.
    if (isKnownEncoding && !RefersToParameterEntities(document)) {
        ExpectSameEvents(ours, expat, "expat");
        CompareEvents(document, expat);
    }
    ExpectSameEvents(ours, differential::ReadWithLibxml(document, Detail::Whole), "libxml2");
    ++counts.whole;
}

class Differential : public testing::TestWithParam<Source> {};

TEST_P(Differential, TheReaderTellsWhatExpatAndLibxml2Tell) {
    const std::vector<fs::path> documents = DocumentsOf(GetParam());
    if (documents.empty()) GTEST_SKIP() << GetParam().name << " is not installed";

    Counts counts;
    for (const fs::path& path : documents) {
        SCOPED_TRACE(path.string());
        CompareDocument(ContentOf(path), counts);
    }
    std::printf(
        "%s: %d documents compared; %d more by structure only, because they refer to "
        "entities declared elsewhere; left out: %d with markup in entities, %d with a language "
        "that is none, %d not "
        "well-formed\n",
        GetParam().name, counts.whole, counts.structure, counts.withMarkupEntities,
        counts.withOddLanguages, counts.notWellFormed);
    EXPECT_GT(counts.whole, 0);
}

std::string NameOf(const testing::TestParamInfo<Source>& source) {
    std::string name = source.param.name;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Sources, Differential, testing::ValuesIn(kSources), NameOf);

}  // namespace
