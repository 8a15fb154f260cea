// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharClass.h"

namespace Xml::detail {

/// XML 1.0 (fifth edition) [4]: tells whether a name may start with the character `code`, above
/// ASCII.
constexpr bool StartsStandardName(int code) {
    return (code >= 0xC0 && code <= 0x2FF && code != 0xD7 && code != 0xF7) ||
           (code >= 0x370 && code <= 0x1FFF && code != 0x37E) ||
           (code >= 0x200C && code <= 0x200D) || (code >= 0x2070 && code <= 0x218F) ||
           (code >= 0x2C00 && code <= 0x2FEF) || (code >= 0x3001 && code <= 0xD7FF) ||
           (code >= 0xF900 && code <= 0xFDCF) || (code >= 0xFDF0 && code <= 0xFFFD) ||
           (code >= 0x10000 && code <= 0xEFFFF);
}

/// [4a]: tells whether the character may stand in a name.
constexpr bool IsInStandardName(int code) {
    return StartsStandardName(code) || code == 0xB7 || (code >= 0x300 && code <= 0x36F) ||
           (code >= 0x203F && code <= 0x2040);
}

/// Returns the class of a character above ASCII by these productions.
constexpr int StandardClassOf(int code) {
    if (StartsStandardName(code)) return ToInt(CharClass::Underscore);
    return ToInt(IsInStandardName(code) ? CharClass::Period : CharClass::Other);
}

}  // namespace Xml::detail
