// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// Tells whether `byte` is not the first byte of a character.
constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// A character and the number of bytes that it takes.
struct Utf8Character {
    char32_t code = 0;
    std::size_t length = 0;  ///< 0: the bytes at the start of the text are no character
};

/// Reads the first character of `text`, which is not empty. Overlong forms, surrogates and codes
/// above U+10FFFF are no characters.
Utf8Character FirstCharacter(std::string_view text);

/// Appends the character `code` to `text`.
void AppendCharacter(std::string& text, char32_t code);

}  // namespace Tool
