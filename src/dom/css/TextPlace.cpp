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

struct LineEnds {
    int feeds = 0;           // "\n"
    bool hasOthers = false;  // "\r" or "\f"
};

// Goes by parts whose numbers fit into a byte, so that many bytes are looked at at a time.
LineEnds FindLineEnds(std::string_view text) {
    constexpr std::size_t kPart = 255;
    LineEnds ends;
    while (!text.empty()) {
        unsigned char feeds = 0;
        unsigned char others = 0;
        for (const char byte : text.substr(0, kPart)) {
            feeds = static_cast<unsigned char>(feeds + (byte == '\n'));
            others = static_cast<unsigned char>(others | ((byte == '\r') | (byte == '\f')));
        }
        ends.feeds += feeds;
        ends.hasOthers = ends.hasOthers || others != 0;
        text.remove_prefix(std::min(text.size(), kPart));
    }
    return ends;
}

}  // namespace

// Nearly all texts have no line end but "\n", and these can be counted at once.
TextPlace TextPlace::Behind(std::string_view text) const {
    const LineEnds ends = FindLineEnds(text);
    if (isBehindReturn || ends.hasOthers) return BehindEach(*this, text);
    TextPlace place = *this;
    if (ends.feeds > 0) {
        place.line += ends.feeds;
        place.column = 1;
        text.remove_prefix(text.rfind('\n') + 1);
    }
    const auto continuations = std::count_if(text.begin(), text.end(), IsContinuation);
    place.column += static_cast<int>(text.size()) - static_cast<int>(continuations);
    return place;
}

}  // namespace Dom::CSS::detail
