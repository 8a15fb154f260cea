// SPDX-License-Identifier: MIT
//
// Reads the samples and the documents of Debian packages with the reader, with expat and with
// libxml2, and compares what they tell; and what XMLReader tells with what expat does. A document
// counts when expat finds it well-formed, or does not know its encoding.
#include "Corpus.h"
#include "Events.h"
#include "SameEvents.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using differential::ContentOf;
using differential::Detail;
using differential::ExpectSameEvents;
using differential::Reading;
using differential::Source;

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
    const std::vector<std::filesystem::path> documents = differential::DocumentsOf(GetParam());
    if (documents.empty()) GTEST_SKIP() << GetParam().name << " is not installed";

    Counts counts;
    for (const std::filesystem::path& path : documents) {
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

INSTANTIATE_TEST_SUITE_P(Sources, Differential, testing::ValuesIn(differential::Sources()),
                         [](const auto& source) { return differential::NameOf(source.param); });

}  // namespace
