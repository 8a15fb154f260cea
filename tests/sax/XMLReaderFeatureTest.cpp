// SPDX-License-Identifier: MIT
//
// Features and properties: before, in and after a parse.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>

#include "sax/SaxParse.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sax::XMLReader;
using support::EventRecorder;
using support::ParseText;
using support::WhatIsThrown;

constexpr char kNamespaces[] = "http://xml.org/sax/features/namespaces";
constexpr char kNamespacePrefixes[] = "http://xml.org/sax/features/namespace-prefixes";
constexpr char kValidation[] = "http://xml.org/sax/features/validation";
constexpr char kXmlnsUris[] = "http://xml.org/sax/features/xmlns-uris";
constexpr char kXml11[] = "http://xml.org/sax/features/xml-1.1";
constexpr char kIsStandalone[] = "http://xml.org/sax/features/is-standalone";
constexpr char kNormalization[] = "http://espalier.example/sax/features/normalization";

// What becomes of a value.
enum class Setting { Accepted, Ignored, NotSupported, NotNow };

struct Row {
    const char* name;
    bool atFirst;
    Setting toFalse;
    Setting toTrue;
    bool isSettable;
};
constexpr Row kFeatures[] = {
    {kNamespaces, true, Setting::Accepted, Setting::Accepted, true},
    {kNamespacePrefixes, false, Setting::Accepted, Setting::Accepted, true},
    {kNormalization, false, Setting::Accepted, Setting::Accepted, true},
    {kValidation, false, Setting::Ignored, Setting::NotSupported, false},
    {kXmlnsUris, false, Setting::Ignored, Setting::NotSupported, false},
    {kXml11, false, Setting::NotNow, Setting::NotNow, false},
};

std::string Refusal(Setting setting, const char* name) {
    switch (setting) {
    case Setting::Accepted:
    case Setting::Ignored: return "";
    case Setting::NotSupported:
        return std::string("SAXNotSupported: Feature not supported: ") + name;
    case Setting::NotNow:
        return std::string("SAXNotSupported: Feature can't be set at this time: ") + name;
    }
    return "?";
}

// Expects of a reader that is not parsing what a fresh one does.
void ExpectIdle(XMLReader& reader) {
    for (const Row& row : kFeatures) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(reader.getFeature(row.name), row.atFirst);
        for (const bool value : {false, true, row.atFirst}) {
            const Setting setting = value ? row.toTrue : row.toFalse;
            EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(row.name, value); }),
                      Refusal(setting, row.name));
            EXPECT_EQ(reader.getFeature(row.name),
                      setting == Setting::Accepted ? value : row.atFirst);
        }
    }
    EXPECT_EQ(WhatIsThrown([&] { reader.getFeature(kIsStandalone); }),
              "SAXException: Invalid operation");
    for (const bool value : {false, true}) {
        EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(kIsStandalone, value); }),
                  Refusal(Setting::NotNow, kIsStandalone));
    }
}

// Expects of a reader that reads nodes that nothing can be changed, with every settable feature as
// it is at first.
void ExpectBusy(XMLReader& reader, bool isStandalone) {
    for (const Row& row : kFeatures) {
        SCOPED_TRACE(row.name);
        for (const bool value : {false, true}) {
            Setting setting = value ? row.toTrue : row.toFalse;
            if (row.isSettable && value != row.atFirst) setting = Setting::NotNow;
            EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(row.name, value); }),
                      Refusal(setting, row.name));
            EXPECT_EQ(reader.getFeature(row.name), row.atFirst);
        }
    }
    EXPECT_EQ(reader.getFeature(kIsStandalone), isStandalone);
    for (const bool value : {false, true}) {
        EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(kIsStandalone, value); }),
                  Refusal(Setting::NotNow, kIsStandalone));
    }
}

TEST(XMLReaderFeature, ConstantsAreTheNames) {
    EXPECT_STREQ(sax::features::kNamespaces, kNamespaces);
    EXPECT_STREQ(sax::features::kNamespacePrefixes, kNamespacePrefixes);
    EXPECT_STREQ(sax::features::kValidation, kValidation);
    EXPECT_STREQ(sax::features::kXmlnsUris, kXmlnsUris);
    EXPECT_STREQ(sax::features::kXml11, kXml11);
    EXPECT_STREQ(sax::features::kIsStandalone, kIsStandalone);
    EXPECT_STREQ(sax::features::kNormalization, kNormalization);
}

TEST(XMLReaderFeature, AFreshReaderHasTheFeaturesOfTheTable) {
    XMLReader reader;
    ExpectIdle(reader);
}

TEST(XMLReaderFeature, NamesAreComparedByteForByte) {
    XMLReader reader;
    for (const char* const name :
         {"", "namespaces", "http://xml.org/sax/features/Namespaces",
          "HTTP://xml.org/sax/features/namespaces", "http://xml.org/sax/features/namespaces/",
          " http://xml.org/sax/features/namespaces", "http://xml.org/sax/features/namespace",
          "https://xml.org/sax/features/namespaces", "http://xml.org/sax/features/normalization",
          "http://xml.org/sax/features/external-general-entities"}) {
        SCOPED_TRACE(name);
        const std::string refusal =
            std::string("SAXNotRecognized: Feature not recognized: ") + name;
        EXPECT_EQ(WhatIsThrown([&] { reader.getFeature(name); }), refusal);
        EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(name, false); }), refusal);
        EXPECT_EQ(WhatIsThrown([&] { reader.setFeature(name, true); }), refusal);
    }
}

TEST(XMLReaderFeature, ThereAreNoProperties) {
    XMLReader reader;
    for (const char* const name : {"", "http://xml.org/sax/properties/lexical-handler"}) {
        const std::string refusal =
            std::string("SAXNotRecognized: Property not recognized: ") + name;
        EXPECT_EQ(WhatIsThrown([&] { reader.getProperty(name); }), refusal);
        EXPECT_EQ(WhatIsThrown([&] { reader.setProperty(name, nullptr); }), refusal);
        EXPECT_EQ(WhatIsThrown([&] { reader.setProperty(name, &reader); }), refusal);
    }
}

// The table holds again behind a parse, however it ended, and for the events at both its ends; in
// between nothing can be changed.
TEST(XMLReaderFeature, NothingCanBeChangedWhileNodesAreRead) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    int busyEvents = 0;
    recorder.onEvent = [&](const std::string& line) {
        SCOPED_TRACE(line);
        if (line == "locator" || line == "document" || line == "end document") {
            ExpectIdle(reader);
        } else {
            ++busyEvents;
            ExpectBusy(reader, false);
        }
    };
    ParseText(reader,
              "<!DOCTYPE a [<!NOTATION n SYSTEM 's'><!ENTITY e SYSTEM 'e' NDATA n>]>\n"
              "<a>text<b/> <?pi data?></a>");
    EXPECT_EQ(busyEvents, 10);
    ExpectIdle(reader);
}

TEST(XMLReaderFeature, TheTableHoldsAgainBehindAParseThatFailed) {
    XMLReader reader;
    EXPECT_NE(WhatIsThrown([&] { ParseText(reader, "<a>"); }), "");
    ExpectIdle(reader);
    EventRecorder recorder;
    recorder.throwAt = 3;
    reader.setContentHandler(&recorder);
    EXPECT_THROW(ParseText(reader, "<a/>"), support::RecorderError);
    ExpectIdle(reader);
    EXPECT_NE(WhatIsThrown([&] { reader.parse(sax::InputSource()); }), "");
    ExpectIdle(reader);
}

TEST(XMLReaderFeature, IsStandaloneTellsWhatTheDeclarationSays) {
    struct Document {
        const char* text;
        bool isStandalone;
    };
    constexpr Document kDocuments[] = {
        {"<?xml version='1.0' standalone='yes'?><a/>", true},
        {"<?xml version='1.0' encoding='UTF-8' standalone=\"yes\"?><a/>", true},
        {"<?xml version='1.0' standalone='no'?><a/>", false},
        {"<?xml version='1.0'?><a/>", false},
        {"<a/>", false},
        {"<a standalone='yes'/>", false},
    };
    XMLReader reader;  // the same for all: what one document says is forgotten by the next
    EventRecorder recorder;
    recorder.Attach(reader);
    for (const Document& document : kDocuments) {
        SCOPED_TRACE(document.text);
        int asked = 0;
        recorder.onEvent = [&](const std::string& line) {
            if (!line.starts_with("start ")) return;
            ++asked;
            EXPECT_EQ(reader.getFeature(kIsStandalone), document.isStandalone);
        };
        ParseText(reader, document.text);
        EXPECT_EQ(asked, 1);
    }
}

std::vector<std::string> EventsOf(XMLReader& reader, std::string_view document) {
    EventRecorder recorder;
    recorder.Attach(reader);
    ParseText(reader, document);
    return recorder.TakeLines();
}

TEST(XMLReaderFeature, WithoutNamespacesNamesAreWhole) {
    constexpr char kDocument[] = "<p:a xmlns:p='urn:p' p:x='1' y='2'><b xmlns='urn:d'/></p:a>";
    XMLReader reader;
    EXPECT_EQ(EventsOf(reader, kDocument),
              (std::vector<std::string>{
                  "locator", "document",
                  R"(start {urn:p}a p:a {}p xmlns:p="urn:p" {urn:p}x p:x="1" y="2")",
                  R"(start {urn:d}b b xmlns="urn:d")", "end {urn:d}b b", "end {urn:p}a p:a",
                  "end document"}));
    reader.setFeature(kNamespaces, false);
    EXPECT_EQ(EventsOf(reader, kDocument),
              (std::vector<std::string>{
                  "locator", "document", R"(start p:a xmlns:p="urn:p" p:x="1" y="2")",
                  R"(start b xmlns="urn:d")", "end b", "end p:a", "end document"}));
}

// Deliberate: declarations of namespaces are attributes whatever this feature says, and prefix
// mappings are not reported.
TEST(XMLReaderFeature, NamespacePrefixesMakeNoDifference) {
    constexpr char kDocument[] = "<p:a xmlns:p='urn:p' xmlns='urn:d' p:x='1'/>";
    XMLReader reader;
    const std::vector<std::string> without = EventsOf(reader, kDocument);
    reader.setFeature(kNamespacePrefixes, true);
    EXPECT_EQ(EventsOf(reader, kDocument), without);
    EXPECT_EQ(without.size(), 5U);
}

TEST(XMLReaderFeature, NormalizationIsThatOfTheReader) {
    constexpr char kDocument[] = "<a x='1\t2\r\n3'>1\r\n2\r3</a>";
    XMLReader reader;
    EXPECT_EQ(EventsOf(reader, kDocument),
              (std::vector<std::string>{"locator", "document", R"(start a x="1\t2\r\n3")",
                                        R"(text "1\r\n2\r3")", "end a", "end document"}));
    reader.setFeature(kNormalization, true);
    EXPECT_EQ(EventsOf(reader, kDocument),
              (std::vector<std::string>{"locator", "document", R"(start a x="1 2 3")",
                                        R"(text "1\n2\n3")", "end a", "end document"}));
}

// The document begins between startDocument() and the first node.
TEST(XMLReaderFeature, NormalizationSetAtTheStartOfADocumentHoldsForIt) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    recorder.onEvent = [&](const std::string& line) {
        if (line == "document") reader.setFeature(kNormalization, true);
    };
    ParseText(reader, "<a>\r\nx</a>");
    EXPECT_EQ(recorder.lines()[3], R"(text "\nx")");
}

// The input has been opened by then, with or without namespaces.
TEST(XMLReaderFeature, NamespacesSetAtTheStartOfADocumentHoldForTheNext) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    recorder.onEvent = [&](const std::string& line) {
        if (line == "document") reader.setFeature(kNamespaces, false);
    };
    ParseText(reader, "<p:a xmlns:p='u'/>");
    EXPECT_EQ(recorder.TakeLines()[2], R"(start {u}a p:a {}p xmlns:p="u")");
    EXPECT_FALSE(reader.getFeature(kNamespaces));
    ParseText(reader, "<p:a xmlns:p='u'/>");
    EXPECT_EQ(recorder.TakeLines()[2], R"(start p:a xmlns:p="u")");
}

}  // namespace
