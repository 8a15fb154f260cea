// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Dom::CSS::detail {

/// A place in a text: line and column from 1, columns in characters. Lines end as CSS Syntax Level
/// 3 section 3.3 says.
struct TextPlace {
    int line = 1;
    int column = 1;
    bool isBehindReturn = false;  // a line feed belongs to it

    /// Returns the place behind a text that begins here.
    TextPlace Behind(std::string_view text) const;
};

}  // namespace Dom::CSS::detail
