// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/PropertyTable.h"

#include <string_view>

namespace Dom::CSS::detail {

/// What values are relative to. Lengths are in CSS pixels.
struct ComputingContext {
    double parentFontSize = 16;     ///< for "font-size" itself
    double fontSize = 16;           ///< of the element, for all other properties
    double rootFontSize = 16;       ///< of the root element, for "rem"
    double initialFontSize = 16;    ///< "medium"
    double viewportWidth = 0;       ///< for "vw"
    double viewportHeight = 0;      ///< for "vh"
    std::string_view parentWeight;  ///< computed "font-weight" of the parent
    std::string_view color;         ///< computed "color" of the element, for "currentcolor"
    std::string_view baseAddress;   ///< what addresses in the declaration are relative to
};

/// Tells whether a property may have a value. Anything is right for kinds that are not looked into.
/// \param value without "!important"; neither "inherit" and its like nor one with variables
bool IsValidValue(const PropertyInfo& property, std::string_view value);

/// Returns the computed value of a property, for a value that is valid.
astring ComputedValue(const PropertyInfo& property, std::string_view value,
                      const ComputingContext& context);

/// Returns the pixels of a computed value such as "12.5px"; 0 when it is none.
double PixelsOf(std::string_view computed);

}  // namespace Dom::CSS::detail
