// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <string_view>

namespace Dom::CSS::detail {

/// Returns a value whose names have no escapes where they need none (CSS Syntax Level 3 section
/// 4.3.7): "gr\65 en" is "green". Strings and addresses without quotes stay as they are.
astring PlainNames(std::string_view value);

}  // namespace Dom::CSS::detail
