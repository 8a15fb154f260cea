// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/Weight.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// A text of properties that nobody has asked for yet, in one piece of memory with its characters.
class WaitingText {
public:
    static std::unique_ptr<const WaitingText> Make(std::string_view text, const Weight& weight);

    WaitingText(const WaitingText&) = delete;
    WaitingText& operator=(const WaitingText&) = delete;

    std::string_view Text() const { return {reinterpret_cast<const char*>(this + 1), length_}; }
    const Weight& TheWeight() const { return weight_; }

    static void operator delete(void* memory) { ::operator delete(memory); }

private:
    WaitingText(std::size_t length, const Weight& weight) : length_(length), weight_(weight) {}

    static void* operator new(std::size_t size, std::size_t length) {
        return ::operator new(size + length);
    }

    char* Characters() { return reinterpret_cast<char*>(this + 1); }

    std::size_t length_;  // of the text behind this object
    Weight weight_;       // that its properties will have
};

}  // namespace Dom::CSS::detail
