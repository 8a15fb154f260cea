// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/ValueComputing.h"

#include <optional>
#include <string_view>

/// \file
/// How values of the different kinds are computed. All functions get a value without white space
/// around it, and return none when it is not valid.

namespace Dom::CSS::detail {

/// What a length may be.
struct LengthRange {
    bool hasPercentages = false;
    bool hasNegatives = false;
    bool hasNumbers = false;  ///< as pixels
};

/// Returns which of the keywords of a property a value is, as it is computed.
std::optional<std::string_view> ComputedKeyword(const PropertyInfo& property,
                                                std::string_view value);

std::optional<astring> ComputedLength(std::string_view value, const ComputingContext& context,
                                      LengthRange range);

/// Computes what is a number, a length or a time.
std::optional<astring> ComputedNumeric(const PropertyInfo& property, std::string_view value,
                                       const ComputingContext& context);
/// Computes values of properties of fonts and "line-height".
std::optional<astring> ComputedFontValue(const PropertyInfo& property, std::string_view value,
                                         const ComputingContext& context);
/// Computes what has parts or layers.
std::optional<astring> ComputedList(const PropertyInfo& property, std::string_view value,
                                    const ComputingContext& context);

}  // namespace Dom::CSS::detail
