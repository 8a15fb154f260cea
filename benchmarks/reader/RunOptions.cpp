// SPDX-License-Identifier: MIT
#include "reader/RunOptions.h"

#include <stdexcept>
#include <string>

namespace bench {

void ParseRunOptions(std::span<char*> arguments, RunOptions& options) {
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
            options.entries.push_back(&FindCorpusEntry(value()));
        } else if (option == "--markdown") {
            options.format = TableFormat::Markdown;
        } else if (option == "--check") {
            options.checkOnly = true;
        } else if (option == "--enforce") {
            options.enforce = true;
        } else if (option == "--help") {
            options.help = true;
        } else {
            throw std::invalid_argument("unknown option " + option);
        }
    }
    if (options.entries.empty()) options.entries = PresentCorpusEntries();
    if (options.measure.rounds < 1) throw std::invalid_argument("--rounds wants at least 1");
}

}  // namespace bench
