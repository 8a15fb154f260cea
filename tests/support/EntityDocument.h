// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace support {

/// Writes random well-formed documents whose entities hold text, elements and references to
/// entities declared before them; the same row of documents for the same seed.
class EntityDocument {
public:
    explicit EntityDocument(unsigned seed) : random_(seed) {}

    /// Makes `subset` and `body` anew.
    void Write();

    /// Returns a number below `limit`.
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

    std::string subset;  ///< the document type declaration
    std::string body;    ///< the root element

private:
    std::string Text();
    std::string Reference(char kind, std::size_t limit);
    std::string Value(std::size_t limit);
    std::string Content(int depth, std::size_t limit);
    std::string Element(int depth, std::size_t limit);
    std::string OneOf(std::initializer_list<std::string_view> choices) {
        return std::string(choices.begin()[Below(choices.size())]);
    }

    std::mt19937 random_;
};

}  // namespace support
