// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Returns a text so many times, without anything between.
inline std::string Repeated(std::string_view text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}
