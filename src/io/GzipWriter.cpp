// SPDX-License-Identifier: MIT
//
// Small writes are gathered in input_ before zlib sees them; large ones go to zlib at once. What
// zlib makes of them gathers in output_, and goes to the target whenever that is full.
#include "io/GzipWriter.h"

#include <espalier/io/Stream.h>

#include "io/SeekTarget.h"
#include "io/ZlibMemory.h"

#include <algorithm>
#include <cstring>

namespace IO::detail {

namespace {

constexpr uInt kBufferSize = 16 * 1024;  // of input and output
constexpr int kWindowBits = 15 + 16;     // the largest window; gzip's header and trailer
constexpr int kMemoryLevel = 8;          // zlib's own default

}  // namespace

GzipWriter::GzipWriter(Stream& target)
    : target_(target),
      input_(std::make_unique_for_overwrite<unsigned char[]>(kBufferSize)),
      output_(std::make_unique_for_overwrite<unsigned char[]>(kBufferSize)) {
    UseOperatorNew(zlib_);
    isReady_ = deflateInit2(&zlib_, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kWindowBits, kMemoryLevel,
                            Z_DEFAULT_STRATEGY) == Z_OK;
    zlib_.next_out = output_.get();
    zlib_.avail_out = kBufferSize;
}

GzipWriter::~GzipWriter() {
    if (isReady_) deflateEnd(&zlib_);
}

// Fills the way with zero bytes.
long GzipWriter::SeekTo(long position) {
    if (position < position_) return kFailed;
    constexpr int kPiece = 4096;
    static constexpr unsigned char kZeros[kPiece] = {};
    while (position_ < position) {
        const long piece = std::min<long>(kPiece, position - position_);
        if (!Write(kZeros, static_cast<int>(piece))) return kFailed;
    }
    return position_;
}

bool GzipWriter::Write(const unsigned char* buffer, int count) {
    if (hasFailed_) return false;
    const uInt size = static_cast<uInt>(count);
    hasFailed_ = true;  // until all has gone well: the target may throw
    if (size > kBufferSize - waiting_) CompressWaiting();
    if (size > kBufferSize) {
        Compress(buffer, size, Z_NO_FLUSH);
    } else {
        std::memcpy(input_.get() + waiting_, buffer, size);
        waiting_ += size;
    }
    hasFailed_ = false;
    position_ = SaturatingAdd(position_, count);
    return true;
}

bool GzipWriter::Flush() {
    if (hasFailed_) return false;
    hasFailed_ = true;
    CompressWaiting();
    Compress(nullptr, 0, Z_PARTIAL_FLUSH);
    WriteOutput();
    hasFailed_ = false;
    target_.Flush();
    return true;
}

void GzipWriter::Finish() {
    if (hasFailed_) return;
    hasFailed_ = true;
    CompressWaiting();
    Compress(nullptr, 0, Z_FINISH);
    WriteOutput();
}

void GzipWriter::CompressWaiting() {
    if (waiting_ == 0) return;
    Compress(input_.get(), waiting_, Z_NO_FLUSH);
    waiting_ = 0;
}

// Lets zlib have the bytes, and the target what comes of them. zlib has done all it can as soon as
// it leaves room in the output.
void GzipWriter::Compress(const unsigned char* bytes, uInt count, int flush) {
    zlib_.next_in = bytes;
    zlib_.avail_in = count;
    do {
        if (zlib_.avail_out == 0) WriteOutput();
        deflate(&zlib_, flush);
    } while (zlib_.avail_out == 0);
}

void GzipWriter::WriteOutput() {
    const uInt count = kBufferSize - zlib_.avail_out;
    if (count > 0) target_.Write(output_.get(), 0, static_cast<int>(count));
    zlib_.next_out = output_.get();
    zlib_.avail_out = kBufferSize;
}

}  // namespace IO::detail
