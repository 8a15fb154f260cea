// SPDX-License-Identifier: MIT
//
// Opening, reading, seeking, taking over. What archives may hold is in
// ZipFileStreamArchiveTest.cpp.
#include <espalier/io/ZipFileStream.h>

#include "support/Archives.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <climits>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

namespace {

using IO::SeekOrigin;
using IO::ZipFileStream;
using support::Pattern;
using support::ReadAll;

class ZipFileStreamTest : public support::FileTest {
protected:
    // An archive with a deflated and a stored member.
    std::string MakeArchive() const {
        return Make("a.zip", support::MakeZip({{.name = "a/b.xml", .content = Pattern(300000)},
                                               {.name = "stored", .content = "abc", .method = 0},
                                               {.name = "empty", .content = ""}}));
    }
};

constexpr char kNoArchive[] = "Archive not found";
constexpr char kNoMember[] = "File not found in archive";

TEST_F(ZipFileStreamTest, ReadsAMember) {
    const std::string archive = MakeArchive();
    for (const int piece : {1, 7, 1000, 1000000}) {
        ZipFileStream deflated(archive.c_str(), "a/b.xml");
        EXPECT_TRUE(ReadAll(deflated, piece) == Pattern(300000));
        ZipFileStream stored(astring(archive), astring("stored"));
        EXPECT_EQ(ReadAll(stored, piece), "abc");
        ZipFileStream empty(archive, std::string("empty"));
        EXPECT_EQ(ReadAll(empty, piece), "");
    }
}

TEST_F(ZipFileStreamTest, CanReadAndSeekAndNothingElse) {
    ZipFileStream closed;
    ZipFileStream open(MakeArchive(), "stored");
    for (ZipFileStream* stream : {&closed, &open}) {
        EXPECT_TRUE(stream->CanRead());
        EXPECT_TRUE(stream->CanSeek());
        EXPECT_FALSE(stream->CanWrite());
        EXPECT_NO_THROW(stream->WriteByte('x'));
        EXPECT_NO_THROW(stream->SetLength(1));
        EXPECT_NO_THROW(stream->Flush());
    }
    EXPECT_EQ(open.Length(), 3);
    EXPECT_EQ(ReadAll(open), "abc");
}

TEST_F(ZipFileStreamTest, LengthAndPositionAreThoseOfTheUncompressedData) {
    ZipFileStream stream(MakeArchive(), "a/b.xml");
    EXPECT_EQ(stream.Length(), 300000);
    EXPECT_EQ(stream.Position(), 0);
    unsigned char bytes[1000];
    EXPECT_EQ(stream.Read(bytes, 0, 1000), 1000);
    EXPECT_EQ(stream.Position(), 1000);
    EXPECT_EQ(stream.Length(), 300000);
    ReadAll(stream);
    EXPECT_EQ(stream.Position(), 300000);
    EXPECT_EQ(stream.Read(bytes, 0, 1000), 0);
    EXPECT_EQ(stream.Position(), 300000);
}

TEST_F(ZipFileStreamTest, ReadOnAClosedStreamGivesNothing) {
    unsigned char byte = 'x';
    ZipFileStream neverOpened;
    ZipFileStream closed(MakeArchive(), "stored");
    closed.Close();
    for (ZipFileStream* stream : {&neverOpened, &closed}) {
        EXPECT_EQ(stream->Read(&byte, 0, 1), 0);
        EXPECT_EQ(stream->ReadByte(), -1);
        EXPECT_EQ(stream->Length(), 0);
        EXPECT_EQ(stream->Position(), 0);
        EXPECT_EQ(stream->Seek(1, SeekOrigin::Begin), 0);
        EXPECT_EQ(stream->Seek(-1, SeekOrigin::Begin), 0);
        EXPECT_NO_THROW(stream->Close());
    }
    EXPECT_EQ(byte, 'x');
}

TEST_F(ZipFileStreamTest, ReadFoldsANegativeOffsetIntoTheCount) {
    ZipFileStream stream(MakeArchive(), "stored");
    unsigned char bytes[10] = {};
    EXPECT_EQ(stream.Read(bytes, 0, 0), 0);
    EXPECT_EQ(stream.Read(bytes, 0, -5), 0);
    EXPECT_EQ(stream.Read(bytes, 0, INT_MIN), 0);
    EXPECT_EQ(stream.Read(bytes, 4, 1), 1);
    EXPECT_EQ(bytes[4], 'a');
    EXPECT_EQ(stream.Read(bytes + 3, -3, 3), 0);
    EXPECT_EQ(stream.Read(bytes + 3, INT_MIN, 5), 0);
    EXPECT_EQ(stream.Read(bytes + 5, -2, 4), 2);
    EXPECT_EQ(bytes[3], 0);
    EXPECT_EQ(bytes[5], 'b');
    EXPECT_EQ(bytes[6], 'c');
    EXPECT_EQ(bytes[7], 0);
}

TEST_F(ZipFileStreamTest, WhatCannotBeOpenedIsAnError) {
    const std::string archive = MakeArchive();
    const std::string text = Make("text.zip", "This is no archive.");
    const std::string nothing = Make("nothing.zip", "");
    const struct {
        std::string archive;
        std::string member;
        const char* error;
    } kCases[] = {
        {Path("missing.zip"), "stored", kNoArchive},
        {Path(""), "stored", kNoArchive},
        {"", "stored", kNoArchive},
        {text, "stored", kNoArchive},
        {nothing, "stored", kNoArchive},
        {archive + std::string("\0x", 2), "stored", kNoArchive},
        {archive, "missing", kNoMember},
        {archive, "", kNoMember},
        {archive, "b.xml", kNoMember},
        {archive, "/stored", kNoMember},
        {archive, "stored/", kNoMember},
        {archive, "store", kNoMember},
        {archive, std::string("stored\0x", 8), kNoMember},
        {archive, std::string(255, 'x'), kNoMember},
        {archive, std::string(100000, 'x'), kNoMember},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.archive + " " + c.member.substr(0, 20));
        EXPECT_THROW_FULL(ZipFileStream(c.archive, c.member), c.error, "", -1, -1);
        ZipFileStream stream(archive, "stored");
        EXPECT_THROW_FULL(stream.Open(c.archive, c.member), c.error, "", -1, -1);
        EXPECT_EQ(stream.Length(), 0);  // what was open is closed
        EXPECT_EQ(stream.ReadByte(), -1);
    }
    const char* const null = nullptr;
    EXPECT_THROW_FULL(ZipFileStream(null, "stored"), kNoArchive, "", -1, -1);
    EXPECT_THROW_FULL(ZipFileStream(archive.c_str(), null), kNoMember, "", -1, -1);
}

TEST_F(ZipFileStreamTest, MembersAreFoundWithoutRegardToCaseAndBackslashes) {
    const std::string archive = MakeArchive();
    for (const char* name : {"a/b.xml", "a\\b.xml", "A/B.XML", "A\\b.Xml"}) {
        SCOPED_TRACE(name);
        ZipFileStream stream(archive, name);
        EXPECT_EQ(stream.Length(), 300000);
    }
}

TEST_F(ZipFileStreamTest, OpenClosesWhatWasOpen) {
    const std::string archive = MakeArchive();
    ZipFileStream stream(archive, "a/b.xml");
    stream.ReadByte();
    stream.Open(archive.c_str(), "stored");
    EXPECT_EQ(stream.Position(), 0);
    EXPECT_EQ(ReadAll(stream), "abc");
    stream.Close();
    stream.Open(astring(archive), astring("A\\B.xml"));
    EXPECT_EQ(stream.Length(), 300000);
}

TEST_F(ZipFileStreamTest, TheFileIsClosedWithTheStreamAndWhenOpeningFails) {
    const auto openFiles = [] {
        const auto files = std::filesystem::directory_iterator("/proc/self/fd");
        return std::distance(begin(files), end(files));
    };
    const std::string archive = MakeArchive();
    const std::string text = Make("text.zip", "This is no archive.");
    const auto before = openFiles();
    ZipFileStream stream(archive, std::string("stored"));
    EXPECT_EQ(openFiles(), before + 1);
    stream.Open(archive, std::string("empty"));
    EXPECT_EQ(openFiles(), before + 1);
    stream.Close();
    EXPECT_EQ(openFiles(), before);
    EXPECT_THROW(stream.Open(archive, std::string("missing")), Xml::Exception);
    EXPECT_THROW(stream.Open(text, std::string("stored")), Xml::Exception);
    EXPECT_EQ(openFiles(), before);
    { const ZipFileStream destroyed(archive, std::string("stored")); }
    EXPECT_EQ(openFiles(), before);
}

TEST_F(ZipFileStreamTest, DeliberateTheNamesStayThoseOfTheFirstMember) {
    const std::string archive = MakeArchive();
    const std::string other = Make("b.zip", support::MakeZip({{.name = "c", .content = "x"}}));
    ZipFileStream stream;
    EXPECT_EQ(stream.ArchiveName(), "");
    EXPECT_EQ(stream.MemberName(), "");
    EXPECT_THROW(stream.Open(archive, std::string("missing")), Xml::Exception);
    EXPECT_EQ(stream.ArchiveName(), "");
    EXPECT_EQ(stream.MemberName(), "");
    stream.Open(archive, std::string("A\\B.xml"));
    EXPECT_EQ(stream.ArchiveName(), archive);
    EXPECT_EQ(stream.MemberName(), "A\\B.xml");
    stream.Close();
    stream.Open(other, std::string("c"));
    EXPECT_EQ(ReadAll(stream), "x");
    EXPECT_EQ(stream.ArchiveName(), archive);
    EXPECT_EQ(stream.MemberName(), "A\\B.xml");
}

TEST_F(ZipFileStreamTest, SeekStaysWithinTheMember) {
    const std::string archive = MakeArchive();
    const struct {
        long offset;
        SeekOrigin origin;
        long expected;  // from 1000 on, of 300000
    } kCases[] = {
        {0, SeekOrigin::Begin, 0},
        {500, SeekOrigin::Begin, 500},
        {1000, SeekOrigin::Begin, 1000},
        {200000, SeekOrigin::Begin, 200000},
        {300000, SeekOrigin::Begin, 300000},
        {300001, SeekOrigin::Begin, 1000},
        {LONG_MAX, SeekOrigin::Begin, 1000},
        {-1, SeekOrigin::Begin, 1000},
        {LONG_MIN, SeekOrigin::Begin, 1000},
        {0, SeekOrigin::Current, 1000},
        {-1000, SeekOrigin::Current, 0},
        {-1001, SeekOrigin::Current, 1000},
        {5, SeekOrigin::Current, 1005},
        {299000, SeekOrigin::Current, 300000},
        {299001, SeekOrigin::Current, 1000},
        {LONG_MAX, SeekOrigin::Current, 1000},
        {LONG_MIN, SeekOrigin::Current, 1000},
        {0, SeekOrigin::End, 300000},
        {-1, SeekOrigin::End, 299999},
        {-300000, SeekOrigin::End, 0},
        {-300001, SeekOrigin::End, 1000},
        {1, SeekOrigin::End, 1000},
        {LONG_MAX, SeekOrigin::End, 1000},
        {LONG_MIN, SeekOrigin::End, 1000},
        {5, static_cast<SeekOrigin::SEEK_ORIGIN>(7), 1000},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << ' ' << c.origin.ToString());
        ZipFileStream stream(archive, "a/b.xml");
        unsigned char bytes[1000];
        ASSERT_EQ(stream.Read(bytes, 0, 1000), 1000);
        EXPECT_EQ(stream.Seek(c.offset, c.origin), c.expected);
        EXPECT_EQ(stream.Position(), c.expected);
        EXPECT_TRUE(ReadAll(stream) ==
                    Pattern(300000).substr(static_cast<std::size_t>(c.expected)));
        EXPECT_EQ(stream.Seek(0, SeekOrigin::Begin), 0);  // also from the end
        EXPECT_TRUE(ReadAll(stream) == Pattern(300000));
    }
}

TEST_F(ZipFileStreamTest, ForwardReadsInPiecesThroughRead) {
    class Counting : public ZipFileStream {
    public:
        using ZipFileStream::ZipFileStream;
        int Read(unsigned char* buffer, int offset, int count) override {
            counts += std::to_string(count) + " ";
            return ZipFileStream::Read(buffer, offset, count);
        }
        std::string counts;
    };
    Counting stream(MakeArchive(), "a/b.xml");
    stream.Seek(100, SeekOrigin::Begin);
    EXPECT_EQ(std::exchange(stream.counts, ""), "100 ");
    stream.Seek(100, SeekOrigin::Begin);
    EXPECT_EQ(std::exchange(stream.counts, ""), "");
    stream.Seek(0, SeekOrigin::Begin);
    EXPECT_EQ(std::exchange(stream.counts, ""), "");
    stream.Seek(0, SeekOrigin::End);
    EXPECT_EQ(std::exchange(stream.counts, ""), "65536 65536 65536 65536 37856 ");
}

TEST_F(ZipFileStreamTest, ACopyTakesOverMemberAndNames) {
    const std::string archive = MakeArchive();
    ZipFileStream first(archive, "stored");
    EXPECT_EQ(first.ReadByte(), 'a');
    ZipFileStream second(first);
    EXPECT_EQ(first.Length(), 0);
    EXPECT_EQ(first.MemberName(), "");
    EXPECT_EQ(second.MemberName(), "stored");
    EXPECT_EQ(second.ArchiveName(), archive);
    EXPECT_EQ(second.ReadByte(), 'b');
    ZipFileStream third(std::move(second));
    EXPECT_EQ(third.ReadByte(), 'c');

    ZipFileStream other(archive, "a/b.xml");
    other = third;
    EXPECT_EQ(other.Position(), 3);
    EXPECT_EQ(other.MemberName(), "stored");
    EXPECT_EQ(third.Length(), 0);
    ZipFileStream& same = other;
    other = same;
    EXPECT_EQ(other.Position(), 3);
    EXPECT_EQ(other.MemberName(), "stored");
    third = std::move(other);
    EXPECT_EQ(third.Length(), 3);
    third = ZipFileStream();
    EXPECT_EQ(third.Length(), 0);
    first.Open(archive.c_str(), "stored");  // one that was copied from can be used again
    EXPECT_EQ(ReadAll(first), "abc");
}

}  // namespace
