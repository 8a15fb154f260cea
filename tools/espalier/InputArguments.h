// SPDX-License-Identifier: MIT
#pragma once

#include "InputOptions.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace CLI {
class App;
}

namespace Tool {

/// Adds the options that say how documents are read: --encoding, unless there is one already,
/// --max-bytes, --max-ratio.
/// \param options what they are written to when they are parsed; not owned
void AddInputOptions(CLI::App& app, InputOptions& options);

/// Adds the option --standard, which has documents judged by the standards.
/// \param options what it is written to when it is parsed; not owned
void AddStandardOption(CLI::App& app, InputOptions& options);

/// Returns a number of bytes, which may end in K, M or G; none when it is no such number or 0.
std::optional<std::int64_t> ParseByteCount(std::string_view text);

}  // namespace Tool
