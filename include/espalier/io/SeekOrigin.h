// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace IO {

/// Says what the offset of Stream::Seek() counts from.
class SeekOrigin {
public:
    enum SEEK_ORIGIN : int {
        Begin = 0,    ///< the start of the stream
        Current = 1,  ///< the current position
        End = 2       ///< the end, which is the length
    };

    constexpr SeekOrigin(SEEK_ORIGIN value) : value_(value) {}

    constexpr SeekOrigin& operator=(SEEK_ORIGIN value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const SeekOrigin& other) const { return value_ == other.value_; }
    constexpr bool operator==(SEEK_ORIGIN value) const { return value_ == value; }

    constexpr operator SEEK_ORIGIN() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case Begin: return "Begin";
        case Current: return "Current";
        case End: return "End";
        }
        return "?";
    }

private:
    SEEK_ORIGIN value_;
};

}  // namespace IO
