// SPDX-License-Identifier: MIT
#include "xml/SeededHash.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

using Xml::detail::FoldedProduct;
using Xml::detail::FoldedProductOfHalves;
using Xml::detail::HashWithSeed;
using Xml::detail::SeededHash;

TEST(SeededHash, IsTheSameWithinAProcess) {
    EXPECT_EQ(SeededHash("name", 4), SeededHash("name", 4));
    EXPECT_EQ(SeededHash("name", 4), HashWithSeed(Xml::detail::processSeed, "name", 4));
}

TEST(SeededHash, DependsOnTheSeed) {
    int same = 0;
    for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
        same += HashWithSeed(seed, "name", 4) == HashWithSeed(seed + 1, "name", 4);
    }
    EXPECT_LE(same, 1);
}

TEST(SeededHash, ReadsEveryByteAndNoOther) {
    // A change of any one bit of a key changes about half of the bits of the hash.
    for (unsigned length = 1; length <= 100; ++length) {
        const auto key = std::make_unique<char[]>(length);  // exact, so that a sanitizer sees more
        std::fill_n(key.get(), length, 'k');
        double changed = 0;
        for (unsigned bit = 0; bit < length * 8; ++bit) {
            const unsigned before = SeededHash(key.get(), length);
            const auto mask = static_cast<char>(1u << bit % 8);
            key[bit / 8] = static_cast<char>(key[bit / 8] ^ mask);
            const unsigned after = SeededHash(key.get(), length);
            key[bit / 8] = static_cast<char>(key[bit / 8] ^ mask);
            ASSERT_NE(before, after) << "bit " << bit << " of " << length << " bytes";
            changed += std::popcount(before ^ after);
        }
        EXPECT_NEAR(changed / (length * 8.0), 16.0, 5.0) << length;
    }
}

TEST(SeededHash, TellsLengthsApart) {
    std::unordered_set<unsigned> hashes;
    const std::string zeros(200, '\0');
    for (unsigned length = 0; length <= 200; ++length) {
        hashes.insert(SeededHash(zeros.data(), length));
    }
    EXPECT_GE(hashes.size(), 200u);
}

TEST(SeededHash, TellsSwappedWordsApart) {
    const std::string first = "aaaaaaaabbbbbbbbccccccccdddddddd";
    for (const unsigned repeats : {1u, 2u, 3u}) {
        std::string key;
        for (unsigned time = 0; time < repeats; ++time) {
            key += first;
        }
        const auto length = static_cast<unsigned>(key.size());
        const unsigned hash = SeededHash(key.data(), length);
        for (std::size_t a = 0; a < key.size(); a += 8) {
            for (std::size_t b = a + 8; b < key.size(); b += 8) {
                if (key[a] == key[b]) continue;
                std::string swapped = key;
                std::swap_ranges(swapped.begin() + static_cast<std::ptrdiff_t>(a),
                                 swapped.begin() + static_cast<std::ptrdiff_t>(a + 8),
                                 swapped.begin() + static_cast<std::ptrdiff_t>(b));
                EXPECT_NE(SeededHash(swapped.data(), length), hash) << a << " and " << b;
            }
        }
    }
}

TEST(SeededHash, SpreadsNumberedNamesEvenlyInTheLowBits) {
    constexpr unsigned kBuckets = 1024;
    constexpr unsigned kKeys = 64 * kBuckets;
    std::vector<double> counts(kBuckets);
    for (unsigned number = 0; number < kKeys; ++number) {
        const std::string key = "item" + std::to_string(number);
        counts[SeededHash(key.data(), static_cast<unsigned>(key.size())) % kBuckets] += 1;
    }
    double chiSquare = 0;
    for (const double count : counts) {
        chiSquare += (count - 64) * (count - 64) / 64;
    }
    // 1023 degrees of freedom: mean 1023, standard deviation 45; eight deviations never happen.
    EXPECT_NEAR(chiSquare, 1023, 8 * 45);
}

TEST(FoldedProduct, IsTheSameOnEveryMachine) {
    struct Case {
        std::uint64_t a;
        std::uint64_t b;
        std::uint64_t folded;
    };
    constexpr std::uint64_t kAllOnes = ~std::uint64_t{0};
    constexpr Case cases[] = {
        {0, kAllOnes, 0},
        {1, kAllOnes, kAllOnes},
        {kAllOnes, kAllOnes, kAllOnes},
        {std::uint64_t{1} << 32, std::uint64_t{1} << 32, 1},
        {0xFFFFFFFF, 0xFFFFFFFF00000001, 0x100000001},
        {0x9E3779B97F4A7C15, 0x6A09E667F3BCC909, 0x864BF3A52FFA9138},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FoldedProduct(c.a, c.b), c.folded) << c.a << " * " << c.b;
        EXPECT_EQ(FoldedProductOfHalves(c.a, c.b), c.folded) << c.a << " * " << c.b;
        EXPECT_EQ(FoldedProductOfHalves(c.b, c.a), c.folded) << c.b << " * " << c.a;
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 10000; ++i) {
        const std::uint64_t a = random() >> i % 64;
        const std::uint64_t b = random() >> i / 64 % 64;
        ASSERT_EQ(FoldedProductOfHalves(a, b), FoldedProduct(a, b)) << a << " * " << b;
    }
}

}  // namespace
