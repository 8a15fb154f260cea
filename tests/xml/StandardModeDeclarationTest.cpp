// SPDX-License-Identifier: MIT
//
// The XML declaration by XML 1.0 [23] to [26], [32], [80] and [81], and marks and encodings by
// section 4.3.3.
#include "support/EscapedText.h"
#include "support/StandardReading.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::Forms;
using support::ReadByStandard;
using support::RefusedDocument;
using support::StandardReading;

constexpr int kAny = RefusedDocument::kAny;

TEST(StandardModeDeclaration, FollowsItsGrammar) {
    ExpectAccepted({
        {"<?xml version='1.0'?><a/>", "<a/>"},
        {"<?xml version=\"1.0\"?><a/>", "<a/>"},
        {"<?xml version='1.0' ?><a/>", "<a/>"},
        {"<?xml version = '1.0'?><a/>", "<a/>"},
        {"<?xml\n\tversion\r\n=\r'1.0'\t?><a/>", "<a/>"},
        {"<?xml version='1.0' standalone='yes'?><a/>", "<a/>"},
        {"<?xml version='1.0' standalone=\"no\"?><a/>", "<a/>"},
        {"<?xml version='1.0' standalone = 'no' ?><a/>", "<a/>"},
    });
    ExpectAccepted(
        {
            {"<?xml version='1.0' encoding='UTF-8'?><a/>", "<a/>"},
            {"<?xml version='1.0' encoding=\"UTF-8\" ?><a/>", "<a/>"},
            {"<?xml version='1.0' encoding\t=\n'UTF-8' standalone='yes' ?><a/>", "<a/>"},
        },
        {}, Forms::OnlyUtf8);
}

TEST(StandardModeDeclaration, IsRefusedWhereItDoesNotFollowItsGrammar) {
    ExpectRefused({
        {"<?xml?><a/>", 1, 6, "no version"},
        {"<?xml ?><a/>", 1, 7, "no version"},
        {"<?xml standalone='yes'?><a/>", 1, kAny, "no version but standalone"},
        {"<?xml version?><a/>", 1, 14, "no value"},
        {"<?xml version=?><a/>", 1, 17, "no literal"},
        {"<?xml version=1.0?><a/>", 1, 15, "no quotation marks"},
        {"<?xml version='1.0\"?><a/>", 1, kAny, "two kinds of quotation marks"},
        {"<?xml version='1.0?><a/>", 1, kAny, "no second quotation mark"},
        {"<?xml version'1.0'?><a/>", 1, 14, "no equals sign"},
        {"<?xml version=='1.0'?><a/>", 1, 16, "two equals signs"},
        {"<?xml Version='1.0'?><a/>", 1, kAny, "a capital letter"},
        {"<?xml version='1.0' version='1.0'?><a/>", 1, kAny, "the version twice"},
        {"<?xml version='1.0' standalone='no' standalone='no'?><a/>", 1, kAny, "standalone twice"},
        {"<?xml version='1.0' x='y'?><a/>", 1, kAny, "another part"},
        {"<?xml version='1.0'standalone='no'?><a/>", 1, 20, "no white space before standalone"},
        {"<?xmlversion='1.0'?><a/>", 1, kAny, "no white space behind the target"},
        {"<?xml version='1.0' standalone='Yes'?><a/>", 1, kAny, "a capital letter"},
        {"<?xml version='1.0' standalone='true'?><a/>", 1, kAny, "another word"},
        {"<?xml version='1.0' standalone=''?><a/>", 1, kAny, "an empty value"},
        {"<?xml version='1.0' standalone='yes '?><a/>", 1, kAny, "a blank in the value"},
        {"<?xml version='1.0' standalone=yes?><a/>", 1, 35, "no quotation marks"},
        {"<?xml version='1.0'><a/>", 1, kAny, "no question mark"},
        {"<?xml version='1.0'? ><a/>", 1, kAny, "white space behind the question mark"},
        {"<?xml version='1.0' \\u{A0}?><a/>", 1, 21, "what is no white space"},
        {"<?xml version='1.0'/><a/>", 1, kAny, "a slash"},
        {"<?xml version='1.0'", 1, 20, "the end of the input"},
        {"<?xml version='&#49;.0'?><a/>", 1, kAny, "a reference"},
    });
    ExpectRefused(
        {
            {"<?xml version='1.0' encoding='UTF-8' encoding='UTF-8'?><a/>", 1, kAny,
             "the encoding twice"},
            {"<?xml encoding='UTF-8' version='1.0'?><a/>", 1, kAny, "the encoding first"},
            {"<?xml version='1.0' standalone='no' encoding='UTF-8'?><a/>", 1, kAny,
             "the encoding last"},
            {"<?xml version='1.0' encoding='UTF-8'standalone='no'?><a/>", 1, 37,
             "no white space behind the encoding"},
            {"<?xml encoding='UTF-8'?><a/>", 1, kAny, "no version but an encoding"},
            {"<?xml version='1.0'encoding='UTF-8'?><a/>", 1, 20,
             "no white space before the encoding"},
        },
        {}, Forms::OnlyUtf8);
}

TEST(StandardModeDeclaration, StandsAtTheVeryBeginning) {
    ExpectRefused({
        {" <?xml version='1.0'?><a/>", 1, kAny, "a blank before it"},
        {"\n<?xml version='1.0'?><a/>", 2, kAny, "a line end before it"},
        {"<!--c--><?xml version='1.0'?><a/>", 1, kAny, "a comment before it"},
        {"<?xml version='1.0'?><?xml version='1.0'?><a/>", 1, kAny, "twice"},
        {"<a><?xml version='1.0'?></a>", 1, kAny, "in an element"},
        {"<a/><?xml version='1.0'?>", 1, kAny, "behind the root element"},
        {"<a><?xml?></a>", 1, kAny, "as a target"},
        {"<?XML version='1.0'?><a/>", 1, kAny, "in capitals"},
        {"<?Xml version='1.0'?><a/>", 1, kAny, "in mixed letters"},
        {"<a><?xMl x?></a>", 1, kAny, "as a target in mixed letters"},
        {"<? xml version='1.0'?><a/>", 1, 3, "a blank in it"},
    });
    ExpectAccepted({
        {"<?xml-stylesheet x?><a/>", "<?xml-stylesheet x?><a/>"},
        {"<a><?xmlx?><?x xml?></a>", "<a><?xmlx ?><?x xml?></a>"},
        {"<?xml version='1.0'?><?x?><a/>", "<?x ?><a/>"},
    });
}

// [26] VersionNum ::= '1.' [0-9]+
TEST(StandardModeDeclaration, HasAVersionThatBeginsWithOne) {
    for (const char* const version : {"1.0", "1.1", "1.2", "1.9", "1.10", "1.00", "1.0123456789"}) {
        const std::string document = std::string("<?xml version='") + version + "'?><a/>";
        SCOPED_TRACE(document);
        EXPECT_EQ(support::ReadInForms(document).message, "");
    }
    for (const char* const version :
         {"", "1", "1.", ".0", "0.9", "2.0", "1.0 ", " 1.0", "1.0a", "1.-1", "01.0", "1,0", "1.0.0",
          "1.\xD9\xA0", "+1.0", "1 .0", "one"}) {
        const std::string document = std::string("<?xml version='") + version + "'?><a/>";
        SCOPED_TRACE(document);
        const StandardReading reading = support::ReadInForms(document);
        EXPECT_NE(reading.message, "");
        EXPECT_EQ(reading.line, 1);
    }
}

// A version of the future has the rules of this one.
TEST(StandardModeDeclaration, OfALaterVersionChangesNoRule) {
    ExpectRefused({
        {"<?xml version='1.1'?><a>&#1;</a>", 1, kAny, "a control character, which 1.1 has"},
    });
    ExpectAccepted({
        {"<?xml version='1.1'?><a>\\u{85}\\u{2028}</a>", "<a>\\u{85}\\u{2028}</a>"},
    });
}

// [81] EncName ::= [A-Za-z] ([A-Za-z0-9._] | '-')*
TEST(StandardModeDeclaration, NamesItsEncodingByTheGrammar) {
    for (const char* const name : {"", " UTF-8", "UTF-8 ", "UTF 8", "8-UTF", "-UTF-8", ".UTF-8",
                                   "_UTF-8", "UTF:8", "UTF/8", "UTF-8\xC3\xA9", "UTF+8", "x\ty"}) {
        const std::string document =
            std::string("<?xml version='1.0' encoding='") + name + "'?><a/>";
        SCOPED_TRACE(document);
        for (const int bytesPerRead : {0, 1})
            EXPECT_NE(ReadByStandard(document, {}, bytesPerRead).message, "");
    }
}

std::string DocumentIn(const std::string& encoding, const std::string& text) {
    return "<?xml version='1.0' encoding='" + encoding + "'?><a>" + text + "</a>";
}

TEST(StandardModeEncodings, AreKnownInCapitalAndSmallLetters) {
    const struct {
        const char* name;
        const char* bytes;
        const char* text;
    } kCases[] = {
        {"UTF-8", "\xC3\xA9", "\\u{E9}"},
        {"utf-8", "\xC3\xA9", "\\u{E9}"},
        {"uTf-8", "\xC3\xA9", "\\u{E9}"},
        {"ISO-8859-1", "\xE9", "\\u{E9}"},
        {"iso-8859-1", "\xE9", "\\u{E9}"},
        {"Iso-8859-1", "\xE9", "\\u{E9}"},
        {"US-ASCII", "e", "e"},
        {"us-ascii", "e", "e"},
        {"Us-Ascii", "e", "e"},
        {"windows-1251", "\xE9", "\\u{439}"},
        {"WINDOWS-1251", "\xE9", "\\u{439}"},
        {"Windows-1252", "\x80", "\\u{20AC}"},
    };
    for (const auto& c : kCases) {
        const std::string document = DocumentIn(c.name, c.bytes);
        SCOPED_TRACE(support::Escape(document));
        const StandardReading reading = support::ReadInForms(document, {}, Forms::OnlyUtf8);
        EXPECT_EQ(reading.message, "");
        EXPECT_EQ(reading.nodes, std::string("<a>") + c.text + "</a>");
    }
}

TEST(StandardModeEncodings, ThatAreUnknownAreRefused) {
    for (const char* const name : {"x-unknown", "UTF-9", "UTF_8.", "EBCDIC-CP-US", "a"}) {
        const StandardReading reading =
            support::ReadInForms(DocumentIn(name, "x"), {}, Forms::OnlyUtf8);
        EXPECT_NE(reading.message, "") << name;
        EXPECT_EQ(reading.line, 1);
    }
}

TEST(StandardModeEncodings, OfAsciiHaveNothingElse) {
    for (const char* const name : {"US-ASCII", "us-ascii"}) {
        EXPECT_EQ(ReadByStandard(DocumentIn(name, "x&#233;")).nodes, "<a>x\\u{E9}</a>");
        for (const char* const byte : {"\x80", "\xA0", "\xE9", "\xFF", "\xC3\xA9"}) {
            const StandardReading reading =
                support::ReadInForms(DocumentIn(name, byte), {}, Forms::OnlyUtf8);
            EXPECT_NE(reading.message, "") << support::Escape(byte);
            EXPECT_EQ(reading.line, 1);
        }
        EXPECT_NE(ReadByStandard(DocumentIn(name, "<\xE9/>")).message, "");
        EXPECT_NE(ReadByStandard(DocumentIn(name, "<b x='\xE9'/>")).message, "");
        EXPECT_NE(ReadByStandard(DocumentIn(name, "<!--\xE9-->")).message, "");
    }
}

TEST(StandardModeEncodings, AreThoseThatTheFirstBytesShow) {
    const auto wide = [](const std::string& text, bool isBigEndian) {
        std::string bytes;
        for (const char c : text) {
            if (isBigEndian) bytes += '\0';
            bytes += c;
            if (!isBigEndian) bytes += '\0';
        }
        return bytes;
    };
    const std::string utf8Mark = "\xEF\xBB\xBF";
    const std::string littleMark = "\xFF\xFE";
    const std::string bigMark = "\xFE\xFF";
    const struct {
        const char* what;
        std::string document;
        bool isGood;
    } kCases[] = {
        {"a mark and UTF-8", utf8Mark + DocumentIn("UTF-8", "x"), true},
        {"a mark of UTF-8 and ISO-8859-1", utf8Mark + DocumentIn("ISO-8859-1", "x"), false},
        {"a mark of UTF-8 and US-ASCII", utf8Mark + DocumentIn("US-ASCII", "x"), false},
        {"a mark of UTF-8 and UTF-16", utf8Mark + DocumentIn("UTF-16", "x"), false},
        {"two marks of UTF-8", utf8Mark + utf8Mark + "<a/>", false},
        {"a mark of UTF-8 behind the declaration", "<?xml version='1.0'?>" + utf8Mark + "<a/>",
         false},
        {"UTF-16 in single bytes", DocumentIn("UTF-16", "x"), false},
        {"UTF-16LE in single bytes", DocumentIn("UTF-16LE", "x"), false},
        {"UCS-4 in single bytes", DocumentIn("ISO-10646-UCS-4", "x"), false},
        {"UTF-16 with a mark", littleMark + wide(DocumentIn("UTF-16", "x"), false), true},
        {"UTF-16 with the other mark", bigMark + wide(DocumentIn("UTF-16", "x"), true), true},
        {"utf-16 in small letters", bigMark + wide(DocumentIn("utf-16", "x"), true), true},
        {"a mark and no declaration", bigMark + wide("<a>x</a>", true), true},
        {"a mark and UTF-8", littleMark + wide(DocumentIn("UTF-8", "x"), false), false},
        {"a mark and ISO-8859-1", bigMark + wide(DocumentIn("ISO-8859-1", "x"), true), false},
        {"a mark and the other order", littleMark + wide(DocumentIn("UTF-16BE", "x"), false),
         false},
        {"the other mark and order", bigMark + wide(DocumentIn("UTF-16LE", "x"), true), false},
        {"no mark and UTF-16LE", wide(DocumentIn("UTF-16LE", "x"), false), true},
        {"no mark and UTF-16BE", wide(DocumentIn("UTF-16BE", "x"), true), true},
        {"no mark and UTF-8", wide(DocumentIn("UTF-8", "x"), false), false},
        {"no mark and no declaration", wide("<a>x</a>", false), false},
        {"no mark and no declaration, in the other order", wide("<a>x</a>", true), false},
        {"no mark and no encoding", wide("<?xml version='1.0'?><a>x</a>", false), false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what);
        for (const int bytesPerRead : {0, 1, 3}) {
            const StandardReading reading = ReadByStandard(c.document, {}, bytesPerRead);
            EXPECT_EQ(reading.message.empty(), c.isGood) << reading.message << reading.nodes;
            if (c.isGood) {
                EXPECT_EQ(reading.nodes, "<a>x</a>");
            }
        }
    }
}

TEST(StandardModeEncodings, OfNothingAreNoDocument) {
    ExpectRefused(
        {
            {"", 1, 1, "an empty input"},
            {" ", 1, 2, "white space alone"},
            {"\n\n", 3, 1, "line ends alone"},
            {"<", 1, 2, "half a tag"},
            {"\xEF\xBB\xBF", 1, 1, "a mark alone"},
            {"<?xml version='1.0'?>", 1, 22, "a declaration alone"},
            {"<!--c-->", 1, 9, "a comment alone"},
            {"<!DOCTYPE a>", 1, 13, "a document type alone"},
        },
        {}, Forms::OnlyUtf8);
}

}  // namespace
