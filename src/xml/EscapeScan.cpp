// SPDX-License-Identifier: MIT

// The scans of the writer, sixteen bytes at a time. Unlike the reader's, they do not read behind
// the end of the text: a last block overlaps the one before, and a text of less than a block is
// loaded as its first and its last eight bytes.

#include "xml/EscapeScan.h"

#include "xml/RunScan.h"

#include <algorithm>  // std::min
#include <array>
#include <bit>  // std::countr_zero
#include <cstdint>
#include <cstring>

namespace Xml::detail {

namespace {

enum : unsigned char { kEscapes = 1, kChecks = 2 };

constexpr auto kNeeds = [] {
    std::array<unsigned char, 256> needs{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isControl = byte < 0x20;
        const bool isMark =
            byte == '<' || byte == '>' || byte == '&' || byte == '"' || byte == '\'';
        const bool isDoubtful =
            byte >= 0x80 || IsForbiddenControl(static_cast<unsigned char>(byte));
        needs[byte] = static_cast<unsigned char>((isControl || isMark ? kEscapes : 0) |
                                                 (isDoubtful ? kChecks : 0));
    }
    return needs;
}();

unsigned char NeedsOf(char c) { return kNeeds[static_cast<unsigned char>(c)]; }

#if defined(ESPALIER_BLOCK_SCAN)

constexpr std::ptrdiff_t kBlock = ByteBlock::kSize;

// Mask of the bytes to escape.
unsigned EscapesIn(__m128i bytes) {
    const auto is = [bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i isControl = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
    const __m128i isQuote = _mm_or_si128(is('"'), is('\''));
    const __m128i isMark = _mm_or_si128(_mm_or_si128(is('<'), is('>')), is('&'));
    return ByteBlock::Mask(_mm_or_si128(isControl, _mm_or_si128(isQuote, isMark)));
}

// Mask of the bytes that may be no characters.
unsigned DoubtsIn(__m128i bytes, unsigned escapes) {
    const unsigned above = ByteBlock::Mask(bytes);
    if (escapes == 0) return above;
    const auto is = [bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    const __m128i isControl = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
    const __m128i isBlank = _mm_or_si128(is('\t'), _mm_or_si128(is('\n'), is('\r')));
    return above | ByteBlock::Mask(_mm_andnot_si128(isBlank, isControl));
}

// Tells what a block has that is not plain: marks to escape, and bytes above ASCII.
struct Others {
    unsigned escapes = 0;
    unsigned above = 0;

    void Add(__m128i bytes, bool breaksArePlain) {
        unsigned found = EscapesIn(bytes);
        if (found != 0 && breaksArePlain) {
            const auto is = [bytes](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
            const __m128i isBreak = _mm_or_si128(is('\t'), _mm_or_si128(is('\n'), is('\r')));
            found &= ~ByteBlock::Mask(isBreak);
        }
        escapes |= found;
        above |= ByteBlock::Mask(bytes);
    }
};

void StoreBlock(unsigned char* to, __m128i bytes) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
}

// Copies `Word` from both ends of a text that is as long as one or two of them.
template <typename Word>
void CopyEnds(unsigned char* to, std::string_view text, Word& first, Word& last) {
    std::memcpy(&first, text.data(), sizeof first);
    std::memcpy(&last, text.data() + text.size() - sizeof last, sizeof last);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + text.size() - sizeof last, &last, sizeof last);
}

__m128i LoadBlock(const char* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); }

// Loads 8 to 16 bytes, some of them twice.
__m128i LoadEnds(const char* begin, const char* end) {
    const __m128i first = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(begin));
    const __m128i last = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(end - 8));
    return _mm_unpacklo_epi64(first, last);
}

#endif

}  // namespace

TextNeeds ExamineText(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
#if defined(ESPALIER_BLOCK_SCAN)
    if (end - at >= 8) {
        unsigned escapes = 0;
        unsigned doubts = 0;
        const auto look = [&escapes, &doubts](__m128i bytes) {
            const unsigned found = EscapesIn(bytes);
            escapes |= found;
            doubts |= DoubtsIn(bytes, found);
        };
        if (end - at <= kBlock) {
            look(LoadEnds(at, end));
        } else {
            for (; end - at > kBlock; at += kBlock)
                look(LoadBlock(at));
            look(LoadBlock(end - kBlock));
        }
        return {escapes != 0, doubts != 0};
    }
#endif
    unsigned needs = 0;
    for (; at != end; ++at)
        needs |= NeedsOf(*at);
    return {(needs & kEscapes) != 0, (needs & kChecks) != 0};
}

namespace {

// Tells whether a copy that has no bytes to escape is UTF-8.
bool IsValidCopy(const unsigned char* copy, unsigned char* end) {
    std::memset(end, 0, kScanPadding);
    return FindStop<'\0'>(copy, end) == end;
}

// Copies a text of less than a block.
bool CopyFewPlain(unsigned char* to, std::string_view text, bool breaksArePlain) {
    unsigned char* const begin = to;
    unsigned needs = 0;
    for (const char c : text) {
        *to++ = static_cast<unsigned char>(c);
        const bool isBreak = c == '\n' || c == '\t' || c == '\r';
        needs |= breaksArePlain && isBreak ? 0U : NeedsOf(c);
    }
    return needs == 0 || (needs == kChecks && IsValidCopy(begin, to));
}

}  // namespace

bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain) {
#if defined(ESPALIER_BLOCK_SCAN)
    if (text.size() < 4) return CopyFewPlain(to, text, breaksArePlain);
    Others others;
    unsigned char* const begin = to;
    unsigned char* const end = to + text.size();
    if (text.size() >= static_cast<std::size_t>(kBlock)) {
        const char* at = text.data();
        for (; end - to > kBlock; at += kBlock, to += kBlock) {
            const __m128i bytes = LoadBlock(at);
            others.Add(bytes, breaksArePlain);
            StoreBlock(to, bytes);
        }
        const __m128i last = LoadBlock(text.data() + text.size() - kBlock);
        others.Add(last, breaksArePlain);
        StoreBlock(end - kBlock, last);
    } else if (text.size() >= 8) {
        std::int64_t first = 0;
        std::int64_t last = 0;
        CopyEnds(to, text, first, last);
        others.Add(_mm_set_epi64x(last, first), breaksArePlain);
    } else {
        std::int32_t first = 0;
        std::int32_t last = 0;
        CopyEnds(to, text, first, last);
        others.Add(_mm_set_epi32(first, last, first, last), breaksArePlain);
    }
    return others.escapes == 0 && (others.above == 0 || IsValidCopy(begin, end));
#else
    return CopyFewPlain(to, text, breaksArePlain);
#endif
}

const char* FindEscape(const char* at, const char* end) {
#if defined(ESPALIER_BLOCK_SCAN)
    for (; end - at >= kBlock; at += kBlock) {
        const unsigned escapes = EscapesIn(LoadBlock(at));
        if (escapes != 0) return at + std::countr_zero(escapes);
    }
#endif
    while (at != end && (NeedsOf(*at) & kEscapes) == 0)
        ++at;
    return at;
}

// Goes through copies of the text, because the reader's scan wants zero bytes behind it.
bool IsXmlText(std::string_view text) {
    constexpr std::size_t kMost = 1024;
    unsigned char copy[kMost + kScanPadding];
    while (!text.empty()) {
        const std::size_t count = std::min(text.size(), kMost);
        unsigned char* const end = copy + count;
        std::memcpy(copy, text.data(), count);
        std::memset(end, 0, kScanPadding);
        const unsigned char* const stop = FindStop<'\0'>(copy, end);
        // A character that the copy cuts stands whole in the next one.
        const bool isCut = count < text.size() && stop != end && SequenceLength(stop, end) == 0;
        if (stop != end && !isCut) return false;
        text.remove_prefix(static_cast<std::size_t>(stop - copy));
    }
    return true;
}

}  // namespace Xml::detail
