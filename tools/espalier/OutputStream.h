// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include "Output.h"

#include <algorithm>

namespace Tool {

/// Standard output as a stream.
class OutputStream final : public IO::Stream {
public:
    /// \param out not owned
    explicit OutputStream(Output& out) : out_(out) {}

    bool CanWrite() const override { return true; }
    void Close() override {}

    /// \throws BrokenPipe, OutputError
    void Write(const unsigned char* buffer, int offset, int count) override {
        out_.Write(std::string_view(reinterpret_cast<const char*>(buffer) + offset,
                                    static_cast<std::size_t>(std::max(0, count))));
    }

private:
    Output& out_;
};

}  // namespace Tool
