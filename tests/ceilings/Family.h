// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// \file
/// Kinds of hostile input, and how much memory each may take.
namespace ceilings {

/// Inputs of one kind. What an input of `size` bytes takes at a time is at most `bytesPerByte`
/// times its size, and 256 KB for what is there in any case.
struct Family {
    const char* name;  // as docs/limits.md has it
    std::size_t bytesPerByte;

    /// Makes an input of about `size` bytes.
    std::string (*make)(std::size_t size);

    /// Takes it in, and destroys all that was made of it.
    void (*run)(const std::string& input);

    /// The message of the exception that ends the run; empty when it is taken in as a whole.
    const char* message = "";
};

/// For readers and events, in what stands below the document type.
std::span<const Family> XmlFamilies();

/// For readers that read document types.
std::span<const Family> DocumentTypeFamilies();

/// For trees.
std::span<const Family> TreeFamilies();

/// For sheets.
std::span<const Family> SheetFamilies();

/// For selectors, media queries and styles.
std::span<const Family> StyleFamilies();

/// Returns `text` as often as it takes to have `size` bytes, at least once.
std::string Filled(std::size_t size, std::string_view text);

/// Returns what `make` returns for 0, 1, 2 and so on, until there are `size` bytes.
template <typename Make>
std::string Numbered(std::size_t size, const Make& make) {
    std::string result;
    for (int i = 0; result.size() < size; ++i)
        result += make(std::to_string(i));
    return result;
}

/// Returns `begin` and `end` in equal number around `inside`.
std::string Nested(std::size_t size, std::string_view begin, std::string_view inside,
                   std::string_view end);

}  // namespace ceilings
