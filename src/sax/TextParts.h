// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>  // std::min
#include <cstddef>
#include <string_view>

namespace sax::detail {

/// Returns how long the part of a UTF-8 text is that starts at `start`, when parts have at most
/// `most` bytes, which are 4 and more: all that is left, or whole characters.
inline std::size_t PartLength(std::string_view text, std::size_t start, std::size_t most) {
    constexpr std::size_t kMostContinuations = 3;  // of one character
    const std::size_t length = std::min(text.size() - start, most);
    if (start + length == text.size()) return length;
    for (std::size_t back = 0; back <= kMostContinuations; ++back) {
        const auto next = static_cast<unsigned char>(text[start + length - back]);
        if ((next & 0xC0U) != 0x80U) return length - back;
    }
    return length;
}

}  // namespace sax::detail
