// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>

namespace Xml {

/// A text that is handed to a function: made from an astring, a `const char*`, a std::string_view
/// or a std::string, and valid while that is. A null pointer is an empty text, and tells functions
/// that ask for it that nothing was given.
class TextArgument {
public:
    constexpr TextArgument() = default;
    constexpr TextArgument(std::nullptr_t) {}
    constexpr TextArgument(const char* text)
        : text_(text == nullptr ? std::string_view() : std::string_view(text)) {}
    template <typename Text>
    requires std::convertible_to<const Text&, std::string_view> &&
        (!std::convertible_to<const Text&, const char*>)constexpr TextArgument(const Text& text)
        : text_(static_cast<std::string_view>(text)) {}

    /// Returns the text.
    constexpr std::string_view view() const { return text_; }

    /// Tells whether the text has no bytes, be it given or not.
    constexpr bool empty() const { return text_.empty(); }

    /// Tells whether there is a text, be it empty.
    constexpr bool isGiven() const { return text_.data() != nullptr; }

private:
    std::string_view text_;
};

}  // namespace Xml
