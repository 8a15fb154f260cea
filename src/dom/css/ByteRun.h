// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/CharacterFlags.h"

#include <bit>  // std::countr_zero

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

/// \file
/// Finds where runs of bytes end, sixteen bytes at a time where the processor can: most runs are
/// shorter than that, so they end without a branch that is hard to foresee.

namespace Dom::CSS::detail {

#if defined(__SSE2__)

/// Sixteen bytes and the questions to them. Answers have all bits of a byte set, or none.
class SixteenBytes {
public:
    static constexpr int kSize = 16;

    explicit SixteenBytes(const char* bytes)
        : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))) {}

    __m128i Are(char byte) const { return _mm_cmpeq_epi8(bytes_, _mm_set1_epi8(byte)); }
    __m128i AreBetween(char first, char last) const { return Between(bytes_, first, last); }
    __m128i AreLetters() const {
        return Between(_mm_or_si128(bytes_, _mm_set1_epi8(0x20)), 'a', 'z');
    }
    /// Returns bytes of which the highest bit tells whether they are beyond ASCII.
    __m128i AreBeyondAscii() const { return bytes_; }

private:
    static __m128i Between(__m128i bytes, char first, char last) {
        const __m128i offsets = _mm_sub_epi8(bytes, _mm_set1_epi8(first));
        const __m128i most = _mm_set1_epi8(static_cast<char>(last - first));
        return _mm_cmpeq_epi8(_mm_min_epu8(offsets, most), offsets);
    }

    __m128i bytes_;
};

template <typename... Answers>
__m128i AnyOf(__m128i first, Answers... others) {
    if constexpr (sizeof...(others) == 0) {
        return first;
    } else {
        return _mm_or_si128(first, AnyOf(others...));
    }
}

#endif

/// \name Kinds of runs
/// Each tells bytes that are in the run by a flag, and for sixteen of them by the highest bits.
/// @{

/// What the name of a property goes on with in a sheet.
struct PlainNameRun {
    static constexpr unsigned kFlag = kPlainName;
#if defined(__SSE2__)
    static constexpr bool kIsInside = true;
    static __m128i Ask(const SixteenBytes& bytes) {
        return AnyOf(bytes.AreLetters(), bytes.AreBetween('0', '9'), bytes.Are('-'),
                     bytes.Are('_'));
    }
#endif
};

/// What a name goes on with.
struct NameRun {
    static constexpr unsigned kFlag = kName;
#if defined(__SSE2__)
    static constexpr bool kIsInside = true;
    static __m128i Ask(const SixteenBytes& bytes) {
        return AnyOf(PlainNameRun::Ask(bytes), bytes.AreBeyondAscii());
    }
#endif
};

/// What neither ends a value in a sheet nor has other such bytes in it.
struct PlainValueRun {
    static constexpr unsigned kFlag = kPlainValue;
#if defined(__SSE2__)
    static constexpr bool kIsInside = false;
    static __m128i Ask(const SixteenBytes& bytes) {
        return AnyOf(bytes.Are(';'), bytes.Are('}'), bytes.Are('/'), bytes.Are('"'),
                     bytes.Are('\''), bytes.Are('\0'));
    }
#endif
};

/// What does not end a value in a declaration.
struct ValueRun {
    static constexpr unsigned kFlag = kValue;
#if defined(__SSE2__)
    static constexpr bool kIsInside = false;
    static __m128i Ask(const SixteenBytes& bytes) { return AnyOf(bytes.Are(';'), bytes.Are('!')); }
#endif
};
/// @}

/// Returns the first place from `at` on, or the end, that is not in a run.
template <typename Run>
const char* BehindRun(const char* at, const char* end) {
#if defined(__SSE2__)
    constexpr unsigned kAll = 0xFFFF;
    for (; end - at >= SixteenBytes::kSize; at += SixteenBytes::kSize) {
        auto outside = static_cast<unsigned>(_mm_movemask_epi8(Run::Ask(SixteenBytes(at))));
        if constexpr (Run::kIsInside) outside ^= kAll;
        if (outside != 0) return at + std::countr_zero(outside);
    }
#endif
    while (at != end && Is(*at, Run::kFlag))
        ++at;
    return at;
}

}  // namespace Dom::CSS::detail
