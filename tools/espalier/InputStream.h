// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

namespace Tool {

/// A stream that is read once, from its start to its end. A document comes through a chain of them,
/// each of which owns the one below it.
class InputStream : public IO::Stream {
public:
    bool CanRead() const override { return true; }
    void Close() override {}
};

}  // namespace Tool
