// SPDX-License-Identifier: MIT
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/ExpectThrow.h"
#include "support/NodeDump.h"
#include "support/RecordingStream.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using support::RecordingStream;
using support::ThrowsXmlException;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlSpace;
using Xml::XmlTextReader;

// Expects the message, the argument and the place (-1, -1) of a call in the wrong state.
#define EXPECT_MISUSE(call, message, argument) \
    EXPECT_TRUE(ThrowsXmlException([&] { call; }, #call, message, argument, -1, -1))

void ExpectNoNode(const XmlTextReader& reader) {
    EXPECT_EQ(reader.NodeType(), XmlNodeType::None);
    EXPECT_EQ(reader.Name(), "");
    EXPECT_EQ(reader.LocalName(), "");
    EXPECT_EQ(reader.Prefix(), "");
    EXPECT_EQ(reader.NamespaceURI(), "");
    EXPECT_EQ(reader.Value(), "");
    EXPECT_FALSE(reader.HasValue());
    EXPECT_EQ(reader.Depth(), 0);
    EXPECT_FALSE(reader.IsEmptyElement());
    EXPECT_EQ(reader.QuoteChar(), '"');
    EXPECT_EQ(reader.XmlLang(), "");
    EXPECT_EQ(reader.GetXmlSpace(), XmlSpace::SpaceNone);
    EXPECT_EQ(reader.AttributeCount(), 0);
    EXPECT_FALSE(reader.HasAttributes());
    EXPECT_EQ(reader.GetAttribute(0), "");
    EXPECT_EQ(reader.GetAttribute("x"), "");
    EXPECT_EQ(reader.GetAttribute("x", "urn:x"), "");
}

TEST(XmlTextReaderState, ANewReaderIsClosedAndHasTheDefaults) {
    XmlTextReader reader;
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
    EXPECT_FALSE(reader.Eof());
    EXPECT_TRUE(reader.Namespaces());
    EXPECT_FALSE(reader.Normalization());
    EXPECT_EQ(reader.WhitespaceHandling(), XmlTextReader::WsAll);
    EXPECT_EQ(reader.EntityHandling(), XmlEntityHandling::ExpandCharEntities);
    EXPECT_EQ(reader.Encoding(), "");
    ExpectNoNode(reader);
    EXPECT_FALSE(reader.MoveToFirstAttribute());
    EXPECT_FALSE(reader.MoveToNextAttribute());
    EXPECT_FALSE(reader.MoveToElement());
}

TEST(XmlTextReaderState, TheNumbersOfTheStates) {
    EXPECT_EQ(XmlTextReader::Closed, 0);
    EXPECT_EQ(XmlTextReader::EndOfFile, 1);
    EXPECT_EQ(XmlTextReader::Error, 2);
    EXPECT_EQ(XmlTextReader::Initial, 3);
    EXPECT_EQ(XmlTextReader::Interactive, 4);
    EXPECT_EQ(XmlTextReader::WsNone, 0);
    EXPECT_EQ(XmlTextReader::WsSignificant, 1);
    EXPECT_EQ(XmlTextReader::WsAll, 2);
}

TEST(XmlTextReaderState, ReadWithoutInputThrowsAndLeavesAnError) {
    XmlTextReader reader;
    EXPECT_TRUE(
        ThrowsXmlException([&] { reader.Read(); }, "Read", "No source stream to parse", "", 0, 0));
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
}

TEST(XmlTextReaderState, AReaderGoesFromInitialOverInteractiveToTheEnd) {
    DocumentReader reader("<a>x</a>");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Initial);
    ExpectNoNode(*reader);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(reader->Read());
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
        EXPECT_FALSE(reader->Eof());
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(reader->Read());
        EXPECT_EQ(reader->ReadState(), XmlTextReader::EndOfFile);
        EXPECT_TRUE(reader->Eof());
    }
    EXPECT_EQ(reader->NodeType(), XmlNodeType::None);
    EXPECT_EQ(reader->Depth(), 0);
}

TEST(XmlTextReaderState, TheEncodingIsKnownFromTheFirstReadOn) {
    DocumentReader reader("<a/>");
    EXPECT_EQ(reader->Encoding(), "");
    EXPECT_EQ(reader->LineNumber(), 0);
    EXPECT_EQ(reader->LinePosition(), 0);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Encoding(), "UTF-8");
    reader.ReadAll();
    EXPECT_EQ(reader->Encoding(), "UTF-8");
    EXPECT_EQ(reader->LineNumber(), 0);
}

TEST(XmlTextReaderState, AfterAnErrorReadReturnsFalse) {
    DocumentReader reader("<a></b>");
    EXPECT_TRUE(reader->Read());
    EXPECT_THROW_TEXT(reader->Read(), "End tag 'b' doesn't match start tag 'a'", 1, 7);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Error);
        EXPECT_FALSE(reader->Read());
    }
    EXPECT_FALSE(reader->Eof());
}

TEST(XmlTextReaderState, OpenReadsAFile) {
    const support::TemporaryDirectory directory;
    const std::string name = directory.Make("a.xml", "<a><b/></a>");
    XmlTextReader reader;
    EXPECT_TRUE(reader.Open(name));
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Initial);
    EXPECT_EQ(support::DumpNodes(reader),
              "Element a depth=1 @1:1\n"
              "Element b depth=2 empty @1:4\n"
              "EndElement a depth=1 @1:8\n");
}

TEST(XmlTextReaderState, OpenOfAMissingFileClosesTheReader) {
    const support::TemporaryDirectory directory;
    DocumentReader reader("<a/>");
    reader.ReadNodes(1);
    try {
        reader->Open(directory.Path("none.xml"));
        FAIL();
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "File not found");
    }
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Closed);
    ExpectNoNode(*reader);
}

TEST(XmlTextReaderState, SetStreamRefusesANullPointer) {
    XmlTextReader reader;
    EXPECT_FALSE(reader.SetStream(nullptr, true));
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);

    DocumentReader other("<a/>");
    other.ReadNodes(1);
    EXPECT_FALSE(other->SetStream(nullptr, false));
    EXPECT_EQ(other->ReadState(), XmlTextReader::Closed);
}

TEST(XmlTextReaderState, SetStreamReadsNothingYet) {
    RecordingStream stream("<a/>");
    XmlTextReader reader;
    EXPECT_TRUE(reader.SetStream(&stream, false));
    EXPECT_EQ(stream.TakeCalls(), std::vector<std::string>());
    EXPECT_TRUE(reader.Read());
    ASSERT_FALSE(stream.calls.empty());
    EXPECT_EQ(stream.calls.front(), "Read 1024");
}

TEST(XmlTextReaderState, NoRequestIsLargerThan1024Bytes) {
    RecordingStream stream("<a x='" + std::string(5000, 'v') + "'>" + std::string(5000, 't') +
                           "</a>");
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    while (reader.Read())
        continue;
    for (const std::string& call : stream.TakeCalls()) {
        ASSERT_EQ(call.substr(0, 5), "Read ");
        EXPECT_GT(std::stoi(call.substr(5)), 0);
        EXPECT_LE(std::stoi(call.substr(5)), 1024);
    }
}

TEST(XmlTextReaderState, AnOwnedStreamIsClosedAndDeleted) {
    const auto owned = [](bool* destroyed) {
        auto* stream = new RecordingStream("<a/>");
        stream->destroyed = destroyed;
        return stream;
    };
    bool byClose = false;
    bool bySetStream = false;
    bool byDestructor = false;
    {
        XmlTextReader reader;
        reader.SetStream(owned(&byClose), true);
        reader.Read();
        reader.Close();
        EXPECT_TRUE(byClose);
        reader.SetStream(owned(&bySetStream), true);
        reader.SetStream(owned(&byDestructor), true);
        EXPECT_TRUE(bySetStream);
        EXPECT_FALSE(byDestructor);
    }
    EXPECT_TRUE(byDestructor);
}

TEST(XmlTextReaderState, ABorrowedStreamIsLeftAlone) {
    bool destroyed = false;
    RecordingStream stream("<a/>");
    stream.destroyed = &destroyed;
    {
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.Read();
        stream.TakeCalls();
        reader.Close();
    }
    EXPECT_EQ(stream.TakeCalls(), std::vector<std::string>());
    EXPECT_FALSE(destroyed);
}

TEST(XmlTextReaderState, CloseForgetsTheDocument) {
    for (int nodes = 0; nodes <= 6; ++nodes) {
        SCOPED_TRACE(nodes);
        DocumentReader reader("<a xml:lang='en' xml:space='preserve'><b x='1'/>t&e;</a>");
        for (int i = 0; i < nodes; ++i)
            reader->Read();
        reader->MoveToFirstAttribute();
        reader->Close();
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Closed);
        EXPECT_EQ(reader->Encoding(), "");
        ExpectNoNode(*reader);
        reader->Close();
        EXPECT_EQ(reader->ReadState(), XmlTextReader::Closed);
        EXPECT_THROW_TEXT(reader->Read(), "No source stream to parse", 0, 0);
    }
}

TEST(XmlTextReaderState, AReaderReadsOneDocumentAfterAnother) {
    // Each leaves something behind in another way: at its end, in the middle, in an error.
    const std::string documents[] = {
        "<a xmlns='urn:1' xmlns:p='urn:2'><p:b/></a>",
        "<a></b>",
        "<a xmlns='urn:1'><b xml:lang='en' xml:space='preserve'>",
        "<!DOCTYPE a><a/>",
        "<a>&#0;</a>",
        "<?xml version='1.0'?><a x='1' y='2'/>",
    };
    XmlTextReader reader;
    for (const std::string& first : documents) {
        for (const std::string& second : documents) {
            SCOPED_TRACE(first + " then " + second);
            support::DocumentStream firstStream(first);
            reader.SetStream(firstStream.get(), false);
            support::DumpNodes(reader);
            support::DocumentStream secondStream(second);
            reader.SetStream(secondStream.get(), false);
            EXPECT_EQ(support::DumpNodes(reader), support::DumpDocument(second));
        }
    }
}

TEST(XmlTextReaderState, ReadersDoNotDisturbEachOther) {
    DocumentReader one("<a><b>1</b></a>");
    DocumentReader two("<c x='2'/>");
    one.ReadNodes(2);
    two.ReadNodes(1);
    EXPECT_EQ(one->Name(), "b");
    EXPECT_EQ(two->Name(), "c");
    two->MoveToFirstAttribute();
    one.ReadNodes(1);
    EXPECT_EQ(one->Value(), "1");
    EXPECT_EQ(two->Value(), "2");
}

TEST(XmlTextReaderState, SettingsSurviveCloseAndOpen) {
    DocumentReader reader("<p:a x='&#10;'/>", {.namespaces = false,
                                               .normalization = true,
                                               .whitespace = XmlTextReader::WsNone,
                                               .entities = XmlEntityHandling::ExpandNothing});
    reader->Close();
    support::DocumentStream stream("<p:a> </p:a>");
    reader->SetStream(stream.get(), false);
    EXPECT_FALSE(reader->Namespaces());
    EXPECT_TRUE(reader->Normalization());
    EXPECT_EQ(reader->WhitespaceHandling(), XmlTextReader::WsNone);
    EXPECT_EQ(reader->EntityHandling(), XmlEntityHandling::ExpandNothing);
    EXPECT_EQ(support::DumpNodes(*reader),
              "Element p:a depth=1 @1:1\nEndElement p:a depth=1 @1:7\n");
}

// What may be set in which state.

TEST(XmlTextReaderState, NamespacesMayBeSetBeforeReadingOnly) {
    XmlTextReader closed;
    closed.SetNamespaces(false);
    EXPECT_FALSE(closed.Namespaces());
    closed.SetNamespaces(true);
    EXPECT_TRUE(closed.Namespaces());

    DocumentReader reader("<a/>");
    reader->SetNamespaces(false);
    reader->SetNamespaces(true);
    reader->Read();
    EXPECT_MISUSE(reader->SetNamespaces(false), "Invalid Operation", "SetNamespaces");
    EXPECT_TRUE(reader->Namespaces());
    reader->Read();
    ASSERT_TRUE(reader->Eof());
    EXPECT_MISUSE(reader->SetNamespaces(true), "Invalid Operation", "SetNamespaces");
    reader->Close();
    reader->SetNamespaces(false);
    EXPECT_FALSE(reader->Namespaces());
}

TEST(XmlTextReaderState, NamespacesMayNotBeSetAfterAnError) {
    DocumentReader reader("x");
    EXPECT_THROW(reader->Read(), Xml::Exception);
    EXPECT_MISUSE(reader->SetNamespaces(false), "Invalid Operation", "SetNamespaces");
}

TEST(XmlTextReaderState, MisuseChangesNothing) {
    DocumentReader reader("<a><b/></a>");
    reader.ReadNodes(1);
    EXPECT_MISUSE(reader->SetNamespaces(false), "Invalid Operation", "SetNamespaces");
    EXPECT_EQ(reader->ReadState(), XmlTextReader::Interactive);
    EXPECT_EQ(reader->Name(), "a");
    EXPECT_TRUE(reader->Read());
    EXPECT_EQ(reader->Name(), "b");
}

// Deliberate: the two spellings "Invalid Operation" and "Invalid operation", and the states.
TEST(XmlTextReaderState, NormalizationAndWhitespaceMayBeSetUnlessClosed) {
    XmlTextReader closed;
    EXPECT_MISUSE(closed.SetNormalization(true), "Invalid operation", "SetNormalization");
    EXPECT_MISUSE(closed.SetWhitespaceHandling(XmlTextReader::WsNone), "Invalid operation",
                  "SetWhitespaceHandling");
    EXPECT_FALSE(closed.Normalization());
    EXPECT_EQ(closed.WhitespaceHandling(), XmlTextReader::WsAll);

    const auto setBoth = [](XmlTextReader& reader) {
        reader.SetNormalization(!reader.Normalization());
        reader.SetWhitespaceHandling(XmlTextReader::WsSignificant);
        reader.SetWhitespaceHandling(XmlTextReader::WsAll);
    };
    DocumentReader reader("<a/>");
    setBoth(*reader);
    reader->Read();
    setBoth(*reader);
    reader->Read();
    ASSERT_TRUE(reader->Eof());
    setBoth(*reader);
    EXPECT_TRUE(reader->Normalization());

    DocumentReader broken("x");
    EXPECT_THROW(broken->Read(), Xml::Exception);
    setBoth(*broken);
    EXPECT_TRUE(broken->Normalization());
    broken->Close();
    EXPECT_MISUSE(broken->SetNormalization(false), "Invalid operation", "SetNormalization");
}

TEST(XmlTextReaderState, EntityHandlingMayBeSetAtAnyTime) {
    XmlTextReader closed;
    closed.SetEntityHandling(XmlEntityHandling::ExpandNothing);
    EXPECT_EQ(closed.EntityHandling(), XmlEntityHandling::ExpandNothing);

    DocumentReader reader("<a>&#65;<b/>&#66;</a>");
    reader->SetEntityHandling(XmlEntityHandling::ExpandNothing);
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Value(), "&#65;");
    reader->SetEntityHandling(XmlEntityHandling::ExpandCharEntities);
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Value(), "B");
    reader.ReadAll();
    reader->SetEntityHandling(XmlEntityHandling::ExpandEntities);
    EXPECT_EQ(reader->EntityHandling(), XmlEntityHandling::ExpandEntities);
}

TEST(XmlTextReaderState, WhitespaceHandlingHoldsFromTheNextNodeOn) {
    DocumentReader reader("<a> <b/> <c/> </a>");
    reader.ReadNodes(2);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Whitespace);
    reader->SetWhitespaceHandling(XmlTextReader::WsNone);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Whitespace);
    reader.ReadNodes(2);
    EXPECT_EQ(reader->Name(), "c");
    reader->SetWhitespaceHandling(XmlTextReader::WsAll);
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Whitespace);
}

// Streams that behave oddly.

// Answers the first Read() with what its stream has, and then with one number for ever.
class OddStream : public IO::StringStream {
public:
    OddStream(const char* text, int answer) : IO::StringStream(text, false), answer_(answer) {}
    int Read(unsigned char* buffer, int offset, int count) override {
        const int got = IO::StringStream::Read(buffer, offset, count);
        return got > 0 ? got : answer_;
    }

private:
    int answer_;
};

TEST(XmlTextReaderState, ANegativeAnswerOfTheStreamIsTheEnd) {
    for (const int answer : {-1, -1000}) {
        OddStream stream("<a>x</a>", answer);
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        EXPECT_EQ(support::DumpNodes(reader), support::DumpDocument("<a>x</a>"));
    }
}

// Says that it delivered more than it was asked for.
class BoastfulStream : public IO::StringStream {
public:
    BoastfulStream(const astring& text) : IO::StringStream(text, false) {}
    int Read(unsigned char* buffer, int offset, int count) override {
        const int got = IO::StringStream::Read(buffer, offset, count);
        return got == count ? got + 100 : got;
    }
};

TEST(XmlTextReaderState, MoreBytesThanAskedForAreNotBelieved) {
    const std::string document = "<a>" + std::string(10000, 'x') + "</a>";
    BoastfulStream stream{astring(document)};
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    EXPECT_EQ(support::DumpNodes(reader), support::DumpDocument(document));
}

}  // namespace
