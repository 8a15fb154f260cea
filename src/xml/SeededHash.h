// SPDX-License-Identifier: MIT
#pragma once

// A hash that differs from process to process, so that nobody outside can choose keys that collide.
//
// The state is one 64-bit word. Each step takes 16 bytes of the key and multiplies two words of 64
// bits, each combined with secret or running state, into 128 bits, whose halves are folded
// together: every bit of input reaches every bit of output, at the price of one multiplication.
// Keys of up to 16 bytes, which most names are, take one step and the final one. The last step of a
// longer key overlaps the one before, so that few branches depend on the length.

#include "xml/FoldedProduct.h"

#include <atomic>
#include <cstdint>
#include <cstring>

namespace Xml::detail {

/// The fractional parts of the square roots of 2, 3 and 5, last bit set: odd numbers with about as
/// many ones as zeros and without pattern.
inline constexpr std::uint64_t kHashMultipliers[] = {0x6A09E667F3BCC909, 0xBB67AE8584CAA73B,
                                                     0x3C6EF372FE94F82B};

/// The seed of this process, or 0 before its first use.
extern std::atomic<std::uint64_t> processSeed;

/// Makes the seed, or returns the one that another thread made first.
std::uint64_t MakeProcessSeed();

template <typename Word>
std::uint64_t LoadWord(const char* bytes) {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Takes the 16 bytes at `bytes` into the state.
inline std::uint64_t HashStep(std::uint64_t state, const char* bytes, std::uint64_t multiplier) {
    return FoldedProduct(LoadWord<std::uint64_t>(bytes) ^ multiplier,
                         LoadWord<std::uint64_t>(bytes + 8) ^ state);
}

/// Returns the hash of `length` bytes under a seed.
inline unsigned HashWithSeed(std::uint64_t seed, const char* key, unsigned length) {
    std::uint64_t state = seed ^ (length * kHashMultipliers[2]);
    std::uint64_t first = 0;  // the last 16 bytes, or all of a shorter key
    std::uint64_t second = 0;
    if (length > 16) {
        const char* const end = key + length;
        if (length > 32) {  // two chains side by side, since each waits for its multiplication
            std::uint64_t other = state ^ kHashMultipliers[2];
            for (; key + 32 < end; key += 32) {
                state = HashStep(state, key, kHashMultipliers[0]);
                other = HashStep(other, key + 16, kHashMultipliers[1]);
            }
            other = HashStep(other, end - 32, kHashMultipliers[1]);
            state ^= other;
        } else {
            state = HashStep(state, key, kHashMultipliers[0]);
        }
        first = LoadWord<std::uint64_t>(end - 16);
        second = LoadWord<std::uint64_t>(end - 8);
    } else if (length >= 8) {
        first = LoadWord<std::uint64_t>(key);
        second = LoadWord<std::uint64_t>(key + length - 8);
    } else if (length >= 4) {
        first = LoadWord<std::uint32_t>(key);
        second = LoadWord<std::uint32_t>(key + length - 4);
    } else if (length > 0) {
        first = LoadWord<unsigned char>(key) | LoadWord<unsigned char>(key + length / 2) << 8 |
                LoadWord<unsigned char>(key + length - 1) << 16;
    }
    state = FoldedProduct(first ^ kHashMultipliers[1], second ^ state);
    const std::uint64_t hash =
        FoldedProduct(state ^ kHashMultipliers[0], seed ^ kHashMultipliers[2]);
    return static_cast<unsigned>(hash ^ (hash >> 32));
}

/// Returns the hash of `length` bytes under the seed of this process. It fits XmlHashSetKey(); use
/// it for every table whose keys come from input.
inline unsigned SeededHash(const char* key, unsigned length) {
    const std::uint64_t seed = processSeed.load(std::memory_order_relaxed);
    return HashWithSeed(seed != 0 ? seed : MakeProcessSeed(), key, length);
}

}  // namespace Xml::detail
