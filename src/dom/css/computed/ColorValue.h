// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/ValueComputing.h"

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Returns a colour (CSS Color Level 4) as browsers print its computed value: "rgb(r, g, b)" or
/// "rgba(r, g, b, a)"; "currentcolor" is the colour in the context. Colours that are not in sRGB,
/// such as "lab(50% 20 30)", stay functions.
/// \param text without white space around it
/// \return none when it is no colour
std::optional<astring> ComputedColor(std::string_view text, const ComputingContext& context);

/// Tells whether a function in small letters, such as "hsl", makes a colour.
bool IsColorFunction(std::string_view name);

}  // namespace Dom::CSS::detail
