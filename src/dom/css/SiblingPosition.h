// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

namespace Dom::CSS::detail {

/// Which elements count for a position.
enum class Counting : unsigned char { Children, ChildrenFromEnd, OfType, OfTypeFromEnd };

/// Returns the position of an element among its siblings, from 1 on.
///
/// Positions are kept by each thread until the document changes, so that asking for all elements
/// takes linear time, in whatever order.
long PositionAmongSiblings(const Element& element, Counting counting);

/// Tells whether the position of an element among all siblings is 1.
bool IsOutermost(const Element& element, Counting counting);

}  // namespace Dom::CSS::detail
