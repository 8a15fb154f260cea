// SPDX-License-Identifier: MIT
#include <espalier/dom/Element.h>
#include <espalier/dom/HTMLCollection.h>

#include "dom/CollectionMembers.h"
#include "dom/NodeAccess.h"
#include "dom/XhtmlNames.h"

#include <cassert>

namespace Dom {

namespace {

bool IsElementNamed(const Node& node, std::string_view name) {
    return node.NodeType() == Node::ELEMENT_NODE && node.LocalNameView() == name;
}

}  // namespace

bool detail::AppletHolders::Contains(const Node& root, const Node& node, std::uint64_t stamp) {
    if (!isKnown_ || stamp_ != stamp) {
        isKnown_ = false;
        nodes_.clear();
        for (const Node* at = NodeAccess::NextBelow(root, root); at != nullptr;
             at = NodeAccess::NextBelow(root, *at)) {
            if (!IsElementNamed(*at, "applet")) continue;
            // Those above one that is known are known, too.
            const Node* above = at->ParentNode();
            while (above != nullptr && nodes_.insert(above).second)
                above = above->ParentNode();
        }
        stamp_ = stamp;
        isKnown_ = true;
    }
    return nodes_.count(&node) > 0;
}

bool detail::IsCollectionMember(const Node& root, const Node& node, NodeList::Kind kind,
                                AppletHolders& holders) {
    const auto has = [&node](std::string_view name) {
        return static_cast<const Element&>(node).HasAttribute(name);
    };
    switch (kind) {
    case NodeList::Forms: return IsElementNamed(node, "form");
    case NodeList::Images: return IsElementNamed(node, "img");
    case NodeList::Applets:
        return IsElementNamed(node, "applet") ||
               (IsElementNamed(node, "object") &&
                holders.Contains(root, node, NodeAccess::Data(node).stamp));
    case NodeList::Links:
        return (IsElementNamed(node, "a") || IsElementNamed(node, "area")) && has("href");
    case NodeList::Anchors: return IsElementNamed(node, "a") && has("name");
    default: return false;
    }
}

HTMLCollection::HTMLCollection(Node* root, Kind kind) : NodeList(root, kind, {}) {
    assert(detail::IsCollection(kind));
}

Node* HTMLCollection::NamedItem(std::string_view name) const {
    if (name.empty()) return nullptr;
    for (const char* const key : {"id", "name"}) {
        for (Node* const node : *this) {
            if (detail::XhtmlAttribute(static_cast<Element&>(*node), key) == name) return node;
        }
    }
    return nullptr;
}

}  // namespace Dom
