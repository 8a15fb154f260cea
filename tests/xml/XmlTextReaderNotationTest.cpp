// SPDX-License-Identifier: MIT
//
// Declarations of notations. Each stands on the second line of its document.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EscapedText.h"
#include "support/Refusal.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ExpectRefusal;
using support::ReaderSettings;
using support::Refusal;

constexpr int kAny = Refusal::kAny;

constexpr char kNoBlankBefore[] = "Whitespace required after NOTATION";
constexpr char kNoBlankBehind[] = "Whitespace required after notation name";
constexpr char kColon[] = "Colon not allowed in NOTATION name";
constexpr char kDuplicate[] = "Duplicate notation name";
constexpr char kNoExternalId[] = "Syntax error in entity declaration";
constexpr char kUnexpectedToken[] = "Unexpected token";

std::string InSubset(const std::string& declarations) {
    return "<!DOCTYPE a [\n" + declarations + "\n]><a/>";
}

// Reads the document to its end; fails the test where there is an error.
void ExpectAccepted(const std::string& declarations) {
    SCOPED_TRACE(declarations);
    for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
        try {
            DocumentReader reader(InSubset(declarations), {}, bytesPerRead);
            reader.ReadAll();
            EXPECT_TRUE(reader->Eof());
        } catch (const Xml::Exception& error) {
            ADD_FAILURE() << error.What() << " at " << error.LineNumber() << ":" << error.LinePos()
                          << ", bytes per read: " << bytesPerRead;
        }
    }
}

// The rows' inputs are declarations.
template <std::size_t kCount>
void ExpectDeclarationRefusals(const Refusal (&refusals)[kCount],
                               const ReaderSettings& settings = {}) {
    for (const Refusal& refusal : refusals)
        ExpectRefusal(InSubset(support::Unescape(refusal.input)), refusal, settings);
}

TEST(XmlTextReaderNotation, Names) {
    const Refusal kRefusals[] = {
        {"<!NOTATION>", kNoBlankBefore, "", 2, 11, "nothing follows"},
        {"<!NOTATION\"n\" SYSTEM \"s\">", kNoBlankBefore, "", 2, 11, "literal"},
        {"<!NOTATION[n SYSTEM \"s\">", kNoBlankBefore, "", 2, 11, "bracket"},
        {"<!NOTATION n>", kNoBlankBehind, "", 2, 13, "nothing follows"},
        {"<!NOTATION n\"s\">", kNoBlankBehind, "", 2, 13, "literal"},
        {"<!NOTATION\nnn>", kNoBlankBehind, "", 3, 3, "on the next line"},
        // The colon of a prefixed name adds nothing to the column.
        {"<!NOTATION n:m SYSTEM \"s\">", kColon, "", 2, 14, "colon"},
        {"<!NOTATION n:m>", kColon, "", 2, 14, "colon and nothing else"},
        {"<!NOTATION n:m:l SYSTEM \"s\">", "Illegal second colon in qualified name", "", 2, 14,
         "two colons"},
        {"<!NOTATION >", kUnexpectedToken, ">TAGEND", 2, kAny, "no name"},
        {"<!NOTATION \"n\" SYSTEM \"s\">", kUnexpectedToken, "\"QUOTE", 2, kAny, "literal"},
        {"<!NOTATION n SYSTEM \"\\x01\">", "Invalid character", "", 2, 22, "control code"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderNotation, AColonIsRefusedWithoutNamespacesToo) {
    const Refusal kRefusals[] = {
        {"<!NOTATION n:m SYSTEM \"s\">", kColon, "", 2, kAny, "colon"},
        {"<!NOTATION n:m:l SYSTEM \"s\">", kColon, "", 2, kAny, "two colons"},
    };
    ReaderSettings settings;
    settings.namespaces = false;
    ExpectDeclarationRefusals(kRefusals, settings);
}

TEST(XmlTextReaderNotation, ExternalIdentifiers) {
    const Refusal kRefusals[] = {
        {"<!NOTATION n foo \"s\">", kNoExternalId, "", 2, 17, "other keyword"},
        {"<!NOTATION n system \"s\">", kNoExternalId, "", 2, 20, "small letters"},
        {"<!NOTATION n SYSTEM>", kUnexpectedToken, ">TAGEND", 2, kAny, "no literal"},
        {"<!NOTATION n PUBLIC>", kUnexpectedToken, ">TAGEND", 2, kAny, "no literal"},
        {"<!NOTATION n PUBLIC \"[\">", "Invalid Public ID character", "", 2, 22, "bracket"},
        {"<!NOTATION n PUBLIC \"p\" >", "Public ID requires two literals", "", 2, kAny,
         "a blank announces a second literal"},
        {"<!NOTATION n PUBLIC \"p\" s>", "Public ID requires two literals", "", 2, kAny, "name"},
        {"<!NOTATION n SYSTEM \"s\" NDATA n>", kUnexpectedToken, "NDATANAME", 2, kAny, "NDATA"},
        {"<!NOTATION n SYSTEM \"s\" \"t\">", kUnexpectedToken, "\"QUOTE", 2, kAny, "literal"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderNotation, Duplicates) {
    const Refusal kRefusals[] = {
        {"<!NOTATION n SYSTEM \"s\"><!NOTATION n SYSTEM \"s\">", kDuplicate, "", 2, kAny, "same"},
        {"<!NOTATION n SYSTEM \"s\">\n<!NOTATION n PUBLIC \"p\">", kDuplicate, "", 3, kAny,
         "other"},
        {"<!NOTATION n PUBLIC \"p\">\n<!NOTATION m PUBLIC \"p\">\n<!NOTATION n SYSTEM \"t\">",
         kDuplicate, "", 4, kAny, "one between"},
    };
    ExpectDeclarationRefusals(kRefusals);
}

TEST(XmlTextReaderNotation, WhatIsAccepted) {
    for (const char* declarations : {
             "<!NOTATION n SYSTEM 's'>",
             "<!NOTATION n SYSTEM \"\" >",
             "<!NOTATION n PUBLIC 'p'>",
             "<!NOTATION n PUBLIC \"p\" 's'>",
             "<!NOTATION\n\tn\r\nPUBLIC\n'p'\n's'\n>",
             "<!NOTATION n SYSTEM 's'><!NOTATION N SYSTEM 's'>",
             // Names of their own.
             "<!ENTITY n 'x'><!NOTATION n SYSTEM 's'><!ENTITY % n 'y'>",
             "<!NOTATION n SYSTEM 's'><!ENTITY n SYSTEM 'x' NDATA n>",
             "<!NOTATION n PUBLIC 'p'><!ENTITY e PUBLIC 'p' 's' NDATA n ><!ENTITY e 'x'>",
             // Another keyword is skipped.
             "<!NOTATIONS n:m><!notation n:m>",
         }) {
        ExpectAccepted(declarations);
    }
}

TEST(XmlTextReaderNotation, ManyNotations) {
    constexpr int kCount = 20000;
    std::string declarations;
    for (int i = 0; i < kCount; ++i) {
        const std::string name = "n" + std::to_string(i);
        declarations +=
            "<!NOTATION " + name + " SYSTEM 's'><!ENTITY e SYSTEM 's' NDATA " + name + ">";
    }
    DocumentReader reader(InSubset(declarations));
    reader.ReadAll();
    EXPECT_TRUE(reader->Eof());
}

}  // namespace
