// SPDX-License-Identifier: MIT
#include "dom/css/TextCursor.h"

#include <cstdint>
#include <limits>

namespace Dom::CSS::detail {

namespace {

constexpr unsigned kReplacement = 0xFFFD;
constexpr unsigned kGreatestCharacter = 0x10FFFF;

bool IsCharacter(unsigned code) {
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return code != 0 && !isSurrogate && code <= kGreatestCharacter;
}

// Tells whether a byte goes on with a character of UTF-8.
bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

void AppendCharacter(astring& result, unsigned code) {
    const auto put = [&result](unsigned byte) { result.push_back(static_cast<char>(byte)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

// CSS 2.1 section 4.1.1: unicode ::= \\[0-9a-f]{1,6}(\r\n|[ \n\r\t\f])?
//
// Entered at the first digit.
unsigned ReadCharacterNumber(TextCursor& cursor) {
    constexpr int kMostDigits = 6;
    unsigned code = 0;
    for (int digits = 0; digits < kMostDigits && HexDigit(cursor.Front()) >= 0; ++digits) {
        code = code * 16 + static_cast<unsigned>(HexDigit(cursor.Front()));
        ++cursor.at;
    }
    if (!SkipText(cursor, "\r\n") && cursor.IsAt(kBlank)) ++cursor.at;
    return code;
}

// Reads bytes that have one of `flags`, and escapes.
std::string_view ReadRun(TextCursor& cursor, unsigned flags, astring& buffer) {
    const char* begin = cursor.at;
    while (cursor.IsAt(flags))
        ++cursor.at;
    if (cursor.Front() != '\\') return cursor.Since(begin);

    buffer = cursor.Since(begin);
    while (ReadEscape(cursor, buffer)) {
        begin = cursor.at;
        while (cursor.IsAt(flags))
            ++cursor.at;
        buffer += cursor.Since(begin);
    }
    return buffer;
}

// Adds what a backslash in a string stands for, which besides escapes may be a line end that does
// not count.
bool ReadStringEscape(TextCursor& cursor, astring& result) {
    if (ReadEscape(cursor, result)) return true;
    TextCursor next = cursor;
    ++next.at;
    if (!SkipText(next, "\r\n")) {
        if (!next.IsAt(kBlank)) return false;
        ++next.at;
    }
    cursor.at = next.at;
    return true;
}

bool ReadHexColor(TextCursor& cursor, unsigned& color) {
    constexpr int kMostDigits = 6;
    color = 0;
    int digits = 0;
    for (; digits < kMostDigits && HexDigit(cursor.Front()) >= 0; ++digits, ++cursor.at)
        color = color * 16 + static_cast<unsigned>(HexDigit(cursor.Front()));
    if (digits == kMostDigits) return true;  // what follows is left, also when it is a digit
    if (digits != 3) return false;
    constexpr unsigned kTwice = 0x11;  // 0xA * 0x11 is 0xAA
    color = (color >> 8 & 0xF) * kTwice << 16 | (color >> 4 & 0xF) * kTwice << 8 |
            (color & 0xF) * kTwice;
    return true;
}

bool ReadColorPart(TextCursor& cursor, unsigned& color) {
    const std::optional<std::int32_t> part = ReadInteger(cursor);
    if (!part || *part < 0 || *part > 255) return false;
    color = color << 8 | static_cast<unsigned>(*part);
    return true;
}

// Entered behind "rgb(".
bool ReadRgb(TextCursor& cursor, unsigned& color) {
    color = 0;
    SkipBlanks(cursor);
    return ReadColorPart(cursor, color) && SkipComma(cursor) && ReadColorPart(cursor, color) &&
           SkipComma(cursor) && ReadColorPart(cursor, color) && SkipClosing(cursor);
}

}  // namespace

bool SkipCharacter(TextCursor& cursor, char character) {
    if (cursor.Front() != character) return false;
    ++cursor.at;
    return true;
}

bool SkipText(TextCursor& cursor, std::string_view text) {
    TextCursor next = cursor;
    for (const char character : text) {
        if (!SkipCharacter(next, character)) return false;
    }
    cursor.at = next.at;
    return true;
}

bool SkipComma(TextCursor& cursor) {
    TextCursor next = cursor;
    SkipBlanks(next);
    if (!SkipCharacter(next, ',')) return false;
    SkipBlanks(next);
    cursor.at = next.at;
    return true;
}

bool SkipClosing(TextCursor& cursor) {
    TextCursor next = cursor;
    SkipBlanks(next);
    if (!SkipCharacter(next, ')')) return false;
    cursor.at = next.at;
    return true;
}

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

bool ReadEscape(TextCursor& cursor, astring& result) {
    TextCursor next = cursor;
    if (!SkipCharacter(next, '\\')) return false;
    const char first = next.Front();
    if (first == '\0' || first == '\n' || first == '\r' || first == '\f') return false;
    if (HexDigit(first) >= 0) {
        const unsigned code = ReadCharacterNumber(next);
        AppendCharacter(result, IsCharacter(code) ? code : kReplacement);
    } else {
        const char* const begin = next.at++;
        if (static_cast<unsigned char>(first) >= 0x80) {
            while (IsContinuation(next.Front()))
                ++next.at;
        }
        result += next.Since(begin);
    }
    cursor.at = next.at;
    return true;
}

// CSS 2.1 section 4.1.1: ident ::= [-]?{nmstart}{nmchar}*
std::string_view ReadOtherIdent(TextCursor& cursor, astring& buffer) {
    TextCursor next = cursor;
    SkipCharacter(next, '-');
    if (next.Front() == '\\') {
        astring ignored;
        if (!ReadEscape(next, ignored)) return {};
    } else if (!next.IsAt(kNameStart)) {
        return {};
    }
    return ReadRun(cursor, kName, buffer);
}

std::string_view ReadName(TextCursor& cursor, astring& buffer) {
    return ReadRun(cursor, kName, buffer);
}

std::optional<std::string_view> ReadString(TextCursor& cursor, astring& buffer) {
    TextCursor next = cursor;
    const char quote = next.Front();
    if (quote != '"' && quote != '\'') return {};
    const char* begin = ++next.at;
    bool isBuffered = false;
    for (;;) {
        const char character = next.Front();
        // CSS 2.1 section 4.3.7: a string cannot directly contain a newline.
        if (character == '\0' || character == '\n' || character == '\r' || character == '\f') {
            return {};
        }
        if (character == quote) break;
        if (character != '\\') {
            ++next.at;
            continue;
        }
        if (!isBuffered) buffer.clear();
        isBuffered = true;
        buffer += next.Since(begin);
        if (!ReadStringEscape(next, buffer)) return {};
        begin = next.at;
    }
    std::string_view text = next.Since(begin);
    if (isBuffered) text = buffer += text;
    cursor.at = next.at + 1;
    return text;
}

std::optional<std::string_view> ReadUrl(TextCursor& cursor, astring& buffer) {
    TextCursor next = cursor;
    if (!SkipText(next, "url(")) return {};
    SkipBlanks(next);
    std::optional<std::string_view> address = ReadString(next, buffer);
    // What begins with a quote has no closing one then, which no address without quotes holds.
    if (!address) address = ReadRun(next, kUrl, buffer);
    if (!SkipClosing(next)) return {};
    cursor.at = next.at;
    return address;
}

std::string_view ReadFunctionOfIdent(TextCursor& cursor, std::string_view begin, astring& buffer) {
    TextCursor next = cursor;
    if (!SkipText(next, begin)) return {};
    SkipBlanks(next);
    const std::string_view ident = ReadIdent(next, buffer);
    if (ident.empty() || !SkipClosing(next)) return {};
    cursor.at = next.at;
    return ident;
}

std::optional<std::int32_t> ReadInteger(TextCursor& cursor) {
    using Limits = std::numeric_limits<std::int32_t>;
    TextCursor next = cursor;
    const bool isNegative = SkipCharacter(next, '-');
    if (!isNegative) SkipCharacter(next, '+');
    if (!next.IsAt(kDigit)) return {};
    std::int64_t value = 0;  // wider than the limits
    for (; next.IsAt(kDigit); ++next.at) {
        value = value * 10 + (isNegative ? '0' - *next.at : *next.at - '0');
        if (value < Limits::min() || value > Limits::max()) return {};
    }
    cursor.at = next.at;
    return static_cast<std::int32_t>(value);
}

std::optional<unsigned> ReadColor(TextCursor& cursor) {
    TextCursor next = cursor;
    unsigned color = 0;
    const bool isColor = SkipCharacter(next, '#') ? ReadHexColor(next, color)
                                                  : SkipText(next, "rgb(") && ReadRgb(next, color);
    if (!isColor) return {};
    cursor.at = next.at;
    return color;
}

}  // namespace Dom::CSS::detail
