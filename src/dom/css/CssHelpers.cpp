// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>

#include "dom/css/TextCursor.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace CssHelpers {

namespace detail = Dom::CSS::detail;
using detail::TextCursor;

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

// Appends what was read from a text, and moves the text behind it; false when there was nothing.
bool Deliver(const TextCursor& cursor, std::string_view piece, const char*& text, astring& result) {
    if (piece.empty()) return false;
    result += piece;
    text = cursor.at;
    return true;
}

// Appends what was read, which may be empty, if there was something.
bool Deliver(const std::optional<std::string_view>& piece, astring& result) {
    if (piece) result += *piece;
    return piece.has_value();
}

}  // namespace

bool ParseWhitespace(const char*& text) {
    TextCursor cursor(text);
    const bool isThere = detail::SkipBlanks(cursor);
    text = cursor.at;
    return isThere;
}

bool ParseCommaWhitespace(const char*& text) {
    TextCursor cursor(text);
    const bool isThere = detail::SkipComma(cursor);
    text = cursor.at;
    return isThere;
}

int ConvertHexDigit(char digit) { return detail::HexDigit(digit); }

bool ParseHexValue(const char*& text, int& value) {
    constexpr int kMostDigits = 8;  // of 32 bits
    unsigned number = 0;
    int digits = 0;
    for (; digits < kMostDigits && detail::HexDigit(text[digits]) >= 0; ++digits)
        number = number * 16 + static_cast<unsigned>(detail::HexDigit(text[digits]));
    if (digits == 0) return false;
    value = static_cast<int>(number);
    text += digits;
    return true;
}

bool ParseInteger(const char*& text, long& value) {
    TextCursor cursor(text);
    const std::optional<std::int32_t> number = detail::ReadInteger(cursor);
    if (!number) return false;
    value = *number;
    text = cursor.at;
    return true;
}

bool ParseEscape(const char*& text, astring& result) {
    TextCursor cursor(text);
    const bool isThere = detail::ReadEscape(cursor, result);
    text = cursor.at;
    return isThere;
}

bool ParseIdent(const char*& text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    const std::string_view ident = detail::ReadIdent(cursor, buffer);
    return Deliver(cursor, ident, text, result);
}

bool ParseName(const char*& text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    const std::string_view name = detail::ReadName(cursor, buffer);
    return Deliver(cursor, name, text, result);
}

bool ParseMedium(const char*& text, astring& medium) {
    const char* const begin = text + std::strspn(text, kSpaceOrComma);
    std::string_view name(begin, LengthToComma(begin));
    if (name.empty()) return false;
    name = name.substr(0, name.find_last_not_of(kSpace) + 1);
    medium = name;
    text = begin + name.size();
    return true;
}

bool ParseString(const char*& text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    const bool isThere = Deliver(detail::ReadString(cursor, buffer), result);
    text = cursor.at;
    return isThere;
}

bool ParseUrl(const char* text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    return Deliver(detail::ReadUrl(cursor, buffer), result);
}

bool ParseRgbColor(const char* text, astring& result) {
    TextCursor cursor(text);
    if (!detail::ReadColor(cursor)) return false;
    result += cursor.Since(text);
    return true;
}

bool ParseRgbColor(const char* text, unsigned int& color) {
    TextCursor cursor(text);
    const std::optional<unsigned> number = detail::ReadColor(cursor);
    if (number) color = *number;
    return number.has_value();
}

bool ParseAttr(const char* text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    const std::string_view ident = detail::ReadFunctionOfIdent(cursor, "attr(", buffer);
    return Deliver(cursor, ident, text, result);
}

// Deliberate: a counter with a second argument, "counter(x, decimal)", is refused.
bool ParseCounter(const char* text, astring& result) {
    TextCursor cursor(text);
    astring buffer;
    const std::string_view ident = detail::ReadFunctionOfIdent(cursor, "counter(", buffer);
    return Deliver(cursor, ident, text, result);
}

}  // namespace CssHelpers
