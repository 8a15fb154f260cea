// SPDX-License-Identifier: MIT
#include "dom/css/QuotedText.h"

namespace Dom::CSS::detail {

astring Quoted(std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    astring quoted = "\"";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F) {
            quoted += '\\';
            if (code >= 0x10) quoted += kDigits[code >> 4];
            quoted += kDigits[code & 0xF];
            quoted += ' ';
            continue;
        }
        if (character == '"' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted += '"';
}

}  // namespace Dom::CSS::detail
