// SPDX-License-Identifier: MIT
//
// Where a document comes from: every kind of input, several at once, and none.
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/EventRecorder.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using sax::InputSource;
using sax::XMLReader;
using support::EventRecorder;
using support::WhatIsThrown;
using Lines = std::vector<std::string>;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

class XMLReaderInput : public support::FileTest {
protected:
    XMLReaderInput() { recorder_.Attach(reader_); }

    // Parses and returns the lines between the ends of the document.
    template <typename Input>
    Lines Parse(const Input& input) {
        reader_.parse(input);
        Lines lines = recorder_.TakeLines();
        if (lines.size() < 3) return lines;
        return {lines.begin() + 2, lines.end() - 1};
    }

    XMLReader reader_;
    EventRecorder recorder_;
};

Lines Element(const std::string& name) { return {"start " + name, "end " + name}; }

TEST_F(XMLReaderInput, IsAStreamThatStaysOpen) {
    support::DocumentStream stream("<stream/>");
    EXPECT_EQ(Parse(InputSource(stream.get(), "system")), Element("stream"));
    EXPECT_TRUE(stream.get()->CanRead());
    EXPECT_EQ(stream.get()->Seek(0, IO::SeekOrigin::Begin), 0);
    EXPECT_EQ(Parse(InputSource(stream.get(), "system")), Element("stream"));
}

TEST_F(XMLReaderInput, IsAFileThatStaysOpen) {
    const File file(std::fopen(Make("a.xml", "<file/>").c_str(), "rb"));
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(Parse(InputSource(file.get(), "system")), Element("file"));
    EXPECT_EQ(std::fseek(file.get(), 0, SEEK_SET), 0);
    EXPECT_EQ(std::fgetc(file.get()), '<');
}

TEST_F(XMLReaderInput, IsATextUpToItsZeroByte) {
    InputSource source;
    source.setCharacterStream("<text/>\0<no/>");
    EXPECT_EQ(Parse(source), Element("text"));
}

TEST_F(XMLReaderInput, IsAReader) {
    support::DocumentStream stream("<reader/>");
    Xml::XmlTextReader reader;
    reader.SetStream(stream.get(), false);
    EXPECT_EQ(Parse(InputSource(&reader)), Element("reader"));
    EXPECT_EQ(reader.ReadState(), Xml::XmlTextReader::EndOfFile);
}

TEST_F(XMLReaderInput, IsANamedFile) {
    const std::string name = Make("a.xml", "<named/>");
    EXPECT_EQ(Parse(InputSource(name.c_str())), Element("named"));
    EXPECT_EQ(Parse(name.c_str()), Element("named"));
    EXPECT_EQ(Parse(astring(name)), Element("named"));
}

// Stream, file, text, reader, name: each wins over those behind it.
TEST_F(XMLReaderInput, TheFirstOfSeveralIsTaken) {
    for (unsigned present = 1; present < 32; ++present) {
        support::DocumentStream stream("<stream/>");
        const File file(std::fopen(Make("file.xml", "<file/>").c_str(), "rb"));
        support::DocumentStream ofReader("<reader/>");
        Xml::XmlTextReader ready;
        ready.SetStream(ofReader.get(), false);

        InputSource source;
        if ((present & 8) != 0) source = InputSource(&ready);
        if ((present & 4) != 0) source.setCharacterStream("<text/>");
        if ((present & 2) != 0) source.setByteStream(file.get(), "");
        if ((present & 1) != 0) source.setByteStream(stream.get(), "");
        if ((present & 16) != 0) source.setSystemId(Make("a.xml", "<named/>"));

        const char* const kNames[] = {"stream", "file", "text", "reader", "named"};
        const char* expected = nullptr;
        for (unsigned i = 0; i < 5 && expected == nullptr; ++i) {
            if ((present & (1U << i)) != 0) expected = kNames[i];
        }
        SCOPED_TRACE(present);
        EXPECT_EQ(Parse(source), Element(expected));
        EXPECT_EQ(ready.ReadState() == Xml::XmlTextReader::Initial,
                  expected != std::string("reader"));
    }
}

TEST_F(XMLReaderInput, AnIdentifierBesideAStreamNamesNothingToOpen) {
    support::DocumentStream stream("<a/>");
    EXPECT_EQ(Parse(InputSource(stream.get(), Path("none.xml").c_str())), Element("a"));
}

TEST_F(XMLReaderInput, ItsEncodingIsNotAsked) {
    InputSource source;
    source.setCharacterStream("<a>\xC3\xA9</a>");
    source.setEncoding("ISO-8859-1");
    EXPECT_EQ(Parse(source), (Lines{"start a", R"(text "\u{E9}")", "end a"}));
}

TEST_F(XMLReaderInput, WithoutAnyTheErrorComesFirstAndThenTheEnds) {
    reader_.parse(InputSource());
    ASSERT_EQ(recorder_.lines().size(), 5U);
    EXPECT_EQ(recorder_.lines()[0], R"(fatal "No input source found." @0:0)");
    EXPECT_EQ(recorder_.lines()[1], "locator");
    EXPECT_EQ(recorder_.lines()[2], "document");
    EXPECT_TRUE(recorder_.lines()[3].starts_with(R"(fatal "Missing start element")"));
    EXPECT_EQ(recorder_.lines()[4], "end document");
}

TEST_F(XMLReaderInput, WithoutAnyAndWithoutAContentHandlerThereAreTheTwoErrors) {
    reader_.setContentHandler(nullptr);
    reader_.parse(InputSource());
    ASSERT_EQ(recorder_.lines().size(), 2U);
    EXPECT_EQ(recorder_.lines()[0], R"(fatal "No input source found." @0:0)");
    EXPECT_TRUE(recorder_.lines()[1].starts_with(R"(fatal "Missing start element")"));
}

// The error about no input has no identifiers, whatever the input source has.
TEST_F(XMLReaderInput, WithoutAnyTheErrorHasNoIdentifiers) {
    InputSource source;
    source.setPublicId("public");
    source.setEncoding("UTF-8");
    reader_.setErrorHandler(nullptr);
    try {
        reader_.parse(source);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const sax::SAXParseException& error) {
        EXPECT_EQ(error.getMessage(), "No input source found.");
        EXPECT_EQ(error.getPublicId(), "");
        EXPECT_EQ(error.getSystemId(), "");
        EXPECT_EQ(error.getLineNumber(), 0);
        EXPECT_EQ(error.getColumnNumber(), 0);
    }
    EXPECT_EQ(recorder_.lines(), Lines());
}

TEST_F(XMLReaderInput, WithoutAnyNormalizationIsNotTouched) {
    reader_.setFeature("http://espalier.example/sax/features/normalization", true);
    EXPECT_NO_THROW(reader_.parse(InputSource()));
    EXPECT_EQ(recorder_.lines().size(), 5U);
}

TEST_F(XMLReaderInput, WithoutAnyAndWithoutHandlersTheErrorIsThrown) {
    XMLReader bare;
    for (const char* const name : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(WhatIsThrown([&] { bare.parse(name); }),
                  "SAXParseException: No input source found. @0:0");
    }
    EXPECT_EQ(WhatIsThrown([&] { bare.parse(InputSource()); }),
              "SAXParseException: No input source found. @0:0");
}

TEST_F(XMLReaderInput, AFileThatIsNotThereIsSaidBeforeAnyEvent) {
    EXPECT_EQ(WhatIsThrown([&] { reader_.parse(Path("none.xml").c_str()); }),
              "Exception: File not found @-1:-1");
    EXPECT_EQ(recorder_.lines(), Lines());
    EXPECT_EQ(Parse(Make("a.xml", "<a/>").c_str()), Element("a"));
}

// While a named file is read others may read it, too, and not write; afterwards they may again,
// whatever ended the parse.
TEST_F(XMLReaderInput, ANamedFileIsLockedForTheParse) {
    const std::string name = Make("a.xml", "<a><b/></a>");
    const auto write = [&name] {
        return WhatIsThrown([&] {
            IO::FileStream(name.c_str(), IO::FileMode::Open, support::kWrite,
                           support::kDenyWriting);
        });
    };
    const auto read = [&name] {
        return WhatIsThrown([&] {
            IO::FileStream(name.c_str(), IO::FileMode::Open, support::kRead, support::kDenyWriting);
        });
    };
    for (const int throwAt : {0, 1, 2, 3, 5, 7}) {
        recorder_.throwAt = throwAt;
        int asked = 0;
        recorder_.onEvent = [&](const std::string&) {
            ++asked;
            EXPECT_EQ(write(), "Exception: Access denied/sharing violation @-1:-1");
            EXPECT_EQ(read(), "");
        };
        if (throwAt == 0) {
            reader_.parse(name.c_str());
        } else {
            EXPECT_THROW(reader_.parse(name.c_str()), support::RecorderError);
        }
        EXPECT_EQ(asked, throwAt == 0 ? 7 : throwAt - 1);
        EXPECT_EQ(write(), "");
        recorder_.TakeLines();
    }
}

}  // namespace
