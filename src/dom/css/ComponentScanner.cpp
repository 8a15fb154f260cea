// SPDX-License-Identifier: MIT
//
// Most characters of a sheet mean nothing here and are passed over in a loop without a decision
// but one; what is looked at is marked in a table. Brackets are remembered in a text, not on the
// stack.
#include "dom/css/ComponentScanner.h"

#include <espalier/base/astring.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/TextCursor.h"

#include <array>
#include <cstddef>
#include <cstring>

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kUrlName = "url";

enum Mark : unsigned char {
    kLookedAt = 1,     // in component values
    kEndsString = 2,   // or is looked at in one
    kEndsAddress = 4,  // or is looked at in one without quotes
};

consteval std::array<unsigned char, 256> MakeMarks() {
    std::array<unsigned char, 256> marks{};
    const auto mark = [&marks](std::string_view characters, unsigned flag) {
        for (const char character : characters)
            marks[static_cast<unsigned char>(character)] |= static_cast<unsigned char>(flag);
    };
    mark({"\0", 1}, kLookedAt | kEndsString | kEndsAddress);
    mark("\"'()[]{};!\\/", kLookedAt);
    mark("\"'\\\n\r\f;!", kEndsString);
    mark("\"'()\\ \t\n\r\f;!", kEndsAddress);
    for (std::size_t i = 1; i < 32; ++i)
        marks[i] |= kEndsAddress;
    marks[0x7F] |= kEndsAddress;
    return marks;
}

constexpr std::array<unsigned char, 256> kMarks = MakeMarks();

const char* FindMark(const char* at, unsigned mark) {
    while ((kMarks[static_cast<unsigned char>(*at)] & mark) == 0)
        ++at;
    return at;
}

// Returns the place behind an escape (section 4.3.7), whose number takes one white space along.
const char* BehindEscape(const char* backslash) {
    constexpr int kMostDigits = 6;
    const char* at = backslash + 1;
    if (HexDigit(*at) < 0) return *at == '\0' ? at : at + 1;
    for (int digits = 0; digits < kMostDigits && HexDigit(*at) >= 0; ++digits)
        ++at;
    if (*at == '\r' && at[1] == '\n') return at + 2;
    return Is(*at, kBlank) ? at + 1 : at;
}

bool IsBreak(char character) { return character == '\n' || character == '\r' || character == '\f'; }

}  // namespace

bool IsEscape(const char* backslash) { return !IsBreak(backslash[1]); }

void ComponentScanner::SkipComment() {
    at_ += 2;
    while (const char* const star = std::strchr(at_, '*')) {
        at_ = star + 1;
        if (*at_ != '/') continue;
        ++at_;
        return;
    }
    at_ += std::strlen(at_);
}

bool ComponentScanner::SkipSpace() {
    bool hasComment = false;
    for (;;) {
        while (Is(*at_, kBlank))
            ++at_;
        if (*at_ != '/' || at_[1] != '*') return hasComment;
        SkipComment();
        hasComment = true;
    }
}

std::string_view ComponentScanner::SkipName() {
    const char* const begin = at_;
    while (Is(*at_, kName))
        ++at_;
    while (*at_ == '\\' && IsEscape(at_)) {
        astring buffer;
        TextCursor cursor(at_);
        if (ReadName(cursor, buffer).empty()) break;
        at_ = cursor.at;
    }
    return {begin, static_cast<std::size_t>(at_ - begin)};
}

bool ComponentScanner::StopsAt(unsigned stops) const {
    if (!open_.empty()) return false;
    switch (*at_) {
    case ';': return (stops & kSemicolon) != 0;
    case '{': return (stops & kOpeningBrace) != 0;
    case '}': return (stops & kClosingBrace) != 0;
    default: return false;
    }
}

// \param stops of Stop, when it is not one component that is passed over
template <bool OfOneComponent>
unsigned ComponentScanner::Scan(unsigned stops) {
    seen_ = 0;
    begin_ = at_;
    open_.clear();
    for (;;) {
        at_ = FindMark(at_, kLookedAt);
        if (*at_ == '\0') break;
        if (!OfOneComponent && StopsAt(stops)) return seen_;
        switch (*at_) {
        case '"':
        case '\'': ScanString(); break;
        case '\\': ScanEscape(); break;
        case '/': ScanSlash(); break;
        case '!': ScanBang(); break;
        case ';':
            seen_ |= kHiddenEnd;
            ++at_;
            break;
        default: ScanBracket(); break;
        }
        if (OfOneComponent && open_.empty()) return seen_;
    }
    if (!open_.empty()) seen_ |= kUnclosed;
    return seen_;
}

unsigned ComponentScanner::ScanTo(unsigned stops) { return Scan<false>(stops); }

unsigned ComponentScanner::ScanComponent() { return Scan<true>(0); }

std::string ComponentScanner::WithoutComments() {
    std::string bare;
    bare_ = &bare;
    kept_ = at_;
    ScanTo(0);
    bare.append(kept_, at_);
    bare_ = nullptr;
    return bare;
}

void ComponentScanner::ScanSlash() {
    if (at_[1] != '*') {
        ++at_;
        return;
    }
    seen_ |= kComment;
    if (bare_ != nullptr) bare_->append(kept_, at_) += ' ';
    SkipComment();
    kept_ = at_;
}

void ComponentScanner::ScanBang() {
    if (open_.empty()) {
        seen_ |= (seen_ & kBang) != 0 ? kBangs : kBang;
        lastBang_ = at_;
    } else {
        seen_ |= kHiddenEnd;
    }
    ++at_;
}

bool ComponentScanner::Close(char bracket) {
    if (open_.empty() || open_.back() != bracket) return false;
    open_.pop_back();
    return true;
}

// Section 5.4.8: within a block only its own bracket ends it; others without a partner are errors.
void ComponentScanner::ScanBracket() {
    switch (*at_) {
    case '(':
        if (IsAddress()) return ScanAddress();
        open_ += ')';
        break;
    case '[': open_ += ']'; break;
    case '{':
        if (open_.empty()) seen_ |= kBlock;
        open_ += '}';
        break;
    default:
        if (!Close(*at_)) seen_ |= kBad;
        break;
    }
    ++at_;
}

// Passes over an escape in a string or an address.
void ComponentScanner::SkipEscape() {
    if (at_[1] == ';' || at_[1] == '!') seen_ |= kHiddenEnd;
    at_ = BehindEscape(at_);
}

// Section 4.3.5. The end of a line is left for who comes next.
void ComponentScanner::ScanString() {
    const char quote = *at_++;
    for (;;) {
        at_ = FindMark(at_, kEndsString);
        switch (*at_) {
        case '\0': open_ += quote; return;
        case '\n':
        case '\r':
        case '\f': seen_ |= kBad; return;
        case '\\':
            if (IsEscape(at_)) {
                SkipEscape();
            } else {
                at_ += at_[1] == '\r' && at_[2] == '\n' ? 3 : 2;
            }
            continue;
        case ';':
        case '!': seen_ |= kHiddenEnd; break;
        default:
            if (*at_ != quote) break;
            ++at_;
            return;
        }
        ++at_;
    }
}

// Goes through a whole name, for it may spell "url" with escapes.
void ComponentScanner::ScanEscape() {
    if (!IsEscape(at_)) {
        seen_ |= kBad;
        ++at_;
        return;
    }
    const char* begin = at_;
    while (begin != begin_ && Is(begin[-1], kName))
        --begin;
    astring buffer;
    TextCursor cursor(begin);
    const std::string_view name = ReadName(cursor, buffer);
    if (cursor.at <= at_) {  // the backslash is the last character
        ++at_;
        return;
    }
    at_ = cursor.at;
    if (cursor.Since(begin).find_first_of(";!") != std::string_view::npos) seen_ |= kHiddenEnd;
    if (*at_ == '(' && EqualIgnoringCase(name, kUrlName)) ScanAddress();
}

bool ComponentScanner::IsAddress() const {
    if (at_ - begin_ < 3) return false;
    const char* const name = at_ - 3;
    if (!EqualIgnoringCase({name, 3}, kUrlName)) return false;
    if (name == begin_) return true;
    return !Is(name[-1], kName) && name[-1] != '#' && name[-1] != '@';
}

// Section 4.3.6. What begins with a quotation mark is a function with a string.
void ComponentScanner::ScanAddress() {
    const char* const parenthesis = at_++;
    while (Is(*at_, kBlank))
        ++at_;
    if (*at_ == '"' || *at_ == '\'') {
        at_ = parenthesis + 1;
        open_ += ')';
        return;
    }
    for (;;) {
        at_ = FindMark(at_, kEndsAddress);
        switch (*at_) {
        case '\0': open_ += ')'; return;
        case ')': ++at_; return;
        case ';':
        case '!':
            seen_ |= kHiddenEnd;
            ++at_;
            continue;
        case '\\':
            if (!IsEscape(at_)) return SkipBadAddress();
            SkipEscape();
            continue;
        default: break;
        }
        if (!Is(*at_, kBlank)) return SkipBadAddress();
        while (Is(*at_, kBlank))
            ++at_;
        if (*at_ != ')' && *at_ != '\0') return SkipBadAddress();
    }
}

// Section 4.3.14.
void ComponentScanner::SkipBadAddress() {
    seen_ |= kBad;
    while (*at_ != '\0' && *at_ != ')')
        at_ = *at_ == '\\' && IsEscape(at_) ? BehindEscape(at_) : at_ + 1;
    if (*at_ == ')') ++at_;
}

}  // namespace Dom::CSS::detail
