// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

namespace Xml {

/// The kind of node that a reader stands on. Clients may store and compare the numbers.
class XmlNodeType {
public:
    enum XML_NODE_TYPE {
        None = 0,                    ///< no node: before the first Read() and after the end
        Element = 1,                 ///< a start tag or an empty-element tag
        Attribute = 2,               ///< an attribute of the current element
        Text = 3,                    ///< character data
        CDATA = 4,                   ///< a CDATA section
        EntityReference = 5,         ///< a reference that was not expanded
        Entity = 6,                  ///< never reported by the reader
        ProcessingInstruction = 7,   ///< a processing instruction
        Comment = 8,                 ///< a comment
        Document = 9,                ///< never reported by the reader
        DocumentType = 10,           ///< the document type declaration
        DocumentFragment = 11,       ///< never reported by the reader
        Notation = 12,               ///< never reported by the reader
        XmlDeclaration = 13,         ///< the XML declaration
        EndElement = 14,             ///< an end tag
        EndEntity = 15,              ///< the end of an entity that was resolved
        SignificantWhitespace = 16,  ///< white space where xml:space is "preserve"
        Whitespace = 17              ///< other white space between markup
    };

    /// Holds None.
    constexpr XmlNodeType() = default;
    constexpr XmlNodeType(XML_NODE_TYPE value) : value_(value) {}

    constexpr XmlNodeType& operator=(XML_NODE_TYPE value) {
        value_ = value;
        return *this;
    }

    constexpr bool operator==(const XmlNodeType& other) const { return value_ == other.value_; }
    constexpr bool operator==(XML_NODE_TYPE value) const { return value_ == value; }

    constexpr operator XML_NODE_TYPE() const { return value_; }

    /// Returns the value's name, or "?" for a number that has none.
    constexpr const char* ToString() const {
        switch (value_) {
        case None: return "None";
        case Element: return "Element";
        case Attribute: return "Attribute";
        case Text: return "Text";
        case CDATA: return "CDATA";
        case EntityReference: return "EntityReference";
        case Entity: return "Entity";
        case ProcessingInstruction: return "ProcessingInstruction";
        case Comment: return "Comment";
        case Document: return "Document";
        case DocumentType: return "DocumentType";
        case DocumentFragment: return "DocumentFragment";
        case Notation: return "Notation";
        case XmlDeclaration: return "XmlDeclaration";
        case EndElement: return "EndElement";
        case EndEntity: return "EndEntity";
        case SignificantWhitespace: return "SignificantWhitespace";
        case Whitespace: return "Whitespace";
        }
        return "?";
    }

private:
    XML_NODE_TYPE value_ = None;
};

}  // namespace Xml
