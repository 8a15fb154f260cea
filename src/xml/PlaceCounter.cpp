// SPDX-License-Identifier: MIT
#include "xml/PlaceCounter.h"

#include "xml/RunScan.h"

#include <algorithm>  // std::min
#include <bit>        // std::bit_width
#include <cstddef>
#include <cstring>
#include <limits>

namespace Xml::detail {

namespace {

#if defined(ESPALIER_BLOCK_SCAN)

constexpr std::ptrdiff_t kBlock = ByteBlock::kSize;

// The first `count` lanes set.
__m128i FirstLanes(std::ptrdiff_t count) {
    static constexpr unsigned char kLanes[2 * kBlock] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                                         0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                                                         0xFF, 0xFF, 0xFF, 0xFF};
    return ByteBlock(kLanes + kBlock - count).Bytes();
}

// Counts the bytes in [p, end) for which `isWanted`, asked with the address of a block, sets the
// lane. A block may reach behind the end; those lanes do not count.
template <typename IsWanted>
int CountBytes(const unsigned char* p, const unsigned char* end, IsWanted isWanted) {
    constexpr std::ptrdiff_t kMostBlocks = 255;  // that a lane can count
    int count = 0;
    while (p < end) {
        __m128i sums = _mm_setzero_si128();
        const std::ptrdiff_t blocks = std::min(kMostBlocks, (end - p) / kBlock);
        for (const unsigned char* const last = p + blocks * kBlock; p != last; p += kBlock)
            sums = _mm_sub_epi8(sums, isWanted(p));
        if (blocks < kMostBlocks) {
            sums = _mm_sub_epi8(sums, _mm_and_si128(isWanted(p), FirstLanes(end - p)));
            p = end;
        }
        const __m128i halves = _mm_sad_epu8(sums, _mm_setzero_si128());
        count += _mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4);
    }
    return count;
}

bool HasCr(const unsigned char* p, const unsigned char* end) {
    return std::memchr(p, '\r', static_cast<std::size_t>(end - p)) != nullptr;
}

#endif

// Counts the line breaks in [p, end): CR LF, CR or LF. The byte before `p` is readable; the LF of a
// CR LF ends no line of its own.
int CountBreaks(const unsigned char* p, const unsigned char* end) {
#if defined(ESPALIER_BLOCK_SCAN)
    if (!HasCr(p - 1, end)) {
        return CountBytes(p, end, [](const unsigned char* at) { return ByteBlock(at).Is('\n'); });
    }
    return CountBytes(p, end, [](const unsigned char* at) {
        const ByteBlock block(at);
        return _mm_or_si128(block.Is('\r'),
                            _mm_andnot_si128(ByteBlock(at - 1).Is('\r'), block.Is('\n')));
    });
#else
    int count = 0;
    for (; p != end; ++p)
        count += *p == '\r' || (*p == '\n' && p[-1] != '\r');
    return count;
#endif
}

// Counts the bytes that start a character: all but the continuation bytes 10xxxxxx.
int CountCharacters(const unsigned char* p, const unsigned char* end) {
#if defined(ESPALIER_BLOCK_SCAN)
    return CountBytes(p, end, [](const unsigned char* at) {
        return _mm_cmpgt_epi8(ByteBlock(at).Bytes(), _mm_set1_epi8(-65));
    });
#else
    int count = 0;
    for (; p != end; ++p)
        count += (*p & 0xC0) != 0x80;
    return count;
#endif
}

// Returns what follows the last line break in [begin, end), which has one.
const unsigned char* LastLine([[maybe_unused]] const unsigned char* begin,
                              const unsigned char* end) {
#if defined(ESPALIER_BLOCK_SCAN)
    for (; end - begin >= kBlock; end -= kBlock) {
        const ByteBlock block(end - kBlock);
        const unsigned breaks = ByteBlock::Mask(_mm_or_si128(block.Is('\n'), block.Is('\r')));
        if (breaks != 0) return end - kBlock + std::bit_width(breaks);
    }
#endif
    while (end[-1] != '\n' && end[-1] != '\r')
        --end;
    return end;
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
        lineStart = LastLine(anchor_, position);
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
