// SPDX-License-Identifier: MIT
//
// Targets that fail.
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "support/Archives.h"
#include "support/ExpectThrow.h"
#include "support/FailingStream.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"
#include "support/StreamOutcome.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;
using IO::CompressionMode;
using IO::GZipStream;
using IO::SeekOrigin;
using support::FailingStream;
using support::Failure;
using support::RecordingStream;
using support::Write;

// Bytes that hardly get shorter.
std::string Noise(std::size_t length) {
    std::mt19937 random(20260321);
    std::string bytes(length, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() & 0xFFU);
    return bytes;
}

// Writes, counting what is thrown.
int WriteThrough(IO::Stream& target, const std::string& content) {
    int thrown = 0;
    GZipStream stream(&target, CompressionMode::Compress);
    const auto attempt = [&](const auto& call) {
        try {
            call();
        } catch (const Xml::Exception&) {
            ++thrown;
        }
    };
    attempt([&] { Write(stream, content); });
    attempt([&] { stream.Flush(); });
    attempt([&] { Write(stream, content.substr(0, 100)); });
    attempt([&] { stream.Seek(5000, SeekOrigin::Current); });
    attempt([&] { Write(stream, content); });
    attempt([&] { stream.Close(); });
    EXPECT_FALSE(stream.CanWrite());
    return thrown;
}

TEST(GZipStreamFailure, WhicheverCallFailsWhileWritingTheStreamClosesAndDestructs) {
    const std::string content = Noise(40000);
    const std::string expected =
        content + content.substr(0, 100) + std::string(5000, '\0') + content;
    for (const Failure failure : {Failure::Throw, Failure::EndEarly}) {
        bool hasFailed = true;
        int calls = 0;
        while (hasFailed) {
            ++calls;
            SCOPED_TRACE(calls);
            RecordingStream inner;
            FailingStream failing(inner, calls, failure);
            const int thrown = WriteThrough(failing, content);
            hasFailed = failing.HasFailed();
            EXPECT_EQ(thrown > 0, hasFailed && failure == Failure::Throw);
            if (!hasFailed) {
                EXPECT_TRUE(support::UnpackGzip(inner.Content()) == expected);
            }
        }
        EXPECT_GT(calls, 5);
    }
}

TEST(GZipStreamFailure, AfterAFailedWriteNothingMoreIsWritten) {
    RecordingStream inner;
    FailingStream failing(inner, 1, Failure::Throw);
    GZipStream stream(&failing, CompressionMode::Compress);
    EXPECT_THROW_FULL(Write(stream, Noise(40000)), FailingStream::kMessage, "", -1, -1);
    EXPECT_THROW_FULL(Write(stream, "abc"), "GZipStream write error", "", -1, -1);
    EXPECT_THROW_FULL(stream.Flush(), "GZipStream write error", "", -1, -1);
    EXPECT_THROW_FULL(stream.Seek(5, SeekOrigin::Current), "GZipStream seek error", "", -1, -1);
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_NO_THROW(stream.Close());
    EXPECT_EQ(inner.TakeCalls(), Calls());
}

TEST(GZipStreamFailure, AFailingCloseClosesAllTheSame) {
    RecordingStream inner;
    FailingStream failing(inner, 1, Failure::Throw);
    GZipStream stream(&failing, CompressionMode::Compress);
    Write(stream, "abc");
    EXPECT_THROW_FULL(stream.Close(), FailingStream::kMessage, "", -1, -1);
    EXPECT_THROW_FULL(stream.Position(), "GZipStream not open!", "", -1, -1);
    EXPECT_NO_THROW(stream.Close());
}

TEST(GZipStreamFailure, TheDestructorKeepsErrorsToItself) {
    RecordingStream inner;
    FailingStream failing(inner, 1, Failure::Throw);
    {
        GZipStream stream(&failing, CompressionMode::Compress);
        Write(stream, "abc");
    }
    EXPECT_TRUE(failing.HasFailed());
}

TEST(GZipStreamFailure, AFailingFlushOfTheTargetLosesNothing) {
    RecordingStream inner;
    FailingStream failing(inner, 2, Failure::Throw);  // the write goes well, the flush does not
    GZipStream stream(&failing, CompressionMode::Compress);
    Write(stream, "abc");
    EXPECT_THROW_FULL(stream.Flush(), FailingStream::kMessage, "", -1, -1);
    Write(stream, "def");
    stream.Close();
    EXPECT_EQ(support::UnpackGzip(inner.Content()), "abcdef");
}

TEST(GZipStreamFailure, AssignmentToAStreamThatFailsToCloseTakesNothing) {
    RecordingStream inner;
    FailingStream failing(inner, 1, Failure::Throw);
    RecordingStream other(support::MakeGzip("abc"));
    GZipStream first(&failing, CompressionMode::Compress);
    GZipStream second(&other, CompressionMode::Decompress);
    Write(first, "xyz");
    EXPECT_THROW_FULL(first = second, FailingStream::kMessage, "", -1, -1);
    EXPECT_EQ(support::ReadAll(second), "abc");
}

// A source that throws once: reading goes on where it was.
TEST(GZipStreamFailure, WhicheverReadFailsNoBytesAreLost) {
    const std::string content = Noise(3000);
    for (const std::string& data : {support::MakeGzip(content), content}) {
        for (const int piece : {1, 100, 20000}) {
            bool hasFailed = true;
            for (int calls = 1; hasFailed; calls += 50) {
                SCOPED_TRACE(calls);
                RecordingStream inner(data);
                support::TrickleStream trickle(inner, 3);
                FailingStream failing(trickle, calls, Failure::Throw);
                GZipStream stream(&failing, CompressionMode::Decompress);
                const support::ReadOutcome first = support::ReadToOutcome(stream, piece);
                hasFailed = failing.HasFailed();
                EXPECT_EQ(first.error, hasFailed ? FailingStream::kMessage : "");
                EXPECT_EQ(stream.Position(), static_cast<long>(first.content.size()));
                const support::ReadOutcome second = support::ReadToOutcome(stream, piece);
                EXPECT_EQ(second.error, "");
                EXPECT_TRUE(first.content + second.content == content);
            }
        }
    }
}

TEST(GZipStreamFailure, AFailingSeekLeavesThePlace) {
    RecordingStream inner(support::MakeGzip("abcdef"));
    FailingStream failing(inner, 2, Failure::Throw);  // a read, then the seek
    GZipStream stream(&failing, CompressionMode::Decompress);
    unsigned char bytes[3];
    ASSERT_EQ(stream.Read(bytes, 0, 3), 3);
    ASSERT_EQ(failing.Calls(), 1);
    EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::Begin), FailingStream::kMessage, "", -1, -1);
    EXPECT_EQ(stream.Position(), 3);
    EXPECT_EQ(support::ReadAll(stream), "def");
    EXPECT_EQ(stream.Seek(1, SeekOrigin::Begin), 1);
    EXPECT_EQ(support::ReadAll(stream), "bcdef");
}

TEST(GZipStreamFailure, ATargetThatIsClosedSaysSoItself) {
    IO::FileStream closed;
    class Readable : public IO::FileStream {
    public:
        bool CanRead() const override { return true; }
    };
    Readable readable;
    EXPECT_THROW_FULL(GZipStream(&readable, CompressionMode::Decompress), "File not open!", "", -1,
                      -1);
    EXPECT_THROW_FULL(GZipStream(&closed, CompressionMode::Decompress),
                      "GZipStream target Stream not readable!", "", -1, -1);
}

}  // namespace
