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

bool Has(std::string_view text, char character) { return text.find(character) != text.npos; }

// Counts the bytes that something is true of; by parts whose number fits into a byte, so that
// many bytes are counted at a time.
template <typename Predicate>
int Count(std::string_view text, Predicate isCounted) {
    constexpr std::size_t kPart = 255;
    int count = 0;
    while (!text.empty()) {
        unsigned char inPart = 0;
        for (const char byte : text.substr(0, kPart))
            inPart = static_cast<unsigned char>(inPart + (isCounted(byte) ? 1 : 0));
        count += inPart;
        text.remove_prefix(std::min(text.size(), kPart));
    }
    return count;
}

}  // namespace

// Nearly all texts have no line end but "\n", and these can be counted at once.
TextPlace TextPlace::Behind(std::string_view text) const {
    if (isBehindReturn || Has(text, '\r') || Has(text, '\f')) return BehindEach(*this, text);
    TextPlace place = *this;
    if (const int lines = Count(text, [](char byte) { return byte == '\n'; }); lines > 0) {
        place.line += lines;
        place.column = 1;
        text.remove_prefix(text.rfind('\n') + 1);
    }
    place.column += static_cast<int>(text.size()) - Count(text, IsContinuation);
    return place;
}

}  // namespace Dom::CSS::detail
