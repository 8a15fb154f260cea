// SPDX-License-Identifier: MIT
//
// The reasons that are listed for the default mode hold for the documents: what it says when it
// refuses one, and what expat finds in one that it accepts, belongs to the difference named.
#include "DefaultDifferences.h"
#include "Outcome.h"
#include "Peers.h"
#include "Suite.h"
#include "differential/Differences.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

namespace {

using conformance::DefaultDifference;
using conformance::Mode;
using conformance::Parting;
using conformance::SuiteFile;
using conformance::SuiteTest;

// What expat accepts, too: a mark that contradicts the declaration.
constexpr std::string_view kAcceptedByExpat = "hst-lhs-007";

// Returns the tests by their names.
std::map<std::string, const SuiteTest*> TestsByName() {
    std::map<std::string, const SuiteTest*> tests;
    for (const SuiteTest& test : conformance::SuiteTests())
        tests.emplace(test.id, &test);
    return tests;
}

// Returns the message of an error of the reader, which stands between its place and its argument.
std::string MessageOf(const std::string& error) {
    const std::string text = error.substr(error.find(": ") + 2);
    return text.substr(0, text.find(" ["));
}

void ExpectReason(const differential::Difference& difference, Parting parting,
                  const SuiteTest& test) {
    const std::string document = SuiteFile(test.path);
    const Mode mode = {Xml::XmlConformance::Compatible, test.namespaces};
    // The signs are those of documents that are read with namespaces.
    if (test.namespaces) {
        EXPECT_TRUE(difference.MayShowIn(document)) << difference.name << " in " << test.id;
    }
    if (parting == Parting::Refuses && difference.effect == differential::Effect::Refused) {
        const std::string error = ReadNodes(document, mode).error;
        EXPECT_TRUE(difference.HasMessage(MessageOf(error))) << test.id << ": " << error;
    }
    if (parting == Parting::Accepts && difference.effect == differential::Effect::Accepted) {
        const int error = conformance::ExpatError(document, test.namespaces);
        EXPECT_NE(difference.HasExpatError(error), test.id == kAcceptedByExpat)
            << test.id << " is listed for " << difference.name << ", but expat finds " << error;
    }
}

TEST(DefaultMode, IsListedForReasonsThatShow) {
    ESPALIER_REQUIRE_SUITE();
    const std::map<std::string, const SuiteTest*> tests = TestsByName();
    for (const DefaultDifference& listed : conformance::DefaultDifferences()) {
        const differential::Difference* const difference =
            differential::FindDifference(listed.name);
        ASSERT_NE(difference, nullptr) << listed.name;
        for (const std::string& name : TestsOf(listed))
            ExpectReason(*difference, listed.parting, *tests.at(name));
    }
}

}  // namespace
