// SPDX-License-Identifier: MIT
//
// Streams over the standard handles of the caller's.
#include <espalier/io/FileStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace {

using IO::FileStream;
using IO::SeekOrigin;
using support::kRead;
using support::kReadWrite;
using support::kWrite;
using support::ReadAll;
using support::Write;

class FileStreamHandleTest : public support::FileTest {
protected:
    std::FILE* Open(const char* content, const char* mode) const {
        std::FILE* handle = std::fopen(Make("file", content).c_str(), mode);
        EXPECT_NE(handle, nullptr);
        return handle;
    }
    std::string Content() const { return FileTest::Content(Path("file")); }
};

TEST_F(FileStreamHandleTest, ReadsAndSeeks) {
    FileStream stream(Open("abcdef", "rb"), kRead, true);
    EXPECT_TRUE(stream.CanRead());
    EXPECT_TRUE(stream.CanSeek());
    EXPECT_FALSE(stream.CanWrite());
    EXPECT_EQ(stream.Name(), "");
    EXPECT_EQ(stream.ReadByte(), 'a');
    EXPECT_EQ(stream.Length(), 6);
    EXPECT_EQ(stream.Position(), 1);
    EXPECT_EQ(stream.Seek(2, SeekOrigin::Current), 3);
    EXPECT_EQ(stream.ReadByte(), 'd');
    EXPECT_EQ(stream.Seek(-1, SeekOrigin::End), 5);
    EXPECT_EQ(ReadAll(stream), "f");
    EXPECT_EQ(stream.Seek(1, SeekOrigin::Begin), 1);
    EXPECT_EQ(stream.Seek(2, static_cast<SeekOrigin::SEEK_ORIGIN>(7)), 2);
    EXPECT_EQ(stream.Seek(-1, SeekOrigin::Begin), -1);
    EXPECT_EQ(stream.Position(), 2);
    unsigned char buffer[8] = {};
    EXPECT_EQ(stream.Read(buffer, 1, 7), 4);  // a short read at the end is no error
    EXPECT_EQ(buffer[0], 0);
    EXPECT_EQ(buffer[1], 'c');
    EXPECT_EQ(stream.Read(buffer, 0, 0), 0);
}

TEST_F(FileStreamHandleTest, ReadsAndWritesMayAlternate) {
    FileStream stream(Open("abcdef", "r+b"), kReadWrite, true);
    EXPECT_EQ(stream.ReadByte(), 'a');
    stream.WriteByte('X');
    EXPECT_EQ(stream.ReadByte(), 'c');
    stream.WriteByte('Y');
    EXPECT_EQ(stream.Length(), 6);
    stream.WriteByte('Z');
    EXPECT_EQ(stream.ReadByte(), 'f');
    EXPECT_EQ(stream.ReadByte(), -1);
    stream.WriteByte('!');
    stream.Close();
    EXPECT_EQ(Content(), "aXcYZf!");
}

TEST_F(FileStreamHandleTest, FlushHandsTheBytesOn) {
    std::FILE* handle = Open("", "wb");
    FileStream stream(handle, kWrite, false);
    Write(stream, "abc");
    EXPECT_EQ(Content(), "");
    stream.Flush();
    EXPECT_EQ(Content(), "abc");
    stream.Close();
    EXPECT_THROW_FULL(stream.Flush(), "File not open!", "", -1, -1);
    // What is not owned stays open.
    EXPECT_EQ(std::fputc('d', handle), 'd');
    EXPECT_EQ(std::fclose(handle), 0);
    EXPECT_EQ(Content(), "abcd");
}

TEST_F(FileStreamHandleTest, SetLengthDoesNothing) {
    FileStream stream(Open("abc", "r+b"), kReadWrite, true);
    stream.SetLength(1);
    EXPECT_EQ(stream.Length(), 3);
    EXPECT_THROW_FULL(stream.SetLength(-1), "Invalid argument", "", -1, -1);
}

TEST_F(FileStreamHandleTest, AReadErrorIsToldAndLeavesNoTrace) {
#ifdef _WIN32
    GTEST_SKIP() << "the C runtime of wine takes a handle that cannot be read for an empty file";
#endif
    std::FILE* handle = Open("abc", "wb");  // a handle that cannot be read
    FileStream stream(handle, kRead, true);
    EXPECT_THROW_FULL(stream.ReadByte(), "File read error", "", -1, -1);
}

TEST_F(FileStreamHandleTest, AnErrorOfAnEarlierCallIsNotOneOfTheNext) {
    std::FILE* handle = Open("abc", "rb");
    EXPECT_EQ(std::fputc('x', handle), EOF);  // sets the handle's error flag
    FileStream stream(handle, kRead, true);
    EXPECT_EQ(ReadAll(stream), "abc");
}

TEST_F(FileStreamHandleTest, AWriteErrorIsTold) {
    std::FILE* handle = Open("abc", "rb");  // a handle that cannot be written
    FileStream stream(handle, kWrite, true);
    EXPECT_THROW_FULL(stream.WriteByte('x'), "File write error", "", -1, -1);
}

TEST_F(FileStreamHandleTest, CopiesShareOneHandle) {
    FileStream first(Open("abc", "rb"), kRead, true);
    FileStream second(first);
    EXPECT_EQ(first.ReadByte(), 'a');
    EXPECT_EQ(second.ReadByte(), 'b');
    first.Close();
    EXPECT_THROW_FULL(second.ReadByte(), "File not open!", "", -1, -1);
}

}  // namespace
