// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

/// Writes small random documents with an internal subset, the same row of them for the same seed.
///
/// They are well-formed: an entity refers only to those declared before it, what is referred to in
/// an attribute holds no "<" and nothing external, and elements end in the entity they begin in.
class EntityDocument {
public:
    explicit EntityDocument(unsigned seed) : random_(seed) {}

    std::string Write();

private:
    // What a general entity may be used for.
    struct Entity {
        std::string name;
        bool mayBeInValue = false;
    };

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }
    std::string_view OneOf(std::initializer_list<std::string_view> choices) {
        return choices.begin()[Below(choices.size())];
    }

    char Quote() { return Below(2) == 0 ? '"' : '\''; }

    void AddDeclarations(std::string& out);
    void AddDeclaration(std::string& out);
    void AddEntity(std::string& out);
    void AddOther(std::string& out);

    std::string Content(int depth);
    std::string Element(int depth);
    std::string Value();
    std::string Words();

    std::mt19937 random_;
    std::vector<Entity> entities_;  // in the order of their declarations
    bool hasNotation_ = false;
    char valueQuote_ = 0;  // what values of attributes stand in; 0: either
};

}  // namespace differential
