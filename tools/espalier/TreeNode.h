// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlNodeType.h>

#include <string>
#include <vector>

namespace Tool {

/// A node of a tree as it is shown, on one line: an element with its attributes and, if that is all
/// that it holds, its text; or another node.
struct TreeNode {
    struct Attribute {
        std::string name;
        std::string value;
    };

    Xml::XmlNodeType type;
    int depth = 0;     ///< 1 for the root element and for what is outside of it
    std::string name;  ///< empty for texts, CDATA sections and comments
    std::string namespaceUri;
    std::vector<Attribute> attributes;
    std::string value;      ///< the text of an element; empty for references
    bool hasValue = false;  ///< of an element: that it holds a text and nothing else
    bool isCut = false;     ///< of an element: that what it holds is left out
};

/// Takes the nodes of a tree, in the order of the document.
class TreeSink {
public:
    virtual ~TreeSink() = default;

    virtual void Take(const TreeNode& node) = 0;
};

}  // namespace Tool
