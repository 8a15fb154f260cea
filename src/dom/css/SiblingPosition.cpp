// SPDX-License-Identifier: MIT
#include "dom/css/SiblingPosition.h"

#include "dom/NodeAccess.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>

// How positions are found in about the same time whatever is asked for in whatever order: from the
// one of the same kind that was found last, if that is near; from the end that positions are
// counted from, if that is; else in a table of all children of the parent.

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

// A position that is known. It stays right as long as the document has the same stamp of children.
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

constexpr std::size_t kNear = 16;  // nodes

// Counts from the element to the end that positions are counted from; 0 when that is more than
// `most` nodes away.
long CountToEnd(const Element& element, Counting counting, std::size_t most) {
    long position = 1;
    const bool backwards = !CountsFromEnd(counting);
    for (const Node* node = Neighbour(element, backwards); node != nullptr;
         node = Neighbour(*node, backwards)) {
        if (most-- == 0) return 0;
        if (Counts(*node, element, counting)) ++position;
    }
    return position;
}

// Counts from a known element on to one that stands near behind it; 0 when it does not.
long CountOn(const KnownPosition& from, const Element& element) {
    const long step = CountsFromEnd(from.counting) ? -1 : 1;
    long position = from.position;
    const Node* node = from.element;
    for (std::size_t steps = 0; node != &element; ++steps) {
        node = steps < kNear ? NodeAccess::Next(*node) : nullptr;
        if (node == nullptr) return 0;
        if (Counts(*node, element, from.counting)) position += step;
    }
    return position;
}

// The positions of elements that were far from what was known, and of their siblings. They stay
// right as long as the document has the same stamp of children.
class FarPositions {
public:
    // Returns a position; 0 when it is better counted: only one is asked for until the next change,
    // or there is no memory.
    long Find(const DocumentData& data, const Element& element, Counting counting) noexcept {
        if (document_ != data.serial || stamp_ != data.ChildStamp()) {
            positions_ = {};
            document_ = data.serial;
            stamp_ = data.ChildStamp();
            return 0;
        }
        try {
            auto found = positions_.find(&element);
            if (found == positions_.end()) {
                AddChildren(*element.ParentNode());
                found = positions_.find(&element);
            }
            return found->second[static_cast<std::size_t>(counting)];
        } catch (const std::bad_alloc&) {
            return 0;
        }
    }

private:
    struct TypeCount {
        long all = 0;
        long before = 0;
    };

    void AddChildren(const Node& parent);

    std::uint64_t document_ = 0;
    std::uint64_t stamp_ = 0;
    std::unordered_map<const Node*, std::array<long, 4>> positions_;  // by Counting
};

void FarPositions::AddChildren(const Node& parent) {
    std::map<std::pair<std::string_view, std::string_view>, TypeCount> types;
    const auto typeOf = [&types](const Node& element) -> TypeCount& {
        const NodeName& name = NodeAccess::Name(element);
        return types[{name.LocalName(), *name.uri}];
    };
    TypeCount all;
    const Node* const first = NodeAccess::First(parent);
    for (const Node* node = first; node != nullptr; node = NodeAccess::Next(*node)) {
        if (node->NodeType() != Node::ELEMENT_NODE) continue;
        ++all.all;
        ++typeOf(*node).all;
    }
    for (const Node* node = first; node != nullptr; node = NodeAccess::Next(*node)) {
        if (node->NodeType() != Node::ELEMENT_NODE) continue;
        TypeCount& type = typeOf(*node);
        positions_[node] = {all.before + 1, all.all - all.before, type.before + 1,
                            type.all - type.before};
        ++all.before;
        ++type.before;
    }
}

constexpr std::size_t kDocuments = 4;
thread_local std::array<FarPositions, kDocuments> farPositions;

}  // namespace

long PositionAmongSiblings(const Element& element, Counting counting) {
    const Node* const parent = element.ParentNode();
    if (parent == nullptr) return 1;
    const DocumentData& data = NodeAccess::Data(element);
    const NodeName* const name = CountsType(counting) ? &NodeAccess::Name(element) : nullptr;
    KnownPosition& place = PlaceFor(*parent, name, counting);
    const bool isKnown = place.document == data.serial && place.stamp == data.ChildStamp() &&
                         place.parent == parent && place.name == name && place.counting == counting;
    long position = isKnown ? CountOn(place, element) : 0;
    if (position == 0) position = CountToEnd(element, counting, kNear);
    if (position == 0) {
        position = farPositions[data.serial % kDocuments].Find(data, element, counting);
    }
    if (position == 0) {
        position = CountToEnd(element, counting, std::numeric_limits<std::size_t>::max());
    }
    place = {data.serial, data.ChildStamp(), parent, name, counting, &element, position};
    return position;
}

bool IsOutermost(const Element& element, Counting counting) {
    const bool backwards = !CountsFromEnd(counting);
    const Node* node = &element;
    do {
        node = Neighbour(*node, backwards);
    } while (node != nullptr && node->NodeType() != Node::ELEMENT_NODE);
    return node == nullptr;
}

}  // namespace Dom::CSS::detail
