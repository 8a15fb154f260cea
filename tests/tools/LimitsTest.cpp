// SPDX-License-Identifier: MIT

// What ends documents that are too large: --max-bytes and --max-ratio.

#include "InputArguments.h"
#include "LimitedStream.h"
#include "support/Archives.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using support::MakeGzip;
using support::MakeZip;
using Tool::LimitedStream;
using Tool::LimitReached;
using Tool::SizeLimits;

namespace {

constexpr char kRatioError[] = ": error: More than 200 times its compressed size (--max-ratio)\n";

// A document of `size` bytes that compresses to next to nothing.
std::string Bomb(std::size_t size) {
    std::string text = "<a>" + std::string(size - 7, ' ') + "</a>";
    EXPECT_EQ(text.size(), size);
    return text;
}

// Delivers zeros without end.
class Zeros final : public Tool::InputStream {
public:
    int Read(unsigned char* buffer, int offset, int count) override {
        std::fill_n(buffer + offset, count, static_cast<unsigned char>(0));
        return count;
    }
};

// Returns how many bytes come, read `piece` at a time, before the limit is reached.
std::int64_t BytesBeforeLimit(const SizeLimits& limits, std::int64_t packedSize, int piece) {
    LimitedStream stream(std::make_unique<Zeros>(), limits, [=] { return packedSize; });
    std::vector<unsigned char> buffer(static_cast<std::size_t>(piece));
    std::int64_t total = 0;
    try {
        for (;;)
            total += stream.Read(buffer.data(), 0, piece);
    } catch (const LimitReached&) {
        return total;
    }
}

}  // namespace

TEST(Limits, MostBytesCountInEveryKindOfInput) {
    const TemporaryDirectory directory;
    const std::string document = "<a>1234567</a>";  // 14 bytes
    const std::string names[] = {
        directory.Write("a.xml", document),
        directory.Write("a.gz", MakeGzip(document)),
        directory.Write("a.zip", MakeZip({{.name = "a", .content = document}})) + "!a",
    };
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        for (const char* const enough : {"14", "1k", "1K", "1M", "1G"}) {
            const ProgramResult result = RunProgram({"check", "--max-bytes", enough, name});
            EXPECT_EQ(result.exitCode, 0) << enough;
            EXPECT_EQ(result.errors, "");
        }
        const ProgramResult result = RunProgram({"events", "--max-bytes", "13", name});
        EXPECT_EQ(result.exitCode, 5);
        EXPECT_EQ(result.out, "Element a 1 1:1\nText - 2 1:4 \"1234567\"\n");
        EXPECT_EQ(result.errors, name + ": error: More than 13 bytes (--max-bytes)\n");
    }
}

TEST(Limits, MostBytesCountFromAPipeAndInEveryVerb) {
    const std::string document = "<a>1234567</a>";
    for (const std::string& input : {document, MakeGzip(document)}) {
        for (const char* const verb : {"check", "events", "format"}) {
            EXPECT_EQ(RunProgram({verb, "--max-bytes", "14"}, input).exitCode, 0);
            const ProgramResult result = RunProgram({verb, "--max-bytes", "13"}, input);
            EXPECT_EQ(result.exitCode, 5);
            EXPECT_EQ(result.errors, "<stdin>: error: More than 13 bytes (--max-bytes)\n");
        }
        EXPECT_EQ(RunProgram({"tree", "--counts", "--max-bytes", "13"}, input).exitCode, 5);
    }
}

TEST(Limits, MostBytesAreThoseBeforeRecoding) {
    const std::string document = "<a>\xE9\xE9</a>";  // 9 bytes, and 11 in UTF-8
    EXPECT_EQ(
        RunProgram({"check", "--encoding", "iso-8859-1", "--max-bytes", "9"}, document).exitCode,
        0);
    EXPECT_EQ(
        RunProgram({"check", "--encoding", "iso-8859-1", "--max-bytes", "8"}, document).exitCode,
        5);
}

TEST(Limits, BombsOfBothKindsAreStopped) {
    const TemporaryDirectory directory;
    const std::string bomb = Bomb(12 << 20);
    const std::string gzip = directory.Write("a.gz", MakeGzip(bomb));
    const std::string member =
        directory.Write("a.zip", MakeZip({{.name = "a", .content = bomb}})) + "!a";
    for (const std::string& name : {gzip, member}) {
        const ProgramResult result = RunProgram({"check", name});
        EXPECT_EQ(result.exitCode, 5);
        EXPECT_EQ(result.errors, name + kRatioError);
        EXPECT_EQ(RunProgram({"check", "--max-ratio", "2000", name}).exitCode, 0);
        EXPECT_EQ(RunProgram({"check", "--max-ratio", "2000", "--max-bytes", "11M", name}).errors,
                  name + ": error: More than 11534336 bytes (--max-bytes)\n");
    }
    const ProgramResult result = RunProgram({"check"}, MakeGzip(bomb));
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_EQ(result.errors, std::string("<stdin>") + kRatioError);
}

TEST(Limits, WhatAnArchiveSaysOfItselfDoesNotMatter) {
    const TemporaryDirectory directory;
    const std::string zip =
        MakeZip({{.name = "a", .content = Bomb(12 << 20), .size = std::uint64_t{100}}});
    const ProgramResult result = RunProgram({"check", directory.Write("a.zip", zip) + "!a"});
    EXPECT_EQ(result.exitCode, 4);  // not what it says, long before it is too much
    EXPECT_TRUE(result.errors.ends_with("!a: error: Damaged zip data\n")) << result.errors;
}

TEST(Limits, TheFirstMegabytesMayComeFromNothing) {
    EXPECT_EQ(RunProgram({"check"}, MakeGzip(Bomb(8 << 20))).exitCode, 0);
    EXPECT_EQ(RunProgram({"check"}, MakeGzip(Bomb((8 << 20) + 1))).exitCode, 5);
    EXPECT_EQ(RunProgram({"check"}, Bomb((8 << 20) + 1)).exitCode, 0);  // not compressed
}

TEST(Limits, AreExact) {
    constexpr std::int64_t kFree = SizeLimits::kAlwaysAllowed;
    const struct {
        SizeLimits limits;
        std::int64_t packedSize;
        std::int64_t expected;
    } kCases[] = {
        {{.bytes = 1}, std::int64_t{1} << 40, 1},
        {{.bytes = 1000}, std::int64_t{1} << 40, 1000},
        {{.bytes = {}, .ratio = 200}, 0, kFree},
        {{.bytes = {}, .ratio = 200}, kFree / 200, kFree},
        {{.bytes = {}, .ratio = 100}, 100000, 10000000},
        {{.bytes = {}, .ratio = 9000000}, 1, 9000000},
        {{.bytes = 9000000, .ratio = 200}, 1000000, 9000000},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(BytesBeforeLimit(c.limits, c.packedSize, 1), c.expected);
        // A piece that reaches beyond the ratio is not delivered.
        const std::int64_t pieces = c.limits.bytes ? c.expected : c.expected / 4096 * 4096;
        EXPECT_EQ(BytesBeforeLimit(c.limits, c.packedSize, 4096), pieces);
    }
}

TEST(Limits, ByteCountsHaveUnits) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    const struct {
        const char* text;
        std::optional<std::int64_t> expected;
    } kCases[] = {
        {"1", 1},
        {"1k", 1024},
        {"3K", 3072},
        {"5M", 5L << 20},
        {"2g", std::int64_t{2} << 30},
        {"9223372036854775807", kMost},
        {"9223372036854775808", {}},
        {"8589934591G", std::int64_t{8589934591} << 30},
        {"8589934592G", {}},
        {"", {}},
        {"0", {}},
        {"0K", {}},
        {"-1", {}},
        {"K", {}},
        {"1KB", {}},
        {"1T", {}},
        {"1.5M", {}},
        {" 1", {}},
        {"1+", {}},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(Tool::ParseByteCount(c.text), c.expected) << c.text;
    }
}

TEST(Limits, BadNumbersAreErrorsOfUsage) {
    const struct {
        std::vector<std::string> arguments;
        const char* expected;
    } kCases[] = {
        {{"check", "--max-bytes", "1X"},
         "espalier: check: --max-bytes: \"1X\" is no number of bytes such as 500, 64K, 10M, 2G\n"},
        {{"check", "--max-bytes=0"},
         "espalier: check: --max-bytes: \"0\" is no number of bytes such as 500, 64K, 10M, 2G\n"},
        {{"events", "--max-ratio", "0"},
         "espalier: events: --max-ratio: \"0\" is no number from 1 on\n"},
        {{"tree", "--counts", "--max-ratio", "10x"},
         "espalier: tree: --max-ratio: \"10x\" is no number from 1 on\n"},
        {{"format", "--encoding", "latin-2"},
         "espalier: format: --encoding: \"latin-2\" is none of UTF-8, UTF-16LE, UTF-16BE, "
         "ISO-8859-1, US-ASCII, windows-1250, windows-1251, windows-1252, windows-1254, "
         "windows-1257, GB2312, EUC-KR\n"},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram(c.arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.errors.starts_with(c.expected)) << result.errors;
    }
}
