// SPDX-License-Identifier: MIT
#include "ElementPaths.h"

#include <algorithm>
#include <vector>

namespace Tool {

namespace {

// More levels are not shown: what leads to an element takes room on each line.
constexpr std::size_t kLevels = 64;

struct Count {
    int all = 0;
    int seen = 0;
};

const Dom::Element* AsElement(const Dom::Node* node) {
    const bool isElement = node != nullptr && node->NodeType() == Dom::DOMNodeType::ELEMENT_NODE;
    return isElement ? static_cast<const Dom::Element*>(node) : nullptr;
}

}  // namespace

// The steps to all children of a parent are found at once, so that many take no longer than one.
const std::string& ElementPaths::StepOf(const Dom::Element& element) {
    const auto known = steps_.find(&element);
    if (known != steps_.end()) return known->second;
    const Dom::Element* const parent = AsElement(element.ParentNode());
    if (parent == nullptr) return steps_[&element] = element.NodeName().str();
    std::unordered_map<std::string, Count> counts;
    for (const Dom::Node& child : parent->Children()) {
        if (AsElement(&child) != nullptr) ++counts[child.NodeName().str()].all;
    }
    for (const Dom::Node& child : parent->Children()) {
        const Dom::Element* const each = AsElement(&child);
        if (each == nullptr) continue;
        std::string name = each->NodeName().str();
        Count& count = counts[name];
        ++count.seen;
        if (count.all > 1) name += "[" + std::to_string(count.seen) + "]";
        steps_[each] = std::move(name);
    }
    return steps_[&element];
}

std::string ElementPaths::PathOf(const Dom::Element& element) {
    std::vector<const std::string*> steps;
    const Dom::Element* each = &element;
    for (; each != nullptr && steps.size() < kLevels; each = AsElement(each->ParentNode()))
        steps.push_back(&StepOf(*each));
    std::string path = each != nullptr ? "..." : "";
    std::for_each(steps.rbegin(), steps.rend(), [&path](const std::string* step) {
        if (!path.empty()) path += '/';
        path += *step;
    });
    return path;
}

}  // namespace Tool
