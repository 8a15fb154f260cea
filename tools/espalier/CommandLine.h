// SPDX-License-Identifier: MIT
#pragma once

#include "Context.h"
#include "ExitCode.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Runs the program on its arguments, without the name of the program.
/// \throws BrokenPipe, OutputError
ExitCode RunCommandLine(const std::vector<std::string>& arguments, Context& context);

/// Returns the one of `words` that `word` was probably meant to be, or empty when none is near.
std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words);

}  // namespace Tool
