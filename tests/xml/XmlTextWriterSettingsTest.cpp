// SPDX-License-Identifier: MIT
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace {

using support::DocumentWriter;
using support::NameOf;
using Xml::Formatting;
using Xml::NewLineHandling;
using Xml::WriteState;
using Xml::XmlSpace;
using Xml::XmlTextWriter;

void ExpectDefaults(const XmlTextWriter& writer) {
    EXPECT_EQ(writer.GetFormatting(), Formatting::None);
    EXPECT_EQ(writer.GetIndentChar(), ' ');
    EXPECT_EQ(writer.GetQuoteChar(), '"');
    EXPECT_TRUE(writer.CheckCharacters());
    EXPECT_EQ(writer.GetNewLineHandling(), NewLineHandling::Replace);
    EXPECT_EQ(writer.GetNewLineChars(), "\r\n");
    EXPECT_TRUE(writer.GetNamespaces());
    EXPECT_EQ(writer.GetXmlLang(), "");
    EXPECT_EQ(writer.GetXmlSpace(), XmlSpace::SpaceNone);
}

TEST(XmlTextWriterSettings, ANewWriterHasTheDefaults) {
    const XmlTextWriter closed;
    ExpectDefaults(closed);
    EXPECT_STREQ(NameOf(closed.GetWriteState()), "Closed");

    DocumentWriter writer;
    ExpectDefaults(*writer);
    EXPECT_STREQ(NameOf(writer->GetWriteState()), "Start");
    EXPECT_FALSE(writer->CloseOutput());
}

TEST(XmlTextWriterSettings, ConstructorsCheckStreamThenWritingThenEncoding) {
    Xml::UTF8Encoding encoding;
    IO::StringStream writable;
    IO::StringStream readOnly("", false);
    const unsigned char byte = 0;
    IO::MemoryStream constant(&byte, 1);
    EXPECT_THROW_FULL(XmlTextWriter(static_cast<IO::Stream*>(nullptr), nullptr),
                      "Invalid Argument: a_Stream", "", -1, -1);
    EXPECT_THROW_FULL(XmlTextWriter(static_cast<IO::Stream*>(nullptr), &encoding),
                      "Invalid Argument: a_Stream", "", -1, -1);
    EXPECT_THROW_FULL(XmlTextWriter(&readOnly, nullptr), "Invalid Argument: Stream not writable",
                      "", -1, -1);
    EXPECT_THROW_FULL(XmlTextWriter(&constant, &encoding), "Invalid Argument: Stream not writable",
                      "", -1, -1);
    EXPECT_THROW_FULL(XmlTextWriter(&writable, nullptr), "Invalid Argument: a_Encoding", "", -1,
                      -1);
    EXPECT_NO_THROW(XmlTextWriter(&writable, &encoding));
    EXPECT_EQ(writable.GetString(), "");
}

TEST(XmlTextWriterSettings, EachSetterHasItsGetter) {
    DocumentWriter writer;
    writer->SetFormatting(Formatting::Indented);
    EXPECT_EQ(writer->GetFormatting(), Formatting::Indented);
    writer->SetIndentChar('\t');
    EXPECT_EQ(writer->GetIndentChar(), '\t');
    writer->SetQuoteChar('\'');
    EXPECT_EQ(writer->GetQuoteChar(), '\'');
    writer->SetCheckCharacters(false);
    EXPECT_FALSE(writer->CheckCharacters());
    writer->SetCloseOutput(true);
    EXPECT_TRUE(writer->CloseOutput());
    NewLineHandling handling = NewLineHandling::Entitize;
    writer->SetNewLineHandling(handling);
    EXPECT_EQ(writer->GetNewLineHandling(), NewLineHandling::Entitize);
    writer->SetNewLineHandling(NewLineHandling::NoHandling);
    EXPECT_EQ(writer->GetNewLineHandling(), NewLineHandling::NoHandling);
    writer->SetNewLineChars(astring(" \t\r\n"));
    EXPECT_EQ(writer->GetNewLineChars(), " \t\r\n");
    writer->SetNewLineChars("");
    EXPECT_EQ(writer->GetNewLineChars(), "");
    writer->SetNamespaces(false);
    EXPECT_FALSE(writer->GetNamespaces());
}

TEST(XmlTextWriterSettings, SettingsTakeEffectAtOnce) {
    DocumentWriter writer;
    writer->SetNewLineChars("\n");
    writer->WriteStartElement("r");
    writer->WriteAttributeString("x", "1");
    writer->SetQuoteChar('\'');
    writer->WriteAttributeString("y", "2");
    writer->SetFormatting(Formatting::Indented);
    writer->WriteStartElement("a");
    writer->WriteEndElement();
    writer->SetIndentation(1);
    writer->WriteStartElement("b");
    writer->SetFormatting(Formatting::None);
    writer->WriteEndElement();
    writer->SetNewLineHandling(NewLineHandling::NoHandling);
    writer->WriteString("\r");
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(), "<r x=\"1\" y='2'>\n  <a/>\n <b/>\r</r>");
}

TEST(XmlTextWriterSettings, AnAttributeEndsWithTheQuoteThatBeganIt) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteStartAttribute("x");
    writer->SetQuoteChar('\'');
    writer->WriteString("1");
    writer->WriteStartAttribute("y");
    writer->SetQuoteChar('"');
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<r x=\"1\" y=''/>");
}

TEST(XmlTextWriterSettings, NewLineCharactersAreWhiteSpace) {
    DocumentWriter writer;
    writer->SetNewLineChars("\n");
    for (int byte = 0; byte < 256; ++byte) {
        if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r') continue;
        const std::string text = std::string("\n") + static_cast<char>(byte);
        EXPECT_THROW_FULL(writer->SetNewLineChars(text),
                          "Invalid Argument: Non-whitespace character in new line characters", "",
                          -1, -1);
        EXPECT_EQ(writer->GetNewLineChars(), "\n") << byte;
    }
}

void ChangeAll(XmlTextWriter& writer) {
    writer.SetFormatting(Formatting::Indented);
    writer.SetIndentation(3);
    writer.SetIndentChar('.');
    writer.SetNamespaces(false);
    writer.SetQuoteChar('\'');
    writer.SetNewLineChars("\n\n");
    writer.SetNewLineHandling(NewLineHandling::Entitize);
    writer.SetCheckCharacters(false);
}

void ExpectChanged(const XmlTextWriter& writer) {
    EXPECT_EQ(writer.GetFormatting(), Formatting::Indented);
    EXPECT_EQ(writer.GetIndentChar(), '.');
    EXPECT_FALSE(writer.GetNamespaces());
    EXPECT_EQ(writer.GetQuoteChar(), '\'');
    EXPECT_EQ(writer.GetNewLineChars(), "\n\n");
    EXPECT_EQ(writer.GetNewLineHandling(), NewLineHandling::Entitize);
    EXPECT_FALSE(writer.CheckCharacters());
}

TEST(XmlTextWriterSettings, ACopyHasTheSettingsAndIsClosed) {
    DocumentWriter writer;
    ChangeAll(*writer);
    writer->WriteStartElement("r");
    XmlTextWriter copy(*writer);
    ExpectChanged(copy);
    EXPECT_STREQ(NameOf(copy.GetWriteState()), "Closed");
    EXPECT_THROW_TEXT(copy.WriteStartElement("e"), "Invalid Operation: Writer closed", -1, -1);
    EXPECT_THROW_TEXT(copy.Close(), "Invalid Operation: Writer already closed", -1, -1);

    copy.SetQuoteChar('"');
    writer->WriteAttributeString("x", "1");
    EXPECT_EQ(writer.Text(), "<r x='1'");
}

TEST(XmlTextWriterSettings, AssignmentTakesTheSettingsOnly) {
    DocumentWriter source;
    ChangeAll(*source);
    source->WriteStartElement("source");

    DocumentWriter target;
    *target = *source;
    ExpectChanged(*target);
    EXPECT_STREQ(NameOf(target->GetWriteState()), "Start");
    target->WriteStartElement("r");
    target->WriteAttributeString("x", "\x01\n");
    target->WriteStartElement("e");
    target->WriteEndDocument();
    EXPECT_EQ(target.Text(), "<r x='\x01&#xA;'>\n\n...<e/>\n\n</r>");
    EXPECT_EQ(source.Text(), "<source");
}

// Elements end with the namespaces that they began with, whatever the setting is by then.
TEST(XmlTextWriterSettings, AssignmentMaySwitchNamespacesInADocument) {
    const XmlTextWriter with;
    DocumentWriter without;
    without->SetNamespaces(false);

    DocumentWriter writer;
    writer->WriteStartElement("p", "r", "urn:p");
    *writer = *without;  // the declaration is still to be written
    writer->WriteStartElement("e");
    *writer = with;
    writer->WriteStartElement("q", "f", "urn:q");
    writer->WriteEndElement();
    writer->WriteEndElement();
    EXPECT_EQ(writer->LookupPrefix("urn:p"), "p");
    EXPECT_EQ(writer->LookupPrefix("urn:q"), "");
    *writer = *without;
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<p:r xmlns:p=\"urn:p\"><e><q:f xmlns:q=\"urn:q\"/></e></p:r>");

    writer->SetNamespaces(true);
    EXPECT_EQ(writer->LookupPrefix("urn:p"), "");
    EXPECT_THROW_TEXT(writer->WriteStartElement("p", "e", nullptr),
                      "Invalid Argument: Prefix not declared", -1, -1);
}

TEST(XmlTextWriterSettings, AssignmentToAnOpenDocumentLetsItGoOn) {
    XmlTextWriter settings;
    settings.SetQuoteChar('\'');
    DocumentWriter target;
    target->WriteStartElement("a", "r", "urn:a");
    *target = settings;
    EXPECT_STREQ(NameOf(target->GetWriteState()), "Element");
    target->WriteStartElement("e", "urn:a");
    target->WriteAttributeString("x", "1");
    XmlTextWriter& same = *target;
    *target = same;
    target->WriteEndDocument();
    EXPECT_EQ(target.Text().substr(0, 5), "<a:r ");
    EXPECT_EQ(target.Text().substr(target.Text().find('>')), "><a:e x='1'/></a:r>");
}

using XmlTextWriterFile = support::FileTest;

TEST_F(XmlTextWriterFile, IsWrittenAndClosed) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    XmlTextWriter writer(path.c_str(), &encoding);
    EXPECT_STREQ(NameOf(writer.GetWriteState()), "Start");
    EXPECT_TRUE(writer.CloseOutput());
    writer.WriteStartElement("r");
    writer.WriteString(std::string(200'000, 'x'));
    writer.Close();
    EXPECT_EQ(Content(path), "<r>" + std::string(200'000, 'x') + "</r>");
    // The file is closed: another may take it, which a lock would prevent.
    EXPECT_NO_THROW(
        IO::FileStream(path.c_str(), IO::FileMode::Open, support::kReadWrite, support::kDenyAll));
}

TEST_F(XmlTextWriterFile, ReplacesWhatWasThere) {
    Xml::UTF8Encoding encoding(true, false);
    const std::string path = Make("a.xml", "a longer content than what comes");
    XmlTextWriter writer(astring(path), &encoding);
    writer.WriteStartElement("r");
    writer.Close();
    EXPECT_EQ(Content(path), "\xEF\xBB\xBF<r/>");
}

TEST_F(XmlTextWriterFile, IsNotMadeWithoutAnEncoding) {
    const std::string path = Path("a.xml");
    EXPECT_THROW_FULL(XmlTextWriter(path.c_str(), nullptr), "Invalid Argument: a_Encoding", "", -1,
                      -1);
    EXPECT_THROW_FULL(XmlTextWriter(astring(path), nullptr), "Invalid Argument: a_Encoding", "", -1,
                      -1);
    EXPECT_FALSE(std::filesystem::exists(path));
    const std::string there = Make("b.xml", "kept");
    EXPECT_THROW_FULL(XmlTextWriter(there.c_str(), nullptr), "Invalid Argument: a_Encoding", "", -1,
                      -1);
    EXPECT_EQ(Content(there), "kept");
}

TEST_F(XmlTextWriterFile, ThatCannotBeMadeThrows) {
    Xml::UTF8Encoding encoding;
    EXPECT_THROW(XmlTextWriter(Path("none/a.xml").c_str(), &encoding), Xml::Exception);
    EXPECT_THROW(XmlTextWriter(Path("").c_str(), &encoding), Xml::Exception);
}

TEST_F(XmlTextWriterFile, KeepsOthersFromWriting) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    const XmlTextWriter writer(path.c_str(), &encoding);
    EXPECT_THROW_TEXT(
        IO::FileStream(path.c_str(), IO::FileMode::Open, support::kWrite, support::kDenyWriting),
        "Access denied/sharing violation", -1, -1);
}

TEST_F(XmlTextWriterFile, HoldsWhatWasFlushed) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    {
        XmlTextWriter writer(path.c_str(), &encoding);
        writer.WriteStartElement("r");
        writer.WriteString("flushed");
        writer.Flush();
        EXPECT_EQ(Content(path), "<r>flushed");
        writer.WriteString("lost");
    }
    EXPECT_EQ(Content(path), "<r>flushed");
}

// What has left the writer's buffer is in the file in the end, flushed or not.
TEST_F(XmlTextWriterFile, HoldsWhatLeftTheBuffer) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    {
        XmlTextWriter writer(path.c_str(), &encoding);
        writer.WriteStartElement("r");
        writer.WriteRaw("-");
        writer.Flush();
        writer.WriteString(std::string(1000, 'x'));  // 768 of them leave it
    }
    EXPECT_EQ(Content(path), "<r>-" + std::string(768, 'x'));
}

// Small pieces collect, so that a document does not take a call of the system for each.
TEST_F(XmlTextWriterFile, IsWrittenInLargePieces) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    constexpr std::size_t kPiece = 64 * 1024;
    XmlTextWriter writer(path.c_str(), &encoding);
    writer.WriteStartElement("r");
    std::size_t most = 0;
    for (int i = 0; i < 5000; ++i) {
        writer.WriteString(std::string(100, 'x'));
        const std::size_t size = std::filesystem::file_size(path);
        if (size != most) {
            ASSERT_GT(size, most + kPiece - 2048);
            most = size;
        }
    }
    EXPECT_GT(most, 6 * kPiece);
    writer.Close();
    EXPECT_EQ(Content(path).size(), 500'000 + std::string("<r></r>").size());
}

TEST_F(XmlTextWriterFile, ThatIsFullThrowsAndIsClosed) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows has no file that is always full";
#endif
    Xml::UTF8Encoding encoding;
    XmlTextWriter writer("/dev/full", &encoding);
    writer.WriteStartElement("r");
    EXPECT_THROW_TEXT(writer.Close(), "File write error", -1, -1);
    EXPECT_STREQ(NameOf(writer.GetWriteState()), "Closed");

    XmlTextWriter flushed("/dev/full", &encoding);
    flushed.WriteStartElement("r");
    EXPECT_THROW_TEXT(flushed.Flush(), "File write error", -1, -1);
    EXPECT_STREQ(NameOf(flushed.GetWriteState()), "Closed");

    XmlTextWriter large("/dev/full", &encoding);
    large.WriteStartElement("r");
    EXPECT_THROW_TEXT(large.WriteString(std::string(100'000, 'x')), "File write error", -1, -1);
    EXPECT_STREQ(NameOf(large.GetWriteState()), "Closed");
}

TEST_F(XmlTextWriterFile, TakesAnotherDocumentAfterTheFirst) {
    Xml::UTF8Encoding encoding;
    const std::string path = Path("a.xml");
    XmlTextWriter writer(path.c_str(), &encoding);
    for (int i = 0; i < 2; ++i) {
        writer.WriteStartElement("r");
        writer.WriteEndDocument();
    }
    writer.Close();
    EXPECT_THROW_TEXT(writer.Close(), "Invalid Operation: Writer already closed", -1, -1);
    EXPECT_EQ(Content(path), "<r/><r/>");
}

}  // namespace
