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

}  // namespace

void SheetText::Take(std::string_view bytes) {
    const bool isBigEndian = form_ == SourceForm::Utf16LE && bytes.starts_with("\xFE\xFF");
    if (atStart_ && isBigEndian)
        decoder_ = SourceDecoder(SourceForm::Utf16BE, nullptr, BadBytes::Kept);
    atStart_ = false;
    text_ += decoder_.Decode(bytes);
}

void SheetText::MoveTo(Place place) {
    while (position_ < text_.size() && (IsBefore(place_, place) || IsAtBreak()))
        Step();
    Forget();
}

// Tells whether we are within CR LF, of which CR has been counted as the break.
bool SheetText::IsAtBreak() const { return isBehindReturn_ && text_[position_] == '\n'; }

void SheetText::Step() {
    const char byte = text_[position_];
    const bool endsPair = IsAtBreak();
    isBehindReturn_ = byte == '\r';
    if (kBreaks.find(byte) == std::string_view::npos) {
        const std::string_view rest = std::string_view(text_).substr(position_);
        position_ += std::max<std::size_t>(FirstCharacter(rest).length, 1);
        ++place_.column;
        return;
    }
    lineStart_ = ++position_;
    isLineCut_ = false;
    if (!endsPair) place_ = {place_.line + 1, 1};
}

void SheetText::Forget() {
    const std::size_t from = ShownFrom();
    if (from < kSlack) return;
    isLineCut_ = isLineCut_ || from > lineStart_;
    text_.erase(0, from);
    position_ -= from;
    lineStart_ = 0;
}

std::size_t SheetText::ShownFrom() const {
    return std::max(lineStart_, position_ - std::min(position_, kShown));
}

Excerpt SheetText::Line() const {
    const std::size_t from = ShownFrom();
    const std::string_view after = std::string_view(text_).substr(position_, kShown);
    const std::size_t end = after.find_first_of(kBreaks);
    Excerpt excerpt;
    excerpt.found = true;
    excerpt.place = place_;
    excerpt.before = text_.substr(from, position_ - from);
    excerpt.after = after.substr(0, end);
    excerpt.cutBefore = isLineCut_ || from > lineStart_;
    excerpt.cutAfter = end == std::string_view::npos && text_.size() - position_ > kShown;
    return excerpt;
}

}  // namespace Tool
