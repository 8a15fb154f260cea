// SPDX-License-Identifier: MIT
#pragma once

#include "support/ReaderSettings.h"

#include <string>
#include <string_view>

/// \file
/// Writes the nodes of a document as text, one line a node, so that tests compare and show them:
///
///     XmlDeclaration xml "version='1.0'" depth=1 @1:3
///       Pseudo version="1.0"
///     Element p:a prefix=p local=a ns=urn:x depth=1 empty lang=en @2:1
///       Attribute xmlns:p='urn:x' prefix=xmlns local=p depth=2 @2:6
///       Part Text "urn:x"
///     Text "one\ntwo" depth=2 @3:1
///     error 4:7 End tag 'b' doesn't match start tag 'a' [</b>]
///
/// "@" precedes line and position. Values stand in the quotation marks that the document uses.
/// Prefix, local name (where it differs from the name), namespace, language and xml:space are left
/// out where they are empty or not in force. Names and values are escaped (EscapedText.h). The
/// parts of an attribute's value are shown where the settings ask for them. An error's argument
/// follows in brackets unless empty.
namespace support {

/// Returns the line of the current node and those of its attributes; the reader ends up where it
/// was. Fails the test where properties of the node contradict each other.
std::string DumpNode(Xml::XmlTextReader& reader);

/// Reads to the end or to the first Xml::Exception and returns the lines of all nodes. Resolves
/// references and shows the parts of values as `settings` say; the other settings are the reader's.
std::string DumpNodes(Xml::XmlTextReader& reader, const ReaderSettings& settings = {});

/// Reads the document made of these bytes, with these settings.
/// \param bytesPerRead how many bytes its stream gives at a time; 0 for as many as are asked for
std::string DumpDocument(std::string_view bytes, const ReaderSettings& settings = {},
                         int bytesPerRead = 0);

}  // namespace support
