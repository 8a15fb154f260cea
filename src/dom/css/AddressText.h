// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/TextCursor.h"

#include <optional>

namespace Dom::CSS::detail {

/// Reads an address as at-rules have it: a string, or "url(...)" in any case.
/// \param cursor has an end; stays when there is no address
std::optional<astring> ReadAddress(TextCursor& cursor);

}  // namespace Dom::CSS::detail
