// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSPrimitiveValue.h>

#include <array>
#include <memory>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// What a text says as one value.
struct Primitive {
    CSSPrimitiveValue::UnitTypes type = CSSPrimitiveValue::CSS_UNKNOWN;
    float number = 0;         ///< of a number or dimension
    std::string_view string;  ///< of everything else; lies in the text or in the buffer
    bool saysAll = false;     ///< nothing of the text is lost when only this is kept
    std::string_view unit{};  ///< of CSS_DIMENSION; lies in the text
};

/// Reads a text, without white space before it, as one value.
/// \param buffer for a string with escapes
Primitive ReadPrimitive(std::string_view text, astring& buffer);

/// Reads a number with or without a unit, and moves `text` behind it.
/// \return a value of a type from CSS_NUMBER to CSS_DIMENSION, or CSS_UNKNOWN with `text` as it was
Primitive ReadNumber(std::string_view& text);

/// The sides of rect(), each a part of a text.
using RectSides = std::array<std::string_view, 4>;

/// Reads what stands in the parentheses of rect(): four lengths or "auto", with commas or white
/// space between them. There is no white space around it.
std::optional<RectSides> ReadRectSides(std::string_view text);

}  // namespace Dom::CSS::detail
