// SPDX-License-Identifier: MIT
#include "dom/css/ListPieces.h"

#include "dom/css/CharacterFlags.h"
#include "dom/css/CssCharacters.h"

namespace Dom::CSS::detail {

namespace {

// Entered at the opening quote. A string without a closing one goes on to the end.
const char* BehindString(const char* at, const char* end) {
    const char quote = *at++;
    while (at != end && *at != quote) {
        if (*at == '\\' && at + 1 != end) ++at;
        ++at;
    }
    return at == end ? end : at + 1;
}

// Entered at the opening parenthesis. A group without a closing one goes on to the end.
const char* BehindGroup(const char* at, const char* end) {
    std::size_t depth = 0;
    while (at != end) {
        if (*at == '"' || *at == '\'') {
            at = BehindString(at, end);
            continue;
        }
        if (*at == '(') ++depth;
        if (*at == ')') --depth;
        ++at;
        if (depth == 0) break;
    }
    return at;
}

// Returns the place behind a character, or behind a string or group that begins with it.
const char* BehindUnit(const char* at, const char* end) {
    if (*at == '"' || *at == '\'') return BehindString(at, end);
    return *at == '(' ? BehindGroup(at, end) : at + 1;
}

}  // namespace

char FindSeparator(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        if (*at == ',') return ',';
        if (Is(*at, kBlank)) {
            while (Is(*at, kBlank))  // something else follows
                ++at;
            return *at == ',' ? ',' : ' ';
        }
        at = BehindUnit(at, end);
    }
    return '\0';
}

bool ListPieces::Next(std::string_view& piece) {
    if (isOver_) return false;
    const char* const begin = at_;
    const auto isSeparator = [this](char character) {
        return separator_ == ' ' ? Is(character, kBlank) : character == separator_;
    };
    while (at_ != end_ && !isSeparator(*at_))
        at_ = BehindUnit(at_, end_);
    piece = Trimmed({begin, static_cast<std::size_t>(at_ - begin)});
    isOver_ = at_ == end_;
    if (!isOver_) ++at_;
    while (at_ != end_ && Is(*at_, kBlank))
        ++at_;
    return true;
}

}  // namespace Dom::CSS::detail
