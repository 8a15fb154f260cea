// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>

#include <string>
#include <unordered_map>

namespace Tool {

/// Tells where elements are in their tree, which must not change meanwhile.
class ElementPaths {
public:
    /// Returns the names from the root element to an element, such as "html/body/p[2]": with a
    /// number where there are several of the same name below one parent. Of those that are deep
    /// down, the names from ".../" on.
    std::string PathOf(const Dom::Element& element);

private:
    const std::string& StepOf(const Dom::Element& element);

    std::unordered_map<const Dom::Element*, std::string> steps_;
};

}  // namespace Tool
