// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

namespace Tool {

/// Returns what turns the words that an option takes into what they mean, and names them all when
/// it is given another.
template <typename Value>
CLI::Validator OneOf(std::vector<std::pair<std::string, Value>> choices) {
    const auto transform = [choices = std::move(choices)](std::string& word) -> std::string {
        std::string words;
        for (const auto& [name, value] : choices) {
            if (word == name) {
                word = std::to_string(static_cast<int>(value));
                return {};
            }
            words.append(words.empty() ? "" : ", ").append(name);
        }
        return fmt::format("\"{}\" is none of {}", word, words);
    };
    return {transform, "", "OneOf"};
}

}  // namespace Tool
