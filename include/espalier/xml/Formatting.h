// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

/// How an XmlTextWriter lays out markup.
class Formatting {
public:
    enum FORMATTING_MODE : int {
        None = 0,      ///< markup stands where it is written
        Indented = 1,  ///< elements, comments and instructions begin a line of their own
    };

    /// Holds None.
    constexpr Formatting() = default;
    constexpr Formatting(FORMATTING_MODE value) : value_(value) {}

    constexpr Formatting& operator=(FORMATTING_MODE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const Formatting& other) const { return value_ == other.value_; }
    constexpr bool operator==(FORMATTING_MODE value) const { return value_ == value; }

    constexpr operator FORMATTING_MODE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case None: return "None";
        case Indented: return "Indented";
        }
        return "?";
    }

private:
    FORMATTING_MODE value_ = None;
};

}  // namespace Xml
