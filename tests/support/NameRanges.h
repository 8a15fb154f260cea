// SPDX-License-Identifier: MIT
#pragma once

#include <span>

/// \file
/// Which characters names have by XML 1.0 (fifth edition).
namespace support {

struct CharacterRange {
    char32_t first;
    char32_t last;
};

// [4] NameStartChar, without the colon
inline constexpr CharacterRange kNameStarts[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};

// [4a] NameChar, what it adds
inline constexpr CharacterRange kNameOthers[] = {{'-', '-'},   {'.', '.'},     {'0', '9'},
                                                 {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

constexpr bool IsIn(std::span<const CharacterRange> ranges, char32_t code) {
    for (const CharacterRange& range : ranges) {
        if (code >= range.first && code <= range.last) return true;
    }
    return false;
}

/// Tells whether a name may begin with the character. The colon is left out.
constexpr bool IsNameStart(char32_t code) { return IsIn(kNameStarts, code); }

/// Tells whether a name may have the character behind the first.
constexpr bool IsNameCharacter(char32_t code) {
    return IsNameStart(code) || IsIn(kNameOthers, code);
}

}  // namespace support
