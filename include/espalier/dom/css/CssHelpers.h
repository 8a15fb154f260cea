// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

/// Functions that read pieces of CSS text.
///
/// Texts end with a NUL and are UTF-8. Functions that take a reference to the place move it behind
/// what they accept; all return false when the text does not begin with that, with the place and
/// the result left as they are. Results that are strings are appended to, unless said otherwise.
namespace CssHelpers {

/// Reads one or more spaces, tabs, line feeds, carriage returns or form feeds.
ESPALIER_EXPORT bool ParseWhitespace(const char*& text);
/// Reads a comma, with or without white space around it.
ESPALIER_EXPORT bool ParseCommaWhitespace(const char*& text);

/// Returns the value of a hexadecimal digit, -1 when it is none.
ESPALIER_EXPORT int ConvertHexDigit(char digit);
/// Reads 1 to 8 hexadecimal digits; a ninth is left.
ESPALIER_EXPORT bool ParseHexValue(const char*& text, int& value);
/// Reads a decimal integer of 32 bits with or without a sign.
ESPALIER_EXPORT bool ParseInteger(const char*& text, long& value);

/// Reads a backslash and what it stands for: CSS 2.1 section 4.1.3.
///
/// One to six hexadecimal digits and one white space behind them are the character with that
/// number, U+FFFD when there is none; another character, but no line end, is itself.
ESPALIER_EXPORT bool ParseEscape(const char*& text, astring& result);
/// Reads an identifier: CSS 2.1 section 4.1.1, `ident`.
ESPALIER_EXPORT bool ParseIdent(const char*& text, astring& result);
/// Reads a name, which unlike an identifier may begin with any of its characters: `name`.
ESPALIER_EXPORT bool ParseName(const char*& text, astring& result);

/// Reads the next name of a list of media, and sets `medium` to it.
///
/// A name is what stands between two commas, without white space around it; commas in parentheses
/// separate nothing, so a media query is one name. Where there is nothing between two commas, there
/// is no name.
ESPALIER_EXPORT bool ParseMedium(const char*& text, astring& medium);

/// Reads a string in single or double quotes and appends it without them, escapes resolved.
ESPALIER_EXPORT bool ParseString(const char*& text, astring& result);

/// \name Functions of CSS
/// Each reads a text from its beginning; what follows is not looked at.
/// @{
/// Reads "url(...)" with or without quotes, and appends the address.
ESPALIER_EXPORT bool ParseUrl(const char* text, astring& result);
/// Reads "#rgb", "#rrggbb" or "rgb(r, g, b)" with numbers from 0 to 255, and appends it as it
/// stands.
ESPALIER_EXPORT bool ParseRgbColor(const char* text, astring& result);
/// Reads a colour and sets `color` to 0xRRGGBB.
ESPALIER_EXPORT bool ParseRgbColor(const char* text, unsigned int& color);
/// Reads "attr(name)" and appends the name.
ESPALIER_EXPORT bool ParseAttr(const char* text, astring& result);
/// Reads "counter(name)" and appends the name. With a second argument it is refused.
ESPALIER_EXPORT bool ParseCounter(const char* text, astring& result);
/// @}

}  // namespace CssHelpers
