// SPDX-License-Identifier: MIT
#include <espalier/io/FileStream.h>

#include "support/Descriptor.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <climits>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using IO::FileMode;
using IO::FileStream;
using IO::SeekOrigin;
using support::kDenyAll;
using support::kDenyNothing;
using support::kDenyReading;
using support::kRead;
using support::kReadWrite;
using support::kWrite;
using support::Pattern;
using support::ReadAll;
using support::Write;

class FileStreamTest : public support::FileTest {};

// A descriptor of a file in the place of the standard input, which comes back in the end.
class StandardInput {
public:
    explicit StandardInput(const std::string& path) : kept_(::dup(0)) {
        const int opened = ::open(path.c_str(), O_RDONLY | support::kDescriptorFlags);
        isThere_ = ::dup2(opened, 0) == 0;
        ::close(opened);
    }
    ~StandardInput() {
        ::dup2(kept_, 0);
        ::close(kept_);
    }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

    bool IsThere() const { return isThere_; }

private:
    int kept_;
    bool isThere_ = false;
};

TEST_F(FileStreamTest, DescriptorZeroIsOne) {
    const StandardInput input(Make("file", "x"));
    ASSERT_TRUE(input.IsThere());
    FileStream stream(0, 1, false);
    EXPECT_EQ(stream.ReadByte(), 'x');
}

TEST_F(FileStreamTest, ReadsWritesAndSeeks) {
    FileStream stream(Path("file"), FileMode::Create, kReadWrite, kDenyReading);
    EXPECT_EQ(stream.Name(), Path("file"));
    Write(stream, "abcdef");
    EXPECT_EQ(stream.Position(), 6);
    EXPECT_EQ(stream.Length(), 6);
    EXPECT_EQ(stream.Position(), 6);
    EXPECT_EQ(stream.ReadByte(), -1);
    const struct {
        long offset;
        SeekOrigin origin;
        long expected;
        int byte;  // what is read there
    } kCases[] = {
        {0, SeekOrigin::Begin, 0, 'a'},
        {2, SeekOrigin::Begin, 2, 'c'},
        {1, SeekOrigin::Current, 4, 'e'},  // the read before moved on by 1
        {-3, SeekOrigin::Current, 2, 'c'},
        {0, SeekOrigin::End, 6, -1},
        {-1, SeekOrigin::End, 5, 'f'},
        {1, static_cast<SeekOrigin::SEEK_ORIGIN>(7), 1, 'b'},
        {9, SeekOrigin::Begin, 9, -1},
        {-1, SeekOrigin::Begin, -1, -1},  // refused: nothing moves
        {-20, SeekOrigin::Current, -1, -1},
        {LONG_MAX, SeekOrigin::Current, -1, -1},
        {-9, SeekOrigin::Current, 0, 'a'},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.offset << " from " << c.origin.ToString());
        EXPECT_EQ(stream.Seek(c.offset, c.origin), c.expected);
        EXPECT_EQ(stream.ReadByte(), c.byte);
    }
}

TEST_F(FileStreamTest, ReadTakesTheOffsetAsItIs) {
    FileStream stream(Make("file", "abcdef"), FileMode::Open, kRead, kDenyNothing);
    unsigned char buffer[8] = {};
    EXPECT_EQ(stream.Read(buffer, 2, 3), 3);
    EXPECT_EQ(std::string_view(reinterpret_cast<char*>(buffer), 6),
              std::string_view("\0\0abc\0", 6));
    // A negative offset is not folded into the count: the bytes go before the pointer.
    EXPECT_EQ(stream.Read(buffer + 4, -4, 2), 2);
    EXPECT_EQ(std::string_view(reinterpret_cast<char*>(buffer), 6), std::string_view("deabc\0", 6));
    EXPECT_EQ(stream.Read(buffer, 0, 0), 0);
    EXPECT_EQ(stream.Read(buffer, 0, -1), 0);
    EXPECT_EQ(stream.Position(), 5);
}

TEST_F(FileStreamTest, WriteOfNothingDoesNothing) {
    const std::string path = Make("file", "abc");
    FileStream stream(path, FileMode::Open, kWrite, kDenyNothing);
    const unsigned char byte = 'x';
    stream.Write(&byte, 0, 0);
    stream.Write(&byte, 0, -1);
    stream.Close();
    EXPECT_NO_THROW(stream.Write(&byte, 0, 0));
    EXPECT_EQ(Content(path), "abc");
}

TEST_F(FileStreamTest, AReadOnlyStreamRefusesToWrite) {
    FileStream stream(Make("file", "abc"), FileMode::Open, kRead, kDenyNothing);
    const unsigned char byte = 'x';
    EXPECT_THROW_FULL(stream.Write(&byte, 0, 1), "Write not supported", "", -1, -1);
    EXPECT_THROW_FULL(stream.Write(&byte, 0, 0), "Write not supported", "", -1, -1);
    EXPECT_THROW_FULL(stream.SetLength(1), "Write not supported", "", -1, -1);
}

TEST_F(FileStreamTest, AWriteOnlyStreamFailsToRead) {
    FileStream stream(Make("file", "abc"), FileMode::Open, kWrite, kDenyNothing);
    EXPECT_FALSE(stream.CanRead());
    EXPECT_THROW_FULL(stream.ReadByte(), "File read error", "", -1, -1);
}

TEST_F(FileStreamTest, SetLengthCutsAndExtends) {
    const std::string path = Make("file", "abcdef");
    FileStream stream(path, FileMode::Open, kReadWrite, kDenyNothing);
    stream.SetPosition(5);
    stream.SetLength(3);
    EXPECT_EQ(stream.Position(), 5);
    EXPECT_EQ(Content(path), "abc");
    stream.SetLength(5);
    EXPECT_EQ(Content(path), std::string("abc\0\0", 5));
    EXPECT_THROW_FULL(stream.SetLength(-1), "Invalid argument", "", -1, -1);
}

TEST_F(FileStreamTest, SetLengthLooksAtItsArgumentThenAtSeekingThenAtWriting) {
    class Unseekable : public FileStream {
    public:
        using FileStream::FileStream;
        bool CanSeek() const override { return false; }
    };
    const std::string path = Make("file", "abc");
    Unseekable stream(path, FileMode::Open, kRead, kDenyNothing);
    EXPECT_THROW_FULL(stream.SetLength(-1), "Invalid argument", "", -1, -1);
    EXPECT_THROW_FULL(stream.SetLength(1), "Seek not supported", "", -1, -1);
}

TEST_F(FileStreamTest, WithNothingOpenTheOperationsSaySo) {
    const std::string path = Make("file", "abc");
    FileStream never;
    FileStream closed(path, FileMode::Open, kReadWrite, kDenyNothing);
    closed.Close();
    FileStream noDescriptor(-1, kReadWrite, true);
    FileStream noHandle(static_cast<std::FILE*>(nullptr), kReadWrite, true);
    unsigned char buffer[4] = {};
    int index = 0;
    for (FileStream* stream : {&never, &closed, &noDescriptor, &noHandle}) {
        SCOPED_TRACE(index++);
        EXPECT_THROW_FULL(stream->Length(), "File not open!", "", -1, -1);
        EXPECT_THROW_FULL(stream->Position(), "File not open!", "", -1, -1);
        EXPECT_THROW_FULL(stream->Seek(0, SeekOrigin::Begin), "File not open!", "", -1, -1);
        EXPECT_THROW_FULL(stream->Read(buffer, 0, 1), "File not open!", "", -1, -1);
        EXPECT_THROW_FULL(stream->Flush(), "File not open!", "", -1, -1);
        EXPECT_EQ(stream->Read(buffer, 0, 0), 0);
        EXPECT_TRUE(stream->CanSeek());
        EXPECT_NO_THROW(stream->Close());
        if (stream == &never) {
            EXPECT_THROW_FULL(stream->Write(buffer, 0, 1), "Write not supported", "", -1, -1);
            EXPECT_THROW_FULL(stream->SetLength(0), "Write not supported", "", -1, -1);
        } else {
            EXPECT_THROW_FULL(stream->Write(buffer, 0, 1), "File not open!", "", -1, -1);
            EXPECT_NO_THROW(stream->SetLength(0));
        }
    }
    EXPECT_EQ(never.Name(), "");
    EXPECT_EQ(closed.Name(), path);
    EXPECT_EQ(Content(path), "abc");
}

TEST_F(FileStreamTest, ReadingAheadGivesTheSameBytesForReadsOfAnySize) {
    const std::string content = Pattern(200'001);
    const std::string path = Make("file", content);
    for (const int piece : {1, 7, 1000, 1024, 65535, 65536, 65537, 200'001, 300'000}) {
        SCOPED_TRACE(piece);
        FileStream stream(path, FileMode::Open, kRead, kDenyNothing);
        std::string all(content.size(), '\0');
        long position = 0;
        while (position < 200'001) {
            const int count =
                stream.Read(reinterpret_cast<unsigned char*>(all.data()) + position, 0,
                            static_cast<int>(std::min<long>(piece, 200'001 - position)));
            // A read of a regular file falls short only at its end.
            ASSERT_EQ(count, std::min<long>(piece, 200'001 - position));
            position += count;
            ASSERT_EQ(stream.Position(), position);
        }
        EXPECT_EQ(stream.ReadByte(), -1);
        EXPECT_TRUE(all == content);
        EXPECT_EQ(stream.Length(), 200'001);
    }
}

TEST_F(FileStreamTest, ALargeReadTakesWhatIsReadAheadAndTheRest) {
    const std::string content = Pattern(200'000);
    FileStream stream(Make("file", content), FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(stream.ReadByte(), static_cast<unsigned char>(content[0]));
    std::string all(300'000, '\0');
    auto* buffer = reinterpret_cast<unsigned char*>(all.data());
    EXPECT_EQ(stream.Read(buffer, 0, 300'000), 199'999);
    EXPECT_TRUE(all.substr(0, 199'999) == content.substr(1));
    EXPECT_EQ(stream.Read(buffer, 0, 300'000), 0);
    stream.SetPosition(199'000);
    EXPECT_EQ(stream.ReadByte(), static_cast<unsigned char>(content[199'000]));
    EXPECT_EQ(stream.Read(buffer, 0, 300'000), 999);  // all that is left was read ahead
    EXPECT_EQ(stream.Position(), 200'000);
}

TEST_F(FileStreamTest, ReadingAheadSeeksLikeAPlainFile) {
    const std::string content = Pattern(200'000);
    const std::string path = Make("file", content);
    FileStream ahead(path, FileMode::Open, kRead, kDenyNothing);
    FileStream plain(path, FileMode::Open, kReadWrite, kDenyNothing);
    unsigned state = 1;
    for (int step = 0; step < 5000; ++step) {
        state = state * 1103515245u + 12345u;
        const auto origin = static_cast<SeekOrigin::SEEK_ORIGIN>(state >> 16 & 3);
        const long reach = (state >> 18 & 3) == 0 ? 250'000 : 2000;
        const long offset = static_cast<long>(state >> 8 & 0xFFFFFF) % reach - reach / 3;
        SCOPED_TRACE(testing::Message() << step << ": " << offset << " from " << origin);
        ASSERT_EQ(ahead.Seek(offset, origin), plain.Seek(offset, origin));
        ASSERT_EQ(ahead.Position(), plain.Position());
        unsigned char a[64] = {};
        unsigned char b[64] = {};
        const int count = static_cast<int>(state >> 20 & 63);
        ASSERT_EQ(ahead.Read(a, 0, count), plain.Read(b, 0, count));
        ASSERT_EQ(std::string_view(reinterpret_cast<char*>(a), 64),
                  std::string_view(reinterpret_cast<char*>(b), 64));
    }
}

TEST_F(FileStreamTest, ReadingGoesOnWhenAFileHasGrown) {
    const std::string path = Make("file", "abc");
    FileStream reader(path, FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(ReadAll(reader), "abc");
    FileStream writer(path, FileMode::Append, kWrite, kDenyNothing);
    Write(writer, "def");
    EXPECT_EQ(ReadAll(reader), "def");
}

TEST_F(FileStreamTest, CopiesShareOneOpenFile) {
    const std::string path = Make("file", "abcdef");
    FileStream first(path, FileMode::Open, kRead, kDenyNothing);
    FileStream second(first);
    EXPECT_EQ(second.Name(), path);
    EXPECT_EQ(first.ReadByte(), 'a');
    EXPECT_EQ(second.ReadByte(), 'b');
    EXPECT_EQ(first.Position(), 2);
    second.Close();
    EXPECT_THROW_FULL(first.ReadByte(), "File not open!", "", -1, -1);
    EXPECT_NO_THROW(first.Close());
}

TEST_F(FileStreamTest, TheLastOfTheCopiesClosesTheFile) {
    const std::string path = Make("file", "abc");
    const int descriptor = ::open(path.c_str(), O_RDONLY | support::kDescriptorFlags);
    {
        FileStream last;
        {
            FileStream first(descriptor, kRead, true);
            last = first;
        }
        EXPECT_EQ(last.ReadByte(), 'a');
        EXPECT_TRUE(support::IsOpen(descriptor));
    }
    EXPECT_FALSE(support::IsOpen(descriptor));
}

TEST_F(FileStreamTest, AssignmentClosesWhatTheTargetHad) {
    const std::string one = Make("one", "1");
    const std::string two = Make("two", "2");
    FileStream first(one, FileMode::Open, kRead, kDenyAll);
    FileStream second(two, FileMode::Open, kRead, kDenyNothing);
    first = second;
    EXPECT_EQ(first.Name(), two);
    EXPECT_EQ(first.ReadByte(), '2');
    EXPECT_NO_THROW(FileStream(one, FileMode::Open, kWrite, kDenyAll));  // the lock is gone

    FileStream& same = first;
    first = same;
    first = second;  // the same open file: it stays open
    EXPECT_EQ(first.Seek(0, SeekOrigin::Begin), 0);
    EXPECT_EQ(second.ReadByte(), '2');
}

TEST_F(FileStreamTest, ADescriptorThatIsNotOwnedStaysOpen) {
    const std::string path = Make("file", "abc");
    const int descriptor = ::open(path.c_str(), O_RDWR | support::kDescriptorFlags);
    ASSERT_GE(descriptor, 0);
    {
        FileStream stream(descriptor, kReadWrite, false);
        FileStream copy(stream);
        EXPECT_EQ(stream.Name(), "");
        EXPECT_EQ(stream.ReadByte(), 'a');
        // The caller's descriptor is not read ahead: its position is the stream's.
        EXPECT_EQ(::lseek(descriptor, 0, SEEK_CUR), 1);
        stream.WriteByte('x');
        stream.Close();
        EXPECT_THROW_FULL(stream.ReadByte(), "File not open!", "", -1, -1);
        EXPECT_EQ(copy.ReadByte(), 'c');  // whoever owns nothing closes nothing for others
    }
    EXPECT_TRUE(support::IsOpen(descriptor));
    ::close(descriptor);
    EXPECT_EQ(Content(path), "axc");
}

TEST_F(FileStreamTest, AnOwnedDescriptorIsClosed) {
    const std::string path = Make("file", "abc");
    const int descriptor = ::open(path.c_str(), O_RDWR | support::kDescriptorFlags);
    FileStream stream(descriptor, kReadWrite, true);
    stream.WriteByte('x');
    stream.Close();
    EXPECT_FALSE(support::IsOpen(descriptor));
    EXPECT_EQ(Content(path), "xbc");
    EXPECT_NO_THROW(stream.Close());
}

}  // namespace
