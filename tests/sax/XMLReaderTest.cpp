// SPDX-License-Identifier: MIT
//
// Handlers that are replaced, parses in parses, copies, and a reader that is used again.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using sax::XMLReader;
using support::EventRecorder;
using support::ParseText;
using support::WhatIsThrown;
using Lines = std::vector<std::string>;

TEST(XMLReader, AFreshOneHasNoHandlers) {
    const XMLReader reader;
    EXPECT_EQ(reader.getEntityResolver(), nullptr);
    EXPECT_EQ(reader.getContentHandler(), nullptr);
    EXPECT_EQ(reader.getDTDHandler(), nullptr);
    EXPECT_EQ(reader.getErrorHandler(), nullptr);
}

TEST(XMLReader, KeepsHandlersOverParses) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    for (int i = 0; i < 3; ++i) {
        ParseText(reader, "<a/>");
        EXPECT_EQ(recorder.TakeLines(),
                  (Lines{"locator", "document", "start a", "end a", "end document"}));
    }
    EXPECT_EQ(reader.getEntityResolver(), &recorder);
    EXPECT_EQ(reader.getContentHandler(), &recorder);
    EXPECT_EQ(reader.getDTDHandler(), &recorder);
    EXPECT_EQ(reader.getErrorHandler(), &recorder);
}

TEST(XMLReader, ParsesWithoutHandlers) {
    XMLReader reader;
    EXPECT_NO_THROW(ParseText(reader, "<a x='1'>t<b/> <?p d?></a>"));
}

// Declarations and the depth of one document are no matter of the next.
TEST(XMLReader, ForgetsADocumentBeforeTheNext) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    ParseText(reader, "<!DOCTYPE a [<!ENTITY e 'v'><!NOTATION n SYSTEM 's'>]><a xmlns='u'>&e;</a>");
    recorder.TakeLines();
    EXPECT_TRUE(WhatIsThrown([&] {
                    ParseText(reader, "<a>&e;</a>");
                }).starts_with("Exception: Undeclared entity"));
    recorder.TakeLines();
    ParseText(reader, "<!DOCTYPE a [<!ENTITY e 'w'>]><a>&e;</a>");
    EXPECT_EQ(recorder.TakeLines(),
              (Lines{"locator", "document", "start a", R"(text "w")", "end a", "end document"}));
}

constexpr char kDocument[] =
    "<!DOCTYPE a [<!NOTATION n SYSTEM 's'><!NOTATION m SYSTEM 's'>]><a><b>t</b></a>";

// From each event on, another handler gets what follows.
TEST(XMLReader, HandlersMayBeReplacedAtAnyEvent) {
    XMLReader reader;
    EventRecorder whole;
    whole.Attach(reader);
    ParseText(reader, kDocument);
    const Lines all = whole.lines();
    ASSERT_EQ(all.size(), 10U);
    for (std::size_t number = 1; number <= all.size(); ++number) {
        SCOPED_TRACE(all[number - 1]);
        const auto split = all.begin() + static_cast<std::ptrdiff_t>(number);
        EventRecorder first;
        EventRecorder second;
        first.Attach(reader);
        first.onEvent = [&](const std::string&) {
            if (first.lines().size() == number) second.Attach(reader);
        };
        ParseText(reader, kDocument);
        EXPECT_EQ(first.lines(), Lines(all.begin(), split));
        EXPECT_EQ(second.lines(), Lines(split, all.end()));
    }
}

TEST(XMLReader, HandlersMayBeRemovedAtAnyEvent) {
    XMLReader reader;
    EventRecorder whole;
    whole.Attach(reader);
    ParseText(reader, kDocument);
    const Lines all = whole.lines();
    for (std::size_t number = 1; number <= all.size(); ++number) {
        SCOPED_TRACE(all[number - 1]);
        EventRecorder first;
        first.Attach(reader);
        first.onEvent = [&](const std::string&) {
            if (first.lines().size() < number) return;
            reader.setContentHandler(nullptr);
            reader.setDTDHandler(nullptr);
        };
        ParseText(reader, kDocument);
        EXPECT_EQ(first.lines(),
                  Lines(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(number)));
    }
}

TEST(XMLReader, AnEmptyElementMayChangeHandlersBetweenItsEvents) {
    XMLReader reader;
    EventRecorder first;
    EventRecorder second;
    first.Attach(reader);
    first.onEvent = [&](const std::string& line) {
        if (line == "start b") reader.setContentHandler(&second);
    };
    ParseText(reader, "<a><b/></a>");
    EXPECT_EQ(first.lines(), (Lines{"locator", "document", "start a", "start b"}));
    EXPECT_EQ(second.lines(), (Lines{"end b", "end a", "end document"}));
}

TEST(XMLReader, AHandlerMayComeInTheMiddle) {
    XMLReader reader;
    EventRecorder declarations;
    EventRecorder content;
    declarations.onEvent = [&](const std::string&) { reader.setContentHandler(&content); };
    reader.setDTDHandler(&declarations);
    ParseText(reader, kDocument);
    EXPECT_EQ(content.lines(),
              (Lines{"start a", "start b", R"(text "t")", "end b", "end a", "end document"}));
}

TEST(XMLReader, ParsesNothingElseFromItsOwnHandlers) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    recorder.onEvent = [&](const std::string& line) {
        SCOPED_TRACE(line);
        EXPECT_EQ(WhatIsThrown([&] { ParseText(reader, "<other/>"); }),
                  "SAXException: Invalid operation");
        EXPECT_EQ(WhatIsThrown([&] { reader.parse("no such file"); }),
                  "SAXException: Invalid operation");
        EXPECT_EQ(WhatIsThrown([&] { reader.parse(sax::InputSource()); }),
                  "SAXException: Invalid operation");
    };
    ParseText(reader, kDocument);
    EXPECT_EQ(recorder.lines().size(), 10U);
}

TEST(XMLReader, AParseInAParseThatNobodyCatchesEndsBoth) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    recorder.onEvent = [&](const std::string& line) {
        if (line == "start b") ParseText(reader, "<other/>");
    };
    EXPECT_EQ(WhatIsThrown([&] { ParseText(reader, kDocument); }),
              "SAXException: Invalid operation");
    recorder.onEvent = nullptr;
    recorder.TakeLines();
    ParseText(reader, kDocument);
    EXPECT_EQ(recorder.lines().size(), 10U);
}

TEST(XMLReader, AnotherReaderMayParseInItsHandlers) {
    XMLReader outer;
    EventRecorder recorder;
    recorder.Attach(outer);
    int inner = 0;
    recorder.onEvent = [&](const std::string&) {
        XMLReader reader;
        EventRecorder other;
        other.Attach(reader);
        ParseText(reader, "<a>t</a>");
        EXPECT_EQ(other.lines().size(), 6U);
        ++inner;
    };
    ParseText(outer, kDocument);
    EXPECT_EQ(inner, 10);
}

TEST(XMLReader, CopiesHaveItsHandlersAndFeatures) {
    XMLReader original;
    EventRecorder recorder;
    recorder.Attach(original);
    original.setFeature(sax::features::kNamespaces, false);
    original.setFeature(sax::features::kNamespacePrefixes, true);
    original.setFeature(sax::features::kNormalization, true);
    original.setReportReaderErrors(true);
    XMLReader copy(original);
    XMLReader assigned;
    assigned = original;
    for (const XMLReader* const one : {&copy, &assigned}) {
        EXPECT_EQ(one->getEntityResolver(), &recorder);
        EXPECT_EQ(one->getContentHandler(), &recorder);
        EXPECT_EQ(one->getDTDHandler(), &recorder);
        EXPECT_EQ(one->getErrorHandler(), &recorder);
        EXPECT_FALSE(one->getFeature(sax::features::kNamespaces));
        EXPECT_TRUE(one->getFeature(sax::features::kNamespacePrefixes));
        EXPECT_TRUE(one->getFeature(sax::features::kNormalization));
        EXPECT_TRUE(one->getReportReaderErrors());
    }
}

TEST(XMLReader, CopiesAreIndependent) {
    auto original = std::make_unique<XMLReader>();
    EventRecorder recorder;
    recorder.Attach(*original);
    XMLReader copy(*original);
    XMLReader assigned;
    assigned = *original;
    original->setFeature(sax::features::kNamespaces, false);
    original->setContentHandler(nullptr);
    original.reset();
    for (XMLReader* const one : {&copy, &assigned}) {
        EXPECT_TRUE(one->getFeature(sax::features::kNamespaces));
        ParseText(*one, "<a/>");
        EXPECT_EQ(recorder.TakeLines().size(), 5U);
    }
}

TEST(XMLReader, IsAssignedToItself) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    const XMLReader& same = reader;
    reader = same;
    EXPECT_EQ(reader.getContentHandler(), &recorder);
    ParseText(reader, "<a/>");
    EXPECT_EQ(recorder.lines().size(), 5U);
}

// A copy made in a callback is not parsing.
TEST(XMLReader, CopiesTakeNoParse) {
    XMLReader reader;
    EventRecorder recorder;
    reader.setContentHandler(&recorder);
    int copies = 0;
    recorder.onEvent = [&](const std::string& line) {
        if (line != "start b") return;
        XMLReader copy(reader);
        XMLReader assigned;
        assigned = reader;
        for (XMLReader* const one : {&copy, &assigned}) {
            EXPECT_EQ(WhatIsThrown([&] { one->getFeature(sax::features::kIsStandalone); }),
                      "SAXException: Invalid operation");
            EXPECT_NO_THROW(one->setFeature(sax::features::kNamespaces, false));
            one->setContentHandler(nullptr);
            EXPECT_NO_THROW(ParseText(*one, "<other/>"));
            ++copies;
        }
        EXPECT_FALSE(reader.getFeature(sax::features::kIsStandalone));
    };
    ParseText(reader, kDocument);
    EXPECT_EQ(copies, 2);
    EXPECT_EQ(recorder.lines().size(), 8U);
}

// Elements in each other need no stack.
TEST(XMLReader, AHostileDepthIsNoMatter) {
    constexpr int kDepth = 200000;
    std::string document;
    for (int i = 0; i < kDepth; ++i)
        document += "<a>";
    for (int i = 0; i < kDepth; ++i)
        document += "</a>";
    class Counter : public sax::helpers::DefaultHandler {
    public:
        int started = 0;
        int ended = 0;
        void startElement(const char*, const char*, const char*, const sax::Attributes&) override {
            ++started;
        }
        void endElement(const char*, const char*, const char*) override { ++ended; }
    };
    XMLReader reader;
    Counter counter;
    reader.setContentHandler(&counter);
    ParseText(reader, document);
    EXPECT_EQ(counter.started, kDepth);
    EXPECT_EQ(counter.ended, kDepth);
}

// Each value refers to an entity, and each attribute is looked for by its namespace.
TEST(XMLReader, AHostileNumberOfAttributesTakesLinearTime) {
    constexpr int kCount = 100000;
    std::string document = "<!DOCTYPE a [<!ENTITY e 'v'>]><a";
    for (int i = 0; i < kCount; ++i)
        document += " x" + std::to_string(i) + "='&e;'";
    document += "/>";
    class Finder : public sax::helpers::DefaultHandler {
    public:
        int found = 0;
        void startElement(const char*, const char*, const char*,
                          const sax::Attributes& attributes) override {
            for (int i = 0; i < attributes.getLength(); ++i) {
                if (attributes.getIndex("", attributes.getLocalName(i)) == i) ++found;
                if (std::string_view(attributes.getValue(i)) != "v") found = -kCount;
            }
        }
    };
    for (const bool isReady : {false, true}) {
        XMLReader reader;
        Finder finder;
        reader.setContentHandler(&finder);
        support::DocumentStream stream(document);
        Xml::XmlTextReader ready;
        if (isReady) ready.SetStream(stream.get(), false);
        reader.parse(isReady ? sax::InputSource(&ready) : sax::InputSource(stream.get(), ""));
        EXPECT_EQ(finder.found, kCount);
    }
}

TEST(XMLReader, AHostileEntityIsRefused) {
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'x'>";
    for (int i = 1; i <= 40; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        document += "<!ENTITY e" + std::to_string(i) + " '" + inner + inner + "'>";
    }
    document += "]>";
    for (const char* const use : {"<a>&e40;</a>", "<a x='&e40;'/>"}) {
        XMLReader reader;
        EXPECT_TRUE(WhatIsThrown([&] {
                        ParseText(reader, document + use);
                    }).starts_with("Exception: Entity expansion limit exceeded"));
    }
}

}  // namespace
