// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/ValueComputing.h"

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Computes what has layers, with commas between them.
std::optional<astring> ComputedLayers(const PropertyInfo& property, std::string_view value,
                                      const ComputingContext& context);

/// Computes one address or gradient.
std::optional<astring> ComputedImage(std::string_view value, const ComputingContext& context);
/// Tells whether a value begins as an image does.
bool IsImage(std::string_view value);

/// Computes a position (CSS Values Level 4 section 9): its two parts as lengths or percentages.
std::optional<astring> ComputedPosition(std::string_view value, const ComputingContext& context);
/// Computes a position with, perhaps, a length behind it.
std::optional<astring> ComputedOrigin(std::string_view value, const ComputingContext& context);

}  // namespace Dom::CSS::detail
