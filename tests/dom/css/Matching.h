// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

/// \file
/// Which elements of a tree something selects, for tests.

namespace support {

/// The elements in document order, by the true order of children.
inline std::vector<Dom::Element*> ElementsOf(Dom::Document& document) {
    std::vector<Dom::Element*> elements;
    std::vector<Dom::Node*> waiting{&document};
    while (!waiting.empty()) {
        Dom::Node* const node = waiting.back();
        waiting.pop_back();
        if (node->NodeType() == Dom::DOMNodeType::ELEMENT_NODE)
            elements.push_back(static_cast<Dom::Element*>(node));
        const auto first = static_cast<std::ptrdiff_t>(waiting.size());
        for (Dom::Node& child : node->Children())
            waiting.push_back(&child);
        std::reverse(waiting.begin() + first, waiting.end());
    }
    return elements;
}

/// The attributes "n" of the elements for which `matches` holds, with blanks between them; an
/// element without one is named by its own name.
template <typename Predicate>
std::string Selected(Dom::Document& document, const Predicate& matches) {
    std::string labels;
    for (Dom::Element* const element : ElementsOf(document)) {
        if (!matches(*element)) continue;
        const astring& label = element->GetAttribute("n");
        labels += (labels.empty() ? "" : " ") + (label.empty() ? element->NodeName() : label).str();
    }
    return labels;
}

}  // namespace support
