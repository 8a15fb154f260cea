// SPDX-License-Identifier: MIT
#pragma once

// Scans over runs of characters, sixteen bytes at a time.
//
// All functions work on UTF-8 that is followed by kScanPadding zero bytes. A zero byte ends every
// run, so the loops need no test for the end: the caller compares the result with the end of its
// data. One mask answers three questions at once: is there a stop, a control character that XML
// does not allow, or a byte above ASCII? Bytes above ASCII are then checked to be valid UTF-8.

#include "encoding/Utf8.h"

#include <bit>  // std::countr_zero
#include <cstdint>
#include <cstring>

// With ESPALIER_PORTABLE_SCAN everything goes byte by byte, as on other processors.
#if defined(__SSE2__) && !defined(ESPALIER_PORTABLE_SCAN)
#    define ESPALIER_BLOCK_SCAN 1
#    include <emmintrin.h>
#endif

namespace Xml::detail {

/// The zero bytes that must follow scanned data: more than one step may read too far.
inline constexpr int kScanPadding = 32;

/// The length of the valid sequence above ASCII that [position, end) starts with, 0 when the data
/// ends inside of it, -1 when the bytes are no character.
inline int SequenceLength(const unsigned char* position, const unsigned char* end) {
    switch (utf8::Check(position, end)) {
    case utf8::Sequence::Valid: return utf8::SequenceLength(*position);
    case utf8::Sequence::Cut: return 0;
    case utf8::Sequence::Invalid: break;
    }
    return -1;
}

/// Tells whether an ASCII byte is a control character that XML does not allow.
constexpr bool IsForbiddenControl(unsigned char byte) {
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
}

/// What a scan does at tabs and line ends.
enum class Blanks : unsigned char { Pass, Stop };

/// The bytes at which a scan stops: `A`, `B`, `C` and the control characters that XML forbids,
/// among them the zero at the end.
template <char A, char B = A, char C = A, Blanks kBlanks = Blanks::Pass>
struct Stops {
    static constexpr bool Has(unsigned char byte) {
        return byte == static_cast<unsigned char>(A) || byte == static_cast<unsigned char>(B) ||
               byte == static_cast<unsigned char>(C) ||
               (kBlanks == Blanks::Stop ? byte < 0x20 : IsForbiddenControl(byte));
    }
};

#if defined(ESPALIER_BLOCK_SCAN)

/// Sixteen bytes and the questions to them. A mask has a bit per byte, the lowest for the first.
class ByteBlock {
public:
    static constexpr int kSize = 16;

    explicit ByteBlock(const unsigned char* p)
        : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))) {}

    __m128i Bytes() const { return bytes_; }
    __m128i Is(int byte) const { return _mm_cmpeq_epi8(bytes_, Every(byte)); }
    __m128i IsAtLeast(int byte) const {
        return _mm_cmpeq_epi8(_mm_max_epu8(bytes_, Every(byte)), bytes_);
    }
    __m128i IsAtMost(int byte) const {
        return _mm_cmpeq_epi8(_mm_min_epu8(bytes_, Every(byte)), bytes_);
    }
    __m128i IsLineBlank() const { return _mm_or_si128(Is('\t'), _mm_or_si128(Is('\n'), Is('\r'))); }
    __m128i IsBlank() const { return _mm_or_si128(IsLineBlank(), Is(' ')); }

    template <char A, char B, char C, Blanks kBlanks = Blanks::Pass>
    __m128i IsStop() const {
        __m128i stops = IsAtMost(0x1F);
        if (kBlanks == Blanks::Pass) stops = _mm_andnot_si128(IsLineBlank(), stops);
        stops = _mm_or_si128(stops, Is(A));
        if (B != A) stops = _mm_or_si128(stops, Is(B));
        if (C != A) stops = _mm_or_si128(stops, Is(C));
        return stops;
    }

    static unsigned Mask(__m128i answers) {
        return static_cast<unsigned>(_mm_movemask_epi8(answers));
    }

private:
    static __m128i Every(int byte) { return _mm_set1_epi8(static_cast<char>(byte)); }

    __m128i bytes_;
};

/// The UTF-8 in a block that starts with a character: where it is not as it should be.
struct BlockCheck {
    unsigned doubtful;  ///< mask of bytes that are wrong, or that only SequenceLength() can judge
    int whole;          ///< the bytes of the block that whole characters take
};

inline BlockCheck CheckBlock(const ByteBlock& block) {
    const unsigned high = ByteBlock::Mask(block.Bytes());
    const unsigned leads = ByteBlock::Mask(block.IsAtLeast(0xC0));
    const unsigned leads3 = ByteBlock::Mask(block.IsAtLeast(0xE0));
    const unsigned fromA0 = ByteBlock::Mask(block.IsAtLeast(0xA0));
    const unsigned continuations = high & ~leads;
    const unsigned expected = leads << 1 | leads3 << 2;
    // Overlong forms and surrogates show in the byte behind the lead.
    const unsigned wrong = (ByteBlock::Mask(block.Is(0xE0)) << 1 & ~fromA0) |
                           (ByteBlock::Mask(block.Is(0xED)) << 1 & fromA0);
    const unsigned rare = ByteBlock::Mask(
        _mm_or_si128(block.IsAtLeast(0xF0), _mm_or_si128(block.Is(0xC0), block.Is(0xC1))));
    BlockCheck check{((expected ^ continuations) | wrong | rare) & 0xFFFFu, ByteBlock::kSize};
    if ((leads >> 15 & 1) != 0) {
        check.whole = 15;
    } else if ((leads3 >> 14 & 1) != 0) {
        check.whole = 14;
    }
    return check;
}

#endif

/// Does the work of FindStop() from the first byte above ASCII on.
template <char A, char B, char C, Blanks kBlanks = Blanks::Pass>
[[gnu::noinline]] const unsigned char* FindStopInMixed(const unsigned char* p,
                                                       const unsigned char* end) {
    for (;;) {
        const unsigned char* careful = p + 1;  // before it, one character after the other
#if defined(ESPALIER_BLOCK_SCAN)
        const ByteBlock block(p);
        const BlockCheck check = CheckBlock(block);
        const unsigned stops = ByteBlock::Mask(block.template IsStop<A, B, C, kBlanks>());
        const unsigned events = stops | check.doubtful;
        if (events == 0) {
            p += check.whole;
            continue;
        }
        const int first = std::countr_zero(events);
        if ((check.doubtful >> first & 1) == 0) return p + first;
        careful = p + first + 1;
#endif
        while (p < careful) {
            if (*p < 0x80) {
                if (Stops<A, B, C, kBlanks>::Has(*p)) return p;
                ++p;
            } else {
                const int length = SequenceLength(p, end);
                if (length <= 0) return p;
                p += length;
            }
        }
    }
}

/// Returns the first position from `p` on that holds a stop, or a sequence that is invalid or cut.
template <char A, char B = A, char C = A, Blanks kBlanks = Blanks::Pass>
inline const unsigned char* FindStop(const unsigned char* p, const unsigned char* end) {
#if defined(ESPALIER_BLOCK_SCAN)
    for (;; p += ByteBlock::kSize) {
        const ByteBlock block(p);
        // A byte above ASCII has its highest bit set, as a mask has.
        const unsigned mask =
            ByteBlock::Mask(_mm_or_si128(block.template IsStop<A, B, C, kBlanks>(), block.Bytes()));
        if (mask != 0) {
            p += std::countr_zero(mask);
            break;
        }
    }
#else
    while (*p < 0x80 && !Stops<A, B, C, kBlanks>::Has(*p))
        ++p;
#endif
    return *p < 0x80 ? p : FindStopInMixed<A, B, C, kBlanks>(p, end);
}

/// Stands for bytes that are no character in text that is valid otherwise.
inline constexpr unsigned char kInvalidByte = 0xFF;

/// FindStop() for UTF-8 that is known to be valid and whole, except where kInvalidByte stands.
template <char A, char B = A, char C = A, Blanks kBlanks = Blanks::Pass>
inline const unsigned char* FindStopInValid(const unsigned char* p) {
#if defined(ESPALIER_BLOCK_SCAN)
    for (;; p += ByteBlock::kSize) {
        const ByteBlock block(p);
        const unsigned mask = ByteBlock::Mask(
            _mm_or_si128(block.template IsStop<A, B, C, kBlanks>(), block.Is(kInvalidByte)));
        if (mask != 0) return p + std::countr_zero(mask);
    }
#else
    while (*p != kInvalidByte && !Stops<A, B, C, kBlanks>::Has(*p))
        ++p;
    return p;
#endif
}

constexpr bool IsLineBlank(unsigned char byte) {
    return byte == '\n' || byte == '\t' || byte == '\r';
}

constexpr bool IsBlank(unsigned char byte) { return byte == ' ' || IsLineBlank(byte); }

/// Advances over spaces, tabs and line ends.
inline const unsigned char* SkipBlanks(const unsigned char* p) {
    if (!IsBlank(*p)) return p;
    ++p;
    if (*p > ' ') return p;  // one space is the most frequent
#if defined(ESPALIER_BLOCK_SCAN)
    for (;; p += ByteBlock::kSize) {
        const unsigned mask = ~ByteBlock::Mask(ByteBlock(p).IsBlank()) & 0xFFFFu;
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
#if defined(ESPALIER_BLOCK_SCAN)
    const ByteBlock block(p);
    const unsigned less = ByteBlock::Mask(block.Is('<'));
    const unsigned before = (less - 1) & ~less;  // the bits below the first "<"
    const __m128i unusual = _mm_or_si128(block.IsStop<'&', ']', ']'>(), block.Bytes());
    if (less == 0 || (ByteBlock::Mask(unusual) & before) != 0) return {};
    const unsigned others = ~ByteBlock::Mask(block.IsBlank());
    return {std::countr_zero(less), (others & before) == 0};
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

inline std::uint64_t LoadWord(const unsigned char* p) {
    std::uint64_t word = 0;
    std::memcpy(&word, p, sizeof word);
    return word;
}

/// Packs the 16 bytes at `p`.
inline PackedName LoadName(const unsigned char* p) { return {LoadWord(p), LoadWord(p + 8)}; }

/// Packs the `length` bytes (up to 16) at `p`, behind which 16 bytes are readable.
inline PackedName PackName(const unsigned char* p, int length) {
    static constexpr unsigned char kMask[2 * PackedName::kMostBytes] = {
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const PackedName mask = LoadName(kMask + PackedName::kMostBytes - length);
    return {LoadWord(p) & mask.low, LoadWord(p + 8) & mask.high};
}

/// Returns the number of bytes before the first one that ends a name in a tag (white space, "=",
/// "/" or ">"), up to 16. The bytes may be no name at all.
inline int NameLengthInBlock(const unsigned char* p) {
#if defined(ESPALIER_BLOCK_SCAN)
    const ByteBlock block(p);
    const __m128i ends = _mm_or_si128(_mm_or_si128(block.IsAtMost(' '), block.Is('=')),
                                      _mm_or_si128(block.Is('>'), block.Is('/')));
    return std::countr_zero(ByteBlock::Mask(ends) | 0x10000u);
#else
    int length = 0;
    while (length < PackedName::kMostBytes && p[length] > 0x20 && p[length] != '=' &&
           p[length] != '/' && p[length] != '>') {
        ++length;
    }
    return length;
#endif
}

}  // namespace Xml::detail
