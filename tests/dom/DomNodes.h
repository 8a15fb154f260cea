// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom.h>

#include "support/PrintAstring.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// What the tests of trees share: nodes that can be made read-only or have a type of their own, and
/// the links of nodes as a text.

namespace support {

/// A node of class `Base` that can be made read-only. It lies on the heap.
template <typename Base>
class Lockable : public Base {
public:
    using Base::Base;
    using Base::SetReadOnly;
};

/// A node of any type, also of those that have no class.
class AnyNode : public Dom::Node {
public:
    AnyNode(DOM_NODE_TYPE type, std::string_view name, Dom::Document* owner)
        : Node(type, std::string_view(), name, owner) {}

    Dom::Node* CloneNode(bool) override {
        return new AnyNode(NodeType(), NodeName(), OwnerDocument());
    }
};

/// Appends an element of that name, of the class `Made`, which lies on the heap.
template <typename Made = Dom::Element>
Made* Add(Dom::Node& parent, std::string_view name) {
    Dom::Document* document = parent.OwnerDocument();
    if (document == nullptr) document = static_cast<Dom::Document*>(&parent);
    auto* made = new Made(std::string_view(), name, document);
    parent.AppendChild(made);
    return made;
}

/// Appends an element that its document makes.
inline Dom::Element* AddElement(Dom::Node& parent, std::string_view name) {
    Dom::Document* document = parent.OwnerDocument();
    if (document == nullptr) document = static_cast<Dom::Document*>(&parent);
    Dom::Element* made = document->CreateElement(name);
    parent.AppendChild(made);
    return made;
}

/// Appends a text that its document makes.
inline Dom::Text* AddText(Dom::Node& parent, std::string_view data) {
    Dom::Text* made = parent.OwnerDocument()->CreateTextNode(data);
    parent.AppendChild(made);
    return made;
}

/// Names a node: "-" for null, the value in apostrophes for texts, the node name for others.
inline std::string Label(const Dom::Node* node) {
    if (node == nullptr) return "-";
    if (node->NodeType() == Dom::DOMNodeType::TEXT_NODE) return "'" + node->NodeValue().str() + "'";
    return node->NodeName().str();
}

/// The most nodes that a walk of a test meets; one that goes in a circle ends there.
inline constexpr std::size_t kMostNodes = 64;

/// The labels from `node` on along `next`, separated by blanks.
template <typename Next>
std::string LabelsAlong(const Dom::Node* node, const Next& next) {
    std::string labels;
    for (std::size_t count = 0; node != nullptr; node = next(node)) {
        if (++count > kMostNodes) return labels + " ...";
        labels += (labels.empty() ? "" : " ") + Label(node);
    }
    return labels;
}

/// The children by FirstChild() and NextSibling().
inline std::string Forward(const Dom::Node& parent) {
    return LabelsAlong(parent.FirstChild(), [](const Dom::Node* n) { return n->NextSibling(); });
}

/// The children by LastChild() and PreviousSibling(), the last one first.
inline std::string Backward(const Dom::Node& parent) {
    return LabelsAlong(parent.LastChild(), [](const Dom::Node* n) { return n->PreviousSibling(); });
}

/// The children by Children().
inline std::string TrueChildren(const Dom::Node& parent) {
    std::string labels;
    for (const Dom::Node& child : parent.Children())
        labels += (labels.empty() ? "" : " ") + Label(&child);
    return labels;
}

/// The members of a list or map, by iteration.
template <typename List>
std::string Members(const List& list) {
    std::string labels;
    for (const Dom::Node* node : list)
        labels += (labels.empty() ? "" : " ") + Label(node);
    return labels;
}

/// The members of a list by index, up to its length.
inline std::string Items(const Dom::NodeList& list) {
    std::string labels;
    for (std::size_t index = 0; index < list.Length(); ++index)
        labels += (labels.empty() ? "" : " ") + Label(list.Item(index));
    return labels;
}

/// The ends of the children of `parent` and the links of `nodes`, each as NAME(PREVIOUS,NEXT),
/// followed by "@PARENT" unless `parent` is the parent: "first=a last=b a(-,b) b(a,-) x(-,-)@-".
inline std::string Links(const Dom::Node& parent, const std::vector<Dom::Node*>& nodes) {
    std::string text = "first=" + Label(parent.FirstChild()) + " last=" + Label(parent.LastChild());
    for (const Dom::Node* node : nodes) {
        text += " " + Label(node) + "(" + Label(node->PreviousSibling()) + "," +
                Label(node->NextSibling()) + ")";
        if (node->ParentNode() != &parent) text += "@" + Label(node->ParentNode());
    }
    return text;
}

}  // namespace support
