// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace Dom::CSS::detail {

/// Returns the text of a style sheet in UTF-8 as SheetParser reads it: U+0000 is U+FFFD (CSS Syntax
/// Level 3 section 3.3), and a byte order mark at the begin is left out.
std::unique_ptr<const std::string> TextOf(std::string_view text);

/// Decodes a style sheet (CSS Syntax Level 3 section 3.2).
/// \param protocol,environment names of encodings; may be empty
std::unique_ptr<const std::string> Decode(std::span<const unsigned char> bytes,
                                          std::string_view protocol, std::string_view environment);

/// Tells whether a name is one that Decode() knows.
bool IsEncodingName(std::string_view name);

/// Returns the name of the encoding that Decode() decodes, for sheets that are imported.
std::string_view EncodingName(std::span<const unsigned char> bytes, std::string_view protocol,
                              std::string_view environment);

}  // namespace Dom::CSS::detail
