// SPDX-License-Identifier: MIT
//
// A hash that takes its input block by block into a state collides as often as one likes: where two
// blocks lead from one state to the same next one, either may be taken, and n such places give 2^n
// names. For states of 32 bits two blocks are found by trying some ten thousand; for the 64 bits of
// MurmurHash2 the second of two blocks is computed so that the next state is the one wanted.
#include "support/CollidingNames.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <unordered_map>

namespace support {
namespace {

using Choices = std::vector<std::vector<std::string>>;  // the blocks for each place

// Returns the first `count` names that take one block of each place.
std::vector<std::string> Combine(const Choices& places, std::size_t count) {
    std::vector<std::string> names = {""};
    for (const std::vector<std::string>& place : places) {
        std::vector<std::string> longer;
        for (const std::string& name : names) {
            for (const std::string& block : place)
                longer.push_back(name + block);
        }
        names = std::move(longer);
    }
    if (names.size() < count) throw std::logic_error("too few places");
    names.resize(count);
    return names;
}

std::string RandomLetters(std::mt19937_64& random, std::size_t length) {
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text.push_back(static_cast<char>('a' + random() % 26));
    }
    return text;
}

// The places for a hash whose state of 32 bits is changed by one byte after the other.
template <typename Step>
Choices PairsOfBlocks(const Step& step, std::uint32_t state, std::size_t placeCount) {
    std::mt19937_64 random(1);
    Choices places;
    while (places.size() < placeCount) {
        std::unordered_map<std::uint32_t, std::string> seen;
        for (;;) {
            const std::string block = RandomLetters(random, 7);
            std::uint32_t next = state;
            for (const char c : block)
                next = step(next, c);
            const auto [entry, isNew] = seen.try_emplace(next, block);
            if (isNew || entry->second == block) continue;
            places.push_back({entry->second, block});
            state = next;
            break;
        }
    }
    return places;
}

// One letter up and another one down leave the sum as it is.
Choices LettersOfOneSum() {
    std::vector<std::string> pairs;
    for (char c = 'a'; c <= 'z'; ++c) {
        pairs.push_back({c, static_cast<char>('a' + 'z' - c)});
    }
    return {pairs, pairs, pairs, pairs};
}

// MurmurHash2 of 64 bits: a block k changes the state h to (h ^ Mix(k)) * kMultiplier.
constexpr std::uint64_t kMultiplier = 0xC6A4A7935BD1E995;

constexpr std::uint64_t InverseOf(std::uint64_t odd) {
    std::uint64_t inverse = odd;
    for (int i = 0; i < 6; ++i)
        inverse *= 2 - odd * inverse;  // doubles the correct bits
    return inverse;
}

constexpr std::uint64_t kInverse = InverseOf(kMultiplier);
static_assert(kMultiplier * kInverse == 1);

constexpr std::uint64_t ShiftMix(std::uint64_t value) { return value ^ (value >> 47); }
constexpr std::uint64_t Mix(std::uint64_t block) {
    return ShiftMix(block * kMultiplier) * kMultiplier;
}
// ShiftMix() undoes itself, because it shifts by more than half of the bits.
constexpr std::uint64_t Unmix(std::uint64_t mixed) { return ShiftMix(mixed * kInverse) * kInverse; }
static_assert(Unmix(Mix(0x0123456789ABCDEF)) == 0x0123456789ABCDEF);

bool IsNameText(std::uint64_t block) {
    for (; block != 0; block >>= 8) {
        const std::uint64_t c = block & 0xFF;
        const bool isName = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                            (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_';
        if (!isName) return false;
    }
    return true;
}

std::string BytesOf(std::uint64_t block) {
    std::string bytes(sizeof block, '\0');
    std::memcpy(bytes.data(), &block, sizeof block);
    return bytes;
}

Choices PairsOfMurmurBlocks(std::size_t placeCount, std::size_t choiceCount) {
    constexpr std::uint64_t kSeed = 0xC70F6907;
    std::mt19937_64 random(2);
    std::uint64_t state = kSeed ^ (placeCount * 16 * kMultiplier);
    Choices places;
    while (places.size() < placeCount) {
        const std::uint64_t target = random();
        std::vector<std::string> choices;
        while (choices.size() < choiceCount) {
            const std::string first = RandomLetters(random, 8);
            std::uint64_t block = 0;
            std::memcpy(&block, first.data(), sizeof block);
            const std::uint64_t between = (state ^ Mix(block)) * kMultiplier;
            const std::uint64_t second = Unmix(between ^ (target * kInverse));
            if (second >> 56 != 0 && IsNameText(second)) choices.push_back(first + BytesOf(second));
        }
        places.push_back(choices);
        state = target;
    }
    return places;
}

}  // namespace

std::vector<std::string> CollidingNames(WeakHash hash, std::size_t count) {
    switch (hash) {
    case WeakHash::ByteSum: return Combine(LettersOfOneSum(), count);
    case WeakHash::Fnv1a: {
        const auto step = [](std::uint32_t state, char c) {
            return (state ^ static_cast<unsigned char>(c)) * 16777619U;
        };
        return Combine(PairsOfBlocks(step, 2166136261U, 18), count);
    }
    case WeakHash::Standard: return Combine(PairsOfMurmurBlocks(5, 16), count);
    case WeakHash::Map: {
        const auto step = [](std::uint32_t state, char c) {
            state = (state + static_cast<std::uint32_t>(static_cast<signed char>(c))) * 1025U;
            return state ^ (state >> 6);
        };
        return Combine(PairsOfBlocks(step, 0, 18), count);
    }
    }
    return {};
}

}  // namespace support
