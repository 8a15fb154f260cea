// SPDX-License-Identifier: MIT
#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/EscapedText.h"
#include "support/ExpectThrow.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::DocumentWriter;
using support::Escape;
using support::WriterCalls;
using support::WrittenBy;
using Xml::XmlTextWriter;

using namespace std::string_view_literals;

enum class Form { Bytes, Utf16Little, Utf16Big, Ucs4Little, Ucs4Big, Latin1 };

void AppendUnit(std::string& out, char32_t unit, int size, bool big) {
    for (int i = 0; i < size; ++i)
        out += static_cast<char>(unit >> 8 * (big ? size - 1 - i : i) & 0xFF);
}

// Returns UTF-8 in another form, by the definitions of Unicode and ISO/IEC 8859-1.
std::string InForm(std::string_view text, Form form) {
    if (form == Form::Bytes) return std::string(text);
    const std::optional<std::u32string> codes = support::DecodeUtf8(text);
    EXPECT_TRUE(codes.has_value()) << text;
    std::string out;
    for (const char32_t code : codes.value_or(U"")) {
        const bool big = form == Form::Utf16Big || form == Form::Ucs4Big;
        if (form == Form::Latin1) {
            out += static_cast<char>(code);
        } else if (form == Form::Ucs4Little || form == Form::Ucs4Big) {
            AppendUnit(out, code, 4, big);
        } else if (code < 0x10000) {
            AppendUnit(out, code, 2, big);
        } else {
            AppendUnit(out, 0xD800 + ((code - 0x10000) >> 10), 2, big);
            AppendUnit(out, 0xDC00 + (code & 0x3FF), 2, big);
        }
    }
    return out;
}

struct Target {
    const char* name;
    std::unique_ptr<Xml::Encoding> encoding;
    Form form;
    std::string_view preamble;
    const char* webName;
};

std::vector<Target> Targets() {
    std::vector<Target> targets;
    const auto add = [&targets](const char* name, std::unique_ptr<Xml::Encoding> encoding,
                                Form form, std::string_view preamble, const char* webName) {
        targets.push_back({name, std::move(encoding), form, preamble, webName});
    };
    using Xml::Ucs4UnicodeEncoding;
    using Xml::UnicodeEncoding;
    using Xml::UTF8Encoding;
    add("UTF-8", std::make_unique<UTF8Encoding>(), Form::Bytes, "", "UTF-8");
    add("UTF-8 with a mark", std::make_unique<UTF8Encoding>(true, false), Form::Bytes,
        "\xEF\xBB\xBF", "UTF-8");
    add("UTF-16LE", std::make_unique<UnicodeEncoding>(false, false, false), Form::Utf16Little, "",
        "UTF-16LE");
    add("UTF-16LE with a mark", std::make_unique<UnicodeEncoding>(false, true, false),
        Form::Utf16Little, "\xFF\xFE", "UTF-16LE");
    add("UTF-16BE with a mark", std::make_unique<UnicodeEncoding>(true, true, false),
        Form::Utf16Big, "\xFE\xFF", "UTF-16BE");
    add("UTF-16", std::make_unique<UnicodeEncoding>(), Form::Utf16Little, "", "UTF-16");
    add("UCS-4LE with a mark", std::make_unique<Ucs4UnicodeEncoding>(false, true, false),
        Form::Ucs4Little, "\xFF\xFE\0\0"sv, "UTF-16LE");
    add("UCS-4BE with a mark", std::make_unique<Ucs4UnicodeEncoding>(true, true, false),
        Form::Ucs4Big, "\0\0\xFE\xFF"sv, "UTF-16BE");
    add("ISO-8859-1", std::make_unique<Xml::Latin1Encoding>(false), Form::Latin1, "", "iso-8859-1");
    return targets;
}

TEST(XmlTextWriterDocument, EveryEncodingWritesTheWholeDocument) {
    for (const Target& target : Targets()) {
        SCOPED_TRACE(target.name);
        DocumentWriter writer(target.encoding.get());
        writer->SetNewLineChars("\n");
        const bool wide = target.form != Form::Latin1;
        const std::string text = wide ? "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80" : "\xC3\xA9";
        writer->WriteStartDocument(true);
        writer->WriteDocType("r", "p", "s", "<!ENTITY n 'v'>");
        writer->WriteStartElement("r", "urn:x");
        writer->WriteAttributeString("x", text + "<\t");
        writer->WriteString(text + "&\n");
        writer->WriteCData(text);
        writer->WriteComment(text);
        writer->WriteProcessingInstruction("p", text);
        writer->WriteEntityRef("n");
        writer->WriteRaw(text);
        writer->WriteStartElement("e\xC3\xA9");
        writer->WriteFullEndElement();
        writer->WriteEndDocument();

        std::string expected = "<?xml version=\"1.0\" encoding=\"";
        expected += target.webName;
        expected += "\" standalone=\"yes\"?><!DOCTYPE r PUBLIC \"p\" \"s\" [<!ENTITY n 'v'>]>";
        expected += "<r x=\"" + text + "&lt;&#x9;\" xmlns=\"urn:x\">" + text + "&amp;\n";
        expected += "<![CDATA[" + text + "]]><!--" + text + "--><?p " + text + "?>&n;" + text;
        expected += "<e\xC3\xA9><e\xC3\xA9>";
        expected += "\0</r>"sv;
        EXPECT_EQ(Escape(writer.Text()),
                  Escape(std::string(target.preamble) + InForm(expected, target.form)));
    }
}

TEST(XmlTextWriterDocument, TheFirstElementWritesThePreambleToo) {
    for (const Target& target : Targets()) {
        SCOPED_TRACE(target.name);
        DocumentWriter writer(target.encoding.get());
        writer->WriteStartElement("r");
        writer->WriteStartElement("e");
        writer->WriteEndDocument();
        EXPECT_EQ(Escape(writer.Text()),
                  Escape(std::string(target.preamble) + InForm("<r><e/></r>", target.form)));
    }
}

// What comes first without a declaration goes out without the preamble, and none follows.
TEST(XmlTextWriterDocument, OtherMarkupFirstWritesNoPreamble) {
    const struct {
        WriterCalls call;
        const char* expected;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteComment("c"); }, "<!--c--><r/>"},
        {[](XmlTextWriter& w) { w.WriteProcessingInstruction("p", "d"); }, "<?p d?><r/>"},
        {[](XmlTextWriter& w) { w.WriteDocType("r", "", "", ""); }, "<!DOCTYPE r><r/>"},
    };
    for (const auto& c : kCases) {
        Xml::UTF8Encoding encoding(true, false);
        DocumentWriter writer(&encoding);
        c.call(*writer);
        writer->WriteStartElement("r");
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), c.expected);
    }
}

TEST(XmlTextWriterDocument, ThePreambleIsWrittenOnceADocument) {
    Xml::UTF8Encoding encoding(true, false);
    DocumentWriter writer(&encoding);
    writer->WriteStartDocument();
    writer->WriteStartElement("r");
    writer->WriteEndDocument();
    writer->WriteStartElement("s");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(),
              "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>\xEF\xBB\xBF<s/>");
}

TEST(XmlTextWriterDocument, DeclarationAndStartTagStandOnOneLine) {
    DocumentWriter writer(Xml::Encoding::UTF8());
    writer->WriteStartDocument(true);
    writer->WriteStartElement("root");
    EXPECT_EQ(writer.Text(),
              "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?><root");
}

TEST(XmlTextWriterDocument, MarkupTakesTheQuoteCharacter) {
    DocumentWriter writer;
    writer->SetQuoteChar('\'');
    writer->WriteStartDocument(false);
    writer->WriteDocType("r", "p", "s", "");
    writer->WriteStartElement("r");
    writer->WriteAttributeString("x", "'\"");
    writer->WriteStartAttribute("y");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(),
              "<?xml version='1.0' encoding='UTF-8' standalone='no'?><!DOCTYPE r PUBLIC 'p' 's'>"
              "<r x='&apos;&quot;' y=''/>");
}

TEST(XmlTextWriterDocument, DocumentTypes) {
    const struct {
        const char* publicId;
        const char* systemId;
        const char* subset;
        const char* expected;
    } kCases[] = {
        {"", "", "", "<!DOCTYPE d>"},
        {nullptr, nullptr, nullptr, "<!DOCTYPE d>"},
        {"p", "s", "", "<!DOCTYPE d PUBLIC \"p\" \"s\">"},
        {"p", "", "", "<!DOCTYPE d PUBLIC \"p\" \"\">"},
        {"p", nullptr, nullptr, "<!DOCTYPE d PUBLIC \"p\" \"\">"},
        {"", "s", "", "<!DOCTYPE d SYSTEM \"s\">"},
        {nullptr, "s", "x", "<!DOCTYPE d SYSTEM \"s\" [x]>"},
        {"", "", "<!ELEMENT d ANY>\n", "<!DOCTYPE d [<!ELEMENT d ANY>\n]>"},
        {"p", "s", "<&>", "<!DOCTYPE d PUBLIC \"p\" \"s\" [<&>]>"},
        {"p&<", "s\"'", "", "<!DOCTYPE d PUBLIC \"p&<\" \"s\"'\">"},
    };
    for (const auto& c : kCases) {
        DocumentWriter writer;
        writer->WriteDocType("d", c.publicId, c.systemId, c.subset);
        EXPECT_EQ(writer.Text(), c.expected);
    }
}

TEST(XmlTextWriterDocument, TheRootHasTheNameOfTheDocumentType) {
    const char kMessage[] = "Invalid Argument: Root element name does not match document type";
    DocumentWriter writer;
    writer->WriteDocType("d", "", "", "");
    EXPECT_THROW_FULL(writer->WriteStartElement("e"), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteElementString("D", "t"), kMessage, "", -1, -1);
    EXPECT_THROW_FULL(writer->WriteStartElement("d", "e", "urn:x"), kMessage, "", -1, -1);
    EXPECT_EQ(writer->GetWriteState(), Xml::WriteState::Prolog);
    writer->WriteStartElement("p", "d", "urn:x");
    writer->WriteStartElement("e");
    writer->WriteEndDocument();
    writer->WriteStartElement("other");
    writer->WriteEndDocument();
    EXPECT_EQ(writer.Text(), "<!DOCTYPE d><p:d xmlns:p=\"urn:x\"><e/></p:d><other/>");
}

TEST(XmlTextWriterDocument, WhatEndsMarkupIsNotLookedFor) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteCData("a]]>b");
    writer->WriteComment("a--b-");
    writer->WriteProcessingInstruction("p", "a?>b");
    EXPECT_EQ(writer.Text(), "<r><![CDATA[a]]>b]]><!--a--b---><?p a?>b?>");
}

TEST(XmlTextWriterDocument, EmptyTexts) {
    const struct {
        WriterCalls call;
        const char* expected;
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteCData(""); }, "<![CDATA[]]>"},
        {[](XmlTextWriter& w) { w.WriteCData(nullptr); }, "<![CDATA[]]>"},
        {[](XmlTextWriter& w) { w.WriteComment(""); }, "<!---->"},
        {[](XmlTextWriter& w) { w.WriteComment(nullptr); }, "<!---->"},
        {[](XmlTextWriter& w) { w.WriteProcessingInstruction("p", ""); }, "<?p ?>"},
        {[](XmlTextWriter& w) { w.WriteProcessingInstruction("p", nullptr); }, "<?p ?>"},
        {[](XmlTextWriter& w) { w.WriteString(""); }, ""},
        {[](XmlTextWriter& w) { w.WriteString(nullptr); }, ""},
        {[](XmlTextWriter& w) { w.WriteWhitespace(nullptr); }, ""},
        {[](XmlTextWriter& w) { w.WriteRaw(nullptr); }, ""},
        {[](XmlTextWriter& w) { w.WriteRaw(nullptr, 0); }, ""},
        {[](XmlTextWriter& w) { w.WriteRaw("abc", 0); }, ""},
        {[](XmlTextWriter& w) { w.WriteRaw("abc", -1); }, ""},
        {[](XmlTextWriter& w) { w.WriteRaw("abc", 3); }, "abc"},
        {[](XmlTextWriter& w) { w.WriteRaw("a\0<c", 4); }, nullptr},
    };
    for (const auto& c : kCases) {
        DocumentWriter writer;
        writer->WriteStartElement("r");
        writer->WriteRaw("-");
        writer.Take();
        c.call(*writer);
        EXPECT_EQ(writer.Take(), c.expected == nullptr ? std::string("a\0<c", 4) : c.expected);
    }
}

TEST(XmlTextWriterDocument, EmptyAttributes) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteAttributeString("x", "");
    writer->WriteAttributeString("y", nullptr);
    writer->WriteStartAttribute("z");
    writer->WriteEndAttribute();
    EXPECT_EQ(writer.Text(), "<r x=\"\" y=\"\" z=\"\"");
}

// Deliberate: WriteFullEndElement() writes "<" and not "</", and a NUL behind the tag.
TEST(XmlTextWriterDocument, DeliberateFullEndElementsAreWrittenWithANul) {
    DocumentWriter writer;
    writer->WriteStartElement("a", "r", "urn:a");
    writer->WriteStartElement("e");
    writer->WriteAttributeString("x", "1");
    writer->WriteFullEndElement();
    writer->WriteString("t");
    writer->WriteFullEndElement();
    EXPECT_EQ(Escape(writer.Text()), Escape("<a:r xmlns:a=\"urn:a\"><e x=\"1\"><e>\0t<a:r>\0"sv));
}

TEST(XmlTextWriterDocument, NamesAndTokens) {
    const struct {
        std::string_view text;
        bool isName;
        bool isToken;
    } kCases[] = {
        {"a", true, true},
        {"A1", true, true},
        {"_", true, true},
        {"a-b.c_d", true, true},
        {"a:b", true, true},
        {"\xC3\xA9t\xC3\xA9", true, true},
        {"\xCE\xB1", true, true},
        {"1", false, true},
        {"-a", false, true},
        {".", false, true},
        {"\xCC\x80"
         "a",
         false, true},  // a combining character
        {" ", false, false},
        {"a b", false, false},
        {"a ", false, false},
        {"a<", false, false},
        {"a>", false, false},
        {"a&b", false, false},
        {"a;", false, false},
        {"a\"", false, false},
        {"a/b", false, false},
        {"a=b", false, false},
        {"a\xE2\x82\xAC", false, false},  // the euro sign
        {"a\xF0\x9F\x98\x80", false, false},
        {"a\xC3", false, false},
        {"a\x01", false, false},
        {"a\0b"sv, false, false},
    };
    const char kNoName[] = "Invalid Argument: Not a valid XML name";
    for (const bool check : {true, false}) {
        for (const auto& c : kCases) {
            SCOPED_TRACE(Escape(c.text));
            DocumentWriter writer;
            writer->SetCheckCharacters(check);
            writer->WriteStartElement("r");
            writer->WriteRaw("-");
            writer.Take();
            const std::string text(c.text);
            if (c.isName) {
                writer->WriteName(text);
                writer->WriteEntityRef(text);
                writer->WriteProcessingInstruction(text, "d");
                EXPECT_EQ(writer.Take(), text + "&" + text + ";<?" + text + " d?>");
            } else {
                EXPECT_THROW_FULL(writer->WriteName(text), kNoName, "", -1, -1);
                EXPECT_THROW_FULL(writer->WriteEntityRef(text), kNoName, "", -1, -1);
                EXPECT_THROW_FULL(writer->WriteProcessingInstruction(text, "d"), kNoName, "", -1,
                                  -1);
                DocumentWriter doctype;
                EXPECT_THROW_FULL(doctype->WriteDocType(text, "", "", ""), kNoName, "", -1, -1);
                EXPECT_EQ(doctype.Text(), "");
            }
            if (c.isToken) {
                writer->WriteNmToken(text);
                EXPECT_EQ(writer.Take(), text);
            } else {
                EXPECT_THROW_FULL(writer->WriteNmToken(text),
                                  "Invalid Argument: Not a valid Nmtoken", "", -1, -1);
            }
            EXPECT_EQ(writer.Take(), "");
        }
    }
}

TEST(XmlTextWriterDocument, TextsOfEveryTypeGiveTheSame) {
    const auto write = [](const auto& text) {
        DocumentWriter writer;
        writer->WriteStartElement(text);
        writer->WriteAttributeString(text, text);
        writer->WriteStartAttribute(text, text);
        writer->WriteName(text);
        writer->WriteEndAttribute();
        writer->WriteElementString(text, text, text, text);
        writer->WriteString(text);
        writer->WriteCData(text);
        writer->WriteComment(text);
        writer->WriteProcessingInstruction(text, text);
        writer->WriteEntityRef(text);
        writer->WriteNmToken(text);
        writer->WriteRaw(text);
        writer->WriteEndDocument();
        writer->WriteDocType(text, text, text, text);
        return writer.Text();
    };
    const char kExpected[] =
        "<ab ab=\"ab\" ns1:ab=\"ab\" xmlns:ns1=\"ab\"><ab:ab xmlns:ab=\"ab\">ab</ab:ab>ab"
        "<![CDATA[ab]]><!--ab--><?ab ab?>&ab;abab</ab><!DOCTYPE ab PUBLIC \"ab\" \"ab\" [ab]>";
    EXPECT_EQ(write("ab"), kExpected);
    EXPECT_EQ(write(astring("ab")), kExpected);
    EXPECT_EQ(write(std::string("ab")), kExpected);
    EXPECT_EQ(write(std::string_view("abc").substr(0, 2)), kExpected);
}

TEST(XmlTextWriterDocument, ATextMayHoldANul) {
    DocumentWriter writer;
    writer->SetCheckCharacters(false);
    writer->WriteStartElement("r");
    writer->WriteString("a\0<"sv);
    writer->WriteComment("\0"sv);
    EXPECT_EQ(Escape(writer.Text()), Escape("<r>a\0&lt;<!--\0-->"sv));
}

TEST(XmlTextWriterDocument, EndDocumentClosesAllThatIsOpen) {
    EXPECT_EQ(WrittenBy([](XmlTextWriter& w) {
                  w.WriteStartElement("a");
                  w.WriteStartElement("b");
                  w.WriteString("t");
                  w.WriteStartElement("c");
                  w.WriteStartAttribute("x");
                  w.WriteString("v");
                  w.WriteEndDocument();
              }),
              "<a><b>t<c x=\"v\"/></b></a>");
}

}  // namespace
