// SPDX-License-Identifier: MIT
#pragma once

#include "Console.h"
#include "Excerpt.h"

#include <string>
#include <string_view>

namespace Tool {

/// How bad it is what a message tells.
enum class Severity { Error, Note };

/// Returns a message in the form of compilers, coloured as the console wants it:
/// "FILE:LINE:COLUMN: error: TEXT" and a line feed.
/// \param where what stands before "error:"
std::string Headline(const Console& console, std::string_view where, Severity severity,
                     std::string_view text);

/// Returns what ShowExcerpt() returns, coloured as the console wants it.
std::string Picture(const Console& console, const Excerpt& excerpt);

}  // namespace Tool
