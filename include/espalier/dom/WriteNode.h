// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>

namespace Xml {
class XmlTextWriter;
}

namespace Dom {

/// Writes a node with all that is below it, in the true order of the children.
///
/// A document is written with an XML declaration (WriteStartDocument()) when the writer has not
/// begun, and with its Doctype() when that names the root element; a fragment as its children; an
/// attribute into the start tag that is open. Below a reference to an entity nothing is written.
///
/// Names are written with the prefixes that they have, and namespaces are declared by the
/// attributes that do so in the tree; declarations are added where one is missing. Where such an
/// attribute contradicts the namespace of a node, the attribute is written and no other. A prefix
/// is replaced only where an attribute has none for its namespace, or one that its element means
/// otherwise. In a tree that was loaded without namespaces nothing is added.
///
/// What markup cannot hold is taken apart: a CDATA section with "]]>" becomes two, and a comment
/// with "--" or "-" at its end and an instruction with "?>" get a space there. White space in a
/// document outside of its root element is left out. Line breaks become what the writer's
/// NewLineHandling says; with NewLineHandling::Entitize each is read back as it was.
///
/// Depth costs no stack.
///
/// \code
///     Xml::XmlTextWriter writer("books.xml", Xml::Encoding::UTF8());
///     Dom::WriteNode(document, writer);
///     writer.Close();
/// \endcode
///
/// \throws Xml::Exception what the writer throws, for example "Invalid XML character", and "Invalid
///     Argument: Empty name" for the references of a tree that was loaded without namespaces. What
///     was written before stays.
ESPALIER_EXPORT void WriteNode(const Node& node, Xml::XmlTextWriter& writer);

}  // namespace Dom
