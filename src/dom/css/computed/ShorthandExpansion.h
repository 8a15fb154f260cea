// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <span>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// One of the properties that a shorthand stands for.
struct Longhand {
    std::string_view name;  ///< lasts as long as the program
    astring value;
};

/// Returns the names of the properties that a shorthand stands for; none when it is no shorthand.
/// \param name in small letters
std::span<const std::string_view> LonghandsOf(std::string_view name);

/// Takes the value of a shorthand apart. All properties that it stands for get a value: those that
/// are not mentioned their initial one.
/// \param name in small letters
/// \param value without comments and "!important"
/// \param result gets the properties, behind what is in it; unchanged when the value is not valid
/// \return false when the value is not valid, or depends on variables
bool ExpandShorthand(std::string_view name, std::string_view value, std::vector<Longhand>& result);

}  // namespace Dom::CSS::detail
