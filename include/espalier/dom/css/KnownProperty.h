// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>

#include <string_view>

namespace Dom::CSS {

/// Tells whether a StyleResolver knows a property, so that it takes nothing but values which the
/// property may have: those of CSS 2.1 and of many later modules, shorthands, and custom properties
/// ("--x").
/// \param name in any case, but for custom properties
ESPALIER_EXPORT bool IsKnownProperty(std::string_view name);

}  // namespace Dom::CSS
