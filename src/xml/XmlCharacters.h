// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/Utf8.h"

namespace Xml::detail {

/// XML 1.0 [2]: tells whether a document may hold the character `code`.
constexpr bool IsXmlCharacter(int code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return utf8::IsScalar(code) && code != 0xFFFE && code != 0xFFFF;
}

}  // namespace Xml::detail
