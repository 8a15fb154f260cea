// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Tool {

// What a terminal takes for colors (ECMA-48: SGR), by what is shown in them.
inline constexpr std::string_view kTypeColor = "\x1B[36m";
inline constexpr std::string_view kNameColor = "\x1B[1m";
inline constexpr std::string_view kValueColor = "\x1B[32m";
inline constexpr std::string_view kFaintColor = "\x1B[2m";
inline constexpr std::string_view kNoColor = "\x1B[0m";

}  // namespace Tool
