// SPDX-License-Identifier: MIT
//
// A reader that is given as input: wherever it stands, and whatever happens to it meanwhile.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/DocumentReader.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sax::InputSource;
using sax::XMLReader;
using support::DocumentReader;
using support::EventRecorder;
using support::WhatIsThrown;
using Lines = std::vector<std::string>;

// Returns the lines between the ends of the document.
Lines Inner(const Lines& lines) {
    EXPECT_GE(lines.size(), 3U);
    EXPECT_EQ(lines.front(), "locator");
    EXPECT_EQ(lines[1], "document");
    EXPECT_EQ(lines.back(), "end document");
    return {lines.begin() + 2, lines.end() - 1};
}

class ReadyReader : public testing::Test {
protected:
    ReadyReader() { recorder_.Attach(parser_); }

    Lines Parse(Xml::XmlTextReader& reader) {
        parser_.parse(InputSource(&reader));
        return Inner(recorder_.TakeLines());
    }

    XMLReader parser_;
    EventRecorder recorder_;
};

struct Row {
    const char* what;
    const char* document;
    int nodes;  // read before the parse
    Lines events;
    const char* next;  // the name of the node read next; "" at the end
};

const Row kRows[] = {
    {"at the beginning: the whole document",
     "<?p 1?><a><b/></a><!-- c --><?p 2?>",
     0,
     {R"(instruction p "1")", "start a", "start b", "end b", "end a", R"(instruction p "2")"},
     ""},
    // Deliberate: the start tag has been read, so it is not reported; the end tag is, and ends it.
    {"on an element: its content and its end tag",
     "<a><b>t<c/></b><d/></a>",
     2,
     {R"(text "t")", "start c", "end c", "end b"},
     "d"},
    {"on the root element: what follows it is left",
     "<a>t</a><?p 2?>",
     1,
     {R"(text "t")", "end a"},
     "p"},
    {"elements of the same name in it",
     "<a><a><a>t</a></a><b/></a>",
     2,
     {"start a", R"(text "t")", "end a", "end a"},
     "b"},
    // Deliberate: what ends the parse is an end tag at the depth of the node.
    {"on an empty element: to the next end tag beside it",
     "<a><b/><c>t</c><d/></a>",
     2,
     {"start c", R"(text "t")", "end c"},
     "d"},
    {"on an empty element with none beside it: to the end",
     "<a><b/><c/></a>",
     2,
     {"start c", "end c", "end a"},
     ""},
    {"on a text: to the next end tag beside it",
     "<a>t<b>u</b><c/></a>",
     2,
     {"start b", R"(text "u")", "end b"},
     "c"},
    {"on an end tag: to the next beside it",
     "<a><b></b><c></c><d/></a>",
     3,
     {"start c", "end c"},
     "d"},
    {"on the last end tag: what follows it", "<a></a><?p 2?>", 2, {R"(instruction p "2")"}, ""},
};

TEST_F(ReadyReader, GoesOnFromWhereItStands) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        DocumentReader reader(row.document);
        reader.ReadNodes(row.nodes);
        EXPECT_EQ(Parse(*reader), row.events);
        EXPECT_EQ(reader->Read(), *row.next != '\0');
        EXPECT_EQ(reader->Name(), row.next);
    }
}

TEST_F(ReadyReader, SeveralParsesTakeADocumentApart) {
    DocumentReader reader("<a><r>1</r><r>2</r><r>3</r></a>");
    reader.ReadNodes(1);
    for (const char* const text : {"1", "2", "3"}) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(Parse(*reader), (Lines{std::string("text \"") + text + "\"", "end r"}));
    }
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), Xml::XmlNodeType::EndElement);
    EXPECT_EQ(reader->Name(), "a");
}

TEST_F(ReadyReader, AtItsEndHasNoStartElement) {
    DocumentReader reader("<a/>");
    reader.ReadAll();
    parser_.parse(InputSource(&*reader));
    ASSERT_EQ(recorder_.lines().size(), 4U);
    EXPECT_EQ(recorder_.lines()[0], "locator");
    EXPECT_EQ(recorder_.lines()[1], "document");
    EXPECT_TRUE(recorder_.lines()[2].starts_with(R"(fatal "Missing start element")"));
    EXPECT_EQ(recorder_.lines()[3], "end document");

    parser_.setErrorHandler(nullptr);
    recorder_.TakeLines();
    EXPECT_TRUE(WhatIsThrown([&] {
                    parser_.parse(InputSource(&*reader));
                }).starts_with("SAXParseException: Missing start element"));
    EXPECT_EQ(recorder_.lines(), (Lines{"locator", "document"}));
}

TEST_F(ReadyReader, ThatIsClosedHasNoStartElement) {
    parser_.setFeature(sax::features::kNormalization, true);
    Xml::XmlTextReader reader;
    parser_.parse(InputSource(&reader));
    ASSERT_EQ(recorder_.lines().size(), 4U);
    EXPECT_EQ(recorder_.lines()[0], "locator");
    EXPECT_TRUE(recorder_.lines()[2].starts_with(R"(fatal "Missing start element")"));
    EXPECT_EQ(reader.ReadState(), Xml::XmlTextReader::Closed);
    EXPECT_FALSE(reader.Normalization());
}

TEST_F(ReadyReader, ThatHasFailedIsUnsupported) {
    DocumentReader reader("<a>\n</b>");
    EXPECT_NE(WhatIsThrown([&] { reader.ReadAll(); }), "");
    for (const bool normalizes : {false, true}) {
        parser_.setFeature(sax::features::kNormalization, normalizes);
        parser_.parse(InputSource(&*reader));
        const Lines lines = recorder_.TakeLines();
        ASSERT_EQ(lines.size(), 4U);
        EXPECT_TRUE(lines[2].starts_with(R"(fatal "Unsupported XML-document.")")) << lines[2];
        EXPECT_EQ(lines[3], "end document");
    }
    parser_.setErrorHandler(nullptr);
    EXPECT_TRUE(WhatIsThrown([&] {
                    parser_.parse(InputSource(&*reader));
                }).starts_with("SAXParseException: Unsupported XML-document."));
    EXPECT_EQ(recorder_.lines(), (Lines{"locator", "document"}));
}

TEST_F(ReadyReader, ErrorsOfItPassThrough) {
    DocumentReader reader("<a><b></a>");
    EXPECT_TRUE(WhatIsThrown([&] {
                    parser_.parse(InputSource(&*reader));
                }).starts_with("Exception: End tag 'a' doesn't match start tag 'b'"));
    EXPECT_EQ(recorder_.lines(), (Lines{"locator", "document", "start a", "start b"}));
    EXPECT_EQ(reader->ReadState(), Xml::XmlTextReader::Error);
}

TEST_F(ReadyReader, StaysOpenWhateverEndsTheParse) {
    DocumentReader reader("<a><b/><c/><d/></a>");
    recorder_.throwAt = 4;
    EXPECT_THROW(parser_.parse(InputSource(&*reader)), support::RecorderError);
    EXPECT_EQ(reader->Name(), "b");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->Name(), "c");
    recorder_.throwAt = 0;
    recorder_.TakeLines();
    EXPECT_EQ(Parse(*reader), (Lines{"start d", "end d", "end a"}));
}

TEST_F(ReadyReader, KeepsItsNamespacesAndEntities) {
    constexpr char kDocument[] = "<!DOCTYPE p:a [<!ENTITY e 'v'>]><p:a xmlns:p='u'>1&e;2</p:a>";
    DocumentReader reader(kDocument);
    reader->SetNamespaces(false);
    reader->SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    EXPECT_TRUE(parser_.getFeature(sax::features::kNamespaces));
    EXPECT_EQ(Parse(*reader), (Lines{R"(start p:a xmlns:p="u")", R"(text "1v2")", "end p:a"}));
    EXPECT_FALSE(reader->Namespaces());
    EXPECT_EQ(reader->EntityHandling(), Xml::XmlEntityHandling::ExpandEntities);

    parser_.setFeature(sax::features::kNamespaces, false);
    DocumentReader other(kDocument);
    EXPECT_EQ(Parse(*other).front(), R"(start {u}a p:a {}p xmlns:p="u")");
    EXPECT_TRUE(other->Namespaces());
}

TEST_F(ReadyReader, KeepsItsWhiteSpaceSetting) {
    DocumentReader reader("<a> <b/> </a>");
    reader->SetWhitespaceHandling(Xml::XmlTextReader::WsNone);
    EXPECT_EQ(Parse(*reader), (Lines{"start a", "start b", "end b", "end a"}));
}

// The feature holds during the parse; then the reader is as it was.
TEST_F(ReadyReader, GetsItsNormalizationBack) {
    for (const bool ofReader : {false, true}) {
        for (const bool ofParser : {false, true}) {
            for (const int throwAt : {0, 4}) {
                DocumentReader reader("<a>1\r\n2</a>");
                reader->SetNormalization(ofReader);
                parser_.setFeature(sax::features::kNormalization, ofParser);
                recorder_.throwAt = throwAt;
                recorder_.onEvent = [&](const std::string& line) {
                    if (line.starts_with("start ")) {
                        EXPECT_EQ(reader->Normalization(), ofParser);
                    }
                };
                if (throwAt == 0) {
                    parser_.parse(InputSource(&*reader));
                } else {
                    EXPECT_THROW(parser_.parse(InputSource(&*reader)), support::RecorderError);
                }
                EXPECT_EQ(recorder_.lines()[3], ofParser ? R"(text "1\n2")" : R"(text "1\r\n2")");
                EXPECT_EQ(reader->Normalization(), ofReader);
                recorder_.TakeLines();
            }
        }
    }
}

// Whatever event throws, the reader stands on its node and can be read on.
TEST_F(ReadyReader, CanBeReadOnAfterAHandlerHasThrownAtAnyEvent) {
    constexpr char kDocument[] = "<a x='1'>t<b/> <?p d?><c y='2'>u</c></a>";
    DocumentReader whole(kDocument);
    const std::size_t count = Parse(*whole).size() + 3;
    for (std::size_t number = 1; number <= count; ++number) {
        SCOPED_TRACE(number);
        DocumentReader reader(kDocument);
        recorder_.throwAt = static_cast<int>(number);
        EXPECT_THROW(parser_.parse(InputSource(&*reader)), support::RecorderError);
        recorder_.throwAt = 0;
        recorder_.TakeLines();
        EXPECT_EQ(WhatIsThrown([&] { reader.ReadAll(); }), "");
        EXPECT_EQ(reader->ReadState(), Xml::XmlTextReader::EndOfFile);
    }
}

TEST_F(ReadyReader, IsToldByTheLocator) {
    DocumentReader reader("<a>\n  <b/></a>");
    reader.ReadNodes(2);
    recorder_.onEvent = [&](const std::string& line) {
        EXPECT_STREQ(recorder_.locator()->getSystemId(), "");
        EXPECT_STREQ(recorder_.locator()->getPublicId(), "");
        if (line != "start b") return;
        EXPECT_EQ(recorder_.locator()->getLineNumber(), 2);
        EXPECT_EQ(recorder_.locator()->getColumnNumber(), 3);
    };
    EXPECT_EQ(Parse(*reader), (Lines{"start b", "end b", "end a"}));
}

TEST_F(ReadyReader, StandingOnAnAttributeGoesOnBehindItsElement) {
    DocumentReader reader("<a x='1'><b>t</b><c/></a>");
    reader.ReadToElement();
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(Parse(*reader), (Lines{"start b", R"(text "t")", "end b"}));
}

// Handlers who move the reader that they gave.

TEST_F(ReadyReader, MayBeMovedToAttributesByAHandler) {
    DocumentReader reader("<a x='1' y='2'><b/></a>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line.starts_with("start a")) {
            EXPECT_TRUE(reader->MoveToAttribute("y"));
        }
    };
    EXPECT_EQ(Parse(*reader), (Lines{R"(start a x="1" y="2")", "start b", "end b", "end a"}));
}

TEST_F(ReadyReader, MayBeReadOnByAHandlerWhoseArgumentsStay) {
    class ReadOn : public sax::helpers::DefaultHandler {
    public:
        explicit ReadOn(Xml::XmlTextReader& reader) : reader_(reader) {}
        Lines lines;

        void startElement(const char* uri, const char* localName, const char* qName,
                          const sax::Attributes& attributes) override {
            const std::string before = Told(uri, localName, qName, attributes);
            reader_.Read();
            reader_.Read();
            EXPECT_EQ(Told(uri, localName, qName, attributes), before);
            if (lines.empty()) {
                EXPECT_STREQ(attributes.getValue("urn:p", "x"), "one");
            }
            lines.push_back(before);
        }
        void endElement(const char*, const char*, const char* qName) override {
            lines.push_back(std::string("end ") + qName);
        }

    private:
        static std::string Told(const char* uri, const char* localName, const char* qName,
                                const sax::Attributes& attributes) {
            return std::string(uri) + " " + localName + " " + qName +
                   EventRecorder::Shown(attributes);
        }

        Xml::XmlTextReader& reader_;
    };
    DocumentReader reader(
        "<!DOCTYPE a [<!ENTITY e 'one'>]>"
        "<p:a xmlns:p='urn:p' p:x='&e;' y='2'>text<b z='3'/><c/></p:a>");
    ReadOn handler(*reader);
    parser_.setContentHandler(&handler);
    parser_.setErrorHandler(nullptr);
    // The element <b> is skipped by the handler of <p:a>, whose end tag is skipped by that of <c>;
    // so one element is never closed.
    EXPECT_NE(WhatIsThrown([&] { parser_.parse(InputSource(&*reader)); }), "");
    ASSERT_FALSE(handler.lines.empty());
    EXPECT_EQ(handler.lines[0], R"(urn:p a p:a {}p xmlns:p="urn:p" {urn:p}x p:x="one" y="2")");
}

TEST_F(ReadyReader, ThatIsReadToItsEndByAHandlerHasAnUnclosedElement) {
    DocumentReader reader("<a><b>t</b></a>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line == "start b") reader.ReadAll();
    };
    parser_.parse(InputSource(&*reader));
    ASSERT_EQ(recorder_.lines().size(), 6U);
    EXPECT_EQ(recorder_.lines()[3], "start b");
    EXPECT_TRUE(recorder_.lines()[4].starts_with(R"(fatal "Unclosed element found.")"));
    EXPECT_EQ(recorder_.lines()[5], "end document");
    recorder_.TakeLines();

    parser_.setErrorHandler(nullptr);
    DocumentReader again("<a><b>t</b></a>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line == "start b") again.ReadAll();
    };
    EXPECT_TRUE(WhatIsThrown([&] {
                    parser_.parse(InputSource(&*again));
                }).starts_with("SAXParseException: Unclosed element found."));
}

// Deliberate: the error was the handler's to see; what is left is an input that cannot be read on.
TEST_F(ReadyReader, ThatFailsInAHandlerWhoKeepsTheErrorIsUnsupported) {
    DocumentReader reader("<a><b>t</c></a>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line != "start b") return;
        EXPECT_TRUE(WhatIsThrown([&] { reader.ReadAll(); }).starts_with("Exception: End tag"));
    };
    parser_.parse(InputSource(&*reader));
    ASSERT_EQ(recorder_.lines().size(), 6U);
    EXPECT_EQ(recorder_.lines()[3], "start b");
    EXPECT_TRUE(recorder_.lines()[4].starts_with(R"(fatal "Unsupported XML-document.")"));
    EXPECT_EQ(recorder_.lines()[5], "end document");
}

TEST_F(ReadyReader, MayBeReadOnByAHandlerOfText) {
    DocumentReader reader("<a>t<b>a longer text</b></a>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line != R"(text "t")") return;
        reader->Read();
        reader->Read();
        EXPECT_EQ(reader->Value(), "a longer text");
    };
    EXPECT_EQ(Parse(*reader), (Lines{"start a", R"(text "t")", "end b", "end a"}));
}

TEST_F(ReadyReader, MayBeClosedByAHandlerOfDeclarations) {
    DocumentReader reader("<!DOCTYPE a [<!NOTATION n SYSTEM 's'><!NOTATION m SYSTEM 's'>]><a/>");
    recorder_.onEvent = [&](const std::string& line) {
        if (line.starts_with("notation n")) reader->Close();
    };
    EXPECT_EQ(WhatIsThrown([&] { parser_.parse(InputSource(&*reader)); }),
              "Exception: No source stream to parse @0:0");
}

TEST_F(ReadyReader, MayBeClosedByAHandler) {
    for (const char* const document : {"<a x='1'/>", "<a x='1'>t</a>"}) {
        SCOPED_TRACE(document);
        DocumentReader reader(document);
        recorder_.TakeLines();
        recorder_.onEvent = [&](const std::string& line) {
            if (line.starts_with("start ")) reader->Close();
        };
        parser_.setFeature(sax::features::kNormalization, true);
        EXPECT_EQ(WhatIsThrown([&] { parser_.parse(InputSource(&*reader)); }),
                  "Exception: No source stream to parse @0:0");
        EXPECT_EQ(recorder_.lines()[2], R"(start a x="1")");
    }
}

}  // namespace
