// SPDX-License-Identifier: MIT
//
// How far entities may expand.
#include <espalier/sax/XMLReader.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/DocumentReader.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using sax::XMLReader;
using support::EventRecorder;
using support::ParseText;
using support::WhatIsThrown;
using Xml::XmlEntityLimits;

constexpr char kExpansion[] = "Exception: Entity expansion limit exceeded";
constexpr char kNesting[] = "Exception: Entity nesting limit exceeded";

// Two references of ten bytes each.
constexpr char kTwenty[] = "<!DOCTYPE a [<!ENTITY e '0123456789'>]><a x='&e;'><b>&e;</b></a>";

// A document with `depth` entities in each other, referred to in a text or in a value.
std::string Nested(int depth, bool inValue) {
    std::string document = "<!DOCTYPE a [<!ENTITY e1 'x'>";
    for (int i = 2; i <= depth; ++i) {
        document += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    }
    const std::string reference = "&e" + std::to_string(depth) + ";";
    return document + "]><a" + (inValue ? " x='" + reference + "'/>" : ">" + reference + "</a>");
}

XmlEntityLimits Expanding(long long bytes) {
    XmlEntityLimits limits;
    limits.expandedBytes = bytes;
    limits.amplification = 0;
    return limits;
}

bool Refuses(XMLReader& reader, const std::string& document, const char* message) {
    const std::string thrown = WhatIsThrown([&] { ParseText(reader, document); });
    EXPECT_TRUE(thrown.empty() || thrown.starts_with(message)) << thrown;
    return !thrown.empty();
}

TEST(XMLReaderLimit, AtFirstIsThatOfAReader) {
    const XmlEntityLimits limits = XMLReader().getEntityLimits();
    EXPECT_EQ(limits.expandedBytes, 8 * 1024 * 1024);
    EXPECT_EQ(limits.amplification, 100);
    EXPECT_EQ(limits.nesting, 1024);
}

TEST(XMLReaderLimit, OfExpansionHoldsForTextsAndValuesTogether) {
    for (const bool hasHandler : {false, true}) {
        for (const long long bytes : {0, 9, 10, 19, 20, 21}) {
            SCOPED_TRACE(bytes);
            XMLReader reader;
            EventRecorder recorder;
            if (hasHandler) reader.setContentHandler(&recorder);
            reader.setEntityLimits(Expanding(bytes));
            EXPECT_EQ(reader.getEntityLimits().expandedBytes, bytes);
            EXPECT_EQ(reader.getEntityLimits().amplification, 0);
            EXPECT_EQ(Refuses(reader, kTwenty, kExpansion), bytes < 20);
        }
    }
}

TEST(XMLReaderLimit, OfNestingHoldsForTextsAndValues) {
    for (const bool inValue : {false, true}) {
        XMLReader reader;
        EXPECT_FALSE(Refuses(reader, Nested(1024, inValue), kNesting));
        EXPECT_TRUE(Refuses(reader, Nested(1025, inValue), kNesting));
        XmlEntityLimits limits;
        limits.nesting = 3;
        reader.setEntityLimits(limits);
        EXPECT_FALSE(Refuses(reader, Nested(3, inValue), kNesting));
        EXPECT_TRUE(Refuses(reader, Nested(4, inValue), kNesting));
    }
}

TEST(XMLReaderLimit, HoldsForEachDocumentAnewAndUntilAnotherIsSet) {
    XMLReader reader;
    reader.setEntityLimits(Expanding(20));
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(Refuses(reader, kTwenty, kExpansion));
    reader.setEntityLimits(Expanding(19));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(Refuses(reader, kTwenty, kExpansion));
    reader.setEntityLimits({});
    EXPECT_FALSE(Refuses(reader, kTwenty, kExpansion));
}

TEST(XMLReaderLimit, IsTakenOverByCopies) {
    XMLReader reader;
    reader.setEntityLimits(Expanding(19));
    XMLReader copy(reader);
    XMLReader assigned;
    assigned = reader;
    reader.setEntityLimits({});
    EXPECT_TRUE(Refuses(copy, kTwenty, kExpansion));
    EXPECT_TRUE(Refuses(assigned, kTwenty, kExpansion));
    EXPECT_FALSE(Refuses(reader, kTwenty, kExpansion));
}

TEST(XMLReaderLimit, SetByAHandlerHoldsFromTheNextParseOn) {
    XMLReader reader;
    EventRecorder recorder;
    reader.setContentHandler(&recorder);
    recorder.onEvent = [&](const std::string&) { reader.setEntityLimits(Expanding(0)); };
    EXPECT_FALSE(Refuses(reader, kTwenty, kExpansion));
    EXPECT_TRUE(Refuses(reader, kTwenty, kExpansion));
}

TEST(XMLReaderLimit, OfAReaderThatIsGivenStays) {
    for (const bool isStrict : {false, true}) {
        support::DocumentReader ready(kTwenty);
        if (isStrict) ready->SetEntityLimits(Expanding(19));
        XMLReader reader;
        reader.setEntityLimits(Expanding(isStrict ? 1000 : 0));
        const std::string thrown = WhatIsThrown([&] { reader.parse(sax::InputSource(&*ready)); });
        EXPECT_EQ(thrown.starts_with(kExpansion), isStrict) << thrown;
        EXPECT_EQ(ready->EntityLimits().amplification, isStrict ? 0 : 100);
    }
}

}  // namespace
