// SPDX-License-Identifier: MIT
#include "NodeQueue.h"

#include <utility>

namespace Tool {

namespace {

std::size_t CostOf(const SourceNode& node) {
    std::size_t cost = NodeQueue::kNodeCost + node.name.size() + node.value.size();
    for (const SourceAttribute& attribute : node.attributes)
        cost += NodeQueue::kNodeCost + attribute.name.size() + attribute.value.size();
    return cost;
}

}  // namespace

const SourceNode* NodeQueue::First() {
    if (entries_.empty() && !ReadNode()) return nullptr;
    return &entries_.front().node;
}

const SourceNode* NodeQueue::Second() {
    while (entries_.size() < 2) {
        if (!ReadNode()) return nullptr;
    }
    return &entries_[1].node;
}

void NodeQueue::Pop() {
    cost_ -= entries_.front().cost;
    entries_.pop_front();
    ++first_;
}

bool NodeQueue::IsMixed() {
    const Entry& element = entries_.front();
    while (element.content == Content::Unknown && cost_ < kMost && ReadNode())
        continue;
    return element.content == Content::Mixed;
}

bool NodeQueue::ReadNode() {
    if (!source_.Next(spare_)) return false;
    if (IsBlank(spare_) && !entries_.empty() && IsBlank(entries_.back().node)) {
        Entry& last = entries_.back();
        last.node.value += spare_.value;
        last.cost += spare_.value.size();
        cost_ += spare_.value.size();
        return true;
    }
    Follow(spare_);
    Entry& entry = entries_.emplace_back();
    entry.node = std::move(spare_);
    entry.cost = CostOf(entry.node);
    cost_ += entry.cost;
    return true;
}

// Learns from a node that is about to be added what the elements around it hold.
void NodeQueue::Follow(const SourceNode& node) {
    if (IsText(node)) {
        LearnInnermost(Content::Mixed);
    } else if (node.type == Xml::XmlNodeType::EndElement) {
        LearnInnermost(Content::NotMixed);
        inner_.pop_back();
    } else if (node.type == Xml::XmlNodeType::Element && !node.isEmpty) {
        inner_.push_back(first_ + entries_.size());
    }
}

// Only the first thing that is learnt of an element counts, and only if it has not gone by.
void NodeQueue::LearnInnermost(Content content) {
    if (inner_.empty() || inner_.back() < first_) return;
    Entry& element = entries_[inner_.back() - first_];
    if (element.content == Content::Unknown) element.content = content;
}

}  // namespace Tool
