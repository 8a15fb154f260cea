// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/ShorthandExpansion.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace support {

/// What stands for a value that is refused.
inline constexpr char kInvalid[] = "invalid";

/// Returns the values in the order of LonghandsOf(), with " | " between them.
inline std::string Values(const std::string& name, const std::string& value) {
    std::vector<Dom::CSS::detail::Longhand> result;
    if (!Dom::CSS::detail::ExpandShorthand(name, value, result)) {
        EXPECT_TRUE(result.empty()) << name << ": " << value;
        return kInvalid;
    }
    const auto names = Dom::CSS::detail::LonghandsOf(name);
    std::string text;
    EXPECT_EQ(result.size(), names.size()) << name;
    for (std::size_t i = 0; i < result.size(); ++i) {
        EXPECT_EQ(result[i].name, names[i]);
        if (i > 0) text += " | ";
        text += result[i].value.str();
    }
    return text;
}

/// Returns the value of one property.
inline std::string ValueOf(const std::string& property, const std::string& name,
                           const std::string& value) {
    std::vector<Dom::CSS::detail::Longhand> result;
    if (!Dom::CSS::detail::ExpandShorthand(name, value, result)) return kInvalid;
    for (const Dom::CSS::detail::Longhand& longhand : result) {
        if (longhand.name == property) return longhand.value.str();
    }
    return "none of them";
}

/// A value, and what Values() returns for it.
struct ValueCase {
    const char* value;
    const char* expected;
};

inline void ExpectValues(const char* name, const std::vector<ValueCase>& cases) {
    for (const ValueCase& c : cases)
        EXPECT_EQ(Values(name, c.value), c.expected) << name << ": " << c.value;
}

inline void ExpectInvalid(const char* name, const std::vector<const char*>& values) {
    for (const char* const value : values)
        EXPECT_EQ(Values(name, value), kInvalid) << name << ": " << value;
}

}  // namespace support
