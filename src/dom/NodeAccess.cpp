// SPDX-License-Identifier: MIT
#include "dom/NodeAccess.h"

#include <algorithm>
#include <new>

namespace Dom::detail {

Node* NodeAccess::NextBelow(const Node& root, const Node& node) {
    if (Node* const first = First(node)) return first;
    return NextBehind(root, node);
}

Node* NodeAccess::NextBehind(const Node& root, const Node& node) {
    const Node* at = &node;
    while (at != &root && at->next_ == nullptr)
        at = at->parent_;
    return at == &root ? nullptr : at->next_;
}

// Links that are shown instead of true ones.

void NodeAccess::InsertTold(Node& parent, Node& node, Node& next) {
    OtherLinks& others = Data(parent).otherLinks;
    const bool isVisiblyFirst = parent.FirstChild() == &next;
    Node* const before = Previous(next);
    LinkBefore(parent, node, next);
    if (before != nullptr && before->Has(Node::OtherNext)) others.SetNext(*before, nullptr);
    if (next.Has(Node::OtherPrevious)) others.SetPrevious(next, nullptr);
    if (isVisiblyFirst && parent.Has(Node::OtherFirst)) others.SetFirst(parent, &node);
    if (node.Has(Node::IsTarget)) others.TargetIsLinked(node);
}

void NodeAccess::InsertUntold(Node& parent, Node& node, Node& next) {
    OtherLinks& others = Data(parent).otherLinks;
    const bool isVisiblyFirst = parent.FirstChild() == &next;
    Node* const before = Previous(next);
    LinkBefore(parent, node, next);
    try {
        if (before != nullptr && !before->Has(Node::OtherNext)) others.SetNext(*before, &next);
        if (isVisiblyFirst && before != nullptr) others.SetFirst(parent, &node);
    } catch (...) {
        Unlink(node);
        throw;
    }
    if (next.Has(Node::OtherPrevious)) others.SetPrevious(next, nullptr);
    // Only now: a link that leads to the node already is none that the insertion makes anew.
    if (node.Has(Node::IsTarget)) others.TargetIsLinked(node);
}

void NodeAccess::ReplaceUntold(Node& parent, Node& node, Node& old) {
    OtherLinks& others = Data(parent).otherLinks;
    const bool isVisiblyFirst = parent.FirstChild() == &old;
    Node* const before = Previous(old);
    Node* const behind = Next(old);
    Node* const shownNext = old.Has(Node::OtherNext) ? others.Next(old) : nullptr;
    LinkBefore(parent, node, old);
    try {
        // While the links below are made, the old node still is a child.
        if (before != nullptr && !before->Has(Node::OtherNext)) others.SetNext(*before, &old);
        if (shownNext != nullptr) others.SetNext(node, shownNext);
        if (isVisiblyFirst && before != nullptr) others.SetFirst(parent, &node);
    } catch (...) {
        Unlink(node);
        throw;
    }
    UnlinkTrue(old);
    if (old.Has(Node::OtherPrevious)) others.SetPrevious(old, nullptr);
    if (old.Has(Node::OtherNext)) others.SetNext(old, nullptr);
    try {
        if (behind != nullptr && !behind->Has(Node::OtherPrevious)) {
            others.SetPrevious(*behind, &old);
        }
    } catch (const std::bad_alloc&) {
        // Without memory for it the true link is shown.
    }
    if (node.Has(Node::IsTarget)) others.TargetIsLinked(node);
}

// Before a node is unlinked: does to the links of its neighbours what unlinking does to them.
void NodeAccess::PassLinksOn(Node& node) noexcept {
    Node& parent = *node.parent_;
    OtherLinks& others = Data(parent).otherLinks;
    Node* const before = Previous(node);
    Node* const behind = Next(node);
    Node* const shownNext = node.Has(Node::OtherNext) ? others.Next(node) : nullptr;
    const bool isShownFirst = parent.Has(Node::OtherFirst) && others.First(parent) == &node;
    UnlinkTrue(node);
    try {
        if (node.Has(Node::OtherPrevious)) others.SetPrevious(node, nullptr);
        if (node.Has(Node::OtherNext)) others.SetNext(node, nullptr);
        if (behind != nullptr && behind->Has(Node::OtherPrevious)) {
            others.SetPrevious(*behind, nullptr);
        }
        if (before != nullptr && (shownNext != nullptr || before->Has(Node::OtherNext))) {
            others.SetNext(*before, shownNext);
        }
        if (isShownFirst) {
            others.SetFirst(parent, shownNext != nullptr ? shownNext : behind);
        } else if (before == nullptr && shownNext != nullptr && !parent.Has(Node::OtherFirst)) {
            others.SetFirst(parent, shownNext);
        } else if (parent.Has(Node::OtherFirst) && others.First(parent) == First(parent)) {
            others.SetFirst(parent, nullptr);
        }
    } catch (const std::bad_alloc&) {
        // Without memory for it the true link is shown.
    }
}

// True links.

void NodeAccess::Link(Node& parent, Node& node, Node* next) {
    if (next != nullptr) return LinkBefore(parent, node, *next);
    DocumentData& data = Data(parent);
    Node* const last = Last(parent);
    if (last != nullptr && last->Has(Node::OtherNext)) data.otherLinks.SetNext(*last, nullptr);
    LinkNew(parent, node);
    if (!node.Has(Node::InMap)) --data.freeNodes;
    ++data.stamp;
    if (node.Has(Node::IsTarget)) data.otherLinks.TargetIsLinked(node);
    if (!data.otherLinks.IsEmpty()) EndCircles(parent, node);
}

// Ends the links to the top of a tree that `node` brings into this tree: one would get back from
// there to where it begins.
void NodeAccess::EndCircles(Node& parent, const Node& node) noexcept {
    if (First(node) == nullptr && !HasOtherLinks(node)) return;  // there is no link below it
    Node* top = &parent;
    while (top->parent_ != nullptr)
        top = top->parent_;
    if (top->Has(Node::IsTarget)) Data(parent).otherLinks.EndCircles(*top);
}

void NodeAccess::LinkBefore(Node& parent, Node& node, Node& next) {
    DocumentData& data = Data(parent);
    node.parent_ = &parent;
    node.next_ = &next;
    node.previous_ = next.previous_;
    if (First(parent) == &next) {
        SetFirst(parent, &node);
    } else {
        next.previous_->next_ = &node;
    }
    next.previous_ = &node;
    if (!node.Has(Node::InMap)) --data.freeNodes;
    ++data.stamp;
    if (!data.otherLinks.IsEmpty()) EndCircles(parent, node);
}

void NodeAccess::UnlinkTrue(Node& node) noexcept {
    Node& parent = *node.parent_;
    Node* const first = First(parent);
    if (first == &node) {
        SetFirst(parent, node.next_);
    } else {
        node.previous_->next_ = node.next_;
    }
    if (node.next_ != nullptr) {
        node.next_->previous_ = node.previous_;
    } else if (first != &node) {
        first->previous_ = node.previous_;
    }
    node.parent_ = node.previous_ = node.next_ = nullptr;
    DocumentData& data = Data(parent);
    if (!node.Has(Node::InMap)) ++data.freeNodes;
    ++data.stamp;
}

void NodeAccess::Unlink(Node& node) noexcept {
    if (node.parent_ != nullptr) PassLinksOn(node);
}

// Attributes.

Attr* NodeAccess::MakeAttribute(Element& owner, const NodeName* name, astring* value,
                                bool fieldIsEmpty) {
    Attr* const attribute = MakeLinked<Attr>(Data(owner), name);
    attribute->rest_.value = value;
    attribute->ownerElement_ = &owner;
    attribute->Set(Node::InMap);
    attribute->Set(Node::ValueBearing, !fieldIsEmpty);
    return attribute;
}

void NodeAccess::SetHeld(Attr& attribute, bool isHeld) {
    DocumentData& data = Data(attribute);
    attribute.Set(Node::InMap, isHeld);
    data.AttributesHaveChanged();
    if (attribute.parent_ != nullptr) return;
    if (isHeld) {
        --data.freeNodes;
    } else {
        ++data.freeNodes;
    }
}

void NodeAccess::MakeOrphan(Attr& attribute, Element& element) {
    Data(element).orphans[&element].push_back(&attribute);
    attribute.Set(Node::IsOrphan);
    element.Set(Node::HasOrphans);
}

void NodeAccess::ForgetOrphans(Element& element) noexcept {
    auto& orphans = Data(element).orphans;
    const auto found = orphans.find(&element);
    if (found == orphans.end()) return;
    for (Attr* const attribute : found->second) {
        attribute->ownerElement_ = nullptr;
        attribute->Set(Node::IsOrphan, false);
    }
    orphans.erase(found);
}

void NodeAccess::ForgetOrphan(Attr& attribute) noexcept {
    const auto found = Data(attribute).orphans.find(attribute.ownerElement_);
    if (found != Data(attribute).orphans.end()) std::erase(found->second, &attribute);
    attribute.Set(Node::IsOrphan, false);
}

void NodeAccess::ForgetOverrides(Element& element) noexcept {
    Data(element).overrides.erase(&element);
}

}  // namespace Dom::detail
