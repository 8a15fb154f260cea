// SPDX-License-Identifier: MIT
//
// The bytes of a growable stream lie in a block that is at least as large as the capacity which
// the stream reports. The capacity grows by the larger of the write and 1024 bytes, as promised;
// the block behind it doubles, so that writing n bytes costs O(n):
//
//     0          length_       capacity_               block_->size
//     | content  | zero, or    | reserve, not yet      |
//     |          | old content | handed out or cleared |
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>

#include "io/ByteRange.h"
#include "io/SeekTarget.h"

#include <climits>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <utility>

namespace IO {

namespace {

// Asks for the bytes that a reader of the stream will want next, while it works on those it has:
// memory that nobody has read lately takes longer to come than to be parsed.
void Prefetch(const unsigned char* bytes, long count) {
    constexpr long kCacheLine = 64;
    constexpr long kMost = 2048;  // more would come too early to stay in the nearest cache
    for (long i = 0; i < std::min(count, kMost); i += kCacheLine)
        __builtin_prefetch(bytes + i);
}

constexpr long kSmallestGrowth = 1024;
constexpr char kOutOfMemory[] = "MemoryStream::SetCapacity: Out of memory";
constexpr char kBufferFull[] = "MemoryStream::Write: Buffer full";

// Stands for a caller's null pointer, so that a read-only stream always has a read-only buffer.
constexpr unsigned char kNoBytes[1] = {};

}  // namespace

// A piece of the heap that the streams before and after a transfer hold together.
struct MemoryStream::Block {
    Block() = default;
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    ~Block() { std::free(data); }

    // Gives the block `newSize` bytes, at least 1; false when there is no memory.
    bool Resize(long newSize) {
        void* moved = std::realloc(data, static_cast<std::size_t>(newSize));
        if (moved == nullptr) return false;
        data = static_cast<unsigned char*>(moved);
        size = newSize;
        return true;
    }

    unsigned char* data = nullptr;  // owned
    long size = 0;
};

MemoryStream::MemoryStream() = default;

MemoryStream::MemoryStream(long capacity) { ChangeCapacity(capacity); }

MemoryStream::MemoryStream(const unsigned char* data, long size)
    : readOnlyBuffer_(data != nullptr ? data : kNoBytes),
      length_(data != nullptr && size > 0 ? size : 0),
      capacity_(length_),
      growable_(false) {}

MemoryStream::MemoryStream(unsigned char* data, long size)
    : buffer_(data),
      length_(data != nullptr && size > 0 ? size : 0),
      capacity_(length_),
      growable_(false) {}

MemoryStream::MemoryStream(MemoryStream& other) : Stream(other) { TakeOver(other); }

MemoryStream& MemoryStream::operator=(MemoryStream& other) {
    if (this == &other) return *this;
    if (growable_ && buffer_ != nullptr) Close();
    TakeOver(other);
    return *this;
}

MemoryStream::~MemoryStream() = default;

bool MemoryStream::CanRead() const { return true; }
bool MemoryStream::CanSeek() const { return true; }
bool MemoryStream::CanWrite() const { return readOnlyBuffer_ == nullptr; }
long MemoryStream::Length() const { return length_; }
long MemoryStream::Position() const { return position_; }
void MemoryStream::Close() { closed_ = true; }
void MemoryStream::Flush() {}

int MemoryStream::Read(unsigned char* buffer, int offset, int count) {
    if (closed_) Xml::Exception::ThrowException("MemoryStream::Read: Stream is closed");

    const detail::ByteRange range = detail::FoldOffset(offset, count);
    const long available = std::min<long>(range.count, length_ - position_);
    if (available < 1) return 0;
    std::memcpy(buffer + range.offset, Bytes() + position_, static_cast<std::size_t>(available));
    position_ += available;
    Prefetch(Bytes() + position_, std::min<long>(available, length_ - position_));
    return static_cast<int>(available);
}

long MemoryStream::Seek(long offset, SeekOrigin origin) {
    position_ = detail::SeekTarget(offset, origin, position_, length_);
    return position_;
}

void MemoryStream::SetLength(long length) {
    if (length < 0) Xml::Exception::ThrowException("MemoryStream::SetLength: Bad argument");
    if (position_ > length) {
        Xml::Exception::ThrowException(
            "MemoryStream::SetLength: New length smaller than current position");
    }
    if (buffer_ != nullptr) {
        if (length > capacity_) {
            if (!growable_) {
                // Deliberate: the misspelling is part of the interface.
                Xml::Exception::ThrowException(
                    "MemoryStream::SetLength: Length greater than maximum capaciy");
            }
            SetCapacity(length);
        }
        length_ = length;
    } else if (readOnlyBuffer_ != nullptr) {
        Xml::Exception::ThrowException("MemoryStream::SetLength: Stream not open for writing");
    }
    // Deliberate: without a buffer the length stays 0; a stream gets content by being written to.
}

void MemoryStream::Write(const unsigned char* buffer, int offset, int count) {
    if (closed_) Xml::Exception::ThrowException("MemoryStream::Write: Stream is closed");

    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1) return;
    // Deliberate: this text alone stands without the name of the operation.
    if (!CanWrite()) Xml::Exception::ThrowException("Write not supported");

    const unsigned char* source = buffer + range.offset;
    long end = 0;
    if (__builtin_add_overflow(position_, range.count, &end)) {
        Xml::Exception::ThrowException(growable_ ? kOutOfMemory : kBufferFull);
    }
    if (growable_ && end > capacity_) {
        // A caller may append the stream's own bytes to it: they move with the block.
        const std::less<> before;
        const bool ownBytes =
            buffer_ != nullptr && !before(source, buffer_) && before(source, buffer_ + capacity_);
        const std::ptrdiff_t place = ownBytes ? source - buffer_ : 0;
        Grow(range.count, end);
        if (ownBytes) source = buffer_ + place;
    }
    if (end > capacity_) Xml::Exception::ThrowException(kBufferFull);

    std::memmove(buffer_ + position_, source, static_cast<std::size_t>(range.count));
    position_ = end;
    length_ = std::max(length_, position_);
}

int MemoryStream::Capacity() const { return static_cast<int>(std::min<long>(capacity_, INT_MAX)); }

void MemoryStream::SetCapacity(long capacity) {
    if (closed_) Xml::Exception::ThrowException("MemoryStream::SetCapacity: Stream is closed");
    if (!CanWrite())
        Xml::Exception::ThrowException("MemoryStream::SetCapacity: Stream is read-only");
    if (!growable_) {
        Xml::Exception::ThrowException("MemoryStream::SetCapacity: Stream has fixed capacity");
    }
    ChangeCapacity(capacity);
}

const unsigned char* MemoryStream::GetBuffer() const { return Bytes(); }

long MemoryStream::ToArray(unsigned char* destination, long maximum) const {
    const long count = std::min(maximum, length_);
    if (count < 1) return 0;
    std::memcpy(destination, Bytes(), static_cast<std::size_t>(count));
    return count;
}

const unsigned char* MemoryStream::Bytes() const {
    return buffer_ != nullptr ? buffer_ : readOnlyBuffer_;
}

// Gives the stream a block of `size` bytes, at least 1, that begins with what the buffer holds: the
// block that it has when no other stream sees that one, else a new one. Returns false when there is
// no memory; then nothing has changed.
bool MemoryStream::Reallocate(long size) {
    if (block_ != nullptr && block_.use_count() == 1) {
        if (!block_->Resize(size)) return false;
    } else {
        std::shared_ptr<Block> fresh;
        try {
            fresh = std::make_shared<Block>();
        } catch (const std::bad_alloc&) {
            return false;
        }
        if (!fresh->Resize(size)) return false;
        const long kept = std::min(capacity_, size);
        if (kept > 0) std::memcpy(fresh->data, buffer_, static_cast<std::size_t>(kept));
        block_ = std::move(fresh);
    }
    buffer_ = block_->data;
    return true;
}

// Makes the capacity of a growable stream what is wanted.
void MemoryStream::ChangeCapacity(long capacity) {
    if (capacity < length_) {  // a negative capacity is, too
        Xml::Exception::ThrowException(
            "MemoryStream::SetCapacity: Specified capacity smaller than length");
    }
    if (capacity == 0) {
        block_.reset();
        buffer_ = nullptr;
    } else {
        if (!Reallocate(capacity)) Xml::Exception::ThrowException(kOutOfMemory);
        if (capacity > capacity_) {
            std::memset(buffer_ + capacity_, 0, static_cast<std::size_t>(capacity - capacity_));
        }
    }
    capacity_ = capacity;
}

// Raises the capacity so that a write of `count` bytes that ends at `end` fits.
void MemoryStream::Grow(long count, long end) {
    const long capacity = detail::SaturatingAdd(capacity_, std::max(count, kSmallestGrowth));
    const long size = block_ != nullptr ? block_->size : 0;
    if (capacity > size && !Reallocate(std::max(capacity, detail::SaturatingAdd(size, size))) &&
        !Reallocate(capacity)) {
        // Deliberate: the message names SetCapacity here too.
        Xml::Exception::ThrowException(kOutOfMemory);
    }
    // The bytes before `end` need no clearing: the write fills them.
    std::memset(buffer_ + end, 0, static_cast<std::size_t>(capacity - end));
    capacity_ = capacity;
}

void MemoryStream::TakeOver(MemoryStream& other) {
    readOnlyBuffer_ = other.readOnlyBuffer_;
    buffer_ = other.buffer_;
    length_ = other.length_;
    position_ = other.position_;
    capacity_ = other.capacity_;
    growable_ = other.growable_;
    closed_ = other.closed_;
    block_ = other.block_;
    other.growable_ = false;
}

}  // namespace IO
