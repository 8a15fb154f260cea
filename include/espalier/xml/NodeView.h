// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/XmlNodeType.h>

#include <cstddef>

namespace Xml::detail {

/// A name and its parts.
struct NameParts {
    astring qualified;
    astring local;
    astring prefix;
};

/// The node that a reader stands on, as the properties of XmlTextReader show it. It stands in a
/// public header so that they can be inline; it is no interface of its own.
struct NodeView {
    const NameParts* name = nullptr;        ///< never null in a reader
    const astring* namespaceUri = nullptr;  ///< never null in a reader
    astring* value = nullptr;               ///< never null in a reader
    int depth = 0;
    std::size_t charsRead =
        0;  ///< bytes of the value that ReadChars() has returned; on an element,
            ///< not 0 when it ended the text that ReadChars() returned last
    XmlNodeType::XML_NODE_TYPE type = XmlNodeType::None;
    bool isEmptyElement = false;  ///< of the element, also on its attributes
    bool isRaw = false;           ///< line ends in the value are still to be normalized
};

}  // namespace Xml::detail
