// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/GZipStream.h>

#include "InputStream.h"

#include <memory>

namespace Tool {

/// What is in gzip data. All that comes before damaged data is delivered.
class UnpackedStream final : public InputStream {
public:
    explicit UnpackedStream(std::unique_ptr<IO::Stream> packed);

    /// \throws Xml::Exception "Damaged gzip data: " and what is wrong
    int Read(unsigned char* buffer, int offset, int count) override;

private:
    std::unique_ptr<IO::Stream> packed_;
    IO::GZipStream stream_;
};

}  // namespace Tool
