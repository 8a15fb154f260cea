// SPDX-License-Identifier: MIT

// Characters that the encoding of the output cannot write, and bytes that are none.

#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentWriter;
using support::WriterCalls;
using Xml::XmlTextWriter;

// What an encoding cannot write is a reference where one may stand, and "?" elsewhere.
TEST(XmlTextWriterEncoding, CharactersThatTheEncodingLacks) {
    Xml::Latin1Encoding latin1(false);
    Xml::ASCIIEncoding ascii(false);
    const struct {
        Xml::Encoding& encoding;
        WriterCalls calls;
        const char* expected;
    } kCases[] = {
        {latin1, [](XmlTextWriter& w) { w.WriteString("a\xE2\x82\xAC\xC3\xA9\xF0\x9F\x8C\xB3."); },
         "<r>a&#x20AC;\xE9&#x1F333;."},
        {latin1, [](XmlTextWriter& w) { w.WriteString("\xC4\x80\xF4\x8F\xBF\xBF"); },
         "<r>&#x100;&#x10FFFF;"},
        {latin1, [](XmlTextWriter& w) { w.WriteAttributeString("x", "<\xE2\x82\xAC"); },
         "<r x=\"&lt;&#x20AC;\""},
        // U+FFFF passes as text, but no reference to it is allowed (XML 1.0 [66]).
        {latin1, [](XmlTextWriter& w) { w.WriteString("a\xEF\xBF\xBFz"); }, "<r>a?z"},
        {latin1,
         [](XmlTextWriter& w) {
             w.WriteStartElement("e", "urn:\xE2\x82\xAC");
             w.WriteString("");
         },
         "<r><e xmlns=\"urn:&#x20AC;\">"},
        {latin1, [](XmlTextWriter& w) { w.WriteComment("a\xE2\x82\xACz"); }, "<r><!--a?z-->"},
        {latin1, [](XmlTextWriter& w) { w.WriteCData("a\xE2\x82\xACz"); }, "<r><![CDATA[a?z]]>"},
        {latin1, [](XmlTextWriter& w) { w.WriteProcessingInstruction("p", "\xE2\x82\xAC"); },
         "<r><?p ?"
         "?>"},
        {latin1, [](XmlTextWriter& w) { w.WriteRaw("\xE2\x82\xAC&amp;"); }, "<r>?&amp;"},
        {latin1, [](XmlTextWriter& w) { w.WriteStartElement("e\xC4\x80\xC3\xA9"); }, "<r><e?\xE9"},
        {ascii, [](XmlTextWriter& w) { w.WriteString("\xC3\xA9\xE2\x82\xAC"); }, "<r>\xE9&#x20AC;"},
    };
    for (const auto& [encoding, calls, expected] : kCases) {
        SCOPED_TRACE(expected);
        DocumentWriter writer(&encoding);
        writer->WriteStartElement("r");
        calls(*writer);
        EXPECT_EQ(writer.Text(), expected);
    }
}

// A text of such characters goes through the buffer like any other.
TEST(XmlTextWriterEncoding, LongTextsThatTheEncodingLacks) {
    Xml::Latin1Encoding latin1(false);
    for (const char* character : {"\xC4\x80", "\xDF\xBF", "\xE2\x82\xAC", "\xF0\x9F\x8C\xB3"}) {
        std::string text;
        for (int i = 0; i < 3000; ++i)
            text += character;
        DocumentWriter one(&latin1);
        one->WriteStartElement("r");
        one->WriteString(character);
        const std::string reference = one.Text().substr(3);
        DocumentWriter writer(&latin1);
        writer->WriteStartElement("r");
        writer->WriteString(text);
        std::string expected = "<r>";
        for (int i = 0; i < 3000; ++i)
            expected += reference;
        EXPECT_EQ(writer.Text(), expected);
    }
}

// Without checks a byte that is no character takes nothing with it.
TEST(XmlTextWriterEncoding, BytesThatAreNoCharactersInOtherEncodings) {
    Xml::UnicodeEncoding utf16(true, false, false);
    Xml::Latin1Encoding latin1(false);
    DocumentWriter wide(&utf16);
    wide->SetCheckCharacters(false);
    wide->WriteStartElement("a\xFF");
    wide->WriteString("b\x80z");
    EXPECT_EQ(wide.Text(), std::string("\0<\0a\0?\0>\0b\0?\0z", 14));
    DocumentWriter single(&latin1);
    single->SetCheckCharacters(false);
    single->WriteStartElement("a\xFF");
    single->WriteString("b\xE2\x82");
    EXPECT_EQ(single.Text(), "<a?>b??");
}

}  // namespace
