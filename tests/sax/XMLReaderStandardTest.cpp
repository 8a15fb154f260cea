// SPDX-License-Identifier: MIT
//
// Parses by a reader that was given and judges by the standard.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/DocumentReader.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using support::DocumentReader;
using Lines = std::vector<std::string>;

constexpr Xml::XmlEntityHandling::XML_ENTITY_HANDLING kExpanding[] = {
    Xml::XmlEntityHandling::ExpandCharEntities,
    Xml::XmlEntityHandling::ExpandEntities,
};

class StandardSax : public testing::Test {
protected:
    StandardSax() { recorder_.Attach(parser_); }

    void Parse(std::string_view document, Xml::XmlEntityHandling handling,
               Xml::XmlConformance conformance = Xml::XmlConformance::Standard) {
        DocumentReader reader{std::string(document), support::WithEntities(handling)};
        reader->SetConformance(conformance);
        parser_.parse(sax::InputSource(&*reader));
        EXPECT_EQ(reader->Conformance(), conformance);
    }

    // Parses a document and returns the lines between the ends of it.
    Lines Events(std::string_view document, Xml::XmlEntityHandling handling) {
        Parse(document, handling);
        const Lines lines = recorder_.TakeLines();
        EXPECT_GE(lines.size(), 3U);
        return {lines.begin() + 2, lines.end() - 1};
    }

    sax::XMLReader parser_;
    support::EventRecorder recorder_;
};

struct Row {
    const char* document;
    Lines events;
};

void ExpectEvents(const Row& row, const Lines& events) { EXPECT_EQ(events, row.events); }

}  // namespace

TEST_F(StandardSax, TellsAttributesThatTheDocumentTypeSupplies) {
    const Row kRows[] = {
        {"<!DOCTYPE a [<!ATTLIST a y CDATA 'd' z CDATA #IMPLIED>]><a x='1'/>",
         {R"(start a x="1" y="d")", "end a"}},
        {"<!DOCTYPE a [<!ATTLIST a y CDATA 'd'>]><a y='1'/>", {R"(start a y="1")", "end a"}},
        {"<!DOCTYPE a [<!ENTITY e 'v'><!ATTLIST a y CDATA '&e;&#33;'>]><a/>",
         {R"(start a y="v!")", "end a"}},
        {"<!DOCTYPE a [<!ATTLIST a xmlns CDATA 'urn:a'>]><a/>",
         {R"(start {urn:a}a a xmlns="urn:a")", "end {urn:a}a a"}},
        {"<!DOCTYPE a [<!ATTLIST a x NMTOKENS #IMPLIED>]><a x=' 1  2 '/>",
         {R"(start a x="1 2")", "end a"}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.document);
        for (const auto handling : kExpanding)
            ExpectEvents(row, Events(row.document, handling));
    }
}

TEST_F(StandardSax, ExpandsWhatTheDocumentDeclares) {
    const Row kRows[] = {
        {"<!DOCTYPE a [<!ENTITY e 'x<b/>y'>]><a>&e;</a>",
         {"start a", R"(text "x")", "start b", "end b", R"(text "y")", "end a"}},
        {"<!DOCTYPE a [<!ENTITY e 'v'>]><a x='&e;'/>", {R"(start a x="v")", "end a"}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.document);
        for (const auto handling : kExpanding)
            ExpectEvents(row, Events(row.document, handling));
    }
}

TEST_F(StandardSax, TellsEntitiesThatItCannotRead) {
    const Row kRows[] = {
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>&e;</a>", {"start a", "skipped e", "end a"}},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>", {"start a", "skipped e", "end a"}},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'>%p;]><a>x&e;y</a>",
         {"start a", R"(text "x")", "skipped e", R"(text "y")", "end a"}},
        {"<!DOCTYPE a SYSTEM 'a.dtd' [<!ENTITY f 'x&e;<b/>'>]><a>&f;</a>",
         {"start a", R"(text "x")", "skipped e", "start b", "end b", "end a"}},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a x='v&e;w'/>", {R"(start a x="vw")", "end a"}},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.document);
        for (const auto handling : kExpanding)
            ExpectEvents(row, Events(row.document, handling));
    }
}

// Deliberate: an external entity stands for nothing, and nobody is told.
TEST_F(StandardSax, TellsNoSkippedEntitiesOfOtherReaders) {
    Parse("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>&e;</a>",
          Xml::XmlEntityHandling::ExpandCharEntities, Xml::XmlConformance::Compatible);
    EXPECT_EQ(recorder_.lines(),
              (Lines{"locator", "document", "start a", "end a", "end document"}));
}

TEST_F(StandardSax, TellsNotationsAndUnparsedEntities) {
    const Row row = {
        "<!DOCTYPE a [<!NOTATION n PUBLIC 'p' 's'><!NOTATION m PUBLIC 'q' >"
        "<!ENTITY % d '<!ENTITY u SYSTEM \"u\" NDATA n>'>%d;]><a/>",
        {R"(notation n "p" "s")", R"(notation m "q" "")", R"(unparsed u "" "u" n)", "start a",
         "end a"}};
    for (const auto handling : kExpanding)
        ExpectEvents(row, Events(row.document, handling));
}

TEST_F(StandardSax, NormalizesWhateverTheFeatureSays) {
    for (const bool normalizes : {false, true}) {
        parser_.setFeature(sax::features::kNormalization, normalizes);
        const Row row = {"<a x='1\r\n2&#10;'>\r\n.\r&#13;</a>",
                         {R"(start a x="1 2\n")", R"(text "\n.\n\r")", "end a"}};
        for (const auto handling : kExpanding)
            ExpectEvents(row, Events(row.document, handling));
    }
}

TEST_F(StandardSax, RefusesWhatTheReaderOfItsOwnTakes) {
    const struct {
        const char* document;
        Lines events;  // of a parser without such a reader
    } kRows[] = {
        {"<a/><b/>", {"start a", "end a", "start b", "end b"}},
        {"<a x='1'y='2'/>", {R"(start a x="1" y="2")", "end a"}},
        {"<p:a/>", {"start {}a p:a", "end {}a p:a"}},
        {"<!DOCTYPE a [<!ELEMENT a>]><a/>", {"start a", "end a"}},
        {"<!DOCTYPE a [<!ENTITY e '<b>'><!ENTITY f '</b>'>]><a>&e;&f;</a>",
         {"start a", "start b", "end b", "end a"}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.document);
        for (const auto handling : kExpanding) {
            const std::string error = support::WhatIsThrown([&] { Parse(row.document, handling); });
            EXPECT_TRUE(error.starts_with("Exception: ")) << error;
            recorder_.TakeLines();
        }
        support::ParseText(parser_, row.document);
        const Lines lines = recorder_.TakeLines();
        ASSERT_GE(lines.size(), 3U);
        EXPECT_EQ(Lines(lines.begin() + 2, lines.end() - 1), row.events);
    }
}
