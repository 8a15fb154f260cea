// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <string_view>

namespace Dom::CSS::detail {

/// Returns a text as a string of CSS (CSSOM section 2.1): in double quotes, with escapes for these,
/// for backslashes and for control characters.
astring Quoted(std::string_view text);

}  // namespace Dom::CSS::detail
