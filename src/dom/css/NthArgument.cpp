// SPDX-License-Identifier: MIT
#include "dom/css/NthArgument.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace Dom::CSS::detail {

namespace {

constexpr int kMost = 1'000'000'000;

bool TakeWord(const char*& text, std::string_view word) {
    const char* position = text;
    for (const char letter : word) {
        if (ToLower(*position) != letter) return false;
        ++position;
    }
    if (IsInName(*position)) return false;
    text = position;
    return true;
}

const char* BehindSpace(const char* text) {
    while (IsSpace(*text))
        ++text;
    return text;
}

// Reads digits; too many of them are a very large number.
bool TakeDigits(const char*& text, int& number) {
    if (!IsDigit(*text)) return false;
    number = 0;
    for (; IsDigit(*text); ++text) {
        if (number < kMost / 10) number = number * 10 + (*text - '0');
    }
    return true;
}

int TakeSign(const char*& text) {
    if (*text != '+' && *text != '-') return 1;
    return *text++ == '-' ? -1 : 1;
}

// Reads the "+b" of "an+b", with or without white space around the sign.
bool TakeOffset(const char*& text, int& offset) {
    const char* position = BehindSpace(text);
    offset = 0;
    if (*position != '+' && *position != '-') return true;
    const int sign = TakeSign(position);
    position = BehindSpace(position);
    if (!TakeDigits(position, offset)) return false;
    offset *= sign;
    text = position;
    return true;
}

}  // namespace

bool ParseNth(const char*& text, int& step, int& offset) {
    if (TakeWord(text, "odd")) {
        step = 2;
        offset = 1;
        return true;
    }
    if (TakeWord(text, "even")) {
        step = 2;
        offset = 0;
        return true;
    }
    const char* position = text;
    const int sign = TakeSign(position);
    int number = 1;
    const bool hasDigits = TakeDigits(position, number);
    if (ToLower(*position) == 'n') {
        ++position;
        step = sign * number;
        if (!TakeOffset(position, offset)) return false;
    } else {
        if (!hasDigits) return false;
        step = 0;
        offset = sign * number;
    }
    text = position;
    return true;
}

bool IsNth(long position, int step, int offset) {
    const std::int64_t distance = std::int64_t{position} - offset;
    if (step == 0) return distance == 0;
    return distance % step == 0 && distance / step >= 0;
}

}  // namespace Dom::CSS::detail
