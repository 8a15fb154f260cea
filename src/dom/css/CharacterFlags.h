// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// \file
/// What the bytes of a style sheet are: CSS 2.1 section 4.1.1. Bytes of 128 and above are parts of
/// characters beyond ASCII, all of which may stand in names.

namespace Dom::CSS::detail {

/// What a byte may be; several at once.
enum CharacterFlag : unsigned short {
    kBlank = 0x01,        ///< white space
    kNameStart = 0x02,    ///< begins an identifier
    kName = 0x04,         ///< stands in a name
    kDigit = 0x08,        ///< 0 to 9
    kUrl = 0x10,          ///< stands in an address without quotes, as itself
    kNumberEnd = 0x20,    ///< may stand behind a number, or behind its unit
    kValue = 0x40,        ///< does not end the value of a property in a declaration
    kBracket = 0x80,      ///< begins or ends something that a block is not looked for in
    kPlainName = 0x100,   ///< stands in the name of a property, beyond its first letter
    kPlainValue = 0x200,  ///< neither ends the value of a property in a sheet nor begins a part of
                          ///< it that may have such bytes
    kValuePart = 0x400    ///< is plain and does not separate the parts of a value
};

consteval std::array<unsigned short, 256> MakeCharacterFlags() {
    std::array<unsigned short, 256> flags{};
    const auto mark = [&flags](std::string_view characters, unsigned short flag) {
        for (const char character : characters)
            flags[static_cast<unsigned char>(character)] |= flag;
    };
    const auto unmark = [&flags](std::string_view characters, unsigned flag) {
        for (const char character : characters)
            flags[static_cast<unsigned char>(character)] &= static_cast<unsigned short>(~flag);
    };
    const auto markRange = [&flags](std::size_t first, std::size_t last, unsigned short flag) {
        for (std::size_t i = first; i <= last; ++i)
            flags[i] |= flag;
    };
    mark(" \t\n\r\f", kBlank | kNumberEnd);
    markRange('a', 'z', kNameStart | kName);
    markRange('A', 'Z', kNameStart | kName);
    markRange(0x80, 0xFF, kNameStart | kName);
    mark("_", kNameStart | kName);
    mark("-", kName);
    markRange('0', '9', kName | kDigit);
    mark("!#$%&", kUrl);
    markRange('*', 0xFF, kUrl);
    unmark("\\\x7F", kUrl);
    mark(",);}", kNumberEnd);
    markRange(0x00, 0xFF, kValue);
    unmark(";!", kValue);
    mark(std::string_view("\0{([]\"'\\", 8), kBracket);
    markRange('a', 'z', kPlainName);
    markRange('A', 'Z', kPlainName);
    markRange('0', '9', kPlainName);
    mark("-_", kPlainName);
    markRange(0x01, 0xFF, kPlainValue | kValuePart);
    unmark("/\"';}", kPlainValue | kValuePart);
    unmark(" \t\n\r\f", kValuePart);
    return flags;
}

inline constexpr std::array<unsigned short, 256> kCharacterFlags = MakeCharacterFlags();

/// Tells whether a byte is one of the kinds in `flags`.
constexpr bool Is(char character, unsigned flags) {
    return (kCharacterFlags[static_cast<unsigned char>(character)] & flags) != 0;
}

}  // namespace Dom::CSS::detail
