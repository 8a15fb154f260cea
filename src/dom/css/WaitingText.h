// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/ValueReading.h"
#include "dom/css/Weight.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// A text of properties that nobody has asked for yet, in one piece of memory with its characters.
class WaitingText {
public:
    /// Ends a text, wherever its memory comes from.
    struct Dispose {
        void operator()(const WaitingText* text) const {
            if (!text->isPlaced_) ::operator delete(const_cast<WaitingText*>(text));
        }
    };
    using Pointer = std::unique_ptr<const WaitingText, Dispose>;

    static Pointer Make(std::string_view text, const Weight& weight, ValueReading reading);

    /// Returns how many bytes PlaceAt() wants for a text of `length` bytes.
    static std::size_t SizeFor(std::size_t length) { return sizeof(WaitingText) + length; }
    /// Makes one in the memory of somebody else, who keeps that for as long as the text waits.
    static Pointer PlaceAt(void* memory, std::string_view text, const Weight& weight,
                           ValueReading reading) noexcept;

    WaitingText(const WaitingText&) = delete;
    WaitingText& operator=(const WaitingText&) = delete;

    std::string_view Text() const { return {reinterpret_cast<const char*>(this + 1), length_}; }
    const Weight& TheWeight() const { return weight_; }
    ValueReading Reading() const { return reading_; }

private:
    WaitingText(std::string_view text, const Weight& weight, ValueReading reading,
                bool isPlaced) noexcept;

    std::size_t length_;  // of the text behind this object
    Weight weight_;       // that its properties will have
    ValueReading reading_;
    bool isPlaced_;  // in memory of somebody else
};

}  // namespace Dom::CSS::detail
