// SPDX-License-Identifier: MIT
#include "xml/PlaceCounter.h"

#include <limits>

// See RunScan.h for ESPALIER_PORTABLE_SCAN.
#if defined(__SSE2__) && !defined(ESPALIER_PORTABLE_SCAN)
#    define ESPALIER_BLOCK_COUNT 1
#    include <algorithm>  // std::min
#    include <cstddef>
#    include <emmintrin.h>
#endif

namespace Xml::detail {

namespace {

#if defined(ESPALIER_BLOCK_COUNT)

// A run of bytes is taken sixteen at a time; the rest one by one.
constexpr std::ptrdiff_t kBlock = 16;

// Blocks that can be counted in lanes of a byte each.
constexpr std::ptrdiff_t kMostBlocks = 255;

int SumOfLanes(__m128i lanes) {
    const __m128i halves = _mm_sad_epu8(lanes, _mm_setzero_si128());
    return _mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4);
}

#endif

bool EndsLine(const unsigned char* p) {
    // The LF of a CR LF ends no line of its own.
    return *p == '\r' || (*p == '\n' && p[-1] != '\r');
}

int CountBreaksOneByOne(const unsigned char* p, const unsigned char* end) {
    int count = 0;
    for (; p != end; ++p)
        count += EndsLine(p);
    return count;
}

// Counts the line breaks in [p, end). The byte before `p` is readable.
int CountBreaks(const unsigned char* p, const unsigned char* end) {
    int count = 0;
#if defined(ESPALIER_BLOCK_COUNT)
    while (end - p >= kBlock) {
        const unsigned char* const begin = p;
        const unsigned char* const last = p + kBlock * std::min(kMostBlocks, (end - p) / kBlock);
        __m128i sums = _mm_setzero_si128();
        __m128i crs = _mm_setzero_si128();
        for (; p != last; p += kBlock) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            sums = _mm_sub_epi8(sums, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\n')));
            crs = _mm_or_si128(crs, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\r')));
        }
        if (_mm_movemask_epi8(crs) != 0 || begin[-1] == '\r') {
            count += CountBreaksOneByOne(begin, last);
        } else {
            count += SumOfLanes(sums);
        }
    }
#endif
    return count + CountBreaksOneByOne(p, end);
}

// Counts the bytes that start a character: all but the continuation bytes 10xxxxxx.
int CountCharacters(const unsigned char* p, const unsigned char* end) {
    int count = 0;
#if defined(ESPALIER_BLOCK_COUNT)
    while (end - p >= kBlock) {
        const unsigned char* const last = p + kBlock * std::min(kMostBlocks, (end - p) / kBlock);
        __m128i sums = _mm_setzero_si128();
        for (; p != last; p += kBlock) {
            const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
            sums = _mm_sub_epi8(sums, _mm_cmpgt_epi8(bytes, _mm_set1_epi8(-65)));
        }
        count += SumOfLanes(sums);
    }
#endif
    for (; p != end; ++p)
        count += (*p & 0xC0) != 0x80;
    return count;
}

// Adds to a line or a column, which stays at the greatest number when it gets there.
int AddTo(int number, int count) {
    constexpr int kMost = std::numeric_limits<int>::max();
    return number > kMost - count ? kMost : number + count;
}

}  // namespace

void PlaceCounter::Start(const unsigned char* position) { Start(position, Place{1, 1}); }

void PlaceCounter::Start(const unsigned char* position, Place place) {
    anchor_ = position;
    place_ = place;
    colonCount_ = 0;
}

Place PlaceCounter::At(const unsigned char* position) const {
    Place place = place_;
    const unsigned char* lineStart = anchor_;
    const int breaks = CountBreaks(anchor_, position);
    if (breaks > 0) {
        place.line = AddTo(place.line, breaks);
        place.column = 1;
        lineStart = position;
        while (lineStart[-1] != '\n' && lineStart[-1] != '\r')
            --lineStart;
    } else if (position != anchor_ && *anchor_ == '\n' && anchor_[-1] == '\r') {
        ++lineStart;  // the LF of a CR LF stands nowhere
    }
    const int characters =
        CountCharacters(lineStart, position) - ColonsBetween(lineStart, position);
    place.column = AddTo(place.column, characters);
    return place;
}

void PlaceCounter::Advance(const unsigned char* position) {
    if (position == anchor_) return;
    place_ = At(position);
    int passed = 0;
    while (passed < colonCount_ && colons_[passed] < position)
        ++passed;
    for (int i = passed; i < colonCount_; ++i)
        colons_[i - passed] = colons_[i];
    colonCount_ -= passed;
    anchor_ = position;
}

int PlaceCounter::ColonsBetween(const unsigned char* begin, const unsigned char* end) const {
    int count = 0;
    for (int i = 0; i < colonCount_; ++i)
        count += colons_[i] >= begin && colons_[i] < end;
    return count;
}

}  // namespace Xml::detail
