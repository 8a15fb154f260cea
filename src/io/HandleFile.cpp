// SPDX-License-Identifier: MIT
//
// Files over the standard handles of the caller's.
#include "io/FilePosition.h"
#include "io/OpenFile.h"

#include <cerrno>
#include <cstddef>

namespace IO::detail {

namespace {

class HandleFile final : public OpenFile {
public:
    HandleFile(std::FILE* handle, bool owns) : OpenFile(owns), handle_(handle) {}

    ~HandleFile() override {
        if (Owns() && IsOpen()) HandleFile::Close();
    }

    bool IsOpen() const override { return handle_ != nullptr; }
    long Length() override;
    long Position() override;
    long Seek(long offset, Whence whence) override;
    int Read(unsigned char* buffer, int count) override;
    bool Write(const unsigned char* buffer, int count) override;
    bool SetLength(long) override { return true; }  // does nothing over a handle
    bool Flush() override;
    bool Close() override;

private:
    enum class Operation { None, Read, Write };

    void Begin(Operation operation);

    std::FILE* handle_;                          // null when closed
    Operation lastOperation_ = Operation::None;  // since the last positioning
};

long HandleFile::Length() {
    const off_t position = ::ftello(handle_);
    if (position < 0 || ::fseeko(handle_, 0, SEEK_END) != 0) return -1;
    const off_t length = ::ftello(handle_);
    ::fseeko(handle_, position, SEEK_SET);
    lastOperation_ = Operation::None;
    return LongOrNone(length);
}

long HandleFile::Position() { return LongOrNone(::ftello(handle_)); }

long HandleFile::Seek(long offset, Whence whence) {
    const int origin = whence == Whence::End       ? SEEK_END
                       : whence == Whence::Current ? SEEK_CUR
                                                   : SEEK_SET;
    const off_t before = kLongIsShort ? ::ftello(handle_) : 0;
    if (::fseeko(handle_, offset, origin) != 0) return -1;
    lastOperation_ = Operation::None;
    const long position = LongOrNone(::ftello(handle_));
    if (kLongIsShort && position < 0) ::fseeko(handle_, before, SEEK_SET);
    return position;
}

int HandleFile::Read(unsigned char* buffer, int count) {
    Begin(Operation::Read);
    std::clearerr(handle_);  // an error of an earlier call is not one of this call
    const auto wanted = static_cast<std::size_t>(count);
    std::size_t delivered = 0;
    for (;;) {
        delivered += std::fread(buffer + delivered, 1, wanted - delivered, handle_);
        if (delivered == wanted || !std::ferror(handle_)) return static_cast<int>(delivered);
        if (errno != EINTR) return -1;
        std::clearerr(handle_);
    }
}

// An interrupted write is not taken up again as an interrupted read is: what the handle's own
// buffer held may be lost by then, so the caller has to hear of it.
bool HandleFile::Write(const unsigned char* buffer, int count) {
    Begin(Operation::Write);
    dirty_ = true;
    const auto wanted = static_cast<std::size_t>(count);
    return std::fwrite(buffer, 1, wanted, handle_) == wanted;
}

bool HandleFile::Flush() {
    dirty_ = false;
    return std::fflush(handle_) == 0;
}

bool HandleFile::Close() {
    const bool closed = std::fclose(handle_) == 0;
    handle_ = nullptr;
    return closed || !dirty_;
}

// The standard wants a positioning between a read and a write on one handle.
void HandleFile::Begin(Operation operation) {
    if (lastOperation_ != Operation::None && lastOperation_ != operation) {
        ::fseeko(handle_, 0, SEEK_CUR);
    }
    lastOperation_ = operation;
}

}  // namespace

std::shared_ptr<OpenFile> WrapHandle(std::FILE* handle, bool owns) {
    return std::make_shared<HandleFile>(handle, owns);
}

}  // namespace IO::detail
