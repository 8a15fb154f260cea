// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/NodeDump.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using support::DocumentForm;
using support::DocumentReader;
using Unit = DocumentForm::Unit;

constexpr DocumentForm kUtf8 = {"UTF-8", Unit::Utf8, false};
constexpr DocumentForm kUtf16LE = {"UTF-16LE", Unit::Utf16LE, true};
constexpr DocumentForm kUtf16BE = {"UTF-16BE", Unit::Utf16BE, true};
constexpr DocumentForm kUcs4LE = {"UCS-4LE", Unit::Ucs4LE, true};
constexpr DocumentForm kUcs4BE = {"UCS-4BE", Unit::Ucs4BE, true};

// Deliberate: the digit zero in the names of the UCS encodings.
constexpr char kUcs2Name[] = "IS0-10646-UCS-2";
constexpr char kUcs4Name[] = "IS0-10646-UCS-4";

std::string DocumentDeclaredAs(const std::string& name, const DocumentForm& form) {
    return support::WriteInForm(
               "<?xml version='1.0' encoding='" + name + "'?><a x='\xC3\xA9'>\xC3\xA9</a>", form)
        .value();
}

TEST(XmlTextReaderDeclaration, TheEncodingIsDetected) {
    const struct {
        DocumentForm form;
        const char* encoding;
    } kCases[] = {
        {kUtf8, "UTF-8"},       {{"", Unit::Utf8, true}, "UTF-8"},
        {kUtf16LE, "UTF-16LE"}, {{"", Unit::Utf16LE, false}, "UTF-16LE"},
        {kUtf16BE, "UTF-16BE"}, {{"", Unit::Utf16BE, false}, "UTF-16BE"},
        {kUcs4LE, kUcs4Name},   {{"", Unit::Ucs4LE, false}, kUcs4Name},
        {kUcs4BE, kUcs4Name},   {{"", Unit::Ucs4BE, false}, kUcs4Name},
    };
    for (const auto& c : kCases) {
        for (const int bytesPerRead : {0, 1, 2, 3}) {
            SCOPED_TRACE(std::string(c.encoding) + ", " + std::to_string(bytesPerRead));
            DocumentReader reader(support::WriteInForm("<a>x</a>", c.form).value(), {},
                                  bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Encoding(), c.encoding);
            EXPECT_EQ(reader->Name(), "a");
            EXPECT_EQ(reader->LinePosition(), 1);
        }
    }
}

TEST(XmlTextReaderDeclaration, FirstBytesThatAreNotLookedAt) {
    using std::string_literals::operator""s;
    // The second byte of a big-endian mark and the fourth of a UCS-4 one say nothing.
    DocumentReader utf16("\xFE\x00\0<\0a\0/\0>"s);
    utf16.ReadNodes(1);
    EXPECT_EQ(utf16->Encoding(), "UTF-16BE");
    EXPECT_EQ(utf16->Name(), "a");

    DocumentReader ucs4("\xFF\xFE\0x<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s);
    ucs4.ReadNodes(1);
    EXPECT_EQ(ucs4->Encoding(), kUcs4Name);
    EXPECT_EQ(ucs4->Name(), "a");
}

TEST(XmlTextReaderDeclaration, LessThanFourBytesAreUtf8) {
    EXPECT_EQ(support::DumpDocument("<a>"),
              "Element a depth=1 @1:1\nerror 1:4 Missing end element [a]\n");
    EXPECT_EQ(support::DumpDocument("\xFE\xFF"), "error 1:1 Invalid character\n");
    EXPECT_EQ(support::DumpDocument("\xFF\xFE<"), "error 1:1 Invalid character\n");
    EXPECT_EQ(support::DumpDocument("L"), "error 1:2 Unexpected token [L]\n");
}

TEST(XmlTextReaderDeclaration, NamesThatAreAccepted) {
    const struct {
        DocumentForm form;
        std::vector<std::string> names;
        const char* encoding;  // then decoded
    } kCases[] = {
        {kUtf8, {"UTF-8", "utf-8"}, "UTF-8"},
        {kUtf8, {"Utf-8", "utf8", "x-unknown", "shift_jis", " UTF-8"}, "UTF-8"},
        {kUtf16LE, {"UTF-16", "utf-16", "UTF-16LE", "utf-16le"}, "UTF-16LE"},
        {kUtf16BE, {"UTF-16", "utf-16", "UTF-16BE", "utf-16be"}, "UTF-16BE"},
        // Deliberate: the Baltic names stand for UTF-16.
        {kUtf16LE, {"iso-8859-13", "ISO-8859-13", "latin7", "latin-7"}, "UTF-16LE"},
        {kUtf16BE, {"iso-8859-13", "ISO-8859-13", "latin7", "latin-7"}, "UTF-16BE"},
        {kUtf16LE, {"ISO-10646-UCS-2", "iso-10646-ucs-2", "csUnicode"}, kUcs2Name},
        {kUtf16BE, {"ISO-10646-UCS-2", "iso-10646-ucs-2", "csUnicode"}, kUcs2Name},
        {kUtf16LE, {"Utf-16", "x-unknown"}, "UTF-16LE"},
        {kUcs4LE,
         {"ISO-10646-UCS-4", "iso-10646-ucs-4", "UCS-4", "ucs-4", "UTF-32", "utf-32", "UTF-32LE",
          "utf-32le", "x-unknown"},
         kUcs4Name},
        {kUcs4BE,
         {"ISO-10646-UCS-4", "iso-10646-ucs-4", "UCS-4", "ucs-4", "UTF-32", "utf-32", "UTF-32BE",
          "utf-32be", "x-unknown"},
         kUcs4Name},
    };
    for (const auto& c : kCases) {
        for (const std::string& name : c.names) {
            for (const int bytesPerRead : {0, 1, 3}) {
                SCOPED_TRACE(name + " in " + c.form.name);
                DocumentReader reader(DocumentDeclaredAs(name, c.form), {}, bytesPerRead);
                reader.ReadNodes(1);
                EXPECT_EQ(reader->GetAttribute("encoding"), name);
                EXPECT_EQ(reader->Encoding(), c.encoding);
                reader.ReadNodes(1);
                EXPECT_EQ(reader->GetAttribute("x"), "\xC3\xA9");
                reader.ReadNodes(1);
                EXPECT_EQ(reader->Value(), "\xC3\xA9");
                reader.ReadAll();
            }
        }
    }
}

TEST(XmlTextReaderDeclaration, NamesThatAreRefused) {
    const struct {
        DocumentForm form;
        std::vector<std::string> names;
    } kCases[] = {
        {kUtf8,
         {"UTF-16",          "utf-16",          "UTF-16LE",  "utf-16le",        "UTF-16BE",
          "utf-16be",        "latin7",          "latin-7",   "iso-8859-13",     "ISO-8859-13",
          "ISO-10646-UCS-2", "iso-10646-ucs-2", "csUnicode", "ISO-10646-UCS-4", "iso-10646-ucs-4",
          "UCS-4",           "ucs-4",           "UTF-32",    "utf-32",          "UTF-32LE",
          "utf-32le",        "UTF-32BE",        "utf-32be"}},
        {kUtf16LE,
         {"UTF-8", "utf-8", "UTF-16BE", "utf-16be", "UTF-32", "UCS-4", "US-ASCII", "ASCII"}},
        {kUtf16BE, {"UTF-8", "utf-8", "UTF-16LE", "utf-16le", "UTF-32BE", "us"}},
        {kUcs4LE,
         {"UTF-8", "UTF-16", "UTF-16LE", "UTF-32BE", "utf-32be", "ISO-10646-UCS-2", "US-ASCII"}},
        {kUcs4BE, {"utf-8", "UTF-16", "UTF-16BE", "UTF-32LE", "utf-32le", "csUnicode", "latin7"}},
    };
    for (const auto& c : kCases) {
        for (const std::string& name : c.names) {
            for (const int bytesPerRead : {0, 1, 3}) {
                SCOPED_TRACE(name + " in " + c.form.name);
                DocumentReader reader(DocumentDeclaredAs(name, c.form), {}, bytesPerRead);
                try {
                    reader->Read();
                    ADD_FAILURE() << "is accepted";
                } catch (const Xml::Exception& error) {
                    EXPECT_STREQ(error.What(), "Unsupported encoding");
                    EXPECT_EQ(error.LineNumber(), 1);
                }
                EXPECT_EQ(reader->ReadState(), Xml::XmlTextReader::Error);
                EXPECT_FALSE(reader->Read());
            }
        }
    }
}

TEST(XmlTextReaderDeclaration, Ascii) {
    for (const std::string name :
         {"ASCII", "US-ASCII", "ISO646-US", "iso646-us", "us", "ANSI_X3.4-1968", "ANSI_X3.4_1968",
          "iso-ir-6", "ISO_646.irv:1991", "IBM367", "cp367", "csASCII"}) {
        SCOPED_TRACE(name);
        DocumentReader reader("<?xml version='1.0' encoding='" + name + "'?><a>x</a>");
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Encoding(), "ASCII");
        reader.ReadNodes(2);
        EXPECT_EQ(reader->Value(), "x");
    }
}

TEST(XmlTextReaderDeclaration, Latin1) {
    for (const std::string name :
         {"ISO-8859-1", "ISO-8859", "iso-8859", "iso-8859-1", "iso-ir-101", "ISO_8859-1", "latin1",
          "latin-1", "l1", "IBM819", "CP819", "csISOLatin1", "ISO_8859-1:1987",
          "ISO-10646-Unicode-Latin1", "csUnicodeLatin1", "ISO-10646"}) {
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            SCOPED_TRACE(name + ", " + std::to_string(bytesPerRead));
            DocumentReader reader(
                "<?xml version='1.0' encoding='" + name + "'?><a x='\xE9'>\xFC\xA4</a>", {},
                bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Encoding(), "ISO-8859-1");
            reader.ReadNodes(1);
            EXPECT_EQ(reader->GetAttribute("x"), "\xC3\xA9");
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Value(), "\xC3\xBC\xC2\xA4");
        }
    }
}

TEST(XmlTextReaderDeclaration, TheNewEncodingHoldsFromTheEndOfTheDeclarationOn) {
    // The bytes C3 A9 are two characters of ISO-8859-1; the column tells.
    EXPECT_EQ(support::DumpDocument("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA9</a>"),
              "XmlDeclaration xml \"version='1.0' encoding='ISO-8859-1'\" depth=1 @1:3\n"
              "  Pseudo version=\"1.0\"\n"
              "  Pseudo encoding=\"ISO-8859-1\"\n"
              "Element a depth=1 @1:44\n"
              "Text \"\\u{C3}\\u{A9}\" depth=2 @1:47\n"
              "EndElement a depth=1 @1:49\n");
}

TEST(XmlTextReaderDeclaration, TheEncodingOfOneDocumentDoesNotHoldForTheNext) {
    DocumentReader reader("<?xml version='1.0' encoding='ISO-8859-1'?><a/>");
    reader.ReadAll();
    support::DocumentStream next("<a>\xC3\xA9</a>");
    ASSERT_TRUE(reader->SetStream(next.get(), false));
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Encoding(), "UTF-8");
    EXPECT_EQ(reader->Value(), "\xC3\xA9");
}

TEST(XmlTextReaderDeclaration, PseudoAttributes) {
    DocumentReader reader("<?xml version='1.0' encoding='UTF-8' standalone=\"yes\"?><a/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), Xml::XmlNodeType::XmlDeclaration);
    EXPECT_EQ(reader->Name(), "xml");
    EXPECT_EQ(reader->AttributeCount(), 3);
    EXPECT_TRUE(reader->HasAttributes());
    EXPECT_EQ(reader->GetAttribute(0), "1.0");
    EXPECT_EQ(reader->GetAttribute(1), "UTF-8");
    EXPECT_EQ(reader->GetAttribute(2), "yes");
    EXPECT_EQ(reader->GetAttribute(3), "");
    EXPECT_EQ(reader->GetAttribute(-1), "");
    EXPECT_EQ(reader->GetAttribute("version"), "1.0");
    EXPECT_EQ(reader->GetAttribute("encoding"), "UTF-8");
    EXPECT_EQ(reader->GetAttribute("standalone"), "yes");
    EXPECT_EQ(reader->GetAttribute("other"), "");
    // They are looked at, not visited.
    EXPECT_FALSE(reader->MoveToFirstAttribute());
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_FALSE(reader->MoveToElement());
    reader.ReadNodes(1);
    EXPECT_EQ(reader->AttributeCount(), 0);
    EXPECT_EQ(reader->GetAttribute("version"), "");
}

TEST(XmlTextReaderDeclaration, TheValueIsTheTextOfTheDeclaration) {
    const struct {
        const char* document;
        const char* value;
    } kCases[] = {
        {"<?xml version='1.0'?><a/>", "version='1.0'"},
        {"<?xml \t\r\n version='1.0' ?><a/>", "version='1.0' "},
        {"<?xml version = \"1.0\"  encoding='UTF-8'\n?><a/>",
         "version = \"1.0\"  encoding='UTF-8'\n"},
    };
    for (const auto& c : kCases) {
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            DocumentReader reader(c.document, {}, bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_EQ(reader->Value(), c.value);
        }
    }
}

}  // namespace
