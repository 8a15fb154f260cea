// SPDX-License-Identifier: MIT
//
// Runs the golden cases of tests/cases/events, each one in all encodings that can tell themselves
// and with several sizes of reads. ESPALIER_UPDATE_CASES=1 rewrites the files with what the parser
// gives; the difference is then for a human to judge.
//
// Settings in braces: "namespaces off", "prefixes on", "normalization on", "report errors",
// and "bytes" where the document cannot be tried in other encodings.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>

#include "sax/SaxParse.h"
#include "support/CaseFile.h"
#include "support/EscapedText.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using sax::XMLReader;
using support::CaseCount;
using support::CaseFile;
using support::EventRecorder;
using support::ParseText;
using support::ReaderCase;

constexpr CaseCount kFiles[] = {
    {"attributes", 7}, {"doctype", 6},      {"documents", 3},  {"elements", 4}, {"entities", 5},
    {"errors", 10},    {"instructions", 4}, {"namespaces", 8}, {"text", 11},    {"whitespace", 4},
};

std::string Folder() { return std::string(ESPALIER_TEST_CASES) + "/events"; }

CaseFile Load(const char* name) {
    return CaseFile::Load(Folder() + "/" + name + ".case", "--- events");
}

void ApplySettings(XMLReader& reader, const ReaderCase& readerCase) {
    for (const std::string& text : readerCase.SettingTexts()) {
        if (text == "namespaces off") {
            reader.setFeature(sax::features::kNamespaces, false);
        } else if (text == "prefixes on") {
            reader.setFeature(sax::features::kNamespacePrefixes, true);
        } else if (text == "normalization on") {
            reader.setFeature(sax::features::kNormalization, true);
        } else if (text == "report errors") {
            reader.setReportReaderErrors(true);
        } else if (text != "bytes") {
            throw std::invalid_argument("unknown setting: " + text);
        }
    }
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

// Returns the events, and what was thrown behind them.
std::string EventsOf(XMLReader& reader, std::string_view document, int bytesPerRead) {
    EventRecorder recorder;
    recorder.Attach(reader);
    std::string thrown;
    try {
        ParseText(reader, document, bytesPerRead);
    } catch (const Xml::Exception& error) {
        thrown = std::string("thrown \"") + support::Escape(error.What()) + "\" \"" +
                 support::Escape(error.Argument()) + "\" @" + std::to_string(error.LineNumber()) +
                 ":" + std::to_string(error.LinePos()) + "\n";
    }
    return Joined(recorder.lines()) + thrown;
}

class XMLReaderCases : public testing::TestWithParam<CaseCount> {};

TEST_P(XMLReaderCases, HaveTheirEventsInAllForms) {
    CaseFile file = Load(GetParam().name);
    int runs = 0;
    for (ReaderCase& readerCase : file.cases) {
        SCOPED_TRACE(std::to_string(readerCase.line) + ": " + readerCase.name);
        XMLReader reader;  // one for all forms
        ApplySettings(reader, readerCase);
        const std::string document = readerCase.Document();
        if (support::IsCaseUpdate()) readerCase.expected = EventsOf(reader, document, 0);
        for (const support::DocumentForm& form : support::AllDocumentForms()) {
            if (readerCase.AllowedForms() == support::Forms::OnlyUtf8 &&
                form.unit != support::DocumentForm::Unit::Utf8) {
                continue;
            }
            const auto bytes = support::WriteInForm(document, form);
            if (!bytes) continue;
            for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
                SCOPED_TRACE(std::string(form.name) + " by " + std::to_string(bytesPerRead));
                EXPECT_EQ(EventsOf(reader, *bytes, bytesPerRead), readerCase.expected);
                ++runs;
            }
        }
    }
    if (support::IsCaseUpdate()) file.Save(Folder() + "/" + GetParam().name + ".case");

    EXPECT_EQ(file.cases.size(), GetParam().cases);
    EXPECT_GE(runs, static_cast<int>(5 * file.cases.size()));
}

// A missing handler leaves out its own events and no others.
TEST_P(XMLReaderCases, NeedTheirHandler) {
    for (const ReaderCase& readerCase : Load(GetParam().name).cases) {
        SCOPED_TRACE(readerCase.name);
        XMLReader reader;
        ApplySettings(reader, readerCase);
        std::vector<std::string> content;
        std::vector<std::string> declarations;
        std::istringstream expected(readerCase.expected);
        for (std::string line; std::getline(expected, line);) {
            if (line.starts_with("thrown ") || line.starts_with("fatal ")) break;
            const bool isDeclaration = line.starts_with("notation") || line.starts_with("unparsed");
            (isDeclaration ? declarations : content).push_back(line);
        }

        const auto parse = [&] {
            support::WhatIsThrown([&] { ParseText(reader, readerCase.Document()); });
        };
        EventRecorder recorder;
        reader.setContentHandler(&recorder);
        parse();
        EXPECT_EQ(recorder.TakeLines(), content);

        reader.setContentHandler(nullptr);
        reader.setDTDHandler(&recorder);
        parse();
        EXPECT_EQ(recorder.TakeLines(), declarations);

        reader.setDTDHandler(nullptr);
        reader.setEntityResolver(&recorder);
        parse();
        EXPECT_EQ(recorder.TakeLines(), std::vector<std::string>());
    }
}

INSTANTIATE_TEST_SUITE_P(Files, XMLReaderCases, testing::ValuesIn(kFiles),
                         [](const auto& file) { return std::string(file.param.name); });

TEST(XMLReaderCaseFiles, AreAllRun) {
    std::vector<std::string> listed;
    for (const CaseCount& file : kFiles)
        listed.emplace_back(file.name);
    EXPECT_EQ(support::CaseFileNames(Folder()), listed);
}

}  // namespace
