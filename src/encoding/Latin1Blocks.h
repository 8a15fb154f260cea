// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/AsciiRun.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#    include <tmmintrin.h>
#endif

// Converts bytes that are the characters U+0000 to U+00FF to UTF-8, block by block. Both ways stop
// when less than a few blocks are left or there may be no room; a plain loop does the rest.
//
// In mixed text nothing predicts which bytes take one and which take two, so the fast way has no
// branch on that: it writes both bytes of eight characters and then closes the gaps that the
// shorter ones leave, with one shuffle from a table.

namespace Xml::detail {

/// What the functions below need: blocks in the source, and room for what becomes of them.
inline constexpr std::ptrdiff_t kWidenSource = 64;
inline constexpr std::ptrdiff_t kWidenRoom = 3 * kWidenSource;

/// Converts up to the first character above ASCII and that one, again and again.
inline void WidenLatin1Simply(const unsigned char*& source, const unsigned char* end,
                              unsigned char*& target, const unsigned char* targetEnd) {
    // Copies: the bytes written might be those of the arguments, for all that the compiler knows.
    const unsigned char* position = source;
    unsigned char* destination = target;
    while (end - position >= kWidenSource && targetEnd - destination >= kWidenRoom) {
        const std::size_t ascii = CopyAscii(position, destination, kWidenSource);
        position += ascii;
        destination += ascii;
        if (ascii < kWidenSource) {
            const unsigned code = *position++;
            *destination++ = static_cast<unsigned char>(0xC0 | code >> 6);
            *destination++ = static_cast<unsigned char>(0x80 | (code & 0x3F));
        }
    }
    source = position;
    target = destination;
}

#if defined(__SSE2__)

/// For each set of characters among eight that take two bytes: which of the 16 bytes to take.
inline constexpr auto kGapShuffles = [] {
    std::array<std::array<unsigned char, 16>, 256> table{};
    for (unsigned isLong = 0; isLong < 256; ++isLong) {
        std::size_t next = 0;
        for (unsigned i = 0; i < 8; ++i) {
            table[isLong][next++] = static_cast<unsigned char>(2 * i);
            if ((isLong >> i & 1) != 0)
                table[isLong][next++] = static_cast<unsigned char>(2 * i + 1);
        }
    }
    return table;
}();

/// Converts eight characters at `position` and returns behind what it wrote at `destination`, where
/// there is room for 16 bytes.
[[gnu::target("ssse3")]] inline unsigned char* WidenEight(const unsigned char* position,
                                                          unsigned char* destination) {
    const auto every = [](int unit) { return _mm_set1_epi16(static_cast<short>(unit)); };
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(position));
    const auto isLong = static_cast<unsigned>(_mm_movemask_epi8(bytes)) & 0xFFu;
    const __m128i units = _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
    const __m128i leads = _mm_or_si128(_mm_srli_epi16(units, 6), every(0xC0));
    const __m128i trails = _mm_or_si128(_mm_and_si128(units, every(0x3F)), every(0x80));
    const __m128i pairs = _mm_or_si128(leads, _mm_slli_epi16(trails, 8));
    const __m128i isAscii = _mm_cmpgt_epi16(every(0x80), units);
    const __m128i both =
        _mm_or_si128(_mm_and_si128(isAscii, units), _mm_andnot_si128(isAscii, pairs));
    const __m128i shuffle =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(kGapShuffles[isLong].data()));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(destination), _mm_shuffle_epi8(both, shuffle));
    // Counting bits without an instruction for it: pairs, fours, all eight.
    const unsigned twos = isLong - (isLong >> 1 & 0x55);
    const unsigned fours = (twos & 0x33) + (twos >> 2 & 0x33);
    return destination + 8 + ((fours + (fours >> 4)) & 0x0F);
}

/// Converts runs of ASCII as they are and stretches of mixed text by shuffles.
[[gnu::target("ssse3")]] inline void WidenLatin1ByShuffles(const unsigned char*& source,
                                                           const unsigned char* end,
                                                           unsigned char*& target,
                                                           const unsigned char* targetEnd) {
    const unsigned char* position = source;
    unsigned char* destination = target;
    while (end - position >= kWidenSource && targetEnd - destination >= kWidenRoom) {
        const std::size_t ascii = CopyAscii(position, destination, kWidenSource);
        position += ascii;
        destination += ascii;
        if (ascii == kWidenSource || end - position < kWidenSource) continue;
        for (std::ptrdiff_t i = 0; i < kWidenSource; i += 8)
            destination = WidenEight(position + i, destination);
        position += kWidenSource;
    }
    source = position;
    target = destination;
}

#endif

/// Converts what the blocks at the position hold, and advances both positions.
inline void WidenLatin1(const unsigned char*& position, const unsigned char* end,
                        unsigned char*& destination, const unsigned char* destinationEnd) {
#if defined(__SSE2__)
    static const bool canShuffle = __builtin_cpu_supports("ssse3") != 0;
    if (canShuffle) {
        WidenLatin1ByShuffles(position, end, destination, destinationEnd);
        return;
    }
#endif
    WidenLatin1Simply(position, end, destination, destinationEnd);
}

}  // namespace Xml::detail
