// SPDX-License-Identifier: MIT
#include "dom/css/DropRecorder.h"

#include "dom/css/CssCharacters.h"

#include <cstddef>
#include <string_view>

namespace Dom::CSS::detail {

namespace {

constexpr std::size_t kMostExcerpt = 80;

std::string_view TextBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// Returns the begin of a text, without a part of a character at its end.
std::string_view Excerpt(std::string_view text) {
    text = Trimmed(text);
    if (text.size() <= kMostExcerpt) return text;
    std::size_t length = kMostExcerpt;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        --length;
    return text.substr(0, length);
}

}  // namespace

SourcePlace DropRecorder::PlaceAt(const char* position) {
    place_ = place_.Behind(TextBetween(placed_, position));
    placed_ = position;
    return {place_.line, place_.column};
}

void DropRecorder::Drop(DroppedText::Kind kind, SourcePlace place, const char* begin,
                        const char* end, const char* reason) {
    dropped_->push_back({kind, place, Excerpt(TextBetween(begin, end)), reason});
}

}  // namespace Dom::CSS::detail
