// SPDX-License-Identifier: MIT
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "support/Archives.h"
#include "support/Descriptor.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"
#include "support/StreamOutcome.h"

#include <climits>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Calls = std::vector<std::string>;
using IO::CompressionMode;
using IO::GZipStream;
using IO::SeekOrigin;
using support::MakeGzip;
using support::Pattern;
using support::ReadAll;
using support::RecordingStream;
using support::StreamOver;
using support::Write;

constexpr char kSeekError[] = "GZipStream seek error";

TEST(GZipStreamSeek, GoesToAnyPositionOfTheUncompressedData) {
    const std::string content = Pattern(300000);
    for (const std::string& data :
         {MakeGzip(content),  // in one member, in two, and as it is
          MakeGzip(content.substr(0, 70000)) + MakeGzip(content.substr(70000)), content}) {
        IO::MemoryStream source = StreamOver(data);
        GZipStream stream(&source, CompressionMode::Decompress);
        std::mt19937 random(20260321);
        for (int i = 0; i < 100; ++i) {
            const long target = static_cast<long>(random() % (content.size() + 1));
            const long before = stream.Position();
            const bool relative = i % 2 == 0;
            EXPECT_EQ(relative ? stream.Seek(target - before, SeekOrigin::Current)
                               : stream.Seek(target, SeekOrigin::Begin),
                      target);
            EXPECT_EQ(stream.Position(), target);
            if (i % 3 == 0) continue;  // several seeks in a row
            std::string bytes(i % 7 == 0 ? 50000 : 100, '\0');
            const int count = stream.Read(reinterpret_cast<unsigned char*>(bytes.data()), 0,
                                          static_cast<int>(bytes.size()));
            bytes.resize(static_cast<std::size_t>(count));
            ASSERT_TRUE(bytes == content.substr(static_cast<std::size_t>(target), bytes.size()));
            ASSERT_EQ(stream.Position(), target + count);
        }
    }
}

TEST(GZipStreamSeek, WhatCannotBeReachedIsAnError) {
    const std::string data = MakeGzip("abcdef");
    const struct {
        long offset;
        SeekOrigin origin;
    } kCases[] = {
        {-1, SeekOrigin::Begin},   {LONG_MIN, SeekOrigin::Begin},
        {-3, SeekOrigin::Current}, {LONG_MIN, SeekOrigin::Current},
        {0, SeekOrigin::End},      {-1, SeekOrigin::End},
        {5, SeekOrigin::End},      {-1, static_cast<SeekOrigin::SEEK_ORIGIN>(7)},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << ' ' << c.origin.ToString());
        RecordingStream source(data);
        GZipStream stream(&source, CompressionMode::Decompress);
        EXPECT_EQ(stream.ReadByte(), 'a');
        EXPECT_EQ(stream.ReadByte(), 'b');
        EXPECT_THROW_FULL(stream.Seek(c.offset, c.origin), kSeekError, "", -1, -1);
        EXPECT_EQ(stream.Position(), 2);
        EXPECT_EQ(stream.ReadByte(), 'c');
    }
}

TEST(GZipStreamSeek, AnOriginWithoutANameIsTheStart) {
    const std::string data = MakeGzip("abcdef");
    IO::MemoryStream source = StreamOver(data);
    GZipStream stream(&source, CompressionMode::Decompress);
    stream.ReadByte();
    EXPECT_EQ(stream.Seek(4, static_cast<SeekOrigin::SEEK_ORIGIN>(7)), 4);
    EXPECT_EQ(stream.ReadByte(), 'e');
}

TEST(GZipStreamSeek, BehindTheEndThereIsNothing) {
    const std::string data = MakeGzip("abcdef");
    for (const long target : {7L, 100L, LONG_MAX / 3, LONG_MAX}) {
        IO::MemoryStream source = StreamOver(data);
        GZipStream stream(&source, CompressionMode::Decompress);
        stream.ReadByte();
        EXPECT_EQ(stream.Seek(target, SeekOrigin::Begin), target);
        EXPECT_EQ(stream.Position(), target);
        if (target == LONG_MAX) {
            EXPECT_EQ(stream.Seek(1, SeekOrigin::Current), LONG_MAX);
        }
        EXPECT_EQ(stream.ReadByte(), -1);
        EXPECT_EQ(stream.Position(), 6);
        EXPECT_EQ(stream.Seek(1, SeekOrigin::Begin), 1);
        EXPECT_EQ(stream.ReadByte(), 'b');
    }
    IO::MemoryStream source = StreamOver(data);
    GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_EQ(stream.Seek(6, SeekOrigin::Begin), 6);
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_EQ(stream.Position(), 6);
}

TEST(GZipStreamSeek, BackMeansFromWhereTheTargetStoodAtFirst) {
    RecordingStream source("prefix" + MakeGzip("abcdef"));
    source.SetPosition(6);
    GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_EQ(ReadAll(stream), "abcdef");
    source.TakeCalls();
    stream.SetPosition(2);
    EXPECT_EQ(source.TakeCalls(), Calls({"Seek 6 Begin"}));
    EXPECT_EQ(ReadAll(stream), "cdef");
}

TEST(GZipStreamSeek, ForwardDoesNotTroubleTheTargetBeforeTheNextRead) {
    RecordingStream source(MakeGzip(Pattern(1000)));
    GZipStream stream(&source, CompressionMode::Decompress);
    stream.Seek(500, SeekOrigin::Begin);
    stream.Seek(0, SeekOrigin::Current);
    EXPECT_EQ(stream.Seek(20, SeekOrigin::Begin), 20);  // back from a place that was never reached
    EXPECT_EQ(source.TakeCalls(), Calls());
    EXPECT_EQ(stream.ReadByte(), static_cast<unsigned char>(Pattern(21)[20]));
}

TEST(GZipStreamSeek, ATargetThatCannotSeekOnlyGoesForward) {
    const std::string data = MakeGzip("abcdef");
    IO::MemoryStream memory = StreamOver(data);
    support::UnseekableStream source(memory);
    GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_TRUE(stream.CanSeek());
    EXPECT_EQ(stream.Seek(2, SeekOrigin::Current), 2);
    EXPECT_EQ(stream.ReadByte(), 'c');
    EXPECT_EQ(stream.Seek(3, SeekOrigin::Begin), 3);
    EXPECT_THROW_FULL(stream.Seek(2, SeekOrigin::Begin), kSeekError, "", -1, -1);
    EXPECT_THROW_FULL(stream.Seek(-1, SeekOrigin::Current), kSeekError, "", -1, -1);
    EXPECT_EQ(ReadAll(stream), "def");
}

TEST(GZipStreamSeek, ATargetThatCannotSeekIsNeverAskedTo) {
    class Strict : public support::UnseekableStream {
    public:
        using UnseekableStream::UnseekableStream;
        long Position() const override {
            ADD_FAILURE() << "asked for its position";
            return 0;
        }
        long Seek(long, SeekOrigin) override {
            ADD_FAILURE() << "asked to seek";
            return 0;
        }
    };
    const std::string data = MakeGzip("abcdef");
    IO::MemoryStream memory = StreamOver(data);
    Strict source(memory);
    GZipStream reading(&source, CompressionMode::Decompress);
    EXPECT_EQ(ReadAll(reading), "abcdef");
    EXPECT_THROW_FULL(reading.Seek(0, SeekOrigin::Begin), kSeekError, "", -1, -1);
    RecordingStream output;
    Strict target(output);
    GZipStream writing(&target, CompressionMode::Compress);
    Write(writing, "abc");
    writing.Seek(5, SeekOrigin::Begin);
    writing.Close();
    EXPECT_EQ(support::UnpackGzip(output.Content()), std::string("abc\0\0", 5));
}

TEST(GZipStreamSeek, APipeOnlyGoesForward) {
    const std::string data = MakeGzip("abcdef");
    int ends[2];
    ASSERT_TRUE(support::MakePipe(ends));
    IO::FileStream writer(ends[1], 2, true);
    Write(writer, data);
    writer.Close();
    IO::FileStream pipe(ends[0], 1, true);
    GZipStream stream(&pipe, CompressionMode::Decompress);
    EXPECT_EQ(stream.Seek(3, SeekOrigin::Begin), 3);
    EXPECT_EQ(stream.ReadByte(), 'd');
    EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::Begin), kSeekError, "", -1, -1);
    EXPECT_EQ(ReadAll(stream), "ef");
}

TEST(GZipStreamSeek, ATargetThatDoesNotGetBackIsAnError) {
    const std::string data = "prefix" + MakeGzip("abcdef");
    IO::MemoryStream source;
    Write(source, data);
    source.SetPosition(6);
    GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_EQ(ReadAll(stream), "abcdef");
    source.SetPosition(0);
    source.SetLength(3);  // what the stream was opened on is gone
    EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::Begin), kSeekError, "", -1, -1);
    EXPECT_THROW_FULL(stream.ReadByte(), "GZipStream read error: file error", "", -1, -1);
}

TEST(GZipStreamSeek, WritingGoesForwardOverZeroBytes) {
    RecordingStream target;
    GZipStream stream(&target, CompressionMode::Compress);
    Write(stream, "abc");
    EXPECT_EQ(stream.Seek(3, SeekOrigin::Begin), 3);
    EXPECT_EQ(stream.Seek(5, SeekOrigin::Begin), 5);
    EXPECT_EQ(stream.Seek(20000, SeekOrigin::Current), 20005);
    EXPECT_EQ(stream.Position(), 20005);
    Write(stream, "def");
    EXPECT_EQ(stream.Seek(2, SeekOrigin::Current), 20010);
    for (const long back : {20009L, 0L, -1L}) {
        EXPECT_THROW_FULL(stream.Seek(back, SeekOrigin::Begin), kSeekError, "", -1, -1);
    }
    EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::End), kSeekError, "", -1, -1);
    stream.Close();
    EXPECT_TRUE(support::UnpackGzip(target.Content()) ==
                "abc" + std::string(20002, '\0') + "def" + std::string(2, '\0'));
}

}  // namespace
