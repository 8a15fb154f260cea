// SPDX-License-Identifier: MIT
//
// Files as POSIX has them.
#include "io/Descriptor.h"
#include "io/FilePosition.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace IO::detail {

namespace {

static_assert(sizeof(off_t) >= sizeof(long), "positions must not be truncated");

// Calls a function of the system again for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) return result;
    }
}

int OpenFlags(FileMode mode, unsigned access) {
    int flags = O_CLOEXEC | O_NOCTTY;
    switch (mode) {
    case FileMode::Append: flags |= O_CREAT | O_APPEND; break;
    case FileMode::CreateNew: flags |= O_CREAT | O_EXCL; break;
    case FileMode::Create:
    case FileMode::OpenOrCreate: flags |= O_CREAT; break;
    case FileMode::Open:
    case FileMode::Truncate: break;
    }
    // Emptying a file takes a descriptor that may write, whatever the stream may do.
    if (access == 3 || (access == 1 && Empties(mode))) return flags | O_RDWR;
    return flags | (access == 2 ? O_WRONLY : O_RDONLY);
}

// Takes the lock that keeps others out as `share` says; returns false when somebody is in already.
bool Lock(int descriptor, unsigned access, unsigned share) {
    if (share == 3) return true;
    const bool shared = share == 1 && access == 1;
    const int operation = (shared ? LOCK_SH : LOCK_EX) | LOCK_NB;
    if (Uninterrupted([&] { return ::flock(descriptor, operation); }) == 0) return true;
    return errno != EWOULDBLOCK;  // any other error: the file system has no locks
}

// Returns what keeps the file from being used, or 0.
int Prepare(int descriptor, unsigned access, unsigned share, bool& isRegular) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    isRegular = S_ISREG(status.st_mode);
    return !isRegular || Lock(descriptor, access, share) ? 0 : EACCES;
}

}  // namespace

OpenedDescriptor OpenDescriptor(const char* name, FileMode mode, unsigned access, unsigned share) {
    constexpr mode_t kOwnerReadsAndWrites = 0600;
    const int descriptor =
        Uninterrupted([&] { return ::open(name, OpenFlags(mode, access), kOwnerReadsAndWrites); });
    if (descriptor < 0) return {-1, errno, false};

    bool isRegular = false;
    const int error = Prepare(descriptor, access, share, isRegular);
    if (error == 0) return {descriptor, 0, isRegular};
    ::close(descriptor);
    return {-1, error, false};
}

int ReadDescriptor(int descriptor, unsigned char* buffer, int count) {
    return static_cast<int>(
        Uninterrupted([&] { return ::read(descriptor, buffer, static_cast<std::size_t>(count)); }));
}

int WriteDescriptor(int descriptor, const unsigned char* buffer, int count) {
    return static_cast<int>(Uninterrupted(
        [&] { return ::write(descriptor, buffer, static_cast<std::size_t>(count)); }));
}

long SeekDescriptor(int descriptor, long offset, Whence whence) {
    const int origin = whence == Whence::End       ? SEEK_END
                       : whence == Whence::Current ? SEEK_CUR
                                                   : SEEK_SET;
    const off_t before = kLongIsShort ? ::lseek(descriptor, 0, SEEK_CUR) : 0;
    const long position = LongOrNone(::lseek(descriptor, offset, origin));
    if (kLongIsShort && position < 0) ::lseek(descriptor, before, SEEK_SET);
    return position;
}

bool ResizeDescriptor(int descriptor, long length) {
    return Uninterrupted([&] { return ::ftruncate(descriptor, length); }) == 0;
}

bool CommitDescriptor(int descriptor) {
    if (Uninterrupted([&] { return ::fdatasync(descriptor); }) == 0) return true;
    // Pipes, terminals and their like have nothing to commit.
    return errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

bool CloseDescriptor(int descriptor) {
    // Not repeated after EINTR: the descriptor is closed then, and may be another file's already.
    return ::close(descriptor) == 0 || errno == EINTR;
}

}  // namespace IO::detail
