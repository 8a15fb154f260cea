// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Xml {

/// Says what a reader does with references to entities.
class XmlEntityHandling {
public:
    enum XML_ENTITY_HANDLING {
        ExpandNothing = 0,       ///< character and entity references stay as written
        ExpandCharEntities = 1,  ///< character references become characters, others are reported
        ExpandEntities = 2       ///< all references are replaced
    };

    /// Holds ExpandCharEntities.
    constexpr XmlEntityHandling() = default;
    constexpr XmlEntityHandling(XML_ENTITY_HANDLING value) : value_(value) {}

    constexpr XmlEntityHandling& operator=(XML_ENTITY_HANDLING value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const XmlEntityHandling& other) const {
        return value_ == other.value_;
    }
    constexpr bool operator==(XML_ENTITY_HANDLING value) const { return value_ == value; }

    constexpr operator XML_ENTITY_HANDLING() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case ExpandNothing: return "ExpandNothing";
        case ExpandCharEntities: return "ExpandCharEntities";
        case ExpandEntities: return "ExpandEntities";
        }
        return "?";
    }

private:
    XML_ENTITY_HANDLING value_ = ExpandCharEntities;
};

}  // namespace Xml
