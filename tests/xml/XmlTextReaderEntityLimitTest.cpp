// SPDX-License-Identifier: MIT
//
// How far entities may expand: each limit just where it allows and just where it refuses.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EntityDocuments.h"
#include "support/PrintAstring.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using support::Chain;
using support::DocumentReader;
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
using Xml::XmlEntityHandling;
using Xml::XmlEntityLimits;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr char kTooLong[] = "Entity expansion limit exceeded";
constexpr char kTooDeep[] = "Entity nesting limit exceeded";
constexpr long long kDefaultBytes = 8LL * 1024 * 1024;
constexpr long long kUnlimited = std::numeric_limits<long long>::max();

TEST(XmlTextReaderEntityLimit, Defaults) {
    const XmlEntityLimits limits;
    EXPECT_EQ(limits.expandedBytes, kDefaultBytes);
    EXPECT_EQ(limits.amplification, 100);
    EXPECT_EQ(limits.nesting, 1024);
    XmlTextReader reader;
    EXPECT_EQ(reader.EntityLimits().expandedBytes, kDefaultBytes);
    EXPECT_EQ(reader.EntityLimits().amplification, 100);
    EXPECT_EQ(reader.EntityLimits().nesting, 1024);
}

// The bytes of an entity's text count, and those of all that it refers to, each time.
TEST(XmlTextReaderEntityLimit, BytesAreThoseOfTheTextsEachTime) {
    const std::string declarations = Entity("t", "12345") + Entity("u", "&t;&t;-") +
                                     Entity("v", "&#65;&lt;") + Entity("g", "") +
                                     Entity("w", "\xC3\xA9") + "<!ENTITY s SYSTEM 's'>" +
                                     Entity("m", "<b>&t;</b>") + Entity("n", "&m;");
    const struct {
        const char* references;
        long long bytes;
        const char* last;  // the reference that is too much where one byte less is allowed
    } kCases[] = {
        {"&t;", 5, "t"},
        {"&t;&t;", 10, "t"},
        {"&t;-&t;-&t;", 15, "t"},
        {"&u;", 7 + 2 * 5, "u"},
        {"&u;&t;", 7 + 2 * 5 + 5, "t"},
        {"&t;&u;", 5 + 7 + 2 * 5, "u"},
        {"&v;", 5, "v"},
        {"&t;&w;", 7, "w"},
        {"&m;", 10 + 5, "m"},
        {"x&m;", 10 + 5, "m"},
        {"x&t;y&m;&m;z&t;", 5 + 2 * (10 + 5) + 5, "t"},
        {"x&n;", 3 + 10 + 5, "n"},
        {"&t;&g;&s;&amp;&#65;", 5, "t"},
    };
    for (const auto& c : kCases) {
        for (const bool isValue : {false, true}) {
            const std::string document = isValue ? InValue(declarations, c.references)
                                                 : InContent(declarations, c.references);
            for (const Way way : kWays) {
                SCOPED_TRACE(std::string(c.references) + ", " + Number(isValue) + ", " +
                             Number(static_cast<int>(way)));
                EXPECT_EQ(ReadAll(document, way, {c.bytes, 0, 1024}).error, "");
                const Outcome outcome = ReadAll(document, way, {c.bytes - 1, 0, 1024});
                EXPECT_EQ(outcome.error, kTooLong);
                EXPECT_EQ(outcome.argument, c.last);
                EXPECT_EQ(outcome.line, 2);
            }
        }
    }
}

TEST(XmlTextReaderEntityLimit, TheReferenceThatIsTooMuchIsReportedBehindIt) {
    const std::string declarations = Entity("t", "12345");
    const XmlEntityLimits limits = {9, 0, 1024};
    for (const Way way : kWays) {
        const Outcome inContent = ReadAll(InContent(declarations, "&t;x&t;"), way, limits);
        EXPECT_EQ(inContent.error, kTooLong);
        EXPECT_EQ(inContent.argument, "t");
        EXPECT_EQ(inContent.line, 2);
        EXPECT_EQ(inContent.column, 11);
    }
    const Outcome inValue = ReadAll(InValue(declarations, "&t;x&t;"), Way::Expand, limits);
    EXPECT_EQ(inValue.error, kTooLong);
    EXPECT_EQ(inValue.column, 14);
}

// Both limits have to be exceeded: more bytes than that, and more than so many times the input.
TEST(XmlTextReaderEntityLimit, TheInputReadSoFarCounts) {
    const std::string head = "<!DOCTYPE a [<!ENTITY t \"";
    for (const long long amplification : {1LL, 2LL, 3LL}) {
        for (const long long times : {1LL, 2LL, 3LL, 4LL, 5LL}) {
            // With t referred to `times` times and a text of 500 bytes, all in one buffer.
            const std::string document = head + std::string(500, 'x') + "\">]><a>" +
                                         References("t", static_cast<int>(times)) + "</a>";
            const auto input = static_cast<long long>(document.size());
            ASSERT_LE(input, 1024);
            const bool isTooMuch = 500 * times > amplification * input;
            for (const Way way : kWays) {
                const Outcome outcome = ReadAll(document, way, {0, amplification, 1024});
                EXPECT_EQ(outcome.error, isTooMuch ? kTooLong : "") << amplification << times;
                EXPECT_EQ(ReadAll(document, way, {500 * times, amplification, 1024}).error, "");
                EXPECT_EQ(ReadAll(document, way, {500 * times - 1, amplification, 1024}).error,
                          isTooMuch ? kTooLong : "");
            }
        }
    }
}

TEST(XmlTextReaderEntityLimit, TheFactorItselfIsAllowed) {
    for (const int amplification : {1, 2, 5}) {
        const auto documentOf = [&](std::size_t length) {
            return InContent(Entity("t", std::string(length, 'x')),
                             References("t", amplification + 1));
        };
        // As long as all the rest of the document, times the factor: then they are equal.
        const std::size_t rest = documentOf(0).size();
        const std::size_t edge = rest * static_cast<std::size_t>(amplification);
        ASSERT_LE(documentOf(edge + 1).size(), 1024U);
        for (const Way way : kWays) {
            EXPECT_EQ(ReadAll(documentOf(edge), way, {0, amplification, 1024}).error, "");
            EXPECT_EQ(ReadAll(documentOf(edge + 1), way, {0, amplification, 1024}).error, kTooLong);
        }
    }
}

TEST(XmlTextReaderEntityLimit, EightMegabytesAreAllowedAndOneByteMoreIsNot) {
    const std::string declarations = Entity("k", std::string(1024, 'x')) + Entity("b", "x");
    const int count = static_cast<int>(kDefaultBytes / 1024);
    const std::string allowed = References("k", count);
    for (const Way way : kWays) {
        const Outcome whole = ReadAll(InContent(declarations, allowed), way);
        EXPECT_EQ(whole.error, "");
        EXPECT_EQ(whole.text, static_cast<std::size_t>(kDefaultBytes));
        const Outcome more = ReadAll(InContent(declarations, allowed + "&b;"), way);
        EXPECT_EQ(more.error, kTooLong);
        EXPECT_EQ(more.argument, "b");
    }
}

TEST(XmlTextReaderEntityLimit, ALargeDocumentMayExpandMore) {
    // 200 KB of input allow 20 MB.
    const std::string declarations =
        "<!--" + std::string(200000, 'c') + "-->" + Entity("k", std::string(1000, 'x'));
    for (const Way way : kWays) {
        const Outcome allowed = ReadAll(InContent(declarations, References("k", 15000)), way);
        EXPECT_EQ(allowed.error, "");
        EXPECT_EQ(allowed.text, 15000000U);
        EXPECT_EQ(ReadAll(InContent(declarations, References("k", 40000)), way).error, kTooLong);
    }
}

TEST(XmlTextReaderEntityLimit, DeclarationsAloneCostNothing) {
    const std::string declarations = Laughs(30, 10, "lol") + Chain(5000, "x");
    EXPECT_EQ(ReadAll(InContent(declarations, "&l0;"), Way::Expand, {3, 0, 1}).error, "");
    EXPECT_EQ(ReadAll(InContent(declarations, ""), Way::Expand, {0, 0, 0}).error, "");
}

TEST(XmlTextReaderEntityLimit, ReferencesThatAreNotExpandedCostNothing) {
    const std::string document =
        "<!DOCTYPE a [" + Laughs(30, 10, "lol") + "]><a x='&l29;'>&l29;&l29;</a>";
    for (const auto handling :
         {XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandCharEntities}) {
        DocumentReader reader(document, support::WithEntities(handling));
        reader->SetEntityLimits({0, 0, 0});
        EXPECT_NO_THROW(reader.ReadAll());
        EXPECT_TRUE(reader->Eof());
    }
}

TEST(XmlTextReaderEntityLimit, EveryDocumentBeginsAnew) {
    const std::string document = InContent(Entity("t", "12345"), "&t;");
    XmlTextReader reader;
    reader.SetEntityLimits({5, 0, 1});
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(ReadAll(reader, document, Way::Expand).error, "");
        EXPECT_EQ(reader.EntityLimits().expandedBytes, 5);
        EXPECT_EQ(ReadAll(reader, InContent(Entity("t", "123456"), "&t;"), Way::Expand).error,
                  kTooLong);
    }
}

TEST(XmlTextReaderEntityLimit, LimitsHoldFromTheNextReferenceOn) {
    DocumentReader reader(InContent(Entity("t", "12345"), "&t;<b/>&t;<b/>&t;"),
                          support::WithEntities(XmlEntityHandling::ExpandEntities));
    reader.ReadNodes(4);
    EXPECT_EQ(reader->Value(), "12345");
    reader->SetEntityLimits({10, 0, 1024});
    reader.ReadNodes(3);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    EXPECT_THROW(reader.ReadAll(), Xml::Exception);
}

TEST(XmlTextReaderEntityLimit, NestingAtItsEdge) {
    for (const int nesting : {1, 2, 3, 10, 1024}) {
        for (const char* last : {"x", "", "<b/>"}) {
            for (const Way way : kWays) {
                SCOPED_TRACE(Number(nesting) + ", " + last + ", " + Number(static_cast<int>(way)));
                const XmlEntityLimits limits = {kUnlimited, kUnlimited, nesting};
                const std::string allowed = Chain(nesting, last);
                EXPECT_EQ(ReadAll(InContent(allowed, "&e0;&e0;"), way, limits).error, "");
                EXPECT_EQ(ReadAll(InValue(allowed, "&e0;"), way, limits).error, "");
                const std::string refused = Chain(nesting + 1, last);
                for (const std::string& document :
                     {InContent(refused, "&e1;&e0;"), InValue(refused, "&e1;&e0;")}) {
                    const Outcome outcome = ReadAll(document, way, limits);
                    EXPECT_EQ(outcome.error, kTooDeep);
                    EXPECT_EQ(outcome.argument, "e0");
                    EXPECT_EQ(outcome.line, 2);
                }
            }
        }
    }
}

// The deepest branch counts, wherever it stands.
TEST(XmlTextReaderEntityLimit, NestingIsThatOfTheDeepestBranch) {
    const std::string declarations =
        Chain(3, "x") + Entity("first", "&e0;&e2;") + Entity("last", "&e2;&e1;-&e0;");
    for (const Way way : kWays) {
        for (const char* name : {"first", "last"}) {
            const std::string document = InContent(declarations, References(name));
            EXPECT_EQ(ReadAll(document, way, {kUnlimited, 100, 4}).error, "");
            const Outcome outcome = ReadAll(document, way, {kUnlimited, 100, 3});
            EXPECT_EQ(outcome.error, kTooDeep);
            EXPECT_EQ(outcome.argument, name);
        }
    }
}

TEST(XmlTextReaderEntityLimit, TheGreatestLimitsDoNotOverflow) {
    const XmlEntityLimits limits = {kUnlimited, kUnlimited, std::numeric_limits<int>::max()};
    for (const Way way : kWays) {
        EXPECT_EQ(ReadAll(InContent(Laughs(4, 10, "lol"), "&l3;"), way, limits).text, 3000U);
        EXPECT_EQ(ReadAll(InValue(Chain(2000, "lol"), "&e0;"), way, limits).text, 3U);
        EXPECT_EQ(ReadAll(InContent(Entity("t", "x"), "&t;"), way, {0, kUnlimited, 1}).error, "");
        EXPECT_EQ(ReadAll(InContent(Entity("t", "x"), "&t;"), way, {kUnlimited, 0, 1}).error, "");
    }
}

TEST(XmlTextReaderEntityLimit, NamespacesAreMeasuredWhateverTheHandling) {
    const std::string document = "<!DOCTYPE a [" + Laughs(20, 10, "lol") + "]>\n<a xmlns='&l19;'/>";
    for (const auto handling :
         {XmlEntityHandling::ExpandNothing, XmlEntityHandling::ExpandCharEntities,
          XmlEntityHandling::ExpandEntities}) {
        DocumentReader reader(document, support::WithEntities(handling));
        reader.ReadNodes(2);
        try {
            reader->Read();
            ADD_FAILURE() << "is accepted";
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), kTooLong);
            EXPECT_STREQ(error.Argument(), "l19");
        }
    }
}

}  // namespace
