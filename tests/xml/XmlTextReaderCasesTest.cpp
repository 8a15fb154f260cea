// SPDX-License-Identifier: MIT
//
// Runs the golden cases of tests/cases/reader, each one in all encodings that can tell themselves
// and with several sizes of reads. ESPALIER_UPDATE_CASES=1 rewrites the files with what the reader
// gives; the difference is then for a human to judge.
#include "support/CaseFile.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using support::CaseCount;
using support::CaseFile;
using support::ReaderCase;

constexpr CaseCount kFiles[] = {
    {"attributes", 19},       {"cdata", 9},      {"comments", 8},      {"declaration", 8},
    {"doctype", 29},          {"elements", 12},  {"entities-all", 46}, {"entities-char", 30},
    {"entities-nothing", 11}, {"errors", 50},    {"instructions", 10}, {"namespaces", 14},
    {"normalization", 9},     {"positions", 10}, {"references", 16},   {"text", 13},
    {"whitespace", 17},
};

std::string Folder() { return std::string(ESPALIER_TEST_CASES) + "/reader"; }

// Whether the end of the document is what the case is about.
bool IsAboutTheEnd(const ReaderCase& readerCase) {
    return readerCase.expected.find("Unexpected end of file") != std::string::npos ||
           readerCase.expected.find("Missing ") != std::string::npos ||
           readerCase.name.ends_with("at the end of the input");
}

class XmlTextReaderCases : public testing::TestWithParam<CaseCount> {};

TEST_P(XmlTextReaderCases, HaveTheirNodesInAllForms) {
    const std::string fileName = Folder() + "/" + GetParam().name + ".case";
    CaseFile file = CaseFile::Load(fileName);
    int runs = 0;
    for (ReaderCase& readerCase : file.cases) {
        SCOPED_TRACE(fileName + ":" + std::to_string(readerCase.line) + ": " + readerCase.name);
        const std::string document = readerCase.Document();
        const support::ReaderSettings settings = readerCase.Settings();
        if (support::IsCaseUpdate())
            readerCase.expected = support::DumpDocument(document, settings);
        runs += support::ExpectNodesInAllForms(document, settings, readerCase.expected,
                                               readerCase.AllowedForms());
    }
    if (support::IsCaseUpdate()) file.Save(fileName);

    EXPECT_EQ(file.cases.size(), GetParam().cases);
    EXPECT_GE(runs, static_cast<int>(5 * file.cases.size()));
    RecordProperty("runs", runs);
}

// A reader may go other ways where much input is at hand than near its end.
TEST_P(XmlTextReaderCases, HaveTheSameNodesBeforeALongComment) {
    const std::string comment = "<!--" + std::string(3000, 'c') + "-->";
    const CaseFile file = CaseFile::Load(Folder() + "/" + GetParam().name + ".case");
    int runs = 0;
    for (const ReaderCase& readerCase : file.cases) {
        SCOPED_TRACE(std::to_string(readerCase.line) + ": " + readerCase.name);
        if (IsAboutTheEnd(readerCase)) continue;
        for (const support::DocumentForm& form : support::AllDocumentForms()) {
            if (readerCase.AllowedForms() == support::Forms::OnlyUtf8 &&
                form.unit != support::DocumentForm::Unit::Utf8) {
                continue;
            }
            const auto bytes = support::WriteInForm(readerCase.Document() + comment, form);
            if (!bytes) continue;
            SCOPED_TRACE(form.name);
            const std::string nodes = support::DumpDocument(*bytes, readerCase.Settings());
            EXPECT_EQ(nodes.substr(0, readerCase.expected.size()), readerCase.expected);
            ++runs;
        }
    }
    EXPECT_GE(runs, static_cast<int>(file.cases.size() / 2));
}

INSTANTIATE_TEST_SUITE_P(Files, XmlTextReaderCases, testing::ValuesIn(kFiles),
                         [](const auto& file) {
                             std::string name = file.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(XmlTextReaderCaseFiles, AreAllRun) {
    std::vector<std::string> listed;
    for (const CaseCount& file : kFiles)
        listed.emplace_back(file.name);
    EXPECT_EQ(support::CaseFileNames(Folder()), listed);
}

TEST(XmlTextReaderCaseFiles, AreSavedAsTheyWereLoaded) {
    for (const CaseCount& file : kFiles) {
        const std::string fileName = Folder() + "/" + file.name + ".case";
        const std::string copyName = testing::TempDir() + file.name + ".case";
        CaseFile::Load(fileName).Save(copyName);
        const CaseFile copy = CaseFile::Load(copyName);
        const CaseFile original = CaseFile::Load(fileName);
        ASSERT_EQ(copy.cases.size(), original.cases.size());
        for (std::size_t i = 0; i < copy.cases.size(); ++i) {
            EXPECT_EQ(copy.cases[i].name, original.cases[i].name);
            EXPECT_EQ(copy.cases[i].inputText, original.cases[i].inputText);
            EXPECT_EQ(copy.cases[i].expected, original.cases[i].expected);
        }
        std::filesystem::remove(copyName);
    }
}

}  // namespace
