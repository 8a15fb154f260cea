// SPDX-License-Identifier: MIT
#pragma once

#include "xml/XmlCharacters.h"

namespace Xml::detail {

/// A reference that stands in the text as a whole and needs no declaration.
struct QuickReference {
    int code = 0;                        ///< the character it stands for
    const unsigned char* end = nullptr;  ///< behind its ";"; null when there is no such reference
};

/// Reads the digits behind "&#" or "&#x" at `at`; `base` is 10 or 16.
inline QuickReference ReadQuickDigits(const unsigned char* at, int base) {
    int code = 0;
    for (const unsigned char* const begin = at; *at != ';' || at == begin; ++at) {
        const int letter = *at | 0x20;
        int digit = base;
        if (*at >= '0' && *at <= '9') {
            digit = *at - '0';
        } else if (letter >= 'a' && letter <= 'f') {
            digit = letter - 'a' + 10;
        }
        if (digit >= base) return {};
        code = code * base + digit;
        if (code > utf8::kLastScalar) return {};
    }
    if (!IsXmlCharacter(code)) return {};
    return {code, at + 1};
}

/// Reads the reference at `at`, where "&" stands, when it is a predefined entity (XML 1.0 section
/// 4.6) or a character reference. The text ends with zero bytes, so nothing reads past it.
inline QuickReference ReadQuickReference(const unsigned char* at) {
    switch (at[1]) {
    case 'l': return at[2] == 't' && at[3] == ';' ? QuickReference{'<', at + 4} : QuickReference{};
    case 'g': return at[2] == 't' && at[3] == ';' ? QuickReference{'>', at + 4} : QuickReference{};
    case 'a':
        if (at[2] == 'm' && at[3] == 'p' && at[4] == ';') return {'&', at + 5};
        if (at[2] == 'p' && at[3] == 'o' && at[4] == 's' && at[5] == ';') return {'\'', at + 6};
        return {};
    case 'q':
        return at[2] == 'u' && at[3] == 'o' && at[4] == 't' && at[5] == ';'
                   ? QuickReference{'"', at + 6}
                   : QuickReference{};
    case '#': return at[2] == 'x' ? ReadQuickDigits(at + 3, 16) : ReadQuickDigits(at + 2, 10);
    default: return {};
    }
}

}  // namespace Xml::detail
