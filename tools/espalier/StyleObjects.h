// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "SheetNames.h"
#include "StyleRow.h"

namespace Tool {

/// Writes the properties of an element as JSON objects, one a line, with the members that apply of
/// path, property, value, kind, from, declarations; and those of source, property, value,
/// important, sheet, line, column, selector, specificity, origin in each declaration. \param
/// hasLosers false: of the declarations the first one only
void WriteStyleObjects(Output& out, const StyledElement& styled, const SheetNames& names,
                       bool hasLosers);

}  // namespace Tool
