// SPDX-License-Identifier: MIT
#pragma once

namespace Dom::CSS::detail {

/// Moves behind a string in quotes. Returns false, with `text` at its NUL, when it does not end.
bool SkipString(const char*& text);

/// Moves behind the parenthesis that closes the one at `text`; those in strings and escaped ones do
/// not count, those in other brackets do. Returns false, and leaves `text`, when there is none.
bool SkipParentheses(const char*& text);

/// Returns the first "{" that is not in a string, in brackets or escaped, or the NUL. What is not
/// closed goes on to the end.
const char* FindBlock(const char* text);

}  // namespace Dom::CSS::detail
