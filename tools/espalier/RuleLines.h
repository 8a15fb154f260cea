// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "RuleParts.h"

#include <cstddef>
#include <string_view>

namespace Tool {

/// Writes a text of CSS on one line: white space with a line break in it as one blank, a tab as
/// one, and other control characters up to U+009F as escapes of CSS (CSS 2.1 section 4.1.3), so
/// that no text can command the terminal.
void WriteCssLine(Output& out, std::string_view text);

/// Writes a rule: a line with its specificity and its selectors, then a line for each of its
/// declarations. A rule that begins with "@" has a "-" for the specificity. Rules that are in it
/// are not written. \param file the name of the sheet to begin with, or empty \param depth how many
/// rules the rule is in
void WriteRuleLines(Output& out, std::string_view file, const RuleParts& rule, std::size_t depth);

}  // namespace Tool
