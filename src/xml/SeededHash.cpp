// SPDX-License-Identifier: MIT
#include "xml/SeededHash.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <exception>
#include <random>

// The state is one 64-bit word. Each step takes 16 bytes of the key and multiplies two words of 64
// bits, each combined with secret or running state, into 128 bits, whose halves are folded
// together: every bit of input reaches every bit of output, at the price of one multiplication.
// Keys of up to 16 bytes, which most names are, take one step and the final one.

namespace Xml::detail {
namespace {

// Odd numbers with about as many ones as zeros and without pattern: the fractional parts of the
// square roots of 2, 3 and 5, last bit set.
constexpr std::uint64_t kMultiplier1 = 0x6A09E667F3BCC909;
constexpr std::uint64_t kMultiplier2 = 0xBB67AE8584CAA73B;
constexpr std::uint64_t kMultiplier3 = 0x3C6EF372FE94F82B;

std::atomic<std::uint64_t> processSeed{0};  // 0 until the first use

std::uint64_t MakeSeed() {
    std::uint64_t seed = 0;
    try {
        std::random_device device;
        seed = (std::uint64_t{device()} << 32) ^ device();
    } catch (const std::exception&) {  // no source of randomness: time and address space layout
        const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
        seed = static_cast<std::uint64_t>(ticks) ^ reinterpret_cast<std::uintptr_t>(&seed);
    }
    if (seed == 0) seed = kMultiplier1;
    std::uint64_t expected = 0;
    // Of several threads that come here at once, the first one decides.
    return processSeed.compare_exchange_strong(expected, seed) ? seed : expected;
}

std::uint64_t Seed() {
    const std::uint64_t seed = processSeed.load(std::memory_order_relaxed);
    return seed != 0 ? seed : MakeSeed();
}

std::uint64_t Load64(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

std::uint64_t Load32(const char* bytes) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{a} * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

std::uint64_t Byte(const char* bytes) { return static_cast<unsigned char>(*bytes); }

}  // namespace

unsigned SeededHash(const char* key, unsigned length) {
    const std::uint64_t seed = Seed();
    std::uint64_t state = seed ^ (length * kMultiplier3);
    std::uint64_t first = 0;  // the last 16 bytes, or all of a shorter key
    std::uint64_t second = 0;
    if (length > 16) {
        const char* const last = key + length - 16;
        for (; key < last; key += 16) {
            state = Mix(Load64(key) ^ kMultiplier1, Load64(key + 8) ^ state);
        }
        first = Load64(last);
        second = Load64(last + 8);
    } else if (length >= 8) {
        first = Load64(key);
        second = Load64(key + length - 8);
    } else if (length >= 4) {
        first = Load32(key);
        second = Load32(key + length - 4);
    } else if (length > 0) {
        first = Byte(key) | Byte(key + length / 2) << 8 | Byte(key + length - 1) << 16;
    }
    state = Mix(first ^ kMultiplier2, second ^ state);
    const std::uint64_t hash = Mix(state ^ kMultiplier1, seed ^ kMultiplier3);
    return static_cast<unsigned>(hash ^ (hash >> 32));
}

}  // namespace Xml::detail
