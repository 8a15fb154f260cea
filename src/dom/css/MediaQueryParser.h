// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/MediaQueries.h"

#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// Reads a list of media queries (Media Queries Level 3 section 3). Those that are malformed are in
/// the result, too.
std::vector<MediaQuery> ParseMediaQueries(std::string_view text);

}  // namespace Dom::CSS::detail
