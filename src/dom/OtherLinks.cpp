// SPDX-License-Identifier: MIT
#include "dom/OtherLinks.h"

#include <espalier/dom/Node.h>

#include "dom/NodeAccess.h"

#include <new>  // std::bad_alloc
#include <unordered_set>
#include <vector>

namespace Dom::detail {

namespace {

// Tells whether `behind` comes after `node` among the children of one parent.
bool IsBehind(const Node& behind, const Node& node) {
    if (&behind == &node) return false;
    if (behind.ParentNode() == nullptr || behind.ParentNode() != node.ParentNode()) return false;
    // From both at once, so that it is quick near the end, too.
    const Node* afterNode = NodeAccess::Next(node);
    const Node* afterBehind = NodeAccess::Next(behind);
    while (afterNode != &behind && afterBehind != &node) {
        if (afterNode == nullptr || afterBehind == nullptr) return afterBehind == nullptr;
        afterNode = NodeAccess::Next(*afterNode);
        afterBehind = NodeAccess::Next(*afterBehind);
    }
    return afterNode == &behind;
}

// Returns the node without a parent that `node` is or is below.
const Node& TopOf(const Node& node) {
    const Node* top = &node;
    while (top->ParentNode() != nullptr)
        top = top->ParentNode();
    return *top;
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

// Returns the first of those that lead to a target; the others follow it.
OtherLinks::Sources::const_iterator OtherLinks::SourcesOf(const Node& target) const {
    return sources_.lower_bound({&target, nullptr});
}

// Does so once a link of the source has ended, unless another one leads there, too.
void OtherLinks::ForgetSource(Node& target, Node& source) {
    if (First(source) == &target || Previous(source) == &target || Next(source) == &target) return;
    sources_.erase({&target, &source});
    const auto left = SourcesOf(target);
    NodeAccess::MarkTarget(target, left != sources_.end() && left->first == &target);
}

void OtherLinks::Set(Node& node, Link link, Node* target) {
    Node* const before = Get(node, link);
    if (before == target) return;
    if (target != nullptr) {
        const auto added = sources_.emplace(target, &node);
        try {
            links_[&node].*link = target;
        } catch (...) {
            if (added.second) sources_.erase(added.first);
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

// Ends the links of one source that would lead back.
void OtherLinks::EndLinksBack(Node& source, Node& target) {
    const bool first = First(source) == &target &&
                       (target.ParentNode() != &source || NodeAccess::First(source) == &target);
    const bool next = Next(source) == &target &&
                      (!IsBehind(target, source) || NodeAccess::Next(source) == &target);
    const bool previous = Previous(source) == &target &&
                          (!IsBehind(source, target) || NodeAccess::Previous(source) == &target);
    if (first) Set(source, &Links::first, nullptr);
    if (next) Set(source, &Links::next, nullptr);
    if (previous) Set(source, &Links::previous, nullptr);
}

void OtherLinks::TargetIsLinked(Node& target) {
    for (auto at = SourcesOf(target); at != sources_.end() && at->first == &target;) {
        Node& source = *(at++)->second;  // before it may be forgotten
        EndLinksBack(source, target);
    }
}

// Ends all links of one source to a target.
void OtherLinks::EndLinks(Node& source, const Node& target) {
    for (const Link link : {&Links::first, &Links::previous, &Links::next}) {
        if (Get(source, link) == &target) Set(source, link, nullptr);
    }
}

// Tells whether links lead from the tree of `from` to the tree of `to`, also by way of others. Both
// are the tops of their trees. It looks from the end, because few trees have links to their tops.
bool OtherLinks::LeadsTo(const Node& from, const Node& to) const {
    if (&from == &to) return true;
    std::vector<const Node*> pending{&to};
    std::unordered_set<const Node*> seen{&to};
    while (!pending.empty()) {
        const Node& target = *pending.back();
        pending.pop_back();
        for (auto at = SourcesOf(target); at != sources_.end() && at->first == &target; ++at) {
            const Node& top = TopOf(*at->second);
            if (&top == &from) return true;
            if (seen.insert(&top).second) pending.push_back(&top);
        }
    }
    return false;
}

void OtherLinks::EndCircles(Node& top) noexcept {
    for (auto at = SourcesOf(top); at != sources_.end() && at->first == &top;) {
        Node& source = *(at++)->second;  // before it may be forgotten
        bool isCircle = true;            // for safety, when memory is out
        try {
            isCircle = LeadsTo(top, TopOf(source));
        } catch (const std::bad_alloc&) {
        }
        if (isCircle) EndLinks(source, top);
    }
}

void OtherLinks::Forget(Node& node) {
    Set(node, &Links::first, nullptr);
    Set(node, &Links::previous, nullptr);
    Set(node, &Links::next, nullptr);
    const auto begin = SourcesOf(node);
    auto at = begin;
    for (; at != sources_.end() && at->first == &node; ++at) {
        Links& links = links_.find(at->second)->second;
        for (const Link link : {&Links::first, &Links::previous, &Links::next}) {
            if (links.*link == &node) links.*link = nullptr;
        }
        Mark(*at->second);
    }
    sources_.erase(begin, at);
}

}  // namespace Dom::detail
