// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Xml {

/// Says by which rules a reader judges a document.
class XmlConformance {
public:
    enum XML_CONFORMANCE {
        Compatible = 0,  ///< the rules of the reader, which docs/conformance.md lists
        Standard = 1     ///< XML 1.0 (fifth edition) and Namespaces in XML 1.0 (third edition)
    };

    /// Holds Compatible.
    constexpr XmlConformance() = default;
    constexpr XmlConformance(XML_CONFORMANCE value) : value_(value) {}

    constexpr XmlConformance& operator=(XML_CONFORMANCE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const XmlConformance& other) const { return value_ == other.value_; }
    constexpr bool operator==(XML_CONFORMANCE value) const { return value_ == value; }

    constexpr operator XML_CONFORMANCE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case Compatible: return "Compatible";
        case Standard: return "Standard";
        }
        return "?";
    }

private:
    XML_CONFORMANCE value_ = Compatible;
};

}  // namespace Xml
