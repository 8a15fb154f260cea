// SPDX-License-Identifier: MIT
#include "dom/css/TextPlace.h"

#include <algorithm>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Goes on from `place` character by character.
TextPlace BehindEach(TextPlace place, std::string_view text) {
    for (const char character : text) {
        const bool endsPair = character == '\n' && place.isBehindReturn;
        place.isBehindReturn = character == '\r';
        if (endsPair) continue;
        if (character == '\n' || character == '\r' || character == '\f') {
            ++place.line;
            place.column = 1;
        } else if (!IsContinuation(character)) {
            ++place.column;
        }
    }
    return place;
}

}  // namespace

// Nearly all texts have no line end but "\n", and these can be counted at once.
TextPlace TextPlace::Behind(std::string_view text) const {
    constexpr std::size_t kNone = std::string_view::npos;
    if (isBehindReturn || text.find('\r') != kNone || text.find('\f') != kNone) {
        return BehindEach(*this, text);
    }
    TextPlace place = *this;
    if (const std::size_t last = text.rfind('\n'); last != kNone) {
        place.line += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
        place.column = 1;
        text.remove_prefix(last + 1);
    }
    const auto continuations = std::count_if(text.begin(), text.end(), IsContinuation);
    place.column += static_cast<int>(text.size()) - static_cast<int>(continuations);
    return place;
}

}  // namespace Dom::CSS::detail
