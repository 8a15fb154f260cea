// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace support {

/// Returns `text` in printable ASCII: `\n`, `\r`, `\t` and `\\` for those characters, `\u{E9}` for
/// other characters of valid UTF-8, `\xFF` for bytes that are none and for control codes.
std::string Escape(std::string_view text);

/// Undoes Escape(), and knows `\s` for a blank (at a line's end, where editors drop it).
/// \throws std::invalid_argument for any other escape
std::string Unescape(std::string_view text);

}  // namespace support
