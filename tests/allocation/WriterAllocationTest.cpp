// SPDX-License-Identifier: MIT
//
// Lets every single allocation that a writer makes fail, one run for each.
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstring>
#include <iterator>
#include <new>
#include <string>

namespace {

using Xml::WriteState;
using Xml::XmlTextWriter;

// Keeps what is written in memory that it has from the start.
class RoomyStream : public IO::Stream {
public:
    RoomyStream() { text_.reserve(1 << 16); }

    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override {
        text_.append(reinterpret_cast<const char*>(buffer) + offset,
                     static_cast<std::size_t>(count));
    }

    const std::string& Text() const { return text_; }
    void Clear() { text_.clear(); }

private:
    std::string text_;
};

// No string keeps it inside.
#define LONG(text) text " that is longer than what a string keeps inside"

using WriterCall = void (*)(XmlTextWriter& writer);

// The calls of a document, with which the writer asks for memory of every kind.
const WriterCall kCalls[] = {
    [](XmlTextWriter& w) { w.SetNewLineChars("\n                    "); },
    [](XmlTextWriter& w) { w.WriteStartDocument(true); },
    [](XmlTextWriter& w) { w.WriteDocType("a-root-with-a-long-name", "p", "s", "<!ENTITY e ''>"); },
    [](XmlTextWriter& w) { w.WriteComment(LONG("c")); },
    [](XmlTextWriter& w) { w.WriteStartElement("a-root-with-a-long-name", LONG("urn:default")); },
    [](XmlTextWriter& w) { w.WriteStartAttribute("xml", "lang", nullptr); },
    [](XmlTextWriter& w) { w.WriteString(LONG("lang")); },
    [](XmlTextWriter& w) { w.WriteRaw("&lt;"); },
    [](XmlTextWriter& w) { w.WriteStartAttribute("xmlns", "a-prefix-with-a-long-name", nullptr); },
    [](XmlTextWriter& w) { w.WriteString(LONG("urn:prefix")); },
    [](XmlTextWriter& w) { w.WriteAttributeString("a", LONG("urn:generated"), "<"); },
    [](XmlTextWriter& w) { w.WriteAttributeString("p", "a", LONG("urn:p"), "<"); },
    [](XmlTextWriter& w) { w.WriteAttributeString("xml", "space", nullptr, "preserve"); },
    [](XmlTextWriter& w) { w.WriteAttributeString("xmlns", LONG("urn:other-default")); },
    [](XmlTextWriter& w) { w.WriteStartElement("e", LONG("urn:generated")); },
    [](XmlTextWriter& w) { w.WriteStartElement("q", "f", LONG("urn:q")); },
    [](XmlTextWriter& w) { w.WriteAttributeString("xml", "lang", nullptr, LONG("de")); },
    [](XmlTextWriter& w) { w.WriteElementString("g", LONG("urn:g"), LONG("text")); },
    [](XmlTextWriter& w) { w.WriteStartElement("h", LONG("urn:h")); },
    [](XmlTextWriter& w) { w.WriteCData(LONG("section")); },
    [](XmlTextWriter& w) { w.WriteStartElement("r", "i", LONG("urn:i")); },
    [](XmlTextWriter& w) { w.WriteBase64(reinterpret_cast<const unsigned char*>("abc"), 0, 3); },
    [](XmlTextWriter& w) { w.WriteStartElement("s", "j", LONG("urn:j")); },
    [](XmlTextWriter& w) { w.WriteEntityRef("e"); },
    [](XmlTextWriter& w) { w.WriteStartElement("t", "k", LONG("urn:k")); },
    [](XmlTextWriter& w) { w.WriteProcessingInstruction("p", LONG("data")); },
    [](XmlTextWriter& w) { w.WriteStartElement("u", "l", LONG("urn:l")); },
    [](XmlTextWriter& w) { w.WriteEndElement(); },
    [](XmlTextWriter& w) { w.WriteFullEndElement(); },
    [](XmlTextWriter& w) { w.WriteEndDocument(); },
    [](XmlTextWriter& w) { w.WriteStartElement("a"); },
    [](XmlTextWriter& w) { w.WriteString("a text"); },
    [](XmlTextWriter& w) { w.Close(); },
};

// Tells whether a call goes through; if not, there was no memory for it.
template <typename Call>
bool Succeeds(const Call& call) {
    try {
        call();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "Out of memory");
        return false;
    }
}

// Makes the calls from `next` on. Returns whether all went through; otherwise `next` is the one
// that did not, and `before` the state before it.
bool MakeCalls(XmlTextWriter& writer, std::size_t& next, WriteState& before) {
    for (; next < std::size(kCalls); ++next) {
        before = writer.GetWriteState();
        if (!Succeeds([&] { kCalls[next](writer); })) return false;
    }
    return true;
}

std::string WholeOutput() {
    RoomyStream stream;
    Xml::UTF8Encoding encoding(true, false);
    XmlTextWriter writer(&stream, &encoding);
    std::size_t next = 0;
    WriteState before;
    EXPECT_TRUE(MakeCalls(writer, next, before));
    return stream.Text();
}

// A call for which there is no memory is as if it had not been made, and may be made again, or the
// writer is closed. What had been written before is not lost.
TEST(WriterAllocation, EveryAllocationMayFailAndNothingLeaks) {
    const std::string whole = WholeOutput();
    EXPECT_EQ(whole.size(), WholeOutput().size());
    RoomyStream stream;
    Xml::UTF8Encoding encoding(true, false);
    long goneOn = 0;
    long closed = 0;
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        stream.Clear();
        WriteState before;
        WriteState after;
        bool isComplete = false;
        const bool isMade = Succeeds([&] {
            XmlTextWriter writer(&stream, &encoding);
            std::size_t next = 0;
            isComplete = MakeCalls(writer, next, before);
            after = writer.GetWriteState();
            if (!isComplete && after != WriteState::Closed)
                isComplete = MakeCalls(writer, next, before);
        });
        FailingAllocation::Exempt([&] {
            SCOPED_TRACE(stream.Text());
            EXPECT_EQ(failure.LiveCount(), 0);
            if (!isMade) return;
            if (isComplete) {
                EXPECT_EQ(stream.Text(), whole);
                ++goneOn;
            } else {
                EXPECT_EQ(static_cast<int>(after), static_cast<int>(WriteState::Closed));
                EXPECT_EQ(stream.Text(), whole.substr(0, stream.Text().size()));
                ++closed;
            }
        });
    });
    EXPECT_GT(failures, 40);
    EXPECT_GT(closed, 0);
    EXPECT_GT(goneOn, 1);
}

// What a failed call leaves can be ended, whatever it was.
TEST(WriterAllocation, AWriterIsClosedAfterAFailure) {
    bool isDone = false;
    for (long number = 1; !isDone; ++number) {
        SCOPED_TRACE(number);
        RoomyStream stream;
        Xml::UTF8Encoding encoding;
        XmlTextWriter writer(&stream, &encoding);
        std::size_t next = 0;
        WriteState before;
        {
            const FailingAllocation failure(number);
            MakeCalls(writer, next, before);
            isDone = !failure.HasFailed();
        }
        const WriteState after = writer.GetWriteState();
        if (after == WriteState::Closed) {
            EXPECT_THROW(writer.WriteComment("c"), Xml::Exception);
            EXPECT_THROW(writer.Close(), Xml::Exception);
            continue;
        }
        EXPECT_EQ(static_cast<int>(after), static_cast<int>(before));
        EXPECT_NO_THROW(writer.Close());
        EXPECT_EQ(static_cast<int>(writer.GetWriteState()), static_cast<int>(WriteState::Closed));
    }
}

TEST(WriterAllocation, ASecondDocumentOfAKindNeedsNoMemory) {
    RoomyStream stream;
    Xml::UTF8Encoding encoding;
    XmlTextWriter writer(&stream, &encoding);
    std::string first;
    for (int round = 0; round < 2; ++round) {
        stream.Clear();
        const FailingAllocation failure(round == 0 ? 0 : 1);
        for (std::size_t i = 0; i + 4 < std::size(kCalls); ++i)  // up to the end of the document
            kCalls[i](writer);
        writer.WriteEndDocument();
        writer.Flush();
        EXPECT_FALSE(failure.HasFailed());
        if (round == 0) first = stream.Text();
    }
    EXPECT_EQ(stream.Text(), first);
}

TEST(WriterAllocation, AssignmentWithoutMemoryChangesNothing) {
    XmlTextWriter source;
    source.SetIndentChar('\t');
    source.SetNewLineChars("\n                              ");
    XmlTextWriter target;
    {
        const FailingAllocation failure(1);
        EXPECT_THROW(target = source, std::bad_alloc);
        EXPECT_TRUE(failure.HasFailed());
    }
    EXPECT_EQ(target.GetIndentChar(), ' ');
    EXPECT_EQ(target.GetNewLineChars(), "\r\n");
}

// A copy asks for memory of the reader, too.
TEST(WriterAllocation, ACopyOfADocument) {
    const std::string document =
        "<!DOCTYPE root-element SYSTEM 's' [<!ENTITY e 'x'>]><root-element xmlns='" LONG("urn:d") "'"
        " xmlns:p='" LONG("urn:p") "' xml:lang='en-GB-oed-with-more-of-it' p:a='1&e;2'><p:b>text"
        "<![CDATA[s]]></p:b>&e;<!--c--><?p d?><c xmlns='' xml:space='preserve'> </c></root-element>";
    RoomyStream stream;
    Xml::UTF8Encoding encoding;
    std::string whole;
    const auto copy = [&] {
        IO::MemoryStream source(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        Xml::XmlTextReader reader;
        reader.SetStream(&source, false);
        XmlTextWriter writer(&stream, &encoding);
        writer.WriteNode(&reader, true);
        writer.Close();
    };
    copy();
    whole = stream.Text();
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        stream.Clear();
        const bool isComplete = Succeeds(copy);
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            EXPECT_EQ(stream.Text(), isComplete ? whole : "");
        });
    });
    EXPECT_GT(failures, 40);
}

#undef LONG

}  // namespace
