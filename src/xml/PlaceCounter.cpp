// SPDX-License-Identifier: MIT
#include "xml/PlaceCounter.h"

#include <bit>  // std::popcount
#include <cstdint>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

namespace Xml::detail {

namespace {

// The line breaks in a run of bytes.
struct Breaks {
    int count = 0;
    const unsigned char* afterLast = nullptr;  // the start of the last line, null without a break
};

void CountBreak(Breaks& breaks, const unsigned char* p, bool afterCr) {
    breaks.afterLast = p + 1;
    if (*p == '\r' || !afterCr) ++breaks.count;  // the LF of a CR LF ends no line of its own
}

Breaks FindBreaks(const unsigned char* p, const unsigned char* end, bool afterCr) {
    Breaks breaks;
    const unsigned char* const begin = p;
    const auto cameCr = [begin, afterCr](const unsigned char* at) {
        return at == begin ? afterCr : at[-1] == '\r';
    };
#if defined(__SSE2__)
    for (; end - p >= 16; p += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i isBreak = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')),
                                             _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
        for (auto mask = static_cast<unsigned>(_mm_movemask_epi8(isBreak)); mask != 0;
             mask &= mask - 1) {
            const unsigned char* at = p + std::countr_zero(mask);
            CountBreak(breaks, at, cameCr(at));
        }
    }
#endif
    for (; p != end; ++p) {
        if (*p == '\n' || *p == '\r') CountBreak(breaks, p, cameCr(p));
    }
    return breaks;
}

// Counts the bytes that start a character: all but the continuation bytes 10xxxxxx.
int CountCharacters(const unsigned char* p, const unsigned char* end) {
    int count = 0;
#if defined(__SSE2__)
    for (; end - p >= 16; p += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i starts = _mm_cmpgt_epi8(bytes, _mm_set1_epi8(-65));
        count += std::popcount(static_cast<unsigned>(_mm_movemask_epi8(starts)));
    }
#endif
    for (; p != end; ++p) count += (*p & 0xC0) != 0x80;
    return count;
}

}  // namespace

void PlaceCounter::Start(const unsigned char* position) { Start(position, Place{}); }

void PlaceCounter::Start(const unsigned char* position, Place place) {
    anchor_ = position;
    place_ = place;
    afterCr_ = false;
    colonCount_ = 0;
}

Place PlaceCounter::At(const unsigned char* position) const {
    const Breaks breaks = FindBreaks(anchor_, position, afterCr_);
    Place place = place_;
    place.line += breaks.count;
    const unsigned char* lineStart = anchor_;
    if (breaks.afterLast != nullptr) {
        place.column = 1;
        lineStart = breaks.afterLast;
    }
    place.column += CountCharacters(lineStart, position) - ColonsBetween(lineStart, position);
    return place;
}

void PlaceCounter::Advance(const unsigned char* position) {
    if (position == anchor_) return;
    place_ = At(position);
    afterCr_ = position[-1] == '\r';
    int passed = 0;
    while (passed < colonCount_ && colons_[passed] < position) ++passed;
    for (int i = passed; i < colonCount_; ++i) colons_[i - passed] = colons_[i];
    colonCount_ -= passed;
    anchor_ = position;
}

int PlaceCounter::ColonsBetween(const unsigned char* begin, const unsigned char* end) const {
    int count = 0;
    for (int i = 0; i < colonCount_; ++i) count += colons_[i] >= begin && colons_[i] < end;
    return count;
}

}  // namespace Xml::detail
