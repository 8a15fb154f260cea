// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string_view>

namespace Dom::CSS::detail {

/// Returns the small letter for a capital one of ASCII, and every other character as it is.
constexpr char ToLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

/// Tells whether two texts differ in nothing but the case of ASCII letters.
constexpr bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ToLower(x) == ToLower(y); });
}

}  // namespace Dom::CSS::detail
