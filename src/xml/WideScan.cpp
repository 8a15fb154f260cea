// SPDX-License-Identifier: MIT

// The scans of the writer, and of the input of the reader, for processors with AVX2. What is not 32
// bytes long is copied first, with blanks behind it.
//
// UTF-8 is checked by three tables: the first byte of a pair by its halves, the second by its upper
// half, each give the mistakes that it can be part of, and what all three give is one (Keiser and
// Lemire, "Validating UTF-8 In Less Than One Instruction Per Byte", 2020).

#include "xml/WideScan.h"

#if defined(ESPALIER_WIDE_SCAN)

#    include <cstring>
#    include <immintrin.h>

#    define ESPALIER_AVX2 [[gnu::target("avx2")]]

namespace Xml::detail::wide {

namespace {

using Bytes = __m256i;

ESPALIER_AVX2 inline Bytes Load(const void* from) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(from));
}

ESPALIER_AVX2 inline Bytes Every(unsigned byte) {
    return _mm256_set1_epi8(static_cast<char>(byte));
}

ESPALIER_AVX2 inline unsigned Mask(Bytes bytes) {
    return static_cast<unsigned>(_mm256_movemask_epi8(bytes));
}

// A table for the 16 values of half a byte.
struct alignas(16) Table {
    unsigned char entries[16];
};

ESPALIER_AVX2 inline Bytes LookUp(const Table& table, Bytes halves) {
    const __m128i entries = _mm_load_si128(reinterpret_cast<const __m128i*>(table.entries));
    return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(entries), halves);
}

// Marks the bytes of a set in which no two have the same lower half. The entry of a half that no
// member has is a byte with another one.
ESPALIER_AVX2 inline Bytes IsOf(const Table& set, Bytes bytes) {
    return _mm256_cmpeq_epi8(LookUp(set, bytes), bytes);
}

constexpr Table kMarks = {{1, 0, '"', 0, 0, 0, '&', '\'', 0, 0, 0, 0, '<', 0, '>', 0}};
constexpr Table kBreaks = {{1, 0, 0, 0, 0, 0, 0, 0, 0, '\t', '\n', 0, 0, '\r', 0, 0}};

ESPALIER_AVX2 inline Bytes IsControl(Bytes bytes) {
    return _mm256_cmpeq_epi8(_mm256_min_epu8(bytes, Every(0x1F)), bytes);
}

ESPALIER_AVX2 inline Bytes IsEscape(Bytes bytes, bool breaksArePlain) {
    const Bytes found = _mm256_or_si256(IsControl(bytes), IsOf(kMarks, bytes));
    return breaksArePlain ? _mm256_andnot_si256(IsOf(kBreaks, bytes), found) : found;
}

ESPALIER_AVX2 inline Bytes IsForbidden(Bytes bytes) {
    return _mm256_andnot_si256(IsOf(kBreaks, bytes), IsControl(bytes));
}

// What can be wrong with two bytes of UTF-8, a bit for each. The last means that two continuations
// follow each other, which is right behind the lead of a longer sequence.
enum : unsigned char {
    kTooShort = 1,    // a lead, and no continuation behind it
    kTooLong = 2,     // a continuation behind ASCII
    kOverlong3 = 4,   // E0 80..9F
    kTooLarge = 8,    // F4 90..BF, F5..
    kSurrogate = 16,  // ED A0..BF
    kOverlong2 = 32,  // C0, C1
    kOverlong4 = 64,  // F0 80..8F; F5.. 80..8F, too
    kTwo = 128,
};
constexpr unsigned char kAnyLow = kTooShort | kTooLong | kTwo;
constexpr unsigned char kAnyContinuation = kTooLong | kOverlong2 | kTwo;
constexpr unsigned char kAboveF4 = kAnyLow | kTooLarge | kOverlong4;

constexpr Table kFirstHigh = {{kTooLong, kTooLong, kTooLong, kTooLong, kTooLong, kTooLong, kTooLong,
                               kTooLong, kTwo, kTwo, kTwo, kTwo, kTooShort | kOverlong2, kTooShort,
                               kTooShort | kOverlong3 | kSurrogate,
                               kTooShort | kTooLarge | kOverlong4}};
constexpr Table kFirstLow = {{kAnyLow | kOverlong2 | kOverlong3 | kOverlong4, kAnyLow | kOverlong2,
                              kAnyLow, kAnyLow, kAnyLow | kTooLarge, kAboveF4, kAboveF4, kAboveF4,
                              kAboveF4, kAboveF4, kAboveF4, kAboveF4, kAboveF4,
                              kAboveF4 | kSurrogate, kAboveF4, kAboveF4}};
constexpr Table kSecondHigh = {
    {kTooShort, kTooShort, kTooShort, kTooShort, kTooShort, kTooShort, kTooShort, kTooShort,
     kAnyContinuation | kOverlong3 | kOverlong4, kAnyContinuation | kOverlong3 | kTooLarge,
     kAnyContinuation | kSurrogate | kTooLarge, kAnyContinuation | kSurrogate | kTooLarge,
     kTooShort, kTooShort, kTooShort, kTooShort}};

// The bytes that stand `kCount` before those of a block.
template <int kCount>
ESPALIER_AVX2 inline Bytes Before(Bytes block, Bytes last) {
    const Bytes across = _mm256_permute2x128_si256(last, block, 0x21);
    return _mm256_alignr_epi8(block, across, 16 - kCount);
}

ESPALIER_AVX2 inline Bytes HighHalves(Bytes bytes) {
    return _mm256_and_si256(_mm256_srli_epi16(bytes, 4), Every(0x0F));
}

// Finds mistakes in UTF-8, block after block. The last must be followed by ASCII.
struct Utf8Check {
    Bytes last;
    Bytes mistakes;

    ESPALIER_AVX2 Utf8Check() : last(_mm256_setzero_si256()), mistakes(_mm256_setzero_si256()) {}

    ESPALIER_AVX2 void Add(Bytes block) {
        const Bytes before1 = Before<1>(block, last);
        const Bytes possible = _mm256_and_si256(
            _mm256_and_si256(LookUp(kFirstHigh, HighHalves(before1)),
                             LookUp(kFirstLow, _mm256_and_si256(before1, Every(0x0F)))),
            LookUp(kSecondHigh, HighHalves(block)));
        // Behind the lead of 3 or 4 bytes the third, or the fourth, must be a continuation.
        const Bytes third = _mm256_subs_epu8(Before<2>(block, last), Every(0xE0 - 0x80));
        const Bytes fourth = _mm256_subs_epu8(Before<3>(block, last), Every(0xF0 - 0x80));
        const Bytes wanted = _mm256_and_si256(_mm256_or_si256(third, fourth), Every(0x80));
        mistakes = _mm256_or_si256(mistakes, _mm256_xor_si256(wanted, possible));
        last = block;
    }

    // Adds a block, which is quick when it is ASCII behind ASCII.
    ESPALIER_AVX2 void AddMixed(Bytes block) {
        if (Mask(_mm256_or_si256(block, last)) != 0) {
            Add(block);
        } else {
            last = block;
        }
    }

    ESPALIER_AVX2 bool IsRight() const { return _mm256_testz_si256(mistakes, mistakes) != 0; }
};

// The last bytes of a text, fewer than a block, with blanks behind them.
ESPALIER_AVX2 inline Bytes LoadRest(const char* at, const char* end) {
    alignas(kBlock) char rest[kBlock];
    std::memset(rest, ' ', sizeof rest);
    std::memcpy(rest, at, static_cast<std::size_t>(end - at));
    return Load(rest);
}

struct Examination {
    Bytes escapes;
    Bytes forbidden;
    Utf8Check utf8;

    ESPALIER_AVX2 Examination()
        : escapes(_mm256_setzero_si256()), forbidden(_mm256_setzero_si256()) {}

    ESPALIER_AVX2 void Add(Bytes block, bool breaksArePlain) {
        escapes = _mm256_or_si256(escapes, IsEscape(block, breaksArePlain));
        forbidden = _mm256_or_si256(forbidden, IsForbidden(block));
    }
};

}  // namespace

ESPALIER_AVX2 TextNeeds Examine(std::string_view text, bool breaksArePlain, bool checks) {
    const char* at = text.data();
    const char* const end = at + text.size();
    Examination found;
    for (;; at += kBlock) {
        const bool isRest = static_cast<std::size_t>(end - at) < kBlock;
        const Bytes block = isRest ? LoadRest(at, end) : Load(at);
        found.Add(block, breaksArePlain);
        if (checks) found.utf8.AddMixed(block);
        if (isRest) break;
    }
    const bool isBad = checks && (Mask(found.forbidden) != 0 || !found.utf8.IsRight());
    return {Mask(found.escapes) != 0, isBad};
}

ESPALIER_AVX2 bool IsUtf8(const unsigned char* begin, const unsigned char* end) {
    Utf8Check check;
    for (; begin < end; begin += kBlock)
        check.AddMixed(Load(begin));
    check.AddMixed(Every(' '));
    return check.IsRight();
}

ESPALIER_AVX2 bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain) {
    const char* at = text.data();
    const char* const last = at + text.size() - kBlock;
    unsigned char* const begin = to;
    unsigned char* const end = to + text.size();
    Bytes stops = _mm256_setzero_si256();
    Bytes all = stops;
    for (;; at += kBlock, to += kBlock) {
        if (at > last) {
            at = last;
            to = end - kBlock;
        }
        const Bytes block = Load(at);
        stops = _mm256_or_si256(stops, IsEscape(block, breaksArePlain));
        all = _mm256_or_si256(all, block);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), block);
        if (at == last) break;
    }
    if (Mask(stops) != 0) return false;
    if (Mask(all) == 0) return true;
    std::memset(end, ' ', kBlock);
    return IsUtf8(begin, end);
}

ESPALIER_AVX2 const unsigned char* SkipUsual(const unsigned char* p, const unsigned char* end) {
    const Bytes cr = Every('\r');
    constexpr std::ptrdiff_t kStride = 4 * kBlock;
    for (; end - p >= kStride; p += kStride) {
        const Bytes first = Load(p);
        const Bytes second = Load(p + kBlock);
        const Bytes third = Load(p + 2 * kBlock);
        const Bytes fourth = Load(p + 3 * kBlock);
        const Bytes returns = _mm256_or_si256(
            _mm256_or_si256(_mm256_cmpeq_epi8(first, cr), _mm256_cmpeq_epi8(second, cr)),
            _mm256_or_si256(_mm256_cmpeq_epi8(third, cr), _mm256_cmpeq_epi8(fourth, cr)));
        const Bytes high =
            _mm256_or_si256(_mm256_or_si256(first, second), _mm256_or_si256(third, fourth));
        if (Mask(_mm256_or_si256(returns, high)) != 0) return p;
    }
    for (; p < end; p += kBlock) {
        const Bytes block = Load(p);
        if (Mask(_mm256_or_si256(_mm256_cmpeq_epi8(block, cr), block)) != 0) return p;
    }
    return p;
}

ESPALIER_AVX2 const unsigned char* SkipToReturnOrLast(const unsigned char* p,
                                                      const unsigned char* end) {
    for (; p < end; p += kBlock) {
        const Bytes block = Load(p);
        const Bytes lasts = _mm256_and_si256(_mm256_cmpeq_epi8(block, Every(0xEF)),
                                             _mm256_cmpeq_epi8(Load(p + 1), Every(0xBF)));
        if (Mask(_mm256_or_si256(lasts, _mm256_cmpeq_epi8(block, Every('\r')))) != 0) return p;
    }
    return p;
}

ESPALIER_AVX2 std::uint64_t EscapesIn64(const char* at, bool breaksArePlain) {
    const std::uint64_t second = Mask(IsEscape(Load(at + kBlock), breaksArePlain));
    return second << kBlock | Mask(IsEscape(Load(at), breaksArePlain));
}

}  // namespace Xml::detail::wide

#endif
