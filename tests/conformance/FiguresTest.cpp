// SPDX-License-Identifier: MIT
//
// How much of the suite holds in both modes, as docs/conformance-suite.md says.
#include "Outcome.h"
#include "Suite.h"
#include "support/GeneratedPart.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using conformance::Mode;
using conformance::SuiteFile;
using conformance::SuiteTest;
using conformance::SuiteTests;
using Xml::XmlConformance;

// How many of all hold.
struct Share {
    int held = 0;
    int all = 0;

    void Add(bool holds) {
        ++all;
        if (holds) ++held;
    }
    std::string Text() const { return std::to_string(held) + " of " + std::to_string(all); }
};

// What holds in one mode.
struct Figures {
    Share refused;   // malformed documents
    Share valid;     // accepted
    Share invalid;   // accepted: well-formed, but not valid
    Share external;  // accepted: well-formed, and naming external entities
    Share told;      // in the form that is expected
};

Figures FiguresOf(XmlConformance conformance) {
    Figures figures;
    for (const SuiteTest& test : SuiteTests()) {
        const std::string document = SuiteFile(test.path);
        const Mode mode = {conformance, test.namespaces};
        const bool isAccepted = ReadNodes(document, mode).IsAccepted();
        if (!test.IsAlone()) {
            if (test.IsWellFormed()) figures.external.Add(isAccepted);
            continue;
        }
        if (test.type == "not-wf") figures.refused.Add(!isAccepted);
        if (test.type == "valid") figures.valid.Add(isAccepted);
        if (test.type == "invalid") figures.invalid.Add(isAccepted);
        if (test.output.empty()) continue;
        figures.told.Add(isAccepted && Read(document, mode).form == SuiteFile(test.output));
    }
    return figures;
}

std::string Row(const char* what, const Share& standard, const Share& compatible) {
    return std::string("| ") + what + " | " + standard.Text() + " | " + compatible.Text() + " |\n";
}

const char* VerdictOf(const std::string& document, const Mode& mode) {
    return ReadNodes(document, mode).IsAccepted() ? "accepted" : "refused";
}

// The documents with errors that a processor need not report.
std::string OptionalErrors() {
    std::string text;
    for (const SuiteTest& test : SuiteTests()) {
        if (test.type != "error") continue;
        const std::string document = SuiteFile(test.path);
        text += "| " + test.id + " | " +
                VerdictOf(document, {XmlConformance::Standard, test.namespaces}) + " | " +
                VerdictOf(document, {XmlConformance::Compatible, test.namespaces}) + " |\n";
    }
    return text;
}

TEST(Figures, StandOnThePage) {
    ESPALIER_REQUIRE_SUITE();
    const Figures standard = FiguresOf(XmlConformance::Standard);
    const Figures compatible = FiguresOf(XmlConformance::Compatible);
    support::ExpectGeneratedPart(
        ESPALIER_SUITE_PAGE, "made by the suite: figures",
        "\n| | `Standard` | `Compatible` |\n|---|---|---|\n" +
            Row("malformed documents refused", standard.refused, compatible.refused) +
            Row("valid documents accepted", standard.valid, compatible.valid) +
            Row("invalid documents accepted", standard.invalid, compatible.invalid) +
            Row("well-formed documents with external entities accepted", standard.external,
                compatible.external) +
            Row("documents told in the form expected", standard.told, compatible.told) + "\n");
}

TEST(Figures, TellTheOptionalErrors) {
    ESPALIER_REQUIRE_SUITE();
    support::ExpectGeneratedPart(
        ESPALIER_SUITE_PAGE, "made by the suite: optional errors",
        "\n| Test | `Standard` | `Compatible` |\n|---|---|---|\n" + OptionalErrors() + "\n");
}

}  // namespace
