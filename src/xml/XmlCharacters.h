// SPDX-License-Identifier: MIT
#pragma once

namespace Xml::detail {

inline constexpr int kGreatestCharacter = 0x10FFFF;

/// XML 1.0 [2]: tells whether a document may hold the character `code`, for codes that are not
/// above kGreatestCharacter.
constexpr bool IsXmlCharacter(int code) {
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || code >= 0x10000;
}

}  // namespace Xml::detail
