// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::detail {

/// Tells whether somebody asks QueryInterface() for the interface `own`.
inline bool IsInterface(const char* name, std::string_view own) {
    return name != nullptr && name == own;
}

}  // namespace Dom::detail
