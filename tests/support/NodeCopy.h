// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include <string>
#include <vector>

/// \file
/// Writes the nodes of a document again, and tells documents apart by their nodes.
namespace support {

/// Writes all nodes that `reader` still has to read, one by one, so that they read back the same.
///
/// White space outside the root element, which a writer does not write, is left out; an XML
/// declaration has the version, the writer's encoding and the `standalone` of the document. The
/// writer is closed at the end.
/// \param declares writes an XML declaration also where the document has none
void CopyNodes(Xml::XmlTextReader& reader, Xml::XmlTextWriter& writer, bool declares);

/// Reads the nodes of a document and returns them one a line, without places, as far as a writer
/// can tell them: a text, the white space and the character references beside it are one text;
/// the ends of entities, and what CopyNodes() leaves out or replaces, are left out.
/// \throws Xml::Exception where the document is not well-formed
std::vector<std::string> TellNodes(Xml::XmlTextReader& reader);

}  // namespace support
