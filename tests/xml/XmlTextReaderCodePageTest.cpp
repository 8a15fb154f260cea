// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/DocumentWriter.h"
#include "support/NodeCopy.h"
#include "support/NodeDump.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iconv.h>
#include <iterator>
#include <string>
#include <vector>

// Documents in code pages: the same nodes as their UTF-8 form gives, and what the pages do on
// purpose. The system's iconv makes the documents.

namespace {

using support::DocumentReader;
using support::ReaderSettings;

constexpr int kBytesPerRead[] = {0, 1, 2, 3, 7};

std::string Transcoded(const std::string& text, const char* from, const char* to) {
    const iconv_t converter = iconv_open(to, from);
    std::string input = text;
    std::string output(4 * input.size() + 16, '\0');
    char* inputAt = input.data();
    char* outputAt = output.data();
    std::size_t inputLeft = input.size(), outputLeft = output.size();
    EXPECT_EQ(iconv(converter, &inputAt, &inputLeft, &outputAt, &outputLeft), 0u) << to;
    iconv_close(converter);
    output.resize(output.size() - outputLeft);
    return output;
}

struct Page {
    Xml::Encoding* (*shared)();
    const char* webName;
    const char* iconvName;
    const char* reported;
    const char* name;  // letters in UTF-8
    const char* text;  // characters up to U+07FF in a Windows page, of any kind elsewhere
};

// Every text has letters, other characters and those of more bytes in UTF-8 that there are.
constexpr Page kPages[] = {
    {Xml::Encoding::Windows_1250, "windows-1250", "CP1250", "Windows-1250", "\xC5\xBElu\xC5\xA5",
     "P\xC5\x99\xC3\xADli\xC5\xA1 \xC2\xA7 5"},
    {Xml::Encoding::Windows_1251, "windows-1251", "CP1251", "Windows-1251",
     "\xD0\xB8\xD0\xBC\xD1\x8F", "\xD0\x9A\xD0\xBD\xD0\xB8\xD0\xB3\xD0\xB0 \xC2\xA9"},
    {Xml::Encoding::Windows_1252, "windows-1252", "CP1252", "Windows-1252", "caf\xC3\xA9",
     "na\xC3\xAFve \xC2\xBD \xC5\x93uvre"},
    {Xml::Encoding::Windows_1254, "windows-1254", "CP1254", "Windows-1254",
     "a\xC4\x9F"
     "a\xC3\xA7",
     "\xC4\xB0stanbul \xC2\xB1 \xC4\xB1\xC5\x9F\xC4\xB1k"},
    {Xml::Encoding::Windows_1257, "windows-1257", "CP1257", "Windows-1257", "\xC4\x97jimas",
     "\xC5\xA0ventoji \xC2\xA4 \xC4\x85\xC5\xBEuolas"},
    {Xml::Encoding::GB2312, "gb2312", "EUC-CN", "GB2312", "\xCE\xB1\xE3\x81\x82",
     "\xE4\xB8\xAD\xE6\x96\x87 \xC2\xB0 \xE2\x80\x9C"
     "a\xE2\x80\x9D\xE2\x84\x83"},
    {Xml::Encoding::EUC_KR, "EUC-KR", "EUC-KR", "EUC-KR", "\xEC\x9D\xB4\xEB\xA6\x84",
     "\xED\x95\x9C\xEA\xB5\xAD\xEC\x96\xB4 \xC2\xB1 \xE6\xBC\xA2 \xEF\xBF\xA6"},
};

// A document with the characters in all places, in UTF-8.
std::string DocumentOf(const Page& page, const std::string& encoding) {
    const std::string name = page.name, text = page.text;
    std::string document = "<?xml version='1.0' encoding='" + encoding + "'?>\r\n<!DOCTYPE " +
                           name + " [<!ENTITY " + name + " '" + text + " &#x20AC; <b>" + name +
                           "</b>'>]>\n<!--" + text + "-->\n<?" + name + " " + text + "?>\n<" +
                           name + " " + name + "='" + text + "' x='&" + name + ";'>" + text + "&" +
                           name + ";<![CDATA[" + text + "]]>\n";
    document.erase(document.find("<b>"), 3);
    document.erase(document.find("</b>"), 4);
    for (int i = 0; i < 60; ++i)  // over several buffers, at all distances from their ends
        document += "<e" + std::string(static_cast<std::size_t>(i), 'e') + " y=\"" + text + "\">" +
                    text + text + "</e" + std::string(static_cast<std::size_t>(i), 'e') + ">";
    return document + "</" + name + ">\n";
}

// The lines of a dump without the one that names the encoding.
std::string WithoutDeclaration(const std::string& dump) {
    return dump.substr(dump.find("DocumentType"));
}

TEST(XmlTextReaderCodePage, GivesTheNodesOfTheUtf8Form) {
    const ReaderSettings expanding = support::WithEntities(Xml::XmlEntityHandling::ExpandEntities);
    for (const ReaderSettings& settings : {ReaderSettings{}, expanding}) {
        for (const Page& page : kPages) {
            SCOPED_TRACE(page.webName);
            const std::string expected = support::DumpDocument(DocumentOf(page, "UTF-8"), settings);
            ASSERT_EQ(expected.find("\nerror"), std::string::npos) << expected;
            const std::string document =
                Transcoded(DocumentOf(page, page.webName), "UTF-8", page.iconvName);
            for (const int bytesPerRead : kBytesPerRead) {
                const std::string dump = support::DumpDocument(document, settings, bytesPerRead);
                ASSERT_EQ(WithoutDeclaration(dump), WithoutDeclaration(expected)) << bytesPerRead;
            }
        }
    }
}

TEST(XmlTextReaderCodePage, ReportsItsEncoding) {
    for (const Page& page : kPages) {
        DocumentReader reader(std::string("<?xml version='1.0' encoding='") + page.webName +
                              "'?><a/>");
        reader.ReadNodes(2);
        EXPECT_EQ(reader->Encoding(), page.reported);
    }
}

std::string InWindows1252(const std::string& rest) {
    return "<?xml version='1.0' encoding='windows-1252'?>" + rest;
}

std::string Sample(const Page& page) {
    std::string name = page.webName;
    for (char& c : name)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    std::ifstream file(std::string(ESPALIER_SAMPLES) + "/encodings/" + name + ".xml",
                       std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// The samples, which stand on the disk as they are read, and written again as they were.
TEST(XmlTextReaderCodePage, ReadsTheSamplesAndReadsThemAgainOnceWritten) {
    for (const Page& page : kPages) {
        SCOPED_TRACE(page.webName);
        const std::string sample = Sample(page);
        ASSERT_NE(sample.find(page.webName), std::string::npos);
        std::string text = Transcoded(sample, page.iconvName, "UTF-8");
        text.replace(text.find(page.webName), std::string(page.webName).size(), "UTF-8");
        const auto body = [](const std::string& dump) { return dump.substr(dump.find("Element")); };
        const std::string expected = body(support::DumpDocument(text));
        EXPECT_GT(std::count(expected.begin(), expected.end(), '\n'), 25);
        for (const int bytesPerRead : kBytesPerRead)
            EXPECT_EQ(body(support::DumpDocument(sample, {}, bytesPerRead)), expected);

        support::DocumentWriter writer(page.shared());
        writer->SetNewLineHandling(Xml::NewLineHandling::NoHandling);
        DocumentReader reader(sample);
        support::CopyNodes(*reader, *writer, true);
        const std::string written = writer.Text();
        DocumentReader before(sample), after(written);
        EXPECT_EQ(support::TellNodes(*after), support::TellNodes(*before));
        EXPECT_NE(written.find(page.webName), std::string::npos);
    }
}

// Deliberate: characters above U+07FF lose their high bits to the lead byte.
TEST(XmlTextReaderCodePage, TheEuroSignOfAWindowsPageIsTheBytesC2AC) {
    for (const int bytesPerRead : kBytesPerRead) {
        DocumentReader reader(
            InWindows1252("<a x='\x80 \x96'>\x80\x96\x99<![CDATA[\x80]]><!--\x85-->"
                          "<?p \x80?></a>"),
            {}, bytesPerRead);
        reader.ReadToElement();
        EXPECT_EQ(reader->GetAttribute("x"), "\xC2\xAC \xC0\x93");
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), "\xC2\xAC\xC0\x93\xC4\xA2");
        EXPECT_EQ(reader->LinePosition(), 57);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), "\xC2\xAC");
        EXPECT_EQ(reader->LinePosition(), 60);  // every character counts one
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), "\xC0\xA6");
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), "\xC2\xAC");
        reader.ReadAll();
    }
}

// Deliberate: what has been read once is not judged again, whatever its bytes are.
TEST(XmlTextReaderCodePage, PushedTextIsTrusted) {
    const std::string document = InWindows1252(
        "<!DOCTYPE a [<!ENTITY e '\x96\x93x\x94<b y=\"\x96\">\x97</b>\x96'>]>"
        "<a x='\x96&e2;\x97&#x2013;\x80'>&e;\x96</a>");
    const std::string kValid = "<!ENTITY e2 '\x96'>";
    std::string whole = document;
    whole.insert(whole.find("]>"), kValid);
    for (const int bytesPerRead : kBytesPerRead) {
        SCOPED_TRACE(bytesPerRead);
        const ReaderSettings settings =
            support::WithEntities(Xml::XmlEntityHandling::ExpandEntities);
        DocumentReader reader(whole, settings, bytesPerRead);
        reader.ReadToElement();
        EXPECT_EQ(reader->GetAttribute("x"), "\xC0\x93\xC0\x93\xC0\x94\xE2\x80\x93\xC2\xAC");
        std::vector<std::string> texts;
        while (reader->Read()) {
            if (reader->NodeType() == Xml::XmlNodeType::Text) texts.emplace_back(reader->Value());
            if (reader->NodeType() == Xml::XmlNodeType::Element) {
                EXPECT_EQ(reader->GetAttribute("y"), "\xC0\x93");
            }
        }
        EXPECT_EQ(texts, (std::vector<std::string>{"\xC0\x93\xC0\x9Cx\xC0\x9D", "\xC0\x94",
                                                   "\xC0\x93", "\xC0\x93"}));
    }
}

// The parts of an attribute's value are scanned as a pushed text, too.
TEST(XmlTextReaderCodePage, PartsOfAValueAreTrusted) {
    const std::string document =
        InWindows1252("<!DOCTYPE a [<!ENTITY e '\x96'>]><a x='\x96\x80&e;\x97'/>");
    for (const int bytesPerRead : kBytesPerRead) {
        DocumentReader reader(document, {}, bytesPerRead);
        reader.ReadToElement();
        ASSERT_TRUE(reader->MoveToFirstAttribute());
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(reader->Value(), "\xC0\x93\xC2\xAC");
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(reader->NodeType(), Xml::XmlNodeType::EntityReference);
        ASSERT_TRUE(reader->ReadAttributeValue());
        EXPECT_EQ(reader->Value(), "\xC0\x94");
        EXPECT_FALSE(reader->ReadAttributeValue());
    }
}

TEST(XmlTextReaderCodePage, LongPushedTextIsReadWhole) {
    std::string text, expected;
    for (int i = 0; i < 3000; ++i) {
        text += i % 7 == 0 ? "x" : "\x96";
        expected += i % 7 == 0 ? "x" : "\xC0\x93";
    }
    const ReaderSettings settings = support::WithEntities(Xml::XmlEntityHandling::ExpandEntities);
    DocumentReader reader(InWindows1252("<!DOCTYPE a [<!ENTITY e '" + text + "'>]><a>&e;</a>"),
                          settings);
    reader.ReadToElement();
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Value(), expected);
}

TEST(XmlTextReaderCodePage, MarkupComesBackAsText) {
    DocumentReader reader(InWindows1252("<a><b x='\x80'>\x96</b>\xE9</a>"));
    reader.ReadToElement();
    EXPECT_EQ(reader->ReadInnerXml(), "<b x='\xC2\xAC'>\xC0\x93</b>\xC3\xA9");
}

TEST(XmlTextReaderCodePage, WhatIsNoLetterIsRefusedInNames) {
    const struct {
        const char* encoding;
        const char* name;
    } kRows[] = {{"windows-1252", "\x80"}, {"windows-1252", "\x96"}, {"windows-1252", "\x99"},
                 {"windows-1252", "\xD7"}, {"windows-1251", "\xB9"}, {"gb2312", "\xD6\xD0"},
                 {"EUC-KR", "\xA1\xA4"}};
    for (const auto& row : kRows) {
        for (const int bytesPerRead : kBytesPerRead) {
            SCOPED_TRACE(row.encoding);
            const std::string declaration =
                "<?xml version='1.0' encoding='" + std::string(row.encoding) + "'?>\n";
            const std::string dump =
                support::DumpDocument(declaration + "<a><" + row.name + "/></a>", {}, bytesPerRead);
            EXPECT_NE(dump.find("\nerror 2:5 Syntax error: Expected element name\n"),
                      std::string::npos)
                << dump;
        }
    }
}

TEST(XmlTextReaderCodePage, BytesThatAreNoCharacterAreRefused) {
    const struct {
        const char* bytes;
        int column;  // of what is refused, from 1
    } kRows[] = {{"\x80", 1},  {"\xA0", 1},     {"\xFF", 1},        {"ab\xA1 ", 3},
                 {"\xA1<", 1}, {"\xFE\xA1", 1}, {"\xA4\xA2\xA1", 2}};
    for (const char* encoding : {"GB2312", "EUC-KR"}) {
        for (const auto& row : kRows) {
            for (const int bytesPerRead : kBytesPerRead) {
                SCOPED_TRACE(std::string(encoding) + ' ' + std::to_string(row.column));
                const std::string dump =
                    support::DumpDocument("<?xml version='1.0' encoding='" + std::string(encoding) +
                                              "'?><a>\n" + row.bytes + "</a>",
                                          {}, bytesPerRead);
                EXPECT_NE(
                    dump.find("\nerror 2:" + std::to_string(row.column) + " Invalid character\n"),
                    std::string::npos)
                    << dump;
            }
        }
    }
}

TEST(XmlTextReaderCodePage, ACharacterThatTheEndCutsIsTheEnd) {
    for (const int bytesPerRead : kBytesPerRead) {
        const std::string dump = support::DumpDocument(
            "<?xml version='1.0' encoding='EUC-KR'?><a>\xB0\xA1\xB0", {}, bytesPerRead);
        EXPECT_NE(dump.find("error 1:44 Missing end element"), std::string::npos) << dump;
    }
}

// The reader keeps names from document to document; they must not pass where they are none.
TEST(XmlTextReaderCodePage, NamesOfOneEncodingDoNotHoldInTheNext) {
    DocumentReader reader("<a><\xD0\xB8/></a>");
    reader.ReadAll();
    const std::string latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?><a><\xD0\xB8/></a>";
    const std::string cyrillic = "<?xml version='1.0' encoding='windows-1251'?><a><\xE8/></a>";
    for (int round = 0; round < 2; ++round) {
        support::DocumentStream second(cyrillic);
        ASSERT_TRUE(reader->SetStream(second.get(), false));
        reader.ReadNodes(3);
        EXPECT_EQ(reader->Name(), "\xD0\xB8");
        support::DocumentStream third(latin1);
        ASSERT_TRUE(reader->SetStream(third.get(), false));
        reader.ReadNodes(2);
        EXPECT_THROW(reader->Read(), Xml::Exception);
    }
}

}  // namespace
