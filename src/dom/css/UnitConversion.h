// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSPrimitiveValue.h>

namespace Dom::CSS::detail {

/// Returns what turns a number in the unit `from` into one in the unit `to`, which is CSS_CM or
/// greater; 0 when nothing does.
float ConversionFactor(CSSPrimitiveValue::UnitTypes from, CSSPrimitiveValue::UnitTypes to);

}  // namespace Dom::CSS::detail
