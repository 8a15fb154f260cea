// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/StringStream.h>

#include "io/ByteRange.h"
#include "io/SeekTarget.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace IO {

StringStream::StringStream() = default;
StringStream::StringStream(const astring& text, bool writable) : text_(text), writable_(writable) {}
StringStream::StringStream(const StringStream& other) = default;
StringStream& StringStream::operator=(const StringStream& other) = default;
StringStream::~StringStream() = default;

bool StringStream::CanRead() const { return true; }
bool StringStream::CanSeek() const { return true; }
bool StringStream::CanWrite() const { return writable_; }
long StringStream::Length() const { return static_cast<long>(text_.length()); }
long StringStream::Position() const { return position_; }
void StringStream::Close() {}
void StringStream::Flush() {}

int StringStream::Read(unsigned char* buffer, int offset, int count) {
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    const long available = std::min<long>(range.count, StringStream::Length() - position_);
    if (available < 1) return 0;
    std::memcpy(buffer + range.offset, text_.data() + position_,
                static_cast<std::size_t>(available));
    position_ += available;
    return static_cast<int>(available);
}

long StringStream::Seek(long offset, SeekOrigin origin) {
    position_ = detail::SeekTarget(offset, origin, position_, Length());
    return position_;
}

void StringStream::SetLength(long length) {
    if (length >= 0) text_.resize(static_cast<std::size_t>(length));
}

void StringStream::Write(const unsigned char* buffer, int offset, int count) {
    if (!CanWrite()) {
        Xml::Exception::ThrowException("StringStream::Write: Write not supported");
    }
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1) return;

    const std::size_t end =
        static_cast<std::size_t>(position_) + static_cast<std::size_t>(range.count);
    if (end > text_.length()) text_.resize(end);
    std::memcpy(text_.begin() + position_, buffer + range.offset,
                static_cast<std::size_t>(range.count));
    position_ = static_cast<long>(end);
}

astring StringStream::GetString() const { return text_; }

}  // namespace IO
