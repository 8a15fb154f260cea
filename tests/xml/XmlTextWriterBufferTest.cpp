// SPDX-License-Identifier: MIT
#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// When the buffer of 1024 bytes reaches the stream, seen by the Writes there.

namespace {

using support::DocumentWriter;
using Xml::XmlTextWriter;

using Calls = std::vector<std::string>;

constexpr std::size_t kBufferSize = 1024;

std::string Repeat(std::string_view unit, std::size_t times) {
    std::string text;
    for (std::size_t i = 0; i < times; ++i)
        text += unit;
    return text;
}

// Brings a writer into content with nothing in its buffer and no call noted.
void BeginContent(DocumentWriter& writer) {
    writer->WriteStartElement("r");
    writer->WriteRaw("-");
    writer->Flush();
    writer.TakeCalls();
}

// Returns the sizes of the Writes among the calls.
std::vector<std::size_t> SizesOf(const Calls& calls) {
    std::vector<std::size_t> sizes;
    for (const std::string& call : calls) {
        if (call.starts_with("Write ")) sizes.push_back(std::stoul(call.substr(6)));
    }
    return sizes;
}

void ExpectSizesWithin(const Calls& calls, std::size_t least) {
    for (const std::size_t size : SizesOf(calls)) {
        EXPECT_GE(size, least);
        EXPECT_LE(size, kBufferSize);
    }
}

TEST(XmlTextWriterBuffer, NothingReachesTheStreamBeforeFlushOrClose) {
    DocumentWriter writer;
    writer->WriteStartDocument();
    writer->WriteStartElement("r");
    writer->WriteString("text");
    writer->WriteEndElement();
    EXPECT_EQ(writer.TakeCalls(), Calls{});
    writer->Flush();
    EXPECT_EQ(writer.TakeCalls(), (Calls{"Write 49", "Flush"}));
    writer->Flush();
    EXPECT_EQ(writer.TakeCalls(), Calls{"Flush"});
    writer->Close();
    EXPECT_EQ(writer.TakeCalls(), Calls{"Flush"});
}

TEST(XmlTextWriterBuffer, CloseWritesFlushesAndClosesWhenAsked) {
    for (const bool close : {false, true}) {
        DocumentWriter writer;
        writer->SetCloseOutput(close);
        writer->WriteStartElement("r");
        writer->Close();
        Calls expected = {"Write 4", "Flush"};
        if (close) expected.push_back("Close");
        EXPECT_EQ(writer.TakeCalls(), expected);
        EXPECT_EQ(writer.Text(), "<r/>");
    }
}

TEST(XmlTextWriterBuffer, EndDocumentKeepsItsBytes) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.TakeCalls(), Calls{});
}

// The destructor hands nothing on.
TEST(XmlTextWriterBuffer, TheDestructorWritesNothing) {
    support::RecordingStream stream;
    Xml::UTF8Encoding encoding;
    {
        XmlTextWriter writer(&stream, &encoding);
        writer.SetCloseOutput(true);
        writer.WriteStartElement("r");
    }
    EXPECT_EQ(stream.calls, Calls{});
}

// A slice is a quarter of the room, and the buffer goes out when text remains behind it.
TEST(XmlTextWriterBuffer, TextIsWrittenInSlices) {
    const struct {
        std::size_t before;  // bytes in the buffer
        std::size_t length;
        Calls expected;
    } kCases[] = {
        {0, 255, {}},
        {0, 256, {}},
        {0, 257, {"Write 256"}},
        {0, 512, {"Write 256"}},
        {0, 513, {"Write 256", "Write 256"}},
        {0, 1000, {"Write 256", "Write 256", "Write 256"}},
        {4, 255, {}},
        {4, 256, {"Write 259"}},
        {200, 206, {}},
        {200, 207, {"Write 406"}},
        {200, 300, {"Write 406"}},
        {200, 206 + 257, {"Write 406", "Write 256"}},
    };
    const struct {
        const char* name;
        void (*call)(XmlTextWriter& writer, std::string_view text);
    } kWays[] = {
        {"WriteString", [](XmlTextWriter& w, std::string_view text) { w.WriteString(text); }},
        {"WriteRaw", [](XmlTextWriter& w, std::string_view text) { w.WriteRaw(text); }},
    };
    for (const auto& way : kWays) {
        for (const auto& c : kCases) {
            SCOPED_TRACE(way.name + (" " + std::to_string(c.before)) + "+" +
                         std::to_string(c.length));
            DocumentWriter writer;
            BeginContent(writer);
            way.call(*writer, std::string(c.before, 'b'));
            ASSERT_EQ(writer.TakeCalls(), Calls{});
            way.call(*writer, std::string(c.length, 'x'));
            EXPECT_EQ(writer.TakeCalls(), c.expected);
            EXPECT_EQ(writer.Text(),
                      "<r>-" + std::string(c.before, 'b') + std::string(c.length, 'x'));
        }
    }
}

TEST(XmlTextWriterBuffer, SlicesEndBetweenCharacters) {
    DocumentWriter writer;
    BeginContent(writer);
    const std::string text = Repeat("\xE2\x82\xAC", 300);  // 85 of them fit into 256 bytes
    writer->WriteString(text);
    EXPECT_EQ(writer.TakeCalls(), (Calls{"Write 255", "Write 255", "Write 255"}));
    writer->WriteString(Repeat("\xF0\x9F\x98\x80", 5));
    EXPECT_EQ(writer.Text(), "<r>-" + text + Repeat("\xF0\x9F\x98\x80", 5));
}

TEST(XmlTextWriterBuffer, SlicesAreMeasuredBeforeTheyAreEncoded) {
    Xml::UnicodeEncoding utf16(false, false, false);
    DocumentWriter two(&utf16);
    BeginContent(two);
    two->WriteString(std::string(600, 'x'));
    EXPECT_EQ(two.TakeCalls(), (Calls{"Write 512", "Write 512"}));

    Xml::Ucs4UnicodeEncoding ucs4(false, false, false);
    DocumentWriter four(&ucs4);
    BeginContent(four);
    four->WriteString(std::string(600, 'x'));
    EXPECT_EQ(four.TakeCalls(), (Calls{"Write 1024", "Write 1024"}));
}

// A nearly full buffer, whose quarter holds no whole character, goes out first.
TEST(XmlTextWriterBuffer, AFullBufferGoesOutBeforeTheNextText) {
    for (std::size_t used = 700; used <= 1100; ++used) {
        for (const std::string_view character :
             {"x", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
            DocumentWriter writer;
            BeginContent(writer);
            for (std::size_t i = 0; i < used; ++i)
                writer->WriteString("b");
            writer->WriteString(Repeat(character, 3));
            ExpectSizesWithin(writer.TakeCalls(), 1);
            ASSERT_EQ(writer.Text(), "<r>-" + std::string(used, 'b') + Repeat(character, 3));
        }
    }
}

// Markup of short names: each Write is nearly a full buffer. A token of n bytes sends the buffer on
// when it holds 1024 - 2n bytes, a single character when it holds 1016.
TEST(XmlTextWriterBuffer, MarkupFillsTheBuffer) {
    const std::string name = "name-of-twenty-bytes";
    DocumentWriter writer;
    std::string expected = "<r>";
    writer->WriteStartElement("r");
    for (int i = 0; i < 500; ++i) {
        writer->WriteStartElement(name);
        writer->WriteAttributeString(name, "");
        writer->WriteEndElement();
        expected += "<" + name + " " + name + "=\"\"/>";
    }
    const Calls calls = writer.TakeCalls();
    EXPECT_GE(SizesOf(calls).size(), 20u);
    ExpectSizesWithin(calls, kBufferSize - 2 * name.size() - 8);
    EXPECT_EQ(writer.Text(), expected);
}

TEST(XmlTextWriterBuffer, ANameNeedsTwiceItsLength) {
    // The whole of "&name;" is behind the point where the buffer would have gone out for its name.
    const std::string name(100, 'n');
    for (const std::size_t used : {700u, 800u, 823u, 824u, 900u}) {
        SCOPED_TRACE(used);
        DocumentWriter writer;
        BeginContent(writer);
        for (std::size_t i = 0; i < used; ++i)
            writer->WriteString("b");
        ASSERT_EQ(writer.TakeCalls(), Calls{});
        writer->WriteEntityRef(name);
        // With the "&" before it the buffer holds one byte more.
        const bool goesOut = used + 1 + 2 * name.size() >= kBufferSize;
        EXPECT_EQ(SizesOf(writer.TakeCalls()).size(), goesOut ? 1u : 0u);
    }
}

TEST(XmlTextWriterBuffer, TokensLongerThanTheBuffer) {
    Xml::UTF8Encoding utf8;
    Xml::UnicodeEncoding utf16(true, false, false);
    Xml::Ucs4UnicodeEncoding ucs4(true, false, false);
    Xml::Latin1Encoding latin1(false);
    const struct {
        Xml::Encoding* encoding;
        std::size_t unit;
    } kEncodings[] = {{&utf8, 1}, {&utf16, 2}, {&ucs4, 4}, {&latin1, 1}};
    for (const auto& e : kEncodings) {
        for (const std::size_t length :
             {1u, 127u, 128u, 255u, 256u, 257u, 511u, 512u, 513u, 1023u, 1024u, 1025u, 5000u}) {
            SCOPED_TRACE(std::to_string(e.unit) + ": " + std::to_string(length));
            const std::string name(length, 'n');
            DocumentWriter writer(e.encoding);
            writer->WriteStartDocument();
            writer->WriteDocType(name, name, name, name);
            writer->WriteStartElement(name, name);
            writer->WriteAttributeString("p", name, name, name);
            writer->WriteComment(name);
            writer->WriteProcessingInstruction(name, name);
            writer->WriteCData(name);
            writer->WriteEntityRef(name);
            writer->WriteName(name);
            writer->WriteRaw(name);
            writer->WriteEndDocument();
            ExpectSizesWithin(writer.TakeCalls(), 1);
            std::string text;
            const std::string written = writer.Text();
            for (std::size_t i = e.unit - 1; i < written.size(); i += e.unit)
                text += written[i];
            EXPECT_EQ(written.size(), text.size() * e.unit);
            const std::size_t start = text.find("?>") + 2;
            EXPECT_EQ(text.substr(start), "<!DOCTYPE " + name + " PUBLIC \"" + name + "\" \"" +
                                              name + "\" [" + name + "]><" + name + " p:" + name +
                                              "=\"" + name + "\" xmlns=\"" + name +
                                              "\" xmlns:p=\"" + name + "\"><!--" + name + "--><?" +
                                              name + " " + name + "?><![CDATA[" + name + "]]>&" +
                                              name + ";" + name + name + "</" + name + ">");
        }
    }
}

// No Write is larger than the buffer or empty, whatever lengths meet.
TEST(XmlTextWriterBuffer, EveryLengthOfTextAndMarkup) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    std::string expected = "<r>";
    for (std::size_t length = 0; length < 600; length += 7) {
        const std::string text(length, 't');
        writer->WriteElementString("e", text + "<" + text);
        writer->WriteComment(text);
        expected += "<e>" + text + "&lt;" + text + "</e><!--" + text + "-->";
    }
    const Calls calls = writer.TakeCalls();
    ExpectSizesWithin(calls, 1);
    EXPECT_EQ(SizesOf(calls).size(), calls.size());
    EXPECT_EQ(writer.Text(), expected);
}

TEST(XmlTextWriterBuffer, ASecondDocumentWaitsInTheBufferToo) {
    Xml::UTF8Encoding utf8(true, false);
    DocumentWriter writer(&utf8);
    writer->WriteStartElement("a");
    writer->WriteEndDocument();
    writer->WriteStartDocument();
    writer->WriteStartElement("b");
    EXPECT_EQ(writer.TakeCalls(), Calls{});
    writer->Close();
    EXPECT_EQ(writer.TakeCalls(), (Calls{"Write 52", "Flush"}));
    EXPECT_EQ(writer.Text(),
              "\xEF\xBB\xBF<a/>\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?><b/>");
}

// A mark follows the rule for a character: with fewer than 9 bytes free the buffer goes first.
TEST(XmlTextWriterBuffer, TheMarkOfASecondDocumentIsNotCut) {
    Xml::UTF8Encoding utf8(true, false);
    for (std::size_t length = 980; length < 1030; ++length) {
        SCOPED_TRACE(length);
        DocumentWriter writer(&utf8);
        std::string expected = "\xEF\xBB\xBF<a>";
        writer->WriteStartElement("a");
        for (std::size_t i = 0; i < length; ++i) {
            writer->WriteRaw("-");
            expected += '-';
        }
        writer->WriteEndDocument();
        writer->WriteStartElement("b");
        writer->Close();
        EXPECT_EQ(writer.Text(), expected + "</a>\xEF\xBB\xBF<b/>");
    }
}

// An encoding gives nothing for a character that it does not have. What the buffer held before, or
// never held, is not written in its place.
TEST(XmlTextWriterBuffer, TheBufferIsNotDisclosed) {
    Xml::Latin1Encoding encoding(false);
    DocumentWriter writer(&encoding);
    BeginContent(writer);
    writer->WriteString("SECRETS");
    writer.Take();
    for (int i = 0; i < 6; ++i)
        writer->WriteString("\xE2\x82\xAC");
    writer->WriteString("a\xE2\x82\xAC\xE2\x82\xAC\xE2\x82\xAC");
    std::string expected;
    for (int i = 0; i < 6; ++i)
        expected += "&#x20AC;";
    EXPECT_EQ(writer.Take(), expected + "a&#x20AC;&#x20AC;&#x20AC;");
}

}  // namespace
