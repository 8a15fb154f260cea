// SPDX-License-Identifier: MIT
#include "Diagnostic.h"

#include <fmt/format.h>

namespace Tool {

std::string Headline(const Console& console, std::string_view where, Severity severity,
                     std::string_view text) {
    const bool isError = severity == Severity::Error;
    if (!console.ColorsErrors()) {
        return fmt::format("{}: {} {}\n", where, isError ? "error:" : "note:", text);
    }
    return fmt::format("\x1B[1m{}: {}\x1B[0m {}\n", where,
                       isError ? "\x1B[31merror:" : "\x1B[36mnote:", text);
}

std::string Picture(const Console& console, const Excerpt& excerpt) {
    if (!console.ColorsErrors()) return ShowExcerpt(excerpt);
    return ShowExcerpt(excerpt, "\x1B[1;32m", "\x1B[0m");
}

ExitCode ExplainOpening(const std::string& name, const Xml::Exception& error, Context& context) {
    context.console.Write(
        Headline(context.console, name == "-" ? "<stdin>" : name, Severity::Error, error.What()));
    return ExitCode::InputOutput;
}

}  // namespace Tool
