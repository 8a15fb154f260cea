// SPDX-License-Identifier: MIT
//
// The setting itself: when it may be changed, how long it holds, and one reader in both modes.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::DocumentStream;
using support::MessageOf;
using support::NodesFromHere;
using Xml::XmlConformance;
using Xml::XmlTextReader;

constexpr char kNotNow[] = "Invalid Operation [SetConformance]";

std::string MessageOfSetting(XmlTextReader& reader) {
    return MessageOf([&] { reader.SetConformance(XmlConformance::Standard); });
}

TEST(StandardModeSetting, IsCompatibleAtFirst) {
    const XmlTextReader reader;
    EXPECT_EQ(reader.Conformance(), XmlConformance::Compatible);
    EXPECT_STREQ(reader.Conformance().ToString(), "Compatible");
    EXPECT_STREQ(XmlConformance(XmlConformance::Standard).ToString(), "Standard");
    EXPECT_EQ(XmlConformance(), XmlConformance::Compatible);
}

TEST(StandardModeSetting, MayChangeUntilReadingBegins) {
    DocumentStream stream("<a><b/></a>");
    XmlTextReader reader;
    ASSERT_EQ(reader.ReadState(), XmlTextReader::Closed);
    EXPECT_EQ(MessageOfSetting(reader), "");
    EXPECT_EQ(reader.Conformance(), XmlConformance::Standard);
    reader.SetConformance(XmlConformance::Compatible);

    reader.SetStream(stream.get(), false);
    ASSERT_EQ(reader.ReadState(), XmlTextReader::Initial);
    EXPECT_EQ(MessageOfSetting(reader), "");
    EXPECT_EQ(reader.Conformance(), XmlConformance::Standard);
    reader.SetConformance(XmlConformance::Compatible);

    reader.Read();
    ASSERT_EQ(reader.ReadState(), XmlTextReader::Interactive);
    EXPECT_EQ(MessageOfSetting(reader), kNotNow);
    EXPECT_EQ(reader.Conformance(), XmlConformance::Compatible);
    EXPECT_EQ(NodesFromHere(reader), "Element b; EndElement a");
    ASSERT_EQ(reader.ReadState(), XmlTextReader::EndOfFile);
    EXPECT_EQ(MessageOfSetting(reader), kNotNow);

    reader.Close();
    EXPECT_EQ(MessageOfSetting(reader), "");
}

TEST(StandardModeSetting, DoesNotChangeBehindAnError) {
    DocumentStream stream("<a></b>");
    XmlTextReader reader;
    reader.SetConformance(XmlConformance::Standard);
    reader.SetStream(stream.get(), false);
    NodesFromHere(reader);
    ASSERT_EQ(reader.ReadState(), XmlTextReader::Error);
    EXPECT_EQ(MessageOf([&] { reader.SetConformance(XmlConformance::Compatible); }), kNotNow);
    EXPECT_EQ(reader.Conformance(), XmlConformance::Standard);
}

TEST(StandardModeSetting, TellsNoPlaceWhenItIsRefused) {
    DocumentStream stream("<a/>");
    XmlTextReader reader;
    reader.SetStream(stream.get(), false);
    reader.Read();
    try {
        reader.SetConformance(XmlConformance::Standard);
        ADD_FAILURE() << "is allowed";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "Invalid Operation");
        EXPECT_STREQ(error.Argument(), "SetConformance");
    }
}

TEST(StandardModeSetting, OutlivesTheDocument) {
    XmlTextReader reader;
    reader.SetConformance(XmlConformance::Standard);
    for (int i = 0; i < 3; ++i) {
        DocumentStream good("<a x='1' y='2'/>");
        reader.SetStream(good.get(), false);
        EXPECT_EQ(NodesFromHere(reader), "Element a");
        DocumentStream bad("<a x='1'y='2'/>");
        reader.SetStream(bad.get(), false);
        EXPECT_TRUE(NodesFromHere(reader).starts_with("error ")) << i;
        reader.Close();
        EXPECT_EQ(reader.Conformance(), XmlConformance::Standard);
    }
}

// What one mode has remembered of names, entities and attributes is nothing to the other.
TEST(StandardModeSetting, AlternatesOnOneReader) {
    const struct {
        const char* document;
        const char* compatible;
        const char* standard;  ///< "" for an error
    } kCases[] = {
        {"<a/><b/>", "Element a; Element b", ""},
        {"<p:a/>", "Element p:a", ""},
        {"<a>\r\n</a>", "Element a; Whitespace \"\\r\\n\"; EndElement a",
         "Element a; Whitespace \"\\n\"; EndElement a"},
        {"<\xE4\xB8\xAD/>", "error Syntax error: Expected element name", "Element \\u{4E2D}"},
        {"<?xml version='1.1'?><a/>", "error Unsupported XML version",
         "XmlDeclaration xml \"version='1.1'\"; Element a"},
        {"<a>\xEF\xBF\xBE</a>", "Element a; Text \"\\u{FFFE}\"; EndElement a", ""},
        {"<a x='1'y='2'/>", "Element a", ""},
        {"<a><b></b></a>", "Element a; Element b; EndElement b; EndElement a",
         "Element a; Element b; EndElement b; EndElement a"},
    };
    XmlTextReader reader;
    for (int round = 0; round < 4; ++round) {
        for (const auto& c : kCases) {
            SCOPED_TRACE(c.document);
            for (const auto conformance : {XmlConformance::Compatible, XmlConformance::Standard}) {
                SCOPED_TRACE(XmlConformance(conformance).ToString());
                DocumentStream stream(c.document, round % 2);
                reader.Close();
                reader.SetConformance(conformance);
                reader.SetStream(stream.get(), false);
                const std::string nodes = NodesFromHere(reader);
                const std::string expected =
                    conformance == XmlConformance::Standard ? c.standard : c.compatible;
                if (expected.empty()) {
                    EXPECT_NE(nodes.find("error "), std::string::npos) << nodes;
                } else {
                    EXPECT_EQ(nodes.substr(0, expected.size()), expected);
                }
            }
        }
    }
}

// Attributes that the document type supplies end with the document.
TEST(StandardModeSetting, ForgetsWhatADocumentDeclares) {
    XmlTextReader reader;
    reader.SetConformance(XmlConformance::Standard);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    DocumentStream first("<!DOCTYPE a [<!ENTITY e 'x'><!ATTLIST a y NMTOKEN 'd'>]><a>&e;</a>");
    reader.SetStream(first.get(), false);
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element) {
            EXPECT_EQ(reader.GetAttribute("y"), "d");
        }
    }
    DocumentStream second("<a z=' 1 '/>");
    reader.SetStream(second.get(), false);
    ASSERT_TRUE(reader.Read());
    EXPECT_EQ(reader.AttributeCount(), 1);
    EXPECT_EQ(reader.GetAttribute("z"), " 1 ");
    DocumentStream third("<!DOCTYPE a SYSTEM 's'><a>&e;</a>");
    reader.SetStream(third.get(), false);
    EXPECT_NE(NodesFromHere(reader).find("EntityReference e"), std::string::npos);
    DocumentStream fourth("<a>&e;</a>");
    reader.SetStream(fourth.get(), false);
    EXPECT_NE(NodesFromHere(reader).find("error "), std::string::npos);
}

// The setting for line ends has no effect: they are always normalized.
TEST(StandardModeSetting, StandsAboveNormalization) {
    for (const bool normalization : {false, true}) {
        DocumentStream stream("<a x='1\r\n\t2&#10;&#9;&#13;'>x\r\n\r&#13;</a>");
        XmlTextReader reader;
        reader.SetConformance(XmlConformance::Standard);
        reader.SetStream(stream.get(), false);
        reader.SetNormalization(normalization);
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(reader.GetAttribute("x"), "1  2\n\t\r") << normalization;
        ASSERT_TRUE(reader.Read());
        EXPECT_EQ(reader.Value(), "x\n\n\r") << normalization;
    }
}

}  // namespace
