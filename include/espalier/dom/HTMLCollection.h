// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/NodeList.h>

namespace Dom {

/// A live list of elements of one kind that are below a node, such as the forms of a document, in
/// document order.
///
/// Elements count by their local name, whatever their namespace. Unlike other lists, collections go
/// by the true links, and end with what is below the root.
class ESPALIER_EXPORT HTMLCollection : public NodeList {
public:
    /// Makes an empty collection.
    HTMLCollection() = default;
    /// \param kind one of NodeList::Forms, Images, Applets, Links and Anchors
    HTMLCollection(Node* root, Kind kind);

    /// Returns the first element with the attribute "id" `name` or, when there is none, the first
    /// one with the attribute "name" `name`; null when there is neither, and for an empty name.
    Node* NamedItem(std::string_view name) const;
};

}  // namespace Dom
