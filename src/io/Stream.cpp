// SPDX-License-Identifier: MIT
#include <espalier/io/Stream.h>

namespace IO {

namespace {

// Swallows writes and is always at its end.
class NullReader final : public Stream {
public:
    bool CanRead() const override { return true; }
    bool CanWrite() const override { return true; }
    void Close() override {}
};

}  // namespace

Stream::~Stream() = default;

bool Stream::CanRead() const { return false; }
bool Stream::CanSeek() const { return false; }
bool Stream::CanWrite() const { return false; }
long Stream::Length() const { return 0; }
long Stream::Position() const { return 0; }
void Stream::Flush() {}
int Stream::Read(unsigned char*, int, int) { return 0; }
long Stream::Seek(long, SeekOrigin) { return 0; }
void Stream::SetLength(long) {}
void Stream::Write(const unsigned char*, int, int) {}

void Stream::SetPosition(long position) { Seek(position, SeekOrigin::Begin); }

int Stream::ReadByte() {
    unsigned char b = 0;
    return Read(&b, 0, 1) == 1 ? b : -1;
}

void Stream::WriteByte(unsigned char b) { Write(&b, 0, 1); }

Stream* Stream::Null() {
    static NullReader instance;
    return &instance;
}

}  // namespace IO
