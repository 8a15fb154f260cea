// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace support {

/// Writes random documents, the same row of them for the same seed.
///
/// They are made after the grammar, of few names, so that names come again, and of texts and values
/// of all lengths around those that matter to the reader. Mutate() makes them wrong.
class RandomDocument {
public:
    explicit RandomDocument(unsigned seed) : random_(seed) {}

    /// Returns a document that is well-formed but for the bindings of its prefixes, the names of
    /// its attributes and entities that nothing declares.
    std::string Write();

    /// Changes, inserts, removes or repeats some bytes.
    void Mutate(std::string& document);

    /// Returns a number below `limit`.
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

private:
    void AddMisc(std::string& out);
    void AddElement(std::string& out, int depth);
    void AddAttributes(std::string& out);
    void AddContent(std::string& out, int depth);
    std::string Name();
    std::string Value(char quote);
    std::string Text(std::string_view forbidden);
    std::string Blanks(std::size_t least);
    std::string_view OneOf(std::initializer_list<std::string_view> choices) {
        return choices.begin()[Below(choices.size())];
    }

    std::mt19937 random_;
};

}  // namespace support
