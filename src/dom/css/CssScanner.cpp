// SPDX-License-Identifier: MIT
#include "dom/css/CssScanner.h"

#include "dom/css/ByteRun.h"
#include "dom/css/CssCharacters.h"

#include <algorithm>

namespace Dom::CSS::detail {

void CssScanner::DropRead() {
    place_ = PlaceOf(position_);
    text_.erase(0, position_);
    position_ = 0;
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

bool CssScanner::SkipComment() {
    if (!IsCommentAt(position_)) return false;
    position_ = FindEndOfComment(position_ + 2);
    return true;
}

bool CssScanner::ScanName() {
    if (!Has(position_) || !IsLetter(text_[position_])) return false;
    const std::size_t begin = position_;
    position_ = BehindAll(begin, kPlainName);
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
            if (character == '"' || character == '\'') {
                TakeString(character);
            } else {
                position_ = BehindAll(position_, kValuePart);
            }
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

bool CssScanner::AppendPlainProperty(astring& text, std::string_view separator) {
    const char* const end = text_.end();
    const char* at = text_.begin() + position_;
    const auto skipBlanks = [&at] {
        while (Is(*at, kBlank))  // not the NUL at the end
            ++at;
        return at;
    };
    if (*at == ';') ++at;
    const char* const name = skipBlanks();
    if (!IsLetter(*name)) return false;
    const char* const nameEnd = at = BehindRun<PlainNameRun>(name, end);
    if (*skipBlanks() != ':') return false;
    ++at;
    const char* const value = skipBlanks();
    const char* valueEnd = at = BehindRun<PlainValueRun>(value, end);
    if (valueEnd == value || (*at != ';' && *at != '}')) return false;
    while (Is(valueEnd[-1], kBlank))
        --valueEnd;
    text.append(separator);
    if (value - nameEnd == 2 && nameEnd[0] == ':' && nameEnd[1] == ' ') {
        text.append({name, static_cast<std::size_t>(valueEnd - name)});  // as it is to be
    } else {
        text.append({name, static_cast<std::size_t>(nameEnd - name)});
        text.append(": ").append({value, static_cast<std::size_t>(valueEnd - value)});
    }
    position_ = static_cast<std::size_t>(at - text_.begin());
    return true;
}

void CssScanner::SkipToClosingBrace() {
    const char* at = text_.begin() + position_;
    if (*at == ';') ++at;
    if (!Is(*at, kBlank)) return;
    do {
        ++at;
    } while (Is(*at, kBlank));
    if (*at == '}') position_ = static_cast<std::size_t>(at - text_.begin());
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

}  // namespace Dom::CSS::detail
