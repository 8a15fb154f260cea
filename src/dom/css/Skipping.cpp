// SPDX-License-Identifier: MIT
#include "dom/css/Skipping.h"

#include "dom/css/CharacterFlags.h"

#include <cstring>

namespace Dom::CSS::detail {

namespace {

// Moves behind a string, an escape or one other character.
bool SkipOne(const char*& text) {
    if (*text == '"' || *text == '\'') return SkipString(text);
    if (*text == '\\' && text[1] != '\0') ++text;
    ++text;
    return true;
}

}  // namespace

bool SkipString(const char*& text) {
    const char quote = *text++;
    while (*text != '\0') {
        if (*text == quote) {
            ++text;
            return true;
        }
        if (*text == '\\' && text[1] != '\0') ++text;
        ++text;
    }
    return false;
}

bool SkipParentheses(const char*& text) {
    const char* position = text;
    int depth = 0;
    do {
        if (*position == '\0') return false;
        if (*position == '(') ++depth;
        if (*position == ')') --depth;
        if (!SkipOne(position)) return false;
    } while (depth > 0);
    text = position;
    return true;
}

const char* FindBlock(const char* text) {
    int brackets = 0;
    while (true) {
        while (!Is(*text, kBracket))
            ++text;
        if (*text == '\0' || (*text == '{' && brackets == 0)) return text;
        if (*text == '(') {
            if (!SkipParentheses(text)) return text + std::strlen(text);
            continue;
        }
        if (*text == '[') ++brackets;
        if (*text == ']' && brackets > 0) --brackets;
        SkipOne(text);
    }
}

}  // namespace Dom::CSS::detail
