// SPDX-License-Identifier: MIT
//
// What zip archives may hold, and what becomes of archives that are damaged or lie.
#include <espalier/io/ZipFileStream.h>

#include "support/Archives.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/StreamOutcome.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using IO::SeekOrigin;
using IO::ZipFileStream;
using support::ArchiveData;
using support::MakeZip;
using support::Pattern;
using support::ReadAll;
using support::ReadOutcome;
using support::ZipEntry;

constexpr char kNoMember[] = "File not found in archive";

class ZipFileStreamArchiveTest : public support::FileTest {
protected:
    // Reads a member of an archive of these bytes; what Open() throws is an outcome, too.
    ReadOutcome Unzip(const std::string& bytes, const char* member, int piece = 1000) const {
        const std::string archive = Make("test.zip", bytes);
        ZipFileStream stream;
        try {
            stream.Open(archive.c_str(), member);
        } catch (const Xml::Exception& error) {
            return {"", error.What()};
        }
        return support::ReadToOutcome(stream, piece);
    }
};

TEST_F(ZipFileStreamArchiveTest, ArchivesOfOtherProgramsReadEqual) {
    const std::string archives = std::string(ESPALIER_TEST_DATA) + "/archives/";
    for (const char* name :
         {"zip.zip", "zip-stored.zip", "zip-pipe.zip", "bsdtar.zip", "python-stored.zip",
          "python-zip64.zip", "python-pipe.zip", "python-prefix.zip"}) {
        SCOPED_TRACE(name);
        for (const int piece : {1, 1000, 100000}) {
            ZipFileStream small(archives + name, "A.xml");
            EXPECT_EQ(ReadAll(small, piece), ArchiveData("a.xml"));
            ZipFileStream large(archives + name, "dir\\beds.xml");
            EXPECT_TRUE(ReadAll(large, piece) == ArchiveData("beds.xml"));
            ZipFileStream empty(archives + name, "empty.xml");
            EXPECT_EQ(ReadAll(empty, piece), "");
        }
    }
}

TEST_F(ZipFileStreamArchiveTest, NamesAreOnlyNames) {
    const std::string outside = Make("outside", "not this");
    const std::string stored = std::filesystem::path(outside).generic_string();  // with slashes
    const std::string archive =
        Make("names.zip", MakeZip({{.name = "/etc/hostname", .content = "absolute"},
                                   {.name = "../outside", .content = "up"},
                                   {.name = stored, .content = "there"},
                                   {.name = "C:/x", .content = "drive"},
                                   {.name = "\xC3\xA9.xml", .content = "accent"},
                                   {.name = std::string(255, 'n'), .content = "long"},
                                   {.name = std::string(300, 'm'), .content = "longer"}}));
    const struct {
        std::string member;
        const char* expected;
    } kCases[] = {{"/etc/hostname", "absolute"},
                  {"\\etc\\hostname", "absolute"},
                  {"../outside", "up"},
                  {"..\\OUTSIDE", "up"},
                  {outside, "there"},
                  {"c:\\X", "drive"},
                  {"\xC3\xA9.XML", "accent"},
                  {std::string(255, 'N'), "long"}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.member);
        ZipFileStream stream(archive, c.member);
        EXPECT_EQ(ReadAll(stream), c.expected);
    }
    // Case is that of ASCII letters; names of more than 255 bytes are not looked up.
    for (const std::string& name :
         {std::string("\xC3\x89.xml"), std::string("etc/hostname"), std::string("outside"),
          std::string(300, 'm'), std::string(256, 'm')}) {
        SCOPED_TRACE(name);
        EXPECT_THROW_FULL(ZipFileStream(archive, name), kNoMember, "", -1, -1);
    }
}

TEST_F(ZipFileStreamArchiveTest, ANameThatHoldsANulIsNotItsFirstPart) {
    const std::string archive = MakeZip({{.name = std::string("a\0b", 3), .content = "abc"}});
    EXPECT_EQ(Unzip(archive, "a"), (ReadOutcome{"", kNoMember}));
}

TEST_F(ZipFileStreamArchiveTest, TheNameInFrontOfTheDataIsTheSame) {
    std::string archive = MakeZip({{.name = "a", .content = "abc"}});
    archive[30] = 'b';
    EXPECT_EQ(Unzip(archive, "a"), (ReadOutcome{"", kNoMember}));
    EXPECT_EQ(Unzip(archive, "b"), (ReadOutcome{"", kNoMember}));
}

TEST_F(ZipFileStreamArchiveTest, TheFirstOfSeveralNamesCounts) {
    const std::string archive =
        MakeZip({{.name = "B", .content = "first"}, {.name = "b", .content = "second"}});
    EXPECT_EQ(Unzip(archive, "b").content, "first");
}

TEST_F(ZipFileStreamArchiveTest, SizesOf64Bits) {
    const std::vector<ZipEntry> entries = {
        {.name = "a", .content = Pattern(1000), .isZip64 = true},
        {.name = "b", .content = Pattern(1000), .method = 0, .isZip64 = true}};
    for (const char* member : {"a", "b"}) {
        const std::string archive = Make("64.zip", MakeZip(entries));
        ZipFileStream stream(archive, member);
        EXPECT_EQ(stream.Length(), 1000);
        EXPECT_TRUE(ReadAll(stream) == Pattern(1000));
    }
}

TEST_F(ZipFileStreamArchiveTest, WhatCannotBeReadIsNotFound) {
    const ZipEntry kEntries[] = {
        {.name = "a", .content = "secret", .method = 0, .flags = 1},  // encrypted
        {.name = "a", .content = "secret", .flags = 1},
        {.name = "a", .content = "patch", .flags = 0x20},
        {.name = "a", .content = "masked", .flags = 0x2000},
        {.name = "a", .content = "shrunk", .method = 1},
        {.name = "a", .content = "deflate64", .method = 9},
        {.name = "a", .content = "bzip2", .method = 12},
        {.name = "a", .content = "lzma", .method = 14},
        {.name = "a", .content = "zstd", .method = 93},
        {.name = "a", .content = "aes", .method = 99},
    };
    for (const ZipEntry& entry : kEntries) {
        SCOPED_TRACE(entry.content);
        EXPECT_EQ(Unzip(MakeZip({entry}), "a"), (ReadOutcome{"", kNoMember}));
    }
}

TEST_F(ZipFileStreamArchiveTest, FlagsThatChangeNothing) {
    for (const unsigned flags : {0x2U, 0x4U, 0x6U, 0x800U}) {
        EXPECT_EQ(Unzip(MakeZip({{.name = "a", .content = "abc", .flags = flags}}), "a"),
                  (ReadOutcome{"abc", ""}));
    }
}

TEST_F(ZipFileStreamArchiveTest, TheChecksumIsCheckedWhenAllHasBeenRead) {
    for (const unsigned method : {0U, 8U}) {
        const std::string content = Pattern(100000);
        const std::string archive =
            Make("bad.zip",
                 MakeZip({{.name = "a", .content = content, .method = method, .checksum = 12345}}));
        ZipFileStream stream(archive, "a");
        std::string bytes(content.size(), '\0');
        auto* const buffer = reinterpret_cast<unsigned char*>(bytes.data());
        EXPECT_EQ(stream.Read(buffer, 0, 99999), 99999);
        EXPECT_TRUE(bytes.substr(0, 99999) == content.substr(0, 99999));
        for (int i = 0; i < 3; ++i) {
            EXPECT_THROW_FULL(stream.Read(buffer, 0, 10), "Read error", "", -1, -1);
        }
        EXPECT_EQ(stream.Position(), 100000);
        EXPECT_EQ(stream.Seek(10, SeekOrigin::Begin), 10);
        EXPECT_EQ(stream.ReadByte(), static_cast<unsigned char>(content[10]));
        EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::End), "Read error", "", -1, -1);
    }
}

// Sizes that fit into 32 bits, and those that do not.
constexpr std::uint64_t kTooLarge[] = {1001, 0xFFFFFFFE, std::uint64_t{1} << 40U,
                                       std::uint64_t{1} << 63U,
                                       std::numeric_limits<std::uint64_t>::max()};

TEST_F(ZipFileStreamArchiveTest, ASizeThatIsStatedTooLargeIsAnError) {
    for (const std::uint64_t size : kTooLarge) {
        for (const bool isZip64 : {false, true}) {
            if (!isZip64 && size >= 0xFFFFFFFF) continue;
            SCOPED_TRACE(testing::Message() << size << ' ' << isZip64);
            const std::string archive = Make(
                "large.zip",
                MakeZip(
                    {{.name = "a", .content = Pattern(1000), .size = size, .isZip64 = isZip64}}));
            ZipFileStream stream(archive, "a");
            EXPECT_EQ(static_cast<std::uint64_t>(stream.Length()),
                      std::min<std::uint64_t>(size, std::numeric_limits<long>::max()));
            EXPECT_EQ(support::ReadToOutcome(stream, 300),
                      (ReadOutcome{Pattern(1000), "Read error"}));
            EXPECT_EQ(stream.Seek(0, SeekOrigin::Begin), 0);
            EXPECT_EQ(stream.Seek(1000, SeekOrigin::Begin), 1000);
            // Nothing is allocated by what is stated.
            EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::End), "Read error", "", -1, -1);
        }
    }
}

TEST_F(ZipFileStreamArchiveTest, ASizeThatIsStatedTooSmallIsAnError) {
    for (const bool isZip64 : {false, true}) {
        const ReadOutcome outcome = Unzip(
            MakeZip({{.name = "a", .content = Pattern(1000), .size = 999, .isZip64 = isZip64}}),
            "a");
        EXPECT_EQ(outcome, (ReadOutcome{Pattern(999), "Read error"}));
    }
}

TEST_F(ZipFileStreamArchiveTest, AStoredMemberHasOneSize) {
    std::vector<std::uint64_t> sizes = {999, 0};
    sizes.insert(sizes.end(), std::begin(kTooLarge), std::end(kTooLarge));
    for (const std::uint64_t size : sizes) {
        const ReadOutcome outcome = Unzip(MakeZip({{.name = "a",
                                                    .content = Pattern(1000),
                                                    .method = 0,
                                                    .size = size,
                                                    .isZip64 = true}}),
                                          "a");
        EXPECT_EQ(outcome, (ReadOutcome{"", kNoMember}));
    }
}

TEST_F(ZipFileStreamArchiveTest, DataThatCannotBeDecompressedAreANegativeNumber) {
    std::string bytes = MakeZip({{.name = "a", .content = Pattern(1000)}});
    bytes[31] = 0x07;  // the first byte of the data, behind a header of 30 bytes and the name
    const std::string archive = Make("broken.zip", bytes);
    ZipFileStream stream(archive, "a");
    unsigned char buffer[100];
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(stream.Read(buffer, 0, 100), -3);
    }
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_THROW_FULL(stream.Seek(10, SeekOrigin::Begin), "Read error", "", -1, -1);
    EXPECT_EQ(stream.Position(), 0);
}

TEST_F(ZipFileStreamArchiveTest, AnArchiveThatIsCutWhileItIsReadCannotBeReopened) {
    const std::string archive =
        Make("cut.zip", MakeZip({{.name = "a", .content = Pattern(500000), .method = 0}}));
    ZipFileStream stream(archive, "a");
    EXPECT_EQ(stream.ReadByte(), 0);
    EXPECT_EQ(stream.Seek(400000, SeekOrigin::Begin), 400000);
    Make("cut.zip", "");
    EXPECT_THROW_FULL(stream.Seek(0, SeekOrigin::Begin), "File seek failed", "", -1, -1);
    EXPECT_LT(stream.Read(std::make_unique<unsigned char[]>(10).get(), 0, 10), 0);
    EXPECT_EQ(stream.ReadByte(), -1);
    EXPECT_NO_THROW(stream.Close());
}

std::vector<std::string> SmallArchives() {
    return {MakeZip({{.name = "b", .content = "other", .method = 0},
                     {.name = "a.xml", .content = Pattern(100), .isZip64 = true}}),
            ArchiveData("zip-pipe.zip")};
}

bool IsClear(const ReadOutcome& outcome) {
    return outcome.error == "Archive not found" || outcome.error == kNoMember ||
           outcome.error == "Read error" || outcome.error.starts_with('-');
}

TEST_F(ZipFileStreamArchiveTest, EveryTruncationIsAnErrorOrHarmless) {
    for (const std::string& data : SmallArchives()) {
        const ReadOutcome whole = Unzip(data, "a.xml");
        ASSERT_EQ(whole.error, "");
        int errors = 0;
        for (std::size_t length = 0; length < data.size(); ++length) {
            SCOPED_TRACE(length);
            const ReadOutcome outcome = Unzip(data.substr(0, length), "a.xml");
            if (outcome.error.empty()) {
                EXPECT_TRUE(outcome.content == whole.content);
            } else {
                EXPECT_TRUE(IsClear(outcome)) << outcome.error;
                ++errors;
            }
        }
        EXPECT_GT(errors, static_cast<int>(data.size()) - 10);
    }
}

}  // namespace
