// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "encoding/Utf8.h"

namespace Xml::detail {

/// Appends the character `code` (1 to 0x10FFFF) to `text` in UTF-8.
inline void AppendUtf8(astring& text, int code) {
    unsigned char bytes[4];
    const unsigned char* const end = utf8::Write(code, bytes);
    text.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(end - bytes));
}

}  // namespace Xml::detail
