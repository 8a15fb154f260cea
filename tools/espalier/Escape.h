// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"

#include <string_view>

namespace Tool {

/// Writes `text` between double quotation marks, as a string of C: \\n \\r \\t \\" \\\\; every
/// other control character below U+0080 as \\xNN and up to U+009F as \\u00NN, so that no text can
/// command the terminal; bytes that are no UTF-8 as \\xNN. The numbers have two or four digits,
/// always.
void WriteQuoted(Output& out, std::string_view text);

/// Writes `text` like WriteQuoted(), without the quotation marks, and also escapes blanks as
/// \\x20 and braces as \\x7B and \\x7D, so that it is one word between braces.
void WriteWord(Output& out, std::string_view text);

/// Writes `text` as a string of JSON (RFC 8259). Bytes that are no UTF-8 become U+FFFD.
void WriteJsonString(Output& out, std::string_view text);

}  // namespace Tool
