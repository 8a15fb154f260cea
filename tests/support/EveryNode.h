// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

#include <gtest/gtest.h>

namespace support {

/// A document with a node of every type, in the order of kEveryNodeType, where the entity in it is
/// resolved and xml:space is taken as it says.
inline constexpr char kEveryNode[] =
    "<?xml version='1.0' encoding='UTF-8'?>\n"
    "<!DOCTYPE r PUBLIC '-//E//D' 'e.dtd' [<!ENTITY e 'E'>]><!--c--><?p d?>"
    "<r x='1' y='2'>t<![CDATA[d]]> &e;<b xml:space='preserve' z='3'> </b></r>";

/// The types of nodes that the reader reports, the attribute of an element last.
inline constexpr Xml::XmlNodeType::XML_NODE_TYPE kEveryNodeType[] = {
    Xml::XmlNodeType::XmlDeclaration,
    Xml::XmlNodeType::Whitespace,
    Xml::XmlNodeType::DocumentType,
    Xml::XmlNodeType::Comment,
    Xml::XmlNodeType::ProcessingInstruction,
    Xml::XmlNodeType::Element,
    Xml::XmlNodeType::Text,
    Xml::XmlNodeType::CDATA,
    Xml::XmlNodeType::EntityReference,
    Xml::XmlNodeType::EndEntity,
    Xml::XmlNodeType::SignificantWhitespace,
    Xml::XmlNodeType::EndElement,
    Xml::XmlNodeType::Attribute,
};

/// Reads the next node, after resolving the entity reference that the reader may stand on.
inline bool ReadResolving(Xml::XmlTextReader& reader) {
    if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
    return reader.Read();
}

/// Reads to the next node of a type, or to the first attribute of the next element.
inline void ReadToType(Xml::XmlTextReader& reader, Xml::XmlNodeType type) {
    const bool isAttribute = type == Xml::XmlNodeType::Attribute;
    Xml::XmlNodeType wanted = type;
    if (isAttribute) wanted = Xml::XmlNodeType::Element;
    do {
        ASSERT_TRUE(ReadResolving(reader)) << "no " << type.ToString();
    } while (reader.NodeType() != wanted);
    if (isAttribute) {
        ASSERT_TRUE(reader.MoveToFirstAttribute());
    }
}

}  // namespace support
