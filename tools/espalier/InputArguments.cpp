// SPDX-License-Identifier: MIT
#include "InputArguments.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <limits>
#include <string>

namespace Tool {

namespace {

constexpr char kEncodingOption[] = "--encoding";

// Returns the number at the start of `text`, which loses it; none when there is none above 0.
std::optional<std::int64_t> TakeNumber(std::string_view& text) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number < 1) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

void SetEncoding(const std::string& name, InputOptions& options) {
    options.encoding = FindInputEncoding(name);
    if (options.encoding != nullptr) return;
    std::string names;
    for (const InputEncoding& encoding : InputEncodings())
        names.append(names.empty() ? "" : ", ").append(encoding.name);
    throw CLI::ValidationError(kEncodingOption, fmt::format("\"{}\" is none of {}", name, names));
}

void SetMostBytes(const std::string& text, InputOptions& options) {
    options.limits.bytes = ParseByteCount(text);
    if (options.limits.bytes) return;
    throw CLI::ValidationError(
        "--max-bytes", fmt::format("\"{}\" is no number of bytes such as 500, 64K, 10M, 2G", text));
}

void SetRatio(const std::string& text, InputOptions& options) {
    std::string_view rest = text;
    const std::optional<std::int64_t> ratio = TakeNumber(rest);
    if (!ratio || !rest.empty()) {
        throw CLI::ValidationError("--max-ratio",
                                   fmt::format("\"{}\" is no number from 1 on", text));
    }
    options.limits.ratio = *ratio;
}

}  // namespace

std::optional<std::int64_t> ParseByteCount(std::string_view text) {
    const std::optional<std::int64_t> number = TakeNumber(text);
    if (!number || text.size() > 1) return std::nullopt;
    std::int64_t unit = 1;
    if (!text.empty()) {
        constexpr std::string_view kUnits = "kmg";
        const char letter =
            text.front() >= 'a' ? text.front() : static_cast<char>(text.front() + 32);
        const std::size_t power = kUnits.find(letter);
        if (power == std::string_view::npos) return std::nullopt;
        unit = std::int64_t{1} << (10 * (power + 1));
    }
    if (*number > std::numeric_limits<std::int64_t>::max() / unit) return std::nullopt;
    return *number * unit;
}

void AddStandardOption(CLI::App& app, InputOptions& options) {
    app.add_flag_callback(
        "--standard", [&options] { options.conformance = Xml::XmlConformance::Standard; },
        "judge by XML 1.0 and its namespaces to the letter");
}

void AddInputOptions(CLI::App& app, InputOptions& options) {
    if (app.get_option_no_throw(kEncodingOption) == nullptr) {
        app.add_option_function<std::string>(
               kEncodingOption, [&options](const std::string& name) { SetEncoding(name, options); },
               "read as this encoding, whatever the document says")
            ->option_text("NAME");
    }
    app.add_option_function<std::string>(
           "--max-bytes", [&options](const std::string& text) { SetMostBytes(text, options); },
           "stop behind N bytes (NK, NM, NG), uncompressed")
        ->option_text("N");
    app.add_option_function<std::string>(
           "--max-ratio", [&options](const std::string& text) { SetRatio(text, options); },
           "stop at N times the compressed size (default 200)")
        ->option_text("N");
}

}  // namespace Tool
