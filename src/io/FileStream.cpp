// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>

#include "io/OpenFile.h"

#include <cerrno>
#include <cstddef>
#include <utility>

namespace IO {

namespace {

constexpr unsigned kRead = 1;
constexpr unsigned kWrite = 2;
constexpr unsigned kReadAndWrite = kRead | kWrite;
constexpr unsigned kDenyNothing = 3;

constexpr char kInvalidArgument[] = "Invalid argument";
constexpr char kWriteNotSupported[] = "Write not supported";
constexpr char kFileWriteError[] = "File write error";

// Returns `access`, or throws when it is none.
unsigned Checked(unsigned access) {
    if (access < kRead || access > kReadAndWrite) Xml::Exception::ThrowException(kInvalidArgument);
    return access;
}

const char* OpenErrorText(int error) {
    switch (error) {
    case EACCES:
    case EISDIR:
    case EPERM:
    case EROFS:
    case ETXTBSY: return "Access denied/sharing violation";
    case EEXIST: return "File already exists";
    case ENOENT:
    case ENOTDIR: return "File not found";
    case EMFILE:
    case ENFILE: return "Too many files open";
    case EINVAL: return "Invalid parameter(s)";
    default: return "File open error";
    }
}

}  // namespace

FileStream::FileStream() = default;

FileStream::FileStream(const char* name, FileMode mode, unsigned access, unsigned share)
    : FileStream(astring(name != nullptr ? name : ""), mode, access, share) {}

FileStream::FileStream(const astring& name, FileMode mode, unsigned access, unsigned share)
    : access_(Checked(access)), name_(name) {
    OpenByName(mode, share);
}

FileStream::FileStream(int descriptor, unsigned access, bool owns) : access_(Checked(access)) {
    if (descriptor >= 0) file_ = detail::WrapDescriptor(descriptor, owns);
}

FileStream::FileStream(std::FILE* handle, unsigned access, bool owns) : access_(Checked(access)) {
    if (handle != nullptr) file_ = detail::WrapHandle(handle, owns);
}

FileStream::FileStream(const FileStream& other) = default;

FileStream& FileStream::operator=(const FileStream& other) {
    if (this == &other) return *this;
    if (file_ != other.file_) Close();
    file_ = other.file_;
    access_ = other.access_;
    name_ = other.name_;
    return *this;
}

FileStream::~FileStream() = default;

const astring& FileStream::Name() const { return name_; }
bool FileStream::CanRead() const { return (access_ & kRead) != 0; }
bool FileStream::CanSeek() const { return true; }
bool FileStream::CanWrite() const { return (access_ & kWrite) != 0; }
long FileStream::Length() const { return File().Length(); }
long FileStream::Position() const { return File().Position(); }

void FileStream::Close() {
    const std::shared_ptr<detail::OpenFile> file = std::exchange(file_, nullptr);
    if (file == nullptr || !file->Owns() || !file->IsOpen()) return;
    if (!file->Close()) Xml::Exception::ThrowException(kFileWriteError);
}

void FileStream::Flush() {
    if (!File().Flush()) Xml::Exception::ThrowException(kFileWriteError);
}

int FileStream::Read(unsigned char* buffer, int offset, int count) {
    if (count < 1) return 0;
    const int result = File().Read(buffer + offset, count);
    if (result < 0) Xml::Exception::ThrowException("File read error");
    return result;
}

long FileStream::Seek(long offset, SeekOrigin origin) {
    detail::Whence whence = detail::Whence::Begin;
    if (origin == SeekOrigin::Current) whence = detail::Whence::Current;
    if (origin == SeekOrigin::End) whence = detail::Whence::End;
    return File().Seek(offset, whence);
}

void FileStream::SetLength(long length) {
    if (length < 0) Xml::Exception::ThrowException(kInvalidArgument);
    if (!CanSeek()) Xml::Exception::ThrowException("Seek not supported");
    if (!CanWrite()) Xml::Exception::ThrowException(kWriteNotSupported);
    if (file_ == nullptr || !file_->IsOpen()) return;
    if (!file_->SetLength(length)) Xml::Exception::ThrowException(kFileWriteError);
}

void FileStream::Write(const unsigned char* buffer, int offset, int count) {
    if (!CanWrite()) Xml::Exception::ThrowException(kWriteNotSupported);
    if (count < 1) return;
    if (!File().Write(buffer + offset, count)) Xml::Exception::ThrowException(kFileWriteError);
}

// Returns the open file, or throws when there is none.
detail::OpenFile& FileStream::File() const {
    if (file_ == nullptr || !file_->IsOpen()) Xml::Exception::ThrowException("File not open!");
    return *file_;
}

void FileStream::OpenByName(FileMode mode, unsigned share) {
    if (share > kDenyNothing) Xml::Exception::ThrowException(kInvalidArgument);
    // A name that holds a NUL is no name of a file; the system would look at its first part.
    if (name_.find('\0') != astring::npos) Xml::Exception::ThrowException(OpenErrorText(EINVAL));

    detail::OpenResult result = detail::OpenByName(name_.c_str(), mode, access_, share);
    if (result.file == nullptr) Xml::Exception::ThrowException(OpenErrorText(result.error));
    file_ = std::move(result.file);
}

}  // namespace IO
