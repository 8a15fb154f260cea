// SPDX-License-Identifier: MIT
#include <espalier/io/FileStream.h>

#include "support/ExpectThrow.h"
#include "support/TemporaryDirectory.h"

#include <climits>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using IO::FileMode;
using IO::FileStream;
using IO::SeekOrigin;

constexpr unsigned kRead = 1;
constexpr unsigned kWrite = 2;
constexpr unsigned kReadWrite = 3;
constexpr unsigned kDenyAll = 0;
constexpr unsigned kDenyWriting = 1;
constexpr unsigned kDenyReading = 2;
constexpr unsigned kDenyNothing = 3;

void Write(IO::Stream& stream, std::string_view text) {
    stream.Write(reinterpret_cast<const unsigned char*>(text.data()), 0,
                 static_cast<int>(text.size()));
}

// Reads until the end in pieces of `piece` bytes.
std::string ReadAll(IO::Stream& stream, int piece = 100) {
    std::string all;
    std::string buffer(static_cast<std::size_t>(piece), '\0');
    for (;;) {
        const int count = stream.Read(reinterpret_cast<unsigned char*>(buffer.data()), 0, piece);
        if (count == 0) return all;
        all.append(buffer, 0, static_cast<std::size_t>(count));
    }
}

// Bytes in which every position of 256 KiB can be told from its neighbours.
std::string Pattern(std::size_t length) {
    std::string text(length, '\0');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>((i * 7 + i / 251) & 0xFF);
    return text;
}

class FileStreamTest : public testing::Test {
protected:
    std::string Path(const char* name) const { return directory_.Path(name); }
    std::string Make(const char* name, std::string_view content) const {
        return directory_.Make(name, content);
    }
    static std::string Content(const std::string& path) {
        return support::TemporaryDirectory::Content(path);
    }

private:
    support::TemporaryDirectory directory_;
};

struct ModeCase {
    FileMode mode;
    const char* onMissing;         // the message, or null
    const char* onPresent;         // the message, or null
    const char* presentPlusWrite;  // what "abcdef" is after "XY" was written to it
};

const ModeCase kModeCases[] = {
    {FileMode::Append, nullptr, nullptr, "abcdefXY"},
    {FileMode::Create, nullptr, nullptr, "XY"},
    {FileMode::CreateNew, nullptr, "File already exists", "abcdef"},
    {FileMode::Open, "File not found", nullptr, "XYcdef"},
    {FileMode::OpenOrCreate, nullptr, nullptr, "XYcdef"},
    {FileMode::Truncate, "File not found", nullptr, "XY"},
    // Any other number opens like Open.
    {static_cast<FileMode::FILE_MODE>(6), "File not found", nullptr, "XYcdef"},
    {static_cast<FileMode::FILE_MODE>(-1), "File not found", nullptr, "XYcdef"},
};

TEST_F(FileStreamTest, EachModeTreatsAMissingFileAsItSays) {
    for (const ModeCase& c : kModeCases) {
        for (const unsigned access : {kRead, kWrite, kReadWrite}) {
            SCOPED_TRACE(std::string(c.mode.ToString()) + " " + std::to_string(access));
            const std::string path = Path("missing");
            if (c.onMissing != nullptr) {
                EXPECT_THROW_FULL(FileStream(path, c.mode, access, kDenyNothing), c.onMissing, "",
                                  -1, -1);
                EXPECT_NE(::access(path.c_str(), F_OK), 0);
            } else {
                FileStream stream(path, c.mode, access, kDenyNothing);
                EXPECT_EQ(stream.Length(), 0);
                EXPECT_EQ(::access(path.c_str(), F_OK), 0);
                ::unlink(path.c_str());
            }
        }
    }
}

TEST_F(FileStreamTest, EachModeTreatsAPresentFileAsItSays) {
    for (const ModeCase& c : kModeCases) {
        for (const unsigned access : {kWrite, kReadWrite}) {
            SCOPED_TRACE(std::string(c.mode.ToString()) + " " + std::to_string(access));
            const std::string path = Make("present", "abcdef");
            if (c.onPresent != nullptr) {
                EXPECT_THROW_FULL(FileStream(path, c.mode, access, kDenyNothing), c.onPresent, "",
                                  -1, -1);
            } else {
                FileStream stream(path, c.mode, access, kDenyNothing);
                Write(stream, "XY");
                stream.Close();
            }
            EXPECT_EQ(Content(path), c.presentPlusWrite);
        }
    }
}

TEST_F(FileStreamTest, ReadOnlyAccessEmptiesAFileWhereTheModeSaysSo) {
    for (const FileMode mode : {FileMode(FileMode::Create), FileMode(FileMode::Truncate)}) {
        SCOPED_TRACE(mode.ToString());
        const std::string path = Make("file", "abcdef");
        FileStream stream(path, mode, kRead, kDenyNothing);
        EXPECT_FALSE(stream.CanWrite());
        EXPECT_EQ(stream.ReadByte(), -1);
        EXPECT_EQ(Content(path), "");
    }
}

TEST_F(FileStreamTest, AppendWritesAtTheEndWhereverThePositionIs) {
    const std::string path = Make("file", "abc");
    FileStream stream(path, FileMode::Append, kReadWrite, kDenyNothing);
    EXPECT_EQ(stream.Seek(0, SeekOrigin::Begin), 0);
    Write(stream, "d");
    stream.SetPosition(1);
    Write(stream, "e");
    EXPECT_EQ(Content(path), "abcde");
}

TEST_F(FileStreamTest, AccessIsOneToThreeAndShareZeroToThree) {
    const std::string path = Make("file", "abc");
    const struct {
        unsigned access;
        unsigned share;
        bool valid;
    } kCases[] = {
        {0, 3, false}, {1, 3, true},  {2, 3, true},         {3, 3, true},         {4, 3, false},
        {5, 3, false}, {1, 0, true},  {1, 1, true},         {1, 2, true},         {1, 4, false},
        {1, 5, false}, {0, 4, false}, {UINT_MAX, 3, false}, {1, UINT_MAX, false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::to_string(c.access) + ", " + std::to_string(c.share));
        if (c.valid) {
            FileStream stream(path, FileMode::Open, c.access, c.share);
            EXPECT_EQ(stream.CanRead(), c.access != kWrite);
            EXPECT_EQ(stream.CanWrite(), c.access != kRead);
            EXPECT_TRUE(stream.CanSeek());
        } else {
            EXPECT_THROW_FULL(FileStream(path, FileMode::Open, c.access, c.share),
                              "Invalid argument", "", -1, -1);
            // Access and share are looked at before the file is.
            EXPECT_THROW_FULL(FileStream(Path("missing"), FileMode::Open, c.access, c.share),
                              "Invalid argument", "", -1, -1);
        }
    }
    for (const unsigned access : {0u, 4u}) {
        EXPECT_THROW_FULL(FileStream(0, access, false), "Invalid argument", "", -1, -1);
        EXPECT_THROW_FULL(FileStream(stdin, access, false), "Invalid argument", "", -1, -1);
    }
}

TEST_F(FileStreamTest, OpenErrorsAreToldApart) {
    const std::string file = Make("file", "abc");
    const std::string directory = Path("directory");
    ASSERT_EQ(::mkdir(directory.c_str(), 0700), 0);
    const std::string loop = Path("loop");
    ASSERT_EQ(::symlink(loop.c_str(), loop.c_str()), 0);
    const struct {
        std::string name;
        unsigned access;
        const char* message;
    } kCases[] = {
        {Path("missing"), kRead, "File not found"},
        {"", kRead, "File not found"},
        {file + "/below", kRead, "File not found"},  // a part of the path is no directory
        {directory, kRead, "Access denied/sharing violation"},
        {directory, kWrite, "Access denied/sharing violation"},
        {loop, kRead, "File open error"},
        {Path(std::string(300, 'n').c_str()), kRead, "File open error"},  // too long a name
        {std::string("fi\0le", 5), kRead, "Invalid parameter(s)"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        EXPECT_THROW_FULL(FileStream(c.name, FileMode::Open, c.access, kDenyNothing), c.message, "",
                          -1, -1);
    }
    const char* none = nullptr;
    EXPECT_THROW_FULL(FileStream(none, FileMode::Open, kRead, kDenyNothing), "File not found", "",
                      -1, -1);
}

TEST_F(FileStreamTest, AFileWithoutPermissionIsAccessDenied) {
    if (::geteuid() == 0) GTEST_SKIP() << "root may read and write everything";
    const std::string path = Make("file", "abc");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    EXPECT_THROW_FULL(FileStream(path, FileMode::Open, kRead, kDenyNothing),
                      "Access denied/sharing violation", "", -1, -1);
}

TEST_F(FileStreamTest, ARunningProgramIsNotOpenedForWriting) {
    EXPECT_THROW_FULL(FileStream("/proc/self/exe", FileMode::Open, kWrite, kDenyNothing),
                      "Access denied/sharing violation", "", -1, -1);
}

TEST_F(FileStreamTest, TooManyOpenFilesAreToldSo) {
    const std::string path = Make("file", "abc");
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(next, 0);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(next);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_THROW_FULL(FileStream(path, FileMode::Open, kRead, kDenyNothing), "Too many files open",
                      "", -1, -1);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    ::close(next);
}

TEST_F(FileStreamTest, ANewFileBelongsToItsOwnerAlone) {
    const mode_t mask = ::umask(0);
    FileStream stream(Path("new"), FileMode::Create, kWrite, kDenyNothing);
    ::umask(mask);
    struct stat status = {};
    ASSERT_EQ(::stat(Path("new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(FileStreamTest, ADescriptorIsNotInheritedByOtherPrograms) {
    const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(next);
    FileStream stream(Make("file", "abc"), FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(::fcntl(next, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
}

struct Opener {
    unsigned access;
    unsigned share;
};

// Which lock an opener takes: 0 none, 1 shared, 2 exclusive.
int LockOf(Opener opener) {
    switch (opener.share) {
    case kDenyWriting: return opener.access == kRead ? 1 : 2;
    case kDenyNothing: return 0;
    default: return 2;
    }
}

TEST_F(FileStreamTest, ShareModesKeepOthersOut) {
    const std::string path = Make("file", "abc");
    int refused = 0;
    for (unsigned first = 0; first < 12; ++first) {
        for (unsigned second = 0; second < 12; ++second) {
            const Opener a = {first / 4 + 1, first % 4};
            const Opener b = {second / 4 + 1, second % 4};
            SCOPED_TRACE(testing::Message()
                         << "access " << a.access << " share " << a.share << ", then access "
                         << b.access << " share " << b.share);
            const bool conflict = LockOf(a) + LockOf(b) > 2;
            {
                const FileStream holder(path, FileMode::Open, a.access, a.share);
                if (conflict) {
                    ++refused;
                    EXPECT_THROW_FULL(FileStream(path, FileMode::Open, b.access, b.share),
                                      "Access denied/sharing violation", "", -1, -1);
                } else {
                    EXPECT_NO_THROW(FileStream(path, FileMode::Open, b.access, b.share));
                }
            }
            // Closing gives the lock back.
            EXPECT_NO_THROW(FileStream(path, FileMode::Open, b.access, b.share));
        }
    }
    // 8 exclusive openers against 9 that lock, and the shared one against the 8 exclusive ones.
    EXPECT_EQ(refused, 8 * 9 + 8);
}

TEST_F(FileStreamTest, ARefusedOpenDestroysNothing) {
    const std::string path = Make("file", "abc");
    const FileStream holder(path, FileMode::Open, kRead, kDenyWriting);
    for (const FileMode mode : {FileMode(FileMode::Create), FileMode(FileMode::Truncate)}) {
        SCOPED_TRACE(mode.ToString());
        EXPECT_THROW_FULL(FileStream(path, mode, kWrite, kDenyWriting),
                          "Access denied/sharing violation", "", -1, -1);
        EXPECT_EQ(Content(path), "abc");
    }
}

TEST_F(FileStreamTest, DevicesAreNeitherLockedNorEmptied) {
    FileStream first("/dev/null", FileMode::Create, kReadWrite, kDenyAll);
    FileStream second("/dev/null", FileMode::Truncate, kReadWrite, kDenyAll);
    Write(second, "abc");
    EXPECT_EQ(second.ReadByte(), -1);
    EXPECT_NO_THROW(second.Flush());
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

TEST_F(FileStreamTest, AFullDiskIsAWriteError) {
    FileStream stream("/dev/full", FileMode::Open, kWrite, kDenyNothing);
    EXPECT_THROW_FULL(stream.WriteByte('x'), "File write error", "", -1, -1);
}

TEST_F(FileStreamTest, FilesOverFourGibibytesKeepTheirPositions) {
    const std::string path = Path("large");
    constexpr long kFar = 5L * 1024 * 1024 * 1024;
    FileStream stream(path, FileMode::Create, kReadWrite, kDenyNothing);
    EXPECT_EQ(stream.Seek(kFar, SeekOrigin::Begin), kFar);
    stream.WriteByte('x');
    EXPECT_EQ(stream.Length(), kFar + 1);
    EXPECT_EQ(stream.Position(), kFar + 1);
    stream.Close();

    FileStream reader(path, FileMode::Open, kRead, kDenyNothing);
    EXPECT_EQ(reader.ReadByte(), 0);
    EXPECT_EQ(reader.Seek(kFar - 1, SeekOrigin::Current), kFar);
    EXPECT_EQ(reader.ReadByte(), 'x');
    EXPECT_EQ(reader.Position(), kFar + 1);
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
        EXPECT_EQ(all, content);
        EXPECT_EQ(stream.Length(), 200'001);
    }
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
        const unsigned reach = (state >> 18 & 3) == 0 ? 250'000 : 2000;
        const long offset =
            static_cast<long>(state >> 8 & 0xFFFFFF) % reach - static_cast<long>(reach / 3);
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
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    {
        FileStream last;
        {
            FileStream first(descriptor, kRead, true);
            last = first;
        }
        EXPECT_EQ(last.ReadByte(), 'a');
        EXPECT_NE(::fcntl(descriptor, F_GETFD), -1);
    }
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), -1);
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
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
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
    EXPECT_NE(::fcntl(descriptor, F_GETFD), -1);
    ::close(descriptor);
    EXPECT_EQ(Content(path), "axc");
}

TEST_F(FileStreamTest, AnOwnedDescriptorIsClosed) {
    const std::string path = Make("file", "abc");
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    FileStream stream(descriptor, kReadWrite, true);
    stream.WriteByte('x');
    stream.Close();
    EXPECT_EQ(::fcntl(descriptor, F_GETFD), -1);
    EXPECT_EQ(Content(path), "xbc");
    EXPECT_NO_THROW(stream.Close());
}

}  // namespace
