// SPDX-License-Identifier: MIT
#include "Utf8.h"

namespace Tool {

Utf8Character FirstCharacter(std::string_view text) {
    const auto byteAt = [text](std::size_t i) -> unsigned {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned lead = byteAt(0);
    if (lead < 0x80) return {lead, 1};

    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4) return {};
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80) return {};
        code = code << 6 | (byteAt(i) & 0x3F);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (overlong || surrogate || code > 0x10FFFF) return {};
    return {code, length};
}

void AppendCharacter(std::string& text, char32_t code) {
    const auto append = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        append(code);
        return;
    }
    if (code < 0x800) {
        append(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            append(0xE0 | code >> 12);
        } else {
            append(0xF0 | code >> 18);
            append(0x80 | (code >> 12 & 0x3F));
        }
        append(0x80 | (code >> 6 & 0x3F));
    }
    append(0x80 | (code & 0x3F));
}

}  // namespace Tool
