// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace sax::detail {

/// Returns a view of a text; a null pointer is an empty one.
inline std::string_view ViewOf(const char* text) { return text == nullptr ? "" : text; }

}  // namespace sax::detail
