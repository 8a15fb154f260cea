// SPDX-License-Identifier: MIT
//
// docs/conformance.md lists the differences of the table with the documents that show them.
// ESPALIER_UPDATE_CASES=1 writes them there.
#include "Differences.h"
#include "Tellings.h"
#include "Verdicts.h"
#include "support/EscapedText.h"
#include "support/GeneratedPart.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using differential::Difference;
using differential::Effect;
using differential::Verdict;

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
    std::string text;
    for (const Section& section : kSections) {
        text += std::string("\n## ") + section.title + "\n\n" + TableOf(section.effect) +
                "\nDocuments in which these show:\n" + ExamplesOf(section.effect);
    }
    return text + "\n";
}

TEST(ConformancePage, ListsTheDifferencesOfTheTable) {
    support::ExpectGeneratedPart(ESPALIER_CONFORMANCE_PAGE, "made of the table of differences",
                                 Expected());
}

}  // namespace
