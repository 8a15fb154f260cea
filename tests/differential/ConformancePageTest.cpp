// SPDX-License-Identifier: MIT
//
// docs/conformance.md lists the differences of the table with the documents that show them.
// ESPALIER_UPDATE_CASES=1 writes them there.
#include "Differences.h"
#include "Tellings.h"
#include "Verdicts.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using differential::Difference;
using differential::Effect;
using differential::Verdict;

constexpr char kPage[] = ESPALIER_CONFORMANCE_PAGE;
constexpr char kBegin[] = "<!-- made of the table of differences -->\n";
constexpr char kEnd[] = "<!-- end -->\n";
constexpr std::size_t kLongestExample = 100;

struct Section {
    Effect effect;
    const char* title;
};

constexpr Section kSections[] = {
    {Effect::Accepted, "Accepted, though malformed"},
    {Effect::Refused, "Refused, though well-formed"},
    {Effect::Told, "Told otherwise"},
};

// Returns the document, or what it is when it is too long for a line.
std::string Shown(const Verdict& verdict) {
    const std::string document = support::Escape(verdict.document);
    return document.size() <= kLongestExample ? document : std::string("(") + verdict.what + ")";
}

std::vector<std::string> ExamplesOf(const Difference& difference) {
    std::vector<std::string> examples;
    for (const auto verdicts : {differential::CharacterVerdicts(), differential::MarkupVerdicts(),
                                differential::SubsetVerdicts(), differential::EntityVerdicts(),
                                differential::NamespaceVerdicts()}) {
        for (const Verdict& verdict : verdicts) {
            if (difference.name == std::string_view(verdict.difference)) {
                examples.push_back(Shown(verdict));
            }
        }
    }
    for (const differential::Telling& telling : differential::Tellings()) {
        if (difference.name != std::string_view(telling.difference)) continue;
        examples.push_back(support::Escape(telling.document));
        examples.push_back(std::string("    ") + telling.reader);
    }
    return examples;
}

std::string TableOf(Effect effect) {
    std::string text = "| Name | The standards | The reader | Why |\n|---|---|---|---|\n";
    for (const Difference& difference : differential::Differences()) {
        if (difference.effect != effect) continue;
        text += std::string("| ") + difference.name + " | " + difference.standard + " | " +
                difference.reader + " | " + difference.reason + " |\n";
    }
    return text;
}

std::string ExamplesOf(Effect effect) {
    std::string text;
    for (const Difference& difference : differential::Differences()) {
        if (difference.effect != effect) continue;
        text += std::string("\n    ") + difference.name + "\n";
        for (const std::string& example : ExamplesOf(difference)) {
            text += "        " + example + "\n";
        }
    }
    return text;
}

std::string Expected() {
    std::string text = kBegin;
    for (const Section& section : kSections) {
        text += std::string("\n## ") + section.title + "\n\n" + TableOf(section.effect) +
                "\nDocuments in which these show:\n" + ExamplesOf(section.effect);
    }
    return text + "\n" + kEnd;
}

std::string ContentOf(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

TEST(ConformancePage, ListsTheDifferencesOfTheTable) {
    const std::string page = ContentOf(kPage);
    const std::size_t begin = page.find(kBegin);
    const std::size_t end = page.find(kEnd);
    ASSERT_NE(begin, std::string::npos) << kPage;
    ASSERT_NE(end, std::string::npos) << kPage;
    const std::size_t length = end + sizeof kEnd - 1 - begin;
    const char* const update = std::getenv("ESPALIER_UPDATE_CASES");
    if (update != nullptr && *update == '1') {
        std::ofstream(kPage, std::ios::binary)
            << page.substr(0, begin) << Expected() << page.substr(begin + length);
        return;
    }
    EXPECT_EQ(page.substr(begin, length), Expected());
}

}  // namespace
