// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace IO {

/// Says how a FileStream opens a file by name.
class FileMode {
public:
    enum FILE_MODE : int {
        Append = 0,        ///< creates the file if it is missing; every write goes to its end
        Create = 1,        ///< creates the file if it is missing, empties it if it is there
        CreateNew = 2,     ///< creates the file; fails if it is there
        Open = 3,          ///< opens a file that is there; any number without a name does the same
        OpenOrCreate = 4,  ///< creates the file if it is missing
        Truncate = 5       ///< opens a file that is there and empties it
    };

    constexpr FileMode(FILE_MODE value) : value_(value) {}

    constexpr FileMode& operator=(FILE_MODE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const FileMode& other) const { return value_ == other.value_; }
    constexpr bool operator==(FILE_MODE value) const { return value_ == value; }

    constexpr operator FILE_MODE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case Append: return "Append";
        case Create: return "Create";
        case CreateNew: return "CreateNew";
        case Open: return "Open";
        case OpenOrCreate: return "OpenOrCreate";
        case Truncate: return "Truncate";
        }
        return "?";
    }

private:
    FILE_MODE value_;
};

}  // namespace IO
