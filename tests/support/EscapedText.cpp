// SPDX-License-Identifier: MIT
#include "support/EscapedText.h"

#include "support/Utf8Text.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <stdexcept>

namespace support {
namespace {

std::string Hex(unsigned value, std::size_t width) {
    char digits[8];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, 16).ptr;
    std::string text(digits, end);
    for (char& digit : text) {
        if (digit >= 'a') digit = static_cast<char>(digit - 'a' + 'A');
    }
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

[[noreturn]] void Refuse(std::string_view text) {
    throw std::invalid_argument("unknown escape in: " + std::string(text));
}

// Reads the hexadecimal digits of `text`, all of them.
unsigned ParseHex(std::string_view digits, std::string_view text) {
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) Refuse(text);
    return value;
}

}  // namespace

std::string Escape(std::string_view text) {
    std::string out;
    for (std::size_t position = 0; position < text.size();) {
        const char first = text[position];
        const std::optional<char32_t> code = DecodeUtf8(text, position);
        if (!code) {
            out += "\\x" + Hex(static_cast<unsigned char>(first), 2);
            ++position;
        } else if (*code == '\n') {
            out += "\\n";
        } else if (*code == '\r') {
            out += "\\r";
        } else if (*code == '\t') {
            out += "\\t";
        } else if (*code == '\\') {
            out += "\\\\";
        } else if (*code < 0x20 || *code == 0x7F) {
            out += "\\x" + Hex(static_cast<unsigned>(*code), 2);
        } else if (*code < 0x7F) {
            out.push_back(first);
        } else {
            out += "\\u{" + Hex(static_cast<unsigned>(*code), 1) + "}";
        }
    }
    return out;
}

std::string Unescape(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            out.push_back(text[i]);
            continue;
        }
        if (++i == text.size()) Refuse(text);
        switch (text[i]) {
        case 'n': out.push_back('\n'); break;
        case 'r': out.push_back('\r'); break;
        case 't': out.push_back('\t'); break;
        case 's': out.push_back(' '); break;
        case '\\': out.push_back('\\'); break;
        case 'x':
            if (text.size() - i < 3) Refuse(text);
            out.push_back(static_cast<char>(ParseHex(text.substr(i + 1, 2), text)));
            i += 2;
            break;
        case 'u': {
            const std::size_t close = text.find('}', i);
            if (close == std::string_view::npos || text[i + 1] != '{') Refuse(text);
            AppendUtf8(out, ParseHex(text.substr(i + 2, close - i - 2), text));
            i = close;
            break;
        }
        default: Refuse(text);
        }
    }
    return out;
}

}  // namespace support
