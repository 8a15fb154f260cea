// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "RuleParts.h"
#include "Sheet.h"

#include <span>
#include <string>
#include <string_view>

namespace Tool {

/// Writes a rule of a sheet as a JSON object on one line, with the members that apply of file,
/// line, column, in, selector, specificity, text, declarations. \param file the name of the sheet
/// to say in it, or empty \param outer the heads of the rules that it is in, the outer one first
void WriteRuleObject(Output& out, std::string_view file, Dom::CSS::SourcePlace place,
                     std::span<const std::string> outer, const RuleParts& rule);

/// Writes a remark about a sheet, likewise, with file, line, column, error, and dropped or
/// property.
void WriteRemarkObject(Output& out, std::string_view file, const SheetRemark& remark);

}  // namespace Tool
