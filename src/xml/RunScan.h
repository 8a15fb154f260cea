// SPDX-License-Identifier: MIT
#pragma once

// Scans over runs of characters, sixteen bytes at a time.
//
// All functions work on UTF-8 that is followed by kScanPadding zero bytes. A zero byte ends every
// run, so the loops need no test for the end: the caller compares the result with the end of its
// data. One mask answers three questions at once: is there a stop, a control character that XML
// does not allow, or a byte above ASCII? Bytes above ASCII are then checked to be valid UTF-8.

#include <bit>  // std::countr_zero
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

namespace Xml::detail {

/// The zero bytes that must follow scanned data: more than one step may read too far.
inline constexpr int kScanPadding = 32;

/// The lead byte's sequence length when [position, end) starts with a valid sequence above ASCII,
/// 0 when the data ends inside of it, -1 when the bytes are no character.
inline int SequenceLength(const unsigned char* position, const unsigned char* end) {
    const unsigned lead = position[0];
    const auto left = end - position;
    const auto continues = [position](int i) { return (position[i] & 0xC0) == 0x80; };
    if (lead < 0xC0) return -1;
    if (lead < 0xE0) {
        if (left < 2) return 0;
        return lead >= 0xC2 && continues(1) ? 2 : -1;
    }
    if (lead < 0xF0) {
        if (left < 3) return 0;
        if (!continues(1) || !continues(2)) return -1;
        if (lead == 0xE0 && position[1] < 0xA0) return -1;  // overlong
        if (lead == 0xED && position[1] > 0x9F) return -1;  // surrogates
        return 3;
    }
    if (lead < 0xF8) {
        if (left < 4) return 0;
        if (lead > 0xF4 || !continues(1) || !continues(2) || !continues(3)) return -1;
        if (lead == 0xF0 && position[1] < 0x90) return -1;  // overlong
        if (lead == 0xF4 && position[1] > 0x8F) return -1;  // above U+10FFFF
        return 4;
    }
    // The five- and six-byte forms of old: never valid, but first of all they may be cut.
    if (lead < 0xFE && left < (lead < 0xFC ? 5 : 6)) return 0;
    return -1;
}

/// Advances over valid sequences above ASCII (and ASCII between them that `isPlain` accepts) up to
/// a stop, an invalid or cut sequence, or eight bytes of pure ASCII.
template <typename IsPlain>
inline const unsigned char* SkipMixed(const unsigned char* p, const unsigned char* end,
                                      IsPlain isPlain) {
    for (;;) {
        while (*p >= 0x80) {
            // The common two- and three-byte forms first, without the edge cases of their range.
            if (p[0] >= 0xC2 && p[0] < 0xE0 && (p[1] & 0xC0) == 0x80) {
                p += 2;
                continue;
            }
            if (p[0] > 0xE0 && p[0] < 0xED && (p[1] & 0xC0) == 0x80 && (p[2] & 0xC0) == 0x80) {
                p += 3;
                continue;
            }
            const int length = SequenceLength(p, end);
            if (length <= 0) return p;
            p += length;
        }
        std::uint64_t next;
        std::memcpy(&next, p, sizeof next);
        if ((next & 0x8080808080808080u) == 0) return p;
        while (*p < 0x80) {
            if (!isPlain(*p)) return p;
            ++p;
        }
    }
}

/// Tells whether an ASCII byte is a control character that XML does not allow.
constexpr bool IsForbiddenControl(unsigned char byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

/// Returns the first position from `p` on that holds one of the stops `A`, `B`, `C`, a forbidden
/// control character (among them the zero at the end), or a sequence that is invalid or cut.
template <char A, char B = A, char C = A>
inline const unsigned char* FindStop(const unsigned char* p, const unsigned char* end) {
    const auto isPlain = [](unsigned char byte) {
        return byte != A && byte != B && byte != C && !IsForbiddenControl(byte);
    };
    for (;;) {
#if defined(__SSE2__)
        const auto is = [](__m128i bytes, char c) {
            return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c));
        };
        for (;; p += 16) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            __m128i stops = is(bytes, A);
            if (B != A) stops = _mm_or_si128(stops, is(bytes, B));
            if (C != A) stops = _mm_or_si128(stops, is(bytes, C));
            const __m128i blanks =
                _mm_or_si128(is(bytes, '\t'), _mm_or_si128(is(bytes, '\n'), is(bytes, '\r')));
            const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
            const __m128i all =
                _mm_or_si128(_mm_or_si128(stops, _mm_andnot_si128(blanks, low)), bytes);
            const auto mask = static_cast<unsigned>(_mm_movemask_epi8(all));
            if (mask != 0) {
                p += std::countr_zero(mask);
                break;
            }
        }
#else
        while (*p < 0x80 && isPlain(*p))
            ++p;
#endif
        if (*p < 0x80) return p;
        p = SkipMixed(p, end, isPlain);
        if (*p >= 0x80 || !isPlain(*p)) return p;
    }
}

constexpr bool IsBlank(unsigned char byte) {
    return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

/// Advances over spaces, tabs and line ends.
inline const unsigned char* SkipBlanks(const unsigned char* p) {
    if (!IsBlank(*p)) return p;
    ++p;
#if defined(__SSE2__)
    const auto is = [](__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    for (;; p += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i blanks = _mm_or_si128(_mm_or_si128(is(bytes, ' '), is(bytes, '\n')),
                                            _mm_or_si128(is(bytes, '\t'), is(bytes, '\r')));
        const auto mask = ~static_cast<unsigned>(_mm_movemask_epi8(blanks)) & 0xFFFFu;
        if (mask != 0) return p + std::countr_zero(mask);
    }
#else
    while (IsBlank(*p))
        ++p;
    return p;
#endif
}

/// A text that ends at "<" within its first 16 bytes.
struct ShortText {
    int length = -1;  ///< its bytes before "<"; -1 when it is no such text
    bool isWhitespace = false;
};

/// Looks at the text that starts at `p`: is it a short one without anything unusual?
inline ShortText ScanShortText(const unsigned char* p) {
#if defined(__SSE2__)
    const auto is = [](__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i breaks =
        _mm_or_si128(is(bytes, '\t'), _mm_or_si128(is(bytes, '\n'), is(bytes, '\r')));
    const __m128i low = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
    const __m128i unusual = _mm_or_si128(_mm_or_si128(_mm_andnot_si128(breaks, low), bytes),
                                         _mm_or_si128(is(bytes, '&'), is(bytes, ']')));
    const auto less = static_cast<unsigned>(_mm_movemask_epi8(is(bytes, '<')));
    const unsigned before = (less - 1) & ~less;  // the bits below the first "<"
    const auto stops = static_cast<unsigned>(_mm_movemask_epi8(unusual));
    if (less == 0 || (stops & before) != 0) return {};
    const auto blanks =
        static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(breaks, is(bytes, ' '))));
    return {std::countr_zero(less), (~blanks & before) == 0};
#else
    const unsigned char* const end = SkipBlanks(p);
    for (const unsigned char* at = end; at - p < 16; ++at) {
        if (*at == '<') return {static_cast<int>(at - p), at == end};
        if (*at >= 0x80 || *at == '&' || *at == ']' || IsForbiddenControl(*at)) break;
    }
    return {};
#endif
}

/// A name of up to 16 bytes as two words, padded with zeros.
struct PackedName {
    static constexpr int kMostBytes = 16;

    std::uint64_t low = 0;
    std::uint64_t high = 0;

    friend bool operator==(const PackedName&, const PackedName&) = default;
};

/// Packs the `length` bytes (up to 16) at `p`, behind which 16 bytes are readable.
inline PackedName PackName(const unsigned char* p, int length) {
    static constexpr unsigned char kMask[2 * PackedName::kMostBytes] = {
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const auto load = [](const unsigned char* bytes) {
        std::uint64_t word;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    };
    const unsigned char* const mask = kMask + PackedName::kMostBytes - length;
    return {load(p) & load(mask), load(p + 8) & load(mask + 8)};
}

/// Returns the number of bytes before the first one that ends a name in a tag (white space, "=",
/// "/" or ">"), or 0 when there is none among the first 16. The bytes may be no name at all.
inline int ShortNameLength(const unsigned char* p) {
#if defined(__SSE2__)
    const auto is = [](__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i blanks = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x20)), bytes);
    const __m128i ends = _mm_or_si128(_mm_or_si128(blanks, is(bytes, '=')),
                                      _mm_or_si128(is(bytes, '>'), is(bytes, '/')));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(ends));
    return mask == 0 ? 0 : std::countr_zero(mask);
#else
    for (int i = 0; i < PackedName::kMostBytes; ++i) {
        if (p[i] <= 0x20 || p[i] == '=' || p[i] == '/' || p[i] == '>') return i;
    }
    return 0;
#endif
}

}  // namespace Xml::detail
