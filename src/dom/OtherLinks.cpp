// SPDX-License-Identifier: MIT
#include "dom/OtherLinks.h"

#include <espalier/dom/Node.h>

#include "dom/NodeAccess.h"

#include <tuple>  // std::tie

namespace Dom::detail {

namespace {

// Tells whether `behind` comes after `node` among the children of one parent.
bool IsBehind(const Node& behind, const Node& node) {
    if (behind.ParentNode() == nullptr || behind.ParentNode() != node.ParentNode()) return false;
    const Node* at = &node;
    while (at != nullptr && at != &behind)
        at = NodeAccess::Next(*at);
    return at != nullptr && at != &node;
}

}  // namespace

Node* OtherLinks::Get(const Node& node, Link link) const {
    const auto found = links_.find(&node);
    return found == links_.end() ? nullptr : found->second.*link;
}

// Sets the flags of a node to what is kept of it.
void OtherLinks::Mark(Node& source) {
    const auto found = links_.find(&source);
    const Links links = found == links_.end() ? Links() : found->second;
    NodeAccess::MarkOtherLinks(source, links.first != nullptr, links.previous != nullptr,
                               links.next != nullptr);
    if (found != links_.end() && links.first == nullptr && links.previous == nullptr &&
        links.next == nullptr) {
        links_.erase(found);
    }
}

void OtherLinks::ForgetSource(Node& target, Node& source) {
    auto [at, end] = sources_.equal_range(&target);
    while (at != end && at->second != &source)
        ++at;
    if (at != end) sources_.erase(at);
    NodeAccess::MarkTarget(target, sources_.contains(&target));
}

void OtherLinks::Set(Node& node, Link link, Node* target) {
    Node* const before = Get(node, link);
    if (before == target) return;
    if (target != nullptr) {
        const auto source = sources_.emplace(target, &node);
        try {
            links_[&node].*link = target;
        } catch (...) {
            sources_.erase(source);
            throw;
        }
        NodeAccess::MarkTarget(*target, true);
    } else {
        links_[&node].*link = nullptr;
    }
    if (before != nullptr) ForgetSource(*before, node);
    Mark(node);
}

void OtherLinks::SetFirst(Node& parent, Node* target) {
    Set(parent, &Links::first, target == NodeAccess::First(parent) ? nullptr : target);
}

void OtherLinks::SetPrevious(Node& node, Node* target) {
    Set(node, &Links::previous, target == NodeAccess::Previous(node) ? nullptr : target);
}

void OtherLinks::SetNext(Node& node, Node* target) {
    Set(node, &Links::next, target == NodeAccess::Next(node) ? nullptr : target);
}

// Ends the links of one source that would lead back. Tells whether there were any.
bool OtherLinks::EndLinksBack(Node& source, Node& target) {
    const bool first = First(source) == &target &&
                       (target.ParentNode() != &source || NodeAccess::First(source) == &target);
    const bool next = Next(source) == &target &&
                      (!IsBehind(target, source) || NodeAccess::Next(source) == &target);
    const bool previous = Previous(source) == &target &&
                          (!IsBehind(source, target) || NodeAccess::Previous(source) == &target);
    if (first) Set(source, &Links::first, nullptr);
    if (next) Set(source, &Links::next, nullptr);
    if (previous) Set(source, &Links::previous, nullptr);
    return first || next || previous;
}

void OtherLinks::TargetIsLinked(Node& target) {
    auto [at, end] = sources_.equal_range(&target);
    while (at != end) {
        if (EndLinksBack(*at->second, target)) {
            std::tie(at, end) = sources_.equal_range(&target);  // some are gone
        } else {
            ++at;
        }
    }
}

void OtherLinks::Forget(Node& node) {
    Set(node, &Links::first, nullptr);
    Set(node, &Links::previous, nullptr);
    Set(node, &Links::next, nullptr);
    auto [at, end] = sources_.equal_range(&node);
    for (; at != end; ++at) {
        Links& links = links_.find(at->second)->second;
        for (const Link link : {&Links::first, &Links::previous, &Links::next}) {
            if (links.*link == &node) links.*link = nullptr;
        }
        Mark(*at->second);
    }
    sources_.erase(&node);
}

}  // namespace Dom::detail
