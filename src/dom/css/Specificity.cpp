// SPDX-License-Identifier: MIT
#include <espalier/dom/css/Specificity.h>

#include "dom/css/PseudoClass.h"
#include "dom/css/Skipping.h"
#include "dom/css/SpecificitySum.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace Dom::CSS {

namespace {

using detail::TextCursor;

constexpr std::int64_t kStep = 1000;

// Goes through selectors and counts what they consist of.
class SpecificityCounter {
public:
    explicit SpecificityCounter(std::string_view text) : cursor_(text) {}

    bool CountGroup();
    const char* End() const { return cursor_.at; }
    std::int64_t Total() const { return (ids_ * kStep + classes_) * kStep + elements_; }

private:
    bool IsAtEnd() const { return *cursor_.at == '\0' || *cursor_.at == '{'; }
    bool CountSelector();
    bool CountToken();
    bool CountElement();
    bool CountId();
    bool CountClass();
    bool CountAttribute();
    bool CountPseudoClass();
    bool SkipAttributeValue();
    std::string_view ReadIdent() { return detail::ReadIdent(cursor_, buffer_); }

    TextCursor cursor_;
    bool hasSubject_ = false;
    std::int64_t ids_ = 0;
    std::int64_t classes_ = 0;
    std::int64_t elements_ = 0;
    astring buffer_;
};

bool SpecificityCounter::CountGroup() {
    detail::SkipBlanks(cursor_);
    while (!IsAtEnd()) {
        if (!CountSelector()) return false;
        if (IsAtEnd()) break;
        if (!detail::SkipComma(cursor_)) return false;
    }
    return true;
}

bool SpecificityCounter::CountSelector() {
    hasSubject_ = false;
    while (!IsAtEnd() && *cursor_.at != ',') {
        if (!CountToken()) return false;
        detail::SkipBlanks(cursor_);
    }
    return true;
}

bool SpecificityCounter::CountToken() {
    switch (*cursor_.at) {
    case '#': return CountId();
    case '.': return CountClass();
    case '[': return CountAttribute();
    case ':': return CountPseudoClass();
    case '*':
        ++cursor_.at;
        hasSubject_ = true;
        return true;
    case '+':
    case '>':
        ++cursor_.at;
        hasSubject_ = false;
        return true;
    default: return CountElement();
    }
}

bool SpecificityCounter::CountElement() {
    if (ReadIdent().empty()) return false;
    ++elements_;
    hasSubject_ = true;
    return true;
}

bool SpecificityCounter::CountId() {
    ++cursor_.at;
    if (detail::ReadName(cursor_, buffer_).empty()) return false;
    ++ids_;
    hasSubject_ = false;
    return true;
}

bool SpecificityCounter::CountClass() {
    ++cursor_.at;
    if (ReadIdent().empty()) return false;
    ++classes_;
    hasSubject_ = true;
    return true;
}

// Deliberate: behind an id or another attribute, or at the begin of a selector, an attribute is
// refused.
bool SpecificityCounter::CountAttribute() {
    if (!hasSubject_) return false;
    ++cursor_.at;
    detail::SkipBlanks(cursor_);
    if (ReadIdent().empty()) return false;
    detail::SkipBlanks(cursor_);
    if (*cursor_.at == '=') {
        ++cursor_.at;
        if (!SkipAttributeValue()) return false;
    }
    if (*cursor_.at != ']') return false;
    ++cursor_.at;
    ++classes_;
    hasSubject_ = false;
    return true;
}

bool SpecificityCounter::SkipAttributeValue() {
    detail::SkipBlanks(cursor_);
    if (!detail::ReadString(cursor_, buffer_) && ReadIdent().empty()) return false;
    detail::SkipBlanks(cursor_);
    return true;
}

bool SpecificityCounter::CountPseudoClass() {
    ++cursor_.at;
    const std::string_view name = ReadIdent();
    if (name.empty()) return false;
    if (*cursor_.at == '(' && !detail::SkipParentheses(cursor_.at)) return false;
    if (detail::CountsAsClass(name)) ++classes_;
    hasSubject_ = true;
    return true;
}

int Clamp(std::int64_t specificity) {
    return static_cast<int>(std::min<std::int64_t>(specificity, std::numeric_limits<int>::max()));
}

}  // namespace

int CSS_SPECIFICITY(int ids, int classes, int elements) {
    return Clamp((ids * kStep + classes) * kStep + elements);
}

int CSS_SPECIFICITY(const char* selectorText) {
    const char* end = nullptr;
    return detail::SpecificitySum(selectorText, end);
}

// Deliberate: the selectors of a group are added up.
int detail::SpecificitySum(std::string_view text, const char*& end) {
    SpecificityCounter counter(text);
    if (!counter.CountGroup()) return -1;
    end = counter.End();
    return Clamp(counter.Total());
}

}  // namespace Dom::CSS
