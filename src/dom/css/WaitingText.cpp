// SPDX-License-Identifier: MIT
#include "dom/css/WaitingText.h"

#include <algorithm>
#include <new>

namespace Dom::CSS::detail {

WaitingText::WaitingText(std::string_view text, const Weight& weight, ValueReading reading,
                         bool isPlaced) noexcept
    : length_(text.size()), weight_(weight), reading_(reading), isPlaced_(isPlaced) {
    std::copy(text.begin(), text.end(), reinterpret_cast<char*>(this + 1));
}

WaitingText::Pointer WaitingText::Make(std::string_view text, const Weight& weight,
                                       ValueReading reading) {
    void* const memory = ::operator new(SizeFor(text.size()));
    return Pointer(::new (memory) WaitingText(text, weight, reading, false));
}

WaitingText::Pointer WaitingText::PlaceAt(void* memory, std::string_view text, const Weight& weight,
                                          ValueReading reading) noexcept {
    return Pointer(::new (memory) WaitingText(text, weight, reading, true));
}

}  // namespace Dom::CSS::detail
