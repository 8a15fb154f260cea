// SPDX-License-Identifier: MIT
//
// Declarations of entities: what they must look like, what their values hold, and how long their
// parts may be. Each declaration stands on the second line of its document.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/EscapedText.h"
#include "support/PrintAstring.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ErrorOf;
using support::ExpectRefusal;
using support::Refusal;
using support::WithEntities;
using Xml::XmlEntityHandling;

constexpr int kAny = Refusal::kAny;
constexpr std::size_t kBuffer = 1024;

constexpr char kUnexpectedToken[] = "Unexpected token";
constexpr char kNoExternalId[] = "Syntax error in entity declaration";
constexpr char kTwoLiterals[] = "Public ID requires two literals";
constexpr char kNoWhitespace[] = "Whitespace required between public ID and system ID";
constexpr char kNoPe[] = "PE reference not allowed in parsed entity value";
constexpr char kNoNdata[] = "'NDATA' or '>' expected";
constexpr char kPeNdata[] = "Cannot use the NDATA keyword in a parameter entity declaration";
constexpr char kNameTooLong[] = "Buffer overflow while reading markup token";

std::string InSubset(const std::string& declarations) {
    return "<!DOCTYPE a [\n" + declarations + "\n]><a/>";
}

// The rows' inputs are declarations.
template <std::size_t kCount>
void ExpectDeclarationRefusals(const Refusal (&refusals)[kCount]) {
    for (const Refusal& refusal : refusals)
        ExpectRefusal(InSubset(support::Unescape(refusal.input)), refusal, {});
}

// Returns what "&e;" stands for in content and in a value, which must be the same.
std::string ValueOf(const std::string& declarations, int bytesPerRead = 0) {
    DocumentReader reader("<!DOCTYPE a [" + declarations + "]><a x='&e;'>[&e;]</a>",
                          WithEntities(XmlEntityHandling::ExpandEntities), bytesPerRead);
    reader.ReadNodes(2);
    const std::string value = reader->GetAttribute(0).str();
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), Xml::XmlNodeType::Text);
    EXPECT_TRUE(reader->Value() == "[" + value + "]") << value.size();
    return value;
}

TEST(XmlTextReaderEntityDeclaration, Names) {
    const Refusal kRefusals[] = {
        {"<!ENTITY>", kUnexpectedToken, ">TAGEND", 2, 10, "nothing follows"},
        {"<!ENTITY >", kUnexpectedToken, ">TAGEND", 2, 11, "nothing but a blank"},
        {"<!ENTITY \"x\">", kUnexpectedToken, "\"QUOTE", 2, 11, "literal instead of a name"},
        {"<!ENTITY 'x'>", kUnexpectedToken, "'QUOTE", 2, 11, "literal instead of a name"},
        {"<!ENTITY = \"x\">", kUnexpectedToken, "=EQUALS", 2, 11, "equals sign"},
        {"<!ENTITY %>", kUnexpectedToken, ">TAGEND", 2, 12, "parameter entity without a name"},
        {"<!ENTITY % \"x\">", kUnexpectedToken, "\"QUOTE", 2, 13, "literal instead of a name"},
        {"<!ENTITY 1 \"x\">", kUnexpectedToken, "1NMTOKEN", 2, kAny, "digit"},
        {"<!ENTITY -e \"x\">", kUnexpectedToken, "-eNMTOKEN", 2, kAny, "hyphen"},
        {"<!ENTITY a:b:c \"x\">", "Illegal second colon in qualified name", "", 2, 12, "colons"},
        {"<!ENTITY \\x01 \"x\">", "Invalid character", "", 2, 10, "control code"},
        {"<!ENTITY e\\x01 \"x\">", "Invalid character", "", 2, 11, "control code in a name"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, WhatFollowsTheName) {
    const Refusal kRefusals[] = {
        {"<!ENTITY e>", kUnexpectedToken, ">TAGEND", 2, 12, "nothing follows"},
        {"<!ENTITY % e >", kUnexpectedToken, ">TAGEND", 2, 15, "nothing follows"},
        {"<!ENTITY e = \"x\">", kUnexpectedToken, "=EQUALS", 2, 13, "equals sign"},
        {"<!ENTITY e 5>", kUnexpectedToken, "5NMTOKEN", 2, kAny, "digit"},
        {"<!ENTITY e foo>", kNoExternalId, "", 2, 15, "other keyword"},
        {"<!ENTITY e system \"x\">", kNoExternalId, "", 2, 18, "small letters"},
        {"<!ENTITY e Public \"x\" \"y\">", kNoExternalId, "", 2, 18, "small letters"},
        {"<!ENTITY e SYSTEMS \"x\">", kNoExternalId, "", 2, 19, "longer keyword"},
        {"<!ENTITY e NDATA n>", kNoExternalId, "", 2, 17, "notation without an identifier"},
        {"<!ENTITY e\n  foo>", kNoExternalId, "", 3, 6, "other keyword on the next line"},
        {"<!ENTITY e \"x\" \"y\">", kUnexpectedToken, "\"QUOTE", 2, kAny, "second literal"},
        {"<!ENTITY e \"x\" NDATA n>", kUnexpectedToken, "NDATANAME", 2, kAny, "NDATA"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, ExternalIdentifiers) {
    const Refusal kRefusals[] = {
        {"<!ENTITY e SYSTEM>", kUnexpectedToken, ">TAGEND", 2, kAny, "no literal"},
        {"<!ENTITY e SYSTEM s>", kUnexpectedToken, "sNAME", 2, kAny, "name"},
        {"<!ENTITY e PUBLIC>", kUnexpectedToken, ">TAGEND", 2, kAny, "no literal"},
        {"<!ENTITY e PUBLIC \"p\"\"s\">", kNoWhitespace, "", 2, 23, "literals together"},
        {"<!ENTITY e PUBLIC \"p\"'s'>", kNoWhitespace, "", 2, 23, "literals together"},
        {"<!ENTITY e PUBLIC 'p'\"s\">", kNoWhitespace, "", 2, 23, "literals together"},
        {"<!ENTITY e PUBLIC \"p\">", kTwoLiterals, "", 2, 23, "one literal"},
        {"<!ENTITY e PUBLIC \"p\"x>", kTwoLiterals, "", 2, 23, "one literal and a name"},
        {"<!ENTITY % e PUBLIC \"p\">", kTwoLiterals, "", 2, 25, "parameter entity"},
        {"<!ENTITY e PUBLIC \"p\" >", kTwoLiterals, "", 2, kAny, "one literal and a blank"},
        {"<!ENTITY e PUBLIC \"p\" NDATA n>", kTwoLiterals, "", 2, kAny, "one literal and NDATA"},
        {"<!ENTITY e PUBLIC \"[\" \"s\">", "Invalid Public ID character", "", 2, 20, "bracket"},
        {"<!ENTITY e PUBLIC \"x\ty\" \"s\">", "Invalid Public ID character", "", 2, 21, "tab"},
        {"<!ENTITY e PUBLIC \"\n>\" \"s\">", "Invalid Public ID character", "", 3, 1, "line"},
        {"<!ENTITY e PUBLIC \"\\u{E9}\" \"s\">", "Invalid Public ID character", "", 2, 20,
         "accent"},
        {"<!ENTITY e SYSTEM \"\\x01\">", "Invalid character", "", 2, 20, "control code"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, EveryCharacterOfAPublicIdentifier) {
    const std::string allowed =
        " \r\n-'()+,./:=?;!*#@$_%0123456789"
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    for (char character = ' '; character <= '~'; ++character) {
        if (character == '"') continue;  // ends it
        const std::string document =
            InSubset(std::string("<!ENTITY e PUBLIC \"x") + character + "\" 's'>");
        EXPECT_EQ(ErrorOf(document),
                  allowed.find(character) != std::string::npos ? "" : "Invalid Public ID character")
            << character;
    }
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY e PUBLIC \"\r\n\" \"s\">")), "");
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY e PUBLIC \"\x7F\" \"s\">")),
              "Invalid Public ID character");
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY e PUBLIC '' ''>")), "");
    // The apostrophe ends what it began.
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY e PUBLIC 'p'' 's'>")), kNoWhitespace);
}

TEST(XmlTextReaderEntityDeclaration, NotationsOfUnparsedEntities) {
    const Refusal kRefusals[] = {
        {"<!ENTITY % p SYSTEM \"s\" NDATA n>", kPeNdata, "", 2, 30, "parameter entity"},
        {"<!ENTITY % p SYSTEM \"s\" NDATA>", kPeNdata, "", 2, 30, "before the white space"},
        {"<!ENTITY % p PUBLIC \"p\" \"s\" NDATA n>", kPeNdata, "", 2, 34, "parameter entity"},
        {"<!ENTITY e SYSTEM \"s\" NDATA>", "Whitespace expected after NDATA", "", 2, 28, "end"},
        {"<!ENTITY e SYSTEM \"s\" NDATA\"n\">", "Whitespace expected after NDATA", "", 2, 28,
         "literal"},
        {"<!ENTITY e SYSTEM \"s\" NDATA n>", "Reference to undeclared notation", "", 2, 30, "n"},
        {"<!ENTITY e SYSTEM \"s\" NDATA e>", "Reference to undeclared notation", "", 2, 30,
         "the entity itself"},
        {"<!ENTITY n \"\"><!ENTITY e SYSTEM \"s\" NDATA n>", "Reference to undeclared notation", "",
         2, 44, "an entity of that name"},
        {"<!ENTITY e SYSTEM \"s\" NDATA n><!NOTATION n SYSTEM \"s\">",
         "Reference to undeclared notation", "", 2, 30, "declared behind"},
        {"<!NOTATION n SYSTEM \"s\"><!ENTITY e SYSTEM \"s\" NDATA N>",
         "Reference to undeclared notation", "", 2, kAny, "other name"},
        {"<!ENTITY e SYSTEM \"s\" foo>", kNoNdata, "", 2, 26, "other keyword"},
        {"<!ENTITY e SYSTEM \"s\" ndata n>", kNoNdata, "", 2, 28, "small letters"},
        {"<!ENTITY e SYSTEM \"s\" \"x\">", kNoNdata, "", 2, 24, "literal"},
        {"<!ENTITY e PUBLIC \"p\" \"s\" =>", kNoNdata, "", 2, 28, "equals sign"},
        {"<!ENTITY % p SYSTEM \"s\" foo>", kNoNdata, "", 2, 28, "parameter entity"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, Values) {
    const Refusal kRefusals[] = {
        {"<!ENTITY e \"%p;\">", kNoPe, "", 2, 14, "parameter entity"},
        {"<!ENTITY e 'x\n%p;'>", kNoPe, "", 3, 2, "parameter entity on the next line"},
        {"<!ENTITY e \"100%\">", kNoPe, "", 2, 17, "percent sign at the end"},
        {"<!ENTITY e \"% \">", kNoPe, "", 2, 14, "percent sign and a blank"},
        {"<!ENTITY % p \"%q;\">", kNoPe, "", 2, 16, "in a parameter entity"},
        {"<!ENTITY % q \"1\"><!ENTITY e \"%q;\">", kNoPe, "", 2, 31, "declared"},
        {"<!ENTITY e \"&;\">", "Bad name", "", 2, 14, "no name"},
        {"<!ENTITY e \"& x\">", "Bad name", "", 2, 14, "blank"},
        {"<!ENTITY e \"&1;\">", "Bad name", "", 2, 14, "digit"},
        {"<!ENTITY e \"x&\">", "Bad name", "", 2, 15, "end of the literal"},
        {"<!ENTITY e \"&b\">", "Invalid named entity", "", 2, kAny, "no semicolon"},
        {"<!ENTITY e \"&amp\">", "Invalid named entity", "", 2, kAny, "no semicolon"},
        {"<!ENTITY e \"&am p;\">", "Invalid named entity", "", 2, kAny, "blank"},
        {"<!ENTITY e \"&#0;\">", "Invalid character", "", 2, kAny, "code 0"},
        {"<!ENTITY e \"&#xFFFE;\">", "Invalid character", "", 2, kAny, "no character"},
        {"<!ENTITY e \"&#1a;\">", "Invalid character", "", 2, 16, "hexadecimal digit"},
        {"<!ENTITY e \"&#65\">", "Invalid character", "", 2, 17, "no semicolon"},
        {"<!ENTITY e \"&#x110000;\">", "Character entity overflow", "", 2, kAny, "last code"},
        {"<!ENTITY e \"\\x01\">", "Invalid character", "", 2, 13, "control code"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, ALaterDeclarationOfTheNameIsParsedAllTheSame) {
    const Refusal kRefusals[] = {
        {"<!ENTITY e \"1\"><!ENTITY e \"%p;\">", kNoPe, "", 2, 29, "value"},
        {"<!ENTITY e \"1\"><!ENTITY e foo>", kNoExternalId, "", 2, 30, "keyword"},
        {"<!ENTITY e \"1\"><!ENTITY e SYSTEM \"s\" NDATA n>", "Reference to undeclared notation",
         "", 2, 45, "notation"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, TheErrorThatComesFirstIsReported) {
    const Refusal kRefusals[] = {
        {"<!ENTITY % p SYSTEM \"s\" NDATA\"n\">", kPeNdata, "", 2, 30, "not the white space"},
        {"<!ENTITY e \"&;%p;\">", "Bad name", "", 2, 14, "left to right"},
        {"<!ENTITY e \"%p;&;\">", kNoPe, "", 2, 14, "left to right"},
        {"<!ENTITY e PUBLIC \"[\"\"s\">", "Invalid Public ID character", "", 2, 20, "the literal"},
        {"<!NOTATION n:m SYSTEM \"s\"><!ENTITY>", "Colon not allowed in NOTATION name", "", 2, 14,
         "the first declaration"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderEntityDeclaration, OtherDeclarationsThatBeginAlikeAreSkipped) {
    for (const char* declaration :
         {"<!ENTITIES x>", "<!entity e>", "<!Entity %p;>", "<!ENTITYe>"}) {
        EXPECT_EQ(ErrorOf(InSubset(declaration)), "") << declaration;
    }
}

TEST(XmlTextReaderEntityDeclaration, WhiteSpaceMayBeMissing) {
    EXPECT_EQ(ValueOf("<!ENTITY e\"x\">"), "x");
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY % p\"x\"><!ENTITY f SYSTEM\"s\">")), "");
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY f PUBLIC\"p\" \"s\">")), "");
}

TEST(XmlTextReaderEntityDeclaration, TheTextHasCharactersForTheirReferences) {
    const struct {
        const char* declarations;
        const char* value;
    } kCases[] = {
        {"<!ENTITY e ''>", ""},
        {"<!ENTITY e 'x\"y'>", "x\"y"},
        {"<!ENTITY e \"x'y\">", "x'y"},
        {"<!ENTITY e '&#39;&#34;'>", "'\""},
        {"<!ENTITY e '&#65;&#x42;&#x1F600;'>", "AB\xF0\x9F\x98\x80"},
        {"<!ENTITY e '&#xD7FF;&#xFFFD;&#x10FFFF;'>", "\xED\x9F\xBF\xEF\xBF\xBD\xF4\x8F\xBF\xBF"},
        {"<!ENTITY e '&#37;p;'>", "%p;"},
        {"<!ENTITY e '&#37;'><!ENTITY % p 'x'>", "%"},
        {"<!ENTITY e '&#9;&#10;&#13;'>", "\t\n\r"},
        {"<!ENTITY e '\t\r\n\n\r'>", "\t\r\n\n\r"},
        {"<!ENTITY e 'a>b]]>c'>", "a>b]]>c"},
        {"<!ENTITY e '&lt;&gt;&amp;&apos;&quot;'>", "<>&'\""},
        {"<!ENTITY e '&#38;#65;'>", "A"},
        {"<!ENTITY e '&#38;f;'><!ENTITY f 'x'>", "x"},
        {"<!ENTITY e '&#38;#38;f;'><!ENTITY f 'x'>", "&f;"},
        {"<!ENTITY e '&f;'><!ENTITY f '&g;&g;'><!ENTITY g 'x'>", "xx"},
        {"<!ENTITY e '&amp;f;'><!ENTITY f 'x'>", "&f;"},
    };
    for (const auto& c : kCases) {
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            SCOPED_TRACE(std::string(c.declarations) + ", " + std::to_string(bytesPerRead));
            EXPECT_EQ(ValueOf(c.declarations, bytesPerRead), c.value);
        }
    }
}

TEST(XmlTextReaderEntityDeclaration, AValueMayBeOfAnyLength) {
    for (const char* unit : {"x", "x] ]]y\n-- ?", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\r\n"}) {
        for (const std::size_t bytes : {1000U, 1020U, 1024U, 1030U, 2048U, 5000U, 300000U}) {
            std::string value;
            while (value.size() < bytes)
                value += unit;
            for (const int bytesPerRead : {0, 1, 7}) {
                // Compared by hand: a difference of much text says nothing when printed.
                EXPECT_TRUE(ValueOf("<!ENTITY e '" + value + "'>", bytesPerRead) == value)
                    << unit << ", " << bytes << ", " << bytesPerRead;
            }
        }
    }
}

TEST(XmlTextReaderEntityDeclaration, AValueMayHoldAnyNumberOfReferences) {
    std::string literal;
    std::string value;
    for (int i = 0; i < 20000; ++i) {
        literal += "&#65;&f;&amp;";
        value += "A-&";
    }
    for (const int bytesPerRead : {0, 1, 7}) {
        EXPECT_TRUE(ValueOf("<!ENTITY e '" + literal + "'><!ENTITY f '-'>", bytesPerRead) == value);
    }
}

TEST(XmlTextReaderEntityDeclaration, ManyDeclarations) {
    constexpr int kCount = 50000;
    std::string document = "<!DOCTYPE a [";
    for (int i = 0; i < kCount; ++i) {
        document += "<!ENTITY e" + std::to_string(i) + " '" + std::to_string(i) + "'>\n";
    }
    document += "]><a x='&e0;'>&e49999;,&e25000;</a>";
    DocumentReader reader(document, WithEntities(XmlEntityHandling::ExpandEntities));
    reader.ReadNodes(2);
    EXPECT_EQ(reader->GetAttribute("x"), "0");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Value(), "49999,25000");
}

// Places for names and identifiers of the longest kind.
struct LongPlace {
    const char* before;
    const char* after;
    const char* error;  // where there is one byte too many
};

constexpr LongPlace kLongPlaces[] = {
    {"<!ENTITY ", " 'x'>", kNameTooLong},
    {"<!ENTITY % ", " 'x'>", kNameTooLong},
    {"<!ENTITY e '&", ";'>", kNameTooLong},
    {"<!ENTITY e SYSTEM '", "'>", "Input buffer overflow"},
    {"<!ENTITY e PUBLIC 'p' \"", "\">", "Input buffer overflow"},
    {"<!ENTITY e PUBLIC \"", "\" 's'>", "Input buffer overflow"},
    {"<!ENTITY % e SYSTEM '", "'>", "Input buffer overflow"},
    {"<!NOTATION ", " SYSTEM 's'>", kNameTooLong},
    {"<!NOTATION n SYSTEM '", "'>", "Input buffer overflow"},
    {"<!NOTATION n PUBLIC '", "'>", "Input buffer overflow"},
    {"<!NOTATION n PUBLIC 'p' '", "'>", "Input buffer overflow"},
};

TEST(XmlTextReaderEntityDeclaration, NamesAndIdentifiersOf1024BytesPassAndLongerOnesFail) {
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        const std::size_t width = support::WriteInForm("<aaa", {"", form.unit, false})->size() / 4;
        const std::size_t most = kBuffer / width;
        for (const LongPlace& place : kLongPlaces) {
            for (const std::size_t length : {most - 1, most, most + 1, most * 3}) {
                for (const std::size_t pad : {0U, 1U, 500U, 1000U}) {
                    const std::string utf8 =
                        InSubset("<!--" + std::string(pad, 'c') + "-->" + place.before +
                                 std::string(length, 'n') + place.after);
                    const auto document = support::WriteInForm(utf8, form);
                    ASSERT_TRUE(document.has_value());
                    for (const int bytesPerRead : {0, 7}) {
                        EXPECT_EQ(ErrorOf(*document, bytesPerRead),
                                  length <= most ? "" : place.error)
                            << form.name << ": " << place.before << length << ", " << pad << ", "
                            << bytesPerRead;
                    }
                }
            }
        }
    }
}

TEST(XmlTextReaderEntityDeclaration, ANotationOf1024BytesIsFound) {
    const std::string name(kBuffer, 'n');
    const std::string notation = "<!NOTATION " + name + " SYSTEM 's'>";
    EXPECT_EQ(ErrorOf(InSubset(notation + "<!ENTITY e SYSTEM 's' NDATA " + name + ">")), "");
    EXPECT_EQ(ErrorOf(InSubset(notation + "<!ENTITY e SYSTEM 's' NDATA " + name + "n>")),
              kNameTooLong);
}

TEST(XmlTextReaderEntityDeclaration, ACharacterReferenceFitsIntoABuffer) {
    const std::string zeros(kBuffer + 1, '0');
    EXPECT_EQ(ErrorOf(InSubset("<!ENTITY e '&#" + zeros + "65;'>")), "Input buffer overflow");
    EXPECT_EQ(ValueOf("<!ENTITY e '&#" + zeros.substr(0, 1000) + "65;'>"), "A");
}

}  // namespace
