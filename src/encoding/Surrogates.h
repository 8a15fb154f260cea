// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/Utf8.h"

// Surrogate pairs: how UTF-16 (RFC 2781) writes the characters above FFFF.

namespace Xml::detail {

constexpr bool IsHighSurrogate(int unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(int unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

/// Returns the character of a pair.
constexpr int CombineSurrogates(int high, int low) {
    return 0x10000 + ((high & 0x3FF) << 10 | (low & 0x3FF));
}

/// Returns the first unit of a character above FFFF.
constexpr int HighSurrogateOf(int code) { return 0xD800 + ((code - 0x10000) >> 10); }
/// Returns the second unit of a character above FFFF.
constexpr int LowSurrogateOf(int code) { return 0xDC00 + (code & 0x3FF); }

/// Writes a code as one unit or as a pair, and advances the destination.
/// \return false, with nothing written, when there is no room or the code is above 10FFFF
constexpr bool WriteUtf16(int code, char16_t*& destination, char16_t* destinationEnd) {
    if (code > utf8::kLastScalar) return false;
    if (code < 0x10000) {
        if (destination == destinationEnd) return false;
        *destination++ = static_cast<char16_t>(code);
        return true;
    }
    if (destinationEnd - destination < 2) return false;
    *destination++ = static_cast<char16_t>(HighSurrogateOf(code));
    *destination++ = static_cast<char16_t>(LowSurrogateOf(code));
    return true;
}

}  // namespace Xml::detail
