// SPDX-License-Identifier: MIT
//
// Which events a document gives, and in which order. All have locator and document in front and end
// document behind them.
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

struct Row {
    const char* what;
    std::string document;
    Lines events;
};

const Row kRows[] = {
    // Elements.
    {"an empty element", "<a/>", {"start a", "end a"}},
    {"an element without content", "<a></a>", {"start a", "end a"}},
    {"elements in an element",
     "<a><b/><c></c></a>",
     {"start a", "start b", "end b", "start c", "end c", "end a"}},
    {"elements in each other",
     "<a><b><c/></b></a>",
     {"start a", "start b", "start c", "end c", "end b", "end a"}},
    // Names.
    {"a prefix",
     "<p:a xmlns:p='urn:p'><p:b></p:b></p:a>",
     {R"(start {urn:p}a p:a {}p xmlns:p="urn:p")", "start {urn:p}b p:b", "end {urn:p}b p:b",
      "end {urn:p}a p:a"}},
    {"a default namespace",
     "<a xmlns='urn:d'><b x='1'/></a>",
     {R"(start {urn:d}a a xmlns="urn:d")", R"(start {urn:d}b b x="1")", "end {urn:d}b b",
      "end {urn:d}a a"}},
    {"a default namespace undone",
     "<a xmlns='urn:d'><b xmlns=''/></a>",
     {R"(start {urn:d}a a xmlns="urn:d")", R"(start b xmlns="")", "end b", "end {urn:d}a a"}},
    {"a prefix bound anew",
     "<p:a xmlns:p='urn:1'><p:b xmlns:p='urn:2'/><p:c/></p:a>",
     {R"(start {urn:1}a p:a {}p xmlns:p="urn:1")", R"(start {urn:2}b p:b {}p xmlns:p="urn:2")",
      "end {urn:2}b p:b", "start {urn:1}c p:c", "end {urn:1}c p:c", "end {urn:1}a p:a"}},
    {"a prefix that is not declared", "<p:a/>", {"start {}a p:a", "end {}a p:a"}},
    {"the prefix xml",
     "<a xml:lang='en'/>",
     {R"(start a {http://www.w3.org/XML/1998/namespace}lang xml:lang="en")", "end a"}},
    // Attributes.
    {"attributes in their order",
     "<a b='1' a='2'  c = \"3\"/>",
     {R"(start a b="1" a="2" c="3")", "end a"}},
    {"declarations between attributes",
     "<a x='1' xmlns:p='urn:p' p:x='2' xmlns='urn:d'/>",
     {R"(start {urn:d}a a x="1" {}p xmlns:p="urn:p" {urn:p}x p:x="2" xmlns="urn:d")",
      "end {urn:d}a a"}},
    {"references in a value", "<a x='&lt;&#65;&#x42;&amp;'/>", {R"(start a x="<AB&")", "end a"}},
    {"an empty value", "<a x=''/>", {R"(start a x="")", "end a"}},
    {"an entity in a value",
     "<!DOCTYPE a [<!ENTITY e 'one'>]><a w='0' x='&e;' y='-&e;-&e;' z='3'/>",
     {R"(start a w="0" x="one" y="-one-one" z="3")", "end a"}},
    {"entities in entities in a value",
     "<!DOCTYPE a [<!ENTITY e '[&f;&#65;&f;]'><!ENTITY f '2'>]><a x='1&e;3'/>",
     {R"(start a x="1[2A2]3")", "end a"}},
    {"an entity in the name of a namespace",
     "<!DOCTYPE a [<!ENTITY e 'urn:e'>]><p:a xmlns:p='&e;'/>",
     {R"(start {urn:e}a p:a {}p xmlns:p="urn:e")", "end {urn:e}a p:a"}},
    // Text.
    {"text", "<a>text</a>", {"start a", R"(text "text")", "end a"}},
    {"text between elements",
     "<a>1<b/>2<b/>3</a>",
     {"start a", R"(text "1")", "start b", "end b", R"(text "2")", "start b", "end b",
      R"(text "3")", "end a"}},
    {"references in text",
     "<a>1&lt;2&#65;&#x20AC;</a>",
     {"start a", R"(text "1<2A\u{20AC}")", "end a"}},
    {"a section is text",
     "<a><![CDATA[<b>&amp;]]></a>",
     {"start a", R"(text "<b>&amp;")", "end a"}},
    {"a section between texts",
     "<a>1<![CDATA[2]]>3</a>",
     {"start a", R"(text "1")", R"(text "2")", R"(text "3")", "end a"}},
    {"a section of white space is text",
     "<a><![CDATA[ ]]></a>",
     {"start a", R"(text " ")", "end a"}},
    {"an empty section", "<a><![CDATA[]]></a>", {"start a", R"(text "")", "end a"}},
    {"text across a comment",
     "<a>1<!-- c -->2</a>",
     {"start a", R"(text "1")", R"(text "2")", "end a"}},
    {"line ends stay as they are", "<a>1\r\n2\r3</a>", {"start a", R"(text "1\r\n2\r3")", "end a"}},
    {"a tab in text", "<a>1\t2 </a>", {"start a", R"(text "1\t2 ")", "end a"}},
    // White space.
    {"white space", "<a> \n\t</a>", {"start a", R"(blank " \n\t")", "end a"}},
    {"white space between elements",
     "<a>\n <b/>\n</a>",
     {"start a", R"(blank "\n ")", "start b", "end b", R"(blank "\n")", "end a"}},
    {"white space outside of the root element",
     "<?xml version='1.0'?>\n<!-- c -->\n<a/>\n",
     {R"(blank "\n")", R"(blank "\n")", "start a", "end a", R"(blank "\n")"}},
    {"white space that is to be preserved is text",
     "<a xml:space='preserve'> <b xml:space='default'> </b></a>",
     {R"(start a {http://www.w3.org/XML/1998/namespace}space xml:space="preserve")", R"(text " ")",
      R"(start b {http://www.w3.org/XML/1998/namespace}space xml:space="default")", R"(blank " ")",
      "end b", "end a"}},
    // Instructions and comments.
    {"instructions anywhere",
     "<?p 1?><a><?q 2 ?></a><?r?>",
     {R"(instruction p "1")", "start a", R"(instruction q "2 ")", "end a", R"(instruction r "")"}},
    {"no comments", "<!-- 1 --><a><!-- 2 --></a><!-- 3 -->", {"start a", "end a"}},
    {"an instruction behind a comment behind the root element",
     "<a/><!-- c --><?p x?>",
     {"start a", "end a", R"(instruction p "x")"}},
    {"no declaration", "<?xml version='1.0' encoding='UTF-8'?><a/>", {"start a", "end a"}},
    // Entities.
    {"an entity in text",
     "<!DOCTYPE a [<!ENTITY e 'one'>]><a>&e;</a>",
     {"start a", R"(text "one")", "end a"}},
    {"an entity with markup",
     "<!DOCTYPE a [<!ENTITY e '<b x=\"1\">&f;</b>'><!ENTITY f '2'>]><a>&e;</a>",
     {"start a", R"(start b x="1")", R"(text "2")", "end b", "end a"}},
    {"an entity with an instruction and a comment",
     "<!DOCTYPE a [<!ENTITY e '<?p x?><!-- c -->'>]><a>&e;</a>",
     {"start a", R"(instruction p "x")", "end a"}},
    {"an external entity stands for nothing",
     "<!DOCTYPE a [<!ENTITY e SYSTEM 'e.xml'>]><a>1&e;2</a>",
     {"start a", R"(text "1")", R"(text "2")", "end a"}},
    // The document type.
    {"the document type itself", "<!DOCTYPE a SYSTEM 'a.dtd'><a/>", {"start a", "end a"}},
    {"notations and unparsed entities in the order of their declarations",
     "<!DOCTYPE a [<!NOTATION n SYSTEM 'ns'><!ENTITY e SYSTEM 'es' NDATA n>"
     "<!NOTATION m PUBLIC 'mp' 'ms'><!ENTITY f PUBLIC 'fp' 'fs' NDATA m>]><a/>",
     {R"(notation n "" "ns")", R"(unparsed e "" "es" n)", R"(notation m "mp" "ms")",
      R"(unparsed f "fp" "fs" m)", "start a", "end a"}},
    {"a notation with a public identifier alone",
     "<!DOCTYPE a [<!NOTATION n PUBLIC 'np'>]><a/>",
     {R"(notation n "np" "")", "start a", "end a"}},
    {"entities that are parsed are not reported",
     "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY f SYSTEM 'f.xml'><!ENTITY % g 'y'>"
     "<!ENTITY % h SYSTEM 'h.xml'>]><a/>",
     {"start a", "end a"}},
    {"the first declaration of an entity counts",
     "<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY e SYSTEM '1' NDATA n>"
     "<!ENTITY e SYSTEM '2' NDATA n><!ENTITY f 'x'><!ENTITY f SYSTEM '3' NDATA n>]><a/>",
     {R"(notation n "" "n")", R"(unparsed e "" "1" n)", "start a", "end a"}},
    {"instructions and comments in the document type",
     "<!DOCTYPE a [<?p x?><!-- c -->]><a/>",
     {"start a", "end a"}},
};

Lines Framed(const Lines& events) {
    Lines lines = {"locator", "document"};
    lines.insert(lines.end(), events.begin(), events.end());
    lines.emplace_back("end document");
    return lines;
}

TEST(XMLReaderEvents, AreThoseOfTheTable) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        XMLReader reader;
        EventRecorder recorder;
        recorder.Attach(reader);
        ParseText(reader, row.document);
        EXPECT_EQ(recorder.lines(), Framed(row.events));
    }
}

TEST(XMLReaderEvents, AreTheSameHoweverTheStreamCutsItsData) {
    XMLReader reader;  // one for all
    for (const Row& row : kRows) {
        for (const int bytesPerRead : {1, 2, 3, 7}) {
            SCOPED_TRACE(std::string(row.what) + " by " + std::to_string(bytesPerRead));
            EventRecorder recorder;
            recorder.Attach(reader);
            ParseText(reader, row.document, bytesPerRead);
            EXPECT_EQ(recorder.lines(), Framed(row.events));
        }
    }
}

// A missing handler leaves out its own events and no others.
TEST(XMLReaderEvents, NeedTheirHandler) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        Lines content = {"locator", "document"};
        Lines declarations;
        for (const std::string& line : row.events) {
            const bool isDeclaration = line.starts_with("notation") || line.starts_with("unparsed");
            (isDeclaration ? declarations : content).push_back(line);
        }
        content.emplace_back("end document");

        XMLReader reader;
        EventRecorder recorder;
        reader.setContentHandler(&recorder);
        ParseText(reader, row.document);
        EXPECT_EQ(recorder.TakeLines(), content);

        reader.setContentHandler(nullptr);
        reader.setDTDHandler(&recorder);
        ParseText(reader, row.document);
        EXPECT_EQ(recorder.TakeLines(), declarations);

        reader.setDTDHandler(nullptr);
        reader.setErrorHandler(&recorder);
        reader.setEntityResolver(&recorder);
        ParseText(reader, row.document);
        EXPECT_EQ(recorder.TakeLines(), Lines());
    }
}

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
