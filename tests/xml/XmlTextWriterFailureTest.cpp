// SPDX-License-Identifier: MIT
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"
#include "support/FailingStream.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// A stream that throws at every n-th call.

namespace {

using support::FailingStream;
using support::Failure;
using support::NameOf;
using support::RecordingStream;
using support::WriterCalls;
using Xml::WriteState;
using Xml::XmlTextWriter;

// The calls of a document one by one, some of which fill the buffer.
const WriterCalls kScript[] = {
    [](XmlTextWriter& w) { w.WriteStartDocument(true); },
    [](XmlTextWriter& w) { w.WriteDocType("r", "", "s", std::string(700, 'i')); },
    [](XmlTextWriter& w) { w.WriteComment(std::string(1500, 'c')); },
    [](XmlTextWriter& w) { w.WriteProcessingInstruction("p", std::string(1200, 'd')); },
    [](XmlTextWriter& w) { w.WriteStartElement("a", "r", "urn:" + std::string(1100, 'u')); },
    [](XmlTextWriter& w) { w.WriteStartAttribute("x"); },
    [](XmlTextWriter& w) { w.WriteString(std::string(1300, 'v')); },
    [](XmlTextWriter& w) { w.WriteEndAttribute(); },
    [](XmlTextWriter& w) { w.WriteAttributeString("y", std::string(1100, '<')); },
    [](XmlTextWriter& w) { w.Flush(); },
    [](XmlTextWriter& w) { w.WriteString(std::string(2000, 't')); },
    [](XmlTextWriter& w) { w.WriteElementString("e", std::string(1100, '&')); },
    [](XmlTextWriter& w) { w.WriteStartElement(std::string(1100, 'e')); },
    [](XmlTextWriter& w) { w.WriteCData(std::string(1100, 'd')); },
    [](XmlTextWriter& w) { w.WriteWhitespace(std::string(1100, '\n')); },
    [](XmlTextWriter& w) { w.WriteEntityRef(std::string(1100, 'n')); },
    [](XmlTextWriter& w) { w.WriteName(std::string(1100, 'n')); },
    [](XmlTextWriter& w) { w.WriteNmToken(std::string(1100, '1')); },
    [](XmlTextWriter& w) { w.WriteRaw(std::string(1100, 'w')); },
    [](XmlTextWriter& w) { w.WriteEndElement(); },
    [](XmlTextWriter& w) { w.WriteEndDocument(); },
    [](XmlTextWriter& w) { w.WriteStartElement("second"); },
    [](XmlTextWriter& w) { w.Close(); },
};

std::string ContentOf(const IO::MemoryStream& stream) {
    return {reinterpret_cast<const char*>(stream.GetBuffer()),
            static_cast<std::size_t>(stream.Length())};
}

// Makes the calls up to one that throws; returns the state before that.
WriteState RunScript(XmlTextWriter& writer) {
    WriteState before = writer.GetWriteState();
    for (const WriterCalls call : kScript) {
        before = writer.GetWriteState();
        call(writer);
    }
    return before;
}

// What an ended script gives: all that a stream without failures holds.
std::string WholeOutput(Xml::Encoding& encoding) {
    IO::MemoryStream stream;
    XmlTextWriter writer(&stream, &encoding);
    RunScript(writer);
    return ContentOf(stream);
}

// After a failure the writer is as before the call, or refuses everything.
void ExpectUsableOrClosed(XmlTextWriter& writer, const WriteState before) {
    if (writer.GetWriteState() == WriteState::Closed) {
        EXPECT_THROW_TEXT(writer.WriteComment("c"), "Invalid Operation: Writer closed", -1, -1);
        EXPECT_THROW_TEXT(writer.Flush(), "Invalid Operation: Writer already closed", -1, -1);
        EXPECT_THROW_TEXT(writer.Close(), "Invalid Operation: Writer already closed", -1, -1);
    } else {
        EXPECT_STREQ(NameOf(writer.GetWriteState()), NameOf(before));
        EXPECT_NO_THROW(writer.Close());
        EXPECT_STREQ(NameOf(writer.GetWriteState()), "Closed");
    }
}

TEST(XmlTextWriterFailure, AtEveryCallToTheStream) {
    Xml::UTF8Encoding utf8(true, false);
    Xml::UnicodeEncoding utf16(false, true, false);
    for (Xml::Encoding* encoding :
         {static_cast<Xml::Encoding*>(&utf8), static_cast<Xml::Encoding*>(&utf16)}) {
        const std::string whole = WholeOutput(*encoding);
        int failures = 0;
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            IO::MemoryStream inner;
            FailingStream stream(inner, n, Failure::Throw);
            XmlTextWriter writer(&stream, encoding);
            writer.SetCloseOutput(true);
            WriteState before;
            bool threw = false;
            for (const WriterCalls call : kScript) {
                before = writer.GetWriteState();
                try {
                    call(writer);
                } catch (const Xml::Exception& error) {
                    EXPECT_STREQ(error.What(), FailingStream::kMessage);
                    threw = true;
                    break;
                }
            }
            EXPECT_EQ(threw, stream.HasFailed());
            if (!threw) {
                EXPECT_EQ(ContentOf(inner), whole);
                break;
            }
            ++failures;
            // What was handed on before stays as it was.
            const std::string written = ContentOf(inner);
            EXPECT_LE(written.size(), whole.size());
            EXPECT_EQ(written, whole.substr(0, written.size()));
            ExpectUsableOrClosed(writer, before);
        }
        EXPECT_GT(failures, 20);
    }
}

// A stream of an application may throw anything.
class ForeignStream : public RecordingStream {
public:
    explicit ForeignStream(int failingWrite) : failingWrite_(failingWrite) {}

    void Write(const unsigned char* buffer, int offset, int count) override {
        if (++writes_ == failingWrite_) throw std::runtime_error("a disk is full");
        RecordingStream::Write(buffer, offset, count);
    }

    bool HasFailed() const { return writes_ >= failingWrite_; }

private:
    int failingWrite_;  // the number of the Write() that fails, from 1 on
    int writes_ = 0;
};

TEST(XmlTextWriterFailure, OtherExceptionsPassThrough) {
    Xml::UTF8Encoding encoding;
    const std::string whole = WholeOutput(encoding);
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        ForeignStream stream(n);
        XmlTextWriter writer(&stream, &encoding);
        try {
            RunScript(writer);
            EXPECT_FALSE(stream.HasFailed());
            EXPECT_EQ(stream.Content(), whole);
            EXPECT_GT(n, 20);
            break;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "a disk is full");
        }
        EXPECT_EQ(stream.Content(), whole.substr(0, stream.Content().size()));
    }
}

// An encoding of an application may throw, too.
class FailingEncoding : public Xml::UTF8Encoding {
public:
    explicit FailingEncoding(int failingCall) : UTF8Encoding(false, false), left_(failingCall) {}

    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override {
        if (--left_ == 0) throw std::runtime_error("no such character");
        return UTF8Encoding::GetBytes(text, length, destination, capacity);
    }

private:
    mutable int left_;  // calls up to the one that fails
};

TEST(XmlTextWriterFailure, AtEveryCallToTheEncoding) {
    int failures = 0;
    for (bool isDone = false; !isDone; ++failures) {
        SCOPED_TRACE(failures);
        IO::MemoryStream stream;
        FailingEncoding encoding(failures + 1);
        XmlTextWriter writer(&stream, &encoding);
        WriteState before = WriteState::Start;
        isDone = true;
        for (const WriterCalls call : kScript) {
            before = writer.GetWriteState();
            try {
                call(writer);
            } catch (const std::runtime_error&) {
                ExpectUsableOrClosed(writer, before);
                isDone = false;
                break;
            }
        }
    }
    EXPECT_GT(failures, 100);
}

TEST(XmlTextWriterFailure, AWriterIsDestroyedAfterAFailure) {
    Xml::UTF8Encoding encoding;
    for (int n = 1; n < 5; ++n) {
        IO::MemoryStream inner;
        FailingStream stream(inner, n, Failure::Throw);
        int calls = 0;
        {
            XmlTextWriter writer(&stream, &encoding);
            EXPECT_THROW(RunScript(writer), Xml::Exception);
            calls = stream.Calls();
        }
        EXPECT_EQ(stream.Calls(), calls);
    }
}

TEST(XmlTextWriterFailure, AFailingFlushOrCloseIsToldOfTheStream) {
    Xml::UTF8Encoding encoding;
    // The calls that reach the stream are 1: Write, 2: Flush, 3: Close.
    for (int n = 1; n <= 3; ++n) {
        SCOPED_TRACE(n);
        IO::MemoryStream inner;
        FailingStream stream(inner, n, Failure::Throw);
        XmlTextWriter writer(&stream, &encoding);
        writer.SetCloseOutput(true);
        writer.WriteStartElement("r");
        EXPECT_THROW_TEXT(writer.Close(), "FailingStream: The call fails", -1, -1);
        EXPECT_EQ(ContentOf(inner), n == 1 ? "" : "<r/>");
        ExpectUsableOrClosed(writer, WriteState::Element);
    }
}

// A closed stream below is told at the next Write(), and what came before it is not lost.
TEST(XmlTextWriterFailure, AClosedStreamIsTold) {
    support::DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteRaw("-");
    writer->Flush();
    writer.Stream().Close();
    writer->WriteString("t");
    EXPECT_THROW_TEXT(writer->Flush(), "MemoryStream::Write: Stream is closed", -1, -1);
    EXPECT_EQ(writer.Stream().Content(), "<r>-");
}

}  // namespace
