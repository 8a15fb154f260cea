// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace Xml::detail {

/// As FoldedProduct(), by four products of 32 bits, for machines that have no larger ones.
constexpr std::uint64_t FoldedProductOfHalves(std::uint64_t a, std::uint64_t b) {
    constexpr std::uint64_t kLow = 0xFFFFFFFF;
    const std::uint64_t inner = (a >> 32) * (b & kLow) + ((a & kLow) * (b & kLow) >> 32);
    const std::uint64_t outer = (a & kLow) * (b >> 32) + (inner & kLow);
    const std::uint64_t high = (a >> 32) * (b >> 32) + (inner >> 32) + (outer >> 32);
    return a * b ^ high;
}

/// Multiplies into 128 bits and folds the halves together.
constexpr std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) {
#if defined(__SIZEOF_INT128__)
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
#else
    return FoldedProductOfHalves(a, b);
#endif
}

}  // namespace Xml::detail
