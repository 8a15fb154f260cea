// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/xml/XmlNodeType.h>

namespace Dom {

/// The kind of a node of a tree. Numbers up to 12 are those of DOM Level 2 Core, and all are those
/// of Xml::XmlNodeType.
class ESPALIER_EXPORT DOMNodeType {
public:
    /// The kinds.
    enum DOM_NODE_TYPE : int {
        UNDEFINED_NODE = 0,               ///< no kind
        ELEMENT_NODE = 1,                 ///< an Element
        ATTRIBUTE_NODE = 2,               ///< an Attr
        TEXT_NODE = 3,                    ///< a Text
        CDATA_SECTION_NODE = 4,           ///< a CDATASection
        ENTITY_REFERENCE_NODE = 5,        ///< an EntityReference
        ENTITY_NODE = 6,                  ///< no class has it
        PROCESSING_INSTRUCTION_NODE = 7,  ///< a ProcessingInstruction
        COMMENT_NODE = 8,                 ///< a Comment
        DOCUMENT_NODE = 9,                ///< a Document
        DOCUMENT_TYPE_NODE = 10,          ///< a DocumentType
        DOCUMENT_FRAGMENT_NODE = 11,      ///< a DocumentFragment
        NOTATION_NODE = 12,               ///< no class has it
        XML_DECLARATION_NODE = 13         ///< no class has it
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
