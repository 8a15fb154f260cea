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
/// begun; a fragment as its children. Names are written with the prefixes that they have, and
/// namespaces are declared by the attributes that do so in the tree, or by the writer where one is
/// missing. Depth costs no stack.
///
/// \code
///     Xml::XmlTextWriter writer("books.xml", Xml::Encoding::UTF8());
///     Dom::WriteNode(document, writer);
///     writer.Close();
/// \endcode
///
/// \throws Xml::Exception what the writer throws, for example for names that are not well-formed
ESPALIER_EXPORT void WriteNode(const Node& node, Xml::XmlTextWriter& writer);

}  // namespace Dom
