// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSPrimitiveValue.h>

namespace Dom::CSS {

/// The sides of a rectangle, lengths or "auto": CSS 2.1 section 11.1.2.
class Rect {
public:
    Rect(const CSSPrimitiveValue& top, const CSSPrimitiveValue& right,
         const CSSPrimitiveValue& bottom, const CSSPrimitiveValue& left)
        : top_(top), right_(right), bottom_(bottom), left_(left) {}

    /// Returns the top side.
    const CSSPrimitiveValue& Top() const { return top_; }
    /// Returns the right side.
    const CSSPrimitiveValue& Right() const { return right_; }
    /// Returns the bottom side.
    const CSSPrimitiveValue& Bottom() const { return bottom_; }
    /// Returns the left side.
    const CSSPrimitiveValue& Left() const { return left_; }

private:
    CSSPrimitiveValue top_;
    CSSPrimitiveValue right_;
    CSSPrimitiveValue bottom_;
    CSSPrimitiveValue left_;
};

}  // namespace Dom::CSS
