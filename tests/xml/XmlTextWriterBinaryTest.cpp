// SPDX-License-Identifier: MIT
//
// Bytes as text: base64 is compared with an encoder that goes bit by bit.
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/ExpectThrow.h"
#include "support/FailingStream.h"
#include "support/MemoryWriter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::MemoryWriter;
using Xml::WriteState;
using Xml::XmlTextWriter;
using Bytes = std::vector<unsigned char>;

enum class Form { Base64, BinHex };

constexpr Form kForms[] = {Form::Base64, Form::BinHex};
constexpr std::size_t kLine = 76;
constexpr char kClosed[] = "Invalid Operation: Writer closed";
constexpr char kNotAllowed[] = "Invalid Operation: Text not allowed in this state";

void Write(XmlTextWriter& writer, Form form, const unsigned char* bytes, int offset, int count) {
    if (form == Form::Base64) {
        writer.WriteBase64(bytes, offset, count);
    } else {
        writer.WriteBinHex(bytes, offset, count);
    }
}

void Write(XmlTextWriter& writer, Form form, const Bytes& bytes) {
    Write(writer, form, bytes.data(), 0, static_cast<int>(bytes.size()));
}

Bytes BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

// Bytes of all values in an order without a period of three.
Bytes Pattern(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = static_cast<unsigned char>((i * 37 + i / 256 + 11) & 0xFF);
    return bytes;
}

// Takes bits from the front, 6 or 4 at a time.
std::string Digits(const Bytes& bytes, unsigned width, std::string_view alphabet) {
    std::string out;
    unsigned held = 0;
    unsigned bits = 0;
    for (const unsigned char byte : bytes) {
        for (unsigned bit = 8; bit-- > 0;) {
            held = held << 1 | ((static_cast<unsigned>(byte) >> bit) & 1U);
            if (++bits < width) continue;
            out += alphabet[held];
            held = bits = 0;
        }
    }
    if (bits > 0) out += alphabet[held << (width - bits)];
    return out;
}

std::string Unbroken(Form form, const Bytes& bytes) {
    if (form == Form::BinHex) return Digits(bytes, 4, "0123456789ABCDEF");
    std::string text =
        Digits(bytes, 6, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

// The text in lines. A line that whole groups fill is followed by a line break, the last one too;
// one that the padded end fills is not.
std::string Expected(Form form, const Bytes& bytes, std::string_view newLine = "\r\n") {
    const std::string text = Unbroken(form, bytes);
    std::string out;
    for (std::size_t at = 0; at < text.size(); at += kLine) {
        const std::string line = text.substr(at, kLine);
        out += line;
        if (line.size() == kLine && line.back() != '=') out += newLine;
    }
    return out;
}

std::string InElement(Form form, const Bytes& bytes) {
    MemoryWriter writer;
    writer->WriteStartElement("a");
    Write(*writer, form, bytes);
    return writer.Text();
}

std::string WithoutStart(const std::string& text) {
    EXPECT_EQ(text.substr(0, 3), "<a>");
    return text.substr(3);
}

TEST(XmlTextWriterBinary, TheVectorsOfRfc4648) {
    constexpr struct {
        const char* bytes;
        const char* base64;
        const char* hexadecimal;
    } kCases[] = {
        {"f", "Zg==", "66"},
        {"fo", "Zm8=", "666F"},
        {"foo", "Zm9v", "666F6F"},
        {"foob", "Zm9vYg==", "666F6F62"},
        {"fooba", "Zm9vYmE=", "666F6F6261"},
        {"foobar", "Zm9vYmFy", "666F6F626172"},
        {"abc", "YWJj", "616263"},
        {"\xFF", "/w==", "FF"},
        {"\xFF\xFF", "//8=", "FFFF"},
        {"\xFB\xEF\xBE", "++++", "FBEFBE"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.base64);
        EXPECT_EQ(InElement(Form::Base64, BytesOf(c.bytes)), std::string("<a>") + c.base64);
        EXPECT_EQ(InElement(Form::BinHex, BytesOf(c.bytes)), std::string("<a>") + c.hexadecimal);
    }
}

TEST(XmlTextWriterBinary, HexadecimalHasTheHighHalfFirstAndCapitals) {
    EXPECT_EQ(InElement(Form::BinHex, {0x00, 0xAB}), "<a>00AB");
}

TEST(XmlTextWriterBinary, EveryByteIsWritten) {
    Bytes all;
    for (unsigned byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<unsigned char>(byte));
    for (const Form form : kForms)
        EXPECT_EQ(WithoutStart(InElement(form, all)), Expected(form, all));
}

TEST(XmlTextWriterBinary, EveryLengthIsWrittenInLines) {
    int count = 0;
    for (std::size_t length = 1; length <= 700; ++length, ++count) {
        SCOPED_TRACE(length);
        const Bytes bytes = Pattern(length);
        for (const Form form : kForms)
            ASSERT_EQ(WithoutStart(InElement(form, bytes)), Expected(form, bytes));
    }
    EXPECT_EQ(count, 700);
}

TEST(XmlTextWriterBinary, ALongTextIsWhole) {
    for (const std::size_t length : {5000U, 65536U, 100001U, 100002U}) {
        SCOPED_TRACE(length);
        const Bytes bytes = Pattern(length);
        for (const Form form : kForms)
            EXPECT_TRUE(WithoutStart(InElement(form, bytes)) == Expected(form, bytes));
    }
}

TEST(XmlTextWriterBinary, ALineThatIsFullEndsInTheNewLineCharactersAlsoWhereTheDataEnd) {
    const std::string base64 = InElement(Form::Base64, Pattern(57));
    EXPECT_EQ(base64.size(), 3 + kLine + 2);
    EXPECT_EQ(base64.substr(3 + kLine), "\r\n");
    const std::string hexadecimal = InElement(Form::BinHex, Pattern(38));
    EXPECT_EQ(hexadecimal.size(), 3 + kLine + 2);
    EXPECT_EQ(hexadecimal.substr(3 + kLine), "\r\n");
}

TEST(XmlTextWriterBinary, NoLineBreakFollowsThePaddedEnd) {
    const std::string full = InElement(Form::Base64, Pattern(56));
    EXPECT_EQ(full.size(), 3 + kLine);
    EXPECT_EQ(full.back(), '=');
    const std::string begun = InElement(Form::Base64, Pattern(58));
    EXPECT_EQ(begun.size(), 3 + kLine + 2 + 4);
    EXPECT_EQ(begun.substr(begun.size() - 2), "==");
}

TEST(XmlTextWriterBinary, TheLineBreakIsThatOfTheWriter) {
    for (const char* newLine : {"\n", "\r", " ", "\r\n\t\n", ""}) {
        MemoryWriter writer;
        writer->SetNewLineChars(newLine);
        writer->WriteStartElement("a");
        const Bytes bytes = Pattern(200);
        for (const Form form : kForms)
            Write(*writer, form, bytes);
        EXPECT_EQ(writer.Text(), "<a>" + Expected(Form::Base64, bytes, newLine) +
                                     Expected(Form::BinHex, bytes, newLine));
    }
}

TEST(XmlTextWriterBinary, TheHandlingOfNewLinesDoesNotMatter) {
    using Xml::NewLineHandling;
    for (const auto mode :
         {NewLineHandling::NoHandling, NewLineHandling::Entitize, NewLineHandling::Replace}) {
        for (const Form form : kForms) {
            MemoryWriter writer;
            writer->SetNewLineHandling(NewLineHandling(mode));
            writer->WriteStartElement("a");
            Write(*writer, form, Pattern(100));
            EXPECT_EQ(writer.Text(), "<a>" + Expected(form, Pattern(100)));
        }
    }
}

TEST(XmlTextWriterBinary, EachCallBeginsALineOfItsOwn) {
    for (const Form form : kForms) {
        MemoryWriter writer;
        writer->WriteStartElement("a");
        Write(*writer, form, Pattern(30));
        Write(*writer, form, Pattern(57));
        EXPECT_EQ(writer.Text(), "<a>" + Expected(form, Pattern(30)) + Expected(form, Pattern(57)));
    }
}

TEST(XmlTextWriterBinary, TheOffsetSaysWhereTheBytesBegin) {
    const Bytes bytes = BytesOf("xyabcz");
    MemoryWriter writer;
    writer->WriteStartElement("a");
    writer->WriteBase64(bytes.data(), 2, 3);
    writer->WriteBinHex(bytes.data(), 2, 3);
    EXPECT_EQ(writer.Text(), "<a>YWJj616263");
}

TEST(XmlTextWriterBinary, ANegativeOffsetIsTakenFromTheCount) {
    const Bytes bytes = BytesOf("abc");
    for (const Form form : kForms) {
        MemoryWriter writer;
        writer->WriteStartElement("a");
        Write(*writer, form, bytes.data(), -2, 5);
        const std::string expected = "<a>" + Unbroken(form, bytes);
        EXPECT_EQ(writer.Text(), expected);
        Write(*writer, form, bytes.data(), -5, 5);
        Write(*writer, form, bytes.data(), -2147483647 - 1, 2147483647);
        EXPECT_EQ(writer.Text(), expected);
    }
}

TEST(XmlTextWriterBinary, WithoutBytesOnlyTheStartTagIsClosed) {
    for (const Form form : kForms) {
        for (const int count : {3, 0, -1, -2147483647 - 1}) {  // 3 of no buffer
            MemoryWriter writer;
            writer->WriteStartElement("a");
            Write(*writer, form, nullptr, 0, count);
            EXPECT_EQ(writer->GetWriteState(), WriteState::Content);
            EXPECT_EQ(writer.Text(), "<a>");
        }
    }
}

TEST(XmlTextWriterBinary, WithoutBytesTheStateIsStillChecked) {
    for (const Form form : kForms) {
        MemoryWriter writer;
        EXPECT_THROW_FULL(Write(*writer, form, nullptr, 0, 0), kNotAllowed, "", -1, -1);
        writer->Close();
        EXPECT_THROW_FULL(Write(*writer, form, nullptr, 0, 0), kClosed, "", -1, -1);
    }
}

TEST(XmlTextWriterBinary, TextMustBeAllowed) {
    const Bytes bytes = BytesOf("abc");
    for (const Form form : kForms) {
        MemoryWriter writer;
        EXPECT_THROW_FULL(Write(*writer, form, bytes), kNotAllowed, "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Start);
        writer->WriteComment("c");
        EXPECT_THROW_FULL(Write(*writer, form, bytes), kNotAllowed, "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Prolog);
        writer->WriteStartElement("a");
        writer->WriteEndElement();
        EXPECT_THROW_FULL(Write(*writer, form, bytes), kNotAllowed, "", -1, -1);
        EXPECT_EQ(writer.Text(), "<!--c--><a/>");
        writer->Close();
        EXPECT_THROW_FULL(Write(*writer, form, bytes), kClosed, "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Closed);
        XmlTextWriter none;
        EXPECT_THROW_FULL(Write(none, form, bytes), kClosed, "", -1, -1);
    }
}

TEST(XmlTextWriterBinary, TheStartTagIsClosedFirst) {
    for (const Form form : kForms) {
        MemoryWriter writer;
        writer->WriteStartElement("p", "a", "urn:p");
        writer->WriteAttributeString("x", "1");
        Write(*writer, form, BytesOf("abc"));
        EXPECT_EQ(writer->GetWriteState(), WriteState::Content);
        Write(*writer, form, BytesOf("abc"));
        EXPECT_EQ(writer->GetWriteState(), WriteState::Content);
        writer->WriteEndElement();
        const std::string text = Unbroken(form, BytesOf("abc"));
        EXPECT_EQ(writer.Text(), R"(<p:a x="1" xmlns:p="urn:p">)" + text + text + "</p:a>");
    }
}

TEST(XmlTextWriterBinary, AnAttributeTakesTheTextAndTheLineBreaksAsTheyAre) {
    for (const Form form : kForms) {
        MemoryWriter writer;
        writer->WriteStartElement("a");
        writer->WriteStartAttribute("x");
        Write(*writer, form, Pattern(100));
        EXPECT_EQ(writer->GetWriteState(), WriteState::Attribute);
        writer->WriteEndAttribute();
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), "<a x=\"" + Expected(form, Pattern(100)) + "\"/>");
    }
}

TEST(XmlTextWriterBinary, TheEndTagOfAnElementWithBytesIsNotIndented) {
    for (const Form form : kForms) {
        MemoryWriter writer;
        writer->SetFormatting(Xml::Formatting::Indented);
        writer->WriteStartElement("r");
        writer->WriteStartElement("a");
        Write(*writer, form, BytesOf("abc"));
        writer->WriteEndElement();
        writer->WriteEndElement();
        EXPECT_EQ(writer.Text(), "<r>\r\n  <a>" + Unbroken(form, BytesOf("abc")) + "</a>\r\n</r>");
    }
}

// Encodings.

std::string InUtf16(std::string_view ascii, bool bigEndian) {
    std::string out;
    for (const char c : ascii) {
        if (bigEndian) out += '\0';
        out += c;
        if (!bigEndian) out += '\0';
    }
    return out;
}

std::string InUcs4(std::string_view ascii) {
    std::string out;
    for (const char c : ascii)
        out += c + std::string(3, '\0');
    return out;
}

TEST(XmlTextWriterBinary, Utf16HasTheSameText) {
    for (const bool bigEndian : {false, true}) {
        for (std::size_t length = 1; length <= 900; length += 7) {
            const Bytes bytes = Pattern(length);
            for (const Form form : kForms) {
                Xml::UnicodeEncoding encoding(bigEndian, false, false);
                MemoryWriter writer(encoding);
                writer->WriteStartElement("a");
                Write(*writer, form, bytes);
                writer->Close();
                ASSERT_TRUE(writer.Text() ==
                            InUtf16("<a>" + Expected(form, bytes) + "</a>", bigEndian))
                    << length;
            }
        }
    }
}

TEST(XmlTextWriterBinary, Ucs4HasTheSameTextThoughALineTakesMoreThanTheRoomAskedFor) {
    for (const Form form : kForms) {
        for (std::size_t length = 1; length <= 900; length += 7) {
            const Bytes bytes = Pattern(length);
            Xml::Ucs4UnicodeEncoding encoding(false, false, false);
            MemoryWriter writer(encoding);
            writer->WriteStartElement("a");
            Write(*writer, form, bytes);
            writer->Close();
            ASSERT_TRUE(writer.Text() == InUcs4("<a>" + Expected(form, bytes) + "</a>")) << length;
        }
    }
}

TEST(XmlTextWriterBinary, ByteOrderMarksComeOnce) {
    Xml::UnicodeEncoding encoding(false, true, false);
    MemoryWriter writer(encoding);
    writer->WriteStartElement("a");
    writer->WriteBase64(Pattern(60).data(), 0, 60);
    EXPECT_EQ(writer.Text(),
              "\xFF\xFE" + InUtf16("<a>" + Expected(Form::Base64, Pattern(60)), false));
}

// When the buffer of 1024 bytes goes to the stream: before a line when fewer than 152 are free.

std::vector<std::string> WritesOf(Xml::Encoding& encoding, Form form, const char* newLine) {
    MemoryWriter writer(encoding);
    writer->SetNewLineChars(newLine);
    writer->WriteStartElement("a");
    Write(*writer, form, Pattern(2400));
    return writer.stream().TakeCalls();
}

std::vector<std::string> FirstTwo(std::vector<std::string> calls) {
    if (calls.size() > 2) calls.resize(2);
    return calls;
}

TEST(XmlTextWriterBinary, TheBufferIsWrittenBeforeALineThatFindsFewerThan152BytesFree) {
    // "<a>" and 12 lines of 76 are 915 bytes; the 12th found 185 free, the 13th finds 109.
    const std::vector<std::string> plain = {"Write 915", "Write 912"};
    // With line breaks, "<a>" and 12 lines are 939 bytes; the 12th found 163 free.
    const std::vector<std::string> broken = {"Write 939", "Write 936"};
    for (const Form form : kForms) {
        Xml::UTF8Encoding utf8;
        EXPECT_EQ(FirstTwo(WritesOf(utf8, form, "")), plain);
        EXPECT_EQ(FirstTwo(WritesOf(utf8, form, "\r\n")), broken);
    }
}

TEST(XmlTextWriterBinary, TheBufferIsFilledAsFarInSingleBytes) {
    const std::vector<std::string> plain = {"Write 915", "Write 912"};
    for (const Form form : kForms)
        EXPECT_EQ(FirstTwo(WritesOf(*Xml::Encoding::Latin1(), form, "")), plain);
}

TEST(XmlTextWriterBinary, TheBufferIsFilledAsFarInUtf16) {
    // "<a>" is 6 bytes, a line 152; the sixth finds 258 free, the seventh 106.
    const std::vector<std::string> plain = {"Write 918", "Write 912"};
    Xml::UnicodeEncoding utf16(false, false, false);
    for (const Form form : kForms)
        EXPECT_EQ(FirstTwo(WritesOf(utf16, form, "")), plain);
}

TEST(XmlTextWriterBinary, NothingReachesTheStreamBeforeTheBufferIsFull) {
    MemoryWriter writer;
    writer->WriteStartElement("a");
    writer->WriteBase64(Pattern(570).data(), 0, 570);
    EXPECT_TRUE(writer.stream().TakeCalls().empty());
    writer->Flush();
    EXPECT_EQ(writer.stream().TakeCalls(), (std::vector<std::string>{"Write 783", "Flush"}));
}

TEST(XmlTextWriterBinary, ABlockOfItsOwnSizeIsReadNoFurther) {
    for (std::size_t length = 1; length < 130; ++length) {
        const auto block = std::make_unique<unsigned char[]>(length);
        for (const Form form : kForms) {
            MemoryWriter writer;
            writer->WriteStartElement("a");
            Write(*writer, form, block.get(), 0, static_cast<int>(length));
            EXPECT_EQ(WithoutStart(writer.Text()), Expected(form, Bytes(length)));
        }
    }
}

TEST(XmlTextWriterBinary, WhatTheStreamThrowsPassesThroughAndWhatWasWrittenStays) {
    const Bytes bytes = Pattern(5000);
    for (const Form form : kForms) {
        const std::string whole = "<a>" + Expected(form, bytes);
        for (int call = 1; call <= 5; ++call) {
            SCOPED_TRACE(call);
            support::RecordingStream stream;
            support::FailingStream failing(stream, call, support::Failure::Throw);
            Xml::UTF8Encoding utf8;
            XmlTextWriter writer(&failing, &utf8);
            writer.WriteStartElement("a");
            EXPECT_THROW_TEXT(Write(writer, form, bytes), support::FailingStream::kMessage, -1, -1);
            const WriteState state = writer.GetWriteState();
            EXPECT_TRUE(state == WriteState::Closed || state == WriteState::Element);
            EXPECT_EQ(stream.Content(), whole.substr(0, stream.Content().size()));
            EXPECT_EQ(stream.Content().empty(), call == 1);
        }
    }
}

}  // namespace
