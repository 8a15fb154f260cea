// SPDX-License-Identifier: MIT
#pragma once

#include "io/GzipHandle.h"

#include <zlib.h>

#include <cstddef>
#include <memory>

namespace IO::detail {

/// Decompresses the gzip data that a stream holds from its position on.
class GzipReader final : public GzipHandle {
public:
    explicit GzipReader(Stream& source);
    ~GzipReader() override;

    /// Tells whether zlib had the memory to begin; nothing else works without.
    bool IsReady() const { return isReady_; }

    long Position() const override { return position_ + toSkip_; }
    long SeekTo(long position) override;
    int Read(unsigned char* buffer, int count) override;
    const char* Error() const override { return error_; }
    bool Write(const unsigned char*, int) override { return false; }
    bool Flush() override { return true; }
    void Finish() override {}

private:
    enum class State;

    int Deliver(unsigned char* buffer, int count);
    void FillOutput();
    uInt Produce(unsigned char* buffer, uInt room);
    uInt Inflate(unsigned char* buffer, uInt room);
    uInt CopyThrough(unsigned char* buffer, uInt room);
    void LookForMember();
    void LoadInput();
    void Fail(const char* error);
    bool Rewind();

    Stream& source_;
    long start_;            // where the source stood at first; kFailed when it cannot go back there
    z_stream zlib_ = {};    // next_in and avail_in are the compressed bytes that were read ahead
    bool isReady_ = false;  // zlib_ is initialised
    bool holdsOutput_ = false;  // zlib may have output left that found no room
    State state_;
    bool sourceEnded_ = false;
    const char* error_ = nullptr;  // what ended the data too early; static, or zlib_'s own
    long position_ = 0;            // of what Read() gives next
    long toSkip_ = 0;              // bytes to pass over before that
    std::unique_ptr<unsigned char[]> input_;   // made when first read into
    std::unique_ptr<unsigned char[]> output_;  // made for the first small read
    std::size_t outputNext_ = 0;               // where delivery goes on in output_
    std::size_t outputEnd_ = 0;                // behind the last byte in output_
};

}  // namespace IO::detail
