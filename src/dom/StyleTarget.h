// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::detail {

/// The target of instructions that link to style sheets (Associating Style Sheets with XML 1.0).
inline constexpr std::string_view kStyleTarget = "xml-stylesheet";

}  // namespace Dom::detail
