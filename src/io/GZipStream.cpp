// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/GZipStream.h>

#include "io/ByteRange.h"
#include "io/GzipReader.h"
#include "io/GzipWriter.h"
#include "io/SeekTarget.h"

#include <new>
#include <utility>

namespace IO {

namespace detail {

namespace {

template <typename Kind>
std::unique_ptr<GzipHandle> Make(Stream& target) {
    auto handle = std::make_unique<Kind>(target);
    if (!handle->IsReady()) return nullptr;
    return handle;
}

}  // namespace

std::unique_ptr<GzipHandle> OpenGzip(Stream& target, CompressionMode mode) {
    try {
        switch (mode) {
        case CompressionMode::Compress: return Make<GzipWriter>(target);
        case CompressionMode::Decompress: return Make<GzipReader>(target);
        }
    } catch (const std::bad_alloc&) {  // as when zlib has no memory
    }
    return nullptr;
}

}  // namespace detail

namespace {

constexpr char kReadError[] = "GZipStream read error: ";
constexpr char kSeekError[] = "GZipStream seek error";
constexpr char kWriteError[] = "GZipStream write error";

}  // namespace

GZipStream::GZipStream() = default;

GZipStream::GZipStream(Stream* target, CompressionMode mode) : mode_(mode) {
    if (target == nullptr) return;
    if (mode == CompressionMode::Compress && !target->CanWrite()) {
        Xml::Exception::ThrowException("GZipStream target Stream not writable!");
    }
    if (mode == CompressionMode::Decompress && !target->CanRead()) {
        Xml::Exception::ThrowException("GZipStream target Stream not readable!");
    }
    handle_ = detail::OpenGzip(*target, mode);
    if (handle_ == nullptr) Xml::Exception::ThrowException("GZipStream initialization failed");
    target_ = target;
}

GZipStream::GZipStream(GZipStream& other) : Stream(other) { TakeOver(other); }

GZipStream::GZipStream(GZipStream&& other) noexcept { TakeOver(other); }

GZipStream& GZipStream::operator=(GZipStream& other) {
    if (this == &other) return *this;
    Close();
    TakeOver(other);
    return *this;
}

GZipStream::~GZipStream() {
    try {
        GZipStream::Close();
    } catch (...) {  // a destructor keeps its errors to itself
    }
}

bool GZipStream::CanRead() const {
    return handle_ != nullptr && mode_ == CompressionMode::Decompress;
}
bool GZipStream::CanSeek() const { return true; }
bool GZipStream::CanWrite() const {
    return handle_ != nullptr && mode_ == CompressionMode::Compress;
}

long GZipStream::Length() const {
    Handle();
    return target_->Length();
}

long GZipStream::Position() const { return Handle().Position(); }

void GZipStream::Close() {
    if (handle_ == nullptr) return;
    // Closed from here on, whatever the target throws.
    const std::unique_ptr<detail::GzipHandle> handle = std::move(handle_);
    target_ = nullptr;
    // The end of the data goes to the target behind the flush, and is not flushed once more. After
    // a failed write, which was reported when it failed, there is nothing to end.
    if (handle->Flush()) handle->Finish();
}

void GZipStream::Flush() {
    if (!Handle().Flush()) Xml::Exception::ThrowException(kWriteError);
}

int GZipStream::Read(unsigned char* buffer, int offset, int count) {
    detail::GzipHandle& handle = Handle();
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1) return 0;
    const int delivered = handle.Read(buffer + range.offset, range.count);
    if (delivered < range.count && handle.Error() != nullptr) {
        Xml::Exception::ThrowException(astring(kReadError) + handle.Error(), astring(), -1, -1);
    }
    return delivered;
}

long GZipStream::Seek(long offset, SeekOrigin origin) {
    detail::GzipHandle& handle = Handle();
    long position = offset;
    if (origin == SeekOrigin::Current) {
        position = detail::SaturatingAdd(handle.Position(), offset);
    }
    // The length of the uncompressed data is not known.
    if (origin == SeekOrigin::End) position = detail::GzipHandle::kFailed;
    const long result = position < 0 ? detail::GzipHandle::kFailed : handle.SeekTo(position);
    if (result < 0) Xml::Exception::ThrowException(kSeekError);
    return result;
}

void GZipStream::SetLength(long) { Xml::Exception::ThrowException("GZipStream cannot SetLength"); }

void GZipStream::Write(const unsigned char* buffer, int offset, int count) {
    if (!CanWrite()) Xml::Exception::ThrowException("GZipStream not opened to compress");
    detail::GzipHandle& handle = Handle();
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1) return;
    if (!handle.Write(buffer + range.offset, range.count)) {
        Xml::Exception::ThrowException(kWriteError);
    }
}

// Returns what the stream is open on, or throws when it is closed.
detail::GzipHandle& GZipStream::Handle() const {
    if (handle_ == nullptr) Xml::Exception::ThrowException("GZipStream not open!");
    return *handle_;
}

void GZipStream::TakeOver(GZipStream& other) {
    target_ = std::exchange(other.target_, nullptr);
    mode_ = other.mode_;
    handle_ = std::move(other.handle_);
}

}  // namespace IO
