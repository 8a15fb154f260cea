// SPDX-License-Identifier: MIT
#pragma once

#include "common/Figures.h"
#include "common/RunOptions.h"

#include <string>

namespace bench {

/// Ends a program that measures: prints the tables and writes the figures where `options` say so.
/// As plain text the libraries stand before the tables and the bars behind them; in Markdown, which
/// is a part of a page that tells both for all programs, they do not.
/// \return the exit status
/// \throws std::runtime_error when the figures cannot be written
int Publish(const std::string& tables, const Figures& figures, const RunOptions& options);

}  // namespace bench
