// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/CSSValue.h>

#include "dom/css/Primitive.h"
#include "dom/css/ValueReading.h"

#include <memory>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Reads the text of a property as a CSSPrimitiveValue, if that is what it is and none of it is
/// lost so, or, if reading is exact, would be printed otherwise; dimensions are told apart. An
/// empty text is a value of no type. \param text without white space around it \param buffer for a
/// string with escapes
std::optional<Primitive> ReadWholePrimitive(std::string_view text, astring& buffer,
                                            ValueReading reading);

/// Makes the value of a property from another text: the value "inherit"; a number with its unit; a
/// CSSValueList, when the text has a comma or white space outside of quotes and parentheses; or,
/// when that would lose a part of the text, or print it otherwise, a value that keeps it as it
/// stands. \param text without white space around it
std::unique_ptr<CSSValue> MakeOtherValue(std::string_view text, ValueReading reading);

/// Adds a CSSPrimitiveValue to a list for each piece of a text.
/// \param text without white space around it
void AddPieces(DOMList<CSSValue*>& list, std::string_view text, char separator);

}  // namespace Dom::CSS::detail
