// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include <gtest/gtest.h>

#include <ostream>

/// Shows a string as a string where a test fails; GoogleTest would show a list of characters.
inline void PrintTo(const astring& text, std::ostream* out) {
    *out << testing::PrintToString(text.str());
}
