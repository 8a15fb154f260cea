// SPDX-License-Identifier: MIT
//
// Files over POSIX descriptors: the only place where the library asks the operating system for
// bytes. A file that reads ahead stands, for the system, at the end of what it has read ahead:
//
//     0      next_     filled_          kReadAhead
//     | read | unread  |                |
//                      ^ the descriptor's position
#include "io/FilePosition.h"
#include "io/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace IO::detail {

namespace {

static_assert(sizeof(off_t) >= sizeof(long), "positions must not be truncated");

constexpr int kReadAhead = 64 * 1024;  // 64 requests of 1 KiB for one call of the system

// Calls a function of the system again for as long as a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    for (;;) {
        const auto result = call();
        if (result != -1 || errno != EINTR) return result;
    }
}

// Returns the new position, or -1 when it cannot be set or told; then it is what it was.
long SeekDescriptor(int descriptor, long offset, int origin) {
    const off_t before = kLongIsShort ? ::lseek(descriptor, 0, SEEK_CUR) : 0;
    const long position = LongOrNone(::lseek(descriptor, offset, origin));
    if (kLongIsShort && position < 0) ::lseek(descriptor, before, SEEK_SET);
    return position;
}

class DescriptorFile final : public OpenFile {
public:
    DescriptorFile(int descriptor, bool owns) : OpenFile(owns), descriptor_(descriptor) {}

    ~DescriptorFile() override {
        if (Owns() && IsOpen()) DescriptorFile::Close();
    }

    bool IsOpen() const override { return descriptor_ >= 0; }
    long Length() override;
    long Position() override;
    long Seek(long offset, Whence whence) override;
    int Read(unsigned char* buffer, int count) override;
    bool Write(const unsigned char* buffer, int count) override;
    bool SetLength(long length) override;
    bool Flush() override;
    bool Close() override;

    // Opens a file by name for an object that has none; returns 0 or an error number.
    int Open(const char* name, FileMode mode, unsigned access, unsigned share);

private:
    int ReadOnce(unsigned char* buffer, int count);
    int ReadThroughBuffer(unsigned char* buffer, int count);

    int descriptor_;                           // -1 when closed
    bool readsAhead_ = false;                  // nobody else moves the descriptor's position
    std::unique_ptr<unsigned char[]> buffer_;  // kReadAhead bytes, allocated on first use
    int next_ = 0;                             // where reading goes on in the buffer
    int filled_ = 0;                           // bytes in the buffer
};

long DescriptorFile::Length() {
    const long position = SeekDescriptor(descriptor_, 0, SEEK_CUR);
    if (position < 0) return -1;
    const long length = SeekDescriptor(descriptor_, 0, SEEK_END);
    SeekDescriptor(descriptor_, position, SEEK_SET);
    return length;
}

long DescriptorFile::Position() {
    const long position = SeekDescriptor(descriptor_, 0, SEEK_CUR);
    return position < 0 ? -1 : position - (filled_ - next_);
}

long DescriptorFile::Seek(long offset, Whence whence) {
    if (filled_ == 0) {
        const int origin = whence == Whence::End       ? SEEK_END
                           : whence == Whence::Current ? SEEK_CUR
                                                       : SEEK_SET;
        return SeekDescriptor(descriptor_, offset, origin);
    }
    const long position = Position();
    if (whence == Whence::Current) {
        if (position < 0 || __builtin_add_overflow(offset, position, &offset)) return -1;
        whence = Whence::Begin;
    }
    if (whence == Whence::Begin && position >= 0) {
        // What was read ahead is kept when the target lies in it: archives are read in small hops.
        const long bufferStart = position - next_;
        if (offset >= bufferStart && offset <= bufferStart + filled_) {
            next_ = static_cast<int>(offset - bufferStart);
            return offset;
        }
    }
    const long reached =
        SeekDescriptor(descriptor_, offset, whence == Whence::End ? SEEK_END : SEEK_SET);
    if (reached >= 0) next_ = filled_ = 0;
    return reached;
}

int DescriptorFile::Read(unsigned char* buffer, int count) {
    return readsAhead_ ? ReadThroughBuffer(buffer, count) : ReadOnce(buffer, count);
}

int DescriptorFile::ReadOnce(unsigned char* buffer, int count) {
    return static_cast<int>(Uninterrupted(
        [&] { return ::read(descriptor_, buffer, static_cast<std::size_t>(count)); }));
}

int DescriptorFile::ReadThroughBuffer(unsigned char* buffer, int count) {
    int copied = 0;
    while (copied < count) {
        if (next_ == filled_) {
            if (count - copied >= kReadAhead) {
                const int direct = ReadOnce(buffer + copied, count - copied);
                next_ = filled_ = 0;
                if (direct > 0) return copied + direct;
                return copied > 0 ? copied : direct;
            }
            if (buffer_ == nullptr) {
                buffer_ = std::make_unique_for_overwrite<unsigned char[]>(kReadAhead);
            }
            const int result = ReadOnce(buffer_.get(), kReadAhead);
            next_ = 0;
            filled_ = std::max(result, 0);
            // After a part was delivered, an error shows in the next call.
            if (result <= 0) return copied > 0 ? copied : result;
        }
        const int piece = std::min(count - copied, filled_ - next_);
        std::memcpy(buffer + copied, buffer_.get() + next_, static_cast<std::size_t>(piece));
        next_ += piece;
        copied += piece;
    }
    return copied;
}

bool DescriptorFile::Write(const unsigned char* buffer, int count) {
    dirty_ = true;
    while (count > 0) {
        const ssize_t written = Uninterrupted(
            [&] { return ::write(descriptor_, buffer, static_cast<std::size_t>(count)); });
        if (written <= 0) return false;
        buffer += written;
        count -= static_cast<int>(written);
    }
    return true;
}

bool DescriptorFile::SetLength(long length) {
    return Uninterrupted([&] { return ::ftruncate(descriptor_, length); }) == 0;
}

bool DescriptorFile::Flush() {
    dirty_ = false;
    if (Uninterrupted([&] { return ::fdatasync(descriptor_); }) == 0) return true;
    // Pipes, terminals and their like have nothing to commit.
    return errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

bool DescriptorFile::Close() {
    const bool wasDirty = dirty_;
    const bool flushed = !dirty_ || Flush();
    // Not repeated after EINTR: the descriptor is closed then, and may be another file's already.
    const bool closed = ::close(descriptor_) == 0 || errno == EINTR;
    descriptor_ = -1;
    buffer_.reset();
    next_ = filled_ = 0;
    return flushed && (closed || !wasDirty);
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
    const bool empties = mode == FileMode::Create || mode == FileMode::Truncate;
    if (access == 3 || (access == 1 && empties)) return flags | O_RDWR;
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

int DescriptorFile::Open(const char* name, FileMode mode, unsigned access, unsigned share) {
    constexpr mode_t kOwnerReadsAndWrites = 0600;
    descriptor_ =
        Uninterrupted([&] { return ::open(name, OpenFlags(mode, access), kOwnerReadsAndWrites); });
    if (descriptor_ < 0) return errno;

    struct stat status = {};
    if (::fstat(descriptor_, &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return 0;
    if (!Lock(descriptor_, access, share)) return EACCES;
    // Only now that the lock is held: a refused open destroys nothing.
    const bool empties = mode == FileMode::Create || mode == FileMode::Truncate;
    if (empties && !SetLength(0)) return errno;
    readsAhead_ = access == 1;
    return 0;
}

}  // namespace

OpenResult OpenByName(const char* name, FileMode mode, unsigned access, unsigned share) {
    // Made before the file is opened, so that lack of memory cannot lose a descriptor.
    const auto file = std::make_shared<DescriptorFile>(-1, true);
    const int error = file->Open(name, mode, access, share);
    if (error != 0) return {nullptr, error};
    return {file, 0};
}

std::shared_ptr<OpenFile> WrapDescriptor(int descriptor, bool owns) {
    return std::make_shared<DescriptorFile>(descriptor, owns);
}

}  // namespace IO::detail
