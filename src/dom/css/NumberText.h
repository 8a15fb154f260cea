// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Appends a number as printf("%g") prints it in the locale "C": six digits, without zeros at the
/// end of a fraction.
void AppendNumber(astring& text, float number);

/// Takes the number off the begin of a text: `-`, digits with or without a point, an exponent.
/// Returns null, and leaves the text, when there is none, or it is too great or too small for a
/// double.
std::optional<double> TakeDecimal(std::string_view& text);

}  // namespace Dom::CSS::detail
