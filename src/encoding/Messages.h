// SPDX-License-Identifier: MIT
#pragma once

// What the encodings say when they throw.

namespace Xml::detail::Message {

inline constexpr char kInvalidCharacterInSource[] =
    "Invalid argument: Invalid character in source string";

}  // namespace Xml::detail::Message
