// SPDX-License-Identifier: MIT
//
// Errors: in documents, from streams, with and without an error handler, and from inside handlers.
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/XMLReader.h>

#include "sax/SaxParse.h"
#include "support/EventRecorder.h"
#include "support/FailingStream.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sax::InputSource;
using sax::XMLReader;
using support::EventRecorder;
using support::ParseText;
using support::WhatIsThrown;
using Lines = std::vector<std::string>;

const Lines kGoodEvents = {"locator", "document", "start good", "end good", "end document"};

// Expects that the reader parses the next document.
void ExpectUsable(XMLReader& reader) {
    EventRecorder recorder;
    const XMLReader before(reader);
    recorder.Attach(reader);
    ParseText(reader, "<good/>");
    EXPECT_EQ(recorder.lines(), kGoodEvents);
    reader = before;
}

struct Row {
    const char* document;
    Lines events;  // before the error
    const char* message;
    const char* argument;
    int line;
    int column;
};

const Row kErrors[] = {
    {"", {}, "Missing root element", "", 1, 1},
    {"<!-- c -->", {}, "Missing root element", "", 1, 11},
    {"<a><b></b>", {"start a", "start b", "end b"}, "Missing end element", "a", 1, 11},
    {"<a>\n<b/>& x</a>", {"start a", R"(blank "\n")", "start b", "end b"}, "Bad name", "", 2, 6},
    {"<a>&e;</a>", {"start a"}, "Undeclared entity", "e", 1, 7},
    {"<a></b>", {"start a"}, "End tag 'b' doesn't match start tag 'a'", "</b>", 1, 7},
    {"<a x='1' x='2'/>", {}, "Duplicate attribute", "", 1, 10},
    {"<a/><b>", {"start a", "end a", "start b"}, "Missing end element", "b", 1, 8},
};

std::string Place(const Row& row) {
    return " @" + std::to_string(row.line) + ":" + std::to_string(row.column);
}

Lines Opened(const Row& row) {
    Lines lines = {"locator", "document"};
    lines.insert(lines.end(), row.events.begin(), row.events.end());
    return lines;
}

// Whatever handlers there are: the error of the reader leaves the parse as it is.
TEST(XMLReaderError, OfTheDocumentPassesThrough) {
    for (const Row& row : kErrors) {
        for (const bool hasErrorHandler : {false, true}) {
            SCOPED_TRACE(row.document);
            XMLReader reader;
            EventRecorder recorder;
            recorder.Attach(reader);
            if (!hasErrorHandler) reader.setErrorHandler(nullptr);
            try {
                ParseText(reader, row.document);
                ADD_FAILURE() << "nothing was thrown";
            } catch (const Xml::Exception& error) {
                EXPECT_STREQ(error.What(), row.message);
                EXPECT_STREQ(error.Argument(), row.argument);
                EXPECT_EQ(error.LineNumber(), row.line);
                EXPECT_EQ(error.LinePos(), row.column);
            }
            EXPECT_EQ(recorder.lines(), Opened(row));
            ExpectUsable(reader);
        }
    }
}

TEST(XMLReaderError, OfTheDocumentIsGivenToTheHandlerWhenAskedFor) {
    for (const Row& row : kErrors) {
        SCOPED_TRACE(row.document);
        XMLReader reader;
        EXPECT_FALSE(reader.getReportReaderErrors());
        reader.setReportReaderErrors(true);
        EXPECT_TRUE(reader.getReportReaderErrors());
        EventRecorder recorder;
        recorder.Attach(reader);
        ParseText(reader, row.document);
        std::string message = row.message;
        if (*row.argument != '\0') message += std::string(": ") + row.argument;
        Lines expected = Opened(row);
        expected.push_back("fatal \"" + message + "\"" + Place(row));
        expected.emplace_back("end document");
        EXPECT_EQ(recorder.lines(), expected);
        ExpectUsable(reader);
    }
}

TEST(XMLReaderError, OfTheDocumentIsAParseExceptionWhenAskedForAndThereIsNoHandler) {
    for (const Row& row : kErrors) {
        SCOPED_TRACE(row.document);
        XMLReader reader;
        reader.setReportReaderErrors(true);
        EventRecorder recorder;
        reader.setContentHandler(&recorder);
        try {
            ParseText(reader, row.document);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const sax::SAXParseException& error) {
            EXPECT_TRUE(error.getMessage().str().starts_with(row.message));
            EXPECT_NE(error.getMessage().str().find(row.argument), std::string::npos);
            EXPECT_EQ(error.getLineNumber(), row.line);
            EXPECT_EQ(error.getColumnNumber(), row.column);
            EXPECT_EQ(error.getSystemId(), "text");
            EXPECT_EQ(error.getPublicId(), "");
        }
        EXPECT_EQ(recorder.lines(), Opened(row));
        ExpectUsable(reader);
    }
}

// Also without a handler for content, who would see the value.
TEST(XMLReaderError, OfAReferenceInAnAttributeIsFoundByAnybody) {
    constexpr char kDocument[] = "<a><b x='1&none;2'/></a>";
    for (const bool hasContentHandler : {false, true}) {
        XMLReader reader;
        EventRecorder recorder;
        if (hasContentHandler) reader.setContentHandler(&recorder);
        const std::string thrown = WhatIsThrown([&] { ParseText(reader, kDocument); });
        EXPECT_TRUE(thrown.starts_with("Exception: Undeclared entity")) << thrown;
        EXPECT_EQ(recorder.lines(),
                  hasContentHandler ? (Lines{"locator", "document", "start a"}) : Lines());
        ExpectUsable(reader);

        reader.setReportReaderErrors(true);
        EventRecorder errors;
        reader.setErrorHandler(&errors);
        ParseText(reader, kDocument);
        ASSERT_EQ(errors.lines().size(), 1U);
        EXPECT_TRUE(errors.lines()[0].starts_with("fatal \"Undeclared entity"));
    }
}

// What is cut off anywhere ends the parse with an error or is the whole document; never anything
// else.
TEST(XMLReaderError, EveryTruncationIsAnErrorOfTheDocument) {
    const std::string document =
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'v'><!NOTATION n SYSTEM 's'>]>"
        "<a x='&e;' xmlns:p='u'>t&e;<p:b/><![CDATA[c]]><?p d?><!--c--> </a>";
    XMLReader reader;
    for (std::size_t length = 0; length < document.size(); ++length) {
        SCOPED_TRACE(length);
        EventRecorder recorder;
        recorder.Attach(reader);
        const std::string thrown =
            WhatIsThrown([&] { ParseText(reader, document.substr(0, length)); });
        EXPECT_TRUE(thrown.starts_with("Exception: ")) << thrown;
        EXPECT_NE(recorder.lines().back(), "end document");
    }
    ExpectUsable(reader);
}

TEST(XMLReaderError, OfTheStreamPassesThrough) {
    const std::string document = "<a>" + std::string(5000, 'x') + "<b/></a>";
    for (const bool reports : {false, true}) {
        for (int call = 1; call <= 6; ++call) {
            XMLReader reader;
            EventRecorder recorder;
            reader.setContentHandler(&recorder);
            reader.setReportReaderErrors(reports);
            support::DocumentStream memory(document);
            support::FailingStream stream(*memory.get(), call, support::Failure::Throw);
            const std::string thrown =
                WhatIsThrown([&] { reader.parse(InputSource(&stream, "stream")); });
            ASSERT_TRUE(stream.HasFailed());
            EXPECT_NE(thrown.find(support::FailingStream::kMessage), std::string::npos) << thrown;
            EXPECT_TRUE(thrown.starts_with(reports ? "SAXParseException" : "Exception"));
            EXPECT_NE(recorder.lines().back(), "end document");
            ExpectUsable(reader);
        }
    }
}

// What is no error of the library passes through whatever is set.
TEST(XMLReaderError, OfAnotherTypePassesThrough) {
    class OddStream : public IO::Stream {
    public:
        bool CanRead() const override { return true; }
        void Close() override {}
        int Read(unsigned char*, int, int) override { throw 17; }
    };
    for (const bool reports : {false, true}) {
        XMLReader reader;
        reader.setReportReaderErrors(reports);
        EventRecorder recorder;
        recorder.Attach(reader);
        OddStream stream;
        EXPECT_THROW(reader.parse(InputSource(&stream, "odd")), int);
        ExpectUsable(reader);
    }
}

// A handler that ends the parse by an exception, at each event in turn.
TEST(XMLReaderError, FromAHandlerAtAnyEventPassesThrough) {
    constexpr char kDocument[] =
        "<?xml version='1.0'?><!DOCTYPE a [<!NOTATION n SYSTEM 's'>"
        "<!ENTITY u SYSTEM 'u' NDATA n><!ENTITY e '<c>1</c>'>]>"
        "<a x='&#65;' xmlns:p='u'>t<p:b/>&e;<![CDATA[c]]><?p d?> </a>";
    XMLReader reader;
    EventRecorder whole;
    whole.Attach(reader);
    ParseText(reader, kDocument);
    const Lines all = whole.lines();
    ASSERT_GT(all.size(), 15U);
    for (std::size_t number = 1; number <= all.size(); ++number) {
        SCOPED_TRACE(all[number - 1]);
        EventRecorder recorder;
        recorder.Attach(reader);
        recorder.throwAt = static_cast<int>(number);
        try {
            ParseText(reader, kDocument);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const support::RecorderError& error) {
            EXPECT_EQ(error.event, static_cast<int>(number));
        }
        EXPECT_EQ(recorder.lines(),
                  Lines(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(number)));
        EXPECT_EQ(
            WhatIsThrown([&] { reader.getFeature("http://xml.org/sax/features/is-standalone"); }),
            "SAXException: Invalid operation");
        EXPECT_NO_THROW(reader.setFeature("http://xml.org/sax/features/namespaces", true));
        ExpectUsable(reader);
    }
}

// Exceptions of handlers that look like those of the reader are not taken for them.
TEST(XMLReaderError, FromAHandlerIsNoErrorOfTheDocument) {
    for (const char* const at : {"locator", "document", "start a", "text \"t\"", "end a",
                                 "end document", "notation n \"\" \"s\""}) {
        SCOPED_TRACE(at);
        XMLReader reader;
        reader.setReportReaderErrors(true);
        EventRecorder recorder;
        recorder.Attach(reader);
        recorder.onEvent = [&](const std::string& line) {
            if (line == at) Xml::Exception::ThrowException("of the handler", "argument", 3, 4);
        };
        EXPECT_EQ(WhatIsThrown([&] {
                      ParseText(reader, "<!DOCTYPE a [<!NOTATION n SYSTEM 's'>]><a>t</a>");
                  }),
                  "Exception: of the handler (argument) @3:4");
        EXPECT_EQ(recorder.lines().back(), at);
        ExpectUsable(reader);
    }
}

TEST(XMLReaderError, FromTheErrorHandlerPassesThrough) {
    XMLReader reader;
    sax::helpers::DefaultHandler throwing;
    EventRecorder recorder;
    reader.setContentHandler(&recorder);
    reader.setErrorHandler(&throwing);
    EXPECT_EQ(WhatIsThrown([&] { reader.parse(InputSource()); }),
              "SAXParseException: No input source found. @0:0");
    EXPECT_EQ(recorder.lines(), Lines());
    reader.setReportReaderErrors(true);
    EXPECT_EQ(WhatIsThrown([&] { ParseText(reader, "<a>"); }),
              "SAXParseException: Missing end element: a @1:4");
    EXPECT_EQ(recorder.lines(), (Lines{"locator", "document", "start a"}));
    ExpectUsable(reader);
}

// The handler of errors may be replaced while it is called, or removed.
TEST(XMLReaderError, OfNoInputIsSaidToTheHandlersOfTheMoment) {
    XMLReader reader;
    EventRecorder first;
    EventRecorder second;
    first.Attach(reader);
    first.onEvent = [&](const std::string& line) {
        if (line.starts_with("fatal")) reader.setErrorHandler(&second);
    };
    reader.parse(InputSource());
    ASSERT_EQ(second.lines().size(), 1U);
    EXPECT_TRUE(second.lines()[0].starts_with("fatal \"Missing start element\""));

    first.Attach(reader);
    first.onEvent = [&](const std::string& line) {
        if (line.starts_with("fatal")) reader.setErrorHandler(nullptr);
    };
    EXPECT_TRUE(WhatIsThrown([&] {
                    reader.parse(InputSource());
                }).starts_with("SAXParseException: Missing start element"));
}

TEST(XMLReaderError, NeitherWarningsNorErrorsAreReported) {
    XMLReader reader;
    EventRecorder recorder;
    recorder.Attach(reader);
    ParseText(reader, "<!DOCTYPE a SYSTEM 'none.dtd' [<!ENTITY e SYSTEM 'none'>]><b>&e;</b>");
    EXPECT_EQ(recorder.lines(), (Lines{"locator", "document", "start b", "end b", "end document"}));
}

TEST(XMLReaderError, TheEntityResolverIsNeverAsked) {
    XMLReader reader;
    EventRecorder recorder;
    reader.setEntityResolver(&recorder);
    EXPECT_EQ(reader.getEntityResolver(), &recorder);
    ParseText(reader, "<!DOCTYPE a PUBLIC 'p' 's' [<!ENTITY e PUBLIC 'p' 's'>]><a>&e;</a>");
    EXPECT_EQ(recorder.lines(), Lines());
}

}  // namespace
