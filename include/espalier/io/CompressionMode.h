// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace IO {

/// Says which way the bytes of a GZipStream go.
class CompressionMode {
public:
    enum CMODE : int {
        Compress = 0,   ///< what is written to the stream goes compressed into its target
        Decompress = 1  ///< what is read from the stream comes decompressed from its target
    };

    /// Makes Decompress, the mode of a GZipStream that was never opened.
    constexpr CompressionMode() = default;
    constexpr CompressionMode(CMODE value) : value_(value) {}

    constexpr CompressionMode& operator=(CMODE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const CompressionMode& other) const { return value_ == other.value_; }
    constexpr bool operator==(CMODE value) const { return value_ == value; }

    constexpr operator CMODE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case Compress: return "Compress";
        case Decompress: return "Decompress";
        }
        return "?";
    }

private:
    CMODE value_ = Decompress;
};

}  // namespace IO
