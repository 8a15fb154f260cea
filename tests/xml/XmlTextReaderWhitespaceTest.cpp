// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentReader;
using support::ReaderSettings;
using Xml::XmlNodeType;
using Xml::XmlSpace;
using Xml::XmlTextReader;

// Returns the type of the node that the blank in the document gives, or "-" for none.
std::string BlankIn(const std::string& document, XmlTextReader::XmlWsHandlingEnum handling) {
    ReaderSettings settings;
    settings.whitespace = handling;
    DocumentReader reader(document, settings);
    std::string found = "-";
    while (reader->Read()) {
        const XmlNodeType type = reader->NodeType();
        if (type != XmlNodeType::Whitespace && type != XmlNodeType::SignificantWhitespace) continue;
        EXPECT_EQ(found, "-") << document;
        EXPECT_EQ(reader->Value(), " ");
        found = type.ToString();
    }
    return found;
}

TEST(XmlTextReaderWhitespace, TheSettingAndXmlSpaceDecideTogether) {
    const struct {
        const char* document;
        const char* none;
        const char* significant;
        const char* all;
    } kCases[] = {
        {"<a> </a>", "-", "-", "Whitespace"},
        {" <a/>", "-", "-", "Whitespace"},
        {"<a/> ", "-", "-", "Whitespace"},
        {"<!DOCTYPE a> <a/>", "-", "-", "Whitespace"},
        {"<a xml:space='default'> </a>", "-", "-", "Whitespace"},
        {"<a xml:space='preserve'> </a>", "-", "SignificantWhitespace", "SignificantWhitespace"},
        {"<a xml:space='preserve'><b> </b></a>", "-", "SignificantWhitespace",
         "SignificantWhitespace"},
        {"<a xml:space='preserve'><b xml:space='default'> </b></a>", "-", "-", "Whitespace"},
        {"<a xml:space='default'><b xml:space='preserve'> </b></a>", "-", "SignificantWhitespace",
         "SignificantWhitespace"},
        {"<a><b xml:space='preserve'/> </a>", "-", "-", "Whitespace"},
        {"<a xml:space='preserve'/> ", "-", "-", "Whitespace"},
        {"<a xml:space='preserve'></a> ", "-", "-", "Whitespace"},
        {"<a>&#32;</a>", "-", "-", "-"},
        {"<a><![CDATA[ ]]></a>", "-", "-", "-"},
        {"<a> x </a>", "-", "-", "-"},
        {"<a> &lt;</a>", "-", "-", "Whitespace"},
        {"<a>&lt; </a>", "-", "-", "-"},
        {"<a>&e; </a>", "-", "-", "Whitespace"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.document);
        EXPECT_EQ(BlankIn(c.document, XmlTextReader::WsNone), c.none);
        EXPECT_EQ(BlankIn(c.document, XmlTextReader::WsSignificant), c.significant);
        EXPECT_EQ(BlankIn(c.document, XmlTextReader::WsAll), c.all);
    }
}

TEST(XmlTextReaderWhitespace, XmlSpaceIsInForceUntilItsElementHasBeenLeft) {
    DocumentReader reader("<a><b xml:space='preserve'>x<c xml:space='default'/></b><d/></a>");
    const XmlSpace::SPACE kExpected[] = {
        XmlSpace::SpaceNone,      // a
        XmlSpace::SpacePreserve,  // b
        XmlSpace::SpacePreserve,  // x
        XmlSpace::SpaceDefault,   // c
        XmlSpace::SpaceNone,      // end of b, which has been left
        XmlSpace::SpaceNone,      // d
        XmlSpace::SpaceNone,      // end of a
    };
    for (const XmlSpace::SPACE space : kExpected) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->GetXmlSpace(), space) << reader->Name();
    }
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->GetXmlSpace(), XmlSpace::SpaceNone);
}

TEST(XmlTextReaderWhitespace, XmlLangIsInForceUntilItsElementHasBeenLeft) {
    DocumentReader reader("<a xml:lang='en'><b xml:lang='de'>x<c/></b><d xml:lang=''/></a>");
    for (const char* language : {"en", "de", "de", "de", "en", "", ""}) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->XmlLang(), language) << reader->Name();
    }
}

TEST(XmlTextReaderWhitespace, LanguagesThatAreAccepted) {
    for (const std::string language : {"", "e", "en", "EN", "de-CH-1996", "x-klingon", "i-navajo",
                                       "abcdefgh-12345678", "zh-Hant-TW"}) {
        DocumentReader reader("<a xml:lang='" + language + "'/>");
        reader.ReadNodes(1);
        EXPECT_EQ(reader->XmlLang(), language);
    }
}

TEST(XmlTextReaderWhitespace, DepthOfWhitespaceNodes) {
    DocumentReader reader(" <a> <b> </b> </a> ");
    for (const int depth : {1, 1, 2, 2, 3, 2, 2, 1, 1}) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->Depth(), depth);
    }
}

}  // namespace
