// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

/// Where an XmlTextWriter stands in its document.
class WriteState {
public:
    enum WRITE_STATE : int {
        Start = 0,      ///< nothing has been written, or a document has ended
        Prolog = 1,     ///< something stands before the root element
        Element = 2,    ///< a start tag is open
        Attribute = 3,  ///< an attribute's value is open
        Content = 4,    ///< between tags
        Closed = 5,     ///< there is no stream
    };

    /// Holds Start.
    constexpr WriteState() = default;
    constexpr WriteState(WRITE_STATE value) : value_(value) {}

    constexpr WriteState& operator=(WRITE_STATE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const WriteState& other) const { return value_ == other.value_; }
    constexpr bool operator==(WRITE_STATE value) const { return value_ == value; }

    constexpr operator WRITE_STATE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case Start: return "Start";
        case Prolog: return "Prolog";
        case Element: return "Element";
        case Attribute: return "Attribute";
        case Content: return "Content";
        case Closed: return "Closed";
        }
        return "?";
    }

private:
    WRITE_STATE value_ = Start;
};

}  // namespace Xml
