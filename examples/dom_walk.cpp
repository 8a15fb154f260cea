// SPDX-License-Identifier: MIT
// Prints the outline of a page, and what its texts come to: dom_walk samples/page.xhtml
#include <espalier/dom.h>

#include <iostream>
#include <string>

namespace {

//! [walk]
// Returns the node that comes next in document order; null behind the last one below `root`. Depth
// costs no stack, so there may be any.
const Dom::Node* NextNode(const Dom::Node& root, const Dom::Node* node) {
    if (const Dom::Node* const child = node->FirstChild()) return child;
    while (node != &root && node->NextSibling() == nullptr)
        node = node->ParentNode();
    return node == &root ? nullptr : node->NextSibling();
}

std::size_t CountTextBytes(const Dom::Node& root) {
    std::size_t bytes = 0;
    for (const Dom::Node* node = &root; node != nullptr; node = NextNode(root, node)) {
        if (node->NodeType() == Dom::DOMNodeType::TEXT_NODE) bytes += node->NodeValue().length();
    }
    return bytes;
}
//! [walk]

//! [children and attributes]
// Prints the elements down to a level, each with its attributes.
void PrintOutline(const Dom::Element& element, std::size_t level, std::size_t levels) {
    std::cout << std::string(2 * level, ' ') << element.NodeName();
    for (const Dom::AttributeView attribute : element.AttributeViews())
        std::cout << " " << attribute.Name() << "=\"" << attribute.Value() << "\"";
    std::cout << "\n";
    if (level == levels) return;
    for (const Dom::Node& child : element.Children()) {
        if (child.NodeType() != Dom::DOMNodeType::ELEMENT_NODE) continue;
        PrintOutline(static_cast<const Dom::Element&>(child), level + 1, levels);
    }
}
//! [children and attributes]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dom_walk FILE\n";
        return 2;
    }
    try {
        Dom::Document document;
        document.Load(argv[1]);
        PrintOutline(*document.DocumentElement(), 0, 3);
        std::cout << CountTextBytes(document) << " bytes of text\n";
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << "\n";
        return 1;
    }
    return 0;
}
