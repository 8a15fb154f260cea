// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

namespace Tool {

/// Returns the names of encodings that a style sheet can be said to be in, UTF-8 first. Each is one
/// that Dom::CSS::ParseStyleSheet() knows.
std::span<const std::string_view> SheetEncodings();

/// Tells whether a name is one of them, in letters of any case.
bool IsSheetEncoding(std::string_view name);

}  // namespace Tool
