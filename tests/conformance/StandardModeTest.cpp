// SPDX-License-Identifier: MIT
//
// The standard mode decides as the suite says, and tells what the suite says.
#include "Outcome.h"
#include "Results.h"
#include "Suite.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using conformance::Exception;
using conformance::Mode;
using conformance::Outcome;
using conformance::Results;
using conformance::SuiteFile;
using conformance::SuiteTest;
using conformance::SuiteTests;

// Documents that name external entities, but whose error can be seen without reading these.
constexpr std::string_view kMalformedByThemselves[] = {
    "not-wf-sa-081",                // an external entity in the value of an attribute
    "not-wf-sa-082",                // the same within another entity
    "not-wf-sa-185",                // an undeclared entity in a document that is standalone
    "not-wf-sa03",                  // the same in the value of an attribute
    "ibm-not-wf-P32-ibm32n09.xml",  // the same
    "ibm-not-wf-P68-ibm68n06.xml",  // the same
    "not-wf-not-sa-002",            // an XML declaration in a parameter entity that is internal
};

Mode ModeOf(const SuiteTest& test) { return {Xml::XmlConformance::Standard, test.namespaces}; }

// A document is judged by the suite if it is well-formed, or if what is wrong stands in it.
bool IsJudged(const SuiteTest& test) {
    if (test.IsWellFormed()) return true;
    return test.type == "not-wf" &&
           (test.IsAlone() || std::count(std::begin(kMalformedByThemselves),
                                         std::end(kMalformedByThemselves), test.id) > 0);
}

// What a document that is alone is counted as, and another.
std::string KindOf(const SuiteTest& test) {
    return test.type + (test.IsAlone() ? "" : " with external entities");
}

// Returns what the suite expects of a form without a document type.
std::string WithoutDocumentType(std::string form) {
    constexpr std::string_view kEnd = "]>\n";
    const std::size_t begin = form.find("<!DOCTYPE");
    if (begin == std::string::npos) return form;
    return form.erase(begin, form.find(kEnd, begin) + kEnd.size() - begin);
}

void AddForm(Results& results, const SuiteTest& test, const std::string& expected,
             const Outcome& outcome) {
    const bool holds = outcome.IsAccepted() && outcome.form == expected;
    results.Add(test, KindOf(test), holds,
                outcome.error + "\n    expected " + support::Escape(expected) + "\n    told     " +
                    support::Escape(outcome.form));
}

TEST(StandardMode, DecidesAsTheSuiteSays) {
    ESPALIER_REQUIRE_SUITE();
    Results results(Exception::What::Verdict);
    for (const SuiteTest& test : SuiteTests()) {
        if (!IsJudged(test)) continue;
        const Outcome outcome = ReadNodes(SuiteFile(test.path), ModeOf(test));
        const bool holds = outcome.IsAccepted() == test.IsWellFormed();
        results.Add(test, KindOf(test), holds,
                    outcome.IsAccepted() ? "is accepted" : outcome.error);
    }
    results.Print("verdicts of the standard mode");
    EXPECT_TRUE(results.Surprises().empty()) << results.Surprises();
    EXPECT_EQ(results.Count("not-wf"), 951);
    EXPECT_EQ(results.Count("valid"), 601);
    EXPECT_EQ(results.Count("invalid"), 175);
    EXPECT_EQ(results.Count("not-wf with external entities"), 7);
    EXPECT_EQ(results.Count("valid with external entities"), 127);
    EXPECT_EQ(results.Count("invalid with external entities"), 54);
}

TEST(StandardMode, TellsTheFormThatTheSuiteExpects) {
    ESPALIER_REQUIRE_SUITE();
    Results nodes(Exception::What::Form);
    for (const SuiteTest& test : SuiteTests()) {
        if (test.output.empty() || !test.IsAlone()) continue;
        const std::string document = SuiteFile(test.path);
        AddForm(nodes, test, SuiteFile(test.output), Read(document, ModeOf(test)));
    }
    nodes.Print("forms told by nodes");
    EXPECT_TRUE(nodes.Surprises().empty()) << nodes.Surprises();
    EXPECT_EQ(nodes.Count("valid"), 228);
    EXPECT_EQ(nodes.Count("invalid"), 34);
}

TEST(StandardMode, IsTheSameByEvents) {
    ESPALIER_REQUIRE_SUITE();
    Results events(Exception::What::Form);
    for (const SuiteTest& test : SuiteTests()) {
        if (test.output.empty() || !test.IsAlone()) continue;
        AddForm(events, test, WithoutDocumentType(SuiteFile(test.output)),
                ReadEvents(SuiteFile(test.path), ModeOf(test)));
    }
    events.Print("forms told by events");
    EXPECT_TRUE(events.Surprises().empty()) << events.Surprises();
    EXPECT_EQ(events.Count("valid"), 228);
}

// Without namespaces not all of a document is in its tree.
TEST(StandardMode, IsTheSameByTrees) {
    ESPALIER_REQUIRE_SUITE();
    Results trees(Exception::What::Form);
    for (const SuiteTest& test : SuiteTests()) {
        if (test.output.empty() || !test.IsAlone() || !test.namespaces) continue;
        AddForm(trees, test, WithoutDocumentType(SuiteFile(test.output)),
                LoadTree(SuiteFile(test.path), ModeOf(test)));
    }
    trees.Print("forms told by trees");
    EXPECT_TRUE(trees.Surprises().empty()) << trees.Surprises();
    EXPECT_EQ(trees.Count("valid"), 227);
    EXPECT_EQ(trees.Count("invalid"), 34);
}

}  // namespace
