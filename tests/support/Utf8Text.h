// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace support {

/// Appends the UTF-8 form of `code` (0 to 0x10FFFF, surrogates included) to `out`.
void AppendUtf8(std::string& out, char32_t code);

/// Decodes the character at `position` and moves past it. Follows RFC 3629: no overlong forms, no
/// surrogates, nothing above U+10FFFF.
/// \return nothing, with the position unchanged, when the bytes are not valid UTF-8
std::optional<char32_t> DecodeUtf8(std::string_view text, std::size_t& position);

/// Decodes a whole text.
/// \return nothing when it is not valid UTF-8
std::optional<std::u32string> DecodeUtf8(std::string_view text);

}  // namespace support
