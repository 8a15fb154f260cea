// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
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

/// Tells whether a text ends with a backslash that escapes what comes behind it.
constexpr bool EndsWithBackslash(std::string_view text) {
    std::size_t count = 0;
    while (count < text.size() && text[text.size() - 1 - count] == '\\')
        ++count;
    return count % 2 == 1;
}

/// Returns a text without the white space around it, but for a blank at the end that is escaped.
constexpr std::string_view TrimmedValue(std::string_view text) {
    const std::string_view trimmed = Trimmed(text);
    const auto end = static_cast<std::size_t>(trimmed.data() + trimmed.size() - text.data());
    const bool isEscaped =
        EndsWithBackslash(trimmed) && end < text.size() && (text[end] == ' ' || text[end] == '\t');
    return isEscaped ? std::string_view(trimmed.data(), trimmed.size() + 1) : trimmed;
}

}  // namespace Dom::CSS::detail
