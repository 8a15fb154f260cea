// SPDX-License-Identifier: MIT
//
// Where the default mode parts from the standard one, and the page that says so.
#include "DefaultDifferences.h"
#include "Outcome.h"
#include "Suite.h"
#include "support/EscapedText.h"
#include "support/GeneratedPart.h"

#include <gtest/gtest.h>

#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using conformance::DefaultDifference;
using conformance::DefaultDifferences;
using conformance::Mode;
using conformance::Outcome;
using conformance::Parting;
using conformance::SuiteFile;
using conformance::SuiteTest;
using conformance::SuiteTests;
using conformance::TestsOf;

constexpr std::size_t kPageWidth = 110;

struct Section {
    Parting parting;
    const char* title;
};

constexpr Section kSections[] = {
    {Parting::Accepts, "Accepted, though malformed"},
    {Parting::Refuses, "Refused, though well-formed"},
    {Parting::Tells, "Told otherwise"},
};

std::string TitleOf(Parting parting) {
    for (const Section& section : kSections) {
        if (section.parting == parting) return section.title;
    }
    return "";
}

// Returns the names in lines that are indented as code.
std::string Paragraph(const std::vector<std::string>& names) {
    std::string text;
    std::string line;
    for (const std::string& name : names) {
        if (!line.empty() && line.size() + 1 + name.size() > kPageWidth) {
            text += line + "\n";
            line.clear();
        }
        line += (line.empty() ? "    " : " ") + name;
    }
    return text + line + "\n";
}

std::string ListOf(Parting parting) {
    std::string text;
    for (const DefaultDifference& difference : DefaultDifferences()) {
        if (difference.parting != parting) continue;
        const std::vector<std::string> names = TestsOf(difference);
        text += std::string("\n`") + difference.name + "` (" + std::to_string(names.size()) +
                "):\n\n" + Paragraph(names);
    }
    return text;
}

// Returns how the default mode parts from the standard one, if it does.
std::optional<Parting> PartingOf(const Outcome& standard, const Outcome& compatible) {
    if (standard.IsAccepted() != compatible.IsAccepted()) {
        return compatible.IsAccepted() ? Parting::Accepts : Parting::Refuses;
    }
    if (standard.IsAccepted() && standard.form != compatible.form) return Parting::Tells;
    return std::nullopt;
}

std::map<std::string, Parting> ListedPartings() {
    std::map<std::string, Parting> partings;
    for (const DefaultDifference& difference : DefaultDifferences()) {
        for (const std::string& name : TestsOf(difference)) {
            const auto [place, isNew] = partings.emplace(name, difference.parting);
            EXPECT_TRUE(isNew || place->second == difference.parting) << name;
        }
    }
    return partings;
}

// Returns how a test parts from what is listed; "" when it does not.
std::string Surprise(const SuiteTest& test, const std::string& title, const std::string& listed,
                     const Outcome& standard, const Outcome& compatible) {
    if (title == listed) return "";
    const auto shown = [](const Outcome& outcome) {
        constexpr std::size_t kShown = 300;
        return outcome.error.empty() ? support::Escape(outcome.form).substr(0, kShown)
                                     : outcome.error;
    };
    return test.id + " (" + test.path + "): " + title + ", listed as " + listed +
           "\n    standard: " + shown(standard) + "\n    compatible: " + shown(compatible) + "\n";
}

TEST(DefaultMode, PartsFromTheStandardOneWhereItIsListed) {
    ESPALIER_REQUIRE_SUITE();
    const std::string same = "the same in both modes";
    std::map<std::string, Parting> listed = ListedPartings();
    std::map<std::string, int> counts;
    std::string surprises;
    for (const SuiteTest& test : SuiteTests()) {
        const std::string document = SuiteFile(test.path);
        Mode mode = {Xml::XmlConformance::Standard, test.namespaces};
        const Outcome standard = Read(document, mode);
        mode.conformance = Xml::XmlConformance::Compatible;
        const Outcome compatible = Read(document, mode);
        const std::optional<Parting> parting = PartingOf(standard, compatible);
        const std::string title = parting ? TitleOf(*parting) : same;
        const auto found = listed.find(test.id);
        surprises += Surprise(test, title, found == listed.end() ? same : TitleOf(found->second),
                              standard, compatible);
        if (found != listed.end()) listed.erase(found);
        ++counts[title];
    }
    for (const auto& [name, parting] : listed)
        surprises += name + " is no test of the suite\n";
    for (const auto& [title, count] : counts)
        std::cout << "default mode, " << title << ": " << count << "\n";
    EXPECT_TRUE(surprises.empty()) << surprises;
}

TEST(DefaultMode, PartsForReasonsThatThePageOfDifferencesGives) {
    const std::string page = support::ContentOf(ESPALIER_CONFORMANCE_PAGE);
    for (const DefaultDifference& difference : DefaultDifferences()) {
        EXPECT_NE(page.find(std::string("\n| ") + difference.name + " | "), std::string::npos)
            << difference.name;
        EXPECT_FALSE(TestsOf(difference).empty()) << difference.name;
    }
}

TEST(DefaultMode, HasItsListOnThePage) {
    std::string expected;
    for (const Section& section : kSections)
        expected += std::string("\n### ") + section.title + "\n" + ListOf(section.parting);
    support::ExpectGeneratedPart(ESPALIER_SUITE_PAGE, "made of the table of the default mode",
                                 expected + "\n");
}

}  // namespace
