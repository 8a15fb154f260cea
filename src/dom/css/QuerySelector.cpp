// SPDX-License-Identifier: MIT
#include <espalier/dom/Element.h>
#include <espalier/dom/css/QuerySelector.h>

#include "dom/NodeAccess.h"

namespace Dom::CSS {

namespace {

using Dom::detail::NodeAccess;

// Calls `visit` with the elements below a node that are selected, until it returns false.
template <typename Visit>
void VisitSelected(const Node& root, const Selector& selector, Visit visit) {
    for (const Node* node = NodeAccess::NextBelow(root, root); node != nullptr;
         node = NodeAccess::NextBelow(root, *node)) {
        if (Matches(*node, selector) && !visit(static_cast<const Element&>(*node))) return;
    }
}

// Trees are not const by themselves.
Element* Mutable(const Element* element) { return const_cast<Element*>(element); }

}  // namespace

const Element* QuerySelector(const Node& root, const Selector& selector) {
    const Element* found = nullptr;
    VisitSelected(root, selector, [&found](const Element& element) {
        found = &element;
        return false;
    });
    return found;
}

Element* QuerySelector(Node& root, const Selector& selector) {
    return Mutable(QuerySelector(static_cast<const Node&>(root), selector));
}

Element* QuerySelector(Node& root, std::string_view selector) {
    return QuerySelector(root, Selector(selector));
}

const Element* QuerySelector(const Node& root, std::string_view selector) {
    return QuerySelector(root, Selector(selector));
}

std::vector<const Element*> QuerySelectorAll(const Node& root, const Selector& selector) {
    std::vector<const Element*> found;
    VisitSelected(root, selector, [&found](const Element& element) {
        found.push_back(&element);
        return true;
    });
    return found;
}

std::vector<Element*> QuerySelectorAll(Node& root, const Selector& selector) {
    std::vector<Element*> found;
    VisitSelected(root, selector, [&found](const Element& element) {
        found.push_back(Mutable(&element));
        return true;
    });
    return found;
}

std::vector<Element*> QuerySelectorAll(Node& root, std::string_view selector) {
    return QuerySelectorAll(root, Selector(selector));
}

std::vector<const Element*> QuerySelectorAll(const Node& root, std::string_view selector) {
    return QuerySelectorAll(root, Selector(selector));
}

bool Matches(const Node& node, const Selector& selector) {
    return node.NodeType() == Node::ELEMENT_NODE &&
           selector.Matches(static_cast<const Element&>(node));
}

bool Matches(const Node& node, std::string_view selector) {
    return Matches(node, Selector(selector));
}

const Element* Closest(const Node& node, const Selector& selector) {
    for (const Node* at = &node; at != nullptr; at = at->ParentNode()) {
        if (Matches(*at, selector)) return static_cast<const Element*>(at);
    }
    return nullptr;
}

Element* Closest(Node& node, const Selector& selector) {
    return Mutable(Closest(static_cast<const Node&>(node), selector));
}

Element* Closest(Node& node, std::string_view selector) {
    return Closest(node, Selector(selector));
}

const Element* Closest(const Node& node, std::string_view selector) {
    return Closest(node, Selector(selector));
}

}  // namespace Dom::CSS
