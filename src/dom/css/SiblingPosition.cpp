// SPDX-License-Identifier: MIT
#include "dom/css/SiblingPosition.h"

#include "dom/NodeAccess.h"

#include <array>
#include <cstdint>

namespace Dom::CSS::detail {

namespace {

using Dom::detail::DocumentData;
using Dom::detail::NodeAccess;
using Dom::detail::NodeName;

bool CountsFromEnd(Counting counting) {
    return counting == Counting::ChildrenFromEnd || counting == Counting::OfTypeFromEnd;
}

bool CountsType(Counting counting) {
    return counting == Counting::OfType || counting == Counting::OfTypeFromEnd;
}

bool IsSameType(const NodeName& a, const NodeName& b) {
    return &a == &b || (a.LocalName() == b.LocalName() && *a.uri == *b.uri);
}

// Tells whether a sibling of `element` counts.
bool Counts(const Node& sibling, const Element& element, Counting counting) {
    return sibling.NodeType() == Node::ELEMENT_NODE &&
           (!CountsType(counting) ||
            IsSameType(NodeAccess::Name(sibling), NodeAccess::Name(element)));
}

const Node* Neighbour(const Node& node, bool backwards) {
    return backwards ? NodeAccess::Previous(node) : NodeAccess::Next(node);
}

// A position that is known. It stays right as long as the document has the same stamp.
struct KnownPosition {
    std::uint64_t document = 0;
    std::uint64_t stamp = 0;
    const Node* parent = nullptr;
    const NodeName* name = nullptr;  // when types count
    Counting counting = Counting::Children;
    const Element* element = nullptr;
    long position = 0;
};

constexpr std::size_t kKnown = 64;
thread_local std::array<KnownPosition, kKnown> known;

KnownPosition& PlaceFor(const Node& parent, const NodeName* name, Counting counting) {
    const auto address = reinterpret_cast<std::uintptr_t>(&parent) / sizeof(void*);
    const auto nameAddress = reinterpret_cast<std::uintptr_t>(name) / sizeof(void*);
    const std::size_t mixed =
        (address ^ (address >> 6) ^ (nameAddress * 3)) * 4 + static_cast<std::size_t>(counting);
    return known[mixed % kKnown];
}

// Counts from the element to the end that positions are counted from.
long CountToEnd(const Element& element, Counting counting) {
    long position = 1;
    const bool backwards = !CountsFromEnd(counting);
    for (const Node* node = Neighbour(element, backwards); node != nullptr;
         node = Neighbour(*node, backwards)) {
        if (Counts(*node, element, counting)) ++position;
    }
    return position;
}

// Counts from a known element on to one that stands behind it; 0 when it does not.
long CountOn(const KnownPosition& from, const Element& element) {
    const long step = CountsFromEnd(from.counting) ? -1 : 1;
    long position = from.position;
    for (const Node* node = from.element; node != &element; position += step) {
        do {
            node = NodeAccess::Next(*node);
            if (node == nullptr) return 0;
        } while (!Counts(*node, element, from.counting));
    }
    return position;
}

}  // namespace

long PositionAmongSiblings(const Element& element, Counting counting) {
    const Node* const parent = element.ParentNode();
    if (parent == nullptr) return 1;
    const DocumentData& data = NodeAccess::Data(element);
    const NodeName* const name = CountsType(counting) ? &NodeAccess::Name(element) : nullptr;
    KnownPosition& place = PlaceFor(*parent, name, counting);
    const bool isKnown = place.document == data.serial && place.stamp == data.stamp &&
                         place.parent == parent && place.name == name && place.counting == counting;
    long position = isKnown ? CountOn(place, element) : 0;
    if (position == 0) position = CountToEnd(element, counting);
    place = {data.serial, data.stamp, parent, name, counting, &element, position};
    return position;
}

bool IsOutermost(const Element& element, Counting counting) {
    const bool backwards = !CountsFromEnd(counting);
    const Node* node = &element;
    do
        node = Neighbour(*node, backwards);
    while (node != nullptr && node->NodeType() != Node::ELEMENT_NODE);
    return node == nullptr;
}

}  // namespace Dom::CSS::detail
