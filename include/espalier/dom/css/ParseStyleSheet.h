// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/DroppedText.h>
#include <espalier/io/Stream.h>

#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace Dom::CSS {

/// How ParseStyleSheet() makes a sheet.
struct StyleSheetOptions {
    /// Where the sheet comes from.
    CSSRule::RULE_ORIGIN origin = CSSRule::Author;
    /// The encoding that a protocol has named for bytes, such as the charset of HTTP; empty for
    /// none.
    std::string_view protocolEncoding = {};
    /// The encoding of the document that refers to the sheet, for bytes that say nothing
    /// themselves; empty for UTF-8.
    std::string_view environmentEncoding = {};
    /// Gets what is left out, in the order of the text; may be null.
    std::vector<DroppedText>* dropped = nullptr;
};

/// \name Reading whole style sheets
///
/// ParseStyleSheet() reads any text as a style sheet, as CSS Syntax Level 3 has it: what is no
/// declaration is left out up to the next ";", what is no rule up to the end of its block, and all
/// else is there. So nothing in a text makes it throw. Beside CSSStyleRule it makes
/// CSSCharsetRule, CSSImportRule, CSSMediaRule, CSSSupportsRule, CSSFontFaceRule and CSSPageRule;
/// other rules that begin with "@" are kept as they stand in CSSUnknownRule. Rules know their
/// Place(), and PlaceOf() tells that of a declaration.
///
/// \code
///     std::vector<Dom::CSS::DroppedText> dropped;
///     const auto sheet = Dom::CSS::ParseStyleSheet("p { color red; margin: 0 }",
///                                                  {.dropped = &dropped});
///     // one rule with the margins; dropped[0].reason is "Expected ':'"
/// \endcode
///
/// What values print always means the same as what was read; those that cannot be sure of that are
/// texts, CSSValue::CSS_CUSTOM. The shorthands that CSSStyleDeclaration names are replaced by all
/// properties that they stand for, with initial values for what they do not say (CSS Backgrounds
/// Level 3, CSS 2.1 chapter 8); with a value that is not valid for them, or has variables, they
/// stay as they are. That is so until a declaration is changed by its own operations.
///
/// Selectors may have pseudo-classes and pseudo-elements that are not known, which select nothing.
/// Properties may have any name that CSS allows, and such as "*zoom", which old sheets have.
/// A rule may be in 256 others. Time and memory are in proportion to the length of the text, which
/// the sheet keeps for PlaceOf().
/// @{

/// Makes a sheet of a text in UTF-8. A byte order mark at its begin is passed over.
ESPALIER_EXPORT std::unique_ptr<CSSStyleSheet> ParseStyleSheet(
    std::string_view text, const StyleSheetOptions& options = {});

/// Makes a sheet of bytes, decoded as CSS Syntax Level 3 section 3.2 says: by a byte order mark;
/// else by what a protocol has said; else by an "@charset" at their begin; else by the environment.
/// What is no character becomes U+FFFD. Names that no encoding of the library has are passed over.
ESPALIER_EXPORT std::unique_ptr<CSSStyleSheet> ParseStyleSheet(
    std::span<const unsigned char> bytes, const StyleSheetOptions& options = {});

/// Makes a sheet of the bytes that a stream has left, which is not closed.
/// \throws Xml::Exception when the stream throws
ESPALIER_EXPORT std::unique_ptr<CSSStyleSheet> ParseStyleSheet(
    IO::Stream& stream, const StyleSheetOptions& options = {});

/// \name Reading into a sheet
/// As above, behind the rules that are in a sheet; the rules have the origin of the sheet.
/// @{
ESPALIER_EXPORT void ParseStyleSheet(CSSStyleSheet& sheet, std::string_view text,
                                     const StyleSheetOptions& options = {});
ESPALIER_EXPORT void ParseStyleSheet(CSSStyleSheet& sheet, std::span<const unsigned char> bytes,
                                     const StyleSheetOptions& options = {});
ESPALIER_EXPORT void ParseStyleSheet(CSSStyleSheet& sheet, IO::Stream& stream,
                                     const StyleSheetOptions& options = {});
/// @}

/// @}

}  // namespace Dom::CSS
