// SPDX-License-Identifier: MIT
#include "dom/css/Primitive.h"

#include "dom/css/CharacterFlags.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/TextCursor.h"

#include <cstddef>

namespace Dom::CSS::detail {

namespace {

using Type = CSSPrimitiveValue::UnitTypes;

// The units from CSS_PERCENTAGE to CSS_KHZ.
constexpr std::string_view kUnits[] = {"%",  "em",  "ex",  "px",   "cm", "mm", "in", "pt",
                                       "pc", "deg", "rad", "grad", "ms", "s",  "Hz", "kHz"};

Type TypeOfUnit(std::string_view unit) {
    if (unit.empty()) return CSSPrimitiveValue::CSS_NUMBER;
    if (unit == "px") return CSSPrimitiveValue::CSS_PX;  // most are
    unsigned type = CSSPrimitiveValue::CSS_PERCENTAGE;
    for (const std::string_view known : kUnits) {
        if (unit == known) return static_cast<Type>(type);
        ++type;
    }
    return CSSPrimitiveValue::CSS_DIMENSION;
}

bool IsIdent(std::string_view text) {
    TextCursor cursor(text);
    astring buffer;
    return !ReadIdent(cursor, buffer).empty() && cursor.at == cursor.end;
}

// Reads the digits and the fraction of a number, which ends with a digit.
std::optional<float> ReadDigits(TextCursor& cursor) {
    const char* const begin = cursor.at;
    float value = 0;
    for (; cursor.IsAt(kDigit); ++cursor.at)
        value = value * 10 + static_cast<float>(*cursor.at - '0');
    if (SkipCharacter(cursor, '.')) {
        float weight = 0.1F;
        for (; cursor.IsAt(kDigit); ++cursor.at) {
            value += weight * static_cast<float>(*cursor.at - '0');
            weight /= 10;
        }
    }
    if (cursor.at == begin || !Is(cursor.at[-1], kDigit)) return {};
    return value;
}

Primitive OfNumber(std::string_view text) {
    std::string_view rest = text;
    Primitive number = ReadNumber(rest);
    number.saysAll = number.saysAll && rest.empty();
    return number;
}

// What was read from the beginning of a text, up to the place of the cursor.
Primitive UpTo(const TextCursor& cursor, Type type, std::string_view string) {
    return {type, 0, string, cursor.at == cursor.end};
}

Primitive OfString(TextCursor cursor, astring& buffer) {
    const std::optional<std::string_view> string = ReadString(cursor, buffer);
    return string ? UpTo(cursor, CSSPrimitiveValue::CSS_STRING, *string) : Primitive();
}

Primitive OfColor(TextCursor cursor) {
    const char* const begin = cursor.at;
    if (!ReadColor(cursor)) return {};
    return UpTo(cursor, CSSPrimitiveValue::CSS_RGBCOLOR, cursor.Since(begin));
}

Primitive OfUrl(TextCursor cursor, astring& buffer) {
    const std::optional<std::string_view> address = ReadUrl(cursor, buffer);
    return address ? UpTo(cursor, CSSPrimitiveValue::CSS_URI, *address) : Primitive();
}

Primitive OfIdent(TextCursor cursor, astring& buffer) {
    const std::string_view ident = ReadIdent(cursor, buffer);
    return ident.empty() ? Primitive() : UpTo(cursor, CSSPrimitiveValue::CSS_IDENT, ident);
}

Primitive OfFunctionOfIdent(TextCursor cursor, Type type, std::string_view begin, astring& buffer) {
    const std::string_view ident = ReadFunctionOfIdent(cursor, begin, buffer);
    return ident.empty() ? Primitive() : UpTo(cursor, type, ident);
}

// Entered behind "rect(". Neither lengths nor "auto" hold a parenthesis.
Primitive OfRect(TextCursor cursor) {
    const char* const begin = cursor.at;
    while (cursor.at != cursor.end && *cursor.at != ')')
        ++cursor.at;
    const std::string_view sides = Trimmed(cursor.Since(begin));
    if (!SkipCharacter(cursor, ')') || !ReadRectSides(sides)) return {};
    return UpTo(cursor, CSSPrimitiveValue::CSS_RECT, sides);
}

// Deliberate: a text that is no identifier is a string as it stands, ".5em" too.
Primitive OfAnythingElse(std::string_view text, astring& buffer) {
    TextCursor cursor(text);
    const std::string_view ident = ReadIdent(cursor, buffer);
    const bool isAll = cursor.at == cursor.end;
    SkipBlanks(cursor);
    if (ident.empty() || cursor.at != cursor.end) {
        return {CSSPrimitiveValue::CSS_STRING, 0, text, false};
    }
    return {CSSPrimitiveValue::CSS_IDENT, 0, ident, isAll};
}

bool IsSide(std::string_view text) {
    if (text == "auto") return true;
    const Primitive side = OfNumber(text);
    const bool isLength =
        side.type >= CSSPrimitiveValue::CSS_EMS && side.type <= CSSPrimitiveValue::CSS_PC;
    return (isLength || side.type == CSSPrimitiveValue::CSS_NUMBER) && side.saysAll;
}

}  // namespace

Primitive ReadNumber(std::string_view& text) {
    TextCursor cursor(text);
    const bool isNegative = SkipCharacter(cursor, '-');
    if (!isNegative) SkipCharacter(cursor, '+');
    const std::optional<float> value = ReadDigits(cursor);
    if (!value) return {};
    const char* const unitBegin = cursor.at;
    while (cursor.at != cursor.end && !cursor.IsAt(kNumberEnd))
        ++cursor.at;
    const std::string_view unit = cursor.Since(unitBegin);
    text.remove_prefix(static_cast<std::size_t>(cursor.at - text.data()));
    const Type type = TypeOfUnit(unit);
    const bool isOther = type == CSSPrimitiveValue::CSS_DIMENSION;
    return {
        type, isNegative ? -*value : *value, {}, !isOther || IsIdent(unit), isOther ? unit : ""};
}

Primitive ReadPrimitive(std::string_view text, astring& buffer) {
    if (text.empty()) return {};
    const TextCursor cursor(text);
    switch (text.front()) {
    case '"':
    case '\'': return OfString(cursor, buffer);
    case '#': return OfColor(cursor);
    case '+':
    case '-': return OfNumber(text);
    case 'a':
        if (!text.starts_with("attr(")) break;
        return OfFunctionOfIdent(cursor, CSSPrimitiveValue::CSS_ATTR, "attr(", buffer);
    case 'c':
        if (!text.starts_with("counter(")) break;
        return OfFunctionOfIdent(cursor, CSSPrimitiveValue::CSS_COUNTER, "counter(", buffer);
    case 'r':
        if (text.starts_with("rgb(")) return OfColor(cursor);
        if (text.starts_with("rect(")) return OfRect(TextCursor(text.substr(5)));
        break;
    case 'u':
        if (text.starts_with("url(")) return OfUrl(cursor, buffer);
        break;
    default:
        if (Is(text.front(), kDigit)) return OfNumber(text);
        return OfAnythingElse(text, buffer);
    }
    return OfIdent(cursor, buffer);
}

std::optional<RectSides> ReadRectSides(std::string_view text) {
    RectSides sides;
    TextCursor cursor(text);
    for (std::size_t i = 0; i < sides.size(); ++i) {
        if (i > 0 && !SkipComma(cursor) && !SkipBlanks(cursor)) return {};
        const char* const begin = cursor.at;
        while (cursor.at != cursor.end && !cursor.IsAt(kNumberEnd))
            ++cursor.at;
        sides[i] = cursor.Since(begin);
        if (!IsSide(sides[i])) return {};
    }
    if (cursor.at != cursor.end) return {};
    return sides;
}

}  // namespace Dom::CSS::detail
