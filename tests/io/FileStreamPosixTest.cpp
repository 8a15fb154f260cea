// SPDX-License-Identifier: MIT
//
// Files as POSIX has them: rights, locks, devices, positions of 64 bits.
#include <espalier/io/FileStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using IO::FileMode;
using IO::FileStream;
using IO::SeekOrigin;
using support::kDenyAll;
using support::kDenyNothing;
using support::kDenyWriting;
using support::kRead;
using support::kReadWrite;
using support::kWrite;
using support::Write;

class FileStreamPosixTest : public support::FileTest {};

TEST_F(FileStreamPosixTest, ALoopOfLinksAndTooLongANameAreOtherErrors) {
    const std::string loop = Path("loop");
    ASSERT_EQ(::symlink(loop.c_str(), loop.c_str()), 0);
    for (const std::string& name : {loop, Path(std::string(300, 'n'))}) {
        SCOPED_TRACE(name);
        EXPECT_THROW_FULL(FileStream(name, FileMode::Open, kRead, kDenyNothing), "File open error",
                          "", -1, -1);
    }
}

TEST_F(FileStreamPosixTest, AFileWithoutPermissionIsAccessDenied) {
    const std::string path = Make("file", "abc");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    ASSERT_EQ(::chmod(Path("").c_str(), 0755), 0);
    const uid_t user = ::geteuid();
    constexpr uid_t kNobody = 65534;
    // Root may read and write everything.
    if (user == 0) {
        ASSERT_EQ(::seteuid(kNobody), 0);
    }
    EXPECT_THROW_FULL(FileStream(path, FileMode::Open, kRead, kDenyNothing),
                      "Access denied/sharing violation", "", -1, -1);
    ASSERT_EQ(::seteuid(user), 0);
}

TEST_F(FileStreamPosixTest, ARunningProgramIsNotOpenedForWriting) {
    EXPECT_THROW_FULL(FileStream("/proc/self/exe", FileMode::Open, kWrite, kDenyNothing),
                      "Access denied/sharing violation", "", -1, -1);
}

TEST_F(FileStreamPosixTest, TooManyOpenFilesAreToldSo) {
    const std::string path = Make("file", "abc");
    // A sanitizer that meets a class for the first time wants to open files itself.
    EXPECT_EQ(FileStream(path, FileMode::Open, kRead, kDenyNothing).Length(), 3);
    EXPECT_THROW_FULL(FileStream(Path("missing"), FileMode::Open, kRead, kDenyNothing),
                      "File not found", "", -1, -1);
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

TEST_F(FileStreamPosixTest, ANewFileBelongsToItsOwnerAlone) {
    const mode_t mask = ::umask(0);
    FileStream stream(Path("new"), FileMode::Create, kWrite, kDenyNothing);
    ::umask(mask);
    struct stat status = {};
    ASSERT_EQ(::stat(Path("new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(FileStreamPosixTest, ADescriptorIsNotInheritedByOtherPrograms) {
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

TEST_F(FileStreamPosixTest, ShareModesKeepOthersOut) {
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

TEST_F(FileStreamPosixTest, DevicesAreNeitherLockedNorEmptied) {
    FileStream first("/dev/null", FileMode::Create, kReadWrite, kDenyAll);
    FileStream second("/dev/null", FileMode::Truncate, kReadWrite, kDenyAll);
    Write(second, "abc");
    EXPECT_EQ(second.ReadByte(), -1);
    EXPECT_NO_THROW(second.Flush());
}

TEST_F(FileStreamPosixTest, AFullDiskIsAWriteError) {
    FileStream stream("/dev/full", FileMode::Open, kWrite, kDenyNothing);
    EXPECT_THROW_FULL(stream.WriteByte('x'), "File write error", "", -1, -1);
}

TEST_F(FileStreamPosixTest, FilesOverFourGibibytesKeepTheirPositions) {
    constexpr bool kIsShort = std::numeric_limits<long>::digits < 33;
    if (kIsShort) GTEST_SKIP() << "positions end at 2 GiB";
    const std::string path = Path("large");
    constexpr long kFar = 5L << (kIsShort ? 0 : 30);
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

TEST_F(FileStreamPosixTest, AFullDiskIsToldByFlushOrCloseOfAHandle) {
    FileStream flushed(std::fopen("/dev/full", "wb"), kWrite, true);
    flushed.WriteByte('x');
    EXPECT_THROW_FULL(flushed.Flush(), "File write error", "", -1, -1);

    FileStream closed(std::fopen("/dev/full", "wb"), kWrite, true);
    closed.WriteByte('x');
    EXPECT_THROW_FULL(closed.Close(), "File write error", "", -1, -1);
    EXPECT_NO_THROW(closed.Close());

    FileStream* destroyed = new FileStream(std::fopen("/dev/full", "wb"), kWrite, true);
    destroyed->WriteByte('x');
    EXPECT_NO_THROW(delete destroyed);
}

}  // namespace
