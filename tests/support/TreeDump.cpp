// SPDX-License-Identifier: MIT
#include "support/TreeDump.h"

#include <espalier/dom/Element.h>
#include <espalier/dom/NamedNodeMap.h>

#include "support/EscapedText.h"

#include <cstddef>
#include <string_view>

namespace support {

namespace {

using Dom::DOMNodeType;
using Dom::Node;

std::string Quoted(std::string_view text) { return '"' + Escape(text) + '"'; }

std::string TypeName(const Node& node) {
    switch (node.NodeType()) {
    case DOMNodeType::ELEMENT_NODE: return "Element";
    case DOMNodeType::ATTRIBUTE_NODE: return "Attr";
    case DOMNodeType::TEXT_NODE: return "Text";
    case DOMNodeType::CDATA_SECTION_NODE: return "CDATASection";
    case DOMNodeType::ENTITY_REFERENCE_NODE: return "EntityReference";
    case DOMNodeType::PROCESSING_INSTRUCTION_NODE: return "ProcessingInstruction";
    case DOMNodeType::COMMENT_NODE: return "Comment";
    case DOMNodeType::DOCUMENT_FRAGMENT_NODE: return "DocumentFragment";
    default: return node.NodeType().ToString();
    }
}

void AddAttribute(std::string& line, std::string_view name, std::string_view uri,
                  std::string_view value) {
    line += ' ' + Escape(name);
    if (!uri.empty()) line += '{' + Escape(uri) + '}';
    line += '=' + Quoted(value);
}

void AddAttributes(std::string& line, const Node& node, AttributeAccess access) {
    if (access == AttributeAccess::Views) {
        for (const Dom::AttributeView attribute :
             static_cast<const Dom::Element&>(node).AttributeViews()) {
            AddAttribute(line, attribute.Name(), attribute.NamespaceURI(), attribute.Value());
        }
        return;
    }
    for (Node* const item : *const_cast<Node&>(node).Attributes()) {
        AddAttribute(line, item->NodeName(), item->NamespaceURI(),
                     static_cast<Dom::Attr*>(item)->Value());
    }
}

std::string LineOf(const Node& node, AttributeAccess access) {
    std::string line = TypeName(node);
    const DOMNodeType type = node.NodeType();
    const bool isNamed = type == DOMNodeType::ELEMENT_NODE ||
                         type == DOMNodeType::ENTITY_REFERENCE_NODE ||
                         type == DOMNodeType::PROCESSING_INSTRUCTION_NODE;
    if (isNamed) line += ' ' + Escape(node.NodeName());
    if (!node.NamespaceURI().empty()) line += " {" + Escape(node.NamespaceURI()) + '}';
    if (type == DOMNodeType::ELEMENT_NODE) {
        AddAttributes(line, node, access);
    } else if (type == DOMNodeType::ATTRIBUTE_NODE) {
        line += ' ' + Quoted(static_cast<const Dom::Attr&>(node).Value());
    } else if (type != DOMNodeType::ENTITY_REFERENCE_NODE) {
        line += ' ' + Quoted(node.NodeValue());
    }
    return line;
}

Node* FirstOf(const Node& node) {
    return node.Children().empty() ? nullptr : &*node.Children().begin();
}

// Returns the sibling that really follows.
Node* NextOf(Node& node) {
    Dom::ChildRange::Iterator next(&node);
    ++next;
    return next == Dom::ChildRange::Iterator() ? nullptr : &*next;
}

// Calls `visit` with all nodes below `root` and their depth, in document order.
template <typename Visit>
void ForEachBelow(const Node& root, const Visit& visit) {
    std::size_t depth = 0;
    Node* node = FirstOf(root);
    while (node != nullptr) {
        visit(*node, depth);
        Node* next = FirstOf(*node);
        if (next != nullptr) {
            ++depth;
        } else {
            next = NextOf(*node);
        }
        while (next == nullptr) {
            node = node->ParentNode();
            if (node == &root) return;
            --depth;
            next = NextOf(*node);
        }
        node = next;
    }
}

bool IsText(const Node& node) {
    return node.NodeType() == DOMNodeType::TEXT_NODE ||
           node.NodeType() == DOMNodeType::CDATA_SECTION_NODE;
}

std::string WrongLinkOfChildren(Node& parent) {
    Node* previous = nullptr;
    std::size_t count = 0;
    for (Node* node = parent.FirstChild(); node != nullptr; node = node->NextSibling()) {
        if (node->ParentNode() != &parent) return "another parent";
        if (node->PreviousSibling() != previous) return "another previous sibling";
        if (parent.NodeType() != DOMNodeType::DOCUMENT_NODE &&
            node->OwnerDocument() != parent.OwnerDocument()) {
            return "another document";
        }
        previous = node;
        ++count;
    }
    if (parent.LastChild() != previous) return "another last child";
    if (parent.HasChildNodes() != (count > 0)) return "HasChildNodes()";
    std::size_t trueCount = 0;
    Node* visible = parent.FirstChild();
    for (Node& child : parent.Children()) {
        if (&child != visible) return "another order of children";
        visible = visible->NextSibling();
        ++trueCount;
    }
    return trueCount == count ? "" : "another number of children";
}

std::string WrongAttribute(Node& node) {
    if (node.NodeType() != DOMNodeType::ELEMENT_NODE) return "";
    for (Node* const item : *node.Attributes()) {
        auto& attribute = *static_cast<Dom::Attr*>(item);
        if (attribute.OwnerElement() != &node) return "an attribute's owner element";
        if (attribute.OwnerDocument() != node.OwnerDocument()) return "an attribute's document";
        if (attribute.ParentNode() != nullptr) return "an attribute with a parent";
        if (attribute.NextSibling() != nullptr) return "an attribute with a sibling";
        const std::string wrong = WrongLinkOfChildren(attribute);
        if (!wrong.empty()) return "in an attribute, " + wrong;
    }
    return "";
}

}  // namespace

std::vector<std::string> TreeBelow(const Node& root, AttributeAccess access) {
    std::vector<std::string> lines;
    ForEachBelow(root, [&](Node& node, std::size_t depth) {
        lines.push_back(std::string(2 * depth, ' ') + LineOf(node, access));
    });
    return lines;
}

std::vector<std::string> ContentBelow(const Node& root) {
    std::vector<std::string> lines;
    std::string text;
    std::size_t depthOfText = 0;
    const auto flush = [&] {
        if (!text.empty())
            lines.push_back(std::string(2 * depthOfText, ' ') + "Text " + Quoted(text));
        text.clear();
    };
    ForEachBelow(root, [&](Node& node, std::size_t depth) {
        if (!IsText(node) || depth != depthOfText) flush();
        depthOfText = depth;
        if (IsText(node)) {
            text += node.NodeValue().view();
        } else {
            lines.push_back(std::string(2 * depth, ' ') + LineOf(node, AttributeAccess::Views));
        }
    });
    flush();
    return lines;
}

std::string PartsOf(Dom::Attr& attribute) {
    std::string parts =
        "value " + Quoted(attribute.Value()) + " node " + Quoted(attribute.NodeValue());
    for (Node* part = attribute.FirstChild(); part != nullptr; part = part->NextSibling())
        parts += ' ' + LineOf(*part, AttributeAccess::Views);
    return parts;
}

std::string WrongLink(Node& root) {
    std::string wrong = WrongLinkOfChildren(root);
    ForEachBelow(root, [&](Node& node, std::size_t) {
        if (wrong.empty()) wrong = WrongLinkOfChildren(node);
        if (wrong.empty()) wrong = WrongAttribute(node);
        if (!wrong.empty() && wrong.find(" of ") == std::string::npos) {
            wrong += " of " + LineOf(node, AttributeAccess::Views);
        }
    });
    return wrong;
}

}  // namespace support
