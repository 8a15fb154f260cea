// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Dom::CSS::detail {

/// What kind of name a hash is of, so that "a", ".a" and "#a" are told apart.
enum class NameKind : std::uint8_t { Type, Class, Id };

/// Returns a hash of a name that selectors and elements have, which differs from run to run.
std::uint32_t HashOfName(NameKind kind, std::string_view name);

/// Tells of a name that neither an element nor any above it has it, mostly without looking: a Bloom
/// filter of their names, ids and classes.
///
/// So a selector such as ".menu a" is not compared with all ancestors of each "a" of a deep tree
/// that has no menu.
class AncestorFilter {
public:
    void Add(std::uint32_t hash) {
        Word(hash) |= Bit(hash);
        Word(hash >> 16) |= Bit(hash >> 16);
    }
    /// Tells whether a name may have been added; false is certain.
    bool MayHave(std::uint32_t hash) const {
        return (Word(hash) & Bit(hash)) != 0 && (Word(hash >> 16) & Bit(hash >> 16)) != 0;
    }

private:
    static constexpr std::size_t kWords = 4;

    static std::uint64_t Bit(std::uint32_t hash) { return std::uint64_t{1} << (hash & 63U); }
    std::uint64_t& Word(std::uint32_t hash) { return words_[(hash >> 6) % kWords]; }
    std::uint64_t Word(std::uint32_t hash) const { return words_[(hash >> 6) % kWords]; }

    std::array<std::uint64_t, kWords> words_{};
};

}  // namespace Dom::CSS::detail
