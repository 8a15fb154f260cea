// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

namespace Dom::CSS::detail {

/// Appends a number as printf("%g") prints it in the locale "C": six digits, without zeros at the
/// end of a fraction.
void AppendNumber(astring& text, float number);

}  // namespace Dom::CSS::detail
