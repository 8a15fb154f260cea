// SPDX-License-Identifier: MIT
//
// What other parsers make of the suite, for comparison: docs/conformance-suite.md quotes it.
#include "Peers.h"
#include "Suite.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace {

using conformance::SuiteFile;
using conformance::SuiteTest;
using conformance::SuiteTests;

struct Count {
    int refused = 0;    // of the malformed ones
    int malformed = 0;  // without those that only Namespaces in XML forbids
    int accepted = 0;   // of the valid ones
    int valid = 0;
};

Count Ask(bool (*accepts)(const std::string& document, bool namespaces)) {
    Count count;
    for (const SuiteTest& test : SuiteTests()) {
        if (!test.IsAlone() || !test.recommendation.starts_with("XML")) continue;
        if (test.type != "valid" && test.type != "not-wf") continue;
        const bool isAccepted = accepts(SuiteFile(test.path), test.namespaces);
        ++(test.type == "valid" ? count.valid : count.malformed);
        if (test.type == "valid" && isAccepted) ++count.accepted;
        if (test.type == "not-wf" && !isAccepted) ++count.refused;
    }
    return count;
}

void Print(const std::string& name, const Count& count) {
    std::cout << name << " refuses " << count.refused << " of " << count.malformed
              << " malformed documents and accepts " << count.accepted << " of " << count.valid
              << " valid ones\n";
}

// The suite and other parsers agree at large, so that it is the suite that they are asked about.
// expat takes the names of earlier editions of XML 1.0, so that it refuses many valid ones.
TEST(Peers, AgreeWithTheSuiteAtLarge) {
    ESPALIER_REQUIRE_SUITE();
    const Count expat = Ask(conformance::ExpatAccepts);
    Print(conformance::ExpatVersion(), expat);
    EXPECT_EQ(expat.malformed, 927);
    EXPECT_GT(expat.refused, 920);
    EXPECT_GT(expat.accepted, 280);
    const Count libxml = Ask(conformance::LibxmlAccepts);
    Print(conformance::LibxmlVersion(), libxml);
    EXPECT_EQ(libxml.valid, 594);
    EXPECT_GT(libxml.refused, 920);
    EXPECT_GT(libxml.accepted, 590);
}

}  // namespace
