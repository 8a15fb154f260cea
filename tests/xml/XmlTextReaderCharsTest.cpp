// SPDX-License-Identifier: MIT
//
// Text in parts, into a buffer of the caller.
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ReaderPosition.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using support::DocumentReader;
using support::NodesFromHere;
using support::NodeText;
using support::ReaderSettings;
using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr char kUntouched = '\x7E';

// Reads one part and returns it; expects that the rest of the buffer is as it was.
std::string ReadPart(XmlTextReader& reader, int count, int index = 3) {
    const auto size = static_cast<std::size_t>(index + count + 8);
    std::string buffer(size, kUntouched);
    const int length = reader.ReadChars(buffer.data(), index, count);
    EXPECT_GE(length, 0);
    EXPECT_LE(length, count);
    const auto begin = static_cast<std::size_t>(index);
    const std::string part = buffer.substr(begin, static_cast<std::size_t>(length));
    buffer.erase(begin, part.size());
    EXPECT_EQ(buffer, std::string(size - part.size(), kUntouched)) << "beside the part";
    EXPECT_TRUE(support::DecodeUtf8(part)) << testing::PrintToString(part);
    return part;
}

// Reads parts until one is empty, and returns all of them joined.
std::string ReadParts(XmlTextReader& reader, int count) {
    std::string all;
    for (;;) {
        const std::string part = ReadPart(reader, count);
        if (part.empty()) return all;
        all += part;
    }
}

DocumentReader OnRoot(const std::string& document, const ReaderSettings& settings = {},
                      int bytesPerRead = 0) {
    return DocumentReader(document, settings, bytesPerRead);
}

// Content of everything that a text may be made of, and the text in it.
struct Mixed {
    std::string markup;
    std::string text;
    std::string textWithoutBlanks;  // where nodes of white space are not reported

    Mixed& Add(const std::string& part, const std::string& itsText) {
        markup += part;
        text += itsText;
        textWithoutBlanks += itsText;
        return *this;
    }
    Mixed& AddBlanks(const std::string& blanks) {
        markup += blanks;
        text += blanks;
        return *this;
    }
};

Mixed MakeMixed() {
    const std::string wide = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z";
    Mixed mixed;
    mixed.AddBlanks(" \n\t").Add("<!--c-->", "");
    for (int i = 0; i < 12; ++i) {
        std::string many;
        for (int repeat = 0; repeat < i * 20; ++repeat)
            many += wide;
        mixed.Add(wide + " &lt;\n&#x20AC;" + many, wide + " <\n\xE2\x82\xAC" + many)
            .Add("<![CDATA[<" + many + wide + "]]>", "<" + many + wide)
            .AddBlanks("\n  ")
            .Add("<?p text?><!-- text -->", "")
            .Add("<![CDATA[ ]]><![CDATA[]]>", " ")
            .AddBlanks(std::string(static_cast<std::size_t>(i), ' ') + "\n")
            .Add("<!---->", "");
    }
    return mixed;
}

TEST(XmlTextReaderChars, PartsOfAnySizeMakeUpTheText) {
    const Mixed mixed = MakeMixed();
    for (const int bytesPerRead : {0, 1, 1000}) {
        for (const int count : {4, 5, 6, 7, 8, 9, 10, 13, 64, 1000, 1024, 5000, 1000000}) {
            SCOPED_TRACE(count);
            DocumentReader reader = OnRoot("<a>" + mixed.markup + "</a>", {}, bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_EQ(ReadParts(*reader, count), mixed.text);
            EXPECT_EQ(NodeText(*reader), "EndElement a");
            EXPECT_EQ(ReadPart(*reader, count), "");
            EXPECT_FALSE(reader->Read());
        }
    }
}

TEST(XmlTextReaderChars, WhiteSpaceThatIsNotReportedIsNotCopied) {
    const Mixed mixed = MakeMixed();
    ReaderSettings settings;
    settings.whitespace = XmlTextReader::WsNone;
    DocumentReader reader = OnRoot("<a>" + mixed.markup + "</a>", settings);
    reader.ReadNodes(1);
    EXPECT_EQ(ReadParts(*reader, 16), mixed.textWithoutBlanks);
}

TEST(XmlTextReaderChars, AsManyBytesAsTheCharactersHaveAreEnough) {
    const struct {
        const char* text;
        int least;
    } kTexts[] = {
        {"plain text", 1},
        {"\xC3\xA9t\xC3\xA9\xC3\xA9", 2},
        {"x\xE2\x82\xAC\xE2\x82\xACy\xC3\xA9", 3},
        {"\xF0\x9F\x98\x80\xE2\x82\xACxyz\xF0\x9F\x98\x80\xF0\x9F\x98\x80", 4},
    };
    for (const auto& t : kTexts) {
        const std::string text = t.text;
        for (int count = t.least; count <= static_cast<int>(text.size()) + 2; ++count) {
            SCOPED_TRACE(text + " in parts of " + std::to_string(count));
            DocumentReader reader = OnRoot("<a>" + text + "<![CDATA[" + text + "]]></a>");
            reader.ReadNodes(1);
            EXPECT_EQ(ReadParts(*reader, count), text + text);
            EXPECT_EQ(NodeText(*reader), "EndElement a");
        }
    }
}

TEST(XmlTextReaderChars, ACharacterThatDoesNotFitStays) {
    DocumentReader reader = OnRoot("<a>x\xE2\x82\xACy</a>");
    reader.ReadNodes(1);
    EXPECT_EQ(ReadPart(*reader, 1), "x");
    EXPECT_EQ(ReadPart(*reader, 1), "");
    EXPECT_EQ(ReadPart(*reader, 2), "");
    EXPECT_EQ(ReadPart(*reader, 3), "\xE2\x82\xAC");
    EXPECT_EQ(ReadPart(*reader, 3), "y");
    EXPECT_EQ(ReadPart(*reader, 3), "");
    EXPECT_EQ(NodeText(*reader), "EndElement a");
}

TEST(XmlTextReaderChars, NoRoomIsNoPart) {
    DocumentReader reader = OnRoot("<a>text</a>");
    reader.ReadNodes(1);
    char buffer[8] = {};
    EXPECT_EQ(reader->ReadChars(buffer, 0, 0), 0);
    EXPECT_EQ(reader->ReadChars(buffer, 0, -1), 0);
    EXPECT_EQ(ReadParts(*reader, 4), "text");
    EXPECT_EQ(NodeText(*reader), "EndElement a");
}

TEST(XmlTextReaderChars, TheFourthArgumentMeansNothing) {
    for (const unsigned reserved : {0U, 1U, 4294967295U}) {
        DocumentReader reader = OnRoot("<a>text</a>");
        reader.ReadNodes(1);
        char buffer[8] = {};
        EXPECT_EQ(reader->ReadChars(buffer, 1, 7, reserved), 4);
        EXPECT_EQ(std::string_view(buffer, 6), std::string_view("\0text\0", 6));
    }
}

TEST(XmlTextReaderChars, EndAtATagOrReference) {
    const struct {
        const char* document;  // read from its first element on
        const char* text;
        const char* after;
    } kCases[] = {
        {"<a></a>", "", "EndElement a"},
        {"<a/>", "", "Element a"},
        {"<a x='1'/>", "", "Element a"},
        {"<a>t<b/>u</a>", "t", "Element b"},
        {"<a><b>t</b></a>", "", "Element b"},
        {"<a>t&e;u</a>", "t", "EntityReference e"},
        {"<a> &e;</a>", " ", "EntityReference e"},
        {"<a> <!--c-->t<?p?></a>", " t", "EndElement a"},
        {"<a xml:space='preserve'> <b/></a>", " ", "Element b"},
        {"<a> </a>", " ", "EndElement a"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader = OnRoot(c.document);
        reader.ReadNodes(1);
        EXPECT_EQ(ReadParts(*reader, 4), c.text);
        EXPECT_EQ(NodeText(*reader), c.after);
    }
}

TEST(XmlTextReaderChars, AnEmptyElementIsNotLeft) {
    DocumentReader reader = OnRoot("<r><a/>t</r>");
    reader.ReadNodes(2);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ReadPart(*reader, 4), "");
    EXPECT_EQ(NodeText(*reader), "Element a");
    EXPECT_EQ(NodesFromHere(*reader), "Text \"t\"; EndElement r");
}

// The end of a text is told by a call of its own, however much room was left before.
TEST(XmlTextReaderChars, GoOnInTheElementThatEndedTheText) {
    for (const int count : {1, 2, 3, 4, 5, 8, 100}) {
        SCOPED_TRACE(count);
        DocumentReader reader = OnRoot("<a>one<b>two</b>three</a>");
        reader.ReadNodes(1);
        EXPECT_EQ(ReadParts(*reader, count), "one");
        EXPECT_EQ(NodeText(*reader), "Element b");
        EXPECT_EQ(ReadParts(*reader, count), "two");
        EXPECT_EQ(NodeText(*reader), "EndElement b");
        EXPECT_EQ(ReadParts(*reader, count), "");
        EXPECT_EQ(NodeText(*reader), "EndElement b");
        reader.ReadNodes(1);
        EXPECT_EQ(ReadParts(*reader, count), "three");
        EXPECT_EQ(NodeText(*reader), "EndElement a");
    }
}

TEST(XmlTextReaderChars, BeginAtTheNodeThatTheReaderStandsOn) {
    for (int node = 2; node <= 5; ++node) {
        DocumentReader reader = OnRoot("<a>one<!--c--><![CDATA[two]]> <b/></a>");
        reader.ReadNodes(node);
        const char* const kTexts[] = {"onetwo ", "two ", "two ", " "};
        EXPECT_EQ(ReadParts(*reader, 4), kTexts[node - 2]);
        EXPECT_EQ(NodeText(*reader), "Element b");
    }
}

TEST(XmlTextReaderChars, ReadGoesOnBehindATextThatWasNotReadToItsEnd) {
    DocumentReader reader = OnRoot("<a>some text<b>other</b></a>");
    reader.ReadNodes(1);
    EXPECT_EQ(ReadPart(*reader, 4), "some");
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Text);
    reader.ReadNodes(1);
    EXPECT_EQ(NodeText(*reader), "Element b");
    // What was read of the one text has nothing to do with the next.
    EXPECT_EQ(ReadParts(*reader, 4), "other");
}

TEST(XmlTextReaderChars, TakeInWhatTheReaderExpands) {
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'E&#xE9;'><!ENTITY m 'M<!--c-->N'>]><a>1&e;2&m;3</a>";
    ReaderSettings settings;
    settings.entities = Xml::XmlEntityHandling::ExpandNothing;
    DocumentReader nothing = OnRoot(document, settings);
    nothing.ReadNodes(2);
    EXPECT_EQ(ReadParts(*nothing, 4), "1&e;2&m;3");

    settings.entities = Xml::XmlEntityHandling::ExpandEntities;
    DocumentReader all = OnRoot(document, settings);
    all.ReadNodes(2);
    EXPECT_EQ(ReadParts(*all, 4),
              "1E\xC3\xA9"
              "2MN");
    EXPECT_EQ(NodeText(*all), "EndEntity m");
    all.ReadNodes(1);
    EXPECT_EQ(ReadParts(*all, 4), "3");
}

TEST(XmlTextReaderChars, HaveTheirLineEndsNormalized) {
    for (const bool normalization : {false, true}) {
        ReaderSettings settings;
        settings.normalization = normalization;
        for (const int count : {1, 2, 3, 100}) {
            DocumentReader reader = OnRoot("<a>x\r\ny\r<![CDATA[z\r\n]]>\r\n</a>", settings);
            reader.ReadNodes(1);
            EXPECT_EQ(ReadParts(*reader, count),
                      normalization ? "x\ny\nz\n\n" : "x\r\ny\rz\r\n\r\n");
        }
    }
}

TEST(XmlTextReaderChars, OfATextOfAMegabyte) {
    std::string text;
    while (text.size() < 1000000)
        text += "words and \xE2\x82\xAC ";
    for (const int count : {7, 100, 100000}) {
        DocumentReader reader = OnRoot("<a>" + text + "</a>");
        reader.ReadNodes(1);
        std::string buffer(static_cast<std::size_t>(count), ' ');
        std::string all;
        while (const int length = reader->ReadChars(buffer.data(), 0, count))
            all.append(buffer, 0, static_cast<std::size_t>(length));
        EXPECT_TRUE(all == text) << count;
        EXPECT_EQ(NodeText(*reader), "EndElement a");
    }
}

}  // namespace
