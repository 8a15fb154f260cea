// SPDX-License-Identifier: MIT
#include "common/RunOptions.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

namespace bench {

void ParseRunOptions(std::span<char*> arguments, RunOptions& options) {
    std::vector<const CorpusEntry*> named;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string option = arguments[i];
        const auto value = [&]() -> std::string {
            if (++i == arguments.size()) throw std::invalid_argument(option + " wants a value");
            return arguments[i];
        };
        if (option == "--rounds") {
            options.measure.rounds = std::stoi(value());
        } else if (option == "--min-time") {
            options.measure.minSeconds = std::stod(value());
        } else if (option == "--file") {
            named.push_back(&FindCorpusEntry(value()));
        } else if (option == "--figures") {
            options.figures = value();
        } else if (option == "--markdown") {
            options.format = TableFormat::Markdown;
        } else if (option == "--check" && options.offersCheck) {
            options.checkOnly = true;
        } else if (option == "--enforce") {
            options.enforce = true;
        } else if (option == "--help") {
            options.help = true;
        } else {
            throw std::invalid_argument("unknown option " + option);
        }
    }
    if (!named.empty()) options.entries = std::move(named);
    if (options.entries.empty()) options.entries = PresentCorpusEntries();
    if (options.measure.rounds < 1) throw std::invalid_argument("--rounds wants at least 1");
}

int RunProgram(const Program& program, int argc, char** argv, RunOptions options) {
    try {
        ParseRunOptions(std::span(argv, static_cast<std::size_t>(argc)).subspan(1), options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n\n%s", program.name, error.what(), program.help);
        return kUsage;
    }
    if (options.help) {
        std::fputs(program.help, stdout);
        return EXIT_SUCCESS;
    }
    try {
        return program.run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", program.name, error.what());
        return kFailure;
    }
}

}  // namespace bench
