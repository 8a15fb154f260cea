// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace Dom::CSS::detail {

/// What the values of a property are, and so how they are computed. Where a kind says that a value
/// has several parts, these are checked and computed one by one.
enum class ValueKind : unsigned char {
    Any,             ///< is not looked into
    Keyword,         ///< nothing but the keywords
    KeywordSet,      ///< several different keywords; "none", "normal" and "auto" alone
    Alignment,       ///< a keyword, and perhaps "safe", "unsafe", "first" or "last" in front of it
    KeywordLayers,   ///< with commas between them: keywords
    Repeats,         ///< with commas between them: one or two keywords of "background-repeat"
    Color,           ///< a colour
    Paint,           ///< a colour, or an address that a colour may follow
    Length,          ///< a length
    PositiveLength,  ///< a length that is not negative
    LengthPercentage,          ///< a length, a percentage, or a sum of both
    PositiveLengthPercentage,  ///< the same, but not negative
    NumericLength,             ///< the same, or a number of pixels
    PositiveNumericLength,     ///< the same, but not negative
    LengthOrNumber,            ///< a length, or a number that stays one; not negative
    LengthPair,                ///< one or two lengths that are not negative
    Radius,                    ///< one or two lengths or percentages that are not negative
    LineWidth,                 ///< a length of whole pixels, or "thin", "medium", "thick"
    Offset,                    ///< a length of whole pixels, of any sign
    Spacing,                   ///< a length or a percentage; "normal" is 0
    Dashes,                    ///< numbers, lengths and percentages that are not negative
    Clip,                      ///< "rect()" of lengths or "auto"
    Number,                    ///< a number
    PositiveNumber,            ///< a number that is not negative
    Alpha,                     ///< a number or a percentage, from 0 to 1 when computed
    Factor,                    ///< a number or a percentage that is not negative
    Ratio,    ///< two numbers that are not negative, the second 1 when it is missing; "auto"
    Integer,  ///< an integer
    PositiveInteger,  ///< an integer of at least 1
    Times,            ///< with commas between them: times
    PositiveTimes,    ///< the same, but not negative
    FontFamily,       ///< with commas between them: names of fonts
    FontSize,         ///< "font-size"
    FontStretch,      ///< "font-stretch"
    FontStyle,        ///< "font-style"
    FontWeight,       ///< "font-weight"
    LineHeight,       ///< "line-height"
    Image,            ///< an address or a gradient
    Images,           ///< with commas between them: addresses and gradients
    Positions,        ///< with commas between them: one to four parts of a position
    Origin,           ///< a position, and a length for the third dimension
    Sizes,            ///< with commas between them: one or two lengths or keywords
    Shadows,          ///< with commas between them: shadows of boxes
    TextShadows,      ///< with commas between them: shadows of text
    Cursor,           ///< with commas between them: addresses, with points; a keyword at last
    CounterValues,    ///< names, each with an integer that may be missing for 0
    CounterChanges,   ///< names, each with an integer that may be missing for 1
    QuotePairs,       ///< strings, two and two
    Content,          ///< strings, images, counters and quotes, and another text for them
    Components,       ///< of anything: lengths, colours, addresses and strings computed
};

/// What is known of a property that is no shorthand.
struct PropertyInfo {
    std::string_view name;
    std::string_view initial;   ///< the initial value: computed, but for "currentcolor"
    std::string_view keywords;  ///< that it may have beside what its kind may be, with blanks
                                ///< between; "a=b" is the keyword "a", which is computed as "b"
    ValueKind kind;
    bool isInherited;
};

/// The index of a property in the table.
using PropertyId = std::uint16_t;

/// Returns all properties that are known, sorted by name.
///
/// They are those of CSS 2.1, appendix F, and those of later modules that style sheets for screens
/// and drawings use. Whether they are inherited, and their initial values, is as the standards have
/// it; where these leave that to the user agent ("font-family", "color"), as browsers do.
std::span<const PropertyInfo> KnownProperties();

/// Returns the index of a property.
///
/// Some properties have further names: "word-wrap" for "overflow-wrap", the names with "-webkit-"
/// that browsers keep for old sheets, and those of CSS Logical Properties Level 1 section 4, which
/// stand for sides of the box as they do in horizontal writing from left to right.
/// \param name in any case
std::optional<PropertyId> FindProperty(std::string_view name);

}  // namespace Dom::CSS::detail
