// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/ValueComputing.h"

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// Returns a value with one blank between its components, and one behind commas and around "/".
/// Strings are in double quotes, names of functions in small letters; all else is as it was.
/// \return none when brackets do not match or a string has no end
std::optional<astring> PlainComponents(std::string_view text);

/// Returns the same, with lengths, angles, times, colours and addresses computed, and keywords in
/// small letters.
/// \return none, too, when there is something that no value has, such as "=", or a name that
///     another browser's prefix begins
std::optional<astring> ComputedComponents(std::string_view text, const ComputingContext& context);

/// Returns an address as 'url("...")', made absolute.
astring ComputedAddress(std::string_view address, const ComputingContext& context);

}  // namespace Dom::CSS::detail
