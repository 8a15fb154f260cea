// SPDX-License-Identifier: MIT
//
// The document type: its node, what it may look like, where it may stand, and where it may end.
// Documents with their nodes are in tests/cases/reader/doctype.case.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/NodeDump.h"
#include "support/PrintAstring.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::Cause;
using support::DocumentReader;
using support::ErrorOf;
using support::ExpectRefusals;
using support::Refusal;
using support::WithEntities;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;

constexpr int kAny = Refusal::kAny;
constexpr std::size_t kBuffer = 1024;

constexpr char kUnexpectedToken[] = "Unexpected token";
constexpr char kNoExternalId[] = "Syntax error in entity declaration";
constexpr char kTwoLiterals[] = "Public ID requires two literals";
constexpr char kNoWhitespace[] = "Whitespace required between public ID and system ID";
constexpr char kExpectedDoctype[] = "Expected DOCTYPE";
constexpr char kAlreadyDefined[] = "DOCTYPE already defined";
constexpr char kEndInDtd[] = "Unexpected end of file while parsing DTD";
constexpr char kEndBehindLess[] = "Unexpected end of file while scanning DTD";
constexpr char kEndInToken[] = "Unexpected end of file in DTD";
constexpr char kEndInLiteral[] = "Unexpected end of file while scanning for end quote";

TEST(XmlTextReaderDoctype, Keyword) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPEa><a/>", kExpectedDoctype, "DOCTYPEa", 1, 11, "no blank"},
        {"<!Doctype a><a/>", kExpectedDoctype, "Doctype", 1, 10, "case"},
        {"<!ENTITY e 'x'><a/>", kExpectedDoctype, "ENTITY", 1, 9, "entity outside a subset"},
        {"<!><a/>", kExpectedDoctype, "", 1, kAny, "nothing"},
        {"<!\"x\"><a/>", kExpectedDoctype, "", 1, kAny, "literal"},
        {"<!DOCTYPE><a/>", kUnexpectedToken, "", 1, kAny, "no root name"},
        {"<!DOCTYPE ><a/>", kUnexpectedToken, "", 1, kAny, "no root name"},
        {"<!DOCTYPE \"a\"><a/>", kUnexpectedToken, "", 1, kAny, "literal"},
        {"<!DOCTYPE []><a/>", kUnexpectedToken, "", 1, kAny, "subset"},
        {"<!DOCTYPE 1><a/>", kUnexpectedToken, "", 1, kAny, "digit"},
        {"<!DOCTYPE a:b:c><a/>", "Illegal second colon in qualified name", "", 1, 13, "colons"},
    };
    ExpectRefusals(kRefusals);
}

TEST(XmlTextReaderDoctype, WhatFollowsTheRootName) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a \"x\"><a/>", kUnexpectedToken, "\"QUOTE", 1, 14, "literal"},
        {"<!DOCTYPE a 'x'><a/>", kUnexpectedToken, "'QUOTE", 1, 14, "literal"},
        {"<!DOCTYPE a =><a/>", kUnexpectedToken, "=EQUALS", 1, 14, "equals sign"},
        {"<!DOCTYPE a SYSTEM \"s\" \"t\"><a/>", kUnexpectedToken, "\"QUOTE", 1, 25, "literal"},
        {"<!DOCTYPE a [] \"x\"><a/>", kUnexpectedToken, "\"QUOTE", 1, 17, "behind the subset"},
        {"<!DOCTYPE a <b>><a/>", kUnexpectedToken, "<TAG", 1, kAny, "tag"},
        {"<!DOCTYPE a <!ENTITY e 'x'>><a/>", kUnexpectedToken, "<!DECL", 1, kAny, "entity"},
        {"<!DOCTYPE a foo><a/>", kNoExternalId, "", 1, 16, "other keyword"},
        {"<!DOCTYPE a system \"s\"><a/>", kNoExternalId, "", 1, 19, "small letters"},
        {"<!DOCTYPE a NDATA n><a/>", kNoExternalId, "", 1, 18, "NDATA"},
        {"<!DOCTYPE a SYSTEM><a/>", kUnexpectedToken, ">TAGEND", 1, kAny, "no literal"},
        {"<!DOCTYPE a SYSTEM []><a/>", kUnexpectedToken, "[DOCTYPEBEGIN", 1, kAny, "no literal"},
        {"<!DOCTYPE a PUBLIC \"p\"><a/>", kTwoLiterals, "", 1, 24, "one literal"},
        {"<!DOCTYPE a PUBLIC \"p\" ><a/>", kTwoLiterals, "", 1, kAny, "one literal and a blank"},
        {"<!DOCTYPE a PUBLIC \"p\" []><a/>", kTwoLiterals, "", 1, kAny, "one and a subset"},
        {"<!DOCTYPE a PUBLIC \"p\"\"s\"><a/>", kNoWhitespace, "", 1, 24, "literals together"},
        {"<!DOCTYPE a PUBLIC \"{\" \"s\"><a/>", "Invalid Public ID character", "", 1, 21, "{"},
        {"<!DOCTYPE a PUBLIC \"<\" \"s\"><a/>", "Invalid Public ID character", "", 1, 21, "<"},
        {"<!DOCTYPE a SYSTEM \"\\x01\"><a/>", "Invalid character", "", 1, 21, "control code"},
        {"<!DOCTYPE a [\\x01]><a/>", "Invalid character", "", 1, 14, "in the subset"},
        {"<!DOCTYPE a [<!ELEMENT a\\x01>]><a/>", "Invalid character", "", 1, 25, "in a name"},
        {"<!DOCTYPE a [<!--\\x01-->]><a/>", "Invalid character", "", 1, 18, "in a comment"},
        {"<!DOCTYPE a [<?p \\x01?>]><a/>", "Invalid character", "", 1, 18, "in an instruction"},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA '\\x01'>]><a/>", "Invalid character", "", 1, 35,
         "in a default"},
    };
    ExpectRefusals(kRefusals);
}

TEST(XmlTextReaderDoctype, Places) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a><!DOCTYPE a><a/>", kAlreadyDefined, "", 1, 22, "second"},
        {"<!DOCTYPE a>\n<!--c-->\n<!DOCTYPE b []><a/>", kAlreadyDefined, "", 3, 10,
         "second with another name"},
        {"<!DOCTYPE a><!DOCTYPE ><a/>", kAlreadyDefined, "", 1, 22, "without a name"},
        {"<!DOCTYPE a><!doctype a><a/>", kExpectedDoctype, "doctype", 1, 22, "case"},
        {"<a/><!DOCTYPE a>", kUnexpectedToken, "DOCTYPE", 1, kAny, "after the root element"},
        {"<a/>\n<!DOCTYPE a []>", kUnexpectedToken, "DOCTYPE", 2, kAny, "after the root"},
        {"<a><!DOCTYPE a></a>", kUnexpectedToken, "DOCTYPE", 1, kAny, "in the root element"},
    };
    ExpectRefusals(kRefusals);
}

TEST(XmlTextReaderDoctype, EndsOfTheInput) {
    const Refusal kRefusals[] = {
        {"<!DOCTYPE a ", kEndInDtd, "", 1, 13, "behind the root name"},
        {"<!DOCTYPE a\n", kEndInDtd, "", 2, 1, "behind a line break"},
        {"<!DOCTYPE a SYSTEM 's'", kEndInDtd, "", 1, 23, "behind an identifier"},
        {"<!DOCTYPE a PUBLIC 'p' 's' ", kEndInDtd, "", 1, 28, "behind an identifier"},
        {"<!DOCTYPE a SYSTEM 's", kEndInLiteral, "", 1, 22, "in a system identifier"},
        {"<!DOCTYPE a SYSTEM '", kEndInLiteral, "", 1, 21, "in a system identifier"},
        {"<!DOCTYPE a PUBLIC 'p", kEndInLiteral, "", 1, 22, "in a public identifier"},
        {"<!DOCTYPE a PUBLIC 'p' 's>\n<a/>", kEndInLiteral, "", 2, 5, "in a system identifier"},
        {"<!DOCTYPE a [", kEndInDtd, "", 1, 14, "behind the bracket"},
        {"<!DOCTYPE a [ \n", kEndInDtd, "", 2, 1, "behind white space"},
        {"<!DOCTYPE a []", kEndInDtd, "", 1, 15, "behind the subset"},
        {"<!DOCTYPE a [] ", kEndInDtd, "", 1, 16, "behind the subset"},
        {"<!DOCTYPE a [>", kEndInDtd, "", 1, 15, "a greater-than sign closes the bracket's level"},
        {"<!DOCTYPE a [<", kEndBehindLess, "", 1, 15, "less-than sign"},
        {"<!DOCTYPE a [<!ELEMENT a ANY><", kEndBehindLess, "", 1, 31, "less-than sign"},
        {"<!DOCTYPE a [<!", kEndInToken, "", 1, 16, "exclamation mark"},
        {"<!DOCTYPE a [<!-", kEndInToken, "", 1, 17, "one hyphen"},
        {"<!DOCTYPE a [<!ENTITY %", kEndInToken, "", 1, 24, "percent sign"},
        {"<!DOCTYPE a [<!--", "Unexpected end of file while scanning for '-->'", "", 1, 18, "-"},
        {"<!DOCTYPE a [<!--x-", "Unexpected end of file while scanning for '-->'", "", 1, 20, "-"},
        {"<!DOCTYPE a [<?p x", "Unexpected end of file while looking for '?>'", "", 1, 19, "PI"},
        {"<!DOCTYPE a [<?p x?", "Unexpected end of file while looking for '?>'", "", 1, 20, "PI"},
        {"<!DOCTYPE a [<!ELEMENT ", kEndInDtd, "", 1, 24, "in a declaration"},
        {"<!DOCTYPE a [<!ELEMENT a (b|", kEndInDtd, "", 1, 29, "in a declaration"},
        {"<!DOCTYPE a [<!ELEMENT a ANY>", kEndInDtd, "", 1, 30, "behind a declaration"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA '>", kEndInDtd, "", 1, 36, "in a skipped literal"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA '>'", kEndInDtd, "", 1, 37, "behind a literal"},
        {"<!DOCTYPE a [<!ATTLIST a x CDATA '\n]><a/>", kEndInDtd, "", 2, 7, "skipped literal"},
        {"<!DOCTYPE a [<!ENTITY ", kEndInDtd, "", 1, 23, "before a name"},
        {"<!DOCTYPE a [<!ENTITY e ", kEndInDtd, "", 1, 25, "behind a name"},
        {"<!DOCTYPE a [<!ENTITY % ", kEndInDtd, "", 1, 25, "before a name"},
        {"<!DOCTYPE a [<!ENTITY e 'x'", kEndInDtd, "", 1, 28, "behind a value"},
        {"<!DOCTYPE a [<!ENTITY e 'x' ", kEndInDtd, "", 1, 29, "behind a value"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>", kEndInDtd, "", 1, 29, "behind a declaration"},
        {"<!DOCTYPE a [<!ENTITY e '", "Unexpected token or missing close quote", "", 1, 26, "'"},
        {"<!DOCTYPE a [<!ENTITY e 'x", "Unexpected token or missing close quote", "", 1, 27, "'"},
        {"<!DOCTYPE a [<!ENTITY e 'x\">]>\n<a/>", "Unexpected token or missing close quote", "", 2,
         5, "the other quotation mark"},
        {"<!DOCTYPE a [<!ENTITY e 'x&#65", "Unexpected end of file", "", 1, 31, "digits"},
        {"<!DOCTYPE a [<!ENTITY e 'x&", "Unexpected end of file", "", 1, 28, "ampersand"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 's", kEndInLiteral, "", 1, 34, "in an identifier"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 's'", kEndInDtd, "", 1, 35, "behind an identifier"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 's' ", kEndInDtd, "", 1, 36, "behind an identifier"},
        {"<!DOCTYPE a [<!ENTITY e PUBLIC 'p", kEndInLiteral, "", 1, 34, "in an identifier"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM 's'", kEndInDtd, "", 1, 37, "behind an identifier"},
        {"<!DOCTYPE a [<!NOTATION n SYSTEM 's", kEndInLiteral, "", 1, 36, "in an identifier"},
    };
    ExpectRefusals(kRefusals, {}, Cause::End);
}

// Declarations of elements and attributes are skipped by nesting alone.
TEST(XmlTextReaderDoctype, EveryCharacterInASkippedDeclaration) {
    const std::string special = "<>[]\"'%";  // nest, quote or refer
    for (char character = ' '; character <= '~'; ++character) {
        if (special.find(character) != std::string::npos) continue;
        for (const std::string& text : {std::string(1, character), std::string(2, character),
                                        std::string("a") + character + "b"}) {
            for (const char* keyword : {"ELEMENT", "ATTLIST", "FOO"}) {
                const std::string document = "<!DOCTYPE a [<!" + std::string(keyword) + " a " +
                                             text + " ><!ENTITY e 'x'>]><a>&e;</a>";
                for (const int bytesPerRead : {0, 1}) {
                    EXPECT_EQ(ErrorOf(document, bytesPerRead), "") << document;
                }
            }
        }
    }
}

TEST(XmlTextReaderDoctype, DeclarationsAsTheyAreWritten) {
    const std::string subset =
        "\n<!ELEMENT a EMPTY><!ELEMENT b ANY><!ELEMENT c (#PCDATA)>"
        "<!ELEMENT p:d (a?,(b|c)+,d*)*><!ELEMENT e (#PCDATA|a|b)*>"
        "<!ATTLIST a\n  id ID #REQUIRED\n  x:y (yes|no|1st) 'yes'\n  z CDATA #FIXED \"100% <&>\"\n"
        "  n NOTATION (m|n) #IMPLIED w NMTOKENS #IMPLIED>"
        "<!ATTLIST b><!-- <!ELEMENT --><?a <!ELEMENT ?>\n";
    for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
        DocumentReader reader("<!DOCTYPE a [" + subset + "]><a/>", {}, bytesPerRead);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->Value(), subset);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->AttributeCount(), 0);
    }
}

TEST(XmlTextReaderDoctype, EveryTruncationIsRefused) {
    const std::string document =
        "<!DOCTYPE a PUBLIC 'p' \"s\" [\n<!ELEMENT a (b|c)*> %p;<!ATTLIST a x CDATA '>'>\n"
        "<!-- ]> --><?p ]>?><!ENTITY e \"x&#65;&f;\"><!ENTITY % p SYSTEM 's'>\n"
        "<!NOTATION n PUBLIC 'p'><!ENTITY u SYSTEM 'u' NDATA n> ] >";
    for (std::size_t length = 1; length < document.size(); ++length) {
        for (const int bytesPerRead : {0, 1}) {
            EXPECT_NE(ErrorOf(document.substr(0, length), bytesPerRead), "") << length;
        }
    }
    EXPECT_EQ(ErrorOf(document + "<a/>"), "");
}

// The node.

TEST(XmlTextReaderDoctype, IsANodeWithNameValueAndIdentifiers) {
    DocumentReader reader("<!DOCTYPE p:a PUBLIC 'p' \"s\" [<!ENTITY e 'x'>]><a/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::DocumentType);
    EXPECT_EQ(reader->Name(), "p:a");
    EXPECT_TRUE(reader->HasValue());
    EXPECT_EQ(reader->Value(), "<!ENTITY e 'x'>");
    EXPECT_EQ(reader->Depth(), 1);
    EXPECT_EQ(reader->LineNumber(), 1);
    EXPECT_EQ(reader->LinePosition(), 3);
    EXPECT_EQ(reader->AttributeCount(), 2);
    EXPECT_TRUE(reader->HasAttributes());
    EXPECT_EQ(reader->GetAttribute(0), "p");
    EXPECT_EQ(reader->GetAttribute(1), "s");
    EXPECT_EQ(reader->GetAttribute(2), "");
    EXPECT_EQ(reader->GetAttribute(-1), "");
    EXPECT_EQ(reader->GetAttribute("PUBLIC"), "p");
    EXPECT_EQ(reader->GetAttribute("SYSTEM"), "s");
    EXPECT_EQ(reader->GetAttribute("system"), "");
    EXPECT_EQ(reader->GetAttribute("e"), "");
}

// Deliberate: the identifiers are read by name or number alone, as the parts of the declaration.
TEST(XmlTextReaderDoctype, DeliberateNoMoveEntersTheIdentifiers) {
    DocumentReader reader("<!DOCTYPE a SYSTEM 's'><a/>");
    reader.ReadNodes(1);
    EXPECT_FALSE(reader->MoveToFirstAttribute());
    EXPECT_FALSE(reader->MoveToNextAttribute());
    EXPECT_FALSE(reader->MoveToAttribute("SYSTEM"));
    EXPECT_FALSE(reader->MoveToElement());
    EXPECT_FALSE(reader->ReadAttributeValue());
    reader->MoveToAttribute(0);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::DocumentType);
    EXPECT_EQ(reader->Item(0), "");
    EXPECT_EQ(reader->GetAttribute("SYSTEM"), "s");
}

TEST(XmlTextReaderDoctype, IdentifiersAreThoseThatArePresent) {
    const struct {
        const char* document;
        int count;
        const char* publicId;
        const char* systemId;
    } kCases[] = {
        {"<!DOCTYPE a><a/>", 0, "", ""},
        {"<!DOCTYPE a []><a/>", 0, "", ""},
        {"<!DOCTYPE a SYSTEM \"s\"><a/>", 1, "", "s"},
        {"<!DOCTYPE a SYSTEM ''><a/>", 1, "", ""},
        {"<!DOCTYPE a SYSTEM \"s\" []><a/>", 1, "", "s"},
        {"<!DOCTYPE a PUBLIC \"p\" \"s\"><a/>", 2, "p", "s"},
        {"<!DOCTYPE a [<!ENTITY e PUBLIC 'p' 's'>]><a/>", 0, "", ""},
        {"<!DOCTYPE a SYSTEM 's' [<!NOTATION n PUBLIC 'p'>]><a/>", 1, "", "s"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        DocumentReader reader(c.document);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->AttributeCount(), c.count);
        EXPECT_EQ(reader->GetAttribute("PUBLIC"), c.publicId);
        EXPECT_EQ(reader->GetAttribute("SYSTEM"), c.systemId);
        reader.ReadNodes(1);
        EXPECT_EQ(reader->AttributeCount(), 0);
        EXPECT_EQ(reader->GetAttribute("SYSTEM"), "");
    }
}

TEST(XmlTextReaderDoctype, TheSubsetMayBeOfAnyLength) {
    std::string subset;
    while (subset.size() < 300000) {
        subset +=
            "<!ELEMENT a (b|c)*>\r\n<!-- ]> ' \xC3\xA9 --><?pi ]>?>\r<!ATTLIST a x CDATA ']>'>\n";
    }
    subset += "<!ENTITY e 'last'>";
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        const auto document = support::WriteInForm("<!DOCTYPE a [" + subset + "]><a>&e;</a>", form);
        for (const int bytesPerRead : {0, 7}) {
            DocumentReader reader(document.value(), WithEntities(XmlEntityHandling::ExpandEntities),
                                  bytesPerRead);
            reader.ReadNodes(1);
            EXPECT_TRUE(reader->Value() == subset) << form.name << ", " << bytesPerRead;
            reader.ReadNodes(2);
            EXPECT_EQ(reader->Value(), "last");
        }
    }
}

TEST(XmlTextReaderDoctype, IdentifiersOf1024BytesPassAndLongerOnesFail) {
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        const std::size_t width = support::WriteInForm("<aaa", {"", form.unit, false})->size() / 4;
        const std::size_t most = kBuffer / width;
        for (const char* before :
             {"<!DOCTYPE a SYSTEM '", "<!DOCTYPE a PUBLIC 'p' '", "<!DOCTYPE a PUBLIC '"}) {
            const bool isPublic = std::string(before).ends_with("PUBLIC '");
            for (const std::size_t length : {most - 1, most, most + 1, most * 3}) {
                const std::string id(length, 'i');
                const auto document =
                    support::WriteInForm(before + id + (isPublic ? "' 's'><a/>" : "'><a/>"), form);
                for (const int bytesPerRead : {0, 1, 7}) {
                    EXPECT_EQ(ErrorOf(document.value(), bytesPerRead),
                              length <= most ? "" : "Input buffer overflow")
                        << form.name << ": " << before << length << ", " << bytesPerRead;
                }
                if (length > most) continue;
                DocumentReader reader(document.value());
                reader.ReadNodes(1);
                EXPECT_EQ(reader->GetAttribute(isPublic ? "PUBLIC" : "SYSTEM"), id);
            }
        }
    }
}

// An identifier is as long as its encoded bytes are.
TEST(XmlTextReaderDoctype, BytesAndNotCharactersOfAnIdentifierCount) {
    std::string id;
    while (id.size() < kBuffer)
        id += "\xC3\xA9";
    EXPECT_EQ(ErrorOf("<!DOCTYPE a SYSTEM '" + id + "'><a/>"), "");
    EXPECT_EQ(ErrorOf("<!DOCTYPE a SYSTEM '" + id + "x'><a/>"), "Input buffer overflow");
}

TEST(XmlTextReaderDoctype, EntitiesEndWithTheirDocument) {
    support::DocumentStream first("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>");
    support::DocumentStream second("<a>&e;</a>");
    Xml::XmlTextReader reader;
    reader.SetEntityHandling(XmlEntityHandling::ExpandEntities);
    reader.SetStream(first.get(), false);
    EXPECT_NE(support::DumpNodes(reader).find("Text \"x\""), std::string::npos);
    reader.SetStream(second.get(), false);
    EXPECT_EQ(support::DumpNodes(reader),
              "Element a depth=1 @1:1\nerror 1:7 Undeclared entity [e]\n");
}

TEST(XmlTextReaderDoctype, ADocumentTypeMayFollowInTheNextDocument) {
    const std::string document = "<!DOCTYPE a SYSTEM 's' [<!NOTATION n PUBLIC 'p'>]><a/>";
    const std::string expected = support::DumpDocument(document);
    Xml::XmlTextReader reader;
    for (int i = 0; i < 3; ++i) {
        support::DocumentStream stream(document);
        reader.SetStream(stream.get(), false);
        EXPECT_EQ(support::DumpNodes(reader), expected);
    }
}

}  // namespace
