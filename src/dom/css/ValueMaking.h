// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/DOMList.h>
#include <espalier/dom/css/CSSValue.h>

#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// Makes the value of a property from its text: the value "inherit"; a CSSValueList, when the text
/// has a comma or white space outside of quotes and parentheses; a CSSPrimitiveValue. When those
/// would lose a part of the text, a value that keeps it as it stands.
/// \param text without white space around it
std::shared_ptr<CSSValue> MakeValue(std::string_view text);

/// Adds a CSSPrimitiveValue to a list for each piece of a text.
/// \param text without white space around it
/// \return whether all of the text is in the values
bool AddPieces(DOMList<CSSValue*>& list, std::string_view text, char separator);

}  // namespace Dom::CSS::detail
