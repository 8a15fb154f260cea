// SPDX-License-Identifier: MIT
//
// One buffer serves both directions, one at a time:
//
//     reading                               writing
//     0      bufferPosition_  bufferedLength_     0         bufferPosition_        512
//     | read | unread         |                   | pending | free                 |
//                             ^ inner position    ^ inner position
//
// Whoever enters a mode leaves the buffer of the other mode empty first: both numbers are 0 then.
#include <espalier/io/BufferedStream.h>

#include "io/ByteRange.h"
#include "io/SeekTarget.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace IO {

namespace {

constexpr int kBufferSize = 512;
constexpr int kLargestBuffered = 256;  // more than this at once goes past the buffer

// Copies `count` bytes, at least 1, as memcpy would.
void Copy(unsigned char* destination, const unsigned char* source, int count) {
    std::memcpy(destination, source, static_cast<std::size_t>(count));
}

}  // namespace

BufferedStream::BufferedStream(Stream* inner, bool ownsInner)
    : inner_(inner), ownsInner_(ownsInner) {}

BufferedStream::BufferedStream(BufferedStream& other) : Stream(other) { TakeOver(other); }

BufferedStream& BufferedStream::operator=(BufferedStream& other) {
    if (this == &other) return *this;
    Close();
    const bool ownedTheSame = ownsInner_ && inner_ == other.inner_;
    if (ownsInner_ && !ownedTheSame) delete inner_;
    TakeOver(other);
    ownsInner_ = ownsInner_ || ownedTheSame;
    return *this;
}

BufferedStream::~BufferedStream() {
    try {
        BufferedStream::Close();
    } catch (...) {  // a destructor keeps its errors to itself
    }
    if (ownsInner_) delete inner_;
}

bool BufferedStream::CanRead() const { return inner_ != nullptr && inner_->CanRead(); }
bool BufferedStream::CanSeek() const { return inner_ != nullptr && inner_->CanSeek(); }
bool BufferedStream::CanWrite() const { return inner_ != nullptr && inner_->CanWrite(); }
long BufferedStream::Length() const { return inner_ != nullptr ? inner_->Length() : 0; }

long BufferedStream::Position() const {
    if (inner_ == nullptr) return 0;
    const long position = inner_->Position();
    if (position < 0) return position;  // a pipe knows of none
    return writing_ ? detail::SaturatingAdd(position, bufferPosition_) : position - Unread();
}

void BufferedStream::Close() {
    if (inner_ == nullptr) return;
    try {
        FlushWrite();
    } catch (...) {
        ClearBuffer();
        if (ownsInner_) {
            try {
                inner_->Close();
            } catch (...) {  // the first error is the one to report
            }
        }
        throw;
    }
    if (ownsInner_) inner_->Close();
}

void BufferedStream::Flush() {
    if (inner_ == nullptr) return;
    FlushWrite();
    inner_->Flush();
}

int BufferedStream::Read(unsigned char* buffer, int offset, int count) {
    if (inner_ == nullptr) return 0;
    FlushWrite();
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1) return 0;

    // Nothing of the state changes before the inner stream has delivered: it may throw.
    unsigned char* destination = buffer + range.offset;
    const int copied = std::min(Unread(), range.count);
    if (copied > 0) Copy(destination, buffer_.get() + bufferPosition_, copied);
    const int rest = range.count - copied;
    if (rest == 0) {
        bufferPosition_ += copied;
        return copied;
    }
    if (range.count > kLargestBuffered) {
        const int direct = inner_->Read(buffer, range.offset + copied, rest);
        ClearBuffer();
        return copied + std::clamp(direct, 0, rest);
    }
    bufferedLength_ = std::clamp(inner_->Read(Buffer(), 0, kBufferSize), 0, kBufferSize);
    bufferPosition_ = std::min(bufferedLength_, rest);
    if (bufferPosition_ > 0) Copy(destination + copied, buffer_.get(), bufferPosition_);
    return copied + bufferPosition_;
}

long BufferedStream::Seek(long offset, SeekOrigin origin) {
    if (inner_ == nullptr) return 0;
    FlushWrite();
    if (origin == SeekOrigin::Current) {
        const long target = detail::SaturatingAdd(bufferPosition_, offset);
        if (target >= 0 && target < bufferedLength_) {
            bufferPosition_ = static_cast<int>(target);
            return Position();
        }
        offset = detail::SaturatingAdd(offset, -Unread());
    }
    const long position = inner_->Seek(offset, origin);
    if (position >= 0) ClearBuffer();  // a pipe stays where it is, and keeps its bytes
    return position;
}

void BufferedStream::SetLength(long length) {
    if (inner_ == nullptr) return;
    FlushWrite();
    ClearBuffer();
    inner_->SetLength(length);
}

void BufferedStream::Write(const unsigned char* buffer, int offset, int count) {
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (inner_ == nullptr || range.count < 1) return;

    if (!writing_) {
        // The write has to land at the logical position, behind which the inner stream may stand.
        if (Unread() > 0) inner_->Seek(-Unread(), SeekOrigin::Current);
        ClearBuffer();
    }
    if (range.count > kLargestBuffered) {
        FlushWrite();
        inner_->Write(buffer, range.offset, range.count);
        return;
    }
    if (range.count > kBufferSize - bufferPosition_) FlushWrite();
    Copy(Buffer() + bufferPosition_, buffer + range.offset, range.count);
    bufferPosition_ += range.count;
    writing_ = true;
}

// Returns how many bytes read ahead are still to be read.
int BufferedStream::Unread() const { return writing_ ? 0 : bufferedLength_ - bufferPosition_; }

void BufferedStream::ClearBuffer() {
    bufferedLength_ = 0;
    bufferPosition_ = 0;
    writing_ = false;
}

// Sends the pending bytes to the inner stream; when that throws, they stay pending.
void BufferedStream::FlushWrite() {
    if (!writing_) return;
    inner_->Write(buffer_.get(), 0, bufferPosition_);
    ClearBuffer();
}

void BufferedStream::TakeOver(BufferedStream& other) {
    buffer_ = std::move(other.buffer_);
    bufferedLength_ = other.bufferedLength_;
    bufferPosition_ = other.bufferPosition_;
    writing_ = other.writing_;
    inner_ = std::exchange(other.inner_, nullptr);
    ownsInner_ = std::exchange(other.ownsInner_, false);
    other.ClearBuffer();
}

unsigned char* BufferedStream::Buffer() {
    if (buffer_ == nullptr) buffer_ = std::make_unique<unsigned char[]>(kBufferSize);
    return buffer_.get();
}

}  // namespace IO
