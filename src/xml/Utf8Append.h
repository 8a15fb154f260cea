// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

namespace Xml::detail {

/// Appends the character `code` (1 to 0x10FFFF) to `text` in UTF-8.
inline void AppendUtf8(astring& text, int code) {
    const auto put = [&text](int byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        put(code);
        return;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            put(0xE0 | code >> 12);
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

}  // namespace Xml::detail
