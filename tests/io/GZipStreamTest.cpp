// SPDX-License-Identifier: MIT
//
// Opening, closing, taking over, writing; tests of reading are in GZipStreamReadTest.cpp.
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "support/Archives.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"
#include "support/StreamOutcome.h"

#include <climits>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Calls = std::vector<std::string>;
using IO::CompressionMode;
using IO::GZipStream;
using IO::SeekOrigin;
using support::Pattern;
using support::ReadAll;
using support::RecordingStream;
using support::StreamOver;
using support::Write;

constexpr char kNotOpen[] = "GZipStream not open!";

// A target that says what it can do.
class Able : public IO::MemoryStream {
public:
    Able(bool canRead, bool canWrite) : canRead_(canRead), canWrite_(canWrite) {}
    bool CanRead() const override { return canRead_; }
    bool CanWrite() const override { return canWrite_; }

private:
    bool canRead_;
    bool canWrite_;
};

std::string Compressed(std::string_view content, std::size_t piece) {
    RecordingStream target;
    GZipStream stream(&target, CompressionMode::Compress);
    for (std::size_t at = 0; at < content.size(); at += piece)
        Write(stream, content.substr(at, piece));
    stream.Close();
    return target.Content();
}

TEST(GZipStream, ATargetMustBeAbleToDoWhatIsWanted) {
    Able onlyRead(true, false);
    Able onlyWrite(false, true);
    EXPECT_THROW_FULL(GZipStream(&onlyRead, CompressionMode::Compress),
                      "GZipStream target Stream not writable!", "", -1, -1);
    EXPECT_THROW_FULL(GZipStream(&onlyWrite, CompressionMode::Decompress),
                      "GZipStream target Stream not readable!", "", -1, -1);
    EXPECT_NO_THROW(GZipStream(&onlyRead, CompressionMode::Decompress));
    EXPECT_NO_THROW(GZipStream(&onlyWrite, CompressionMode::Compress));
}

TEST(GZipStream, AModeWithoutANameCannotBeOpened) {
    IO::MemoryStream target;
    for (const int number : {2, -1}) {
        const auto mode = static_cast<CompressionMode::CMODE>(number);
        EXPECT_THROW_FULL(GZipStream(&target, mode), "GZipStream initialization failed", "", -1,
                          -1);
        EXPECT_NO_THROW(GZipStream(nullptr, mode));
    }
    Able unable(false, false);
    EXPECT_THROW_FULL(GZipStream(&unable, static_cast<CompressionMode::CMODE>(2)),
                      "GZipStream initialization failed", "", -1, -1);
}

TEST(GZipStream, AClosedStreamSaysSo) {
    RecordingStream target("abc");
    GZipStream neverOpened;
    GZipStream nullTarget(nullptr, CompressionMode::Decompress);
    GZipStream nullToCompress(nullptr, CompressionMode::Compress);
    GZipStream closed(&target, CompressionMode::Decompress);
    closed.Close();
    unsigned char byte = 0;
    for (GZipStream* stream : {&neverOpened, &nullTarget, &nullToCompress, &closed}) {
        EXPECT_FALSE(stream->CanRead());
        EXPECT_FALSE(stream->CanWrite());
        EXPECT_TRUE(stream->CanSeek());
        EXPECT_THROW_FULL(stream->Length(), kNotOpen, "", -1, -1);
        EXPECT_THROW_FULL(stream->Position(), kNotOpen, "", -1, -1);
        EXPECT_THROW_FULL(stream->Flush(), kNotOpen, "", -1, -1);
        EXPECT_THROW_FULL(stream->Read(&byte, 0, 1), kNotOpen, "", -1, -1);
        EXPECT_THROW_FULL(stream->Read(&byte, 0, 0), kNotOpen, "", -1, -1);
        EXPECT_THROW_FULL(stream->Seek(0, SeekOrigin::Begin), kNotOpen, "", -1, -1);
        // That a closed stream is not one to compress is noticed first.
        EXPECT_THROW_FULL(stream->Write(&byte, 0, 1), "GZipStream not opened to compress", "", -1,
                          -1);
        EXPECT_THROW_FULL(stream->SetLength(0), "GZipStream cannot SetLength", "", -1, -1);
        EXPECT_NO_THROW(stream->Close());
    }
    EXPECT_EQ(target.TakeCalls(), Calls());
}

TEST(GZipStream, WritingToAClosedStreamThatSaysItCanIsRefusedToo) {
    class Boasting : public GZipStream {
    public:
        bool CanWrite() const override { return true; }
    };
    Boasting stream;
    EXPECT_THROW_FULL(stream.WriteByte(1), kNotOpen, "", -1, -1);
}

TEST(GZipStream, TheModeDecidesWhatCanBeDone) {
    RecordingStream target("abc");
    const std::string bytes(10, 'x');
    GZipStream reading(&target, CompressionMode::Decompress);
    EXPECT_TRUE(reading.CanRead());
    EXPECT_FALSE(reading.CanWrite());
    EXPECT_TRUE(reading.CanSeek());
    EXPECT_THROW_FULL(Write(reading, bytes), "GZipStream not opened to compress", "", -1, -1);
    EXPECT_THROW_FULL(Write(reading, ""), "GZipStream not opened to compress", "", -1, -1);
    EXPECT_THROW_FULL(reading.SetLength(5), "GZipStream cannot SetLength", "", -1, -1);

    GZipStream writing(&target, CompressionMode::Compress);
    EXPECT_FALSE(writing.CanRead());
    EXPECT_TRUE(writing.CanWrite());
    EXPECT_TRUE(writing.CanSeek());
    EXPECT_THROW_FULL(writing.ReadByte(), "GZipStream read error: stream error", "", -1, -1);
    EXPECT_THROW_FULL(writing.SetLength(5), "GZipStream cannot SetLength", "", -1, -1);
}

TEST(GZipStream, TheLengthIsThatOfTheCompressedData) {
    const std::string data = support::MakeGzip(std::string(5000, 'x'));
    RecordingStream target(data);
    const GZipStream reading(&target, CompressionMode::Decompress);
    EXPECT_EQ(reading.Length(), static_cast<long>(data.size()));
    RecordingStream output;
    GZipStream writing(&output, CompressionMode::Compress);
    Write(writing, std::string(5000, 'x'));
    EXPECT_EQ(writing.Length(), 0);
    writing.Flush();
    EXPECT_EQ(writing.Length(), output.Length());
    EXPECT_GT(writing.Length(), 0);
}

TEST(GZipStream, WhatIsWrittenIsAGzipMember) {
    for (const std::size_t size : {0UL, 1UL, 100UL, 16383UL, 16384UL, 16385UL, 100000UL}) {
        const std::string content = Pattern(size);
        for (const std::size_t piece : {1UL, 7UL, 1000UL, 16384UL, 40000UL, 1000000UL}) {
            SCOPED_TRACE(testing::Message() << size << " bytes, " << piece << " at a time");
            const std::string data = Compressed(content, piece);
            EXPECT_TRUE(support::UnpackGzip(data) == content);
            EXPECT_EQ(support::Decompress(data).content, content);
        }
    }
}

TEST(GZipStream, ThePositionCountsUncompressedBytes) {
    RecordingStream target;
    GZipStream writing(&target, CompressionMode::Compress);
    EXPECT_EQ(writing.Position(), 0);
    Write(writing, std::string(1000, 'x'));
    EXPECT_EQ(writing.Position(), 1000);
    Write(writing, Pattern(100000));
    EXPECT_EQ(writing.Position(), 101000);
    writing.Close();

    target.Seek(0, SeekOrigin::Begin);
    GZipStream reading(&target, CompressionMode::Decompress);
    unsigned char bytes[500];
    EXPECT_EQ(reading.Position(), 0);
    EXPECT_EQ(reading.Read(bytes, 0, 500), 500);
    EXPECT_EQ(reading.Position(), 500);
    EXPECT_EQ(ReadAll(reading).size(), 100500U);
    EXPECT_EQ(reading.Position(), 101000);
}

TEST(GZipStream, OffsetsAreFoldedAndEmptyRangesDoNothing) {
    const std::string data = support::MakeGzip("abcdefghij");
    const struct {
        int offset;
        int count;
        const char* expected;  // of a buffer of ten dots
    } kReads[] = {
        {0, 3, "abc......."},  {4, 3, "....abc..."},       {-3, 10, "abcdefg..."},
        {0, 0, ".........."},  {0, -5, ".........."},      {-3, 3, ".........."},
        {-3, 4, "a........."}, {INT_MIN, 5, ".........."}, {INT_MIN, INT_MAX, ".........."},
    };
    for (const auto& c : kReads) {
        SCOPED_TRACE(testing::Message() << c.offset << ' ' << c.count);
        IO::MemoryStream source = StreamOver(data);
        GZipStream stream(&source, CompressionMode::Decompress);
        std::string buffer(10, '.');
        const int count =
            stream.Read(reinterpret_cast<unsigned char*>(buffer.data()), c.offset, c.count);
        EXPECT_EQ(buffer, c.expected);
        EXPECT_EQ(count, 10 - std::count(buffer.begin(), buffer.end(), '.'));
        EXPECT_EQ(stream.Position(), count);
    }
    const struct {
        int offset;
        int count;
        const char* expected;
    } kWrites[] = {
        {0, 3, "abc"}, {4, 3, "efg"}, {-3, 10, "abcdefg"}, {0, 0, ""}, {2, -5, ""}, {-3, 3, ""},
    };
    for (const auto& c : kWrites) {
        SCOPED_TRACE(testing::Message() << c.offset << ' ' << c.count);
        RecordingStream target;
        GZipStream stream(&target, CompressionMode::Compress);
        const unsigned char letters[] = "abcdefghij";
        stream.Write(letters, c.offset, c.count);
        stream.Close();
        EXPECT_EQ(support::UnpackGzip(target.Content()), c.expected);
    }
}

TEST(GZipStream, FlushHandsOnAllThatWasWrittenAndFlushesTheTarget) {
    RecordingStream target;
    GZipStream stream(&target, CompressionMode::Compress);
    std::string content;
    for (const std::size_t size : {0UL, 1UL, 50UL, 20000UL, 0UL}) {
        SCOPED_TRACE(size);
        Write(stream, Pattern(size));
        content += Pattern(size);
        stream.Flush();
        const Calls calls = target.TakeCalls();
        ASSERT_FALSE(calls.empty());
        EXPECT_EQ(calls.back(), "Flush");
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "Flush"), 1);
        EXPECT_TRUE(support::UnpackGzipStart(target.Content()) == content);
        EXPECT_FALSE(support::UnpackGzip(target.Content()).has_value());
    }
    stream.Close();
    EXPECT_TRUE(support::UnpackGzip(target.Content()) == content);
}

TEST(GZipStream, ASmallWriteWaits) {
    RecordingStream target;
    GZipStream stream(&target, CompressionMode::Compress);
    Write(stream, "abc");
    EXPECT_EQ(target.TakeCalls(), Calls());
}

TEST(GZipStream, FlushDoesNothingWhenDecompressing) {
    RecordingStream target(support::MakeGzip("abc"));
    GZipStream stream(&target, CompressionMode::Decompress);
    stream.Flush();
    EXPECT_EQ(target.TakeCalls(), Calls());
    EXPECT_EQ(ReadAll(stream), "abc");
}

TEST(GZipStream, CloseFlushesThenEndsTheDataAndLeavesTheTargetOpen) {
    RecordingStream target;
    GZipStream stream(&target, CompressionMode::Compress);
    Write(stream, "abc");
    stream.Close();
    const Calls calls = target.TakeCalls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].substr(0, 6), "Write ");
    EXPECT_EQ(calls[1], "Flush");
    EXPECT_EQ(calls[2].substr(0, 6), "Write ");
    EXPECT_EQ(support::UnpackGzip(target.Content()), "abc");
    stream.Close();
    EXPECT_EQ(target.TakeCalls(), Calls());

    RecordingStream source(target.Content());
    GZipStream reading(&source, CompressionMode::Decompress);
    EXPECT_EQ(ReadAll(reading), "abc");
    source.TakeCalls();
    reading.Close();
    EXPECT_EQ(source.TakeCalls(), Calls());
}

TEST(GZipStream, TheDestructorEndsTheData) {
    RecordingStream target;
    { Write(*std::make_unique<GZipStream>(&target, CompressionMode::Compress), "abc"); }
    EXPECT_EQ(support::UnpackGzip(target.Content()), "abc");
}

TEST(GZipStream, NothingWrittenIsAMemberWithoutContent) {
    RecordingStream target;
    { const GZipStream stream(&target, CompressionMode::Compress); }
    EXPECT_EQ(support::UnpackGzip(target.Content()), "");
}

TEST(GZipStream, TwoStreamsOverOneTargetWriteTwoMembers) {
    RecordingStream target;
    for (const char* content : {"first, ", "second"}) {
        GZipStream stream(&target, CompressionMode::Compress);
        Write(stream, content);
    }
    EXPECT_EQ(support::UnpackGzip(target.Content()), "first, second");
    target.Seek(0, SeekOrigin::Begin);
    GZipStream stream(&target, CompressionMode::Decompress);
    EXPECT_EQ(ReadAll(stream), "first, second");
}

TEST(GZipStream, ACopyTakesOverWhatTheOtherIsOpenOn) {
    RecordingStream target;
    {
        GZipStream first(&target, CompressionMode::Compress);
        Write(first, "abc");
        GZipStream second(first);
        EXPECT_FALSE(first.CanWrite());
        EXPECT_THROW_FULL(first.Position(), kNotOpen, "", -1, -1);
        first.Close();
        EXPECT_EQ(target.TakeCalls(), Calls());
        EXPECT_EQ(second.Position(), 3);
        Write(second, "def");
        GZipStream third(std::move(second));
        EXPECT_FALSE(second.CanWrite());  // NOLINT(bugprone-use-after-move): it is closed
        Write(third, "ghi");
    }
    EXPECT_EQ(support::UnpackGzip(target.Content()), "abcdefghi");
}

TEST(GZipStream, AssignmentClosesAndTakesOver) {
    RecordingStream firstTarget;
    RecordingStream secondTarget(support::MakeGzip("abcdef"));
    GZipStream first(&firstTarget, CompressionMode::Compress);
    GZipStream second(&secondTarget, CompressionMode::Decompress);
    Write(first, "xyz");
    EXPECT_EQ(second.ReadByte(), 'a');
    first = second;
    EXPECT_EQ(support::UnpackGzip(firstTarget.Content()), "xyz");
    EXPECT_TRUE(first.CanRead());
    EXPECT_FALSE(second.CanRead());
    EXPECT_EQ(first.Position(), 1);
    GZipStream& same = first;
    first = same;
    EXPECT_EQ(first.ReadByte(), 'b');
    second = std::move(first);
    EXPECT_EQ(ReadAll(second), "cdef");
    first = GZipStream();
    EXPECT_FALSE(first.CanRead());
}

}  // namespace
