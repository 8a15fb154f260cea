// SPDX-License-Identifier: MIT
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"
#include "support/FailingStream.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using support::DocumentWriter;
using support::WriterCalls;
using Xml::Formatting;
using Xml::NewLineHandling;
using Xml::XmlTextWriter;

std::string Indented(WriterCalls calls) {
    DocumentWriter writer;
    writer.Indent();
    calls(*writer);
    writer->WriteEndDocument();
    return writer.Text();
}

TEST(XmlTextWriterFormat, WhatBeginsALine) {
    const struct {
        const char* name;
        WriterCalls calls;
        const char* expected;
    } kCases[] = {
        {"the root at the very start does not", [](XmlTextWriter& w) { w.WriteStartElement("r"); },
         "<r/>"},
        {"the root behind a declaration",
         [](XmlTextWriter& w) {
             w.WriteStartDocument();
             w.WriteStartElement("r");
         },
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r/>"},
        {"elements in elements",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("a");
             w.WriteStartElement("b");
             w.WriteEndElement();
             w.WriteStartElement("c");
             w.WriteEndElement();
             w.WriteEndElement();
             w.WriteStartElement("d");
         },
         "<r>\n  <a>\n    <b/>\n    <c/>\n  </a>\n  <d/>\n</r>"},
        {"attributes do not",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteAttributeString("x", "1");
             w.WriteStartElement("a");
             w.WriteAttributeString("y", "2");
             w.WriteAttributeString("z", "3");
         },
         "<r x=\"1\">\n  <a y=\"2\" z=\"3\"/>\n</r>"},
        {"document types behind a declaration",
         [](XmlTextWriter& w) {
             w.WriteStartDocument();
             w.WriteDocType("r", "", "", "");
             w.WriteStartElement("r");
         },
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE r>\n<r/>"},
        {"a document type at the very start does not",
         [](XmlTextWriter& w) {
             w.WriteDocType("r", "", "", "");
             w.WriteStartElement("r");
         },
         "<!DOCTYPE r>\n<r/>"},
        {"a comment or an instruction even at the very start",
         [](XmlTextWriter& w) {
             w.WriteComment("c");
             w.WriteStartElement("r");
             w.WriteEndDocument();
             w.WriteProcessingInstruction("p", "d");
             w.WriteStartElement("r");
         },
         "\n<!--c-->\n<r/>\n<?p d?>\n<r/>"},
        {"comments and instructions in the prolog",
         [](XmlTextWriter& w) {
             w.WriteStartDocument();
             w.WriteComment("c");
             w.WriteProcessingInstruction("p", "d");
             w.WriteStartElement("r");
         },
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!--c-->\n<?p d?>\n<r/>"},
        {"comments and instructions in elements",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteComment("c");
             w.WriteStartElement("a");
             w.WriteProcessingInstruction("p", "d");
         },
         "<r>\n  <!--c-->\n  <a>\n    <?p d?>\n  </a>\n</r>"},
        {"a comment behind the root",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteEndElement();
             w.WriteComment("c");
             w.WriteProcessingInstruction("p", "d");
         },
         "<r/>\n<!--c-->\n<?p d?>"},
        {"a second document does not",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("a");
             w.WriteEndDocument();
             w.WriteStartElement("s");
             w.WriteStartElement("b");
         },
         "<r>\n  <a/>\n</r><s>\n  <b/>\n</s>"},
        {"elements with a text",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteElementString("a", "1");
             w.WriteElementString("b", "2");
         },
         "<r>\n  <a>1</a>\n  <b>2</b>\n</r>"},
        {"no element in mixed content",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteString("t");
             w.WriteStartElement("a");
             w.WriteEndElement();
             w.WriteString("u");
             w.WriteStartElement("b");
         },
         "<r>t<a/>u<b/></r>"},
        {"no comment or instruction there",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteString("t");
             w.WriteComment("c");
             w.WriteProcessingInstruction("p", "d");
         },
         "<r>t<!--c--><?p d?></r>"},
        {"elements before the text do",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("a");
             w.WriteEndElement();
             w.WriteString("t");
             w.WriteStartElement("b");
         },
         "<r>\n  <a/>t<b/></r>"},
        {"mixed content is that of one element",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartElement("m");
             w.WriteString("t");
             w.WriteStartElement("a");
             w.WriteStartElement("b");
             w.WriteEndElement();
             w.WriteEndElement();
             w.WriteEndElement();
             w.WriteStartElement("c");
         },
         "<r>\n  <m>t<a>\n      <b/>\n    </a></m>\n  <c/>\n</r>"},
        {"the value of an attribute is no content",
         [](XmlTextWriter& w) {
             w.WriteStartElement("r");
             w.WriteStartAttribute("x");
             w.WriteString("t");
             w.WriteRaw("u");
             w.WriteEntityRef("v");
             w.WriteEndAttribute();
             w.WriteStartElement("a");
         },
         "<r x=\"tu&v;\">\n  <a/>\n</r>"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Indented(c.calls), c.expected);
    }
}

TEST(XmlTextWriterFormat, EachKindOfContentMakesAnElementMixed) {
    const struct {
        WriterCalls call;
        const char* expected;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteString("t"); }, "t"},
        {[](XmlTextWriter& w) { w.WriteWhitespace(" "); }, " "},
        {[](XmlTextWriter& w) { w.WriteCData("t"); }, "<![CDATA[t]]>"},
        {[](XmlTextWriter& w) { w.WriteEntityRef("t"); }, "&t;"},
        {[](XmlTextWriter& w) { w.WriteName("t"); }, "t"},
        {[](XmlTextWriter& w) { w.WriteNmToken("t"); }, "t"},
        {[](XmlTextWriter& w) { w.WriteRaw("<t/>"); }, "<t/>"},
        {[](XmlTextWriter& w) { w.WriteRaw("<t/>?", 4); }, "<t/>"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        DocumentWriter writer;
        writer.Indent();
        writer->WriteStartElement("r");
        writer->WriteStartElement("m");
        c.call(*writer);
        writer->WriteStartElement("a");
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), "<r>\n  <m>" + std::string(c.expected) + "<a/></m>\n</r>");
    }
}

TEST(XmlTextWriterFormat, MarkupDoesNotMakeAnElementMixed) {
    const struct {
        WriterCalls call;
        const char* expected;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteComment("c"); }, "<!--c-->"},
        {[](XmlTextWriter& w) { w.WriteProcessingInstruction("p", "d"); }, "<?p d?>"},
        {[](XmlTextWriter& w) { w.WriteElementString("e", "t"); }, "<e>t</e>"},
    };
    for (const auto& c : kCases) {
        DocumentWriter writer;
        writer.Indent();
        writer->WriteStartElement("r");
        c.call(*writer);
        writer->WriteStartElement("a");
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), "<r>\n  " + std::string(c.expected) + "\n  <a/>\n</r>");
    }
}

TEST(XmlTextWriterFormat, IndentationIsANumberOfCharacters) {
    for (const int number : {-1, 0, 1, 2, 4, 13, 300}) {
        for (const char character : {' ', '\t', '.'}) {
            SCOPED_TRACE(number);
            DocumentWriter writer;
            writer.Indent();
            writer->SetIndentation(number);
            writer->SetIndentChar(character);
            writer->WriteStartElement("r");
            writer->WriteStartElement("a");
            writer->WriteStartElement("b");
            writer->WriteEndDocument();
            const std::string one(number < 0 ? 0 : static_cast<std::size_t>(number), character);
            EXPECT_EQ(writer.Text(),
                      "<r>\n" + one + "<a>\n" + one + one + "<b/>\n" + one + "</a>\n</r>");
        }
    }
}

// The new-line characters begin a line however those of texts are handled.
TEST(XmlTextWriterFormat, TheNewLineCharactersBeginALine) {
    for (const NewLineHandling handling :
         {NewLineHandling(NewLineHandling::NoHandling), NewLineHandling(NewLineHandling::Entitize),
          NewLineHandling(NewLineHandling::Replace)}) {
        for (const char* newLine : {"\n", "\r\n", "\r", "\n\n", " ", ""}) {
            DocumentWriter writer;
            writer.Indent(newLine);
            writer->SetNewLineHandling(handling);
            writer->WriteStartElement("r");
            writer->WriteStartElement("a");
            writer->WriteEndDocument();
            const std::string line = newLine;
            EXPECT_EQ(writer.Text(), "<r>" + line + "  <a/>" + line + "</r>");
        }
    }
}

TEST(XmlTextWriterFormat, TheDefaultLineEndsInCrLf) {
    DocumentWriter writer;
    writer->SetFormatting(Formatting::Indented);
    writer->WriteStartElement("r");
    writer->WriteStartElement("a");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<r>\r\n  <a/>\r\n</r>");
}

TEST(XmlTextWriterFormat, NothingIsAddedWithoutFormatting) {
    DocumentWriter writer;
    writer->WriteStartDocument();
    writer->WriteDocType("r", "", "", "");
    writer->WriteComment("c");
    writer->WriteProcessingInstruction("p", "d");
    writer->WriteStartElement("r");
    writer->WriteStartElement("a");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE r><!--c--><?p d?><r><a/></r>");
}

TEST(XmlTextWriterFormat, DeepElementsAreIndentedByTheirDepth) {
    constexpr int kDepth = 200;
    DocumentWriter writer;
    writer.Indent();
    std::string expected;
    for (int i = 0; i < kDepth; ++i) {
        writer->WriteStartElement("e");
        if (i > 0) expected += ">\n" + std::string(static_cast<std::size_t>(2 * i), ' ');
        expected += "<e";
    }
    writer->WriteEndDocument();
    expected += "/>";
    for (int i = kDepth - 2; i >= 0; --i)
        expected += "\n" + std::string(static_cast<std::size_t>(2 * i), ' ') + "</e>";
    EXPECT_EQ(writer.Text(), expected);
}

// More spaces than an int counts are begun; the stream ends the attempt.
TEST(XmlTextWriterFormat, AnIndentationIsNotCutToAnInt) {
    for (const int indentation : {1 << 30, std::numeric_limits<int>::max()}) {
        SCOPED_TRACE(indentation);
        Xml::UTF8Encoding encoding;
        IO::MemoryStream inner;
        support::FailingStream stream(inner, 1, support::Failure::Throw);
        XmlTextWriter writer(&stream, &encoding);
        writer.SetFormatting(Formatting::Indented);
        writer.SetIndentation(0);
        for (int i = 0; i < 4; ++i)
            writer.WriteStartElement("e");
        writer.SetIndentation(indentation);
        EXPECT_THROW_TEXT(writer.WriteStartElement("e"), support::FailingStream::kMessage, -1, -1);
    }
}

TEST(XmlTextWriterFormat, TheNamesOfTheModes) {
    EXPECT_STREQ(Formatting(Formatting::None).ToString(), "None");
    EXPECT_STREQ(Formatting(Formatting::Indented).ToString(), "Indented");
    EXPECT_STREQ(Formatting(static_cast<Formatting::FORMATTING_MODE>(2)).ToString(), "?");

    EXPECT_STREQ(NewLineHandling(NewLineHandling::NoHandling).ToString(), "NoHandling");
    EXPECT_STREQ(NewLineHandling(NewLineHandling::Entitize).ToString(), "Entitize");
    EXPECT_STREQ(NewLineHandling(NewLineHandling::Replace).ToString(), "Replace");
    const auto none = static_cast<NewLineHandling::NEWLINE_HANDLING>(3);
    EXPECT_STREQ(NewLineHandling(none).ToString(), "?");
}

TEST(XmlTextWriterFormat, TheNumbersOfTheModes) {
    EXPECT_EQ(static_cast<int>(Formatting::None), 0);
    EXPECT_EQ(static_cast<int>(Formatting::Indented), 1);
    EXPECT_TRUE(Formatting() == Formatting::None);
    Formatting formatting;
    formatting = Formatting::Indented;
    EXPECT_TRUE(formatting == Formatting(Formatting::Indented));
    const Formatting::FORMATTING_MODE value = formatting;
    EXPECT_EQ(value, Formatting::Indented);

    EXPECT_EQ(static_cast<int>(NewLineHandling::NoHandling), 0);
    EXPECT_EQ(static_cast<int>(NewLineHandling::Entitize), 1);
    EXPECT_EQ(static_cast<int>(NewLineHandling::Replace), 2);
    EXPECT_TRUE(NewLineHandling() == NewLineHandling::NoHandling);
    NewLineHandling handling;
    handling = NewLineHandling::Replace;
    EXPECT_TRUE(handling == NewLineHandling(NewLineHandling::Replace));
    const NewLineHandling::NEWLINE_HANDLING mode = handling;
    EXPECT_EQ(mode, NewLineHandling::Replace);
}

}  // namespace
