// SPDX-License-Identifier: MIT
//
// Documents made to hurt: the answer is a clear error or a full read, in time that grows with the
// input and no faster. A time limit of ctest stands behind each test; none measures time itself.
#include <espalier/io/Exception.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/CollidingNames.h"
#include "support/DocumentReader.h"
#include "support/GeneratedStream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::CollidingNames;
using support::GeneratedStream;
using support::WeakHash;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr long kMillion = 1'000'000;
constexpr long kHundredMegabytes = 100 * kMillion;

// What became of a document.
struct Outcome {
    std::string error;  // the message, or "" when it was read to the end
    std::string argument;
    long nodes = 0;
    int deepest = 0;
};

Outcome ReadAll(XmlTextReader& reader) {
    Outcome outcome;
    try {
        while (reader.Read()) {
            ++outcome.nodes;
            outcome.deepest = std::max(outcome.deepest, reader.Depth());
        }
    } catch (const Xml::Exception& error) {
        outcome.error = error.What();
        outcome.argument = error.Argument();
        EXPECT_GE(error.LineNumber(), 1);
        EXPECT_GE(error.LinePos(), 1);
    }
    return outcome;
}

Outcome ReadAll(IO::Stream& stream) {
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    return ReadAll(reader);
}

// Depth.

TEST(XmlTextReaderHostile, AMillionNestedElements) {
    GeneratedStream stream;
    stream.Add("<a>", kMillion).Add("</a>", kMillion);
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.nodes, 2 * kMillion);
    EXPECT_EQ(outcome.deepest, kMillion);
}

TEST(XmlTextReaderHostile, AMillionElementsThatAreNeverClosed) {
    GeneratedStream stream;
    stream.Add("<a>", kMillion - 1).Add("<last>");
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "Missing end element");
    EXPECT_EQ(outcome.argument, "last");
    EXPECT_EQ(outcome.nodes, kMillion);
}

TEST(XmlTextReaderHostile, ANamespaceAtEveryOfManyDepths) {
    constexpr long kDepth = 300'000;
    GeneratedStream stream;
    stream
        .Add([](long i) { return "<p:a xmlns:p='u" + std::to_string(i) + "' xml:lang='en'>"; },
             kDepth)
        .Add("</p:a>", kDepth);
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.deepest, kDepth);
}

TEST(XmlTextReaderHostile, ManyDifferentNamesAndPrefixes) {
    constexpr long kCount = 200'000;
    GeneratedStream stream;
    stream.Add("<r>")
        .Add(
            [](long i) {
                const std::string number = std::to_string(i);
                return "<p" + number + ":e" + number + " xmlns:p" + number + "='u'/>";
            },
            kCount)
        .Add("</r>");
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.nodes, kCount + 2);
}

// Width.

std::string AttributeText(long i) {
    return " n" + std::to_string(i) + "='" + std::to_string(i) + "'";
}

TEST(XmlTextReaderHostile, AHundredThousandAttributesOnOneElement) {
    constexpr long kCount = 100'000;
    for (const bool namespaces : {true, false}) {
        GeneratedStream stream;
        stream.Add("<a").Add(AttributeText, kCount).Add("/>");
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetNamespaces(namespaces);
        ASSERT_TRUE(reader.Read());
        ASSERT_EQ(reader.AttributeCount(), kCount);
        for (long i = 0; i < kCount; ++i) {
            const std::string number = std::to_string(i);
            ASSERT_EQ(reader.GetAttribute("n" + number), number);
            if (namespaces) {
                ASSERT_EQ(reader.GetAttribute("n" + number, ""), number);
            }
        }
        long visited = 0;
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            ASSERT_EQ(reader.Value(), std::to_string(visited));
            ++visited;
        }
        EXPECT_EQ(visited, kCount);
        EXPECT_FALSE(reader.Read());
    }
}

TEST(XmlTextReaderHostile, ElementsWithSomeAttributesAfterOneWithVeryMany) {
    constexpr int kElements = 20000;
    std::string document = "<r><a";
    for (int i = 0; i < 100000; ++i)
        document += " n" + std::to_string(i) + "=''";
    document += "/>";
    std::string some = "<b";
    for (int i = 0; i < 20; ++i)
        some += " n" + std::to_string(i) + "='x'";
    some += "/>";
    for (int i = 0; i < kElements; ++i)
        document += some;
    support::DocumentReader reader(document + "</r>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->GetAttribute("n99999"), "");
    EXPECT_EQ(reader->GetAttribute("n99999", ""), "");
    for (int i = 0; i < kElements; ++i) {
        reader.ReadNodes(1);
        ASSERT_EQ(reader->GetAttribute("n19"), "x");
        ASSERT_EQ(reader->GetAttribute("n19", ""), "x");
        ASSERT_EQ(reader->GetAttribute("n20"), "");
    }
}

TEST(XmlTextReaderHostile, ADuplicateAmongAHundredThousandAttributes) {
    GeneratedStream stream;
    stream.Add("<a").Add(AttributeText, 100'000).Add("\nn50000=''/>");
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    try {
        reader.Read();
        FAIL() << "is accepted";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "Duplicate attribute");
        EXPECT_EQ(error.LineNumber(), 2);
        EXPECT_EQ(error.LinePos(), 1);
    }
}

// Names that collide in the hash functions that a table might use.

class XmlTextReaderHostileNames : public testing::TestWithParam<WeakHash> {
protected:
    static constexpr std::size_t kCount = 200'000;

    // Made once for each hash function.
    static const std::vector<std::string>& Names() {
        static std::vector<std::string> names[4];
        std::vector<std::string>& kept = names[static_cast<int>(GetParam())];
        if (kept.empty()) kept = CollidingNames(GetParam(), kCount);
        return kept;
    }

    static const std::string& Name(long i) { return Names()[static_cast<std::size_t>(i)]; }
};

TEST_P(XmlTextReaderHostileNames, ReallyCollide) {
    const auto hash = [](const std::string& name) -> std::size_t {
        switch (GetParam()) {
        case WeakHash::ByteSum: {
            std::size_t sum = 0;
            for (const char c : name)
                sum += static_cast<unsigned char>(c);
            return sum;
        }
        case WeakHash::Fnv1a: {
            std::uint32_t state = 2166136261U;
            for (const char c : name)
                state = (state ^ static_cast<unsigned char>(c)) * 16777619U;
            return state;
        }
        case WeakHash::Standard: return std::hash<std::string_view>()(name);
        case WeakHash::Map:
            return XmlKeyHashBinary(name.data(), static_cast<unsigned>(name.size()));
        }
        return 0;
    };
#if !defined(__GLIBCXX__) || !defined(__LP64__)
    if (GetParam() == WeakHash::Standard) GTEST_SKIP() << "another library has another hash";
#endif
    ASSERT_EQ(Names().size(), kCount);
    for (const std::string& name : Names())
        ASSERT_EQ(hash(name), hash(Names().front())) << name;
}

TEST_P(XmlTextReaderHostileNames, OnAttributes) {
    for (const std::string prefix : {"", "p:"}) {
        GeneratedStream stream;
        stream.Add("<a xmlns:p='u'")
            .Add([&](long i) { return " " + prefix + Name(i) + "='" + std::to_string(i) + "'"; },
                 kCount)
            .Add("/>");
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        ASSERT_TRUE(reader.Read());
        ASSERT_EQ(reader.AttributeCount(), static_cast<int>(kCount + 1));
        const std::string uri = prefix.empty() ? "" : "u";
        for (std::size_t i = 0; i < kCount; ++i) {
            ASSERT_EQ(reader.GetAttribute(prefix + Names()[i]), std::to_string(i));
            ASSERT_EQ(reader.GetAttribute(Names()[i], uri), std::to_string(i));
        }
    }
}

TEST_P(XmlTextReaderHostileNames, OnAttributesWithADuplicate) {
    GeneratedStream stream;
    stream.Add("<a")
        .Add([](long i) { return " " + Name(i) + "=''"; }, kCount)
        .Add("\n" + Names()[kCount / 2] + "=''/>");
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "Duplicate attribute");
}

TEST_P(XmlTextReaderHostileNames, OnElements) {
    GeneratedStream stream;
    stream.Add("<r>").Add([](long i) { return "<" + Name(i) + "/>"; }, kCount).Add("</r>");
    const Outcome outcome = ReadAll(stream);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.nodes, static_cast<long>(kCount + 2));
}

TEST_P(XmlTextReaderHostileNames, OnPrefixes) {
    GeneratedStream stream;
    stream.Add("<r")
        .Add([](long i) { return " xmlns:" + Name(i) + "='u" + std::to_string(i) + "'"; }, kCount)
        .Add(">")
        .Add([](long i) { return "<" + Name(i) + ":e/>"; }, kCount)
        .Add("</r>");
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    ASSERT_TRUE(reader.Read());
    for (std::size_t i = 0; i < kCount; ++i) {
        ASSERT_TRUE(reader.Read());
        ASSERT_EQ(reader.NamespaceURI(), "u" + std::to_string(i));
    }
    ASSERT_TRUE(reader.Read());
    EXPECT_FALSE(reader.Read());
}

std::string NameOf(const testing::TestParamInfo<WeakHash>& hash) {
    switch (hash.param) {
    case WeakHash::ByteSum: return "ByteSum";
    case WeakHash::Fnv1a: return "Fnv1a";
    case WeakHash::Standard: return "Standard";
    case WeakHash::Map: return "Map";
    }
    return "";
}

INSTANTIATE_TEST_SUITE_P(Hashes, XmlTextReaderHostileNames,
                         testing::Values(WeakHash::ByteSum, WeakHash::Fnv1a, WeakHash::Standard,
                                         WeakHash::Map),
                         NameOf);

// Length.

const std::string kThousand(1000, 'x');
constexpr long kThousands = kHundredMegabytes / 1000;

TEST(XmlTextReaderHostile, ValuesOfAHundredMegabytes) {
    const struct {
        const char* what;
        const char* before;
        const char* after;
        int node;
    } kCases[] = {
        {"comment", "<!--", "--><a/>", 1},
        {"text", "<a>", "</a>", 2},
        {"section", "<a><![CDATA[", "]]></a>", 2},
        {"instruction", "<?pi ", "?><a/>", 1},
        {"value", "<a x='", "'/>", 1},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what);
        GeneratedStream stream;
        stream.Add(c.before).Add(kThousand, kThousands).Add(c.after);
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        for (int i = 0; i < c.node; ++i)
            ASSERT_TRUE(reader.Read());
        reader.MoveToFirstAttribute();
        EXPECT_EQ(reader.Value().size(), static_cast<std::size_t>(kHundredMegabytes));
        EXPECT_EQ(ReadAll(reader).error, "");
    }
}

TEST(XmlTextReaderHostile, ValuesOfAHundredMegabytesWithoutEnd) {
    const struct {
        const char* before;
        const char* error;
    } kCases[] = {
        {"<!--", "Unexpected end of file while scanning for '-->'"},
        {"<a>", "Missing end element"},
        {"<a><![CDATA[", "Unexpected end of file while scanning for ']]>'"},
        {"<?pi ", "Unexpected end of file while looking for '?>'"},
        {"<a x='", "Unexpected token or missing close quote"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.before);
        GeneratedStream stream;
        stream.Add(c.before).Add(kThousand, kThousands);
        EXPECT_EQ(ReadAll(stream).error, c.error);
    }
}

TEST(XmlTextReaderHostile, NamesOfAHundredMegabytes) {
    for (const char* before :
         {"<", "<a ", "<a></", "<?", "<!DOCTYPE ", "<a>&", "<a x='&", "<a xmlns:"}) {
        SCOPED_TRACE(before);
        GeneratedStream stream;
        stream.Add(before).Add(kThousand, kThousands);
        EXPECT_EQ(ReadAll(stream).error, "Buffer overflow while reading markup token");
    }
}

TEST(XmlTextReaderHostile, WhiteSpaceOfAHundredMegabytes) {
    const std::string blanks(1000, ' ');
    GeneratedStream content;
    content.Add("<a>").Add(blanks, kThousands).Add("</a>");
    const Outcome outcome = ReadAll(content);
    EXPECT_EQ(outcome.error, "");
    EXPECT_EQ(outcome.nodes, (kHundredMegabytes + 1023) / 1024 + 2);

    GeneratedStream tag;
    tag.Add("<a").Add(blanks, kThousands).Add("/>");
    EXPECT_EQ(ReadAll(tag).error, "");
}

TEST(XmlTextReaderHostile, ReferencesOfTensOfMegabytes) {
    GeneratedStream stream;
    stream.Add("<a x='")
        .Add("&amp;&#65;", kMillion)
        .Add("'>")
        .Add("&lt;&#66;", kMillion)
        .Add("</a>");
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    ASSERT_TRUE(reader.Read());
    EXPECT_EQ(reader.GetAttribute(0).size(), static_cast<std::size_t>(2 * kMillion));
    ASSERT_TRUE(reader.Read());
    EXPECT_EQ(reader.Value().size(), static_cast<std::size_t>(2 * kMillion));
    EXPECT_EQ(ReadAll(reader).error, "");
}

TEST(XmlTextReaderHostile, DocumentTypesOfTensOfMegabytes) {
    GeneratedStream flat;
    flat.Add("<!DOCTYPE a [").Add("<!ELEMENT a ANY><!-- ]> -->", kMillion).Add("]><a/>");
    EXPECT_EQ(ReadAll(flat).error, "");

    GeneratedStream open;
    open.Add("<!DOCTYPE a [").Add("<!ELEMENT a (", kMillion);
    EXPECT_EQ(ReadAll(open).error, "Unexpected end of file while parsing DTD");
}

// Bytes of all kinds: nothing but a clear error or a full read.

void ExpectClearOutcome(std::string_view bytes, const support::ReaderSettings& settings) {
    support::DocumentReader reader(std::string(bytes), settings);
    long nodes = 0;
    try {
        while (reader->Read()) {
            ++nodes;
            for (bool more = reader->MoveToFirstAttribute(); more;
                 more = reader->MoveToNextAttribute()) {
                EXPECT_EQ(reader->GetAttribute(reader->Name().view()), reader->Value());
            }
            ASSERT_LE(nodes, static_cast<long>(bytes.size())) << "goes round in circles";
        }
        EXPECT_TRUE(reader->Eof());
    } catch (const Xml::Exception& error) {
        EXPECT_STRNE(error.What(), "");
        EXPECT_GE(error.LineNumber(), 1);
        EXPECT_GE(error.LinePos(), 1);
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
    }
    EXPECT_FALSE(reader->Read());
}

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

TEST(XmlTextReaderHostile, EveryTruncationOfEverySample) {
    int samples = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ESPALIER_SAMPLES)) {
        if (!entry.is_regular_file()) continue;
        SCOPED_TRACE(entry.path());
        const std::string content = ContentOf(entry.path());
        for (std::size_t length = 0; length <= content.size(); ++length) {
            ExpectClearOutcome(std::string_view(content).substr(0, length), {});
            ASSERT_FALSE(testing::Test::HasFailure()) << length;
        }
        ++samples;
    }
    EXPECT_GE(samples, 1);
}

constexpr std::string_view kSmallDocument =
    "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e \"v\">]>\n"
    "<a x=\"1&amp;\" p:y='2' xmlns:p='u'><!--c--><?pi d?>t&#65;&e;<![CDATA[s]]></a>\r\n";

TEST(XmlTextReaderHostile, EveryByteAtEveryPlace) {
    for (std::size_t place = 0; place < kSmallDocument.size(); ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            SCOPED_TRACE(std::to_string(byte) + " at " + std::to_string(place));
            std::string replaced(kSmallDocument);
            replaced[place] = static_cast<char>(byte);
            ExpectClearOutcome(replaced, {});
            std::string inserted(kSmallDocument);
            inserted.insert(place, 1, static_cast<char>(byte));
            ExpectClearOutcome(inserted, {});
            ASSERT_FALSE(testing::Test::HasFailure());
        }
    }
}

// Takes settings, length and bytes from the generator; half of the texts are made of the characters
// of markup, so that they get past the first token.
TEST(XmlTextReaderHostile, TwentyThousandRandomTexts) {
    constexpr std::string_view kMarkup = "<<<>>/!?-[]=\"'&;:#x1a AB\n\r\tCDATAxmlns";
    std::mt19937 random(20260101);
    for (int round = 0; round < 20'000; ++round) {
        SCOPED_TRACE(round);
        support::ReaderSettings settings;
        settings.namespaces = random() % 2 == 0;
        settings.normalization = random() % 2 == 0;
        settings.whitespace = static_cast<XmlTextReader::XmlWsHandlingEnum>(random() % 3);
        settings.entities = static_cast<Xml::XmlEntityHandling::XML_ENTITY_HANDLING>(random() % 3);
        const bool isMarkup = random() % 2 == 0;
        std::string text = isMarkup ? "<a>" : "";
        for (std::size_t length = random() % 200; length > 0; --length) {
            text.push_back(isMarkup ? kMarkup[random() % kMarkup.size()]
                                    : static_cast<char>(random() % 256));
        }
        ExpectClearOutcome(text, settings);
        ASSERT_FALSE(testing::Test::HasFailure());
    }
}

}  // namespace
