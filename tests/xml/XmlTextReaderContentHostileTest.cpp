// SPDX-License-Identifier: MIT
//
// Documents made to hurt whoever skips, takes markup, or walks through attributes: no stack runs
// out, and the time grows with the input. A time limit of ctest stands behind each test.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/GeneratedStream.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <ctime>
#include <string>

namespace {

using support::DocumentReader;
using support::GeneratedStream;
using support::NodeText;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr long kDepth = 200'000;
constexpr int kAttributes = 20'000;

std::string Times(const std::string& text, long count) {
    std::string out;
    for (long i = 0; i < count; ++i)
        out += text;
    return out;
}

TEST(XmlTextReaderContentHostile, DeepNestingIsSkipped) {
    for (const bool plain : {false, true}) {
        GeneratedStream stream;
        stream.Add("<r>").Add("<a>", kDepth).Add("t").Add("</a>", kDepth).Add("<b/></r>");
        XmlTextReader reader;
        ASSERT_TRUE(reader.SetStream(&stream, false));
        ASSERT_TRUE(reader.Read());
        ASSERT_TRUE(reader.Read());
        if (plain) {
            EXPECT_TRUE(reader.SkipElement());
        } else {
            reader.Skip();
        }
        EXPECT_EQ(NodeText(reader), "Element b");
        EXPECT_EQ(reader.Depth(), 2);
    }
}

TEST(XmlTextReaderContentHostile, DeepNestingIsTakenAsMarkup) {
    const std::string nest = Times("<a>", kDepth) + "t" + Times("</a>", kDepth);
    for (const bool isOuter : {false, true}) {
        DocumentReader reader("<r>" + nest + "<b/></r>");
        reader.ReadNodes(isOuter ? 2 : 1);
        const astring markup = isOuter ? reader->ReadOuterXml() : reader->ReadInnerXml();
        EXPECT_TRUE(markup == (isOuter ? nest : nest + "<b/>"));
        EXPECT_EQ(NodeText(*reader), isOuter ? "Element b" : "None");
    }
}

// From the depths: what is taken is short, whatever is open around it.
TEST(XmlTextReaderContentHostile, ManyShortElementsInDeepNestingAreTakenAndSkipped) {
    GeneratedStream stream;
    stream.Add("<a><b x='1'>t</b><b/><c><d/></c>", kDepth).Add("</a>", kDepth);
    XmlTextReader reader;
    ASSERT_TRUE(reader.SetStream(&stream, false));
    ASSERT_TRUE(reader.Read());
    long taken = 0;
    for (;;) {
        ASSERT_TRUE(reader.Read());
        if (reader.Name() != "b") break;
        ASSERT_EQ(reader.ReadOuterXml(), "<b x='1'>t</b>");
        ASSERT_EQ(reader.ReadOuterXml(), "<b/>");
        ASSERT_EQ(reader.Name(), "c");
        ASSERT_TRUE(reader.SkipElement());
        ++taken;
    }
    EXPECT_EQ(taken, kDepth);
}

TEST(XmlTextReaderContentHostile, ManySiblingsAreTakenOneByOne) {
    GeneratedStream stream;
    stream.Add("<r>").Add("<a x='1'>t<b/></a>", kDepth).Add("</r>");
    XmlTextReader reader;
    ASSERT_TRUE(reader.SetStream(&stream, false));
    ASSERT_TRUE(reader.Read());
    ASSERT_TRUE(reader.Read());
    for (long i = 0; i < kDepth; ++i) {
        if (i % 2 == 0) {
            ASSERT_EQ(reader.ReadOuterXml(), "<a x='1'>t<b/></a>");
        } else {
            ASSERT_EQ(reader.ReadInnerXml(), "t<b/>");
        }
    }
    EXPECT_EQ(NodeText(reader), "EndElement r");
}

TEST(XmlTextReaderContentHostile, DeepNestingThatIsNeverClosedIsAnError) {
    const auto operations = {
        +[](XmlTextReader& r) { r.Skip(); },
        +[](XmlTextReader& r) { r.SkipElement(); },
        +[](XmlTextReader& r) { r.ReadInnerXml(); },
        +[](XmlTextReader& r) { r.ReadOuterXml(); },
    };
    for (const auto& operation : operations) {
        GeneratedStream stream;
        stream.Add("<r>").Add("<a>", kDepth).Add("<last>");
        XmlTextReader reader;
        ASSERT_TRUE(reader.SetStream(&stream, false));
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(support::MessageOf([&] { operation(reader); }), "Missing end element [last]");
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        reader.Close();
    }
}

TEST(XmlTextReaderContentHostile, ManyTextsAndCommentsAreReadAsOneString) {
    constexpr long kPieces = 300'000;
    GeneratedStream stream;
    stream.Add("<r>").Add("a<!--c--><![CDATA[b]]> <?p?>", kPieces).Add("</r>");
    XmlTextReader reader;
    ASSERT_TRUE(reader.SetStream(&stream, false));
    ASSERT_TRUE(reader.Read());
    EXPECT_TRUE(reader.ReadElementString() == Times("ab", kPieces));
    EXPECT_TRUE(reader.Eof());
}

std::string ManyAttributes(const std::string& value) {
    std::string out = "<!DOCTYPE a [<!ENTITY e 'E'>]><a xmlns:p='u'";
    for (int i = 1; i < kAttributes; ++i) {
        const std::string number = std::to_string(i);
        out += " p:n" + number + "='" + number + value + "'";
    }
    return out + ">t</a>";
}

TEST(XmlTextReaderContentHostile, ManyAttributesAreReadPartByPart) {
    DocumentReader reader(ManyAttributes("&e;!"));
    reader.ReadNodes(2);
    ASSERT_EQ(reader->AttributeCount(), kAttributes);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    int walked = 1;
    for (; reader->MoveToNextAttribute(); ++walked) {
        std::string parts;
        while (reader->ReadAttributeValue()) {
            parts += NodeText(*reader) + "; ";
            if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
        }
        ASSERT_EQ(parts, "Text \"" + std::to_string(walked) +
                             "\"; EntityReference e; Text \"E\"; EndEntity e; Text \"!\"; ");
    }
    EXPECT_EQ(walked, kAttributes);
    EXPECT_EQ(support::NodesFromHere(*reader), "Text \"t\"; EndElement a");
}

// Returns the processor time, in seconds, that reading all values of an element part by part takes.
double TimeOfParts(int attributes) {
    std::string document = "<a";
    for (int i = 0; i < attributes; ++i)
        document += " n" + std::to_string(i) + "='1&e;2'";
    double best = 0;
    for (int repeat = 0; repeat < 3; ++repeat) {
        DocumentReader reader(document + "/>");
        reader.ReadNodes(1);
        const std::clock_t begin = std::clock();
        int parts = 0;
        for (bool more = reader->MoveToFirstAttribute(); more;
             more = reader->MoveToNextAttribute()) {
            while (reader->ReadAttributeValue())
                ++parts;
        }
        const double time = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        EXPECT_EQ(parts, 3 * attributes);
        if (repeat == 0 || time < best) best = time;
    }
    return best;
}

// Eight times the attributes take about eight times as long; they would take 64 times as long if
// each value were looked for among all of them.
TEST(XmlTextReaderContentHostile, ThePartsOfAllValuesTakeTimeThatGrowsWithTheirNumber) {
    const double few = TimeOfParts(1'000);
    const double many = TimeOfParts(8'000);
    EXPECT_LT(many, 24 * few + 0.02) << few << " s for an eighth";
}

TEST(XmlTextReaderContentHostile, ManyAttributesAreVisitedAndFound) {
    DocumentReader reader(ManyAttributes(""));
    reader.ReadNodes(2);
    int index = 0;
    for (const Xml::XmlAttributeRef attribute : reader->Attributes()) {
        ASSERT_EQ(attribute.Index(), index);
        if (index > 0) {
            const std::string number = std::to_string(index);
            ASSERT_EQ(attribute.Value(), number);
            ASSERT_EQ(attribute.Name(), "p:n" + number);
            ASSERT_EQ(attribute.NamespaceURI(), "u");
            ASSERT_TRUE(reader->MoveToAttribute("p:n" + number));
            ASSERT_EQ(reader->GetCurrentAttributeIndex(), index);
            ASSERT_TRUE(reader->MoveToAttribute("n" + number, "u"));
            ASSERT_EQ(reader->GetCurrentAttributeIndex(), index);
            reader->MoveToAttribute(index);
            ASSERT_EQ(reader->ReadOuterXml(), "p:n" + number + "='" + number + "'");
        }
        ++index;
    }
    EXPECT_EQ(index, kAttributes);
}

TEST(XmlTextReaderContentHostile, AStartTagWithManyAttributesIsTakenAsItStands) {
    const std::string document = ManyAttributes("&e;");
    DocumentReader reader(document);
    reader.ReadNodes(2);
    reader->MoveToAttribute(kAttributes - 1);
    ASSERT_TRUE(reader->ReadAttributeValue());
    ASSERT_TRUE(reader->MoveToElement());
    EXPECT_TRUE(reader->ReadOuterXml() == document.substr(document.find("<a ")));
    EXPECT_TRUE(reader->Eof());
}

TEST(XmlTextReaderContentHostile, AValueWithManyReferencesIsReadPartByPart) {
    constexpr int kReferences = 100'000;
    DocumentReader reader("<!DOCTYPE a [<!ENTITY e 'E'>]><a x='" + Times("&e;.", kReferences) +
                          "'/>");
    reader.ReadNodes(2);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    int parts = 0;
    while (reader->ReadAttributeValue()) {
        ++parts;
        if (reader->NodeType() == XmlNodeType::EntityReference) reader->ResolveEntity();
    }
    EXPECT_EQ(parts, 4 * kReferences);
}

TEST(XmlTextReaderContentHostile, LongElementsAreTakenWhole) {
    constexpr std::size_t kLength = 10'000'000;
    const std::string text(kLength, 't');
    const std::string value(kLength, 'v');
    DocumentReader reader("<r><a x='" + value + "'>" + text + "</a></r>");
    reader.ReadNodes(2);
    EXPECT_TRUE(reader->ReadOuterXml() == "<a x='" + value + "'>" + text + "</a>");
    EXPECT_EQ(NodeText(*reader), "EndElement r");
}

}  // namespace
