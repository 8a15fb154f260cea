// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSPrimitiveValue.h>

namespace Dom::CSS {

/// The parts of a colour, numbers from 0 to 255: CSS 2.1 section 4.3.6.
class RGBColor {
public:
    RGBColor(const CSSPrimitiveValue& red, const CSSPrimitiveValue& green,
             const CSSPrimitiveValue& blue)
        : red_(red), green_(green), blue_(blue) {}

    /// Returns the red part.
    const CSSPrimitiveValue& Red() const { return red_; }
    /// Returns the green part.
    const CSSPrimitiveValue& Green() const { return green_; }
    /// Returns the blue part.
    const CSSPrimitiveValue& Blue() const { return blue_; }

private:
    CSSPrimitiveValue red_;
    CSSPrimitiveValue green_;
    CSSPrimitiveValue blue_;
};

}  // namespace Dom::CSS
