// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Returns the named colour (CSS Color Level 4 section 6.1) or the system colour (section 6.2 and
/// appendix A) as 0xRRGGBB. System colours are those that browsers have in a light scheme.
/// \param name in any case
std::optional<unsigned> NamedColor(std::string_view name);

}  // namespace Dom::CSS::detail
