// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentReader.h"
#include "support/DocumentWriter.h"
#include "support/NodeCopy.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Writing in encodings that do not have all characters.

namespace {

using support::DocumentReader;
using support::DocumentWriter;

struct Page {
    Xml::Encoding* (*shared)();
    const char* own;    // characters of the page, in UTF-8
    const char* bytes;  // in the page
};

constexpr Page kPages[] = {
    {Xml::Encoding::ASCII, "\xC3\xA9", "\xE9"},
    {Xml::Encoding::Latin1, "\xC3\xA9", "\xE9"},
    {Xml::Encoding::Windows_1250, "\xC5\xA1\xC5\xBE", "\x9A\x9E"},
    {Xml::Encoding::Windows_1251, "\xD0\x90\xD1\x8F", "\xC0\xFF"},
    {Xml::Encoding::Windows_1252, "\xC3\xA9\xC5\x93", "\xE9\x9C"},
    {Xml::Encoding::Windows_1254, "\xC4\xB0\xC5\x9F", "\xDD\xFE"},
    {Xml::Encoding::Windows_1257, "\xC4\x85\xC5\xB3", "\xE0\xF8"},
    {Xml::Encoding::GB2312, "\xE4\xB8\xAD\xE2\x80\x94", "\xD6\xD0\xA1\xAA"},
    {Xml::Encoding::EUC_KR, "\xED\x95\x9C\xE2\x82\xAC", "\xC7\xD1\xA2\xE6"},
};

// Characters that no page can write: of two, three and four bytes in UTF-8.
constexpr char kForeign[] = "\xDF\xBF\xE0\xA4\x85\xE2\x82\xBF\xF0\x9F\x98\x80\xF4\x8F\xBF\xBD";
constexpr char kReferences[] = "&#x7FF;&#x905;&#x20BF;&#x1F600;&#x10FFFD;";

TEST(XmlTextWriterCodePage, WritesReferencesInTextAndValues) {
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.shared()->WebName());
        DocumentWriter writer(page.shared());
        const std::string text = std::string("a<") + page.own + kForeign + "b";
        const std::string bytes = page.bytes + std::string(kReferences) + "b";
        writer->WriteStartElement("r");
        writer->WriteAttributeString("x", text);
        EXPECT_EQ(writer.Take(), "<r x=\"a&lt;" + bytes + "\"");
        writer->WriteString(text);
        EXPECT_EQ(writer.Take(), ">a&lt;" + bytes);
        writer->WriteString(text.substr(2));  // with nothing to escape
        EXPECT_EQ(writer.Take(), bytes);
        writer->WriteElementString("e", kForeign);
        EXPECT_EQ(writer.Take(), "<e>" + std::string(kReferences) + "</e>");
    }
}

// Deliberate: Windows pages refuse what they have above 2123, so that it is written as references.
TEST(XmlTextWriterCodePage, TheEuroSignOfAWindowsPageIsWrittenAsAReference) {
    for (const Page& page : kPages) {
        const bool isKorean = page.shared() == Xml::Encoding::EUC_KR();
        DocumentWriter writer(page.shared());
        writer->WriteElementString("r", "\xE2\x82\xAC");
        EXPECT_EQ(writer.Text(), isKorean ? "<r>\xA2\xE6</r>" : "<r>&#x20AC;</r>");
    }
}

TEST(XmlTextWriterCodePage, WritesQuestionMarksElsewhere) {
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.shared()->WebName());
        DocumentWriter writer(page.shared());
        const std::string text = std::string(page.own) + kForeign;
        const std::string bytes = std::string(page.bytes) + "?????";
        writer->WriteStartElement("r");
        writer->WriteComment(text);
        EXPECT_EQ(writer.Take(), "<r><!--" + bytes + "-->");
        writer->WriteProcessingInstruction("p", text);
        EXPECT_EQ(writer.Take(), "<?p " + bytes + "?>");
        writer->WriteCData(text);
        EXPECT_EQ(writer.Take(), "<![CDATA[" + bytes + "]]>");
        writer->WriteRaw(text);
        EXPECT_EQ(writer.Take(), bytes);
        writer->WriteStartElement("e\xE0\xA4\x85");
        writer->WriteAttributeString("a\xE0\xA4\x85", "");
        writer->WriteEndElement();
        EXPECT_EQ(writer.Take(), "<e? a?=\"\"/>");
    }
}

TEST(XmlTextWriterCodePage, LongTextsKeepAllCharacters) {
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.shared()->WebName());
        for (const std::size_t count : {50u, 100u, 200u, 333u, 1000u}) {
            std::string text, bytes, marks;
            for (std::size_t i = 0; i < count; ++i) {
                text += std::string(i % 11, 'x') + page.own + kForeign;
                bytes += std::string(i % 11, 'x') + page.bytes + kReferences;
                marks += std::string(i % 11, 'x') + page.bytes + "?????";
            }
            DocumentWriter writer(page.shared());
            writer->WriteStartElement("r");
            writer->WriteString(text);
            ASSERT_EQ(writer.Take(), "<r>" + bytes);
            writer->WriteComment(text);
            ASSERT_EQ(writer.Take(), "<!--" + marks + "-->");
            writer->WriteStartElement("e" + text);
            writer->WriteEndElement();
            ASSERT_EQ(writer.Take(), "<e" + marks + "/>");
        }
    }
}

// Text that is no UTF-8 comes in where characters are not checked. Its bytes count one by one.
TEST(XmlTextWriterCodePage, WhatIsNoCharacterIsAQuestionMark) {
    const struct {
        const char* text;
        const char* expected;
    } kRows[] = {{"a\xFF"
                  "b",
                  "a?b"},
                 {"a\x80\x80"
                  "b",
                  "a??b"},
                 {"a\xC0\x93"
                  "b",
                  "a??b"},
                 {"a\xED\xA0\x80"
                  "b",
                  "a???b"},
                 {"a\xEF\xBF\xBF"
                  "b",
                  "a?b"}};
    for (const Page& page : kPages) {
        for (const auto& row : kRows) {
            DocumentWriter writer(page.shared());
            writer->SetCheckCharacters(false);
            writer->WriteElementString("r", row.text);
            EXPECT_EQ(writer.Text(), std::string("<r>") + row.expected + "</r>");
        }
    }
}

// What is written is read back: documents in every page, with what the page lacks.
TEST(XmlTextWriterCodePage, WhatIsWrittenIsReadBack) {
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.shared()->WebName());
        const std::string own = page.own;
        const std::string document = "<r x='" + own + kForeign + "'>" + own + "<!--" + own +
                                     "--><?p " + own + "?><![CDATA[" + own + "]]><e>" + kForeign +
                                     own + "</e></r>";
        DocumentReader reader(document);
        DocumentWriter writer(page.shared());
        support::CopyNodes(*reader, *writer, true);
        const std::string bytes = writer.Text();
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            DocumentReader again(bytes, {}, bytesPerRead);
            std::vector<std::string> lines = support::TellNodes(*again);
            DocumentReader original(document);
            const std::vector<std::string> expected = support::TellNodes(*original);
            ASSERT_GE(lines.size(), expected.size());
            lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(
                                                           lines.size() - expected.size()));
            EXPECT_EQ(lines, expected) << bytes;
        }
    }
}

}  // namespace
