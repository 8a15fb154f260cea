// SPDX-License-Identifier: MIT
//
// What may stand in gzip data, and what becomes of data that are damaged.
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "support/Archives.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/StreamOutcome.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using IO::CompressionMode;
using IO::GZipStream;
using IO::SeekOrigin;
using support::ArchiveData;
using support::Decompress;
using support::GzipMember;
using support::MakeGzip;
using support::Pattern;
using support::ReadOutcome;
using support::StreamOver;

constexpr char kReadError[] = "GZipStream read error: ";

// Reads the data in pieces of several sizes, from a source that gives so much at a time.
void ExpectOutcome(std::string_view data, const ReadOutcome& expected) {
    for (const int piece : {1, 10, 100000}) {
        for (const int most : {1, 2, 7, 1000000}) {
            SCOPED_TRACE(testing::Message() << piece << " of " << most);
            IO::MemoryStream source = StreamOver(data);
            support::TrickleStream trickle(source, most);
            GZipStream stream(&trickle, CompressionMode::Decompress);
            const ReadOutcome outcome = support::ReadToOutcome(stream, piece);
            EXPECT_EQ(outcome.error, expected.error);
            EXPECT_TRUE(outcome.content == expected.content) << outcome.content.substr(0, 100);
        }
    }
}

TEST(GZipStreamRead, HeadersWithAnyParts) {
    const std::string content = Pattern(500);
    for (unsigned parts = 0; parts < 16; ++parts) {
        SCOPED_TRACE(parts);
        GzipMember member = {.content = content};
        if ((parts & 1U) != 0) member.name = "a name.xml";
        if ((parts & 2U) != 0) member.comment = "a comment";
        if ((parts & 4U) != 0) member.extra = std::string(300, '\x1F');
        member.hasHeaderChecksum = (parts & 8U) != 0;
        ExpectOutcome(MakeGzip(member), {content, ""});
    }
}

TEST(GZipStreamRead, HeadersThatAreWrong) {
    const std::string plain = MakeGzip("abc");
    const std::string checked =
        MakeGzip(GzipMember{.content = "abc", .name = "name", .hasHeaderChecksum = true});
    const struct {
        std::string data;
        std::size_t position;
        char byte;
        const char* error;
    } kCases[] = {
        {plain, 2, 7, "unknown compression method"},
        {plain, 3, '\x20', "unknown header flags set"},
        {plain, 3, '\x80', "unknown header flags set"},
        {checked, 10, 'N', "header crc mismatch"},
        {checked, 15, 'x', "header crc mismatch"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.position << ' ' << c.error);
        std::string data = c.data;
        data[c.position] = c.byte;
        ExpectOutcome(data, {"", std::string(kReadError) + c.error});
    }
}

TEST(GZipStreamRead, MembersBehindEachOtherAreOne) {
    ExpectOutcome(MakeGzip("first, ") + MakeGzip("") + MakeGzip("second, ") +
                      MakeGzip(GzipMember{.content = Pattern(70000), .comment = "third"}),
                  {"first, second, " + Pattern(70000), ""});
}

TEST(GZipStreamRead, WhatFollowsAMemberAndIsNoneIsIgnored) {
    for (const std::string& rest :
         {std::string(1, '\0'), std::string(512, '\0'), std::string("garbage"), std::string("\x1F"),
          std::string("\x1F\x8A\x08"), std::string(100000, 'x'), "x" + MakeGzip("more")}) {
        SCOPED_TRACE(rest.substr(0, 10));
        ExpectOutcome(MakeGzip("abc") + rest, {"abc", ""});
        ExpectOutcome(MakeGzip("abc") + MakeGzip("def") + rest, {"abcdef", ""});
    }
}

TEST(GZipStreamRead, WhatFollowsAMemberAndBeginsLikeOneIsOne) {
    const std::string good = MakeGzip("abc");
    const struct {
        std::string rest;
        const char* error;
    } kCases[] = {
        {"\x1F\x8B", "unexpected end of file"},
        {std::string(good, 0, good.size() - 1), "unexpected end of file"},
        {"\x1F\x8B\x07\x01", "unknown compression method"},
    };
    for (const auto& c : kCases) {
        const bool holdsContent = c.rest.size() > 10;
        ExpectOutcome(good + c.rest,
                      {holdsContent ? "abcabc" : "abc", std::string(kReadError) + c.error});
    }
}

TEST(GZipStreamRead, DataThatAreNotGzipPassThrough) {
    for (const std::string& data :
         {std::string(), std::string("\x1F"), std::string("x"), std::string("<a/>"),
          std::string("\x1F\x8A\x08"), std::string("\x8B\x1F\x08"), "x" + MakeGzip("abc"),
          Pattern(200000)}) {
        SCOPED_TRACE(data.substr(0, 10));
        ExpectOutcome(data, {data, ""});
    }
}

TEST(GZipStreamRead, ChecksumAndLengthAreChecked) {
    for (const std::size_t size : {0UL, 3UL, 100000UL}) {
        const std::string content = Pattern(size);
        const std::string good = MakeGzip(content);
        for (std::size_t fromEnd = 1; fromEnd <= 8; ++fromEnd) {
            SCOPED_TRACE(fromEnd);
            std::string data = good;
            data[data.size() - fromEnd] ^= 4;
            const char* const error =
                fromEnd > 4 ? "incorrect data check" : "incorrect length check";
            ExpectOutcome(data, {content, std::string(kReadError) + error});
        }
    }
}

TEST(GZipStreamRead, DamagedDataTellWhatIsWrong) {
    const struct {
        std::string_view deflated;
        const char* error;
    } kCases[] = {
        {"\x07", "invalid block type"},
        {std::string_view("\x01\x01\x00\x00\x00", 5), "invalid stored block lengths"},
        {std::string_view("\xFD\xFF\xFF\xFF", 4), "too many length or distance symbols"},
        {std::string_view("\x03\x02\x00", 3), "invalid distance too far back"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.error);
        const std::string header = MakeGzip("").substr(0, 10);
        // Enough bytes for zlib to come to its verdict.
        const std::string data = header + std::string(c.deflated) + std::string(20, '\0');
        ExpectOutcome(data, {"", std::string(kReadError) + c.error});
    }
}

TEST(GZipStreamRead, TheSameErrorComesAgainUntilSeekGoesBack) {
    std::string data = MakeGzip("abcdef");
    data[data.size() - 1] = 'x';
    constexpr char kError[] = "GZipStream read error: incorrect length check";
    IO::MemoryStream source = StreamOver(data);
    GZipStream stream(&source, CompressionMode::Decompress);
    unsigned char bytes[10] = {};
    for (int i = 0; i < 3; ++i) {
        EXPECT_THROW_FULL(stream.Read(bytes, 0, 10), kError, "", -1, -1);
        EXPECT_EQ(stream.Position(), 6);
    }
    EXPECT_EQ(bytes[5], 'f');
    stream.Seek(10, SeekOrigin::Begin);
    EXPECT_THROW_FULL(stream.Read(bytes, 0, 1), kError, "", -1, -1);
    EXPECT_EQ(stream.Seek(2, SeekOrigin::Begin), 2);
    EXPECT_EQ(stream.Read(bytes, 0, 3), 3);
    EXPECT_EQ(bytes[0], 'c');
    EXPECT_NO_THROW(stream.Close());
}

TEST(GZipStreamRead, AtTheEndThereIsNothingMore) {
    const std::string data = MakeGzip("abc") + "garbage";
    IO::MemoryStream source = StreamOver(data);
    GZipStream stream(&source, CompressionMode::Decompress);
    unsigned char bytes[10] = {};
    EXPECT_EQ(stream.Read(bytes, 0, 10), 3);
    EXPECT_EQ(stream.Read(bytes, 0, 10), 0);
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_EQ(stream.Position(), 3);
}

TEST(GZipStreamRead, ReadGivesAllThatIsAskedForHoweverTheSourceTrickles) {
    const std::string content = Pattern(50000);
    const std::string data = MakeGzip(content);
    IO::MemoryStream source = StreamOver(data);
    support::TrickleStream trickle(source, 3);
    GZipStream stream(&trickle, CompressionMode::Decompress);
    std::string bytes(49999, '\0');
    EXPECT_EQ(stream.Read(reinterpret_cast<unsigned char*>(bytes.data()), 0, 49999), 49999);
    EXPECT_TRUE(bytes == content.substr(0, 49999));
}

// A source such as a pipe may have no more before it gets an answer.
TEST(GZipStreamRead, WhatCanBeDecompressedComesBeforeTheSourceIsAskedAgain) {
    class Recording : public IO::MemoryStream {
    public:
        using MemoryStream::MemoryStream;
        int Read(unsigned char* buffer, int offset, int count) override {
            ++reads;
            return MemoryStream::Read(buffer, offset, count);
        }
        int reads = 0;
    };
    const std::string whole = MakeGzip(std::string(300000, '\0'));
    const std::string data = whole.substr(0, whole.size() - 12);
    const std::size_t available = support::UnpackGzipStart(data).size();
    ASSERT_GT(available, 200000U);
    for (const int piece : {1, 1000, 20000}) {
        Recording source(reinterpret_cast<const unsigned char*>(data.data()),
                         static_cast<long>(data.size()));
        GZipStream stream(&source, CompressionMode::Decompress);
        std::vector<unsigned char> bytes(static_cast<std::size_t>(piece));
        while (stream.Position() + piece <= static_cast<long>(available)) {
            ASSERT_EQ(stream.Read(bytes.data(), 0, piece), piece);
            ASSERT_EQ(source.reads, 1);
        }
        EXPECT_EQ(support::ReadToOutcome(stream, piece).error,
                  "GZipStream read error: unexpected end of file");
        EXPECT_EQ(stream.Position(), static_cast<long>(available));
    }
}

TEST(GZipStreamRead, TheDataBeginWhereTheTargetStands) {
    const std::string data = "prefix" + MakeGzip("abc");
    IO::MemoryStream source = StreamOver(data);
    source.SetPosition(6);
    GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_EQ(support::ReadAll(stream), "abc");
}

TEST(GZipStreamRead, ATargetThatAnswersWithANegativeNumberHasFailed) {
    class Refusing : public support::TrickleStream {
    public:
        using TrickleStream::TrickleStream;
        int Read(unsigned char* buffer, int offset, int count) override {
            const int result = TrickleStream::Read(buffer, offset, count);
            return result > 0 ? result : -3;
        }
    };
    for (const std::string& data : {std::string(), std::string("\x1F"), std::string("plain"),
                                    MakeGzip("abc"), MakeGzip("abc").substr(0, 15)}) {
        IO::MemoryStream source = StreamOver(data);
        Refusing refusing(source, 5);
        GZipStream stream(&refusing, CompressionMode::Decompress);
        EXPECT_EQ(support::ReadToOutcome(stream, 100).error, "GZipStream read error: file error");
    }
}

TEST(GZipStreamRead, FilesOfOtherProgramsReadEqual) {
    const std::string document = ArchiveData("beds.xml");
    ASSERT_GT(document.size(), 3000U);
    for (const char* name : {"gzip.gz", "gzip-stdin.gz", "gzip-two-members.gz", "python.gz"}) {
        SCOPED_TRACE(name);
        ExpectOutcome(ArchiveData(name), {document, ""});
    }
}

std::vector<std::string> SmallFiles() {
    return {MakeGzip(""), MakeGzip("abc"),
            MakeGzip(GzipMember{.content = Pattern(300),
                                .extra = "xx",
                                .name = "name",
                                .comment = "comment",
                                .hasHeaderChecksum = true}),
            MakeGzip("first") + MakeGzip(std::string(3000, 'x')), ArchiveData("gzip.gz")};
}

TEST(GZipStreamRead, EveryTruncationIsAnErrorOrShort) {
    for (const std::string& data : SmallFiles()) {
        const std::string whole = Decompress(data).content;
        int errors = 0;
        for (std::size_t length = 0; length < data.size(); ++length) {
            SCOPED_TRACE(length);
            for (const int piece : {1, 64, 100000}) {
                const std::string part = data.substr(0, length);
                const ReadOutcome outcome = Decompress(part, piece);
                if (length < 2) {
                    EXPECT_EQ(outcome, (ReadOutcome{part, ""}));  // not to be told from a text
                    continue;
                }
                EXPECT_TRUE(whole.starts_with(outcome.content));
                if (outcome.error.empty()) {
                    // Cut between members, or in the first byte of one.
                    EXPECT_EQ(support::UnpackGzip(part.substr(0, data.rfind("\x1F\x8B\x08"))),
                              outcome.content);
                } else {
                    EXPECT_EQ(outcome.error, "GZipStream read error: unexpected end of file");
                    ++errors;
                }
            }
        }
        EXPECT_GE(errors, 3 * (static_cast<int>(data.size()) - 4));
    }
}

// A header's time, flags of the compressor and system, and its texts unless these have a checksum,
// may be anything.
TEST(GZipStreamRead, EveryChangeOfAByteIsAnErrorOrHarmless) {
    for (const std::string& data : SmallFiles()) {
        const std::string whole = Decompress(data).content;
        for (std::size_t i = 0; i < data.size(); ++i) {
            for (int change = 1; change < 256; ++change) {
                std::string damaged = data;
                damaged[i] = static_cast<char>(static_cast<unsigned char>(damaged[i]) ^ change);
                const ReadOutcome outcome = Decompress(damaged, 100000);
                if (!outcome.error.empty()) {
                    ASSERT_TRUE(outcome.error.starts_with(kReadError)) << outcome.error;
                    continue;
                }
                // No longer gzip data, or followed by what is none.
                if (outcome.content == damaged) {
                    ASSERT_LT(i, 2U);
                } else if (outcome.content != whole) {
                    const std::size_t last = data.rfind("\x1F\x8B\x08");
                    ASSERT_TRUE(i == last || i == last + 1) << i << ' ' << change;
                    ASSERT_EQ(support::UnpackGzip(data.substr(0, last)), outcome.content);
                }
            }
        }
    }
}

}  // namespace
