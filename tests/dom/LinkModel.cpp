// SPDX-License-Identifier: MIT
#include "dom/LinkModel.h"

#include <algorithm>
#include <cstddef>

namespace support {

int LinkModel::PositionOf(int node) const {
    const std::vector<int>& siblings = At(At(node).parent).children;
    return static_cast<int>(std::find(siblings.begin(), siblings.end(), node) - siblings.begin());
}

int LinkModel::TrueFirst(int parent) const {
    return At(parent).children.empty() ? kNone : At(parent).children.front();
}

int LinkModel::TrueNext(int node) const {
    if (At(node).parent == kNone) return kNone;
    const std::vector<int>& siblings = At(At(node).parent).children;
    const auto position = static_cast<std::size_t>(PositionOf(node)) + 1;
    return position < siblings.size() ? siblings[position] : kNone;
}

int LinkModel::TruePrevious(int node) const {
    if (At(node).parent == kNone) return kNone;
    const int position = PositionOf(node);
    return position == 0 ? kNone
                         : At(At(node).parent).children[static_cast<std::size_t>(position) - 1];
}

int LinkModel::First(int parent) const {
    return At(parent).first != kNone ? At(parent).first : TrueFirst(parent);
}

int LinkModel::Last(int parent) const {
    return At(parent).children.empty() ? kNone : At(parent).children.back();
}

int LinkModel::Next(int node) const {
    return At(node).next != kNone ? At(node).next : TrueNext(node);
}

int LinkModel::Previous(int node) const {
    return At(node).previous != kNone ? At(node).previous : TruePrevious(node);
}

bool LinkModel::IsSelfOrAbove(int above, int node) const {
    for (; node != kNone; node = At(node).parent)
        if (node == above) return true;
    return false;
}

void LinkModel::Append(int parent, int node) {
    Remove(node);
    if (!At(parent).children.empty()) Edit(Last(parent)).next = kNone;
    Edit(parent).children.push_back(node);
    Edit(node).parent = parent;
    EndLinksTo(node);
}

void LinkModel::Insert(int parent, int node, int reference) {
    std::vector<int>& siblings = Edit(parent).children;
    siblings.insert(siblings.begin() + PositionOf(reference), node);
    Edit(node).parent = parent;
}

void LinkModel::InsertBefore(int parent, int node, int reference) {
    if (reference == kNone) return Append(parent, node);
    if (node == reference) return;
    Remove(node);
    const int before = TruePrevious(reference);
    const bool wasFirst = First(parent) == reference;
    Insert(parent, node, reference);
    if (before != kNone && At(before).next == kNone) Edit(before).next = reference;
    Edit(reference).previous = kNone;
    if (wasFirst) Edit(parent).first = node;
    EndLinksTo(node);
}

void LinkModel::InsertChild(int parent, int node, int reference) {
    if (reference == kNone) return Append(parent, node);
    if (node == reference) return;
    Remove(node);
    const int before = TruePrevious(reference);
    const bool wasFirst = First(parent) == reference;
    Insert(parent, node, reference);
    if (before != kNone) Edit(before).next = kNone;
    Edit(reference).previous = kNone;
    if (wasFirst) Edit(parent).first = node;
    EndLinksTo(node);
}

void LinkModel::Replace(int parent, int node, int old) {
    Remove(node);
    if (node == old) return;
    const int before = TruePrevious(old);
    const int behind = TrueNext(old);
    const bool wasFirst = First(parent) == old;
    Edit(parent).children[static_cast<std::size_t>(PositionOf(old))] = node;
    Edit(node).parent = parent;
    Edit(node).next = At(old).next;
    Edit(old).parent = kNone;
    Edit(old).next = kNone;
    Edit(old).previous = kNone;
    if (before != kNone && At(before).next == kNone) Edit(before).next = old;
    if (behind != kNone && At(behind).previous == kNone) Edit(behind).previous = old;
    if (wasFirst) Edit(parent).first = node;
    EndLinksTo(node);
}

void LinkModel::ExchangeChild(int parent, int node, int old) {
    if (node != old) InsertChild(parent, node, old);
    Remove(old);
}

void LinkModel::Remove(int node) {
    const int parent = At(node).parent;
    if (parent == kNone) return;
    const int before = TruePrevious(node);
    const int behind = TrueNext(node);
    const int visibleNext = Next(node);
    const bool wasFirst = First(parent) == node;

    if (before != kNone) Edit(before).next = At(node).next;
    if (behind != kNone) Edit(behind).previous = kNone;
    if (wasFirst) Edit(parent).first = visibleNext;
    std::vector<int>& siblings = Edit(parent).children;
    siblings.erase(siblings.begin() + PositionOf(node));
    Edit(node).parent = kNone;
    Edit(node).next = kNone;
    Edit(node).previous = kNone;
    EndLinksThatDoNotDiffer();
}

void LinkModel::Destroy(int node) {
    Remove(node);
    while (!At(node).children.empty())
        Destroy(At(node).children.front());
    for (Node& other : nodes_) {
        if (other.first == node) other.first = kNone;
        if (other.next == node) other.next = kNone;
        if (other.previous == node) other.previous = kNone;
    }
    Edit(node) = Node();
}

// A link to a node that has been linked stays where it leads to a later child of the same parent,
// a previous link where it leads to an earlier one.
void LinkModel::EndLinksTo(int linked) {
    const int parent = At(linked).parent;
    for (int i = 0; i < Count(); ++i) {
        Node& node = Edit(i);
        const bool isSibling = node.exists && node.parent == parent;
        if (node.first == linked && i != parent) node.first = kNone;
        if (node.next == linked && !(isSibling && PositionOf(i) < PositionOf(linked)))
            node.next = kNone;
        if (node.previous == linked && !(isSibling && PositionOf(linked) < PositionOf(i)))
            node.previous = kNone;
    }
    EndCircles(linked);
    EndLinksThatDoNotDiffer();
}

int LinkModel::TopOf(int node) const {
    while (At(node).parent != kNone)
        node = At(node).parent;
    return node;
}

// Whether links lead from the tree with the top `from` to that with the top `to`.
bool LinkModel::LeadsTo(int from, int to) const {
    std::vector<int> reached{from};
    for (std::size_t next = 0; next < reached.size(); ++next) {
        for (int i = 0; i < Count(); ++i) {
            if (!At(i).exists || TopOf(i) != reached[next]) continue;
            for (const int target : {At(i).first, At(i).next, At(i).previous}) {
                const bool isNew = target != kNone && At(target).parent == kNone &&
                                   std::count(reached.begin(), reached.end(), target) == 0;
                if (isNew) reached.push_back(target);
            }
        }
    }
    return std::count(reached.begin(), reached.end(), to) != 0;
}

// A link to a node without a parent ends when it leads back to where it begins.
void LinkModel::EndCircles(int linked) {
    const int top = TopOf(linked);
    for (int i = 0; i < Count(); ++i) {
        Node& node = Edit(i);
        const bool isSource =
            node.exists && (node.first == top || node.next == top || node.previous == top);
        if (!isSource || !LeadsTo(top, TopOf(i))) continue;
        if (node.first == top) node.first = kNone;
        if (node.next == top) node.next = kNone;
        if (node.previous == top) node.previous = kNone;
    }
}

void LinkModel::EndLinksThatDoNotDiffer() {
    for (int i = 0; i < Count(); ++i) {
        Node& node = Edit(i);
        if (!node.exists) continue;
        if (node.first == TrueFirst(i)) node.first = kNone;
        if (node.next == TrueNext(i)) node.next = kNone;
        if (node.previous == TruePrevious(i)) node.previous = kNone;
    }
}

std::string LinkModel::BrokenRule() const {
    for (int i = 0; i < Count(); ++i) {
        const Node& node = At(i);
        if (!node.exists) continue;
        for (const int target : {node.first, node.next, node.previous})
            if (target != kNone && !At(target).exists) return "a link leads to no node";
        if (node.parent == kNone && (node.next != kNone || node.previous != kNone))
            return "a node without a parent has siblings";
        const int target = node.next;
        if (target != kNone && At(target).parent != kNone &&
            (At(target).parent != node.parent || PositionOf(target) <= PositionOf(i)))
            return "a next link leads back or elsewhere";
    }
    return "";
}

}  // namespace support
