// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>

#include "Console.h"
#include "Context.h"
#include "Excerpt.h"
#include "ExitCode.h"

#include <string>
#include <string_view>

namespace Tool {

/// How bad it is what a message tells.
enum class Severity { Error, Warning, Note };

/// Returns a message in the form of compilers, coloured as the console wants it:
/// "FILE:LINE:COLUMN: error: TEXT" and a line feed.
/// \param where what stands before "error:"
std::string Headline(const Console& console, std::string_view where, Severity severity,
                     std::string_view text);

/// Returns what ShowExcerpt() returns, coloured as the console wants it.
std::string Picture(const Console& console, const Excerpt& excerpt);

/// Writes that the document `name` could not be opened.
ExitCode ExplainOpening(const std::string& name, const Xml::Exception& error, Context& context);

}  // namespace Tool
