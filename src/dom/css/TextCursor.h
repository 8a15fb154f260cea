// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/ByteRun.h"
#include "dom/css/CharacterFlags.h"

#include <cassert>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// A place in a text of CSS. The text ends at `end` or, when that is null, at its NUL.
///
/// The functions below move the place behind what they read; when the text does not go on with
/// that, they leave it. Those that resolve escapes return a part of the text when there are none to
/// resolve, and otherwise what they put into `buffer`.
struct TextCursor {
    const char* at;
    const char* end = nullptr;

    explicit TextCursor(const char* text) : at(text) {}
    explicit TextCursor(std::string_view text) : at(text.data()), end(at + text.size()) {}

    /// Returns the next byte, or NUL at the end.
    char Front() const { return at == end ? '\0' : *at; }
    /// Tells whether the next byte is there and one of the kinds in `flags`.
    bool IsAt(unsigned flags) const { return Is(Front(), flags); }
    /// Returns what lies between an earlier place and this one.
    std::string_view Since(const char* begin) const {
        return {begin, static_cast<std::size_t>(at - begin)};
    }
};

/// Skips white space; tells whether there was any.
inline bool SkipBlanks(TextCursor& cursor) {
    const char* const begin = cursor.at;
    while (cursor.IsAt(kBlank))
        ++cursor.at;
    return cursor.at != begin;
}

/// Skips one character.
bool SkipCharacter(TextCursor& cursor, char character);
/// Skips a text, which must not be empty.
bool SkipText(TextCursor& cursor, std::string_view text);
/// Skips a comma and the white space around it.
bool SkipComma(TextCursor& cursor);
/// Skips white space and ")".
bool SkipClosing(TextCursor& cursor);

/// Reads a backslash and what it stands for, and adds that to `result`.
bool ReadEscape(TextCursor& cursor, astring& result);
/// Returns the place behind the bytes that stand in names.
inline const char* BehindName(const TextCursor& cursor) {
    if (cursor.end != nullptr) return BehindRun<NameRun>(cursor.at, cursor.end);
    const char* at = cursor.at;
    assert(at != nullptr);  // without an end there is a NUL
    while (Is(*at, kName))
        ++at;
    return at;
}

/// Reads what begins otherwise than with a letter, or has escapes, as ReadIdent() does.
std::string_view ReadOtherIdent(TextCursor& cursor, astring& buffer);
/// Reads an identifier; empty when there is none.
inline std::string_view ReadIdent(TextCursor& cursor, astring& buffer) {
    if (!cursor.IsAt(kNameStart)) return ReadOtherIdent(cursor, buffer);
    const char* const at = BehindName(cursor);
    if (at != cursor.end && *at == '\\') return ReadOtherIdent(cursor, buffer);
    const char* const begin = cursor.at;
    cursor.at = at;
    return cursor.Since(begin);
}
/// Reads a name; empty when there is none.
std::string_view ReadName(TextCursor& cursor, astring& buffer);
/// Reads a string in quotes, and returns it without them.
std::optional<std::string_view> ReadString(TextCursor& cursor, astring& buffer);
/// Reads "url(...)" and returns the address.
std::optional<std::string_view> ReadUrl(TextCursor& cursor, astring& buffer);
/// Reads "attr(name)" or the like, where `begin` is "attr("; empty when there is none.
std::string_view ReadFunctionOfIdent(TextCursor& cursor, std::string_view begin, astring& buffer);

/// Reads an integer of 32 bits with or without a sign.
std::optional<std::int32_t> ReadInteger(TextCursor& cursor);
/// Reads a colour, and returns it as 0xRRGGBB.
std::optional<unsigned> ReadColor(TextCursor& cursor);

/// Returns the value of a hexadecimal digit, -1 when it is none.
int HexDigit(char digit);

}  // namespace Dom::CSS::detail
