// SPDX-License-Identifier: MIT
#include "dom/css/computed/PlainNames.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

// Returns the length of a string, or of an address without quotes, at the begin of a text.
std::size_t LengthOfOpaque(std::string_view text) {
    const bool isAddress = EqualIgnoringCase(text.substr(0, 4), "url(");
    if (!isAddress && text[0] != '"' && text[0] != '\'') return 0;
    const char end = isAddress ? ')' : text[0];
    std::size_t at = isAddress ? 4U : 1U;
    while (at < text.size() && text[at] != end)
        at += text[at] == '\\' ? 2U : 1U;
    return std::min(at + 1, text.size());
}

}  // namespace

astring PlainNames(std::string_view value) {
    astring result;
    while (!value.empty()) {
        std::size_t length = LengthOfOpaque(value);
        astring character;
        TextCursor cursor(value);
        if (value[0] == '\\' && ReadEscape(cursor, character)) {
            length = static_cast<std::size_t>(cursor.at - value.data());
        }
        const bool isPlain = !character.empty() && Is(character[0], kName);
        length = std::max<std::size_t>(length, 1);
        result += isPlain ? character.view() : value.substr(0, length);
        value.remove_prefix(length);
    }
    return result;
}

}  // namespace Dom::CSS::detail
