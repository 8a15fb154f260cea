// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::CSS::detail {

/// The white space of CSS (CSS 2.1 section 4.1.1).
inline constexpr std::string_view kSpace = " \t\n\r\f";

/// Tells whether a character is white space.
constexpr bool IsSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r' && character != '\v');
}

/// Tells whether a character is a letter of ASCII.
constexpr bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Tells whether a character is a digit.
constexpr bool IsDigit(char character) { return character >= '0' && character <= '9'; }

/// Tells whether the name of a property may go on with a character.
constexpr bool IsInName(char character) {
    return IsLetter(character) || IsDigit(character) || character == '-' || character == '_';
}

/// Returns a text without the white space around it.
constexpr std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

}  // namespace Dom::CSS::detail
