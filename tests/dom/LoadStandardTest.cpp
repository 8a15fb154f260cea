// SPDX-License-Identifier: MIT
//
// Loads by a reader that judges by the standard.
#include <espalier/dom.h>

#include "dom/LoadText.h"
#include "support/DocumentReader.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using support::DocumentReader;
using support::Lines;
using support::TreeBelow;
using Handling = Xml::XmlEntityHandling;

constexpr Handling::XML_ENTITY_HANDLING kAllHandlings[] = {
    Handling::ExpandNothing, Handling::ExpandCharEntities, Handling::ExpandEntities};

// A document whose nodes are made by its virtual functions.
class DerivedDocument : public Dom::Document {};

template <typename Class = Dom::Document>
Lines Loaded(std::string_view text, Handling handling) {
    DocumentReader reader{std::string(text), support::WithEntities(handling)};
    reader->SetConformance(Xml::XmlConformance::Standard);
    Class document;
    document.Load(*reader, "uri/text.xml");
    EXPECT_EQ(support::WrongLink(document), "") << text;
    EXPECT_EQ(reader->Conformance(), Xml::XmlConformance::Standard);
    return TreeBelow(document);
}

void ExpectTree(std::string_view text, Handling handling, const Lines& tree) {
    SCOPED_TRACE(text);
    EXPECT_EQ(Loaded(text, handling), tree);
    EXPECT_EQ(Loaded<DerivedDocument>(text, handling), tree);
}

std::string ErrorOf(std::string_view text, Handling handling) {
    try {
        Loaded(text, handling);
    } catch (const Xml::Exception& error) {
        return error.What();
    }
    return "";
}

}  // namespace

TEST(LoadStandard, AttributesThatTheDocumentTypeSuppliesAreInTheTree) {
    for (const auto handling : kAllHandlings) {
        ExpectTree("<!DOCTYPE a [<!ATTLIST a y CDATA 'd'>]><a x='1'><a y='2'/></a>", handling,
                   {R"(Element a x="1" y="d")", R"(  Element a y="2")"});
    }
}

TEST(LoadStandard, SuppliedAttributesDeclareNamespaces) {
    DocumentReader reader("<!DOCTYPE a [<!ATTLIST a xmlns:p CDATA 'urn:p'>]><a><p:b/></a>");
    reader->SetConformance(Xml::XmlConformance::Standard);
    Dom::Document document;
    document.Load(*reader, "");
    ASSERT_NE(document.DocumentElement()->FirstChild(), nullptr);
    EXPECT_EQ(document.DocumentElement()->FirstChild()->NamespaceURI(), "urn:p");
}

TEST(LoadStandard, SuppliedAttributesAreNotSpecified) {
    DocumentReader reader("<!DOCTYPE a [<!ATTLIST a y CDATA 'd'>]><a/>");
    reader->SetConformance(Xml::XmlConformance::Standard);
    Dom::Document document;
    document.Load(*reader, "");
    Dom::Attr* const attribute = document.DocumentElement()->GetAttributeNode("y");
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->Value(), "d");
    EXPECT_FALSE(attribute->Specified());
}

TEST(LoadStandard, EntitiesMayBeExpandedThatHoldMarkup) {
    ExpectTree("<!DOCTYPE a [<!ENTITY e 'x<b>y</b>'>]><a>&e;</a>", Handling::ExpandEntities,
               {"Element a", "  Text \"x\"", "  Element b", "    Text \"y\""});
}

TEST(LoadStandard, EntitiesThatCannotBeReadAreReferences) {
    for (const auto handling : {Handling::ExpandCharEntities, Handling::ExpandEntities}) {
        ExpectTree("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>x&e;</a>", handling,
                   {"Element a", "  Text \"x\"", "  EntityReference e"});
        ExpectTree("<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>", handling,
                   {"Element a", "  EntityReference e"});
    }
}

TEST(LoadStandard, AllVersionsThatBeginWithOneAreLoaded) {
    for (const char* const version : {"1.0", "1.1", "1.9", "1.10"}) {
        const std::string text = std::string("<?xml version='") + version + "'?><a/>";
        DocumentReader reader(text);
        reader->SetConformance(Xml::XmlConformance::Standard);
        Dom::Document document;
        document.Load(*reader, "");
        EXPECT_EQ(document.XmlVersion(), version);
        EXPECT_EQ(TreeBelow(document), Lines{"Element a"});
    }
    for (const char* const version : {"", "1", "1.", "2.0", "1.0a", " 1.0"}) {
        const std::string text = std::string("<?xml version='") + version + "'?><a/>";
        EXPECT_NE(ErrorOf(text, Handling::ExpandCharEntities), "") << text;
    }
}

TEST(LoadStandard, LineEndsAreNormalizedWhateverTheReaderIsTold) {
    for (const bool normalizes : {false, true}) {
        support::ReaderSettings settings;
        settings.normalization = normalizes;
        DocumentReader reader("<a x='1\r\n2'>\r\n.\r&#13;<!--\r\n--><?p 1\r2?></a>", settings);
        reader->SetConformance(Xml::XmlConformance::Standard);
        Dom::Document document;
        document.Load(*reader, "");
        EXPECT_EQ(TreeBelow(document),
                  (Lines{R"(Element a x="1 2")", R"(  Text "\n.\n\r")", R"(  Comment "\n")",
                         R"(  ProcessingInstruction p "1\n2")"}));
    }
}

TEST(LoadStandard, WhatIsNotWellFormedIsRefused) {
    for (const char* const text :
         {"<a/><b/>", "<a x='1'y='2'/>", "<p:a/>", "<!DOCTYPE a [<!ELEMENT a>]><a/>",
          "<!DOCTYPE a [<!ENTITY e '<b>'><!ENTITY f '</b>'>]><a>&e;&f;</a>"}) {
        for (const auto handling : kAllHandlings)
            EXPECT_NE(ErrorOf(text, handling), "") << text;
    }
}

TEST(LoadStandard, DocumentsThatAreLoadedByNameOrAsTextKeepTheOtherRules) {
    Dom::Document document;
    document.LoadXml("<!DOCTYPE a [<!ATTLIST a y CDATA 'd'>]><a x='1'z='2'/>", "");
    EXPECT_EQ(TreeBelow(document), Lines{R"(Element a x="1" z="2")"});
}
