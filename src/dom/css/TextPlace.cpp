// SPDX-License-Identifier: MIT
#include "dom/css/TextPlace.h"

namespace Dom::CSS::detail {

namespace {

constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

TextPlace TextPlace::Behind(std::string_view text) const {
    TextPlace place = *this;
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

}  // namespace Dom::CSS::detail
