// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/XmlNodeType.h>

#include "xml/PlaceCounter.h"

namespace Xml::detail {

struct XmlName;

/// Returns the shared empty string that nodes without a part answer with.
const astring& EmptyText();

/// How line ends in a value are still to be normalized.
enum class Normalize : unsigned char {
    Done,      ///< nothing is to be done
    Text,      ///< CR LF and CR become LF (XML 1.0 section 2.11)
    Attribute  ///< tab, CR LF, CR and LF become a space (XML 1.0 section 3.3.3)
};

/// A node as the reader's properties show it. There is one object per kind of node, filled again
/// for each node of that kind; what a node does not have points to the empty string.
struct XmlTokenInfo {
    XmlNodeType::XML_NODE_TYPE type = XmlNodeType::None;
    int depth = 0;
    const astring* name = &EmptyText();
    const astring* localName = &EmptyText();
    const astring* prefix = &EmptyText();
    const astring* namespaceUri = &EmptyText();
    int columnOffset = 0;   ///< where it starts, counted from where its markup starts
    bool isEmpty = false;   ///< an empty-element tag
    bool hasPlace = false;  ///< `place` tells where it starts, not the scanner's mark
    Place place;

    /// Returns the value, normalized when that was asked for.
    const astring& Value() {
        if (normalize != Normalize::Done) NormalizeValue();
        return value;
    }

    astring value;  ///< as scanned; read it through Value()
    Normalize normalize = Normalize::Done;

private:
    void NormalizeValue();
};

/// An attribute of the current element, or a pseudo-attribute of the declaration.
struct XmlAttributeTokenInfo : XmlTokenInfo {
    XmlName* entry = nullptr;           ///< the name; null for a pseudo-attribute
    const unsigned char* at = nullptr;  ///< where it starts in the window, when place is not known
    char quote = '"';
    bool holdsReferences = false;  ///< the value has references that were not replaced
};

}  // namespace Xml::detail
