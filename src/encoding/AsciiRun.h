// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#    include <emmintrin.h>
#endif

// Copies runs of ASCII, 16 characters at a time. CopyAscii() and NarrowAscii() convert characters
// from the start of the source until one is not ASCII or fewer than 16 are left, and return how
// many they converted; bytes that they write after those mean nothing. A caller goes on with a
// plain loop, so nothing but speed depends on where a run ends.

namespace Xml::detail {

/// The number of characters that the functions below take at a time.
inline constexpr std::size_t kAsciiBlock = 16;

/// Which byte of a unit comes first.
enum class ByteOrder : unsigned char { Little, Big };

namespace ascii_run {

using Bytes16 [[gnu::vector_size(16)]] = unsigned char;

inline std::uint64_t LoadWord(const unsigned char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Returns how many bytes at the start of a word come before the first one set in `marks`.
inline std::size_t BytesBefore(std::uint64_t marks) {
    if constexpr (std::endian::native == std::endian::little) {
        return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
    } else {
        return static_cast<std::size_t>(std::countl_zero(marks)) / 8;
    }
}

/// Returns the word whose bytes in memory are `first` and `second`, four times over.
constexpr std::uint64_t RepeatPair(unsigned char first, unsigned char second) {
    const unsigned low = std::endian::native == std::endian::little ? first : second;
    const unsigned high = std::endian::native == std::endian::little ? second : first;
    return 0x0001000100010001U * std::uint64_t{high << 8 | low};
}

}  // namespace ascii_run

/// Copies bytes.
inline std::size_t CopyAscii(const unsigned char* source, unsigned char* destination,
                             std::size_t count) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::size_t done = 0;
    while (count - done >= kAsciiBlock) {
        const std::uint64_t first = ascii_run::LoadWord(source + done);
        const std::uint64_t second = ascii_run::LoadWord(source + done + 8);
        std::memcpy(destination + done, &first, sizeof first);
        std::memcpy(destination + done + 8, &second, sizeof second);
        if (((first | second) & kHighBits) != 0) {
            if ((first & kHighBits) != 0) return done + ascii_run::BytesBefore(first & kHighBits);
            return done + 8 + ascii_run::BytesBefore(second & kHighBits);
        }
        done += kAsciiBlock;
    }
    return done;
}

/// Copies the ASCII bytes at the position as far as source and room go, and advances both.
inline void CopyAsciiRun(const unsigned char*& position, const unsigned char* end,
                         unsigned char*& destination, const unsigned char* destinationEnd) {
    const std::ptrdiff_t limit = std::min(end - position, destinationEnd - destination);
    const auto count = static_cast<std::size_t>(limit);
    std::size_t done = CopyAscii(position, destination, count);
    for (; done < count && position[done] < 0x80; ++done)
        destination[done] = position[done];
    position += done;
    destination += done;
}

/// Copies the low bytes of 16-bit units; `count` is the number of units.
template <ByteOrder order>
std::size_t NarrowAscii(const unsigned char* source, unsigned char* destination,
                        std::size_t count) {
    using ascii_run::Bytes16;
    using ascii_run::LoadWord;
    constexpr std::uint64_t kNotAscii = order == ByteOrder::Little
                                            ? ascii_run::RepeatPair(0x80, 0xFF)
                                            : ascii_run::RepeatPair(0xFF, 0x80);
    std::size_t done = 0;
    while (count - done >= kAsciiBlock) {
        const unsigned char* units = source + 2 * done;
        Bytes16 low, high, packed;
        std::memcpy(&low, units, sizeof low);
        std::memcpy(&high, units + sizeof low, sizeof high);
        if constexpr (order == ByteOrder::Little) {
            packed = __builtin_shufflevector(low, high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22,
                                             24, 26, 28, 30);
        } else {
            packed = __builtin_shufflevector(low, high, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23,
                                             25, 27, 29, 31);
        }
        std::memcpy(destination + done, &packed, sizeof packed);
        const std::uint64_t first = LoadWord(units) | LoadWord(units + 8);
        const std::uint64_t second = LoadWord(units + 16) | LoadWord(units + 24);
        if (((first | second) & kNotAscii) != 0) {
            while ((LoadWord(units) & kNotAscii) == 0) {
                units += sizeof(std::uint64_t);
                done += sizeof(std::uint64_t) / 2;
            }
            return done + ascii_run::BytesBefore(LoadWord(units) & kNotAscii) / 2;
        }
        done += kAsciiBlock;
    }
    return done;
}

#if defined(__SSE2__)

/// Converts 16-bit units below 0x800 to UTF-8, as long as eight of them are left and there is room
/// for them, and advances both positions.
template <ByteOrder order>
void NarrowShortBlocks(const unsigned char*& source, const unsigned char* end,
                       unsigned char*& target, const unsigned char* destinationEnd) {
    constexpr std::ptrdiff_t kBytes = 16;
    // Copies: the bytes written might be those of the arguments, for all that the compiler knows.
    const unsigned char* position = source;
    unsigned char* destination = target;
    const auto every = [](int unit) { return _mm_set1_epi16(static_cast<short>(unit)); };
    while (end - position >= kBytes && destinationEnd - destination >= kBytes + 2) {
        __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(position));
        if constexpr (order == ByteOrder::Big) {
            units = _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8));
        }
        const __m128i isAscii = _mm_cmpeq_epi16(_mm_srli_epi16(units, 7), _mm_setzero_si128());
        const auto ascii = static_cast<unsigned>(_mm_movemask_epi8(isAscii));
        if (ascii == 0xFFFF) {
            _mm_storel_epi64(reinterpret_cast<__m128i*>(destination),
                             _mm_packus_epi16(units, units));
            position += kBytes;
            destination += kBytes / 2;
            continue;
        }
        const __m128i isShort = _mm_cmpeq_epi16(_mm_srli_epi16(units, 11), _mm_setzero_si128());
        if (_mm_movemask_epi8(isShort) != 0xFFFF) break;
        // A lane holds the bytes of its character, the first one in the low half.
        const __m128i leads = _mm_or_si128(_mm_srli_epi16(units, 6), every(0xC0));
        const __m128i trails = _mm_or_si128(_mm_and_si128(units, every(0x3F)), every(0x80));
        const __m128i pairs = _mm_or_si128(leads, _mm_slli_epi16(trails, 8));
        const __m128i bytes =
            _mm_or_si128(_mm_and_si128(isAscii, units), _mm_andnot_si128(isAscii, pairs));
        std::uint16_t lanes[8];
        std::memcpy(lanes, &bytes, sizeof lanes);
        for (unsigned i = 0; i < 8; ++i) {
            std::memcpy(destination, &lanes[i], sizeof lanes[i]);
            destination += 2 - (ascii >> 2 * i & 1);
        }
        position += kBytes;
    }
    source = position;
    target = destination;
}

#endif

/// Converts a few characters below 0x800 to UTF-8 without a branch on their length, which in mixed
/// text nothing predicts. `UnitAt` gives the character at a position; it stops before one that is
/// 0x800 or more, or when there may be no room, and advances both positions.
template <int unitSize, int (*UnitAt)(const unsigned char*)>
void WriteShortRun(const unsigned char*& position, const unsigned char* end,
                   unsigned char*& destination, const unsigned char* destinationEnd) {
    constexpr std::ptrdiff_t kCharacters = 8;  // then it is time to look for an ASCII run again
    std::ptrdiff_t count =
        std::min((end - position) / unitSize, (destinationEnd - destination) / 2);
    for (count = std::min(count, kCharacters); count > 0; --count) {
        const int code = UnitAt(position);
        if (code >= 0x800) break;
        const int isLong = (0x7F - code) >> 31 & 1;  // 1 for two bytes, 0 for ASCII
        const int lead = 0xC0 | code >> 6;
        destination[0] = static_cast<unsigned char>(code ^ ((code ^ lead) & -isLong));
        destination[1] = static_cast<unsigned char>(0x80 | (code & 0x3F));
        destination += 1 + isLong;
        position += unitSize;
    }
}

}  // namespace Xml::detail
