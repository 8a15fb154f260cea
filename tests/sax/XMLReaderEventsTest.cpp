// SPDX-License-Identifier: MIT
//
// What the events hold: texts, attributes and places. Which events a document gives, and in which
// order, stands in tests/cases/events.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/AttributesImpl.h>

#include "sax/SaxParse.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using sax::XMLReader;
using support::EventRecorder;
using support::ParseText;
using support::WhatIsThrown;
using Lines = std::vector<std::string>;

// Longer than the buffer: a text comes in one piece, white space in several.
TEST(XMLReaderEvents, LongTextsComeAsTheReaderHasThem) {
    const std::string text(100000, 'x');
    const std::string blank(5000, ' ');
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    ParseText(reader, "<a x='" + text + "'>" + text + "<b/>" + blank + "</a>");
    ASSERT_GE(recorder.lines().size(), 9U);
    EXPECT_EQ(recorder.lines()[2], "start a x=\"" + text + "\"");
    EXPECT_EQ(recorder.lines()[3], "text \"" + text + "\"");
    std::size_t blanks = 0;
    for (const std::string& line : recorder.lines()) {
        if (line.starts_with("blank \"")) blanks += line.size() - std::string("blank \"\"").size();
    }
    EXPECT_EQ(blanks, blank.size());
}

TEST(XMLReaderEvents, TextsEndWithAZeroByte) {
    class Checker : public sax::helpers::DefaultHandler {
    public:
        int texts = 0;
        void characters(const char* text, int start, int length) override {
            EXPECT_EQ(start, 0);
            EXPECT_EQ(text[start + length], '\0');
            ++texts;
        }
        void ignorableWhitespace(const char* text, int start, int length) override {
            characters(text, start, length);
        }
    };
    XMLReader reader;
    Checker checker;
    reader.setContentHandler(&checker);
    ParseText(reader, "<a>1<b/><![CDATA[2]]><b/> </a>");
    EXPECT_EQ(checker.texts, 3);
}

// Attributes, as a handler sees them.
class AttributeChecker : public sax::helpers::DefaultHandler {
public:
    std::function<void(const sax::Attributes& attributes)> check;
    int elements = 0;

    void startElement(const char*, const char*, const char*,
                      const sax::Attributes& attributes) override {
        ++elements;
        check(attributes);
    }
};

void CheckAttributes(const std::string& document,
                     std::function<void(const sax::Attributes& attributes)> check) {
    XMLReader reader;
    AttributeChecker checker;
    checker.check = std::move(check);
    reader.setContentHandler(&checker);
    ParseText(reader, document);
    EXPECT_GE(checker.elements, 1);
}

TEST(XMLReaderAttributes, AreFoundByIndexAndByName) {
    for (const int count : {0, 1, 16, 17, 300}) {
        SCOPED_TRACE(count);
        std::string document = "<!DOCTYPE a [<!ENTITY e 'v'>]><a xmlns:p='urn:p'";
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            document += i % 2 == 0 ? " p:l" : " l";
            document += number + (i % 3 == 0 ? "='&e;" : "='v") + number + "'";
        }
        CheckAttributes(document + "/>", [count](const sax::Attributes& attributes) {
            ASSERT_EQ(attributes.getLength(), count + 1);
            for (int i = 0; i < count; ++i) {
                const std::string local = "l" + std::to_string(i);
                const std::string uri = i % 2 == 0 ? "urn:p" : "";
                const std::string qName = i % 2 == 0 ? "p:" + local : local;
                const std::string value = "v" + std::to_string(i);
                EXPECT_EQ(attributes.getURI(i + 1), uri);
                EXPECT_EQ(attributes.getLocalName(i + 1), local);
                EXPECT_EQ(attributes.getQName(i + 1), qName);
                EXPECT_STREQ(attributes.getType(i + 1), "CDATA");
                EXPECT_EQ(attributes.getValue(i + 1), value);
                EXPECT_EQ(attributes.getIndex(qName.c_str()), i + 1);
                EXPECT_EQ(attributes.getIndex(uri.c_str(), local.c_str()), i + 1);
                EXPECT_STREQ(attributes.getType(qName.c_str()), "CDATA");
                EXPECT_STREQ(attributes.getType(uri.c_str(), local.c_str()), "CDATA");
                EXPECT_EQ(attributes.getValue(qName.c_str()), value);
                EXPECT_EQ(attributes.getValue(uri.c_str(), local.c_str()), value);
            }
        });
    }
}

TEST(XMLReaderAttributes, ThatAreAbsentAreNullOrMinusOne) {
    for (const char* const document : {"<a x='1'/>", "<a/>"}) {
        CheckAttributes(document, [](const sax::Attributes& attributes) {
            for (const int index : {-1, -2147483647 - 1, attributes.getLength(), 2147483647}) {
                EXPECT_EQ(attributes.getURI(index), nullptr);
                EXPECT_EQ(attributes.getLocalName(index), nullptr);
                EXPECT_EQ(attributes.getQName(index), nullptr);
                EXPECT_EQ(attributes.getType(index), nullptr);
                EXPECT_EQ(attributes.getValue(index), nullptr);
            }
            EXPECT_EQ(attributes.getIndex("y"), -1);
            EXPECT_EQ(attributes.getIndex("", "y"), -1);
            EXPECT_EQ(attributes.getIndex("urn:x", "x"), -1);
            EXPECT_EQ(attributes.getIndex("", ""), -1);
            EXPECT_EQ(attributes.getType("y"), nullptr);
            EXPECT_EQ(attributes.getType("", "y"), nullptr);
            EXPECT_EQ(attributes.getValue("y"), nullptr);
            EXPECT_EQ(attributes.getValue("", "y"), nullptr);
        });
    }
}

TEST(XMLReaderAttributes, ThatDeclareANamespaceGiveWayToOrdinaryOnes) {
    std::string many;
    for (int i = 0; i < 40; ++i)
        many += " m" + std::to_string(i) + "='x'";
    for (const std::string& others : {std::string(), many}) {
        const std::string start = "<a" + others;
        for (const char* const end : {" xmlns:b='urn:b' b='1'/>", " b='1' xmlns:b='urn:b'/>"}) {
            CheckAttributes(start + end, [](const sax::Attributes& attributes) {
                EXPECT_STREQ(attributes.getValue("", "b"), "1");
                EXPECT_STREQ(attributes.getValue("xmlns:b"), "urn:b");
            });
        }
        CheckAttributes(start + " xmlns:b='urn:b'/>", [](const sax::Attributes& attributes) {
            EXPECT_STREQ(attributes.getValue("", "b"), "urn:b");
        });
    }
}

TEST(XMLReaderAttributes, AreThoseOfTheirElementAlone) {
    int element = 0;
    CheckAttributes(
        "<!DOCTYPE a [<!ENTITY e 'v'>]><a x='&e;' y='1'><b/><c y='&e;2'/><d x='3'/></a>",
        [&element](const sax::Attributes& attributes) {
            const std::string expected[] = {R"( x="v" y="1")", "", R"( y="v2")", R"( x="3")"};
            EXPECT_EQ(EventRecorder::Shown(attributes), expected[element]);
            ++element;
        });
    EXPECT_EQ(element, 4);
}

// So many that they are indexed; the next elements have others, and few.
TEST(XMLReaderAttributes, AreFoundByNamespaceInTheirElementAlone) {
    std::string forwards;
    std::string backwards;
    for (int i = 0; i < 20; ++i) {
        const std::string one = " l" + std::to_string(i) + "='x'";
        forwards += one;
        backwards = one + backwards;
    }
    int element = 0;
    CheckAttributes("<a" + forwards + " only='x'><b" + backwards + "/><c" + backwards +
                        "/><d l1='x' l0='x'/><e/></a>",
                    [&element](const sax::Attributes& attributes) {
                        for (int i = 0; i < attributes.getLength(); ++i)
                            EXPECT_EQ(attributes.getIndex("", attributes.getLocalName(i)), i);
                        EXPECT_EQ(attributes.getIndex("", "only"), element == 0 ? 20 : -1);
                        ++element;
                    });
    EXPECT_EQ(element, 5);
}

// Copies of all kinds, also by the type that the object has beneath the interface.
TEST(XMLReaderAttributes, CanBeKeptInCopies) {
    using sax::helpers::AttributesImpl;
    std::vector<std::unique_ptr<AttributesImpl>> kept;
    CheckAttributes("<!DOCTYPE a [<!ENTITY e 'v'>]><a x='&e;' xmlns:p='urn:p' p:y='2'/>",
                    [&kept](const sax::Attributes& attributes) {
                        kept.push_back(std::make_unique<AttributesImpl>(attributes));
                        kept.push_back(std::make_unique<AttributesImpl>());
                        kept.back()->setAttributes(attributes);
                        const auto* const concrete =
                            dynamic_cast<const AttributesImpl*>(&attributes);
                        if (concrete == nullptr) return;
                        kept.push_back(std::make_unique<AttributesImpl>(*concrete));
                        kept.push_back(std::make_unique<AttributesImpl>());
                        *kept.back() = *concrete;
                    });
    EXPECT_GE(kept.size(), 2U);
    for (const auto& one : kept) {
        EXPECT_EQ(EventRecorder::Shown(*one), R"( x="v" {}p xmlns:p="urn:p" {urn:p}y p:y="2")");
        EXPECT_EQ(one->getIndex("urn:p", "y"), 2);
        one->setValue(2, "changed");
        EXPECT_STREQ(one->getValue("p:y"), "changed");
    }
}

TEST(XMLReaderLocator, TellsWhereEachNodeStarts) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    Lines places;
    recorder.onEvent = [&](const std::string& line) {
        if (line == "locator" || line.ends_with("document")) return;
        const sax::Locator& locator = *recorder.locator();
        places.push_back(line + " @" + std::to_string(locator.getLineNumber()) + ":" +
                         std::to_string(locator.getColumnNumber()));
        EXPECT_STREQ(locator.getPublicId(), "public");
        EXPECT_STREQ(locator.getSystemId(), "system");
    };
    sax::InputSource source;
    source.setCharacterStream(
        "<!DOCTYPE a [<!ENTITY e 'v'>]>\n<a>\n <b x='&e;'/>text\n<?p x?></a>");
    source.setPublicId("public");
    source.setSystemId("system");
    reader.parse(source);
    EXPECT_EQ(places, (Lines{R"(blank "\n" @1:31)", "start a @2:1", R"(blank "\n " @2:4)",
                             R"(start b x="v" @3:2)", "end b @3:2", R"(text "text\n" @3:14)",
                             R"(instruction p "x" @4:3)", "end a @4:8"}));
}

TEST(XMLReaderLocator, TellsNoPlaceWhereThereIsNoNode) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    int asked = 0;
    recorder.onEvent = [&](const std::string& line) {
        if (line != "locator" && !line.ends_with("document")) return;
        ++asked;
        EXPECT_EQ(recorder.locator()->getLineNumber(), 0) << line;
        EXPECT_EQ(recorder.locator()->getColumnNumber(), 0) << line;
    };
    ParseText(reader, "<a/>");
    EXPECT_EQ(asked, 3);
}

TEST(XMLReaderLocator, IsOneForTheWholeParse) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    recorder.onEvent = [&](const std::string&) {
        ASSERT_NE(recorder.locator(), nullptr);
        EXPECT_STREQ(recorder.locator()->getSystemId(), "text");
        EXPECT_STREQ(recorder.locator()->getPublicId(), "");
    };
    ParseText(reader, "<a>text</a>");
    EXPECT_EQ(recorder.lines().front(), "locator");
    EXPECT_EQ(recorder.lines().size(), 6U);
}

}  // namespace
