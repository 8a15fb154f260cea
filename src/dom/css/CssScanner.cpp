// SPDX-License-Identifier: MIT
#include "dom/css/CssScanner.h"

#include "dom/css/CssCharacters.h"

namespace Dom::CSS::detail {

void CssScanner::Begin() {
    if (position_ > kKept) {
        place_ = PlaceOf(position_);
        text_.erase(0, position_);
        position_ = 0;
    }
    start_ = position_;
    name_ = value_ = priority_ = {position_, position_};
    hasComments_ = false;
}

TextPlace CssScanner::PlaceOf(std::size_t position) const {
    return place_.Behind(text_.view().substr(0, position));
}

void CssScanner::Close() {
    source.Close();
    text_ = joined_ = astring();
    position_ = 0;
    Begin();
}

bool CssScanner::ReadUpTo(std::size_t position) {
    while (position >= text_.length()) {
        if (!source.AppendPiece(text_)) return false;
    }
    return true;
}

bool CssScanner::ScanOne(char character) {
    if (!Has(position_) || text_[position_] != character) return false;
    ++position_;
    return true;
}

std::size_t CssScanner::BehindSpace(std::size_t position) {
    while (Has(position) && IsSpace(text_[position]))
        ++position;
    return position;
}

bool CssScanner::ScanSpace() {
    const std::size_t begin = position_;
    position_ = BehindSpace(begin);
    return position_ > begin;
}

bool CssScanner::IsCommentAt(std::size_t position) {
    return Has(position + 1) && text_[position] == '/' && text_[position + 1] == '*';
}

// Returns the place behind "*/", or the end of the text.
std::size_t CssScanner::FindEndOfComment(std::size_t position) {
    while (true) {
        const std::size_t found = text_.find("*/", position);
        if (found != astring::npos) return found + 2;
        const std::size_t length = text_.length();
        if (!ReadUpTo(length)) return length;
        position = std::max(position, length - 1);  // the "*" may be the last that was there
    }
}

bool CssScanner::ScanComment() {
    if (!IsCommentAt(position_)) return false;
    position_ = FindEndOfComment(position_ + 2);
    return true;
}

bool CssScanner::ScanName() {
    if (!Has(position_) || !IsLetter(text_[position_])) return false;
    const std::size_t begin = position_;
    do {
        ++position_;
    } while (Has(position_) && IsInName(text_[position_]));
    name_ = {begin, position_};
    return true;
}

bool CssScanner::ScanSelector() {
    const std::size_t begin = position_;
    while (Has(position_)) {
        const std::size_t found = text_.find('{', position_);
        if (found != astring::npos) {
            position_ = found;
            return position_ > begin;
        }
        position_ = text_.length();
    }
    return false;
}

// Deliberate: the first character is taken whatever it is. So a value that is missing takes the
// ";" and goes on to the next one.
void CssScanner::ScanValue() {
    value_ = {position_, position_};
    std::size_t pieceBegin = position_;
    while (Has(position_)) {
        const char character = text_[position_];
        if (character == '/' && IsCommentAt(position_)) {
            LeaveOutComment(pieceBegin);
        } else {
            ++position_;
            if (character == '"' || character == '\'') TakeString(character);
        }
        if (!ValueGoesOn()) break;
    }
    value_.end = position_;
    if (hasComments_) joined_.append(Between({pieceBegin, position_}));
}

// Moves behind the quote that ends a string, or to the end of the text.
void CssScanner::TakeString(char quote) {
    while (Has(position_)) {
        const char character = text_[position_++];
        if (character == quote) return;
        if (character == '\\' && Has(position_)) ++position_;
    }
}

void CssScanner::LeaveOutComment(std::size_t& pieceBegin) {
    if (!hasComments_) joined_.clear();
    hasComments_ = true;
    joined_.append(Between({pieceBegin, position_}));
    position_ = pieceBegin = FindEndOfComment(position_ + 2);
}

// Takes white space into the value unless it is the last of it. Returns false at the end.
bool CssScanner::ValueGoesOn() {
    const std::size_t behind = BehindSpace(position_);
    const bool isSpace = behind > position_;
    if (!Has(behind)) {
        if (isSpace) position_ = behind;
        return false;
    }
    if (text_[behind] == '}' || text_[behind] == ';') return false;
    position_ = behind;
    return true;
}

// Deliberate: letters count from right behind the "!", so with white space there they are none.
bool CssScanner::ScanPriority() {
    const std::size_t mark = BehindSpace(position_);
    if (!Has(mark) || text_[mark] != '!') return false;
    std::size_t end = mark + 1;
    while (Has(end) && IsLetter(text_[end]))
        ++end;
    priority_ = {mark + 1, end};
    position_ = end;
    return end > mark + 1;
}

void CssScanner::SkipSpaceAndComments() {
    while (ScanSpace() || ScanComment()) {
    }
}

}  // namespace Dom::CSS::detail
