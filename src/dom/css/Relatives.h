// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>

#include "dom/NodeAccess.h"

namespace Dom::CSS::detail {

/// Returns a node as the element that it is, or null.
inline const Element* AsElement(const Node* node) {
    return node != nullptr && node->NodeType() == Node::ELEMENT_NODE
               ? static_cast<const Element*>(node)
               : nullptr;
}

/// Returns the element around another; null for the root and where there is none.
inline const Element* ParentOf(const Element& element) { return AsElement(element.ParentNode()); }

/// Returns the element before another, or null.
inline const Element* PreviousOf(const Element& element) {
    const Node* node = Dom::detail::NodeAccess::Previous(element);
    while (node != nullptr && node->NodeType() != Node::ELEMENT_NODE)
        node = Dom::detail::NodeAccess::Previous(*node);
    return AsElement(node);
}

}  // namespace Dom::CSS::detail
