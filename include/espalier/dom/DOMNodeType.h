// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/xml/XmlNodeType.h>

namespace Dom {

/// The kind of a node of a tree. Numbers up to 12 are those of DOM Level 2 Core, and all are those
/// of Xml::XmlNodeType.
class ESPALIER_EXPORT DOMNodeType {
public:
    enum DOM_NODE_TYPE : int {
        UNDEFINED_NODE = 0,
        ELEMENT_NODE = 1,
        ATTRIBUTE_NODE = 2,
        TEXT_NODE = 3,
        CDATA_SECTION_NODE = 4,
        ENTITY_REFERENCE_NODE = 5,
        ENTITY_NODE = 6,
        PROCESSING_INSTRUCTION_NODE = 7,
        COMMENT_NODE = 8,
        DOCUMENT_NODE = 9,
        DOCUMENT_TYPE_NODE = 10,
        DOCUMENT_FRAGMENT_NODE = 11,
        NOTATION_NODE = 12,
        XML_DECLARATION_NODE = 13
    };

    /// Holds UNDEFINED_NODE.
    constexpr DOMNodeType() = default;
    constexpr DOMNodeType(DOM_NODE_TYPE value) : value_(value) {}
    /// Takes the number over when it is below 14; others give UNDEFINED_NODE.
    constexpr DOMNodeType(Xml::XmlNodeType type) : value_(From(type)) {}

    constexpr DOMNodeType& operator=(Xml::XmlNodeType type) {
        value_ = From(type);
        return *this;
    }

    constexpr bool operator==(const DOMNodeType& other) const { return value_ == other.value_; }
    constexpr bool operator==(DOM_NODE_TYPE value) const { return value_ == value; }

    constexpr operator DOM_NODE_TYPE() const { return value_; }

    /// Returns the name of the value, for example "ELEMENT_NODE"; "?" for a number without one.
    const char* ToString() const;

private:
    static constexpr DOM_NODE_TYPE From(Xml::XmlNodeType type) {
        const auto number = static_cast<int>(static_cast<Xml::XmlNodeType::XML_NODE_TYPE>(type));
        return number >= 0 && number < 14 ? static_cast<DOM_NODE_TYPE>(number) : UNDEFINED_NODE;
    }

    DOM_NODE_TYPE value_ = UNDEFINED_NODE;
};

}  // namespace Dom
