// SPDX-License-Identifier: MIT
//
// Streams that fail: what they throw reaches the caller, and the reader can be closed, destroyed
// and used again. Memory that fails is in allocation/ReaderAllocationTest.cpp.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/FailingStream.h"
#include "support/NodeDump.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>

namespace {

using support::DumpDocument;
using support::FailingStream;
using support::Failure;
using Xml::XmlTextReader;

// One of everything, over several buffers.
std::string LongDocument() {
    std::string document =
        "<?xml version='1.0'?><!DOCTYPE r SYSTEM 's' [<!ELEMENT r ANY><!-- ]> -->\n"
        "<!NOTATION n PUBLIC 'p'><!ENTITY u SYSTEM 's' NDATA n><!ENTITY % q 'v'>%q;\n"
        "<!ENTITY e 'a text'><!ENTITY m '<c x=\"&e;\">&e;</c>'>]>\n<r xmlns:p='urn:p'>\n";
    for (int i = 0; i < 30; ++i) {
        document +=
            "<p:a x='1' p:y=\"&lt;&#65;\n2\">text &amp; \xC3\xA9 &e;&m;<!-- c --><?pi d?>"
            "<![CDATA[s]]></p:a>\r\n<b/>\n";
    }
    return document + "</r>\n";
}

void ExpectReadsAfterwards(XmlTextReader& reader) {
    const std::string document = "<p:c xmlns:p='u'>x</p:c>";
    support::DocumentStream stream(document);
    ASSERT_TRUE(reader.SetStream(stream.get(), false));
    EXPECT_EQ(support::DumpNodes(reader), DumpDocument(document));
    reader.Close();
}

TEST(XmlTextReaderFailure, WhatAStreamThrowsReachesTheCallerFromEveryCall) {
    const std::string document = LongDocument();
    for (const int bytesPerRead : {1024, 100, 7}) {
        int failures = 0;
        for (int call = 1;; ++call) {
            SCOPED_TRACE(std::to_string(call) +
                         ", bytes per read: " + std::to_string(bytesPerRead));
            support::DocumentStream inner(document, bytesPerRead);
            FailingStream stream(*inner.get(), call, Failure::Throw);
            XmlTextReader reader;
            reader.SetStream(&stream, false);
            reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
            try {
                while (reader.Read())
                    continue;
                EXPECT_FALSE(stream.HasFailed());
                EXPECT_TRUE(reader.Eof());
                break;
            } catch (const Xml::Exception& error) {
                EXPECT_STREQ(error.What(), FailingStream::kMessage);
                EXPECT_EQ(error.LineNumber(), -1);
                EXPECT_EQ(error.LinePos(), -1);
            }
            ++failures;
            EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
            EXPECT_FALSE(reader.Read());
            EXPECT_EQ(stream.Calls(), call) << "nothing is read after a failure";
            ExpectReadsAfterwards(reader);
        }
        EXPECT_GE(failures, 4);
    }
}

TEST(XmlTextReaderFailure, AStreamMayEndEarlyAtEveryCall) {
    const std::string document = LongDocument();
    for (const int bytesPerRead : {1024, 100, 7}) {
        for (int call = 1;; ++call) {
            SCOPED_TRACE(std::to_string(call) +
                         ", bytes per read: " + std::to_string(bytesPerRead));
            support::DocumentStream inner(document, bytesPerRead);
            FailingStream stream(*inner.get(), call, Failure::EndEarly);
            XmlTextReader reader;
            reader.SetStream(&stream, false);
            const std::string nodes = support::DumpNodes(reader);
            if (!stream.HasFailed()) break;
            // A stream that ends early is as good as a shorter document.
            const auto length = static_cast<std::size_t>(inner.get()->Position());
            EXPECT_EQ(nodes, DumpDocument(std::string_view(document).substr(0, length)));
            ExpectReadsAfterwards(reader);
        }
    }
}

// Throws what `raise` throws, at the second request.
template <typename Raise>
class ThrowingStream : public IO::StringStream {
public:
    explicit ThrowingStream(Raise raise) : IO::StringStream("<a>", false), raise_(raise) {}
    int Read(unsigned char* buffer, int offset, int count) override {
        const int got = IO::StringStream::Read(buffer, offset, count);
        if (got == 0) raise_();
        return got;
    }

private:
    Raise raise_;
};

template <typename Expected, typename Raise>
void ExpectPassesThrough(Raise raise) {
    ThrowingStream<Raise> stream(raise);
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    EXPECT_THROW(while (reader.Read()) continue, Expected);
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
    EXPECT_FALSE(reader.Read());
    ExpectReadsAfterwards(reader);
}

TEST(XmlTextReaderFailure, ExceptionsOfAnyTypePassThrough) {
    ExpectPassesThrough<std::runtime_error>([] { throw std::runtime_error("no data"); });
    ExpectPassesThrough<std::bad_alloc>([] { throw std::bad_alloc(); });
    ExpectPassesThrough<int>([] { throw 1; });
}

// Cannot be closed without an exception.
class UnclosableStream : public IO::StringStream {
public:
    explicit UnclosableStream(bool* destroyed)
        : IO::StringStream("<a/>", false), destroyed_(destroyed) {}
    ~UnclosableStream() override { *destroyed_ = true; }
    void Close() override { throw std::runtime_error("cannot be closed"); }

private:
    bool* destroyed_;  // not owned
};

TEST(XmlTextReaderFailure, CloseAndTheDestructorSwallowWhatTheStreamThrows) {
    bool byClose = false;
    bool byDestructor = false;
    {
        XmlTextReader reader;
        reader.SetStream(new UnclosableStream(&byClose), true);
        reader.Read();
        EXPECT_NO_THROW(reader.Close());
        EXPECT_TRUE(byClose);
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
        reader.SetStream(new UnclosableStream(&byDestructor), true);
    }
    EXPECT_TRUE(byDestructor);
}

TEST(XmlTextReaderFailure, AClosedStreamFailsWithItsOwnMessage) {
    const std::string document = LongDocument();
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    ASSERT_TRUE(reader.Read());
    stream.Close();
    try {
        while (reader.Read())
            continue;
        FAIL() << "is read to the end";
    } catch (const Xml::Exception& error) {
        EXPECT_STREQ(error.What(), "MemoryStream::Read: Stream is closed");
    }
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
}

}  // namespace
