// SPDX-License-Identifier: MIT
#include "CommandLine.h"

#include "Choice.h"
#include "InputArguments.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <numeric>
#include <optional>
#include <unistd.h>

namespace Tool {

namespace {

// The text around the list of verbs; together they fit a screen of 24 lines and 80 columns.
constexpr std::string_view kHelpStart =
    "espalier reads XML documents of any size, tells what is in them, formats them.\n"
    "\n"
    "Usage: espalier VERB [options] [FILE...]\n"
    "\n"
    "Verbs:\n";

constexpr std::string_view kHelpEnd =
    "\n"
    "FILE may be \"-\" for standard input, a gzip file, or ARCHIVE!MEMBER of a zip.\n"
    "Answers go to standard output, all else to standard error. All verbs also take\n"
    "--color auto|always|never, --progress auto|never; VERB --help tells the rest.\n"
    "\n"
    "Exit codes: 0 yes, 1 no, 2 usage, 3 not well-formed, 4 input/output, 5 limit\n"
    "\n"
    "Examples:\n"
    "  espalier check *.xml             is every document well-formed?\n"
    "  espalier format feed.xml         the same document, indented\n"
    "  espalier tree --counts big.xml   what is in it, and how often\n";

// Options that every verb has. The general help tells them.
struct CommonOptions {
    ColorChoice color = ColorChoice::Auto;
    bool progress = true;
};

std::string Help(const std::vector<std::unique_ptr<Verb>>& verbs) {
    std::string help(kHelpStart);
    for (const auto& verb : verbs) {
        fmt::format_to(std::back_inserter(help), "  {:<9} {}\n", verb->Name(), verb->Summary());
    }
    return help.append(kHelpEnd);
}

void AddCommonOptions(CLI::App& app, CommonOptions& options) {
    app.add_option("--color", options.color, "use colors: auto (default), always, never")
        ->option_text("WHEN")
        ->transform(OneOf<ColorChoice>({{"auto", ColorChoice::Auto},
                                        {"always", ColorChoice::Always},
                                        {"never", ColorChoice::Never}}));
    app.add_option("--progress", options.progress, "show progress on a terminal: auto, never")
        ->option_text("WHEN")
        ->transform(OneOf<bool>({{"auto", true}, {"never", false}}));
}

// Returns the messages of the parser in the manner of the program: one line, no full stop.
std::string Complaint(const Verb& verb, std::string_view message) {
    return fmt::format("{}: {}\nTry \"espalier {} --help\".", verb.Name(),
                       message.substr(0, message.find('\n')), verb.Name());
}

// Removes the first `part` from a text; nothing when there is none.
void Erase(std::string& text, std::string_view part) {
    const std::size_t position = text.find(part);
    if (position != std::string::npos) text.erase(position, part.size());
}

// Returns the help of a verb without what the parser puts between the lines.
std::string CompactHelp(const CLI::App& app) {
    std::string help = app.help();
    Erase(help, "Positionals:\n");
    Erase(help, "\nOptions:\n");
    const std::size_t gap = help.find("\n\n\n");  // where options are that are not shown
    if (gap != std::string::npos) help.erase(gap, 1);
    while (help.ends_with("\n\n"))
        help.pop_back();
    return help;
}

void Hide(CLI::App& app, std::initializer_list<const char*> options) {
    for (const char* const option : options)
        app.get_option(option)->group("");
}

// Returns the help of a verb, without the options that all have and the general help tells. What
// most verbs have is told in short where the help would not fit a screen, less a line for the
// prompt.
std::string VerbHelp(CLI::App& app) {
    constexpr std::ptrdiff_t kMostLines = 23;
    Hide(app, {"--help", "--color", "--progress"});
    std::string help = CompactHelp(app);
    if (std::count(help.begin(), help.end(), '\n') <= kMostLines) return help;
    Hide(app, {"--standard", "--encoding", "--max-bytes", "--max-ratio"});
    app.footer("--standard, --encoding, --max-bytes and --max-ratio are those of \"events\".\n" +
               app.get_footer());
    return CompactHelp(app);
}

ExitCode RunVerb(Verb& verb, std::vector<std::string> arguments, Context& context) {
    CLI::App app(verb.Summary(), fmt::format("espalier {}", verb.Name()));
    CommonOptions options;
    verb.AddOptions(app);
    if (verb.TakesStandard()) AddStandardOption(app, context.input);
    AddInputOptions(app, context.input);
    AddCommonOptions(app, options);
    app.footer(verb.Footer());
    app.get_formatter()->column_width(24);
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp&) {
        context.out.Write(VerbHelp(app));
        return ExitCode::Yes;
    } catch (const CLI::ParseError& error) {
        context.console.Complain(Complaint(verb, error.what()));
        return ExitCode::Usage;
    }
    context.console.SetColor(options.color);
    if (options.progress && ::isatty(STDERR_FILENO) != 0) context.progress.Enable();
    const ExitCode code = verb.Run(context);
    context.progress.Erase();
    return code;
}

ExitCode ComplainUnknown(const std::string& name, const std::vector<std::unique_ptr<Verb>>& verbs,
                         Context& context) {
    std::vector<std::string_view> words{"help", "--help", "--version"};
    for (const auto& verb : verbs)
        words.emplace_back(verb->Name());
    const std::string_view nearest = NearestWord(name, words);
    const std::string hint = nearest.empty() ? "" : fmt::format(" Did you mean \"{}\"?", nearest);
    context.console.Complain(
        fmt::format("there is no verb \"{}\".{}\nTry \"espalier --help\".", name, hint));
    return ExitCode::Usage;
}

// Returns the number of letters to insert, delete, replace or swap to get from one to the other.
std::size_t EditDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> beforeLast;
    std::vector<std::size_t> last(to.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        std::vector<std::size_t> row(to.size() + 1, i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            const bool swapped =
                i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1];
            if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        beforeLast = std::exchange(last, std::move(row));
    }
    return last.back();
}

}  // namespace

std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words) {
    std::string_view nearest;
    std::size_t least = (word.size() + 1) / 2 + 1;
    for (const std::string_view candidate : words) {
        const std::size_t distance = EditDistance(word, candidate);
        if (distance >= least) continue;
        nearest = candidate;
        least = distance;
    }
    return nearest;
}

ExitCode RunCommandLine(const std::vector<std::string>& arguments, Context& context) {
    const std::vector<std::unique_ptr<Verb>> verbs = AllVerbs();
    if (arguments.empty()) {
        context.console.Write(Help(verbs));
        return ExitCode::Usage;
    }
    std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    std::string name = arguments.front();
    if (name == "--version" || name == "-V") {
        context.out.Write("espalier " ESPALIER_VERSION "\n");
        return ExitCode::Yes;
    }
    if (name == "help" && !rest.empty()) {
        name = rest.front();
        rest = {"--help"};
    }
    if (name == "--help" || name == "-h" || name == "help") {
        context.out.Write(Help(verbs));
        return ExitCode::Yes;
    }
    for (const auto& verb : verbs) {
        if (name == verb->Name()) return RunVerb(*verb, std::move(rest), context);
    }
    return ComplainUnknown(name, verbs, context);
}

}  // namespace Tool
