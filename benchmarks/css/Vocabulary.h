// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace bench {

// The names that a made page and its made style sheet share.

inline constexpr const char* kElementNames[] = {
    "div",   "span", "p",      "a",     "li",    "ul",      "td",     "tr",
    "table", "h2",   "h3",     "img",   "em",    "strong",  "label",  "input",
    "form",  "code", "button", "small", "tbody", "section", "dl",     "dt",
    "dd",    "pre",  "ol",     "th",    "h1",    "h4",      "select", "legend",
};

inline constexpr const char* kComponents[] = {"nav",   "card",  "btn",    "list",   "form",
                                              "grid",  "panel", "modal",  "alert",  "media",
                                              "badge", "page",  "footer", "header", "sidebar"};

inline constexpr const char* kParts[] = {"",      "-item", "-title", "-body",
                                         "-link", "-icon", "-label", "-group"};

inline constexpr const char* kVariants[] = {"", "-sm", "-lg", "-active", "-wide"};

/// Makes choices that are the same in every run and with every library.
class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}

    /// Returns a number from 0 to `count` - 1.
    unsigned Below(unsigned count) { return static_cast<unsigned>(random_() % count); }

    template <typename T, std::size_t kCount>
    const T& OneOf(const T (&choices)[kCount]) {
        return choices[Below(static_cast<unsigned>(kCount))];
    }

    std::string ElementName() { return OneOf(kElementNames); }
    /// Returns one of 600 names.
    std::string ClassName() {
        std::string name = OneOf(kComponents);
        name += OneOf(kParts);
        return name += OneOf(kVariants);
    }
    /// Returns one of 450 names.
    std::string Id() {
        std::string name = OneOf(kComponents);
        return (name += '-') += std::to_string(Below(30));
    }

private:
    std::mt19937 random_;
};

}  // namespace bench
