// SPDX-License-Identifier: MIT
#pragma once

namespace Dom::CSS::detail {

/// Reads "odd", "even", a number, or "an+b" (Selectors Level 3, section 6.6.5.2), and moves behind
/// it. Returns false when there is none.
bool ParseNth(const char*& text, int& step, int& offset);

/// Tells whether a position, counted from 1, is step * n + offset for an n that is not negative.
bool IsNth(long position, int step, int offset);

}  // namespace Dom::CSS::detail
