// SPDX-License-Identifier: MIT
//
// Small documents made to ask for endless work. A time limit of ctest stands behind each test; none
// measures time itself.
#include <espalier/xml/XmlEntityLimits.h>

#include "support/EntityDocuments.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::Chain;
using support::Entity;
using support::InContent;
using support::InValue;
using support::kWays;
using support::Laughs;
using support::Number;
using support::Outcome;
using support::ReadAll;
using support::References;
using support::Way;
using Xml::XmlEntityLimits;

constexpr char kTooLong[] = "Entity expansion limit exceeded";
constexpr char kTooDeep[] = "Entity nesting limit exceeded";
constexpr char kCyclic[] = "Cyclic entity reference";
constexpr long long kDefaultBytes = 8LL * 1024 * 1024;

// Expects that the document is refused in every place and way.
void ExpectBomb(const std::string& declarations, const std::string& references,
                const char* expectedError, const std::string& expectedArgument) {
    for (const std::string& document :
         {InContent(declarations, references), InValue(declarations, references),
          InContent(declarations + "<!ENTITY bomb '<b/>" + references + "'>", "&bomb;"),
          InContent(declarations + "<!ENTITY bomb \"<b x='" + references + "'/>\">", "&bomb;")}) {
        for (const Way way : kWays) {
            const Outcome outcome = ReadAll(document, way);
            EXPECT_EQ(outcome.error, expectedError);
            const bool isInBomb = document.find("&bomb;") != std::string::npos;
            EXPECT_EQ(outcome.argument, isInBomb ? "bomb" : expectedArgument);
            EXPECT_LT(outcome.nodes, 10);
        }
    }
}

TEST(XmlTextReaderEntityHostile, BillionLaughs) {
    ExpectBomb(Laughs(10, 10, "lol"), "&l9;", kTooLong, "l9");
    ExpectBomb(Laughs(10, 10, "&lt;"), "&l9;", kTooLong, "l9");
    ExpectBomb(Laughs(10, 10, "<b/>"), "&l9;", kTooLong, "l9");
    ExpectBomb(Laughs(10, 10, "<b>x</b>"), "&l9;", kTooLong, "l9");
}

TEST(XmlTextReaderEntityHostile, SumsThatFitInNoNumber) {
    ExpectBomb(Laughs(100, 10, "lol"), "&l99;", kTooLong, "l99");
    ExpectBomb(Laughs(1000, 2, "x"), "&l999;", kTooLong, "l999");
    // An exabyte is still less than they ask for.
    const XmlEntityLimits exabyte = {1LL << 60, 1, 1024};
    const Outcome outcome =
        ReadAll(InContent(Laughs(100, 10, "lol"), "&l99;"), Way::Expand, exabyte);
    EXPECT_EQ(outcome.error, kTooLong);
}

TEST(XmlTextReaderEntityHostile, EmptyEntitiesThatGrowWithoutGivingAnything) {
    ExpectBomb(Laughs(60, 2, ""), "&l59;", kTooLong, "l59");
    ExpectBomb(Laughs(12, 10, ""), "&l11;", kTooLong, "l11");
}

TEST(XmlTextReaderEntityHostile, QuadraticBlowUp) {
    // 100 KB, a hundred thousand times.
    const std::string declarations = Entity("t", std::string(100000, 'x'));
    for (const Way way : kWays) {
        for (const std::string& document : {InContent(declarations, References("t", 100000)),
                                            InValue(declarations, References("t", 100000))}) {
            const Outcome outcome = ReadAll(document, way);
            EXPECT_EQ(outcome.error, kTooLong);
            EXPECT_EQ(outcome.argument, "t");
            EXPECT_LT(outcome.text, 50000000U);
        }
    }
    ExpectBomb(declarations + Entity("u", References("t", 100000)), "&u;", kTooLong, "u");
}

TEST(XmlTextReaderEntityHostile, EntitiesThatNameTheNext) {
    constexpr int kLength = 100000;
    ExpectBomb(Chain(kLength, "x"), "&e0;", kTooDeep, "e0");
    const XmlEntityLimits raised = {kDefaultBytes, 100, kLength};
    const XmlEntityLimits tooLow = {kDefaultBytes, 100, kLength - 1};
    for (const char* last : {"x", "<b/>"}) {
        const std::string declarations = Chain(kLength, last);
        for (const Way way : kWays) {
            const Outcome outcome = ReadAll(InContent(declarations, "&e0;"), way, raised);
            EXPECT_EQ(outcome.error, "");
            EXPECT_EQ(outcome.text, *last == 'x' ? 1U : 0U);
            EXPECT_EQ(ReadAll(InContent(declarations, "&e0;"), way, tooLow).error, kTooDeep);
            const Outcome inValue = ReadAll(InValue(declarations, "&e0;"), way, raised);
            EXPECT_EQ(inValue.error, "");
        }
    }
}

TEST(XmlTextReaderEntityHostile, AVeryLongCycle) {
    constexpr int kLength = 100000;
    const XmlEntityLimits raised = {kDefaultBytes, 100, 2 * kLength};
    for (const char* before : {"", "<b/>"}) {
        const std::string declarations = Chain(kLength, std::string(before) + "&e0;");
        for (const Way way : kWays) {
            const Outcome outcome = ReadAll(InContent(declarations, "&e0;"), way, raised);
            EXPECT_EQ(outcome.error, kCyclic);
            EXPECT_EQ(outcome.argument, "e0");
            EXPECT_EQ(outcome.line, 1);
        }
        EXPECT_EQ(ReadAll(InValue(declarations, "&e0;"), Way::Expand, raised).error, kCyclic);
    }
}

TEST(XmlTextReaderEntityHostile, CyclesOfEveryShortLength) {
    for (int length = 1; length <= 1024; length = length < 10 ? length + 1 : length * 2) {
        for (const std::string text : {"&e0;", "x&e0;&e0;", "<b/>&e0;", "<b x='&e0;'/>"}) {
            const std::string declarations = Chain(length, text);
            for (const Way way : kWays) {
                const Outcome outcome = ReadAll(InContent(declarations, "&e0;"), way);
                EXPECT_EQ(outcome.error, kCyclic) << length << text;
                EXPECT_EQ(outcome.argument, "e0");
            }
        }
        const std::string declarations = Chain(length, "x&e0;");
        EXPECT_EQ(ReadAll(InValue(declarations, "&e0;"), Way::Expand).error, kCyclic);
        EXPECT_EQ(ReadAll(InValue(declarations, "&e0;"), Way::Resolve).error, kCyclic);
    }
}

TEST(XmlTextReaderEntityHostile, CyclesThatBranch) {
    // Each names all the others twice.
    constexpr int kCount = 200;
    std::string all;
    for (int i = 0; i < kCount; ++i)
        all += References("e" + Number(i), 2);
    std::string declarations;
    for (int i = 0; i < kCount; ++i)
        declarations += Entity("e" + Number(i), all);
    for (const Way way : kWays) {
        EXPECT_EQ(ReadAll(InContent(declarations, "&e100;"), way).error, kCyclic);
        EXPECT_EQ(ReadAll(InValue(declarations, "&e100;"), way).error, kCyclic);
    }
}

TEST(XmlTextReaderEntityHostile, ManyReferencesToLittle) {
    const std::string references = References("e", 200000);
    const std::string declarations = Entity("e", "xy");
    for (const Way way : kWays) {
        const Outcome inContent = ReadAll(InContent(declarations, references), way);
        EXPECT_EQ(inContent.error, "");
        EXPECT_EQ(inContent.text, 400000U);
        const Outcome inValue = ReadAll(InValue(declarations, references), way);
        EXPECT_EQ(inValue.error, "");
        EXPECT_EQ(inValue.text, 400000U);
    }
}

}  // namespace
