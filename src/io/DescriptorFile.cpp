// SPDX-License-Identifier: MIT
//
// Files over descriptors. One that reads ahead stands, for the system, at the end of what it has
// read ahead:
//
//     0      next_     filled_          kReadAhead
//     | read | unread  |                |
//                      ^ the descriptor's position
#include "io/Descriptor.h"
#include "io/OpenFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>

namespace IO::detail {

namespace {

constexpr int kReadAhead = 64 * 1024;  // 64 requests of 1 KiB for one call of the system

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
    int ReadThroughBuffer(unsigned char* buffer, int count);

    int descriptor_;                           // -1 when closed
    bool readsAhead_ = false;                  // nobody else moves the descriptor's position
    std::unique_ptr<unsigned char[]> buffer_;  // kReadAhead bytes, allocated on first use
    int next_ = 0;                             // where reading goes on in the buffer
    int filled_ = 0;                           // bytes in the buffer
};

long DescriptorFile::Length() {
    const long position = SeekDescriptor(descriptor_, 0, Whence::Current);
    if (position < 0) return -1;
    const long length = SeekDescriptor(descriptor_, 0, Whence::End);
    SeekDescriptor(descriptor_, position, Whence::Begin);
    return length;
}

long DescriptorFile::Position() {
    const long position = SeekDescriptor(descriptor_, 0, Whence::Current);
    return position < 0 ? -1 : position - (filled_ - next_);
}

long DescriptorFile::Seek(long offset, Whence whence) {
    if (filled_ == 0) return SeekDescriptor(descriptor_, offset, whence);
    const long here = Position();
    if (whence == Whence::Current) {
        if (here < 0 || __builtin_add_overflow(offset, here, &offset)) return -1;
        whence = Whence::Begin;
    }
    if (whence == Whence::Begin && here >= 0) {
        // What was read ahead is kept when the target lies in it: archives are read in small hops.
        const long bufferStart = here - next_;
        if (offset >= bufferStart && offset <= bufferStart + filled_) {
            next_ = static_cast<int>(offset - bufferStart);
            return offset;
        }
    }
    const long position = SeekDescriptor(descriptor_, offset, whence);
    if (position >= 0) next_ = filled_ = 0;
    return position;
}

int DescriptorFile::Read(unsigned char* buffer, int count) {
    return readsAhead_ ? ReadThroughBuffer(buffer, count)
                       : ReadDescriptor(descriptor_, buffer, count);
}

int DescriptorFile::ReadThroughBuffer(unsigned char* buffer, int count) {
    int copied = 0;
    while (copied < count) {
        if (next_ == filled_) {
            if (count - copied >= kReadAhead) {
                const int direct = ReadDescriptor(descriptor_, buffer + copied, count - copied);
                next_ = filled_ = 0;
                if (direct > 0) return copied + direct;
                return copied > 0 ? copied : direct;
            }
            if (buffer_ == nullptr) {
                buffer_ = std::make_unique_for_overwrite<unsigned char[]>(kReadAhead);
            }
            const int result = ReadDescriptor(descriptor_, buffer_.get(), kReadAhead);
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
        const int written = WriteDescriptor(descriptor_, buffer, count);
        if (written <= 0) return false;
        buffer += written;
        count -= written;
    }
    return true;
}

bool DescriptorFile::SetLength(long length) { return ResizeDescriptor(descriptor_, length); }

bool DescriptorFile::Flush() {
    dirty_ = false;
    return CommitDescriptor(descriptor_);
}

bool DescriptorFile::Close() {
    const bool wasDirty = dirty_;
    const bool flushed = !dirty_ || Flush();
    const bool closed = CloseDescriptor(descriptor_);
    descriptor_ = -1;
    buffer_.reset();
    next_ = filled_ = 0;
    return flushed && (closed || !wasDirty);
}

int DescriptorFile::Open(const char* name, FileMode mode, unsigned access, unsigned share) {
    const OpenedDescriptor opened = OpenDescriptor(name, mode, access, share);
    if (opened.descriptor < 0) return opened.error;
    descriptor_ = opened.descriptor;
    if (!opened.isRegular) return 0;
    // Only now that the lock is held: a refused open destroys nothing.
    if (Empties(mode) && !SetLength(0)) return errno;
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
