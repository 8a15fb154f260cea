// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Attr.h>
#include <espalier/dom/Node.h>

#include <string>
#include <vector>

/// \file
/// Writes what is below a node as text, one line a node, so that tests compare and show it:
///
///     Element p:a {urn:p} x="1" p:y{urn:y}="2"
///       Text "one\ntwo"
///       CDATASection "three"
///       EntityReference e
///     Comment "c"
///     ProcessingInstruction target "data"
///
/// Children stand below their parent in their true order, two blanks further right. Namespaces are
/// left out where they are empty. Names and values are escaped (EscapedText.h).
namespace support {

/// Says how attributes are asked for.
enum class AttributeAccess {
    Views,  ///< without nodes
    Nodes   ///< from the map
};

/// Returns the lines of all nodes below `root`.
std::vector<std::string> TreeBelow(const Dom::Node& root,
                                   AttributeAccess access = AttributeAccess::Views);

/// As TreeBelow(), with the texts that follow each other joined, CDATA sections being texts, and
/// without empty ones: as much as a document can tell.
std::vector<std::string> ContentBelow(const Dom::Node& root);

/// Returns all that an attribute tells of its value: `value "v" node "n" Text "a" EntityReference
/// e`, where what follows the name are the children. Makes the child that is made on demand.
std::string PartsOf(Dom::Attr& attribute);

/// Looks at all links of the nodes below `root`, which are to be those of a tree that nobody has
/// edited.
/// \return what is wrong first, or ""
std::string WrongLink(Dom::Node& root);

}  // namespace support
