// SPDX-License-Identifier: MIT
//
// The reader in standard mode against the verdicts of the standards, expat and libxml2: the
// differences of the default mode are none here.
#include "Events.h"
#include "SameEvents.h"
#include "Tellings.h"
#include "Verdicts.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

using differential::Detail;
using differential::Peers;
using differential::Reading;
using differential::Standard;
using differential::Verdict;

struct Area {
    const char* name;
    std::span<const Verdict> (*verdicts)();
};

constexpr Area kAreas[] = {
    {"Characters", differential::CharacterVerdicts}, {"Markup", differential::MarkupVerdicts},
    {"Subset", differential::SubsetVerdicts},        {"Entities", differential::EntityVerdicts},
    {"Namespaces", differential::NamespaceVerdicts},
};

// Calls `judge` with each verdict.
template <typename Judge>
void ForEachVerdict(const Area& area, const Judge& judge) {
    for (const Verdict& verdict : area.verdicts()) {
        const std::string document(verdict.document);
        SCOPED_TRACE(std::string(verdict.what) + ": " + support::Escape(document).substr(0, 300));
        judge(verdict, document);
    }
}

class StandardMode : public testing::TestWithParam<Area> {};

TEST_P(StandardMode, HasTheVerdictsOfTheStandards) {
    ForEachVerdict(GetParam(), [](const Verdict& verdict, const std::string& document) {
        const Reading ours = differential::ReadByStandard(document, Detail::Exact);
        EXPECT_EQ(ours.error.empty(), verdict.standard == Standard::WellFormed) << ours.error;
    });
}

TEST_P(StandardMode, TellsWhatExpatTells) {
    ForEachVerdict(GetParam(), [](const Verdict& verdict, const std::string& document) {
        if (verdict.standard != Standard::WellFormed) return;
        const Reading ours = differential::ReadByStandard(document, Detail::Exact);
        const Reading expat = differential::ReadWithExpat(document, Detail::Exact);
        if (!expat.error.empty()) return;  // the row says so, and its own test compares
        ExpectSameEvents(ours, expat, "expat");
    });
}

TEST_P(StandardMode, TellsWhatLibxml2Tells) {
    ForEachVerdict(GetParam(), [](const Verdict& verdict, const std::string& document) {
        if (verdict.standard != Standard::WellFormed) return;
        const Reading ours = differential::ReadByStandard(document, Detail::Whole);
        const Reading libxml = differential::ReadWithLibxml(document, Detail::Whole);
        const bool hasReference = std::find(ours.lines.begin(), ours.lines.end(), "reference") !=
                                  ours.lines.end();  // libxml2 takes it for nothing
        if (!libxml.error.empty() || hasReference) return;
        ExpectSameEvents(ours, libxml, "libxml2");
    });
}

std::string NameOf(const testing::TestParamInfo<Area>& area) { return area.param.name; }

INSTANTIATE_TEST_SUITE_P(Areas, StandardMode, testing::ValuesIn(kAreas), NameOf);

// What the reader tells otherwise in its default mode it tells as expat does here.
TEST(StandardMode, TellsWhatTheDefaultModeTellsOtherwise) {
    std::set<std::string> shown;
    for (const differential::Telling& telling : differential::Tellings()) {
        SCOPED_TRACE(telling.document);
        shown.insert(telling.difference);
        const Reading ours = differential::ReadByStandard(telling.document, Detail::Exact);
        EXPECT_EQ(ours.error, "");
        ExpectSameEvents(ours, differential::ReadWithExpat(telling.document, Detail::Exact),
                         "expat");
    }
    EXPECT_GE(shown.size(), 4U);
}

// Every difference of the default mode that concerns a verdict is judged by some row here.
TEST(StandardMode, IsJudgedByRowsOfAllDifferences) {
    std::set<std::string> names;
    for (const Area& area : kAreas) {
        for (const Verdict& verdict : area.verdicts()) {
            if (*verdict.difference != '\0') names.insert(verdict.difference);
        }
    }
    EXPECT_GE(names.size(), 19U);
}

// Without namespaces the verdicts are those of XML 1.0 alone, as expat has them.
TEST(StandardMode, HasTheVerdictsOfExpatWithoutNamespaces) {
    for (const Area& area : kAreas) {
        ForEachVerdict(area, [](const Verdict& verdict, const std::string& document) {
            if (verdict.peers != Peers::Agree && verdict.peers != Peers::LibxmlDiffers) return;
            constexpr auto kPlain = differential::Names::Plain;
            const Reading ours = differential::ReadByStandard(document, Detail::Exact, kPlain);
            const Reading expat = differential::ReadWithExpat(document, Detail::Exact, kPlain);
            EXPECT_EQ(ours.error.empty(), expat.error.empty()) << ours.error << expat.error;
            if (ours.error.empty() && expat.error.empty()) ExpectSameEvents(ours, expat, "expat");
        });
    }
}

}  // namespace
