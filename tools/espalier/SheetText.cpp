// SPDX-License-Identifier: MIT
#include "SheetText.h"

#include "Utf8.h"

#include <algorithm>
#include <tuple>

namespace Tool {

namespace {

constexpr std::string_view kBreaks = "\n\r\f";

bool IsBefore(const Place& a, const Place& b) {
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

// Returns the first place in a text, up to `most`, that is not within a character.
std::size_t NextCharacter(std::string_view text, std::size_t most) {
    std::size_t at = 0;
    while (at < most && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80)
        ++at;
    return at;
}

}  // namespace

void SheetText::MoveTo(Place place) {
    while (position_ < text_.size() && (IsBefore(place_, place) || IsAtBreak()))
        Step();
}

// Tells whether we are within CR LF, of which CR has been counted as the break.
bool SheetText::IsAtBreak() const { return isBehindReturn_ && text_[position_] == '\n'; }

void SheetText::Step() {
    const char byte = text_[position_];
    const bool endsPair = IsAtBreak();
    isBehindReturn_ = byte == '\r';
    if (kBreaks.find(byte) == std::string_view::npos) {
        position_ += std::max<std::size_t>(FirstCharacter(text_.substr(position_)).length, 1);
        ++place_.column;
        return;
    }
    lineStart_ = ++position_;
    if (!endsPair) place_ = {place_.line + 1, 1};
}

Excerpt SheetText::Line() const {
    const std::size_t shownFrom = position_ - std::min(position_, kShown);
    std::size_t from = lineStart_;
    if (shownFrom > from) {
        from = shownFrom + NextCharacter(text_.substr(shownFrom), position_ - shownFrom);
    }
    const std::string_view after = text_.substr(position_, kShown);
    const std::size_t end = after.find_first_of(kBreaks);
    Excerpt excerpt;
    excerpt.found = true;
    excerpt.place = place_;
    excerpt.before = text_.substr(from, position_ - from);
    excerpt.after = after.substr(0, end);
    excerpt.cutBefore = from > lineStart_;
    excerpt.cutAfter = end == std::string_view::npos && text_.size() - position_ > kShown;
    return excerpt;
}

}  // namespace Tool
