// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "Sheet.h"

#include <string_view>

namespace Tool {

/// Writes a rule of a sheet, or what was refused, as a JSON object on one line, with the members
/// that apply of file, line, column, selector, specificity, declarations, text, error.
/// \param file the name of the sheet to say in it, or empty
void WriteRuleObject(Output& out, std::string_view file, const SheetItem& item);

}  // namespace Tool
