// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Xml {

/// The state of xml:space.
class XmlSpace {
public:
    enum SPACE {
        SpaceDefault = 0,  ///< xml:space="default" is in force
        SpaceNone = 1,     ///< no xml:space is in force
        SpacePreserve = 2  ///< xml:space="preserve" is in force
    };
    /// The same by another name.
    using XML_SPACE = SPACE;

    /// Holds SpaceDefault.
    constexpr XmlSpace() = default;
    constexpr XmlSpace(SPACE value) : value_(value) {}

    constexpr XmlSpace& operator=(SPACE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const XmlSpace& other) const { return value_ == other.value_; }
    constexpr bool operator==(SPACE value) const { return value_ == value; }

    constexpr operator SPACE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case SpaceDefault: return "SpaceDefault";
        case SpaceNone: return "SpaceNone";
        case SpacePreserve: return "SpacePreserve";
        }
        return "?";
    }

private:
    SPACE value_ = SpaceDefault;
};

}  // namespace Xml
