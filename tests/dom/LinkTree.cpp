// SPDX-License-Identifier: MIT
#include "dom/LinkTree.h"

#include <espalier/dom/ChildRange.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace support {

void LinkTree::Append(int parent, int node) {
    model_.Append(parent, node);
    EXPECT_EQ(At(parent)->AppendChild(At(node)), At(node));
}

void LinkTree::InsertBefore(int parent, int node, int reference) {
    model_.InsertBefore(parent, node, reference);
    EXPECT_EQ(At(parent)->InsertBefore(At(node), At(reference)), At(node));
}

void LinkTree::Replace(int parent, int node, int old) {
    model_.Replace(parent, node, old);
    EXPECT_EQ(At(parent)->ReplaceChild(At(node), At(old)), At(old));
}

void LinkTree::Remove(int node) {
    Dom::Node* parent = At(node)->ParentNode();
    model_.Remove(node);
    EXPECT_EQ(parent->RemoveChild(At(node)), At(node));
}

void LinkTree::InsertChild(int parent, int node, int reference) {
    model_.InsertChild(parent, node, reference);
    EXPECT_EQ(At(parent)->InsertChild(At(node), At(reference)), At(node));
}

void LinkTree::ExchangeChild(int parent, int node, int old) {
    model_.ExchangeChild(parent, node, old);
    EXPECT_EQ(At(parent)->ExchangeChild(At(node), At(old)), At(old));
}

void LinkTree::Destroy(int node) {
    Dom::Node* destroyed = At(node);
    ForgetBelow(node);
    model_.Destroy(node);
    destroyed->DestroyNode();
}

void LinkTree::ForgetBelow(int node) {
    for (const int child : model_.At(node).children)
        ForgetBelow(child);
    nodes_[static_cast<std::size_t>(node)] = nullptr;
}

std::string LinkTree::Name(const Dom::Node* node) const {
    if (node == nullptr) return "null";
    const auto found = std::find(nodes_.begin(), nodes_.end(), node);
    if (found == nodes_.end()) return "none of the nodes";
    return std::to_string(found - nodes_.begin());
}

std::string LinkTree::DifferenceOf(int node) const {
    const Dom::Node& real = *At(node);
    const struct {
        const char* what;
        const Dom::Node* actual;
        int expected;
    } kLinks[] = {
        {"the parent", real.ParentNode(), model_.At(node).parent},
        {"the first child", real.FirstChild(), model_.First(node)},
        {"the last child", real.LastChild(), model_.Last(node)},
        {"the next sibling", real.NextSibling(), model_.Next(node)},
        {"the previous sibling", real.PreviousSibling(), model_.Previous(node)},
    };
    for (const auto& link : kLinks) {
        if (link.actual == At(link.expected)) continue;
        return std::to_string(node) + ": " + link.what + " is " + Name(link.actual) + ", not " +
               Name(At(link.expected));
    }
    return "";
}

std::string LinkTree::DifferenceOfChildren(int node) const {
    const Dom::Node& real = *At(node);
    std::size_t count = 0;
    const std::vector<int>& children = model_.At(node).children;
    for (const Dom::Node& child : real.Children()) {
        if (count >= children.size() || &child != At(children[count])) {
            return std::to_string(node) + ": " + Name(&child) + " is the wrong child " +
                   std::to_string(count);
        }
        ++count;
    }
    if (count != children.size()) return std::to_string(node) + ": a child is missing";

    std::size_t visible = 0;
    for (int i = model_.First(node); i != LinkModel::kNone; i = model_.Next(i), ++visible) {
        if (real.ChildNodes().Item(visible) != At(i)) {
            return std::to_string(node) + ": the list has " +
                   Name(real.ChildNodes().Item(visible)) + " in place of " + Name(At(i));
        }
    }
    if (real.ChildNodes().Length() != visible)
        return std::to_string(node) + ": the list has another length";
    if (real.HasChildNodes() != (visible > 0))
        return std::to_string(node) + ": HasChildNodes() is wrong";
    return "";
}

std::string LinkTree::Difference() const {
    if (std::string rule = model_.BrokenRule(); !rule.empty()) return "in the model, " + rule;
    for (int node = 0; node < model_.Count(); ++node) {
        if (!Exists(node)) continue;
        if (std::string links = DifferenceOf(node); !links.empty()) return links;
        if (std::string children = DifferenceOfChildren(node); !children.empty()) return children;
    }
    return "";
}

}  // namespace support
