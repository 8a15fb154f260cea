// SPDX-License-Identifier: MIT
#include "dom/css/SelectorSummary.h"

#include <espalier/base/astring.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/css/PseudoClass.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace Dom::CSS::detail {

namespace {

class Summarizer {
public:
    explicit Summarizer(std::string_view text) : begin_(text.data()), cursor_(text) {}

    SelectorSummary Run();

private:
    bool Group();
    bool Complex();
    bool Compound();
    bool Type();
    bool Test();
    bool Attribute();
    bool AttributeValue();
    bool Pseudo();
    bool Argument();
    bool Ident();
    bool Take(char character) { return SkipCharacter(cursor_, character); }

    const char* begin_;
    TextCursor cursor_;
    astring buffer_;
    std::int64_t ids_ = 0;
    std::int64_t classes_ = 0;
    std::int64_t elements_ = 0;
};

SelectorSummary Summarizer::Run() {
    SelectorSummary summary;
    if (!Group()) summary.fault = static_cast<std::size_t>(cursor_.at - begin_);
    constexpr std::int64_t kStep = 1000;
    summary.specificity = static_cast<int>(std::min<std::int64_t>(
        (ids_ * kStep + classes_) * kStep + elements_, std::numeric_limits<int>::max()));
    return summary;
}

bool Summarizer::Group() {
    do {
        SkipBlanks(cursor_);
        if (!Complex()) return false;
    } while (Take(','));
    return cursor_.at == cursor_.end;
}

bool Summarizer::Complex() {
    for (;;) {
        if (!Compound()) return false;
        const bool hasSpace = SkipBlanks(cursor_);
        const char next = cursor_.Front();
        if (cursor_.at == cursor_.end || next == ',') return true;
        if (next == '>' || next == '+' || next == '~') {
            ++cursor_.at;
            SkipBlanks(cursor_);
        } else if (!hasSpace) {
            return false;
        }
    }
}

bool Summarizer::Compound() {
    const char* const begin = cursor_.at;
    if (!Type()) return false;
    for (;;) {
        const char next = cursor_.Front();
        if (next != '#' && next != '.' && next != '[' && next != ':') break;
        if (!Test()) return false;
    }
    return cursor_.at != begin;
}

// Nearly all names are plain; the others begin with "-", or have escapes.
bool Summarizer::Ident() {
    if (!cursor_.IsAt(kNameStart)) return !ReadIdent(cursor_, buffer_).empty();
    const char* at = cursor_.at;
    while (at != cursor_.end && Is(*at, kName))
        ++at;
    if (at != cursor_.end && *at == '\\') return !ReadIdent(cursor_, buffer_).empty();
    cursor_.at = at;
    return true;
}

// [ [ IDENT | '*' ]? '|' ]? [ IDENT | '*' ]
bool Summarizer::Type() {
    bool isElement = Ident();
    if (!isElement) Take('*');
    if (Take('|')) {
        isElement = Ident();
        if (!isElement && !Take('*')) return false;
    }
    if (isElement) ++elements_;
    return true;
}

bool Summarizer::Test() {
    switch (*cursor_.at++) {
    case '#': ++ids_; return !ReadName(cursor_, buffer_).empty();
    case '.': ++classes_; return Ident();
    case '[': ++classes_; return Attribute();
    default: return Pseudo();
    }
}

bool Summarizer::Attribute() {
    SkipBlanks(cursor_);
    const bool hasPrefix = Ident() || Take('*');
    const TextCursor bar = cursor_;
    if (Take('|') && cursor_.Front() != '=') {
        if (!Ident()) return false;
    } else {
        if (!hasPrefix) return false;
        cursor_.at = bar.at;
    }
    SkipBlanks(cursor_);
    if (Take(']')) return true;
    return AttributeValue() && Take(']');
}

// An identifier may follow the value, such as the "i" of Level 4.
bool Summarizer::AttributeValue() {
    const char next = cursor_.Front();
    if (next == '~' || next == '|' || next == '^' || next == '$' || next == '*') ++cursor_.at;
    if (!Take('=')) return false;
    SkipBlanks(cursor_);
    if (!ReadString(cursor_, buffer_) && !Ident()) return false;
    SkipBlanks(cursor_);
    Ident();
    SkipBlanks(cursor_);
    return true;
}

bool Summarizer::Pseudo() {
    Take(':');
    const std::string_view name = ReadIdent(cursor_, buffer_);
    if (name.empty()) return false;
    if (CountsAsClass(name)) ++classes_;
    return cursor_.Front() != '(' || Argument();
}

// Goes through parentheses and what is in them.
bool Summarizer::Argument() {
    std::string open;
    do {
        switch (cursor_.Front()) {
        case '"':
        case '\'':
            if (!ReadString(cursor_, buffer_)) return false;
            continue;
        case '\\':
            if (!ReadEscape(cursor_, buffer_)) return false;
            continue;
        case '(': open += ')'; break;
        case '[': open += ']'; break;
        case ')':
        case ']':
            if (open.back() != cursor_.Front()) return false;
            open.pop_back();
            break;
        default: break;
        }
        if (cursor_.at == cursor_.end) return false;
        ++cursor_.at;
    } while (!open.empty());
    return true;
}

}  // namespace

SelectorSummary SummarizeSelectors(std::string_view text) { return Summarizer(text).Run(); }

}  // namespace Dom::CSS::detail
