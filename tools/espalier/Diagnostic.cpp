// SPDX-License-Identifier: MIT
#include "Diagnostic.h"

#include <fmt/format.h>

namespace Tool {

namespace {

// What a severity is called, and the color of that.
struct Word {
    std::string_view text;
    std::string_view color;
};

Word WordFor(Severity severity) {
    switch (severity) {
    case Severity::Error: return {"error:", "\x1B[31m"};
    case Severity::Warning: return {"warning:", "\x1B[35m"};
    case Severity::Note: return {"note:", "\x1B[36m"};
    }
    return {};
}

}  // namespace

std::string Headline(const Console& console, std::string_view where, Severity severity,
                     std::string_view text) {
    const Word word = WordFor(severity);
    if (!console.ColorsErrors()) return fmt::format("{}: {} {}\n", where, word.text, text);
    return fmt::format("\x1B[1m{}: {}{}\x1B[0m {}\n", where, word.color, word.text, text);
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
