// SPDX-License-Identifier: MIT

// The reader has two ways through a document: a quick one for what lies in its buffer as a whole,
// and a careful one, which takes over where the buffer ends. A document that comes byte by byte
// goes the careful way, one in memory mostly the quick way, and both must tell the same, places and
// errors included.

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/CaseFile.h"
#include "support/DocumentForms.h"
#include "support/NodeDump.h"
#include "support/RandomDocument.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace {

using support::RandomDocument;
using support::ReaderSettings;
using Xml::XmlTextReader;

std::vector<ReaderSettings> AllSettings() {
    std::vector<ReaderSettings> all;
    for (const bool namespaces : {true, false}) {
        for (const bool normalization : {false, true}) {
            for (const auto whitespace :
                 {XmlTextReader::WsAll, XmlTextReader::WsSignificant, XmlTextReader::WsNone}) {
                for (const auto entities : {Xml::XmlEntityHandling::ExpandCharEntities,
                                            Xml::XmlEntityHandling::ExpandNothing,
                                            Xml::XmlEntityHandling::ExpandEntities}) {
                    all.push_back({namespaces, normalization, whitespace, entities});
                }
            }
        }
    }
    return all;
}

// Returns whether the nodes are the same however the document comes.
bool Agree(const std::string& bytes, const ReaderSettings& settings,
           std::initializer_list<int> bytesPerRead) {
    const std::string quick = support::DumpDocument(bytes, settings);
    bool agree = true;
    for (const int count : bytesPerRead) {
        const std::string careful = support::DumpDocument(bytes, settings, count);
        EXPECT_EQ(careful, quick) << testing::PrintToString(bytes)
                                  << "\nnamespaces: " << settings.namespaces
                                  << ", bytes per read: " << count;
        agree = agree && careful == quick;
    }
    return agree;
}

TEST(XmlTextReaderAgreement, OnAllCasesInAllSettings) {
    int documents = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ESPALIER_TEST_CASES) + "/reader")) {
        const support::CaseFile file = support::CaseFile::Load(entry.path().string());
        for (const support::ReaderCase& readerCase : file.cases) {
            for (const ReaderSettings& settings : AllSettings())
                ASSERT_TRUE(Agree(readerCase.Document(), settings, {1}));
            ++documents;
        }
    }
    EXPECT_GE(documents, 150);
}

TEST(XmlTextReaderAgreement, OnAllSamplesInAllSettings) {
    int documents = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ESPALIER_SAMPLES)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        for (const ReaderSettings& settings : AllSettings())
            ASSERT_TRUE(Agree(bytes, settings, {1, 5, 1000})) << entry.path();
        ++documents;
    }
    EXPECT_GE(documents, 15);
}

TEST(XmlTextReaderAgreement, OnRandomDocuments) {
    const std::vector<ReaderSettings> all = AllSettings();
    RandomDocument random(20260105);
    int whole = 0;
    for (std::size_t i = 0; i < 4000; ++i) {
        const std::string document = random.Write();
        const ReaderSettings& settings = all[i % all.size()];
        const int part = static_cast<int>(2 + random.Below(1030));
        ASSERT_TRUE(Agree(document, settings, {1, part})) << i;
        whole += support::DumpDocument(document, settings).find("error ") == std::string::npos;
    }
    EXPECT_GE(whole, 1000);  // the others end with an error: a duplicate, a prefix, an entity
}

TEST(XmlTextReaderAgreement, OnRandomDocumentsWithMistakes) {
    const std::vector<ReaderSettings> all = AllSettings();
    RandomDocument random(20260106);
    for (std::size_t i = 0; i < 12000; ++i) {
        std::string document = random.Write();
        random.Mutate(document);
        const int part = static_cast<int>(2 + random.Below(1030));
        ASSERT_TRUE(Agree(document, all[i % all.size()], {1, part})) << i;
    }
}

TEST(XmlTextReaderAgreement, OnRandomDocumentsInOtherEncodings) {
    const std::vector<ReaderSettings> all = AllSettings();
    RandomDocument random(20260107);
    int documents = 0;
    for (std::size_t i = 0; i < 2500; ++i) {
        std::string document = random.Write();
        const auto& forms = support::AllDocumentForms();
        const std::optional<std::string> bytes =
            support::WriteInForm(document, forms[i % forms.size()]);
        if (!bytes) continue;
        document = *bytes;
        if (i % 3 == 0) random.Mutate(document);
        const int part = static_cast<int>(2 + random.Below(1030));
        ASSERT_TRUE(Agree(document, all[i % all.size()], {1, part})) << i;
        ++documents;
    }
    EXPECT_GE(documents, 500);
}

}  // namespace
