// SPDX-License-Identifier: MIT
#include "support/Utf8Text.h"

namespace support {

void AppendUtf8(std::string& out, char32_t code) {
    const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | (code >> 6));
        byte(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte(0xE0 | (code >> 12));
        byte(0x80 | ((code >> 6) & 0x3F));
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xF0 | (code >> 18));
        byte(0x80 | ((code >> 12) & 0x3F));
        byte(0x80 | ((code >> 6) & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
}

std::optional<char32_t> DecodeUtf8(std::string_view text, std::size_t& position) {
    const auto at = [&](std::size_t i) -> char32_t {
        return static_cast<unsigned char>(text[position + i]);
    };
    const char32_t lead = at(0);
    if (lead < 0x80) {
        ++position;
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4) return std::nullopt;
    const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (text.size() - position < length) return std::nullopt;

    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((at(i) & 0xC0) != 0x80) return std::nullopt;
        code = (code << 6) | (at(i) & 0x3F);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (overlong || surrogate || code > 0x10FFFF) return std::nullopt;
    position += length;
    return code;
}

std::optional<std::u32string> DecodeUtf8(std::string_view text) {
    std::u32string codes;
    for (std::size_t position = 0; position < text.size();) {
        const std::optional<char32_t> code = DecodeUtf8(text, position);
        if (!code) return std::nullopt;
        codes.push_back(*code);
    }
    return codes;
}

}  // namespace support
