// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharClass.h"

#include <array>

// The classes that make up names: XML 1.0 [4] and [5] in the classes of CharClass.

namespace Xml::detail {

/// Tells whether a name may start with a character of this class.
constexpr bool IsNameStartClass(int charClass) {
    return charClass == ToInt(CharClass::Letter) || charClass == ToInt(CharClass::HexLetter) ||
           charClass == ToInt(CharClass::Underscore);
}

/// Tells whether a character of this class may stand in a name.
constexpr bool IsNameClass(int charClass) {
    return IsNameStartClass(charClass) || charClass == ToInt(CharClass::Digit) ||
           charClass == ToInt(CharClass::Minus) || charClass == ToInt(CharClass::Period);
}

/// What a byte may do in a name, as a table: bit 0 for a start, bit 1 for any place.
inline constexpr auto kNameBytes = [] {
    std::array<unsigned char, 256> table{};
    for (unsigned byte = 0; byte < 128; ++byte) {
        const int charClass = ToInt(kAsciiClass[byte]);
        table[byte] = static_cast<unsigned char>((IsNameStartClass(charClass) ? 1 : 0) |
                                                 (IsNameClass(charClass) ? 2 : 0));
    }
    return table;
}();

constexpr bool IsAsciiNameStart(unsigned char byte) { return (kNameBytes[byte] & 1) != 0; }
constexpr bool IsAsciiName(unsigned char byte) { return (kNameBytes[byte] & 2) != 0; }

static_assert(IsAsciiNameStart('_') && !IsAsciiNameStart('-') && !IsAsciiNameStart(':'));
static_assert(IsAsciiName('-') && IsAsciiName('.') && IsAsciiName('0') && !IsAsciiName(0x80));

}  // namespace Xml::detail
