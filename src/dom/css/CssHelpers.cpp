// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>

#include <cstddef>
#include <cstring>
#include <string_view>

namespace CssHelpers {

namespace {

// CSS 2.1 section 4.1.1: S
constexpr char kSpace[] = " \t\n\r\f";
constexpr char kSpaceOrComma[] = " \t\n\r\f,";

// Returns the number of characters before the first comma that is in no parentheses, or the end.
std::size_t LengthToComma(const char* text) {
    std::size_t length = 0;
    for (int depth = 0; text[length] != '\0'; ++length) {
        const char character = text[length];
        if (character == ',' && depth == 0) break;
        if (character == '(') ++depth;
        if (character == ')' && depth > 0) --depth;
    }
    return length;
}

}  // namespace

bool ParseMedium(const char*& text, astring& medium) {
    const char* const begin = text + std::strspn(text, kSpaceOrComma);
    std::string_view name(begin, LengthToComma(begin));
    if (name.empty()) return false;
    name = name.substr(0, name.find_last_not_of(kSpace) + 1);
    medium = name;
    text = begin + name.size();
    return true;
}

}  // namespace CssHelpers
