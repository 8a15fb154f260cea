// SPDX-License-Identifier: MIT
#pragma once

#include "encoding/CharClass.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

// What the codecs share about UTF-8 (RFC 3629).

namespace Xml::detail::utf8 {

inline constexpr int kLastScalar = 0x10FFFF;

/// Tells whether a number is a surrogate of UTF-16, which is no character.
constexpr bool IsSurrogate(int code) { return code >= 0xD800 && code <= 0xDFFF; }

/// Tells whether a number is a Unicode scalar value.
constexpr bool IsScalar(int code) { return code >= 0 && code <= kLastScalar && !IsSurrogate(code); }

/// Returns how many bytes a code from 0 to 10FFFF takes.
constexpr int LengthOf(int code) {
    if (code < 0x80) return 1;
    if (code < 0x800) return 2;
    return code < 0x10000 ? 3 : 4;
}

/// Writes a code from 0 to 10FFFF, for which there must be room.
/// \return the position after it
constexpr unsigned char* Write(int code, unsigned char* destination) {
    const auto value = static_cast<unsigned>(code);
    const auto byte = [](unsigned bits) { return static_cast<unsigned char>(bits); };
    if (value < 0x80) {
        *destination++ = byte(value);
        return destination;
    }
    if (value < 0x800) {
        *destination++ = byte(0xC0 | value >> 6);
    } else {
        if (value < 0x10000) {
            *destination++ = byte(0xE0 | value >> 12);
        } else {
            *destination++ = byte(0xF0 | value >> 18);
            *destination++ = byte(0x80 | (value >> 12 & 0x3F));
        }
        *destination++ = byte(0x80 | (value >> 6 & 0x3F));
    }
    *destination++ = byte(0x80 | (value & 0x3F));
    return destination;
}

/// Returns the length that a first byte announces: 2 to 6 for a lead byte, otherwise 1.
constexpr int SequenceLength(unsigned char lead) {
    const CharClass charClass = kUtf8ByteClass[lead];
    return charClass >= CharClass::Lead2 ? ToInt(charClass) - 34 : 1;
}

/// Tells whether a byte is not the first of a sequence.
constexpr bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

/// Returns the value of a sequence of `length` bytes (2 to 6), all of them there, unchecked.
constexpr int Combine(const unsigned char* position, int length) {
    unsigned value = position[0] & (0x7FU >> length);
    for (int i = 1; i < length; ++i)
        value = value << 6 | (position[i] & 0x3FU);
    return static_cast<int>(value);
}

/// What stands at a position of UTF-8 text.
enum class Sequence : unsigned char { Valid, Cut, Invalid };

/// Judges the sequence at a position before `end` whose first byte is above 0x7F. A sequence that
/// the end cuts is Cut, whatever its bytes are.
constexpr Sequence Check(const unsigned char* position, const unsigned char* end) {
    const unsigned char lead = position[0];
    const CharClass leadClass = kUtf8ByteClass[lead];
    if (leadClass < CharClass::Lead2) return Sequence::Invalid;
    const int length = ToInt(leadClass) - 34;
    if (end - position < length) return Sequence::Cut;
    if (lead < 0xC2 || lead > 0xF4) return Sequence::Invalid;

    // Overlong forms, surrogates and values above 10FFFF show in the second byte.
    unsigned char lowest = 0x80, highest = 0xBF;
    if (lead == 0xE0) lowest = 0xA0;
    if (lead == 0xED) highest = 0x9F;
    if (lead == 0xF0) lowest = 0x90;
    if (lead == 0xF4) highest = 0x8F;
    if (position[1] < lowest || position[1] > highest) return Sequence::Invalid;
    for (int i = 2; i < length; ++i) {
        if (!IsContinuation(position[i])) return Sequence::Invalid;
    }
    return Sequence::Valid;
}

/// How many characters a text has, and how many of them are above FFFF.
struct CharacterCounts {
    std::size_t all = 0;
    std::size_t aboveFFFF = 0;
};

/// Counts the characters of valid text in [begin, end), 8 bytes at a time.
inline CharacterCounts CountCharacters(const unsigned char* begin, const unsigned char* end) {
    constexpr std::uint64_t kOnes = 0x0101010101010101U;  // times this, the bytes of a word add up
    CharacterCounts counts;
#if defined(__SSE2__)
    for (; end - begin >= 16; begin += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(begin));
        const __m128i ones = _mm_set1_epi8(1);
        const __m128i isStart = _mm_cmpgt_epi8(bytes, _mm_set1_epi8(-65));
        const __m128i four = _mm_set1_epi8(static_cast<char>(0xF0));
        const __m128i isLeadOfFour = _mm_cmpeq_epi8(_mm_max_epu8(bytes, four), bytes);
        const auto sum = [ones](__m128i lanes) {
            const __m128i halves = _mm_sad_epu8(_mm_and_si128(lanes, ones), _mm_setzero_si128());
            return static_cast<unsigned>(_mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4));
        };
        counts.all += sum(isStart);
        counts.aboveFFFF += sum(isLeadOfFour);
    }
#endif
    for (; end - begin >= 8; begin += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, begin, sizeof word);
        const std::uint64_t continuations = word >> 7 & ~word >> 6 & kOnes;
        const std::uint64_t leadsOfFour = word >> 7 & word >> 6 & word >> 5 & word >> 4 & kOnes;
        counts.all += 8 - (continuations * kOnes >> 56);
        counts.aboveFFFF += leadsOfFour * kOnes >> 56;
    }
    for (; begin != end; ++begin) {
        counts.all += IsContinuation(*begin) ? 0U : 1U;
        counts.aboveFFFF += *begin >= 0xF0 ? 1U : 0U;
    }
    return counts;
}

}  // namespace Xml::detail::utf8
