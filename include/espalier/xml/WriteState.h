// SPDX-License-Identifier: MIT
#pragma once

namespace Xml {

/// Where an XmlTextWriter stands in its document.
class WriteState {
public:
    enum WRITE_STATE {
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

private:
    WRITE_STATE value_ = Start;
};

}  // namespace Xml
