// SPDX-License-Identifier: MIT

// The scans of the writer, sixteen bytes at a time. Unlike the reader's, they do not read behind
// the end of the text: a last block overlaps the one before, and a text of less than a block is
// loaded as its first and its last eight bytes.

#include "xml/EscapeScan.h"

#include "xml/RunScan.h"
#include "xml/WideScan.h"

#include <algorithm>  // std::min
#include <array>
#include <bit>  // std::countr_zero
#include <cstdint>
#include <cstring>

namespace Xml::detail {

namespace {

constexpr unsigned char kEscapes = 1;
constexpr unsigned char kChecks = 2;  // perhaps no character

using NeedsTable = std::array<unsigned char, 256>;

constexpr NeedsTable MakeNeeds(bool breaksArePlain) {
    NeedsTable needs{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isForbidden = IsForbiddenControl(static_cast<unsigned char>(byte));
        const bool isBreak = byte < 0x20 && !isForbidden;
        const bool isMark =
            byte == '<' || byte == '>' || byte == '&' || byte == '"' || byte == '\'';
        const bool escapes = isMark || isForbidden || (isBreak && !breaksArePlain);
        const bool checks = isForbidden || byte >= 0x80;
        needs[byte] = static_cast<unsigned char>((escapes ? kEscapes : 0) | (checks ? kChecks : 0));
    }
    return needs;
}

constexpr NeedsTable kNeeds = MakeNeeds(false);
constexpr NeedsTable kNeedsWithBreaks = MakeNeeds(true);

const NeedsTable& TableFor(bool breaksArePlain) {
    return breaksArePlain ? kNeedsWithBreaks : kNeeds;
}

unsigned NeedsOf(char c, const NeedsTable& table) { return table[static_cast<unsigned char>(c)]; }

#if defined(ESPALIER_BLOCK_SCAN)

constexpr std::ptrdiff_t kBlock = ByteBlock::kSize;

__m128i Is(__m128i bytes, char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }

__m128i IsControl(__m128i bytes) {
    return _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8(0x1F)), bytes);
}

__m128i IsBreak(__m128i bytes) {
    return _mm_or_si128(Is(bytes, '\t'), _mm_or_si128(Is(bytes, '\n'), Is(bytes, '\r')));
}

// Mask of the bytes to escape.
unsigned EscapesIn(__m128i bytes, bool breaksArePlain) {
    const __m128i isQuote = _mm_or_si128(Is(bytes, '"'), Is(bytes, '\''));
    const __m128i isAngle = _mm_or_si128(Is(bytes, '<'), Is(bytes, '>'));
    const __m128i isMark = _mm_or_si128(_mm_or_si128(isAngle, isQuote), Is(bytes, '&'));
    const unsigned found = ByteBlock::Mask(_mm_or_si128(IsControl(bytes), isMark));
    return found != 0 && breaksArePlain ? found & ~ByteBlock::Mask(IsBreak(bytes)) : found;
}

// Mask of the bytes that may be no characters.
unsigned DoubtsIn(__m128i bytes) {
    const unsigned controls = ByteBlock::Mask(IsControl(bytes));
    const unsigned above = ByteBlock::Mask(bytes);
    return controls == 0 ? above : above | (controls & ~ByteBlock::Mask(IsBreak(bytes)));
}

// Tells what blocks have that is not plain: bytes to escape, and bytes above ASCII.
struct Others {
    unsigned escapes = 0;
    unsigned above = 0;

    void Add(__m128i bytes, bool breaksArePlain) {
        escapes |= EscapesIn(bytes, breaksArePlain);
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

namespace {

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

// Returns what of kEscapes and kChecks a text has.
unsigned NeedsOf(std::string_view text, bool breaksArePlain) {
    const char* at = text.data();
    const char* const end = at + text.size();
#if defined(ESPALIER_BLOCK_SCAN)
    if (end - at >= 8) {
        unsigned escapes = 0;
        unsigned doubts = 0;
        const auto look = [&](__m128i bytes) {
            escapes |= EscapesIn(bytes, breaksArePlain);
            doubts |= DoubtsIn(bytes);
        };
        if (end - at <= kBlock) {
            look(LoadEnds(at, end));
        } else {
            for (; end - at > kBlock; at += kBlock)
                look(LoadBlock(at));
            look(LoadBlock(end - kBlock));
        }
        return (escapes != 0 ? kEscapes : 0U) | (doubts != 0 ? kChecks : 0U);
    }
#endif
    unsigned needs = 0;
    const NeedsTable& table = TableFor(breaksArePlain);
    for (; at != end; ++at)
        needs |= NeedsOf(*at, table);
    return needs;
}

}  // namespace

TextNeeds ExamineText(std::string_view text, bool breaksArePlain, bool checks) {
#if defined(ESPALIER_WIDE_SCAN)
    if (text.size() >= wide::kBlock && wide::IsAvailable()) {
        return wide::Examine(text, breaksArePlain, checks);
    }
#endif
    const unsigned needs = NeedsOf(text, breaksArePlain);
    return {(needs & kEscapes) != 0, checks && (needs & kChecks) != 0 && !IsXmlText(text)};
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
    const NeedsTable& table = TableFor(breaksArePlain);
    for (const char c : text) {
        *to++ = static_cast<unsigned char>(c);
        needs |= NeedsOf(c, table);
    }
    return needs == 0 || (needs == kChecks && IsValidCopy(begin, to));
}

}  // namespace

bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain) {
#if defined(ESPALIER_WIDE_SCAN)
    if (text.size() >= wide::kBlock && wide::IsAvailable()) {
        return wide::CopyPlain(to, text, breaksArePlain);
    }
#endif
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

void EscapeFinder::LoadMask() {
    block_ = next_;
    const std::ptrdiff_t left = end_ - block_;
#if defined(ESPALIER_WIDE_SCAN)
    if (left >= 64 && wide::IsAvailable()) {
        mask_ = wide::EscapesIn64(block_, breaksArePlain_);
        next_ += 64;
        return;
    }
#endif
    std::ptrdiff_t done = 0;
#if defined(ESPALIER_BLOCK_SCAN)
    for (; done < 64 && left - done >= kBlock; done += kBlock) {
        const std::uint64_t found = EscapesIn(LoadBlock(block_ + done), breaksArePlain_);
        mask_ |= found << done;
    }
#endif
    const NeedsTable& table = TableFor(breaksArePlain_);
    for (; done < 64 && done < left; ++done)
        mask_ |= static_cast<std::uint64_t>(NeedsOf(block_[done], table) & kEscapes) << done;
    next_ += done;
}

}  // namespace Xml::detail
