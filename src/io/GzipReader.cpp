// SPDX-License-Identifier: MIT
//
// What the next bytes of the source are taken for:
//
//     state     the next bytes                 on the bytes of the  on other bytes     at the end
//               are                            magic number                            of the
//               source
//     --------  -----------------------------  -------------------  -----------------  -----------
//     Start     the start of the input         Member               Plain              End
//     Between   what follows a member          Member               End: ignored       End
//     Member    inside of a member             zlib decides; Between behind its end    error
//     Plain     no gzip data at all            copied               copied             End
//     End       nothing is read any more
//
// Large reads are decompressed right into the caller's buffer, small ones come out of output_:
//
//     0           outputNext_    outputEnd_    kBufferSize
//     | delivered | waiting      |             |
#include "io/GzipReader.h"

#include <espalier/io/Stream.h>

#include "io/SeekTarget.h"
#include "io/ZlibMemory.h"

#include <algorithm>
#include <cstring>

namespace IO::detail {

namespace {

constexpr uInt kBufferSize = 64 * 1024;  // of the input, and of the output for small reads
constexpr int kSmallRead = 16 * 1024;    // below this many bytes the output buffer pays
constexpr int kWindowBits = 15 + 16;     // the largest window; gzip's header and trailer, no other
constexpr unsigned char kMagic[] = {0x1F, 0x8B};

}  // namespace

enum class GzipReader::State { Start, Between, Member, Plain, End };

GzipReader::GzipReader(Stream& source)
    : source_(source),
      start_(source.CanSeek() ? source.Position() : kFailed),
      state_(State::Start) {
    UseOperatorNew(zlib_);
    isReady_ = inflateInit2(&zlib_, kWindowBits) == Z_OK;
}

GzipReader::~GzipReader() {
    if (isReady_) inflateEnd(&zlib_);
}

// Going forward only notes how far: the next Read() does the work.
long GzipReader::SeekTo(long position) {
    if (position < 0) return kFailed;
    if (position < position_ && !Rewind()) return kFailed;
    toSkip_ = position - position_;
    return position;
}

int GzipReader::Read(unsigned char* buffer, int count) {
    while (toSkip_ > 0) {
        FillOutput();
        const long waiting = static_cast<long>(outputEnd_ - outputNext_);
        if (waiting == 0) break;  // the data ends before
        const long skipped = std::min(waiting, toSkip_);
        outputNext_ += static_cast<std::size_t>(skipped);
        position_ += skipped;
        toSkip_ -= skipped;
    }
    if (toSkip_ > 0) {
        toSkip_ = 0;
        return 0;
    }
    int delivered = 0;
    while (delivered < count) {
        const int piece = Deliver(buffer + delivered, count - delivered);
        if (piece == 0) break;
        delivered += piece;
    }
    return delivered;
}

// Delivers up to `count` bytes and moves the position; 0 only when there are no more.
int GzipReader::Deliver(unsigned char* buffer, int count) {
    std::size_t piece = outputEnd_ - outputNext_;
    if (piece == 0 && count >= kSmallRead) {
        piece = Produce(buffer, static_cast<uInt>(count));
    } else {
        FillOutput();
        piece = std::min(outputEnd_ - outputNext_, static_cast<std::size_t>(count));
        if (piece > 0) std::memcpy(buffer, output_.get() + outputNext_, piece);
        outputNext_ += piece;
    }
    position_ = SaturatingAdd(position_, static_cast<long>(piece));
    return static_cast<int>(piece);
}

// Decompresses into the output buffer when nothing waits in it.
void GzipReader::FillOutput() {
    if (outputNext_ < outputEnd_) return;
    if (output_ == nullptr) output_ = std::make_unique_for_overwrite<unsigned char[]>(kBufferSize);
    outputNext_ = outputEnd_ = 0;
    outputEnd_ = Produce(output_.get(), kBufferSize);
}

// Decompresses or copies at least one byte, and up to `room`; 0 means the end or an error.
uInt GzipReader::Produce(unsigned char* buffer, uInt room) {
    uInt produced = 0;
    while (produced == 0 && error_ == nullptr && state_ != State::End) {
        if (state_ == State::Start || state_ == State::Between) LookForMember();
        if (state_ == State::Member) produced = Inflate(buffer, room);
        if (state_ == State::Plain) produced = CopyThrough(buffer, room);
    }
    return produced;
}

// Decompresses one piece of input, or what zlib holds back.
uInt GzipReader::Inflate(unsigned char* buffer, uInt room) {
    // What zlib holds back comes first: a source such as a pipe may have no more yet.
    if (zlib_.avail_in == 0 && !holdsOutput_) {
        LoadInput();
        if (error_ != nullptr) return 0;
        if (zlib_.avail_in == 0) {
            Fail("unexpected end of file");
            return 0;
        }
    }
    zlib_.next_out = buffer;
    zlib_.avail_out = room;
    const int result = inflate(&zlib_, Z_NO_FLUSH);
    holdsOutput_ = zlib_.avail_out == 0;
    if (result == Z_STREAM_END) state_ = State::Between;
    if (result == Z_MEM_ERROR) Fail("out of memory");
    if (result == Z_DATA_ERROR) {
        Fail(zlib_.msg != nullptr ? zlib_.msg : "compressed data error");
    }
    if (result == Z_STREAM_ERROR || result == Z_NEED_DICT) {
        Fail("internal error: inflate stream corrupt");
    }
    return room - zlib_.avail_out;
}

// Hands on input that is not compressed.
uInt GzipReader::CopyThrough(unsigned char* buffer, uInt room) {
    if (zlib_.avail_in == 0) LoadInput();
    const uInt copied = std::min(zlib_.avail_in, room);
    if (copied == 0) {
        state_ = State::End;
        return 0;
    }
    std::memcpy(buffer, zlib_.next_in, copied);
    zlib_.next_in += copied;
    zlib_.avail_in -= copied;
    return copied;
}

// Decides by the magic number what comes next.
void GzipReader::LookForMember() {
    while (zlib_.avail_in < sizeof kMagic && !sourceEnded_)
        LoadInput();
    if (error_ != nullptr) return;
    if (zlib_.avail_in >= sizeof kMagic && std::memcmp(zlib_.next_in, kMagic, sizeof kMagic) == 0) {
        inflateReset(&zlib_);
        holdsOutput_ = false;
        state_ = State::Member;
    } else {
        state_ = state_ == State::Start && zlib_.avail_in > 0 ? State::Plain : State::End;
    }
}

// Reads once from the source, behind what is left of the input, which is moved to the start of the
// buffer. Nothing changes when the source throws.
void GzipReader::LoadInput() {
    if (sourceEnded_) return;
    if (input_ == nullptr) input_ = std::make_unique_for_overwrite<unsigned char[]>(kBufferSize);
    if (zlib_.avail_in > 0) std::memmove(input_.get(), zlib_.next_in, zlib_.avail_in);
    zlib_.next_in = input_.get();
    const int room = static_cast<int>(kBufferSize - zlib_.avail_in);
    const int count = source_.Read(input_.get(), static_cast<int>(zlib_.avail_in), room);
    if (count > 0) {
        zlib_.avail_in += static_cast<uInt>(std::min(count, room));
    } else {
        sourceEnded_ = true;
        if (count < 0) Fail("file error");
    }
}

void GzipReader::Fail(const char* error) { error_ = error; }

// Goes back to the start of the data; false when the source cannot.
bool GzipReader::Rewind() {
    if (start_ < 0) return false;
    const long reached = source_.Seek(start_, SeekOrigin::Begin);
    if (reached >= 0 && reached != start_) Fail("file error");  // it stands who knows where
    if (reached != start_) return false;
    zlib_.avail_in = 0;
    state_ = State::Start;
    sourceEnded_ = false;
    error_ = nullptr;
    position_ = toSkip_ = 0;
    outputNext_ = outputEnd_ = 0;
    return true;
}

}  // namespace IO::detail
