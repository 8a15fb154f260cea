// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// How many bytes a value may have by its variables.
inline constexpr std::size_t kMostSubstituted = 65536;

/// Tells whether a value has a "var()" (CSS Custom Properties Level 1 section 3).
bool HasVariables(std::string_view value);

/// Returns the value of a custom property, computed: without variables. None when there is none.
using VariableLookup = std::function<std::optional<std::string_view>(std::string_view name)>;

/// Replaces each "var()" in a value by what it stands for, or by its fallback.
/// \return none when a variable has no value and no fallback, when "var()" is malformed, or when
///     the result would have more than `most` bytes
std::optional<astring> SubstituteVariables(std::string_view value, const VariableLookup& lookup,
                                           std::size_t most = kMostSubstituted);

}  // namespace Dom::CSS::detail
