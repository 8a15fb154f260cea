// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>
#include <espalier/dom/css/StyleExplanation.h>

#include <string>
#include <vector>

namespace Tool {

/// The value of a property of an element, and why it is that.
struct StyleRow {
    std::string property;
    Dom::CSS::StyleExplanation explanation;
    std::string from;  ///< the path of the element that it is inherited from, or empty
};

/// An element, or a pseudo-element of it, with its properties.
struct StyledElement {
    const Dom::Element* element;
    std::string pseudo;  ///< empty for the element itself
    std::string path;
    std::vector<StyleRow> rows;
};

}  // namespace Tool
