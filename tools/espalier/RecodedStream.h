// SPDX-License-Identifier: MIT
#pragma once

#include "InputEncoding.h"
#include "InputStream.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace Tool {

/// Turns a document into UTF-8. What is no character in its encoding becomes a byte that is none in
/// UTF-8, so that the reader refuses it at its place.
class RecodedStream final : public InputStream {
public:
    RecodedStream(std::unique_ptr<IO::Stream> next, const InputEncoding& encoding);

    /// Tells whether what has been delivered is anything else than what has been read.
    bool HasChanges() const { return hasChanges_; }

    int Read(unsigned char* buffer, int offset, int count) override;

private:
    static constexpr int kBlock = 16384;

    bool Fill();

    std::unique_ptr<IO::Stream> next_;
    SourceDecoder decoder_;
    std::array<unsigned char, kBlock> block_;
    std::string text_;
    std::size_t taken_ = 0;  // bytes of it that have been delivered
    bool atStart_ = true;
    bool atEnd_ = false;
    bool hasChanges_ = false;
};

}  // namespace Tool
