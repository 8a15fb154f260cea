// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

/// What an XmlTextWriter does with line breaks in texts and values.
class NewLineHandling {
public:
    enum NEWLINE_HANDLING : int {
        NoHandling = 0,  ///< they are written as they are
        Entitize = 1,    ///< what a reader would change is written as a character reference
        Replace = 2,     ///< they become the new-line characters of the writer
    };

    /// Holds NoHandling.
    constexpr NewLineHandling() = default;
    constexpr NewLineHandling(NEWLINE_HANDLING value) : value_(value) {}

    constexpr NewLineHandling& operator=(NEWLINE_HANDLING value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const NewLineHandling& other) const { return value_ == other.value_; }
    constexpr bool operator==(NEWLINE_HANDLING value) const { return value_ == value; }

    constexpr operator NEWLINE_HANDLING() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case NoHandling: return "NoHandling";
        case Entitize: return "Entitize";
        case Replace: return "Replace";
        }
        return "?";
    }

private:
    NEWLINE_HANDLING value_ = NoHandling;
};

}  // namespace Xml
