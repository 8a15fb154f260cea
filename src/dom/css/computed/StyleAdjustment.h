// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/StyleData.h"

namespace Dom::CSS::detail {

/// Where the element stands that a style is for.
struct StyledPlace {
    bool isRoot = false;
    bool isItem = false;  ///< of a flex or grid container
    bool isPart = false;  ///< it is a pseudo-element

    friend bool operator==(const StyledPlace&, const StyledPlace&) = default;
};

/// Changes the values that depend on those of other properties of the element, or on its place:
/// "display" of what floats, is positioned, is the root or an item (CSS 2.1 section 9.7, CSS
/// Flexible Box Layout Level 1 section 4), widths of borders and outlines that are not drawn
/// (CSS 2.1 section 8.5.1), and "content" of elements (section 12.2).
void AdjustStyle(StyleData& style, StyledPlace place);

}  // namespace Dom::CSS::detail
