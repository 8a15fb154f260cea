// SPDX-License-Identifier: MIT
#pragma once

#include "io/GzipHandle.h"

#include <zlib.h>

#include <memory>

namespace IO::detail {

/// Compresses into a stream, from its position on, as one gzip member.
class GzipWriter final : public GzipHandle {
public:
    explicit GzipWriter(Stream& target);
    ~GzipWriter() override;

    /// Tells whether zlib had the memory to begin; nothing else works without.
    bool IsReady() const { return isReady_; }

    long Position() const override { return position_; }
    long SeekTo(long position) override;
    int Read(unsigned char*, int) override { return 0; }
    const char* Error() const override { return "stream error"; }
    bool Write(const unsigned char* buffer, int count) override;
    bool Flush() override;
    void Finish() override;

private:
    void CompressWaiting();
    void Compress(const unsigned char* bytes, uInt count, int flush);
    void WriteOutput();

    Stream& target_;
    z_stream zlib_ = {};
    bool isReady_ = false;    // zlib_ is initialised
    bool hasFailed_ = false;  // bytes were lost: nothing that follows them would be of use
    long position_ = 0;
    std::unique_ptr<unsigned char[]> input_;   // small writes, gathered
    uInt waiting_ = 0;                         // bytes in input_
    std::unique_ptr<unsigned char[]> output_;  // zlib_ knows how far it is filled
};

}  // namespace IO::detail
