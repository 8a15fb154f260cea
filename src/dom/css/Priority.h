// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/AsciiCase.h"

#include <string_view>

namespace Dom::CSS::detail {

inline constexpr char kImportant[] = "important";

/// Tells whether a priority, what stands behind "!", makes a property important. Others are
/// accepted and mean nothing.
inline bool IsImportant(std::string_view priority) {
    return EqualIgnoringCase(priority, kImportant);
}

}  // namespace Dom::CSS::detail
