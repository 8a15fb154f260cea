// SPDX-License-Identifier: MIT
//
// How far entities may expand: the edges of each limit, and small documents made to ask for endless
// work. A time limit of ctest stands behind each test; none measures time itself.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlEntityLimits.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/DocumentStream.h"
#include "support/PrintAstring.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace {

using support::DocumentReader;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlEntityLimits;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr char kTooLong[] = "Entity expansion limit exceeded";
constexpr char kTooDeep[] = "Entity nesting limit exceeded";
constexpr char kCyclic[] = "Cyclic entity reference";

constexpr long long kDefaultBytes = 8LL * 1024 * 1024;
constexpr long long kUnlimited = std::numeric_limits<long long>::max();

// The ways to come across the entities of a document.
enum class Way {
    Expand,   // everything is expanded
    Resolve,  // references in content and in values are resolved
};

constexpr Way kWays[] = {Way::Expand, Way::Resolve};

// What became of a document.
struct Outcome {
    std::string error;  // the message, or "" when it was read to the end
    std::string argument;
    int line = 0;
    int column = 0;
    long nodes = 0;
    std::size_t text = 0;  // bytes of all texts and, expanded, of all values
};

void ResolveParts(XmlTextReader& reader, Outcome& outcome) {
    while (reader.ReadAttributeValue()) {
        outcome.text += reader.Value().size();
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    }
}

void ReadNodes(XmlTextReader& reader, Way way, Outcome& outcome) {
    while (reader.Read()) {
        ++outcome.nodes;
        if (reader.NodeType() == XmlNodeType::Text) outcome.text += reader.Value().size();
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            if (way == Way::Resolve) {
                ResolveParts(reader, outcome);
            } else {
                outcome.text += reader.Value().size();
            }
        }
    }
}

Outcome ReadAll(XmlTextReader& reader, const std::string& document, Way way) {
    support::DocumentStream stream(document);
    reader.SetStream(stream.get(), false);
    reader.SetEntityHandling(way == Way::Expand ? XmlEntityHandling::ExpandEntities
                                                : XmlEntityHandling::ExpandCharEntities);
    Outcome outcome;
    try {
        ReadNodes(reader, way, outcome);
    } catch (const Xml::Exception& error) {
        outcome.error = error.What();
        outcome.argument = error.Argument();
        outcome.line = error.LineNumber();
        outcome.column = error.LinePos();
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        EXPECT_FALSE(reader.Read());
    }
    reader.Close();
    return outcome;
}

Outcome ReadAll(const std::string& document, Way way, const XmlEntityLimits& limits = {}) {
    XmlTextReader reader;
    reader.SetEntityLimits(limits);
    return ReadAll(reader, document, way);
}

std::string Number(int i) { return std::to_string(i); }

std::string Entity(const std::string& name, const std::string& text) {
    return "<!ENTITY " + name + " \"" + text + "\">";
}

// "&name;", `count` times.
std::string References(const std::string& name, int count = 1) {
    std::string out;
    for (int i = 0; i < count; ++i)
        out += "&" + name + ";";
    return out;
}

std::string InContent(const std::string& declarations, const std::string& content) {
    return "<!DOCTYPE a [" + declarations + "]>\n<a>" + content + "</a>";
}

std::string InValue(const std::string& declarations, const std::string& value) {
    return "<!DOCTYPE a [" + declarations + "]>\n<a x='" + value + "'/>";
}

// e0, whose text names e1, whose text names e2, ..., and the last, with a text of its own.
std::string Chain(int length, const std::string& last) {
    std::string out;
    for (int i = 0; i + 1 < length; ++i)
        out += Entity("e" + Number(i), References("e" + Number(i + 1)));
    return out + Entity("e" + Number(length - 1), last);
}

// l0 has the text, and each of the others names the one before so many times.
std::string Laughs(int levels, int each, const std::string& text) {
    std::string out = Entity("l0", text);
    for (int i = 1; i < levels; ++i)
        out += Entity("l" + Number(i), References("l" + Number(i - 1), each));
    return out;
}

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
    const std::string declarations =
        Entity("t", "12345") + Entity("u", "&t;&t;-") + Entity("v", "&#65;&lt;") + Entity("g", "") +
        Entity("w", "\xC3\xA9") + "<!ENTITY s SYSTEM 's'>" + Entity("m", "<b>&t;</b>");
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

// Documents made to hurt.

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
