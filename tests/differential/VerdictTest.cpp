// SPDX-License-Identifier: MIT
//
// Compares what the reader, expat and libxml2 say of small documents with what the standards say.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "Differences.h"
#include "Events.h"
#include "SameEvents.h"
#include "Tellings.h"
#include "Verdicts.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using differential::Detail;
using differential::Difference;
using differential::Effect;
using differential::Peers;
using differential::Reading;
using differential::Standard;
using differential::Verdict;
using Xml::XmlEntityHandling;
using Xml::XmlTextReader;

struct Area {
    const char* name;
    std::span<const Verdict> (*verdicts)();
};

constexpr Area kAreas[] = {
    {"Characters", differential::CharacterVerdicts}, {"Markup", differential::MarkupVerdicts},
    {"Subset", differential::SubsetVerdicts},        {"Entities", differential::EntityVerdicts},
    {"Namespaces", differential::NamespaceVerdicts},
};

// Returns the message behind the place.
std::string MessageOf(const Reading& ours) {
    const std::size_t end = ours.error.find(": ");
    return end == std::string::npos ? ours.error : ours.error.substr(end + 2);
}

void ExpectDifference(const Verdict& verdict, const Reading& ours, const Reading& expat) {
    const Difference* const difference = differential::FindDifference(verdict.difference);
    ASSERT_NE(difference, nullptr) << verdict.difference;
    EXPECT_TRUE(difference->MayShowIn(verdict.document));
    if (verdict.standard == Standard::WellFormed) {
        EXPECT_EQ(difference->effect, Effect::Refused);
        EXPECT_TRUE(difference->HasMessage(MessageOf(ours))) << ours.error;
        return;
    }
    EXPECT_EQ(difference->effect, Effect::Accepted);
    EXPECT_EQ(ours.error, "");
    if (!expat.error.empty()) {
        EXPECT_TRUE(difference->HasExpatError(expat.errorCode)) << expat.error;
    }
}

class Verdicts : public testing::TestWithParam<Area> {};

TEST_P(Verdicts, AreThoseOfTheStandardButForTheDifferencesOfTheTable) {
    for (const Verdict& verdict : GetParam().verdicts()) {
        const std::string document(verdict.document);
        SCOPED_TRACE(std::string(verdict.what) + ": " + support::Escape(document).substr(0, 300));
        const Reading ours = differential::ReadWithReader(document, Detail::Whole);
        const Reading expat = differential::ReadWithExpat(document, Detail::Whole);
        if (*verdict.difference != '\0') {
            ExpectDifference(verdict, ours, expat);
        } else {
            EXPECT_EQ(ours.error.empty(), verdict.standard == Standard::WellFormed) << ours.error;
        }
    }
}

TEST_P(Verdicts, AreThoseOfExpatAndLibxml2) {
    for (const Verdict& verdict : GetParam().verdicts()) {
        const std::string document(verdict.document);
        SCOPED_TRACE(std::string(verdict.what) + ": " + support::Escape(document).substr(0, 300));
        const Reading expat = differential::ReadWithExpat(document, Detail::Whole);
        const Reading libxml = differential::ReadWithLibxml(document, Detail::Whole);
        const bool isGood = verdict.standard == Standard::WellFormed;
        const bool expatDiffers =
            verdict.peers == Peers::ExpatDiffers || verdict.peers == Peers::BothDiffer;
        const bool libxmlDiffers =
            verdict.peers == Peers::LibxmlDiffers || verdict.peers == Peers::BothDiffer;
        EXPECT_EQ(expat.error.empty(), isGood != expatDiffers) << expat.error;
        EXPECT_EQ(libxml.error.empty(), isGood != libxmlDiffers) << libxml.error;
    }
}

std::string NameOf(const testing::TestParamInfo<Area>& area) { return area.param.name; }

INSTANTIATE_TEST_SUITE_P(Areas, Verdicts, testing::ValuesIn(kAreas), NameOf);

// Documents without a difference that the reader and the peers accept are the same to all of them.
TEST_P(Verdicts, AreOfDocumentsThatTellTheSame) {
    for (const Verdict& verdict : GetParam().verdicts()) {
        const bool isCommon = verdict.standard == Standard::WellFormed &&
                              *verdict.difference == '\0' && verdict.peers == Peers::Agree;
        if (!isCommon) continue;
        const std::string document(verdict.document);
        SCOPED_TRACE(std::string(verdict.what) + ": " + support::Escape(document).substr(0, 300));
        const Reading ours = differential::ReadWithReader(document, Detail::Whole);
        ExpectSameEvents(ours, differential::ReadWithExpat(document, Detail::Whole), "expat");
        ExpectSameEvents(ours, differential::ReadWithLibxml(document, Detail::Whole), "libxml2");
    }
}

TEST(Verdicts, AreManyAndOfBothKinds) {
    constexpr std::size_t kLeast = 200;
    std::size_t wellFormed = 0;
    std::size_t malformed = 0;
    for (const Area& area : kAreas) {
        for (const Verdict& verdict : area.verdicts())
            ++(verdict.standard == Standard::WellFormed ? wellFormed : malformed);
    }
    EXPECT_GE(malformed, kLeast);
    EXPECT_GE(wellFormed, kLeast / 2);
}

TEST(Differences, AllShowInSomeDocument) {
    std::set<std::string> shown;
    for (const Area& area : kAreas) {
        for (const Verdict& verdict : area.verdicts())
            shown.insert(verdict.difference);
    }
    for (const Difference& difference : differential::Differences()) {
        if (difference.effect == Effect::Told) continue;
        EXPECT_TRUE(shown.contains(difference.name)) << difference.name;
    }
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : ", ") + line;
    return text;
}

TEST(Differences, ShowInWhatTheReaderTells) {
    std::set<std::string> shown;
    for (const differential::Telling& telling : differential::Tellings()) {
        SCOPED_TRACE(telling.document);
        shown.insert(telling.difference);
        const Difference* const difference = differential::FindDifference(telling.difference);
        ASSERT_NE(difference, nullptr);
        EXPECT_EQ(difference->effect, Effect::Told);
        const Reading ours = differential::ReadWithReader(telling.document, Detail::Whole);
        EXPECT_EQ(ours.error, "");
        EXPECT_EQ(Joined(ours.lines), telling.reader);
    }
    for (const Difference& difference : differential::Differences()) {
        if (difference.effect != Effect::Told) continue;
        EXPECT_TRUE(shown.contains(difference.name)) << difference.name;
    }
}

// Returns the message of the error, or nothing.
std::string ErrorOf(const std::string& document, XmlEntityHandling::XML_ENTITY_HANDLING handling,
                    bool namespaces = true) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNamespaces(namespaces);
    reader.SetEntityHandling(handling);
    try {
        while (reader.Read()) {
        }
    } catch (const Xml::Exception& error) {
        return std::string(error.What());
    }
    return "";
}

// Without ExpandEntities nothing need be declared.
TEST(Differences, UndeclaredEntitiesAreRefusedOnlyWhereTheyAreToBeExpanded) {
    int count = 0;
    for (const Verdict& verdict : differential::EntityVerdicts()) {
        const std::string document(verdict.document);
        SCOPED_TRACE(document);
        if (ErrorOf(document, XmlEntityHandling::ExpandEntities) != "Undeclared entity") continue;
        ++count;
        EXPECT_EQ(ErrorOf(document, XmlEntityHandling::ExpandNothing), "");
        EXPECT_EQ(ErrorOf(document, XmlEntityHandling::ExpandCharEntities), "");
    }
    EXPECT_GE(count, 5);
}

TEST(Differences, NoElementBeginsWithAColonWhenNamespacesAreOff) {
    const auto handling = XmlEntityHandling::ExpandEntities;
    EXPECT_EQ(ErrorOf("<:a/>", handling, false), "Syntax error: Expected element name");
    EXPECT_EQ(ErrorOf("<a :x=''/>", handling, false), "");
    EXPECT_EQ(ErrorOf("<a:b:c/>", handling, false), "");
}

}  // namespace
