// SPDX-License-Identifier: MIT

// Characters that the encoding of the output cannot write, and bytes that are none.

#include <espalier/encoding/CodePageEncodings.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"

#include <gtest/gtest.h>

#include <algorithm>  // std::max
#include <cstddef>
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

// Encodings of an application's own. They are ASCII only, for the example.
class OwnEncoding : public Xml::Encoding {
public:
    using Encoding::GetByteCount;
    using Encoding::GetBytes;
    unsigned GetByteCount(const char*, unsigned length) const override { return bytes_ * length; }
    unsigned GetCharCount(const unsigned char*, unsigned count) const override {
        return count / bytes_;
    }
    // The capacity counts bytes, and a character is written as a whole or not at all.
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override {
        unsigned written = 0;
        for (unsigned i = 0; i < length && capacity - written >= bytes_; ++i) {
            destination[written++] = static_cast<unsigned char>(text[i]);
            for (unsigned more = 1; more < bytes_; ++more)
                destination[written++] = 0;
        }
        return written;
    }

protected:
    explicit OwnEncoding(unsigned bytes) : Encoding("Own", "x-own", false, false), bytes_(bytes) {}

private:
    unsigned bytes_;  // of a character
};

template <unsigned kBytes>
class FixedEncoding : public OwnEncoding {
public:
    FixedEncoding() : OwnEncoding(kBytes) {}
};

// Returns each `step`th byte of what was written.
std::string EveryNth(const std::string& written, std::size_t step) {
    std::string text;
    for (std::size_t i = 0; i < written.size(); i += step)
        text += written[i];
    return text;
}

template <unsigned kBytes>
void ExpectWholeTexts() {
    FixedEncoding<kBytes> encoding;
    for (const std::size_t length : {1u, 8u, 13u, 100u, 255u, 256u, 257u, 600u, 2000u}) {
        SCOPED_TRACE(std::to_string(kBytes) + ": " + std::to_string(length));
        const std::string name(length, 'n');
        const std::string text(length, 't');
        DocumentWriter writer(&encoding);
        writer->WriteStartElement(name);
        writer->WriteString(text);
        writer->WriteRaw(text);
        writer->Close();
        const std::string written = writer.Text();
        const std::string expected = '<' + name + '>' + text + text + "</" + name + '>';
        EXPECT_EQ(written.size(), kBytes * expected.size());
        EXPECT_EQ(EveryNth(written, kBytes), expected);
    }
}

TEST(XmlTextWriterEncoding, AnEncodingOfTheCallerGetsTheFreeSpaceAsItsCapacity) {
    ExpectWholeTexts<1>();
    ExpectWholeTexts<2>();
    ExpectWholeTexts<3>();
    ExpectWholeTexts<7>();  // more than any of our own
    ExpectWholeTexts<40>();
}

// Its count is an upper bound only; it has no "x"; and it wants room for a character more.
class RoughEncoding : public FixedEncoding<1> {
public:
    unsigned GetByteCount(const char*, unsigned length) const override { return 3 * length; }
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override {
        largest_ = std::max(largest_, capacity);
        unsigned written = 0;
        for (unsigned i = 0; i < length && written + 1 < capacity; ++i) {
            if (text[i] != 'x') destination[written++] = static_cast<unsigned char>(text[i]);
        }
        return written;
    }
    unsigned Largest() const { return largest_; }

private:
    mutable unsigned largest_ = 0;  // capacity that was given
};

TEST(XmlTextWriterEncoding, AnEncodingOfTheCallerThatWritesLessThanItSaidLosesNothing) {
    RoughEncoding encoding;
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += "abcd";
    DocumentWriter writer(&encoding);
    writer->WriteStartElement("r");
    writer->WriteString(text);
    writer->WriteComment("1x2x3");
    writer->Close();
    EXPECT_EQ(writer.Text(), "<r>" + text + "<!--1?2?3--></r>");
    EXPECT_LE(encoding.Largest(), 1024u);
}

}  // namespace
