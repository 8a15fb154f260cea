// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlEntityHandling.h>

#include <string>
#include <string_view>
#include <vector>

/// Returns what formatting has to keep of a document: its nodes, one a line, but for the white
/// space that it may change. White space is there where text is in the same element, where
/// xml:space is "preserve", inside of such elements, and where it is all that an element holds.
/// Line breaks are LF. A declaration is left out, unless it says standalone, and so is the name of
/// the encoding.
/// \throws Xml::Exception
std::vector<std::string> FormattedNodes(std::string_view document,
                                        Xml::XmlEntityHandling::XML_ENTITY_HANDLING handling);
