// SPDX-License-Identifier: MIT
#pragma once

#include "SourceText.h"

#include <span>
#include <string_view>

namespace Tool {

/// An encoding that a style sheet can be said to be in, by a name that Dom::CSS::CssReader knows.
struct SheetEncoding {
    const char* name;
    SourceForm form;  ///< unless a byte-order mark says otherwise
};

/// Returns all of them, UTF-8 first.
std::span<const SheetEncoding> SheetEncodings();

/// Returns the one of that name, in letters of any case; null when there is none.
const SheetEncoding* FindSheetEncoding(std::string_view name);

}  // namespace Tool
