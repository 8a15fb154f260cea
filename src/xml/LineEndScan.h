// SPDX-License-Identifier: MIT
#pragma once

// Scans over the values of nodes for what normalization changes.

#include <espalier/base/astring.h>

#include "xml/RunScan.h"

#include <algorithm>  // std::min
#include <bit>        // std::countr_zero
#include <cstddef>

namespace Xml::detail {

#if defined(ESPALIER_BLOCK_SCAN)

/// Returns where the first byte is that a test of blocks finds, or the length. The buffer of a
/// string is a whole number of blocks, so the last block is there in full.
template <typename Test>
std::size_t FindInBlocks(const astring& text, const Test& test) {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t at = 0; at < text.length(); at += ByteBlock::kSize) {
        const unsigned found = ByteBlock::Mask(test(ByteBlock(bytes + at)));
        if (found == 0) continue;
        return std::min(at + static_cast<std::size_t>(std::countr_zero(found)), text.length());
    }
    return text.length();
}

/// Returns where the first tab or line break is, or the length.
inline std::size_t FindLineBlank(const astring& text) {
    return FindInBlocks(text, [](const ByteBlock& block) { return block.IsLineBlank(); });
}

/// Returns where the first carriage return is, or the length.
inline std::size_t FindCarriageReturn(const astring& text) {
    constexpr std::size_t kShort = 64;  // longer texts are worth the call of a wider scan
    if (text.length() > kShort) return std::min(text.find('\r'), text.length());
    return FindInBlocks(text, [](const ByteBlock& block) { return block.Is('\r'); });
}

#else

inline std::size_t FindLineBlank(const astring& text) {
    return std::min(text.view().find_first_of("\t\n\r"), text.length());
}

inline std::size_t FindCarriageReturn(const astring& text) {
    return std::min(text.find('\r'), text.length());
}

#endif

}  // namespace Xml::detail
