// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

namespace CssHelpers {

/// Reads the next name of a list of media.
///
/// A name is what stands between two commas, without white space around it; commas in parentheses
/// separate nothing, so a media query is one name. Where there is nothing between two commas, there
/// is no name.
///
/// \param text ends with a NUL; moved behind the last character of the name
/// \param medium gets the name
/// \return false, with both left as they are, when there is no name any more
bool ParseMedium(const char*& text, astring& medium);

}  // namespace CssHelpers
